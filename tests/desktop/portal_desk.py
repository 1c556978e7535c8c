"""What the tests of a desktop with a portal share: a compositor that takes no events, and the portal that does."""
import json
import pathlib
import shutil

import dbus

from brenvale_desk import HERE, DeskTest, Recorder, wait_until

PORTAL = 'org.freedesktop.portal.Desktop'
ASKING = ['Register', 'CreateSession', 'SelectDevices', 'Start']
SHIFT, INSERT = 42, 110
KEYCODE, KEYSYM = 'NotifyKeyboardKeycode', 'NotifyKeyboardKeysym'


class PortalTest(DeskTest):
    display = False

    def start_compositor(self, *command):
        if shutil.which(command[0]) is None:
            self.skipTest(f'{command[0]} is not installed')
        self.desk.spawn(command, command[0])
        run = pathlib.Path(self.desk.env['XDG_RUNTIME_DIR'])
        sockets = wait_until(lambda: [path for path in run.glob('wayland-*') if path.suffix != '.lock'], 'the compositor')
        self.desk.env |= {'WAYLAND_DISPLAY': sockets[0].name, 'XDG_SESSION_TYPE': 'wayland'}

    def start_weston(self):
        self.start_compositor('weston', '--backend=headless-backend.so', '--no-config', '--idle-time=0')

    def start_portal(self, *options):
        self.log = self.desk.root / 'portal.jsonl'
        self.log.touch()
        self.portal = self.desk.spawn(['/usr/bin/python3', str(HERE / 'remote_desktop_portal.py'), str(self.log), *options],
                                      'portal')
        self.desk.wait_for_name(PORTAL)

    def stop_portal(self):
        self.desk.stop(self.portal)
        wait_until(lambda: not self.desk.has_name(PORTAL), 'the portal to leave the bus')

    def steer(self, method):
        bus = dbus.bus.BusConnection(self.desk.bus_address)
        portal = bus.get_object(PORTAL, '/org/freedesktop/portal/desktop', introspect=False)
        portal.get_dbus_method(method, 'org.test.Portal')()
        bus.close()

    def close_sessions(self):
        self.steer('CloseSessions')

    def calls(self):
        return [json.loads(line) for line in self.log.read_text().split('\n')[:-1]]

    def names(self):
        return [call['call'] for call in self.calls()]

    def wait_for_calls(self, count):
        wait_until(lambda: len(self.calls()) >= count, f'{count} calls of the portal')
        return self.calls()

    def posted(self):
        """The events so far, each as a method and its values, without the first, which wakes the desktop's keyboard."""
        events = [(call['call'], *call['values']) for call in self.calls() if call['call'].startswith('Notify')]
        return events[2:]

    def wait_for_posted(self, expected):
        wait_until(lambda: len(self.posted()) >= len(expected), f'{len(expected)} events')
        self.assertEqual(self.posted(), expected)

    def start_consented(self, **options):
        """A program whose session is open."""
        Recorder(self.desk)
        program = self.start(**options)
        self.wait_open()
        return program

    def wait_open(self, starts=1):
        wait_until(lambda: self.names().count('Start') == starts and self.names()[-2:] == [KEYCODE] * 2,
                   'the session to open')

    def remote(self, phone, command, **members):
        phone.send_json(action='remote_control', command=command, **members)
