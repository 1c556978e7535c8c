"""The window is dark where the desktop's user wants that, also where the toolkit does not know."""
import pathlib
import subprocess

from brenvale_desk import DeskTest, Recorder, main, wait_until

NAME = 'org.freedesktop.portal.Desktop'


class ColorSchemeTest(DeskTest):
    def start_portal(self, scheme):
        script = pathlib.Path(__file__).with_name('settings_portal.py')
        self.portal = self.desk.spawn(['/usr/bin/python3', script, scheme], 'portal', stdin=subprocess.PIPE, text=True)
        self.addCleanup(self.portal.stdin.close)
        wait_until(lambda: self.desk.has_name(NAME), 'the portal')

    def choose(self, scheme):
        print(scheme, file=self.portal.stdin, flush=True)

    def open_window(self, desktop='GNOME'):
        Recorder(self.desk)
        self.desk.env['XDG_CURRENT_DESKTOP'] = desktop
        self.program = self.start()
        self.desk.run('gapplication', 'action', 'org.brenvale.Brenvale', 'info')
        self.window = wait_until(lambda: self.desk.windows('^Brenvale Settings$'), 'the window')[0]

    def is_dark(self):
        """Whether the window is dark on the whole."""
        return float(self.desk.run('import', '-window', self.window, '-colorspace', 'Gray', '-format', '%[fx:mean]', 'info:-')) < 0.4

    def wait_for_dark(self):
        wait_until(self.is_dark, 'dark colours')

    def wait_for_light(self):
        wait_until(lambda: not self.is_dark(), 'light colours')

    def test_a_dark_desktop(self):
        self.start_portal('1')
        self.open_window()
        self.wait_for_dark()

    def test_it_follows_the_user(self):
        self.start_portal('0')
        self.open_window()
        self.wait_for_light()
        for _ in range(2):
            self.choose('1')
            self.wait_for_dark()
            self.choose('2')  # light
            self.wait_for_light()
        self.choose('1')
        self.wait_for_dark()
        self.choose('0')  # no preference
        self.wait_for_light()

    def test_a_portal_that_comes_later(self):
        self.open_window()
        self.wait_for_light()
        self.start_portal('1')
        self.wait_for_dark()

    def test_plasma_has_a_theme_of_its_own(self):
        self.start_portal('1')
        self.open_window(desktop='KDE')
        self.program.wait_at_rest()
        self.assertFalse(self.is_dark())


if __name__ == '__main__':
    main()
