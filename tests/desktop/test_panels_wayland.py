"""The panels of calls on Wayland: on the overlay layer of sway, and as notifications where nothing can float."""
import shutil
import subprocess
import unittest

import dbus

from brenvale_desk import Program, Recorder, main, wait_until
from desk import Desk
from sway_desk import SwayDesk


class WaylandPanelsTest(unittest.TestCase):
    def start_on(self, desk):
        self.desk = desk
        self.addCleanup(desk.close)
        self.recorder = Recorder(desk)
        self.addCleanup(self.recorder.stop)
        self.program = Program(desk).wait_listening()
        self.addCleanup(self.program.stop)
        self.phone = self.program.connect()
        self.addCleanup(self.phone.socket.close)
        self.program.wait_for_line(r'\[AppDelegate\] Incoming call cleared')

    def ring(self, number='17', **members):
        self.phone.send_json(action='incoming_call', state='RINGING', number=number, **members)

    def do(self, action):
        bus = dbus.bus.BusConnection(self.desk.bus_address)
        proxy = bus.get_object('org.brenvale.Brenvale', '/org/brenvale/Brenvale', introspect=False)
        proxy.get_dbus_method('ActivateAction', 'org.freedesktop.Application')(action, [], {}, signature='sava{sv}')


class NotificationTest(WaylandPanelsTest):
    """Here without any display, which has no place for a panel either."""

    def setUp(self):
        self.start_on(Desk(display=False))

    def wait_live(self, count):
        wait_until(lambda: len(self.recorder.live()) == count, f'{count} notifications')

    def test_a_ringing_call_is_announced_urgently_with_its_buttons(self):
        self.ring('17', name='Ann <b>Lee')
        call, = self.recorder.wait_for(1)
        self.assertEqual(call['summary'], 'Ann <b>Lee')
        self.assertIn('Incoming Call', call['body'])
        self.assertEqual(call['actions'][1::2], ['Decline', 'Accept'])
        self.assertEqual(call['hints']['urgency'], 2)

    def test_its_buttons_reach_the_phone(self):
        self.ring()
        self.recorder.wait_for(1)
        self.recorder.control('Click', self.recorder.live()[0]['id'], 'Accept')
        self.assertEqual(self.phone.read_json(), {'action': 'answer_call'})
        running = self.recorder.wait_for(2)[1]
        self.assertEqual(running['actions'][1::2], ['Mute', 'End call'])
        self.wait_live(1)
        self.recorder.control('Click', self.recorder.live()[0]['id'], 'Mute')
        self.assertEqual(self.phone.read_json(), {'action': 'toggle_mute', 'enabled': True})
        self.assertEqual(self.recorder.wait_for(3)[2]['actions'][1::2], ['Unmute', 'End call'])
        self.phone.send_json(action='call_ended')
        self.wait_live(0)

    def test_a_second_ring_replaces_the_first(self):
        self.ring()
        self.recorder.wait_for(1)
        first = self.recorder.live()[0]['id']
        self.ring(name='Ann')
        self.assertEqual(self.recorder.wait_for(2)[1]['replaces'], first)

    def test_it_goes_when_the_ringing_ends_before_the_server_has_answered(self):
        self.recorder.control('AnswerAfter', 300)
        self.ring()
        self.recorder.wait_for(1)
        self.phone.send_json(action='call_ended')
        self.recorder.wait_for(1, 'CloseNotification')
        self.wait_live(0)


