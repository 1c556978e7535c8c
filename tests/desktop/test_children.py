"""Programs that Brenvale starts share nothing with it, and outlive it without standing in its way."""
import os
import pathlib

import unittest

import dbus

from brenvale_desk import Program, Recorder, listening, main, wait_until
from desk import Desk

desk = Desk()
os.environ.update(desk.env)  # the accessibility library finds its bus by the environment of this process
from accessible import Application, add_accessibility  # noqa: E402

add_accessibility(desk)
unittest.addModuleCleanup(desk.close)

NAME, PATH, INTERFACE = 'org.brenvale.Brenvale', '/org/brenvale/Brenvale', 'org.freedesktop.Application'


class ChildrenTest(unittest.TestCase):
    def setUp(self):
        self.desk = desk
        path = desk.env['PATH']
        self.addCleanup(desk.env.__setitem__, 'PATH', path)
        # Libraries may leave anything open in the program; here it is a file and a pipe that it inherits.
        self.leaked = open(self.desk.root / 'leaked', 'w')
        self.addCleanup(self.leaked.close)
        self.recorder = Recorder(self.desk)
        self.addCleanup(self.recorder.stop)

    def install(self, name):
        """A program that stays, and tells its process id."""
        folder = self.desk.root / 'bin'
        folder.mkdir(exist_ok=True)
        told = self.desk.root / f'{name}.pid'
        told.unlink(missing_ok=True)
        (folder / name).write_text(f'#!/bin/sh\necho "noise of a child"\necho "noise of a child" >&2\n'
                                   f'echo $$ "$@" >{told}.new\nmv {told}.new {told}\nexec sleep 300\n')
        (folder / name).chmod(0o755)
        self.desk.env['PATH'] = f'{folder}:{self.desk.env["PATH"]}'
        return told

    def launch(self, **options):
        os.set_inheritable(self.leaked.fileno(), True)
        self.program = Program(self.desk, pass_fds=[self.leaked.fileno()], **options).wait_listening()
        self.addCleanup(self.program.stop)
        self.phone = self.program.connect()
        self.addCleanup(self.phone.socket.close)
        return self.program

    def child(self, told):
        """The child's process id and its arguments."""
        text = wait_until(lambda: told.exists() and told.read_text(), f'the child of {told.name}')
        pid, *arguments = text.split()
        self.addCleanup(self.end_child, int(pid))
        wait_until(lambda: 'sleep' in pathlib.Path(f'/proc/{pid}/comm').read_text(), 'the program of the child')
        return int(pid), arguments

    @staticmethod
    def end_child(pid):
        try:
            os.kill(pid, 9)
        except ProcessLookupError:
            pass

    def descriptors(self, pid):
        folder = pathlib.Path(f'/proc/{pid}/fd')
        return {int(entry.name): os.readlink(entry) for entry in folder.iterdir()}

    def assert_shares_nothing(self, pid, output='/dev/null'):
        self.assertEqual(self.descriptors(pid), {0: '/dev/null', 1: output, 2: '/dev/null'})
        status = pathlib.Path(f'/proc/{pid}/status').read_text()
        self.assertIn('SigBlk:\t0000000000000000', status)
        self.assertNotEqual(os.getsid(pid), os.getsid(self.program.process.pid))
        self.assertFalse(any('noise' in line for line in self.program.lines()), self.program.lines())

    def assert_serves_anew(self, pid):
        """The program ends and starts again on its port while the child goes on."""
        self.phone.socket.close()
        bus = dbus.bus.BusConnection(self.desk.bus_address)
        bus.get_object(NAME, PATH, introspect=False).ActivateAction('quit', [], {}, signature='sava{sv}',
                                                                    dbus_interface=INTERFACE)
        self.assertEqual(self.program.process.wait(20), 0)
        self.assertFalse(listening(self.program.port))
        os.kill(pid, 0)  # the child is there
        again = Program(self.desk, port=self.program.port).wait_listening()
        phone = again.connect()
        self.addCleanup(phone.socket.close)
        self.assertEqual(phone.ping(), [])
        again.wait_for_line(r'.* is ready \(handshake complete\)')
        again.stop()

    def open_tab(self, name):
        bus = dbus.bus.BusConnection(self.desk.bus_address)
        bus.get_object(NAME, PATH, introspect=False).ActivateAction(name, [], {}, signature='sava{sv}',
                                                                    dbus_interface=INTERFACE)
        return Application(self.desk, self.program.process.pid)

    def test_system_settings(self):
        told = self.install('systemsettings')
        self.launch(env=self.desk.env | {'XDG_CURRENT_DESKTOP': 'KDE'}, config_files={
            'plasmanotifyrc': '[Applications][org.brenvale.Brenvale]\nShowPopups=false\n'})
        window = wait_until(lambda: self.desk.windows('^Brenvale$'), 'the alert')[0]
        focused = lambda: self.desk.run('xdotool', 'getwindowfocus', check=False).strip()
        wait_until(lambda: focused() == window, 'the focus on the alert')
        self.desk.run('xdotool', 'key', 'Return')
        pid, arguments = self.child(told)
        self.assertEqual(arguments, ['kcm_notifications'])
        self.assert_shares_nothing(pid)
        self.assert_serves_anew(pid)

    def test_the_program_that_reads_settings(self):
        told = self.install('gsettings')
        self.launch(env=self.desk.env | {'XDG_CURRENT_DESKTOP': 'GNOME'})
        pid, _ = self.child(told)
        output = self.descriptors(pid)[1]
        self.assertRegex(output, r'pipe:\[\d+\]')  # what it prints is the answer
        self.assert_shares_nothing(pid, output)
        wait_until(lambda: not pathlib.Path(f'/proc/{pid}').exists(), 'the end of its time')

    def test_browser(self):
        told = self.install('xdg-open')
        self.launch()
        window = self.open_tab('info')
        window.press('link', 'Visit Profile')
        pid, arguments = self.child(told)
        self.assertEqual(arguments, ['https://brenvale.example/developers'])
        self.assert_shares_nothing(pid)
        self.assert_serves_anew(pid)

    def test_location_that_the_phone_opens(self):
        told = self.install('browser')
        applications = pathlib.Path(self.desk.env['XDG_DATA_HOME']) / 'applications'
        applications.mkdir(parents=True, exist_ok=True)
        (applications / 'browser.desktop').write_text('[Desktop Entry]\nType=Application\nName=Browser\nExec=browser %u\n'
                                                      'MimeType=x-scheme-handler/https;\n')
        self.desk.config.mkdir(parents=True, exist_ok=True)
        self.launch(config_files={'mimeapps.list': '[Default Applications]\nx-scheme-handler/https=browser.desktop\n'})
        self.phone.send_json(action='remote_control', command='open_url', url='https://example.org/')
        pid, arguments = self.child(told)
        self.assertEqual(arguments, ['https://example.org/'])
        self.assert_shares_nothing(pid)
        self.assert_serves_anew(pid)

    def test_file_viewer(self):
        told = self.install('xdg-open')  # no service of the bus shows files here
        self.launch()
        self.phone.send_json(action='file_transfer_start', fileName='a.txt', fileSize=2)
        self.phone.send_json(action='file_chunk', fileName='a.txt', fileData='QUI=', isLast=True)
        self.program.wait_for_line(r'.*File handle closed for a\.txt')
        self.open_tab('file-drop').press('push button', 'Show in Finder')
        pid, arguments = self.child(told)
        self.assertEqual(arguments, [f'file://{self.desk.env["HOME"]}/Downloads/'])
        self.assert_shares_nothing(pid)
        self.assert_serves_anew(pid)


if __name__ == '__main__':
    main()
