"""Answering a notification: in the notification where the server has a field for it, else in a window of our own."""
import json
import signal
import unittest

from brenvale_desk import DeskTest, Recorder, main, wait_until


class RepliesTest(DeskTest):
    capabilities = 'actions,body,body-markup,persistence'

    def setUp(self):
        super().setUp()
        self.recorder = Recorder(self.desk, caps=self.capabilities)
        self.program = self.start()
        self.phone = self.connect(self.program)

    def post(self, **members):
        count = len(self.recorder.calls())
        self.phone.send_json(**{'app': 'Chat', 'title': 'Ann Lee', 'body': 'Are you coming?', 'key': 'k1'} | members)
        return self.recorder.wait_for(count + 1)[-1]

    def sent(self):
        """What the phone has been sent since the greeting."""
        return [json.loads(payload) for _, payload in self.phone.ping()]

    def wait_for_reply(self):
        replies = []
        wait_until(lambda: replies.extend(self.sent()) or replies, 'the reply')
        self.assertEqual(len(replies), 1)
        return replies[0]


class InlineReplyTest(RepliesTest):
    capabilities = 'actions,body,inline-reply'
    display = False

    def test_the_notification_has_the_field_with_its_texts(self):
        call = self.post()
        self.assertEqual(call['actions'], ['inline-reply', 'Reply'])
        self.assertEqual(call['hints']['x-kde-reply-placeholder-text'], 'Type your reply...')
        self.assertEqual(call['hints']['x-kde-reply-submit-button-text'], 'Send')

    def test_the_reply_goes_to_the_phone_with_its_key_exactly_as_typed(self):
        for text in ('On my way', '', '  "quotes" and \\ two\nlines ', '👍🏽 日本語'):
            with self.subTest(text=text):
                call = self.post(key=f'key {text}')
                self.recorder.control('Reply', call['id'], text)
                self.assertEqual(self.wait_for_reply(), {'action': 'reply', 'key': f'key {text}', 'message': text})

    def test_without_a_key_app_title_and_body_are_the_key(self):
        call = self.post(key=None)
        self.recorder.control('Reply', call['id'], 'Yes')
        self.assertEqual(self.wait_for_reply()['key'], 'Chat:Ann Lee:Are you coming?')

    def test_one_that_has_gone_to_the_history_can_still_be_answered(self):
        call = self.post()
        expired = 1
        self.recorder.control('Dismiss', call['id'], expired)
        self.recorder.control('Reply', call['id'], 'Late')
        self.assertEqual(self.wait_for_reply()['message'], 'Late')

    def test_the_replaced_one_answers_for_its_successor(self):
        first = self.post()
        self.assertEqual(self.post(body='Well?')['id'], first['id'])
        self.recorder.control('Reply', first['id'], 'Yes')
        self.assertEqual(self.wait_for_reply()['key'], 'k1')

    def test_own_notifications_offer_nothing(self):
        self.phone.send_json(action='clipboard', text='copied')
        call, = self.recorder.wait_for(1)
        self.assertEqual(call['actions'], [])

    def test_a_click_a_dismissal_and_unknown_numbers_do_nothing(self):
        call = self.post()
        self.recorder.control('Reply', 4711, 'nobody')
        self.recorder.control('Click', call['id'], 'default')
        self.recorder.control('Dismiss', self.post(key='k2')['id'], 2)
        self.program.wait_at_rest()
        self.assertEqual(self.sent(), [])


class RestartedServerTest(RepliesTest):
    def test_the_window_of_a_number_given_twice_belongs_to_its_own_notification(self):
        windows = lambda: self.desk.windows('^Reply$')
        for key in ('ann', 'bob'):
            call = self.post(key=key, body=f'from {key}')
            self.assertEqual(call['id'], 1)
            self.recorder.control('Click', 1, 'REPLY_ACTION')
            if key == 'ann':
                ann, = wait_until(windows, 'the window')
                self.recorder.stop()
                self.recorder.start(caps=self.capabilities)
                self.program.wait_at_rest()
        bob, = wait_until(lambda: set(windows()) - {ann}, 'the other window')
        wait_until(lambda: self.desk.run('xdotool', 'getwindowfocus', check=False).strip() == bob, 'the focus')
        self.desk.run('xdotool', 'type', '--delay', '20', 'hi')
        self.desk.run('xdotool', 'key', 'Return')
        self.assertEqual(self.wait_for_reply(), {'action': 'reply', 'key': 'bob', 'message': 'hi'})


class NoActionsTest(RepliesTest):
    capabilities = 'body'

    def test_a_server_without_actions_gets_none(self):
        self.assertEqual(self.post()['actions'], [])


class NoDisplayTest(RepliesTest):
    display = False

    def test_a_window_that_nobody_would_see_is_not_offered(self):
        self.assertEqual(self.post()['actions'], [])


