"""What happens to the computer and to the desktop while the program runs: after all of it the phone still gets through."""
import contextlib
import ctypes
import itertools
import json
import re
import socket
import struct
import subprocess
import unittest

import dbus
import dbus.lowlevel

from brenvale_desk import HERE, PROGRAM, DeskTest, Program, Recorder, main, wait_until
from test_files import small_disk

LOGIND, LOGIND_PATH = 'org.freedesktop.login1', '/org/freedesktop/login1'


def fall_silent(phone):
    """The phone is out of reach from now on: its system answers nothing any more and does not say so."""
    SO_ATTACH_FILTER, RETURN = 26, 0x06
    take_nothing = ctypes.create_string_buffer(struct.pack('HBBI', RETURN, 0, 0, 0), 8)
    try:
        phone.socket.setsockopt(socket.SOL_SOCKET, SO_ATTACH_FILTER,
                                struct.pack('@HP', 1, ctypes.addressof(take_nothing)))
    except PermissionError:  # the kernel has no more room for filters of ordinary users
        raise unittest.SkipTest('no socket can be silenced here') from None


class SleepTest(DeskTest):
    display = False

    def setUp(self):
        super().setUp()
        self.bus = dbus.bus.BusConnection(self.desk.bus_address)
        self.bus.request_name(LOGIND)

    def announce(self, is_ahead):
        signal = dbus.lowlevel.SignalMessage(LOGIND_PATH, LOGIND + '.Manager', 'PrepareForSleep')
        signal.append(is_ahead)
        self.bus.send_message(signal)
        self.bus.flush()

    def test_a_phone_that_vanished_meanwhile_is_found_within_seconds_and_the_others_stay(self):
        program = self.start()
        staying, vanished = self.connect(program), self.connect(program)
        self.announce(True)
        fall_silent(vanished)
        self.announce(False)
        address = '%s:%d' % vanished.socket.getsockname()[:2]
        program.wait_for_line(rf'\[WebSocketServer\] Connection {re.escape(address)} failed: Connection timed out')
        staying.ping()
        program.wait_at_rest()
        self.assertEqual(len(program.matching(r'.* failed: .*')), 1)
        staying.ping()
        self.connect(program).ping()

    def test_waking_up_again_and_again_ends_nothing(self):
        program = self.start()
        phone = self.connect(program)
        for _ in range(20):
            self.announce(True)
            self.announce(False)
        phone.ping()
        program.wait_at_rest()
        self.assertFalse(program.matching(r'.* failed: .*'))


class BusTest(DeskTest):
    def test_a_session_bus_that_ends_leaves_the_link_alone(self):
        Recorder(self.desk)
        program = self.start()
        phone = self.connect(program)
        bus = next(child for child in self.desk.children if child.args[0] == 'dbus-daemon')
        self.desk.stop(bus)
        program.wait_at_rest()
        self.assertIsNone(program.process.poll())
        phone.send_json(app='Mail', title='Ann', body='Hello', key='k')
        phone.send_json(action='clipboard', text='copied')
        program.wait_for_line(r'\[Notifications\] Post error: .*')
        phone.ping()
        self.connect(program).ping()
        program.wait_at_rest()


class LogoutTest(DeskTest):
    """The session manager of X11 asks each program at a logout, and waits for its answer."""

    def setUp(self):
        super().setUp()
        Recorder(self.desk)
        self.output = self.desk.root / 'session.jsonl'
        with open(self.output, 'wb') as output:
            self.manager = self.desk.spawn(['/usr/bin/python3', str(HERE / 'session_manager.py')], 'session',
                                           stdin=subprocess.PIPE, stdout=output)
        self.addCleanup(self.manager.stdin.close)
        address = wait_until(lambda: self.output.read_text().partition('\n')[0], 'the session manager')
        self.program = self.start(env=self.desk.env | {'SESSION_MANAGER': address})
        self.phone = self.connect(self.program)

    def events(self, name):
        whole_lines = self.output.read_text().split('\n')[1:-1]
        return [event for event in map(json.loads, whole_lines) if event['event'] == name]

    def log_out(self):
        self.manager.stdin.write(b'\n')
        self.manager.stdin.flush()

    def test_it_is_answered_without_a_question_also_with_the_window_open_and_a_call_ringing(self):
        wait_until(lambda: self.events('saved'), 'the answer at the start')
        self.desk.run('gapplication', 'action', 'org.brenvale.Brenvale', 'info')
        self.phone.send_json(action='incoming_call', state='RINGING', number='17')
        self.phone.ping()
        self.log_out()
        wait_until(lambda: len(self.events('saved')) == 2, 'the answer at the logout')
        self.assertEqual(self.events('interact_request'), [])
        wait_until(lambda: self.program.process.poll() is not None, 'the end of the program')
        self.assertEqual(self.program.process.returncode, 0)

    def test_a_session_that_is_restored_starts_the_program_without_a_window(self):
        wait_until(lambda: self.events('saved'), 'the answer at the start')
        properties = {event['name']: event['values'] for event in self.events('property')}
        command = properties['RestartCommand']
        self.assertEqual([command[0], command[-1]], [PROGRAM, '--background'])
        self.assertEqual(command.count('--background'), 1)


