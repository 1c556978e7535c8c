"""Keys and pointer events by the desktop's portal: the consent, its memory, and each call in its order."""
import os
import pathlib
import shutil
import signal
import subprocess

from brenvale_desk import HERE, Recorder, main, wait_until
from portal_desk import ASKING, INSERT, KEYCODE, KEYSYM, SHIFT, PortalTest

MOTION, BUTTON = 'NotifyPointerMotion', 'NotifyPointerButton'
CONTROL, SUPER, LEFT, RIGHT, ESCAPE = 29, 125, 105, 106, 1
PRESSED_LEFT = [(KEYCODE, LEFT, 1), (KEYCODE, LEFT, 0)]
PRESSED_RIGHT = [(KEYCODE, RIGHT, 1), (KEYCODE, RIGHT, 0)]


class ConsentTest(PortalTest):
    def setUp(self):
        super().setUp()
        self.start_weston()
        self.state = pathlib.Path(self.desk.env['XDG_STATE_HOME']) / 'brenvale'

    def test_the_desktop_asks_the_user_once_for_brenvale_and_remembers_the_consent(self):
        self.start_portal()
        program = self.start_consented()
        calls = self.calls()
        self.assertEqual(self.names()[:4], ASKING)
        self.assertEqual(calls[0]['program'], 'org.brenvale.Brenvale')
        self.assertEqual((calls[2]['types'], calls[2]['persist_mode']), ('UInt32 3', 'UInt32 2'))
        self.assertNotIn('restore_token', calls[2])
        token = self.state / 'remote-desktop-token'
        wait_until(token.exists, 'the token')
        self.assertEqual((token.read_text(), token.stat().st_mode & 0o777), ('kept', 0o600))
        program.stop()
        self.start()
        self.wait_open(starts=2)
        selected = [call for call in self.calls() if call['call'] == 'SelectDevices']
        self.assertEqual(selected[1]['restore_token'], 'String kept')

    def test_a_refusal_is_remembered_and_the_next_start_asks_nothing(self):
        self.start_portal('--deny')
        Recorder(self.desk)
        program = self.start()
        self.wait_for_calls(5)
        self.connect(program).ping()
        program.wait_at_rest()
        self.assertEqual(self.names(), [*ASKING, 'Close'])
        program.stop()
        program = self.start()
        self.connect(program).ping()
        program.wait_at_rest()
        self.assertEqual(self.names(), [*ASKING, 'Close'])

    def test_a_consent_to_the_pointer_alone_is_of_no_use(self):
        self.start_portal('--devices', '2')
        Recorder(self.desk)
        self.start()
        self.assertEqual(self.wait_for_calls(5)[4]['call'], 'Close')

    def test_a_portal_that_registers_no_programs_is_asked_all_the_same(self):
        self.start_portal('--no-registry')
        self.start_consented()
        self.assertEqual(self.names()[:3], ASKING[1:])

    def test_a_memory_that_cannot_be_read_or_written_holds_nobody_up(self):
        self.state.mkdir()
        os.mkfifo(self.state / 'remote-desktop-token')
        self.start_portal()
        self.start_consented()
        self.assertNotIn('restore_token', self.calls()[2])

    def test_a_portal_that_is_slow_to_start_is_waited_for_and_the_link_serves(self):
        self.start_portal('--slow', '3')
        Recorder(self.desk)
        program = self.start()
        self.connect(program).ping()
        self.assertEqual(self.names(), [])
        self.wait_open()

    def test_a_portal_whose_back_end_is_still_starting_is_asked_when_that_has_come(self):
        self.start_portal('--unready')
        Recorder(self.desk)
        program = self.start()
        self.connect(program).ping()
        program.wait_at_rest()
        self.assertEqual(self.names(), [])
        self.steer('BackEndCame')
        self.wait_open()

    def test_a_portal_that_comes_late_is_asked_then(self):
        Recorder(self.desk)
        program = self.start()
        self.connect(program).ping()
        program.wait_at_rest()
        self.start_portal()
        self.wait_open()

    def test_a_session_that_the_desktop_ends_stays_ended(self):
        self.start_portal()
        program = self.start_consented()
        phone = self.connect(program)
        self.remote(phone, 'key_left')
        self.wait_for_posted(PRESSED_LEFT)
        self.close_sessions()
        program.wait_at_rest()
        self.remote(phone, 'key_right')
        program.wait_for_line(r'\[WebSocketServer\] Error: Command .key_right. failed\. .*')
        program.wait_at_rest()
        self.assertEqual(self.posted(), PRESSED_LEFT)
        self.assertEqual(self.names().count('Start'), 1, 'who has ended it is not asked')

    def test_a_portal_that_restarts_gets_a_new_session_without_what_came_meanwhile(self):
        self.start_portal()
        program = self.start_consented()
        phone = self.connect(program)
        self.stop_portal()
        program.wait_at_rest()
        for _ in range(5):
            self.remote(phone, 'text', type='keyboard_text', text='gone')
            self.remote(phone, 'move', type='mouse_move', dx=3, dy=3)
        phone.ping()
        self.start_portal()
        self.wait_open(starts=2)
        self.remote(phone, 'key_left')
        wait_until(lambda: self.posted()[-2:] == PRESSED_LEFT, 'the key')
        self.assertEqual(self.posted()[2:], PRESSED_LEFT)

    def test_what_comes_before_the_consent_vanishes(self):
        Recorder(self.desk)
        program = self.start()
        phone = self.connect(program)
        self.remote(phone, 'text', type='keyboard_text', text='gone')
        self.remote(phone, 'click', type='mouse_click')
        phone.ping()
        self.start_portal()
        self.wait_open()
        self.remote(phone, 'key_left')
        self.wait_for_posted(PRESSED_LEFT)


