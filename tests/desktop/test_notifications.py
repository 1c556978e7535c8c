"""A phone's notification on the desktop, as the notification service is asked to show it."""
from brenvale_desk import DeskTest, Recorder, main, wait_until


class NotificationsTest(DeskTest):
    display = False
    capabilities = None
    fences = 0

    def setUp(self):
        super().setUp()
        self.recorder = Recorder(self.desk, caps=self.capabilities)
        self.program = self.start()
        self.phone = self.connect(self.program)

    def post(self, **members):
        """Sends one notification and gives the call that shows it."""
        count = len(self.recorder.calls())
        self.phone.send_json(**members)
        return self.recorder.wait_for(count + 1)[count]

    def texts(self):
        """Summaries and bodies that are shown now."""
        return [(item['summary'], item['body']) for item in self.recorder.live()]

    def fence(self):
        """Returns once all that was sent before has been dealt with; the fence itself does not stay."""
        self.fences += 1
        body = f'fence {self.fences}'
        self.phone.send_json(app='Fence', body=body, key='fence')
        call = wait_until(lambda: next((call for call in self.recorder.calls() if call['body'] == body), None), body)
        self.recorder.control('Dismiss', call['id'], 2)

    def assert_shown(self, *expected):
        self.fence()
        wait_until(lambda: self.texts() == list(expected), f'{expected}, not {self.texts()}')

    def assert_no_post_error(self):
        self.assertEqual(self.program.matching(r'\[Notifications\].*'), [])


class ContentTest(NotificationsTest):
    def test_app_title_and_body(self):
        call = self.post(app='Messages', title='Ann Lee', body='See you at 8', time=1700000000, key='0|sms|1')
        self.assertEqual(call['summary'], 'Messages')
        self.assertEqual(call['body'], '<b>Ann Lee</b>\nSee you at 8')
        self.assertEqual(call['replaces'], 0)
        self.assert_no_post_error()

    def test_hints(self):
        hints = self.post(app='Messages', title='Ann', body='Hello')['hints']
        self.assertEqual(hints['sound-name'], 'message-new-instant')
        self.assertEqual(hints['x-kde-origin-name'], 'Messages')
        self.assertEqual(hints['desktop-entry'], 'org.brenvale.Brenvale')
        self.assertNotIn('suppress-sound', hints)

    def test_a_plain_click_does_nothing(self):
        self.assertNotIn('default', self.post(app='Messages', title='Ann', body='Hello')['actions'][::2])

    def test_markup_signs_are_escaped_where_the_server_reads_markup(self):
        call = self.post(app='R&D <news>', title='A < B & C', body='<i>1 > 0</i> && "so" \'on\'')
        self.assertEqual(call['summary'], 'R&D <news>')
        subtitle, body = call['body'].split('\n', 1)
        self.assertEqual(subtitle, '<b>A &lt; B &amp; C</b>')
        # Quotes may be escaped or not: both show the same.
        body = body.replace('&quot;', '"').replace('&apos;', "'").replace('&#39;', "'")
        self.assertEqual(body, '&lt;i&gt;1 &gt; 0&lt;/i&gt; &amp;&amp; "so" \'on\'')

    def test_app_unknown_or_empty_gives_the_summary_to_the_title(self):
        for app in ('Unknown', ''):
            with self.subTest(app=app):
                call = self.post(app=app, title='Ann', body=f'from app "{app}"'.replace('"', '.'))
                self.assertEqual((call['summary'], call['body']), ('Ann', f'from app .{app}.'))
                self.assertEqual(call['hints'].get('x-kde-origin-name', ''), app)

    def test_no_app_and_no_title(self):
        self.assertEqual(self.post(app='', title='', body='who?')['summary'], 'Brenvale')
        self.assertEqual(self.post(app='Unknown', body='who else?')['summary'], 'Brenvale')

    def test_app_and_no_title_has_no_empty_first_line(self):
        call = self.post(app='Backup', title='', body='Done')
        self.assertEqual((call['summary'], call['body']), ('Backup', 'Done'))

    def test_app_alone_is_a_notification(self):
        call = self.post(app='Backup')
        self.assertEqual(call['summary'], 'Backup')
        self.assertIn(call['body'], ('', '\n'))

    def test_body_is_shown_untrimmed(self):
        self.assertEqual(self.post(app='Mail', body='  two lines \n\tand blanks  ')['body'],
                         '  two lines \n\tand blanks  ')

    def test_any_text_goes_through(self):
        text = 'ünï 日本語 עברית 👩‍👩‍👧‍👦 \u2028 \ufffe'
        call = self.post(app=text, title=text, body=text)
        self.assertEqual(call['summary'], text)
        self.assertEqual(call['body'], f'<b>{text}</b>\n{text}')

    def test_text_that_the_bus_cannot_carry_spoils_nothing(self):
        for text in (r'a\u0000b', r'half a pair: \ud83d', 'x' * (6 << 20)):
            self.phone.send_text(f'{{"app":"Odd","title":"{text}","body":"{text}"}}')
        self.fence()
        self.assertEqual(self.post(app='Mail', title='Ann', body='still here')['summary'], 'Mail')

    def test_wrong_types_show_nothing(self):
        for members in (dict(time='soon'), dict(title=1), dict(body=['x']), dict(key=5), dict(app=7)):
            self.phone.send_json(**{'app': 'Wrong', 'body': 'wrong', **members})
        self.phone.send_json(title='no app', body='nothing')
        self.phone.send_json(action='no such action', app='Wrong', body='nothing')
        self.fence()
        self.assertEqual([call['summary'] for call in self.recorder.calls()], ['Fence'])

    def test_action_that_is_no_string_counts_as_none(self):
        self.assertEqual(self.post(action=5, app='Mail', body='counts')['summary'], 'Mail')
        self.assertEqual(self.post(app='Mail', title=None, body='null counts as absent', key=None)['body'],
                         'null counts as absent')


