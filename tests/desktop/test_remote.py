"""The phone's remote control through the whole program: what arrives at a program that has the keyboard."""
import os
import pathlib
import signal
import subprocess

from brenvale_desk import PROGRAM, DeskTest, free_port, main, wait_until
from x11_input_desk import Receiver

PHONE = pathlib.Path(PROGRAM).with_name('brenvale-phone')

BACKSPACE, RETURN, ESCAPE = 0xff08, 0xff0d, 0xff1b
LEFT, UP, RIGHT, DOWN = 0xff51, 0xff52, 0xff53, 0xff54
SHIFT, CONTROL, ALT, SUPER = 0xffe1, 0xffe3, 0xffe9, 0xffeb
MODIFIERS = {SHIFT, CONTROL, ALT, SUPER}
# Qt's names of what is held.
WITH_SHIFT, WITH_CONTROL, WITH_ALT, WITH_SUPER = 0x2000000, 0x4000000, 0x8000000, 0x10000000
MIXED = 'Grüße, Ελλάδα! привет مرحبا שלום 漢字 👩‍👩‍👧 e\u0301 €\tEnd'


class RemoteTest(DeskTest):
    def setUp(self):
        super().setUp()
        self.receiver = Receiver(self.desk, 'qt')
        self.program = self.start()
        self.phone = self.connect(self.program)

    def command(self, command, **members):
        self.phone.send_json(action='remote_control', command=command, **members)

    def type(self, text):
        self.command('t', type='keyboard_text', text=text)

    def move(self, **by):
        self.command('m', type='mouse_move', **by)

    def presses(self):
        """The keys that went down, but for modifiers around them: (keysym, what was held)."""
        return [(key, held) for key, is_down, held in self.receiver.keys() if is_down and key not in MODIFIERS]

    def wait_for_presses(self, expected):
        wait_until(lambda: len(self.presses()) >= len(expected), f'{len(expected)} keys')
        self.assertEqual(self.presses(), expected)

    def assert_nothing_is_held(self):
        balance = {}
        for key, is_down, _ in self.receiver.keys():
            balance[key] = balance.get(key, 0) + (1 if is_down else -1)
        self.assertEqual({key for key, count in balance.items() if count}, set())

    def buttons(self):
        return [(entry['button'], entry['down']) for entry in self.receiver.entries() if 'button' in entry]

    def pointer(self):
        words = dict(word.split(':') for word in self.desk.run('xdotool', 'getmouselocation').split())
        return int(words['x']), int(words['y'])

    def place_pointer(self, x, y):
        self.desk.run('xdotool', 'mousemove', str(x), str(y))
        wait_until(lambda: self.pointer() == (x, y), 'the pointer')