class ReplyWindowTest(RepliesTest):
    def windows(self):
        return self.desk.windows('^Reply$')

    def wait_for_window(self, count=1):
        return wait_until(lambda: len(self.windows()) == count and self.windows(), f'{count} reply windows')

    def wait_for_focus(self, window):
        focused = lambda: self.desk.run('xdotool', 'getwindowfocus', check=False).strip()
        wait_until(lambda: focused() == window, 'the keyboard focus')

    def open_window(self, **members):
        call = self.post(**members)
        self.recorder.control('Click', call['id'], 'REPLY_ACTION')
        window, = self.wait_for_window()
        self.wait_for_focus(window)
        return window

    def press(self, *keys):
        self.desk.run('xdotool', 'key', *keys)

    def test_the_notification_has_the_action(self):
        self.assertEqual(self.post()['actions'], ['REPLY_ACTION', 'Reply'])

    def test_typing_and_return_send_and_close(self):
        self.open_window()
        self.desk.run('xdotool', 'type', '--delay', '20', 'On my way')
        self.press('Return')
        self.assertEqual(self.wait_for_reply(), {'action': 'reply', 'key': 'k1', 'message': 'On my way'})
        wait_until(lambda: not self.windows(), 'the window to close')

    def test_return_that_is_pressed_again_sends_once(self):
        self.open_window()
        self.program.process.send_signal(signal.SIGSTOP)
        self.press('a', 'Return', 'Return', 'Return')
        self.program.process.send_signal(signal.SIGCONT)
        self.assertEqual(self.wait_for_reply()['message'], 'a')
        self.program.wait_at_rest()
        self.assertEqual(self.sent(), [])

    def test_escape_closes_and_sends_nothing(self):
        self.open_window()
        self.desk.run('xdotool', 'type', '--delay', '20', 'never mind')
        self.press('Escape')
        wait_until(lambda: not self.windows(), 'the window to close')
        self.program.wait_at_rest()
        self.assertEqual(self.sent(), [])

    def test_the_button_is_reached_by_tab_and_an_empty_text_is_sent(self):
        self.open_window()
        self.press('Tab', 'space')
        self.assertEqual(self.wait_for_reply()['message'], '')

    def test_it_takes_the_focus_from_the_program_in_front(self):
        self.desk.spawn(['xterm', '-title', 'in front'], 'xterm')
        terminal = wait_until(lambda: self.desk.windows('in front'), 'the terminal')[0]
        self.desk.run('xdotool', 'windowactivate', '--sync', terminal, 'key', 'a')  # somebody is typing there
        self.open_window()

    def test_a_second_click_brings_the_same_window_back(self):
        call = self.post()
        for _ in range(2):
            self.recorder.control('Click', call['id'], 'REPLY_ACTION')
            window, = self.wait_for_window()
            self.wait_for_focus(window)
        other = self.post(key='k2', body='Another')
        self.recorder.control('Click', other['id'], 'REPLY_ACTION')
        self.wait_for_window(2)

    def size(self, window):
        geometry = self.desk.run('xdotool', 'getwindowgeometry', '--shell', window)
        values = dict(line.split('=') for line in geometry.split())
        return int(values['WIDTH']), int(values['HEIGHT'])

    def test_long_and_odd_texts_do_not_stretch_it(self):
        window = self.open_window(title='Ann ' * 500, body='<b>bold</b>\n' * 500)
        width, height = self.size(window)
        self.assertLess(width, 500)
        self.assertLess(height, 220)

    def test_a_message_is_wrapped_to_four_lines(self):
        heights = []
        for count in (1, 25, 500, 1000):  # of words
            window = self.open_window(body='word ' * count)
            heights.append(self.size(window)[1])
            self.press('Escape')
            wait_until(lambda: not self.windows(), 'the window to close')
        one, some, many, more = heights
        self.assertLess(one, some)
        self.assertLess(some, many)
        self.assertEqual(many, more)

    def test_it_wears_the_programs_icon(self):
        window = self.open_window()
        self.assertIn('Icon (', self.desk.run('xprop', '-id', window, '_NET_WM_ICON'))


class RealServerTest(RepliesTest):
    def setUp(self):
        DeskTest.setUp(self)
        try:
            self.desk.start_notifier('dunst')
        except FileNotFoundError as absent:
            raise unittest.SkipTest(str(absent))
        self.program = self.start()
        self.phone = self.connect(self.program)

    def test_dunst(self):
        self.phone.send_json(app='Chat', title='Ann Lee', body='Are you coming?', key='k1')
        wait_until(lambda: 'Currently displayed: 1' in self.desk.run('dunstctl', 'count'), 'the notification')
        self.desk.run('dunstctl', 'action', '0')
        window = lambda: self.desk.window('^Reply$')
        wait_until(window, 'the reply window')
        wait_until(lambda: self.desk.run('xdotool', 'getwindowfocus').strip() == window(), 'the focus')
        self.desk.run('xdotool', 'type', '--delay', '20', 'yes')
        self.desk.run('xdotool', 'key', 'Return')
        self.assertEqual(self.wait_for_reply(), {'action': 'reply', 'key': 'k1', 'message': 'yes'})


if __name__ == '__main__':
    main()