class LayerShellTest(WaylandPanelsTest):
    def setUp(self):
        self.start_on(SwayDesk())
        if shutil.which('grim') is None:
            self.skipTest('no grim to take pictures with')
        self.point(5, 5)  # the desktop has no pointer before
        self.program.wait_at_rest()

    def pixel(self, x, y):
        """The colour there."""
        picture = self.desk.root / 'pixel.ppm'
        self.desk.run('grim', '-t', 'ppm', '-g', f'{x},{y} 1x1', str(picture))
        return tuple(picture.read_bytes()[-3:])

    def is_shown(self, left=910):
        """Red and green stand at the places of the buttons."""
        red, green = self.pixel(left + 262, 60), self.pixel(left + 306, 60)
        return red[0] > 180 and red[1] < 100 and green[1] > 120 and green[0] < 100

    def is_sharp(self):
        """At a scale of 2: not all blocks of four pixels round the buttons have one colour, as of a picture made larger."""
        width, height = 100, 40
        picture = self.desk.root / 'buttons.ppm'
        self.desk.run('grim', '-t', 'ppm', '-g', f'{640 - 20 - 110},40 {width}x{height}', str(picture))
        pixels, row = picture.read_bytes()[-(2 * width * 2 * height * 3):], 2 * width * 3
        colour = lambda x, y: pixels[y * row + 3 * x:][:3]
        return any(len({colour(x + right, y + down) for right in (0, 1) for down in (0, 1)}) > 1
                   for y in range(0, 2 * height, 2) for x in range(0, 2 * width, 2))

    def command(self, kind, **members):
        """The program's own remote control is the pointer of this desktop."""
        self.phone.send_json(action='remote_control', command='c', type=kind, **members)

    def point(self, x, y):
        self.command('mouse_move', dx=-5000, dy=-5000)
        self.command('mouse_move', dx=x, dy=y)

    def click(self, x, y):
        self.point(x, y)
        self.command('mouse_click', button='left')

    def start_full_screen(self):
        child = self.desk.start_focused(['foot', '-o', 'main.term=xterm', 'sh', '-c', f'cat >{self.desk.root}/typed'], 'foot')
        self.desk.sway('fullscreen', 'enable')
        return child

    def test_it_lies_over_a_full_screen_window_in_the_corner_and_leaves_it_the_keyboard(self):
        other = self.start_full_screen()
        self.assertFalse(self.is_shown())
        self.ring(name='Ann Lee')
        wait_until(self.is_shown, 'the panel')
        background = self.pixel(700, 60)
        self.assertNotEqual(self.pixel(930, 25), background)
        for x, y in ((905, 60), (1265, 60), (1000, 15), (1000, 105)):
            self.assertEqual(self.pixel(x, y), background)
        self.assertEqual(self.desk.focused()['pid'], other.pid)
        self.phone.send_json(action='call_ended')
        wait_until(lambda: not self.is_shown(), 'the panel to go')

    def test_its_buttons_are_pressed_by_the_pointer_and_the_keyboard_stays(self):
        other = self.start_full_screen()
        self.ring()
        wait_until(self.is_shown, 'the panel')
        self.click(910 + 318, 60)
        self.assertEqual(self.phone.read_json(), {'action': 'answer_call'})
        is_running = lambda: self.pixel(910 + 306, 60)[0] > 180 and not self.is_shown()
        wait_until(is_running, 'the call window')
        self.click(910 + 318, 60)
        self.assertEqual(self.phone.read_json(), {'action': 'hangup_call'})
        self.assertEqual(self.desk.focused()['pid'], other.pid)

    def test_it_goes_along_when_the_scale_changes(self):
        self.ring()
        wait_until(self.is_shown, 'the panel')
        self.desk.sway('output', 'HEADLESS-1', 'scale', '2')  # a desktop of 640 by 400
        wait_until(lambda: self.is_shown(left=640 - 20 - 350), 'the panel in the corner')
        wait_until(self.is_sharp, 'the panel drawn for that scale')
        self.desk.sway('output', 'HEADLESS-1', 'scale', '1')
        wait_until(self.is_shown, 'the panel in the corner as before')

    def test_it_comes_back_on_another_monitor_when_its_own_is_gone(self):
        self.desk.sway('create_output')
        self.desk.sway('output', 'HEADLESS-2', 'resolution', '1280x800', 'position', '1280', '0')
        self.desk.sway('focus', 'output', 'HEADLESS-2')
        self.ring()
        wait_until(lambda: self.is_shown(left=1280 + 910), 'the panel')
        try:
            self.desk.sway('output', 'HEADLESS-2', 'unplug')
        except subprocess.CalledProcessError:
            self.skipTest('sway before 1.8 unplugs no monitor')
        wait_until(self.is_shown, 'the panel on the other monitor')

    def test_the_buttons_have_names_for_other_programs(self):
        self.ring()
        wait_until(self.is_shown, 'the panel')
        self.do('decline-call')
        self.assertEqual(self.phone.read_json(), {'action': 'hangup_call'})
        wait_until(lambda: not self.is_shown(), 'the panel to go')


if __name__ == '__main__':
    main()