class ScreenTest(DeskTest):
    """The screen of 1280 by 800 becomes one of 640 by 480, and the other way round."""

    PANEL, WINDOW = '^Brenvale Call$', '^Brenvale Settings'

    def setUp(self):
        super().setUp()
        Recorder(self.desk)
        self.program = self.start()
        self.phone = self.connect(self.program)
        self.desk.run('xrandr', '--newmode', 'small', '0', '640', '640', '640', '640', '480', '480', '480', '480')
        self.desk.run('xrandr', '--addmode', 'screen', 'small')

    def change_screen(self, mode):
        self.desk.run('xrandr', '--output', 'screen', '--mode', mode)

    def turn_screen_off(self):
        self.desk.run('xrandr', '--fb', '640x480', '--output', 'screen', '--off')

    def find(self, name):
        return self.desk.window(name)

    def place(self, name):
        window = wait_until(lambda: self.find(name), name)
        answer = self.desk.run('xdotool', 'getwindowgeometry', '--shell', window, check=False)
        values = dict(line.split('=') for line in answer.splitlines())
        return (int(values['X']), int(values['Y'])) if values else None

    def open_window(self):
        self.desk.run('gapplication', 'action', 'org.brenvale.Brenvale', 'info')

    def test_a_panel_goes_to_its_place_again(self):
        self.phone.send_json(action='incoming_call', state='RINGING', number='17')
        wait_until(lambda: self.place(self.PANEL) == (910, 20), 'the panel')
        self.change_screen('small')
        wait_until(lambda: self.place(self.PANEL) == (270, 20), 'the panel on the small screen')
        self.turn_screen_off()
        self.phone.ping()
        self.change_screen('1280x800')
        wait_until(lambda: self.place(self.PANEL) == (910, 20), 'the panel on the large screen again')

    def test_a_window_out_of_sight_comes_back_when_it_is_asked_for(self):
        self.open_window()
        window = wait_until(lambda: self.find(self.WINDOW), 'the window')
        self.desk.run('xdotool', 'windowmove', '--sync', window, '420', '220')
        self.program.wait_at_rest()
        self.change_screen('small')
        self.program.wait_at_rest()
        self.open_window()
        wait_until(lambda: self.place(self.WINDOW) and self.place(self.WINDOW)[0] < 100, 'the window in sight')
        self.phone.ping()

    def test_a_window_that_was_closed_on_a_screen_that_is_gone_opens_in_sight(self):
        self.open_window()
        window = wait_until(lambda: self.find(self.WINDOW), 'the window')
        self.desk.run('xdotool', 'windowmove', '--sync', window, '420', '220')
        self.desk.run('xdotool', 'windowactivate', '--sync', window)
        # The window manager may not listen yet to the keys of a window that it has just activated.
        def closed():
            self.desk.run('xdotool', 'key', 'alt+F4')
            return not self.find(self.WINDOW)
        wait_until(closed, 'the window to close')
        self.change_screen('small')
        self.program.wait_at_rest()
        self.open_window()
        wait_until(lambda: self.place(self.WINDOW) and self.place(self.WINDOW)[0] < 100, 'the window in sight')

    def test_without_any_screen_the_link_goes_on(self):
        self.open_window()
        wait_until(lambda: self.find(self.WINDOW), 'the window')
        self.turn_screen_off()
        self.phone.send_json(action='incoming_call', state='RINGING', number='17')
        self.phone.ping()
        self.connect(self.program).ping()
        self.change_screen('1280x800')
        wait_until(lambda: self.place(self.PANEL) == (910, 20), 'the panel')


class FullDiskTest(DeskTest):
    def test_settings_that_cannot_be_written_hold_until_the_end_and_are_written_again_later(self):
        if subprocess.run(['unshare', '--mount', 'true'], check=False).returncode != 0:
            self.skipTest('no disk can be mounted here')
        Program.runs = itertools.count(1000)
        config = self.desk.root / 'config.1000'
        config.mkdir()
        with small_disk(config, '16k'):
            program = self.start()
            settings = config / 'brenvale/brenvale.conf'
            before = settings.read_text()
            with open(config / 'filler', 'wb', buffering=0) as filler, contextlib.suppress(OSError):
                while True:
                    filler.write(bytes(4096))
            self.open_tab('sms')
            self.connect(program).ping()
            program.wait_at_rest()
            self.assertEqual(settings.read_text(), before)
            (config / 'filler').unlink()
            self.open_tab('info')
            wait_until(lambda: 'selectedSettingsTab=3' in settings.read_text(), 'the settings on the disk')
            self.assertIn(f'port={program.port}', settings.read_text())
            program.stop()

    def open_tab(self, name):
        self.desk.run('gapplication', 'action', 'org.brenvale.Brenvale', name)


if __name__ == '__main__':
    main()
