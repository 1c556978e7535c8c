"""The display that the program takes in a session which has both kinds."""
import pathlib
import re

from brenvale_desk import DeskTest, main
from sway_desk import SwayDesk


class DisplayTest(DeskTest):
    def setUp(self):
        self.desk = SwayDesk(xwayland=True)
        self.addCleanup(self.desk.close)

    def platform(self, **env):
        """The toolkit's plug-in for the display."""
        program = self.start(env=self.desk.env | env)
        maps = pathlib.Path(f'/proc/{program.process.pid}/maps').read_text()
        program.stop()
        return set(re.findall(r'/platforms/libq([a-z]+)', maps))

    def test_wayland_comes_first(self):
        self.assertEqual(self.platform(), {'wayland'})

    def test_on_gnome_x11_comes_first(self):
        for desktop in ('GNOME', 'ubuntu:GNOME', 'GNOME-Classic:GNOME'):
            with self.subTest(desktop):
                self.assertEqual(self.platform(XDG_CURRENT_DESKTOP=desktop), {'xcb'})

    def test_on_gnome_without_x11_it_is_wayland(self):
        self.assertEqual(self.platform(XDG_CURRENT_DESKTOP='GNOME', DISPLAY=':4711'), {'wayland'})

    def test_the_users_choice_wins(self):
        self.assertEqual(self.platform(XDG_CURRENT_DESKTOP='GNOME', QT_QPA_PLATFORM='wayland'), {'wayland'})
        self.assertEqual(self.platform(QT_QPA_PLATFORM='xcb'), {'xcb'})


if __name__ == '__main__':
    main()
