"""Without a display, without a bus, or with ones that are dead, the link and the log work all the same."""
from brenvale_desk import DeskTest, Program, main
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