class PlainServerTest(NotificationsTest):
    """A server that shows bodies as they are."""
    capabilities = 'actions,body'

    def test_nothing_is_escaped_and_nothing_bold(self):
        call = self.post(app='Mail', title='A & B', body='1 < 2')
        self.assertEqual(call['body'], 'A & B\n1 < 2')


class ReplacingTest(NotificationsTest):
    def test_same_key_takes_the_place_of_the_one_shown(self):
        first = self.post(app='Mail', title='Ann', body='one new', key='k1')
        other = self.post(app='Mail', title='Bob', body='from Bob', key='k2')
        second = self.post(app='Mail', title='Ann', body='two new', key='k1')
        self.assertEqual((second['replaces'], second['id'], other['replaces']), (first['id'], first['id'], 0))
        self.assertEqual(len(self.recorder.live()), 2)

    def test_without_a_key_app_title_and_body_are_the_identity(self):
        first = self.post(app='Mail', title='Ann', body='one')
        self.assertEqual(self.post(app='Mail', title='Ann', body='two')['replaces'], 0)
        self.assertEqual(self.post(app='Mail', title='Ann', body='three', key='Mail:Ann:one')['replaces'], first['id'])

    def test_one_that_the_user_dismissed_is_not_replaced(self):
        first = self.post(app='Mail', title='Ann', body='one', key='k1')
        self.recorder.control('Dismiss', first['id'], 2)
        self.fence()
        self.assertEqual(self.post(app='Mail', title='Ann', body='two', key='k1')['replaces'], 0)

    def test_repeat_titled_with_a_number_is_dropped(self):
        self.post(app='Messages', title='Ann Lee', body='Hello', key='a')
        self.phone.send_json(app='Dialer', title='+49 170 1234567', body=' Hello\t', key='b')
        self.assert_shown(('Messages', '<b>Ann Lee</b>\nHello'))

    def test_repeat_titled_with_a_name_takes_the_place_of_the_number(self):
        first = self.post(app='Dialer', title='0170 1234567', body='Hello', key='a')
        self.post(app='Messages', title='Ann Lee', body='Hello', key='b')
        self.assert_shown(('Messages', '<b>Ann Lee</b>\nHello'))
        self.assertIn(first['id'], [call['id'] for call in self.recorder.calls('CloseNotification')])

    def test_equal_bodies_of_different_apps_collapse_into_the_later_one(self):
        self.post(app='One', title='First', body='same')
        self.post(app='Two', title='Second', body='same')
        self.assert_shown(('Two', '<b>Second</b>\nsame'))

    def test_an_empty_body_is_a_body_like_any_other(self):
        self.post(app='One')
        self.post(app='Two')
        self.assert_shown(('Two', ''))

    def test_exact_repeat_with_a_key_is_shown_once_and_sounds_again(self):
        for _ in range(3):
            call = self.post(app='Mail', title='Ann', body='again', key='k1')
            self.assertIn('sound-name', call['hints'])
        self.assert_shown(('Mail', '<b>Ann</b>\nagain'))

    def test_repeats_in_one_burst_leave_one(self):
        for number in range(20):
            self.phone.send_json(app='Mail', title=f'Ann {number}', body='burst')
        self.assert_shown(('Mail', '<b>Ann 19</b>\nburst'))

    def test_same_key_in_one_burst_leaves_the_last(self):
        for number in range(20):
            self.phone.send_json(app='Download', title='file.zip', body=f'{number * 5} percent', key='download')
        self.assert_shown(('Download', '<b>file.zip</b>\n95 percent'))

    def test_titles_that_look_like_numbers(self):
        """Six digits are too few, a plus sign is enough, other scripts' digits count."""
        self.post(app='One', title='Name', body='same')
        for title in ('+', '+name', '1234567', '١٢٣٤٥٦٧', '(0170)1234567'):
            self.phone.send_json(app='Number', title=title, body='same')
        self.assert_shown(('One', '<b>Name</b>\nsame'))
        self.post(app='Short', title='123456', body='same')
        self.assert_shown(('Short', '<b>123456</b>\nsame'))


if __name__ == '__main__':
    main()
