"""The phone's clipboard text on the desktop's clipboard."""
import subprocess

from brenvale_desk import DeskTest, Recorder, main, wait_until


class ClipboardTest(DeskTest):
    def setUp(self):
        super().setUp()
        self.recorder = Recorder(self.desk)
        self.program = self.start()
        self.phone = self.connect(self.program)

    def pasted(self):
        """What another program would paste; nothing where the clipboard has no text."""
        command = ['xclip', '-selection', 'clipboard', '-out', '-target', 'UTF8_STRING']
        run = subprocess.run(command, env=self.desk.env, capture_output=True, timeout=20)
        return run.stdout.decode() if run.returncode == 0 else None

    def assert_pasted(self, text):
        wait_until(lambda: self.pasted() == text, f'{text[:80]!r} on the clipboard')

    def test_text_reaches_the_clipboard_and_is_announced(self):
        self.phone.send_json(action='clipboard', text='from the phone')
        self.assert_pasted('from the phone')
        call, = self.recorder.wait_for(1)
        self.assertEqual((call['summary'], call['replaces']), ('Clipboard Synced', 0))
        self.assertEqual(call['body'], 'Text from Android copied to your Mac clipboard.')
        self.assertEqual(call['hints']['sound-name'], 'message-new-instant')
        self.assertEqual(call['hints']['desktop-entry'], 'org.brenvale.Brenvale')

    def test_each_text_is_announced_anew_also_the_same(self):
        for count in range(1, 4):
            self.phone.send_json(action='clipboard', text='again')
            self.recorder.wait_for(count)
        self.assertEqual([call['replaces'] for call in self.recorder.calls()], [0, 0, 0])
        self.assertEqual(len(self.recorder.live()), 3)
        self.assert_pasted('again')

    def test_any_text(self):
        for text in ('two\nlines\ttab', 'ünï 日本語 👩‍👩‍👧‍👦', '"quotes" \\ and {braces}', 'x' * 3_000_000):
            with self.subTest(text=text[:20]):
                self.phone.send_json(action='clipboard', text=text)
                self.assert_pasted(text)

    def test_empty_text_clears(self):
        self.phone.send_json(action='clipboard', text='something')
        self.assert_pasted('something')
        self.phone.send_json(action='clipboard', text='')
        wait_until(lambda: not self.pasted(), 'an empty clipboard')
        self.recorder.wait_for(2)

    def test_text_of_another_program_is_replaced_and_can_replace(self):
        def copy(text):
            subprocess.run(['xclip', '-selection', 'clipboard', '-in'], input=text.encode(), env=self.desk.env,
                           check=True, timeout=20, stdout=subprocess.DEVNULL)
            self.assert_pasted(text)  # its process in the background may come later than we go on
        copy('from the desk')
        self.phone.send_json(action='clipboard', text='from the phone')
        self.assert_pasted('from the phone')
        copy('from the desk again')
        self.phone.send_json(action='clipboard', text='from the phone again')
        self.assert_pasted('from the phone again')

    def test_text_is_not_echoed_to_the_phone(self):
        self.phone.send_json(action='clipboard', text='no echo')
        self.assert_pasted('no echo')
        self.assertEqual(self.phone.ping(), [])

    def test_no_text_changes_nothing(self):
        self.phone.send_json(action='clipboard', text='kept')
        self.assert_pasted('kept')
        for members in ({}, {'text': None}, {'text': 5}, {'text': ['x']}):
            self.phone.send_json(action='clipboard', **members)
        self.phone.send_json(app='Fence', body='fence')
        self.recorder.wait_for(2)
        self.assertEqual([call['summary'] for call in self.recorder.calls()], ['Clipboard Synced', 'Fence'])
        self.assert_pasted('kept')


if __name__ == '__main__':
    main()