class EventsTest(PortalTest):
    def setUp(self):
        super().setUp()
        self.start_weston()
        self.start_portal()
        self.program = self.start_consented()
        self.phone = self.connect(self.program)

    def test_shortcuts_go_as_places_on_the_keyboard(self):
        self.remote(self.phone, 'cmd+shift_key_left')
        self.remote(self.phone, 'key_control')
        self.remote(self.phone, 'key_escape')
        keys = [(SHIFT, 1), (SUPER, 1), (LEFT, 1), (LEFT, 0), (SUPER, 0), (SHIFT, 0),
                (CONTROL, 1), (CONTROL, 0), (ESCAPE, 1), (ESCAPE, 0)]
        self.wait_for_posted([(KEYCODE, *key) for key in keys])

    def test_media_keys(self):
        commands = [('play_pause', 'media', 164), ('next', 'media', 163), ('prev', 'media', 165), ('vol_up', 'media', 115),
                    ('vol_down', 'media', 114), ('mute_mac', 'remote', 113), ('brightness_up', 'remote', 230),
                    ('brightness_down', 'remote', 229), ('screen_brightness_up', 'remote', 225),
                    ('screen_brightness_down', 'remote', 224)]
        for command, kind, _ in commands:
            self.remote(self.phone, command, type=kind)
        self.wait_for_posted([(KEYCODE, code, state) for _, _, code in commands for state in (1, 0)])

    def test_the_pointer_keeps_its_fractions(self):
        moves = [(10.4, -0.25), (10.4, 0), (-3.25, 1e9), (0, 7)]
        for dx, dy in moves:
            self.remote(self.phone, 'move', type='mouse_move', dx=dx, dy=dy)
        self.remote(self.phone, 'click', type='mouse_click')
        self.remote(self.phone, 'click', type='mouse_click', button='right')
        wait_until(lambda: len(self.posted()) >= 8, 'the pointer')
        events = self.posted()
        self.assertEqual([name for name, *_ in events], [MOTION] * 4 + [BUTTON] * 4)
        for (_, dx, dy), (wanted_dx, wanted_dy) in zip(events, [(10.4, -0.25), (10.4, 0), (-3.25, 1e6), (0, 7)]):
            self.assertAlmostEqual(dx, wanted_dx, 5)
            self.assertAlmostEqual(dy, wanted_dy, 5)
        self.assertEqual(events[4:], [(BUTTON, 0x110, 1), (BUTTON, 0x110, 0), (BUTTON, 0x111, 1), (BUTTON, 0x111, 0)])

    def test_text_without_a_clipboard_is_typed_by_classic_keysyms(self):
        self.remote(self.phone, 'text', type='keyboard_text', text='aä€я\n\t😀')
        keysyms = [(KEYSYM, 0x61), (KEYSYM, 0xe4), (KEYSYM, 0x20ac), (KEYSYM, 0x6d1), (KEYCODE, 28), (KEYCODE, 15),
                   (KEYSYM, 0x101f600)]
        self.wait_for_posted([(*key, state) for key in keysyms for state in (1, 0)])

    def test_a_burst_arrives_complete_and_in_order(self):
        for number in range(500):
            self.remote(self.phone, 'key_left' if number % 2 == 0 else 'key_right')
        self.wait_for_posted((PRESSED_LEFT + PRESSED_RIGHT) * 250)

    def test_a_portal_that_hangs_does_not_hold_up_the_link(self):
        self.portal.send_signal(signal.SIGSTOP)
        for _ in range(50):
            self.remote(self.phone, 'key_left')
            self.remote(self.phone, 'move', type='mouse_move', dx=1, dy=0)
        self.phone.ping()
        self.portal.send_signal(signal.SIGCONT)
        wait_until(lambda: len(self.posted()) >= 150, 'the events')
        self.assertEqual([event for event in self.posted() if event[0] == KEYCODE], PRESSED_LEFT * 50)


