"""What shows the program where the desktop has no tray, or one of the old kind alone."""
import time

from brenvale_desk import main, wait_until
from tray_desk import TrayTest


class NoTrayTest(TrayTest):
    """Ten seconds after the start a desktop without a tray counts as one."""

    AFTER_THE_WAIT = 11

    def window(self):
        return self.desk.window('^Brenvale Settings')

    def test_a_start_by_hand_opens_the_window_once(self):
        self.program = self.start(arguments=())
        window = wait_until(self.window, 'the window', deadline=40)
        self.desk.run('xdotool', 'windowactivate', '--sync', window)
        # The window manager may not listen yet to the keys of a window that it has just activated.
        def closed():
            self.desk.run('xdotool', 'key', 'alt+F4')
            return not self.window()
        wait_until(closed, 'the window to close')
        self.program.wait_at_rest()
        self.assertFalse(self.window())
        self.connect(self.program).ping()

    def test_a_tray_that_comes_later_gets_the_item_all_the_same(self):
        self.start(arguments=())
        wait_until(self.window, 'the window', deadline=40)
        self.start_host()
        self.wait_for_item()

    def test_a_start_in_the_background_opens_nothing(self):
        program = self.start()
        time.sleep(self.AFTER_THE_WAIT)
        program.wait_at_rest()
        self.assertFalse(self.window())

    def test_a_start_by_hand_with_a_tray_opens_nothing(self):
        self.start_host()
        program = self.start(arguments=())
        self.wait_for_item()
        time.sleep(self.AFTER_THE_WAIT)
        program.wait_at_rest()
        self.assertFalse(self.window())


class OldTrayTest(TrayTest):
    """The kind of tray that embeds windows, on X11."""

    def embedded(self):
        return self.desk.window_tree().count('"brenvale" "brenvale"')

    def start_panel(self):
        try:
            return self.desk.spawn(['trayer', '--edge', 'top', '--width', '10'], 'trayer')
        except FileNotFoundError:
            self.skipTest('trayer is not installed')

    def test_it_is_used_where_there_is_no_other(self):
        self.start_panel()
        self.start()
        wait_until(self.embedded, 'the embedded item')

    def test_one_that_restarts(self):
        panel = self.start_panel()
        self.start()
        wait_until(self.embedded, 'the embedded item')
        self.desk.stop(panel)
        wait_until(lambda: not self.embedded(), 'the item to go')
        self.start_panel()
        wait_until(self.embedded, 'the item to come back')

    def test_a_start_by_hand_opens_no_window(self):
        self.start_panel()
        program = self.start(arguments=())
        wait_until(self.embedded, 'the embedded item')
        program.wait_at_rest()
        self.assertEqual(self.desk.windows('^Brenvale Settings'), [])

    def test_one_that_comes_late(self):
        program = self.start()
        time.sleep(11)  # the other kind of tray has had its chance
        program.wait_at_rest()
        self.start_panel()
        wait_until(self.embedded, 'the embedded item')


if __name__ == '__main__':
    main()
