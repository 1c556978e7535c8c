"""The panels of ringing and running calls, over the windows of other programs."""
import json
import os
import re
import unittest

import dbus

from brenvale_desk import Program, Recorder, main, wait_until
from desk import Desk

desk = Desk()
os.environ.update(desk.env)  # the accessibility library finds its bus by the environment of this process
from accessible import Application, add_accessibility  # noqa: E402

add_accessibility(desk)
unittest.addModuleCleanup(desk.close)

PANEL = '^Brenvale Call$'
AREAS = '_GTK_WORKAREAS_D0'
SIZE, PLACE = (350, 80), (910, 20)  # of a screen of 1280 by 800


def windows():
    """Numbers of the panels on the screen."""
    return desk.windows(PANEL)


def geometry(window):
    """Place and size."""
    values = dict(line.split('=') for line in desk.run('xdotool', 'getwindowgeometry', '--shell', window).splitlines())
    return (int(values['X']), int(values['Y'])), (int(values['WIDTH']), int(values['HEIGHT']))


def press_at(window, x, y):
    """A click on a place of the window."""
    (left, top), _ = geometry(window)
    desk.run('xdotool', 'mousemove', str(left + x), str(top + y), 'click', '1')


class PanelsTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.recorder = Recorder(desk)
        cls.addClassCleanup(cls.recorder.stop)

    def setUp(self):
        self.program = Program(desk).wait_listening()
        self.addCleanup(self.program.stop)
        self.phone = self.program.connect()
        self.addCleanup(self.phone.socket.close)
        self.program.wait_for_line(r'\[AppDelegate\] Incoming call cleared')

    def panel(self):
        """The one panel on the screen."""
        return wait_until(lambda: (windows() or [None])[0] if len(windows()) == 1 else None, 'one panel')

    def ring(self, number='17', **members):
        self.phone.send_json(action='incoming_call', state='RINGING', number=number, **members)
        return self.panel()

    def wait_gone(self):
        wait_until(lambda: not windows(), 'no panel')

    def read(self):
        """The panel as a screen reader has it."""
        return Application(desk, self.program.process.pid)

    def sent(self):
        """What reaches the phone next."""
        return self.phone.read_json()

    def do(self, action):
        bus = dbus.bus.BusConnection(desk.bus_address)
        proxy = bus.get_object('org.brenvale.Brenvale', '/org/brenvale/Brenvale', introspect=False)
        proxy.get_dbus_method('ActivateAction', 'org.freedesktop.Application')(action, [], {}, signature='sava{sv}')

    def start_full_screen(self):
        """A window of another program over the whole screen, with the keyboard; gives its number."""
        child = desk.spawn(['xterm', '-fullscreen', '-T', 'Full', '-e', f'cat >{desk.root}/typed'], 'xterm')
        self.addCleanup(desk.stop, child)
        has_focus = lambda: desk.run('xdotool', 'getwindowfocus', 'getwindowname', check=False).strip() == 'Full'
        wait_until(has_focus, 'the full screen in focus')
        window = desk.run('xdotool', 'getwindowfocus').strip()
        wait_until(lambda: geometry(window)[1] == (1280, 800), 'the full screen')
        return window

    def assert_typing_reaches(self, window, text):
        self.assertEqual(desk.run('xdotool', 'getwindowfocus').strip(), window)
        desk.run('xdotool', 'type', '--delay', '20', text)
        desk.run('xdotool', 'key', 'Return')
        typed = desk.root / 'typed'
        wait_until(lambda: typed.exists() and text + '\n' in typed.read_text(), f'"{text}" in the other program')


