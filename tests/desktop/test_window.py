"""The real window, read over AT-SPI and used with keyboard and pointer."""
import json
import os
import time
import unittest
import uuid

from brenvale_desk import Program, Recorder, free_port, listening, main, wait_until
from desk import Desk

desk = Desk()
os.environ.update(desk.env)  # the accessibility library finds its bus by the environment of this process
from accessible import Application, add_accessibility  # noqa: E402

add_accessibility(desk)
unittest.addModuleCleanup(desk.close)

NOW = time.time() * 1000
TABS = ['Call', 'SMS', 'File Drop', 'Notifications', 'Remote', 'Clipboard', 'Settings', 'Info']


def sms(address, body, age=0, name=None, kind=1):
    record = {'address': address, 'body': body, 'date': NOW - age, 'type': kind}
    return record | ({'name': name} if name else {})


class WindowTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.recorder = Recorder(desk)

    @classmethod
    def tearDownClass(cls):
        cls.recorder.stop()

    def setUp(self):
        self.program = Program(desk).wait_listening()
        self.addCleanup(self.program.stop)
        self.phone = self.program.connect()
        self.addCleanup(self.phone.socket.close)
        self.phone.send_json(action='connected', deviceName='Pixel')
        self.phone.send_json(action='sim_info', sims=[{'slot': 0, 'carrier': 'First'}])

    def open(self, action):
        desk.run('gdbus', 'call', '--session', '--dest', 'org.brenvale.Brenvale', '--object-path', '/org/brenvale/Brenvale',
                 '--method', 'org.freedesktop.Application.ActivateAction', action, '[]', '{}')
        self.window = Application(desk, self.program.process.pid)
        wait_until(lambda: desk.run('xdotool', 'getactivewindow', 'getwindowname', check=False).strip() == 'Brenvale Settings',
                   'the window in front')
        return self.window

    def sent(self, action):
        """The messages of that action which the phone has got since it was last asked, once there is one."""
        messages = []

        def arrived():
            messages.extend(json.loads(payload) for _, payload in self.phone.ping())
            return [message for message in messages if message['action'] == action]
        return wait_until(arrived, f'a "{action}"')


class TabsTest(WindowTest):
    def test_every_tab_is_reached_from_the_sidebar_and_reads(self):
        window = self.open('settings')
        contents = {'Call': 'Recent Calls', 'SMS': 'Messages', 'File Drop': 'Send Files...', 'Notifications': 'No notifications yet',
                    'Remote': 'Control Android Device', 'Clipboard': 'Send Current Mac Clipboard', 'Settings': 'Server & Network',
                    'Info': 'Description'}
        for tab in TABS:
            with self.subTest(tab):
                window.click(window.find('list item', tab))
                window.wait_for_text(contents[tab])

    def test_the_tab_of_the_last_time_comes_back(self):
        self.open('info').wait_for_text('Description')
        self.program.stop()
        self.assertIn('selectedSettingsTab=3', (self.program.config / 'brenvale/brenvale.conf').read_text())


class NotificationsTest(WindowTest):
    def test_read_reply_and_clear(self):
        self.phone.send_json(app='Chat', title='Ann Lee', body='Are you coming?', key='k1')
        window = self.open('notifications')
        window.wait_for_text('Are you coming?')
        window.press('push button', 'Reply')
        window.click(window.find('text'))
        window.type('On my way')
        window.key('Return')
        reply, = self.sent('reply')
        self.assertEqual(reply['message'], 'On my way')
        self.assertEqual(str(uuid.UUID(reply['key'])).upper(), reply['key'])  # the row's own, not the phone's
        window.press('push button', 'Clear All')
        window.wait_for_text('No notifications yet')


class PastingTest(WindowTest):
    """The text fields have the toolkit's clipboard, the phone's text is on that of another connection of ours."""

    def copied(self):
        return desk.run('xclip', '-selection', 'clipboard', '-out', check=False)

    def test_the_phones_text_is_pasted_into_our_own_window_and_text_of_ours_copied(self):
        self.phone.send_json(app='Chat', title='Ann Lee', body='Are you coming?', key='k1')
        window = self.open('notifications')
        window.press('push button', 'Reply')
        window.click(window.find('text'))
        for word in ('one', 'two'):
            self.phone.send_json(action='clipboard', text=f'phone {word}')
            wait_until(lambda: self.copied() == f'phone {word}', 'the text on the clipboard')
            window.key('ctrl+v')
            wait_until(lambda: window.contents(window.find('text')) == f'phone {word}', 'the pasted text')
            window.key('ctrl+a')
            window.type(f'own {word}')
            window.key('ctrl+a', 'ctrl+x')
            wait_until(lambda: self.copied() == f'own {word}', 'our own text on the clipboard')


