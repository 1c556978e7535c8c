"""Keys, text and pointer of the phone on a compositor that lets a program have a keyboard and a pointer of its own."""
import json
import pathlib
import shutil
import signal

from brenvale_desk import HERE, PROGRAM, DeskTest, Recorder, main, wait_until
from sway_desk import SwayDesk

WINDOW = pathlib.Path(PROGRAM).with_name('receiving-window')
LEFT, RIGHT, CONTROL, RETURN, PLAY = 0xff51, 0xff53, 0xffe3, 0xff0d, 0x1008ff14
SHIFT_HELD, SUPER_HELD = 0x2000000, 0x10000000
MIXED = 'aA zZ "~^` Grüße ÄÖ€ Ελλάδα Привет שלום مرحبا 日本語 한국 😀👩‍👩‍👧 e\u0301'


class SwayTest(DeskTest):
    def setUp(self):
        if shutil.which('sway') is None:
            self.skipTest('sway is not installed')
        self.desk = SwayDesk()
        self.addCleanup(self.desk.close)
        self.desk.env |= {'QT_QPA_PLATFORM': 'wayland', 'QT_IM_MODULE': 'none',
                          'QT_WAYLAND_DISABLE_WINDOWDECORATION': '1'}
        Recorder(self.desk)
        self.program = self.start()
        self.phone = self.connect(self.program)

    def start_window(self):
        self.file = self.desk.root / 'received'
        self.window = self.desk.start_focused([WINDOW, self.file], 'window')

    def entries(self):
        return [json.loads(line) for line in self.file.read_text().split('\n')[:-1]]

    def text(self):
        return next((entry['text'] for entry in reversed(self.entries()) if 'text' in entry), '')

    def keys(self):
        return [(entry['key'], entry['down'], entry['modifiers'] & 0x1f000000) for entry in self.entries()
                if 'key' in entry]

    def remote(self, command, **members):
        self.phone.send_json(action='remote_control', command=command, **members)

    def type(self, text):
        self.remote('text', type='keyboard_text', text=text)

    def wait_for_text(self, text):
        try:
            wait_until(lambda: self.text() == text)
        except TimeoutError:
            self.assertEqual(self.text(), text)


class TextTest(SwayTest):
    def test_any_text_arrives_whole_and_in_order(self):
        self.start_window()
        self.type(MIXED + '\n\tEnd')
        self.wait_for_text(MIXED + '\n\tEnd')

    def test_texts_with_ever_new_characters_follow_each_other(self):
        self.start_window()
        whole = ''
        for number in range(40):
            text = ''.join(chr(0x4e00 + 17 * number + step) for step in range(17)) + '\n'
            self.type(text)
            whole += text
        self.wait_for_text(whole)

    def test_a_long_text_arrives_whole(self):
        self.start_window()
        text = '\n'.join(''.join(chr(0x400 + (line * 7 + column) % 300) for column in range(50)) for line in range(40))
        self.type(text)
        self.wait_for_text(text)

    def test_a_terminal_gets_it_too(self):
        if shutil.which('foot') is None:
            self.skipTest('foot is not installed')
        file = self.desk.root / 'terminal'
        file.touch()
        self.desk.start_focused(['foot', '/usr/bin/python3', str(HERE / 'terminal_receiver.py'), str(file)], 'foot')
        wait_until(lambda: file.stat().st_size, 'the terminal')
        self.type(MIXED)
        wait_until(lambda: len(file.read_bytes()) > len(MIXED.encode()), 'the text')
        self.assertEqual(file.read_bytes()[1:].decode(), MIXED)


class EventsTest(SwayTest):
    def setUp(self):
        super().setUp()
        self.start_window()

    def test_modifiers_are_held_on_the_one_key_and_no_key_of_theirs_is_pressed(self):
        self.remote('cmd+shift_key_left')
        self.remote('key_right')
        wait_until(lambda: len(self.keys()) >= 4, 'the keys')
        held = SHIFT_HELD | SUPER_HELD
        self.assertEqual(self.keys(), [(LEFT, True, held), (LEFT, False, held), (RIGHT, True, 0), (RIGHT, False, 0)])

    def test_bare_modifiers_and_media_keys(self):
        self.remote('key_control')
        self.remote('play_pause', type='media')
        self.remote('key_return')
        wait_until(lambda: len(self.keys()) >= 6, 'the keys')
        self.assertEqual([key for key, down, _ in self.keys() if down], [CONTROL, PLAY, RETURN])
        self.assertEqual([key for key, down, _ in self.keys() if not down], [CONTROL, PLAY, RETURN])

    def test_clicks(self):
        self.remote('move', type='mouse_move', dx=5.5, dy=-3.25)
        self.remote('click', type='mouse_click')
        self.remote('click', type='mouse_click', button='right')
        buttons = lambda: [(entry['button'], entry['down']) for entry in self.entries() if 'button' in entry]
        wait_until(lambda: len(buttons()) >= 4, 'the buttons')
        self.assertEqual(buttons(), [(1, True), (1, False), (2, True), (2, False)])

    def test_a_compositor_that_hangs_does_not_hold_up_the_link(self):
        self.remote('key_left')
        wait_until(lambda: len(self.keys()) >= 2, 'the first key')
        self.desk.process.send_signal(signal.SIGSTOP)
        for _ in range(200):
            self.remote('key_left')
            self.remote('move', type='mouse_move', dx=1, dy=0)
        self.phone.ping()
        self.desk.process.send_signal(signal.SIGCONT)
        wait_until(lambda: len(self.keys()) >= 402, 'the keys')
        self.assertEqual(self.keys(), [(LEFT, True, 0), (LEFT, False, 0)] * 201)


if __name__ == '__main__':
    main()
