"""Without a display, without a bus, or with ones that are dead, the link and the log work all the same."""
import contextlib
import socket
import threading
import time

from brenvale_desk import DeskTest, Program, Recorder, main, wait_until
from desk import Desk


class NoDesktopTest(DeskTest):
    def setUp(self):
        self.desk = Desk(display=False, bus=False)
        self.addCleanup(self.desk.close)

    def assert_serves(self, env):
        program = Program(self.desk, env=env).wait_listening()
        phone = self.connect(program)
        phone.send_json(action='clipboard', text='nowhere to go')
        phone.send_json(app='Mail', title='Ann', body='Nobody sees this')
        phone.send_text('not JSON')
        phone.ping()
        program.wait_for_line(r'\[WebSocketServer\] Received complete message of \d+ bytes from \S+', 3)
        program.wait_for_line(r'\[WebSocketServer\] JSON parsing failed: \S.*')
        program.wait_for_line(r'\[Notifications\] Post error: \S.*')
        self.assertRegex(program.error_text(), r'\A(Notification Permission Required: .*\n)?\Z')
        self.assertIsNone(program.process.poll())
        return program, phone

    def test_empty_environment(self):
        self.assert_serves({})

    def test_home_folder_alone(self):
        self.assert_serves({name: self.desk.env[name] for name in ('HOME', 'PATH')})

    def test_display_that_is_named_but_dead(self):
        for dead in ({'DISPLAY': ':4711'}, {'WAYLAND_DISPLAY': 'wayland-4711', 'XDG_SESSION_TYPE': 'wayland'},
                     {'DISPLAY': ':4711', 'WAYLAND_DISPLAY': 'wayland-4711'}, {'DISPLAY': '', 'WAYLAND_DISPLAY': ''}):
            with self.subTest(**dead):
                self.assert_serves(self.desk.env | dead)

    def test_bus_that_is_named_but_dead(self):
        for address in ('unix:path=/nonexistent/bus', 'nonsense', ''):
            with self.subTest(address=address):
                self.assert_serves(self.desk.env | {'DBUS_SESSION_BUS_ADDRESS': address})

    def silent_bus(self, name):
        """The address of a bus that takes connections and never says anything."""
        silent = socket.socket(socket.AF_UNIX)
        self.addCleanup(silent.close)
        silent.bind(str(self.desk.root / name))
        silent.listen(100)
        return f'unix:path={self.desk.root / name}'

    def speechless_bus(self, name):
        """The address of a bus that lets everybody in, and says nothing from then on."""
        bus = socket.socket(socket.AF_UNIX)
        self.addCleanup(bus.close)
        bus.bind(str(self.desk.root / name))
        bus.listen(100)
        answers = {b'AUTH': b'OK 0123456789abcdef0123456789abcdef', b'NEGOTIATE_UNIX_FD': b'AGREE_UNIX_FD'}

        def greet(guest):
            with guest, guest.makefile('rwb') as lines, contextlib.suppress(OSError):
                for line in iter(lines.readline, b''):
                    words = line.strip(b'\0\r\n').split()
                    if words[:1] == [b'BEGIN']:
                        self.let_in.append(name)
                    if words and words[0] in answers:
                        lines.write(answers[words[0]] + b'\r\n')
                        lines.flush()

        def serve():
            with contextlib.suppress(OSError):
                while True:
                    threading.Thread(target=greet, args=(bus.accept()[0],), daemon=True).start()

        threading.Thread(target=serve, daemon=True).start()
        return f'unix:path={self.desk.root / name}'

    def test_bus_that_lets_in_and_never_answers(self):
        self.let_in = []
        session, system = self.speechless_bus('session'), self.speechless_bus('system')
        began = time.monotonic()
        self.assert_serves(self.desk.env | {'DBUS_SESSION_BUS_ADDRESS': session, 'DBUS_SYSTEM_BUS_ADDRESS': system})
        self.assertLess(time.monotonic() - began, 10)
        self.assertEqual(set(self.let_in), {'session', 'system'})

    def test_bus_that_never_answers(self):
        session, system = self.silent_bus('session'), self.silent_bus('system')
        for env in ({'DBUS_SESSION_BUS_ADDRESS': session}, {'DBUS_SYSTEM_BUS_ADDRESS': system},
                    {'DBUS_SESSION_BUS_ADDRESS': session, 'DBUS_SYSTEM_BUS_ADDRESS': system}):
            with self.subTest(**env):
                began = time.monotonic()
                self.assert_serves(self.desk.env | env)
                self.assertLess(time.monotonic() - began, 10)  # a library left to itself waits for 25 seconds

    def test_system_bus_that_never_answers_takes_nothing_from_the_session(self):
        with Desk(display=False) as desk:
            recorder = Recorder(desk)
            program = Program(desk, env=desk.env | {'DBUS_SYSTEM_BUS_ADDRESS': self.silent_bus('system')}).wait_listening()
            self.connect(program).send_json(app='Mail', title='Ann', body='Hello')
            self.assertEqual(recorder.wait_for(1)[0]['summary'], 'Mail')

    def test_children_get_the_address_all_the_same(self):
        session = self.silent_bus('session')
        told = self.desk.root / 'environment'
        folder = self.desk.root / 'bin'
        folder.mkdir()
        (folder / 'systemsettings').write_text(f'#!/bin/sh\nenv >{told}.new\nmv {told}.new {told}\n')
        (folder / 'systemsettings').chmod(0o755)
        with Desk(bus=False) as desk:
            Program(desk, env=desk.env | {'DBUS_SESSION_BUS_ADDRESS': session, 'XDG_CURRENT_DESKTOP': 'KDE',
                                          'PATH': f'{folder}:{desk.env["PATH"]}'}).wait_listening()
            focused = lambda: desk.run('xdotool', 'getwindowfocus', 'getwindowname', check=False).strip()
            wait_until(lambda: focused() == 'Brenvale', 'the alert')
            desk.run('xdotool', 'key', 'Return')
            wait_until(told.exists, 'the settings')
            self.assertIn(f'DBUS_SESSION_BUS_ADDRESS={session}', told.read_text().splitlines())

    def test_bus_that_dies(self):
        with Desk(display=False) as desk:
            program = Program(desk).wait_listening()
            phone = self.connect(program)
            phone.send_json(app='Mail', title='Ann', body='no server')
            program.wait_for_line(r'\[Notifications\] Post error: \S.*')
            desk.stop(desk.children[0])
            phone.send_json(app='Mail', title='Ann', body='no bus')
            program.wait_for_line(r'\[Notifications\] Post error: \S.*', 2)
            phone.ping()
            self.assertIsNone(program.process.poll())


if __name__ == '__main__':
    main()
