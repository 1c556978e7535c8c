"""Whether the desktop lets us post keys and pointer events, and the question at the start where it must be asked."""
import os
import pathlib
import shutil
import socket

from brenvale_desk import DeskTest, Recorder, main, wait_until
from portal_desk import PortalTest

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


class WaylandTest(PortalTest, AccessibilityTest):
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
