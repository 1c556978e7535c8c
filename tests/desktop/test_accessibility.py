"""Whether the desktop lets us post keys and pointer events, and the question at the start where it must be asked."""
import json
import os
import pathlib
import shutil
import socket

from brenvale_desk import HERE, DeskTest, Recorder, main, wait_until

CAN_POST = 'events can be posted: {}'


class AccessibilityTest(DeskTest):
    def start_watched(self, **env):
        """Starts with the diagnostics that tell what the program found."""
        Recorder(self.desk)
        return self.start(env=self.desk.env | {'QT_LOGGING_RULES': 'brenvale.input=true'} | env)

    def assert_can_post(self, program, expected):
        wait_until(program.error_text, 'the diagnostics')
        self.assertIn(CAN_POST.format('true' if expected else 'false'), program.error_text())


class X11Test(AccessibilityTest):
    def test_the_extension_for_it_is_enough(self):
        self.assert_can_post(self.start_watched(), True)


class NoDisplayTest(AccessibilityTest):
    display = False

    def test_nothing_can_be_posted(self):
        if os.access('/dev/uinput', os.W_OK):
            self.skipTest('the kernel takes events here')
        self.assert_can_post(self.start_watched(), False)


class WaylandTest(AccessibilityTest):
    display = False

    def start_compositor(self, *command):
        if shutil.which(command[0]) is None:
            self.skipTest(f'{command[0]} is not installed')
        self.desk.spawn(command, command[0])
        run = pathlib.Path(self.desk.env['XDG_RUNTIME_DIR'])
        sockets = wait_until(lambda: [path for path in run.glob('wayland-*') if path.suffix != '.lock'], 'the compositor')
        self.desk.env |= {'WAYLAND_DISPLAY': sockets[0].name, 'XDG_SESSION_TYPE': 'wayland'}

    def start_portal(self, *options):
        self.log = self.desk.root / 'portal.jsonl'
        self.portal = self.desk.spawn(['/usr/bin/python3', str(HERE / 'remote_desktop_portal.py'), str(self.log), *options],
                                      'portal')
        self.desk.wait_for_name('org.freedesktop.portal.Desktop')

    def calls(self):
        return [json.loads(line) for line in self.log.read_text().splitlines()]

    def wait_for_calls(self, count):
        wait_until(lambda: len(self.calls()) >= count, f'{count} calls of the portal')
        return self.calls()

    def start_weston(self):
        self.start_compositor('weston', '--backend=headless-backend.so', '--no-config', '--idle-time=0')

    def test_the_desktop_asks_the_user_once_and_remembers_the_consent(self):
        self.start_weston()
        self.start_portal()
        program = self.start_watched()
        self.assert_can_post(program, False)
        calls = self.wait_for_calls(3)
        self.assertEqual([call['call'] for call in calls], ['CreateSession', 'SelectDevices', 'Start'])
        self.assertEqual((calls[1]['types'], calls[1]['persist_mode']), ('UInt32 3', 'UInt32 2'))
        self.assertNotIn('restore_token', calls[1])
        token = pathlib.Path(self.desk.env['XDG_STATE_HOME']) / 'brenvale/remote-desktop-token'
        wait_until(token.exists, 'the token')
        self.assertEqual((token.read_text(), token.stat().st_mode & 0o777), ('kept', 0o600))
        program.stop()
        self.start()
        self.assertEqual(self.wait_for_calls(6)[4]['restore_token'], 'String kept')

    def test_a_refusal_is_taken_and_the_link_serves(self):
        self.start_weston()
        self.start_portal('--deny')
        program = self.start_watched()
        self.wait_for_calls(4)
        self.connect(program).ping()
        program.wait_at_rest()
        self.assertEqual([call['call'] for call in self.calls()], ['CreateSession', 'SelectDevices', 'Start', 'Close'])

    def test_a_consent_to_the_pointer_alone_is_of_no_use(self):
        self.start_weston()
        self.start_portal('--devices', '2')
        self.start_watched()
        self.assertEqual(self.wait_for_calls(4)[3]['call'], 'Close')

    def test_a_desktop_without_a_portal_asks_nothing(self):
        self.start_weston()
        program = self.start_watched()
        self.assert_can_post(program, False)
        self.connect(program).ping()


    def test_a_compositor_that_takes_events_needs_no_consent(self):
        if shutil.which('sway') is None:
            self.skipTest('sway is not installed')
        self.start_portal()
        run, nobody = pathlib.Path(self.desk.env['XDG_RUNTIME_DIR']), 65534
        command = ['sway', '--config', '/dev/null']
        if os.geteuid() == 0:  # it refuses root
            os.chown(run, nobody, nobody)
            self.desk.root.chmod(0o755)
            command = ['setpriv', f'--reuid={nobody}', f'--regid={nobody}', '--clear-groups', *command]
        environment = {'WLR_BACKENDS': 'headless', 'WLR_RENDERER': 'pixman', 'WLR_LIBINPUT_NO_DEVICES': '1'}
        self.desk.env |= environment
        self.start_compositor(*command)
        self.assert_can_post(self.start_watched(), True)
        self.assertEqual(self.calls(), [])

    def test_a_compositor_of_another_login_is_none_of_ours(self):
        self.start_weston()
        run = pathlib.Path(self.desk.env['XDG_RUNTIME_DIR'])
        (run / self.desk.env.pop('WAYLAND_DISPLAY')).rename(run / 'wayland-0')
        self.start_portal()
        program = self.start_watched(XDG_SESSION_TYPE='x11')
        self.assert_can_post(program, False)
        self.connect(program).ping()
        program.wait_at_rest()
        self.assertEqual(self.calls(), [])


class DisplayThatHangsTest(AccessibilityTest):
    display = False

    def test_a_display_that_says_nothing_counts_as_none(self):
        with socket.socket(socket.AF_UNIX) as silent:
            silent.bind(str(pathlib.Path(self.desk.env['XDG_RUNTIME_DIR']) / 'wayland-0'))
            silent.listen()
            program = self.start_watched(WAYLAND_DISPLAY='wayland-0')
            self.connect(program).ping()
            self.assert_can_post(program, False)


if __name__ == '__main__':
    main()