class FileDropTest(WindowTest):
    def open_picker(self):
        self.window = self.open('file-drop')
        self.window.press('push button', 'Send Files...')
        title = lambda: desk.run('xdotool', 'getactivewindow', 'getwindowname', check=False).strip()
        wait_until(lambda: title() == 'Send Files', 'the picker')
        self.wait_for_name_field()

    def wait_for_name_field(self):
        self.window.wait(lambda: self.window.has_focus('text'), 'the keyboard in the field for names')

    def make_file(self, name):
        path = desk.root / name
        path.write_text(name)
        return path

    def test_files_are_picked_and_sent_in_order(self):
        first, second = self.make_file('first.txt'), self.make_file('second.txt')
        self.open_picker()
        self.window.type(f'"{first}" "{second}"')
        self.window.key('Return')
        names = []
        wait_until(lambda: names.extend(json.loads(payload)['fileName'] for _, payload in self.phone.ping()
                                        if b'file_transfer_start' in payload) or len(names) == 2, 'both files')
        self.assertEqual(names, ['first.txt', 'second.txt'])

    def test_escape_sends_nothing(self):
        self.open_picker()
        self.window.key('Escape')
        self.program.wait_at_rest()
        self.assertFalse([payload for _, payload in self.phone.ping() if b'file_transfer_start' in payload])

    def test_what_is_picked_is_sent_whatever_the_window_shows_by_then(self):
        path = self.make_file('late.txt')
        self.open_picker()
        self.open('info').wait_for_text('Description')
        picker = desk.run('xdotool', 'search', '--onlyvisible', '--name', '^Send Files$').split()[0]
        desk.run('xdotool', 'windowactivate', '--sync', picker)
        self.wait_for_name_field()
        self.window.type(f'"{path}"')
        self.window.key('Return')
        self.assertEqual(self.sent('file_transfer_start')[0]['fileName'], 'late.txt')


class MessagesTest(WindowTest):
    def setUp(self):
        super().setUp()
        self.window = self.open('sms')
        self.sent('get_sms_history')
        self.phone.send_json(action='sms_history', messages=[
            sms('+49 170 1234567', 'The first', age=2000, name='Ann Lee'), sms('+491701234567', 'The answer', age=1000, kind=2),
            sms('BANK', 'Your code is 42', age=5000)])
        self.window.wait_for_text('Ann Lee')

    def open_thread(self, name):
        self.window.click(self.window.find_starting('push button', name))

    def test_open_a_thread_and_send(self):
        self.open_thread('Ann Lee')
        self.window.wait_for_text('The answer')
        self.window.click(self.window.find('text', 'Text Message'))
        self.window.type('See you')
        self.window.key('Return')
        self.assertEqual(self.sent('send_sms'), [{'action': 'send_sms', 'number': '491701234567', 'body': 'See you', 'simSlot': 0}])
        self.window.wait_for_text('See you')

    def test_search(self):
        self.window.click(self.window.find('text', 'To: Search or type number…'))
        self.window.type('code is')
        self.window.wait(lambda: not any('Ann Lee' in text for text in self.window.texts()), 'the others to go')
        self.window.wait_for_text('BANK')
        self.window.press('push button', 'Clear search')
        self.window.wait_for_text('Ann Lee')

    def test_a_new_number(self):
        self.window.click(self.window.find('text', 'To: Search or type number…'))
        self.window.type('0301234')
        self.window.wait_for_text('New message to')
        self.open_thread('New message to')
        self.window.wait_for_text('New Conversation')


class CallsTest(WindowTest):
    def test_the_pad_has_the_keyboard_and_dials(self):
        window = self.open('call')
        window.wait_for_text('Recent Calls')
        window.key('0', '3', '0', '4', '5', 'BackSpace', 'x', '9')
        pad = window.find('text', 'Number')
        window.wait(lambda: window.contents(pad) == '03049', 'the number as the value of the pad')
        window.key('Return')
        self.assertEqual(self.sent('make_call'), [{'action': 'make_call', 'number': '03049', 'simSlot': 0}])

    def test_a_screen_reader_is_told_each_digit(self):
        window = self.open('call')
        window.wait_for_text('Recent Calls')
        typed = window.listen('object:text-changed:insert')
        window.key('0', '3', '0')
        wait_until(lambda: typed() == ['0', '3', '0'], f'the digits, of which were told: {typed()}')
        removed = window.listen('object:text-changed:delete')
        window.key('BackSpace')
        wait_until(lambda: removed() == ['0'], f'the digit that went, of which were told: {removed()}')

    def test_a_call_in_the_log_is_called_again(self):
        window = self.open('call')
        self.sent('get_call_history')
        self.phone.send_json(action='call_history', calls=[
            {'number': '+4930555', 'name': 'Bob', 'date': NOW, 'duration': 0, 'type': 1}])
        window.wait_for_text('Bob')
        window.click(window.find_starting('push button', 'Incoming call, Bob'))
        self.assertEqual(self.sent('make_call')[0]['number'], '+4930555')


class RemoteTest(WindowTest):
    def test_buttons_and_shortcuts(self):
        window = self.open('remote')
        window.press('push button', 'Play or pause')
        self.assertEqual(self.sent('media_command')[0]['command'], 'play_pause')
        window.press('push button', 'Recents')
        self.assertEqual(self.sent('nav_command')[0]['command'], 'recents')
        window.key('Up')
        self.assertEqual(self.sent('nav_command')[0]['command'], 'dpad_up')


class SettingsTest(WindowTest):
    def test_another_port_after_a_restart(self):
        window = self.open('settings')
        port = free_port()
        window.click(window.find('text', 'Port'))
        window.key('ctrl+a')
        window.type(str(port))
        window.key('Return')
        window.press('push button', 'Restart')
        wait_until(lambda: listening(port), 'the new port')
        self.assertFalse(listening(self.program.port))

    def test_launch_at_login(self):
        window = self.open('settings')
        switch = window.find('check box', 'Launch at login')
        self.assertFalse(window.is_checked(switch))
        window.click(switch)
        window.wait(lambda: window.is_checked(switch), 'the switch to be on')
        entry = self.program.config / 'autostart/org.brenvale.Brenvale.desktop'
        wait_until(entry.exists, 'the entry')
        window.click(switch)
        wait_until(lambda: not entry.exists(), 'the entry to go')


if __name__ == '__main__':
    main()
