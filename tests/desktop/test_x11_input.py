"""Keys, text and pointer events as programs of several kinds receive them on a desktop with a window manager."""
import subprocess
import unittest

from desk import Desk, wait_until
from x11_input_desk import Poster, Receiver

SHIFT, CONTROL, COMMAND = 0x20000, 0x40000, 0x100000
QT_SHIFT, QT_CONTROL = 0x02000000, 0x04000000
TEXT = ('Grüße, naïve café — Ελληνικά Привет שלום مرحبا 日本語 👩\u200d👩\u200d👧\u200d👦 e\u0301 ñ ß É ÀÇ€ '
        '100% {ok} [a] @ \\ ~ ^ ` \'"\tTab\nnext line ')


def cjk(count):
    return ''.join(chr(0x4e00 + index) for index in range(count))


class X11InputTest(unittest.TestCase):
    def setUp(self):
        self.desk = Desk(bus=False)
        self.addCleanup(self.desk.close)

    def start_poster(self):
        poster = Poster(self.desk)
        self.addCleanup(poster.close)
        return poster

    def set_layout(self, *words):
        self.desk.run('setxkbmap', *words)

    def layout(self):
        return self.desk.run('xkbcomp', '-w0', self.desk.env['DISPLAY'], '-')

    def assert_typed(self, kind, *texts):
        receiver = Receiver(self.desk, kind)
        poster = self.start_poster()
        before = self.layout()
        for text in texts:
            poster.type(text)
        whole = ''.join(texts)
        wait_until(lambda: len(receiver.text) >= len(whole), f'{len(whole)} characters', deadline=60)
        self.assertEqual(receiver.text, whole)
        poster.close()
        self.assertEqual(self.layout(), before)
        receiver.stop()

    def assert_typed_by_each_layout(self, kind):
        for layout in ('us', 'de', 'fr', 'us,ru'):
            with self.subTest(layout):
                self.set_layout(layout)
                self.assert_typed(kind, TEXT)

    def test_any_text_reaches_a_qt_text_box(self):
        self.assert_typed_by_each_layout('qt')

    def test_any_text_reaches_a_gtk_text_view(self):
        self.assert_typed_by_each_layout('gtk')

    def test_any_text_reaches_a_terminal(self):
        self.assert_typed_by_each_layout('xterm')

    def test_a_line_reaches_a_gtk_entry(self):
        self.assert_typed('entry', TEXT.replace('\t', ' ').replace('\n', ' '))

    def test_more_characters_than_there_are_spare_keys(self):
        for kind in ('qt', 'gtk', 'xterm'):
            with self.subTest(kind):
                self.assert_typed(kind, cjk(100))

    # A desktop for each: the window manager takes a while to follow the keys that were lent on the way.
    def test_five_thousand_characters_at_once_reach_a_qt_text_box(self):
        self.assert_typed('qt', (TEXT * 50)[:5000])

    def test_five_thousand_characters_at_once_reach_a_gtk_text_view(self):
        self.assert_typed('gtk', (TEXT * 50)[:5000])

    def test_five_thousand_characters_at_once_reach_a_terminal(self):
        self.assert_typed('xterm', (TEXT * 50)[:5000])

    def test_many_short_texts_stay_in_order(self):
        self.assert_typed('qt', *(f'{number}ü漢 ' for number in range(40)))

    def test_keys_come_with_their_modifiers_and_nothing_stays_down(self):
        receiver = Receiver(self.desk, 'qt')
        poster = self.start_poster()
        poster.send(f'key 123 {SHIFT | CONTROL}')
        poster.send('key 124 0')
        left, right = 0xff51, 0xff53
        wait_until(lambda: [key for key in receiver.keys() if key[0] == right and not key[1]], 'the last key')
        arrows = [key for key in receiver.keys() if key[0] in (left, right)]
        both = QT_SHIFT | QT_CONTROL
        self.assertEqual(arrows, [(left, True, both), (left, False, both), (right, True, 0), (right, False, 0)])

    def test_the_window_manager_gets_its_shortcuts(self):
        """Openbox goes to the next desktop by Control, Alt and Right."""
        poster = self.start_poster()

        def deals_with_requests():  # it announces itself before it listens, to us as to the keyboard
            self.desk.run('xdotool', 'set_num_desktops', '2', check=False)
            return self.desk.run('xdotool', 'get_num_desktops', check=False).strip() == '2'
        wait_until(deals_with_requests, 'the window manager to listen')
        poster.send(f'key 124 {CONTROL | 0x80000}')
        wait_until(lambda: self.desk.run('xdotool', 'get_desktop').strip() == '1', 'the other desktop')

    def test_clicks_and_fractions_of_moves(self):
        receiver = Receiver(self.desk, 'qt')
        poster = self.start_poster()
        place = lambda: [int(part.split(':')[1]) for part in self.desk.run('xdotool', 'getmouselocation').split()[:2]]
        start = place()
        for _ in range(100):
            poster.send('move 0.25 -0.1')
        wait_until(lambda: place() == [start[0] + 25, start[1] - 10], 'the sum of the moves')
        poster.send('click left')
        poster.send('click right')
        buttons = lambda: [(entry['button'], entry['down']) for entry in receiver.entries() if 'button' in entry]
        wait_until(lambda: len(buttons()) == 4, 'both clicks')
        self.assertEqual(buttons(), [(1, True), (1, False), (2, True), (2, False)])

    def test_the_pointer_does_not_wait_for_a_long_text(self):
        Receiver(self.desk, 'qt')
        poster = self.start_poster()
        poster.type('x' * 3000)
        poster.send('key 53 0')
        self.assertEqual(poster.ask('say there'), 'there')

    def test_a_real_user_types_meanwhile(self):
        """What the user types comes between, but of the posted text nothing is lost or changed."""
        receiver = Receiver(self.desk, 'qt')
        poster = self.start_poster()
        text = 'Grüße an ALLE, und 日本語! ' * 20
        user = subprocess.Popen(['xdotool', 'type', '--delay', '20', 'x' * 20], env=self.desk.env)
        poster.type(text)
        user.wait(60)
        wait_until(lambda: len(receiver.text) >= len(text) + 20, 'all of both', deadline=60)
        self.assertEqual(receiver.text.replace('x', ''), text)


if __name__ == '__main__':
    unittest.main()