class PlaceTest(PanelsTest):
    def test_nothing_is_built_before_the_first_call(self):
        self.assertEqual(desk.run('xdotool', 'search', '--name', PANEL, check=False), '')

    def test_the_banner_stands_in_the_corner_with_its_size(self):
        self.assertEqual(geometry(self.ring()), (PLACE, SIZE))

    def test_the_call_window_stands_where_the_banner_was(self):
        window = self.ring()
        self.do('answer-call')
        wait_until(lambda: windows() and windows() != [window], 'the call window')
        self.assertEqual(geometry(self.panel()), (PLACE, SIZE))

    def test_a_bar_at_the_edge_is_left_out(self):
        bar = desk.spawn(['trayer', '--edge', 'top', '--SetDockType', 'true', '--SetPartialStrut', 'true', '--heighttype',
                          'pixel', '--height', '40', '--widthtype', 'percent', '--width', '100'], 'trayer')
        self.addCleanup(desk.stop, bar)
        wait_until(lambda: re.search(r'= 0, 40,', desk.run('xprop', '-root', '_NET_WORKAREA')), 'the smaller area')
        self.program.wait_at_rest()
        self.assertEqual(geometry(self.ring())[0], (910, 60))
        desk.stop(bar)
        wait_until(lambda: re.search(r'= 0, 0,', desk.run('xprop', '-root', '_NET_WORKAREA')), 'the whole area')

    def test_a_bar_is_left_out_with_several_monitors_too(self):
        for name, x, output in ('*left', 0, 'screen'), ('right', 640, 'none'):
            desk.run('xrandr', '--setmonitor', name, f'640/200x800/200+{x}+0', output)
            self.addCleanup(desk.run, 'xrandr', '--delmonitor', name.lstrip('*'))
        # What GNOME and Xfce say of them; the window manager of this desktop says nothing of single monitors.
        desk.run('xprop', '-root', '-f', AREAS, '32c', '-set', AREAS, '0, 32, 640, 768, 640, 0, 640, 800')
        self.addCleanup(desk.run, 'xprop', '-root', '-remove', AREAS)
        self.program.wait_at_rest()
        self.assertEqual(geometry(self.ring())[0], (640 - 20 - 350, 32 + 20))


class FloatingTest(PanelsTest):
    def test_it_lies_over_a_focused_full_screen_window_and_leaves_it_the_keyboard(self):
        other = self.start_full_screen()
        self.ring()
        self.assert_typing_reaches(other, 'before')
        press_at(self.panel(), 100, 40)
        self.assert_typing_reaches(other, 'after a press on the background')
        app = self.read()
        app.click(app.find('push button', 'Accept'))  # reaches the panel only where nothing lies over it
        self.assertEqual(self.sent(), {'action': 'answer_call'})
        self.panel()
        self.assert_typing_reaches(other, 'after Accept')

    def test_it_stays_over_a_full_screen_window_that_comes_later(self):
        self.ring()
        other = self.start_full_screen()
        desk.run('xdotool', 'windowactivate', '--sync', other)
        app = self.read()
        app.click(app.find('push button', 'Decline'))
        self.assertEqual(self.sent(), {'action': 'hangup_call'})
        self.wait_gone()

    def test_it_is_on_all_desktops(self):
        desk.run('xdotool', 'set_num_desktops', '2')
        self.addCleanup(desk.run, 'xdotool', 'set_desktop', '0')
        window = self.ring()
        desk.run('xdotool', 'set_desktop', '1')
        wait_until(lambda: desk.run('xdotool', 'get_desktop').strip() == '1', 'the other desktop')
        self.assertIn('IsViewable', desk.run('xwininfo', '-id', window))
        press_at(window, 318, 40)
        self.assertEqual(self.sent(), {'action': 'answer_call'})

    def test_its_background_drags_it(self):
        window = self.ring()
        desk.run('xdotool', 'mousemove', '1000', '30', 'mousedown', '1')
        for step in range(1, 11):
            desk.run('xdotool', 'mousemove', str(1000 - 30 * step), str(30 + 40 * step))
        desk.run('xdotool', 'mouseup', '1')
        wait_until(lambda: geometry(window)[0] == (610, 420), lambda: f'the new place, not {geometry(window)}')
        self.ring(name='Ann Lee')
        self.read().wait_for_text('Ann Lee')
        self.assertEqual((windows(), geometry(window)[0]), ([window], (610, 420)))

    def test_a_button_does_not_drag_it(self):
        window = self.ring()
        desk.run('xdotool', 'mousemove', '1184', '60', 'mousedown', '1', 'mousemove', '1100', '200', 'mouseup', '1')
        self.program.wait_at_rest()
        self.assertEqual(geometry(window)[0], PLACE)
        self.assertEqual(self.phone.ping(), [])  # released beside it

    def test_without_a_compositor_it_is_solid_to_its_corners(self):
        self.ring()
        self.program.wait_at_rest()
        colours = {desk.run('import', '-window', 'root', '-crop', f'1x1+{x}+{y}', '-depth', '8', 'txt:-').split()[-1]
                   for x, y in ((911, 21), (1258, 21), (911, 98), (1258, 98), (915, 60))}
        self.assertEqual(len(colours), 1, colours)  # the card's own, inside its border
        self.assertIn('TrueColor', desk.run('xwininfo', '-all', '-id', self.panel()))