class KeysTest(RemoteTest):
    def test_each_key_of_the_table(self):
        words = {'key_escape': ESCAPE, 'key_right': RIGHT, 'key_left': LEFT, 'key_up': UP, 'key_down': DOWN,
                 'key_return': RETURN, 'key_delete': BACKSPACE, 'next': RIGHT, 'slide_next': RIGHT,
                 'presentation_next': RIGHT, 'seek_forward': RIGHT, 'prev': LEFT, 'slide_prev': LEFT,
                 'presentation_prev': LEFT, 'seek_backward': LEFT}
        for word in words:
            self.command(word)
        self.wait_for_presses([(key, 0) for key in words.values()])
        wait_until(lambda: len(self.receiver.keys()) == 2 * len(words), 'the releases')
        self.assertEqual([is_down for _, is_down, _ in self.receiver.keys()], [True, False] * len(words))

    def test_modifiers_are_held_on_the_one_key(self):
        # The window manager has arrows with Super and Shift for itself.
        for word in ('cmd+shift_key_escape', 'ctrl_slide_next', 'meta+option_key_up', 'key_down'):
            self.command(word)
        self.wait_for_presses([(ESCAPE, WITH_SUPER | WITH_SHIFT), (RIGHT, WITH_CONTROL), (UP, WITH_ALT), (DOWN, 0)])
        wait_until(lambda: self.receiver.keys()[-1][:2] == (DOWN, False), 'the last release')
        self.assert_nothing_is_held()

    def test_a_modifier_alone(self):
        self.command('key_control')
        self.command('key_escape')
        self.wait_for_presses([(ESCAPE, 0)])
        self.assertEqual([key[:2] for key in self.receiver.keys()[:2]], [(CONTROL, True), (CONTROL, False)])

    def test_what_means_nothing_presses_nothing(self):
        for word in ('cmd+shift_vol_up', 'a_slide_b', 'cmd_next', 'key_tab', ''):
            self.command(word)
        self.command('key_left', type='media')
        self.command('key_up')
        self.wait_for_presses([(UP, 0)])

    def test_media_and_other_system_keys(self):
        # Play, next, previous, raise and lower by the type; mute twice, light of the keyboard, of the display.
        expected = [0x1008ff14, 0x1008ff17, 0x1008ff16, 0x1008ff13, 0x1008ff11, 0x1008ff12, 0x1008ff12,
                    0x1008ff05, 0x1008ff06, 0x1008ff02, 0x1008ff03]
        for word in ('play_pause', 'next', 'prev', 'vol_up', 'vol_down'):
            self.command(word, type='media')
        for word in ('mute_mac', 'unmute_mac', 'brightness_up', 'brightness_down', 'screen_brightness_up',
                     'screen_brightness_down'):
            self.command(word)
        self.wait_for_presses([(key, 0) for key in expected])


class TextTest(RemoteTest):
    def test_any_text_arrives_whole(self):
        self.type(MIXED)
        wait_until(lambda: self.receiver.text == MIXED, f'the text, not {self.receiver.text!r}')

    def test_text_and_keys_keep_their_order(self):
        for round in range(20):
            self.type(f'{round}漢b')
            self.command('key_delete')
            self.type('ü ')
        expected = ''.join(f'{round}漢ü ' for round in range(20))
        wait_until(lambda: len(self.receiver.text) >= len(expected), 'the text')
        self.assertEqual(self.receiver.text, expected)

    def test_a_text_without_characters_types_nothing(self):
        self.type('')
        self.type('a')
        wait_until(lambda: self.receiver.text, 'the next text')
        self.assertEqual(self.receiver.text, 'a')


class PointerTest(RemoteTest):
    def test_moves_are_relative_and_their_fractions_are_carried(self):
        self.place_pointer(400, 400)
        for _ in range(40):
            self.move(dx=0.25, dy=-0.5)
        self.move(dy=7)
        wait_until(lambda: self.pointer() == (410, 387), 'the pointer')

    def test_a_thousand_moves_are_all_made(self):
        self.place_pointer(100, 400)
        for number in range(1000):
            self.move(dx=1 if number % 2 else 0, dy=1 if number % 4 < 2 else -1)
        wait_until(lambda: self.pointer() == (600, 400), 'the pointer')

    def test_the_edge_of_the_screen_stops_the_pointer_alone(self):
        self.move(dx=-1e300, dy=1e9)
        self.command('key_up')
        self.wait_for_presses([(UP, 0)])
        wait_until(lambda: self.pointer() == (0, 799), 'the pointer in the corner')

    def test_clicks(self):
        place = self.desk.run('xdotool', 'search', '--name', '^receiver$', 'getwindowgeometry', '--shell')
        geometry = dict(line.split('=') for line in place.split())
        self.place_pointer(int(geometry['X']) + 50, int(geometry['Y']) + 50)
        for button in ({}, {'button': 'middle'}, {'button': 5}):  # two of a kind would be a double click
            self.command('c', type='mouse_click', button='right')
            self.command('c', type='mouse_click', **button)
        wait_until(lambda: len(self.buttons()) >= 12, 'the clicks')
        left, right = 1, 2
        self.assertEqual(self.buttons(), [(button, is_down) for button in (right, left) * 3
                                          for is_down in (True, False)])


