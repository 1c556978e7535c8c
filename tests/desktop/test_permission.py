"""Whether notifications may be shown: the server, the desktop's own switch, and the alert where they may not."""
import time

from brenvale_desk import DeskTest, Recorder, main, wait_until

ALERT = '^Brenvale$'


class PermissionTest(DeskTest):
    def alert(self):
        return self.desk.window(ALERT)

    def wait_for_alert(self):
        window = wait_until(self.alert, 'the alert')
        focused = lambda: self.desk.run('xdotool', 'getwindowfocus', check=False).strip()
        wait_until(lambda: focused() == window, 'the focus on the alert')
        return window

    def assert_no_alert(self, program):
        self.connect(program).ping()
        program.wait_at_rest()
        time.sleep(0.5)  # that something does not come can only be waited for
        self.assertEqual(self.alert(), '')

    def start_in(self, desktop, **config_files):
        """On that desktop, with these files in the folder of the user's settings."""
        env = self.desk.env | {'XDG_CURRENT_DESKTOP': desktop, 'GSETTINGS_BACKEND': 'keyfile'}
        return self.start(env=env, **config_files)

    def install_stub(self, name):
        """A settings program that writes down how it was called."""
        folder, calls = self.desk.root / 'bin', self.desk.root / f'{name}.calls'
        folder.mkdir(exist_ok=True)
        (folder / name).write_text(f'#!/bin/sh\necho "$@" >>{calls}\n')
        (folder / name).chmod(0o755)
        self.desk.env['PATH'] = f'{folder}:{self.desk.env["PATH"]}'
        return calls


class ServerTest(PermissionTest):
    def test_a_server_is_permission(self):
        Recorder(self.desk)
        self.assert_no_alert(self.start())

    def test_a_server_that_the_bus_can_start_is_permission(self):
        service = self.desk.root / 'services/notifications.service'
        service.write_text('[D-BUS Service]\nName=org.freedesktop.Notifications\nExec=/bin/false\n')
        self.assert_no_alert(self.start())

    def test_a_session_that_is_still_starting_gets_ten_seconds(self):
        program = self.start()
        time.sleep(3)
        Recorder(self.desk)
        program.wait_at_rest()
        time.sleep(8)
        self.assertEqual(self.alert(), '')

    def test_no_server_within_ten_seconds_is_told(self):
        began = time.monotonic()
        self.start()
        self.wait_for_alert()
        self.assertGreater(time.monotonic() - began, 9)
        self.desk.run('xdotool', 'key', 'Escape')
        wait_until(lambda: not self.alert(), 'the alert to close')


class SwitchTest(PermissionTest):
    """The switches that desktops have for the notifications of one application."""

    def setUp(self):
        super().setUp()
        self.recorder = Recorder(self.desk)

    def gnome(self, enable, desktop='ubuntu:GNOME'):
        group = 'org/gnome/desktop/notifications/application/org-brenvale-brenvale'
        return self.start_in(desktop, config_files={
            'glib-2.0/settings/keyfile': f'[{group}]\nenable={enable}\n'})

    def plasma(self, settings, desktop='KDE'):
        return self.start_in(desktop, config_files={'plasmanotifyrc': settings})

    def test_gnome_off(self):
        self.gnome('false')
        self.wait_for_alert()

    def test_gnome_on(self):
        self.assert_no_alert(self.gnome('true'))

    def test_gnome_without_a_choice(self):
        self.assert_no_alert(self.start_in('GNOME'))

    def test_plasma_off(self):
        self.plasma('[Applications][org.brenvale.Brenvale]\nSeen=true\nShowPopups=false\n')
        self.wait_for_alert()

    def test_plasma_off_for_another(self):
        self.assert_no_alert(self.plasma('[Applications][org.kde.kmail]\nShowPopups=false\n'))

    def test_the_switch_of_another_desktop_does_not_count(self):
        self.assert_no_alert(self.gnome('false', desktop='sway'))

    def test_a_server_that_comes_late_does_not_override_the_switch(self):
        self.desk.stop(self.recorder.process)
        self.plasma('[Applications][org.brenvale.Brenvale]\nShowPopups=false\n')
        Recorder(self.desk)
        self.wait_for_alert()

    def test_it_is_told_at_every_start(self):
        for _ in range(2):
            program = self.plasma('[Applications][org.brenvale.Brenvale]\nShowPopups=false\n')
            self.wait_for_alert()
            program.stop()


class AlertTest(PermissionTest):
    """What the alert's buttons do."""

    def show(self):
        Recorder(self.desk)
        self.calls = self.install_stub('systemsettings')
        self.program = self.start_in('KDE', config_files={
            'plasmanotifyrc': '[Applications][org.brenvale.Brenvale]\nShowPopups=false\n'})
        self.wait_for_alert()

    def wait_closed(self):
        wait_until(lambda: not self.alert(), 'the alert to close')

    def test_the_first_button_is_the_default_and_opens_the_notification_settings(self):
        self.show()
        self.desk.run('xdotool', 'key', 'Return')
        wait_until(self.calls.exists, 'the settings')
        self.assertEqual(wait_until(self.calls.read_text), 'kcm_notifications\n')
        self.wait_closed()

    def test_not_now_opens_nothing(self):
        for keys in (['Tab', 'space'], ['Escape']):
            with self.subTest(keys=keys):
                self.setUp()
                self.show()
                self.desk.run('xdotool', 'key', *keys)
                self.wait_closed()
                self.program.wait_at_rest()
                self.assertFalse(self.calls.exists())

    def test_the_link_goes_on_while_the_alert_waits(self):
        self.show()
        phone = self.connect(self.program)
        phone.send_json(app='Mail', title='Ann', body='Hello')
        phone.ping()
        self.assertNotEqual(self.alert(), '')


class NoDisplayTest(PermissionTest):
    display = False

    def test_the_alert_is_one_line_on_standard_error(self):
        Recorder(self.desk)
        program = self.start_in('KDE', config_files={
            'plasmanotifyrc': '[Applications][org.brenvale.Brenvale]\nShowPopups=false\n'})
        wait_until(program.error_text, 'the line')
        self.assertEqual(program.error_text(), (
            'Notification Permission Required: Brenvale needs permission to show notifications forwarded from your '
            'Android device. Please open System Settings → Notifications → Brenvale and set "Allow Notifications" to On.\n'))
        self.assertCountEqual(program.lines(), ['[AppDelegate] Incoming call cleared',
                                               *program.matching(r'\[WebSocketServer\].*')])

    def test_without_a_bus_the_error_is_in_the_log(self):
        program = self.start(env=self.desk.env | {'DBUS_SESSION_BUS_ADDRESS': 'unix:path=/nonexistent/bus'})
        program.wait_for_line(r'\[Notifications\] Authorization error: there is no session bus')
        wait_until(program.error_text, 'the line')


if __name__ == '__main__':
    main()