class ContentsTest(PanelsTest):
    def test_a_second_ring_updates_in_place(self):
        window = self.ring('+49 170 1')
        app = self.read()
        app.wait_for_text('+49 170 1')
        self.ring('+49 170 1', name='Ann Lee')
        app.wait_for_text('Ann Lee')
        self.assertEqual(windows(), [window])
        self.assertEqual(len(self.program.wait_for_line(r'\[AppDelegate\] Incoming call detected: \+49 170 1', 2)), 2)

    def test_it_is_an_alert_that_says_who_calls(self):
        self.ring('17', name='Ann Lee')
        self.assertEqual(self.read().find('alert').get_name(), 'Incoming Call, Ann Lee, 17')

    def test_every_button_of_a_call_reaches_the_phone(self):
        self.ring('17', name='Ann Lee')
        app = self.read()
        app.click(app.find('push button', 'Accept'))
        self.assertEqual(self.sent(), {'action': 'answer_call'})
        app.click(app.find('push button', 'Mute'))
        self.assertEqual(self.sent(), {'action': 'toggle_mute', 'enabled': True})
        app.click(app.find('push button', 'Unmute'))
        self.assertEqual(self.sent(), {'action': 'toggle_mute', 'enabled': False})
        self.phone.send_json(action='call_state_changed', state='OFFHOOK', duration=3725)
        app.wait_for_text('62:05')
        app.click(app.find('push button', 'End call'))
        self.assertEqual(self.sent(), {'action': 'hangup_call'})
        self.panel()  # until the phone says that the call is over
        self.phone.send_json(action='call_ended')
        self.wait_gone()

    def test_a_screen_reader_presses_them(self):
        self.ring()
        self.read().press('push button', 'Decline')
        self.assertEqual(self.sent(), {'action': 'hangup_call'})
        self.wait_gone()

    def test_other_programs_press_them_by_name(self):
        self.ring()
        self.do('decline-call')
        self.assertEqual(self.sent(), {'action': 'hangup_call'})
        self.wait_gone()
        self.ring()
        self.do('answer-call')
        self.assertEqual(self.sent(), {'action': 'answer_call'})
        self.do('mute-call')
        self.assertEqual(self.sent(), {'action': 'toggle_mute', 'enabled': True})
        self.do('end-call')
        self.assertEqual(self.sent(), {'action': 'hangup_call'})

    def test_the_window_of_the_program_stays_closed(self):
        self.ring()
        self.do('answer-call')
        self.sent()
        self.panel()
        self.assertEqual(desk.run('xdotool', 'search', '--name', '^Brenvale Settings$', check=False), '')


if __name__ == '__main__':
    main()