class PastingTest(PortalTest):
    """With a clipboard: that of an X server beside the compositor, as on GNOME."""
    display = True

    def setUp(self):
        super().setUp()
        if shutil.which('xclip') is None:
            self.skipTest('xclip is not installed')
        self.start_weston()
        self.start_portal()

    def selection(self, name):
        return subprocess.run(['xclip', '-o', '-selection', name], env=self.desk.env, capture_output=True, timeout=20,
                              check=False).stdout.decode()

    def copy(self, name, text):
        subprocess.run(['xclip', '-selection', name], input=text.encode(), env=self.desk.env, check=True, timeout=20,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def test_a_text_that_the_layouts_lack_is_pasted_and_the_user_gets_his_own_back(self):
        self.copy('clipboard', 'of the user')
        self.copy('primary', 'selected')
        program = self.start_consented()
        phone = self.connect(program)
        text = 'üé Привет 😀 日本'
        self.remote(phone, 'text', type='keyboard_text', text=text)
        pasted = [(KEYCODE, SHIFT, 1), (KEYCODE, INSERT, 1), (KEYCODE, INSERT, 0), (KEYCODE, SHIFT, 0)]
        self.wait_for_posted(pasted)
        self.assertEqual((self.selection('clipboard'), self.selection('primary')), (text, text))
        wait_until(lambda: self.selection('clipboard') == 'of the user', 'the clipboard of the user')
        self.assertEqual(self.selection('primary'), 'selected')

    def test_quitting_while_a_text_is_pasted_keeps_the_users_clipboard_and_not_the_text(self):
        kept = self.desk.root / 'kept'
        self.copy('clipboard', 'of the user')
        self.desk.spawn(['/usr/bin/python3', '-B', str(HERE / 'x11_selection.py'), 'manager', str(kept)], 'manager')
        wait_until(lambda: 'ready' in (self.desk.root / 'manager.log').read_text(), 'the manager')
        program = self.start_consented()
        phone = self.connect(program)
        self.remote(phone, 'text', type='keyboard_text', text='geheimes Paßwort 漢')
        wait_until(lambda: (KEYCODE, INSERT, 1) in self.posted(), 'the paste')
        self.desk.run('gdbus', 'call', '--session', '--dest', 'org.brenvale.Brenvale', '--object-path',
                      '/org/brenvale/Brenvale', '--method', 'org.freedesktop.Application.ActivateAction', 'quit', '[]', '{}')
        self.assertEqual(program.process.wait(20), 0)
        wait_until(kept.exists, 'what the manager keeps')
        self.assertEqual(kept.read_bytes(), b'of the user')


if __name__ == '__main__':
    main()