class LogTest(RemoteTest):
    def log(self):
        described = ('Command received', 'Typing unicode', 'Error:')
        return [line for line in self.program.lines() if any(words in line for words in described)]

    def test_lines_of_commands_and_of_scripts_that_fail(self):
        self.command('vol_up', type='anything')
        self.type('two\nlines')
        self.command('open_url', url='nothing opens this')
        wait_until(lambda: len([line for line in self.log() if 'AppleScript' in line]) == 2, 'the errors')
        lines = self.log()
        self.assertEqual([line for line in lines if 'AppleScript' not in line],
                         ['[WebSocketServer] Command received: vol_up [Type: anything]',
                          '[WebSocketServer] Command received: t [Type: keyboard_text]',
                          '[WebSocketServer] Typing unicode text: two',
                          '[WebSocketServer] Command received: open_url [Type: remote]'])
        for line in lines:
            if 'AppleScript' in line:
                self.assertRegex(line, r'^\[WebSocketServer\] AppleScript Error: \S.*')

    def test_an_address_reaches_the_program_for_it(self):
        opened = self.desk.root / 'opened'
        applications = pathlib.Path(self.desk.env['XDG_DATA_HOME']) / 'applications'
        applications.mkdir()
        stub = self.desk.root / 'stub-browser'
        stub.write_text(f'#!/bin/sh\nprintf %s "$1" > {opened}.new\nmv {opened}.new {opened}\n')
        stub.chmod(0o755)
        (applications / 'stub.desktop').write_text(
            f'[Desktop Entry]\nType=Application\nName=Stub\nExec={stub} %u\nMimeType=x-scheme-handler/https;\n')
        (applications / 'mimeapps.list').write_text('[Default Applications]\nx-scheme-handler/https=stub.desktop\n')
        address = 'https://example.org/a b?c=%20&d=$(id)#ü'
        self.command('open_url', url=address)
        wait_until(opened.exists, 'the address')
        self.assertEqual(opened.read_text(), address)


class EndTest(RemoteTest):
    def layout(self):
        return self.desk.run('xkbcomp', '-w0', self.desk.env['DISPLAY'], '-')

    def end_in_the_middle_of_a_text(self, end):
        """No start puts right afterwards what the end leaves behind: the layout is compared right after it."""
        before = self.layout()
        self.type(''.join(chr(0x4e00 + number) for number in range(4000)))
        wait_until(lambda: self.receiver.text, 'the first characters')
        self.assertNotEqual(self.layout(), before, 'characters have lent keys')
        end()
        self.program.process.wait(20)
        wait_until(lambda: self.layout() == before, 'the layout as before', deadline=2)
        self.assertLess(len(self.receiver.text), 4000, 'it was in the middle')

    def test_a_signal_puts_the_keyboard_back(self):
        self.end_in_the_middle_of_a_text(lambda: self.program.process.send_signal(signal.SIGTERM))

    def test_an_interrupt_puts_the_keyboard_back(self):
        self.desk.run('setxkbmap', 'us,ru')
        self.end_in_the_middle_of_a_text(lambda: self.program.process.send_signal(signal.SIGINT))

    def test_a_display_that_hangs_holds_up_no_end(self):
        self.type('漢' * 4000)
        wait_until(lambda: self.receiver.text, 'the first characters')
        server = next(child for child in self.desk.children if 'Xvfb' in child.args)
        server.send_signal(signal.SIGSTOP)
        self.addCleanup(server.send_signal, signal.SIGCONT)
        self.program.process.send_signal(signal.SIGTERM)
        self.assertEqual(self.program.process.wait(5), -signal.SIGTERM)

    def test_quitting_puts_the_keyboard_back(self):
        self.end_in_the_middle_of_a_text(lambda: self.desk.run(
            'gdbus', 'call', '--session', '--dest', 'org.brenvale.Brenvale', '--object-path', '/org/brenvale/Brenvale',
            '--method', 'org.freedesktop.Application.ActivateAction', 'quit', '[]', '{}'))


class PhoneToolTest(RemoteTest):
    def test_single_commands_and_the_pad_drive_the_desktop(self):
        link = ['--port', str(self.program.port)]
        for words in (['type', 'Hi ü'], ['cmd+ctrl_key_left'], ['media', 'next']):
            subprocess.run([PHONE, *link, 'remote', *words], check=True, timeout=20)
        self.place_pointer(300, 300)
        keys = b'pad\n' + 'ö'.encode() + b'\x1b[1;5C\t\x1b[B\t\x1b[A\x04'
        subprocess.run([PHONE, *link, 'shell'], input=keys, check=True, timeout=20, stdout=subprocess.DEVNULL)
        wait_until(lambda: self.presses() and self.presses()[-1] == (UP, 0), 'the last key')
        self.assertEqual([press for press in self.presses() if press[0] in (LEFT, RIGHT, UP, 0x1008ff17)],
                         [(LEFT, WITH_SUPER | WITH_CONTROL), (0x1008ff17, 0), (RIGHT, WITH_CONTROL), (UP, 0)])
        wait_until(lambda: sorted(self.receiver.text) == sorted('Hi üö'), f'the text, not {self.receiver.text!r}')
        wait_until(lambda: self.pointer() == (300, 310), 'the pointer')


class SwitchedOffTest(DeskTest):
    def test_the_settings_switch_all_of_it_off(self):
        receiver = Receiver(self.desk, 'qt')
        port = free_port()
        program = self.start(port=port, setting=f'[General]\nport={port}\n[Security]\nremoteControl=false\n')
        phone = self.connect(program)
        place = self.desk.run('xdotool', 'getmouselocation')
        phone.send_json(action='remote_control', command='key_left')
        phone.send_json(action='remote_control', command='m', type='mouse_move', dx=50)
        phone.send_json(action='remote_control', command='t', type='keyboard_text', text='no')
        phone.send_json(action='remote_control', command='open_url', url='nothing opens this')
        self.assertEqual(phone.ping(), [])
        program.wait_at_rest()
        self.assertEqual(self.desk.run('xdotool', 'getmouselocation'), place)
        self.assertEqual([entry for entry in receiver.entries() if 'key' in entry or 'text' in entry], [])
        self.assertEqual([line for line in program.lines() if 'onnection' not in line and 'complete' not in line
                          and '[AppDelegate]' not in line], [])


class ForbiddenTest(DeskTest):
    display = False

    def setUp(self):
        super().setUp()
        if os.access('/dev/uinput', os.W_OK):
            self.skipTest('the kernel lets events be posted here')

    def test_without_the_permission_the_log_says_what_was_lost(self):
        program = self.start()
        phone = self.connect(program)
        phone.send_json(action='remote_control', command='cmd_key_left')
        phone.send_json(action='remote_control', command='sing', type='media')
        phone.send_json(action='remote_control', command='mute_mac')
        phone.send_json(action='remote_control', command='m', type='mouse_move', dx=5)
        phone.send_json(action='remote_control', command='t', type='keyboard_text', text='lost')
        phone.send_json(action='remote_control', type='keyboard_text', text='not even logged')
        phone.send_json(action='remote_control', command='sleep_mac')
        self.assertEqual(phone.ping(), [], 'nothing is answered')
        missing = 'failed. Accessibility permissions are missing.'
        lines = [line.removeprefix('[WebSocketServer] ') for line in program.lines()
                 if 'complete' not in line and 'onnection' not in line and '[AppDelegate]' not in line]
        self.assertEqual(lines, ['Command received: cmd_key_left [Type: remote]',
                                 f"Error: Command 'cmd_key_left' {missing}",
                                 'Command received: sing [Type: media]',
                                 'Error: Media keys require Accessibility permissions.',
                                 'Command received: mute_mac [Type: remote]',
                                 'Command received: m [Type: mouse_move]',
                                 'Command received: t [Type: keyboard_text]',
                                 'Typing unicode text: lost',
                                 'Command received: sleep_mac [Type: remote]',
                                 f"Error: Command 'sleep_mac' {missing}"])


if __name__ == '__main__':
    main()
