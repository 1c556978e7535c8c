"""The phone's clipboard text on the desktop's clipboard, and the desktop's on the phone."""
import select
import signal
import subprocess
import time

import dbus

from brenvale_desk import HERE, DeskTest, Recorder, main, wait_until
from desk import DEADLINE
from sway_desk import SwayDesk

LONG = "ünï 日本 " * (50_000_000 // 13)  # 50 MB
IN_THE_BACKGROUND = {'stdout': subprocess.DEVNULL, 'stderr': subprocess.DEVNULL}


class ClipboardTest(DeskTest):
    """What holds on each desktop; here X11, with a program that has no window."""

    def setUp(self):
        super().setUp()
        self.recorder = Recorder(self.desk)
        self.program = self.start()
        self.phone = self.connect(self.program)

    def paste(self, selection='clipboard'):
        """The bytes that another program would paste; nothing where the clipboard has no text."""
        command = ['xclip', '-selection', selection, '-out', '-target', 'UTF8_STRING']
        run = subprocess.run(command, env=self.desk.env, capture_output=True, timeout=60)
        return run.stdout if run.returncode == 0 else None

    def offer(self, text, selection='clipboard'):
        """Has another program own the clipboard with this text."""
        subprocess.run(['xclip', '-selection', selection, '-in'], input=text.encode(), env=self.desk.env, check=True,
                       timeout=60, **IN_THE_BACKGROUND)

    def pasted(self):
        bytes_ = self.paste()
        return None if bytes_ is None else bytes_.decode()

    def assert_pasted(self, text):
        wait_until(lambda: self.pasted() == text, f'{text[:80]!r} on the clipboard')

    def copy(self, text):
        self.offer(text)
        self.assert_pasted(text)  # its process in the background may come later than we go on

    def send_clipboard(self):
        bus = dbus.bus.BusConnection(self.desk.bus_address)
        proxy = bus.get_object('org.brenvale.Brenvale', '/org/brenvale/Brenvale', introspect=False)
        proxy.get_dbus_method('ActivateAction', 'org.freedesktop.Application')('send-clipboard', [], {}, signature='sava{sv}')

    def sent(self):
        """The text that reaches the phone."""
        message = self.phone.read_json()
        self.assertEqual(message['action'], 'clipboard')
        return message['text']

    def assert_awake(self):
        """The main thread does its work: what the phone sends reaches the notification service."""
        began = time.monotonic()
        count = len(self.recorder.calls())
        self.phone.send_json(app='Fence', body=str(count))
        self.recorder.wait_for(count + 1)
        return time.monotonic() - began

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
        self.copy('from the desk')
        self.phone.send_json(action='clipboard', text='from the phone')
        self.assert_pasted('from the phone')
        self.copy('from the desk again')
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

    def test_the_desktops_text_is_sent_to_the_phone(self):
        for text in ('from the desk', 'ünï 日本語 👩‍👩‍👧‍👦\n'):
            self.copy(text)
            self.send_clipboard()
            self.assertEqual(self.sent(), text)

    def test_the_text_of_the_phone_can_be_sent_back(self):
        self.phone.send_json(action='clipboard', text='there and back')
        self.assert_pasted('there and back')
        self.send_clipboard()
        self.assertEqual(self.sent(), 'there and back')

    def test_an_empty_clipboard_sends_nothing(self):
        self.send_clipboard()
        self.copy('later')
        self.send_clipboard()
        self.assertEqual(self.sent(), 'later')

    def test_a_long_text_both_ways(self):
        self.phone.send_json(action='clipboard', text=LONG)
        wait_until(lambda: self.paste() == LONG.encode(), 'the long text', 60)
        self.copy('between')
        self.offer(LONG)
        wait_until(lambda: self.paste() == LONG.encode(), 'the long text of the desk', 60)
        self.send_clipboard()
        self.phone.socket.settimeout(60)
        self.assertTrue(self.sent() == LONG)
        self.assert_awake()

    def test_the_middle_buttons_selection_is_left_alone(self):
        self.offer('selected', 'primary')
        wait_until(lambda: self.paste('primary') == b'selected')
        self.phone.send_json(action='clipboard', text='copied')
        self.assert_pasted('copied')
        self.assertEqual(self.paste('primary'), b'selected')


class X11Test(ClipboardTest):
    def owner(self, *command):
        """Another program with the manners of x11_selection.py, when it has begun."""
        return self.other(*command, expected=b'ready\n')

    def other(self, *command, expected):
        child = self.desk.spawn(['/usr/bin/python3', '-B', str(HERE / 'x11_selection.py'), *command], command[0],
                                stdout=subprocess.PIPE)
        self.addCleanup(child.stdout.close)
        self.assertEqual(self.line(child), expected)
        return child

    def line(self, child):
        """The next line that it prints; nothing where none comes."""
        ready, _, _ = select.select([child.stdout], [], [], DEADLINE)
        return child.stdout.readline() if ready else b''

    def asked(self, *command):
        """What another program with those manners prints."""
        return self.desk.run('/usr/bin/python3', '-B', str(HERE / 'x11_selection.py'), *command, timeout=60).splitlines()

    def test_an_owner_that_hangs_holds_up_nothing(self):
        self.owner('hang')
        self.send_clipboard()
        self.assertLess(self.assert_awake(), 2)
        self.copy('from another')
        self.send_clipboard()
        self.assertEqual(self.sent(), 'from another')  # and the one before sent nothing

    def test_an_owner_that_stops_half_way_sends_nothing(self):
        owner = self.owner('stop', '100000')
        self.send_clipboard()
        self.assert_awake()
        self.desk.stop(owner)
        self.copy('from another')
        self.send_clipboard()
        self.assertEqual(self.sent(), 'from another')

    def test_a_text_in_pieces(self):
        self.owner('pieces', 'in pieces')
        self.send_clipboard()
        self.assertEqual(self.sent(), 'in pieces')

    def test_files_alone_are_no_text(self):
        owner = self.owner('files')
        self.send_clipboard()
        self.assert_awake()
        self.desk.stop(owner)
        self.copy('text')
        self.send_clipboard()
        self.assertEqual(self.sent(), 'text')

    def test_text_under_each_of_its_names(self):
        self.phone.send_json(action='clipboard', text='ü')
        self.assert_pasted('ü')
        self.assertEqual(self.asked('targets'), ['MULTIPLE SAVE_TARGETS STRING TARGETS TEXT TIMESTAMP UTF8_STRING '
                                                 'text/plain text/plain;charset=utf-8'])
        for target, kind, size in (('UTF8_STRING', 'UTF8_STRING', 2), ('STRING', 'STRING', 1), ('TEXT', 'UTF8_STRING', 2),
                                   ('text/plain', 'text/plain', 2), ('TIMESTAMP', 'INTEGER', 1),
                                   ('text/plain;charset=utf-8', 'text/plain;charset=utf-8', 2), ('image/png', None, 0)):
            with self.subTest(target):
                self.assertEqual(self.asked('take', target), [f'{kind} at once {size}'])

    def test_several_targets_at_once(self):
        self.phone.send_json(action='clipboard', text='text')
        self.assert_pasted('text')
        self.assertEqual(self.asked('ask', 'UTF8_STRING', 'image/png', 'TIMESTAMP', 'TARGETS'),
                         ['answered', 'UTF8_STRING UTF8_STRING', 'image/png None', 'TIMESTAMP INTEGER', 'TARGETS ATOM'])

    def test_a_long_text_goes_out_in_pieces(self):
        self.phone.send_json(action='clipboard', text='x' * 3_000_000)
        self.assert_pasted('x' * 3_000_000)
        self.assertEqual(self.asked('take', 'UTF8_STRING'), ['UTF8_STRING in pieces 3000000'])

    def test_a_reader_that_stops_holds_up_no_other(self):
        self.phone.send_json(action='clipboard', text='x' * 3_000_000)
        self.assert_pasted('x' * 3_000_000)
        reader = self.other('dawdle', expected=b'INCR\n')
        self.assert_pasted('x' * 3_000_000)
        self.desk.stop(reader)
        self.assert_pasted('x' * 3_000_000)

    def test_another_reader_is_served_while_the_owner_before_still_hangs(self):
        self.owner('hang')
        self.send_clipboard()
        self.phone.send_json(action='clipboard', text='in its place')
        self.assert_pasted('in its place')

    def test_the_text_survives_our_end_by_the_clipboard_manager(self):
        kept = self.desk.root / 'kept'
        manager = self.owner('manager', str(kept))
        self.phone.send_json(action='clipboard', text='to be kept')
        self.assert_pasted('to be kept')
        self.quit()
        self.assertIn(b'kept UTF8_STRING', self.line(manager))
        self.assertEqual(kept.read_bytes(), b'to be kept')

    def test_the_end_waits_for_no_manager_that_hangs(self):
        self.desk.spawn(['/usr/bin/python3', '-B', '-c', 'import sys; sys.path.insert(0, sys.argv[1]); '
                         'import x11_selection as x, time; x.own("CLIPBOARD_MANAGER"); time.sleep(1000)', str(HERE)], 'hung')
        wait_until(lambda: 'ready' in (self.desk.root / 'hung.log').read_text(), 'the manager')
        self.phone.send_json(action='clipboard', text='to be kept')
        self.assert_pasted('to be kept')
        self.quit()

    def quit(self):
        bus = dbus.bus.BusConnection(self.desk.bus_address)
        proxy = bus.get_object('org.brenvale.Brenvale', '/org/brenvale/Brenvale', introspect=False)
        proxy.get_dbus_method('ActivateAction', 'org.freedesktop.Application')('quit', [], {}, signature='sava{sv}')
        self.assertEqual(self.program.process.wait(20), 0)


class SwayTest(ClipboardTest):
    """Without the focus, which another program has."""

    def setUp(self):
        self.desk = SwayDesk()
        self.addCleanup(self.desk.close)
        self.recorder = Recorder(self.desk)
        self.other = self.desk.start_focused(['foot', 'sleep', '1000'], 'foot')
        self.program = self.start()
        self.phone = self.connect(self.program)

    def tearDown(self):
        self.assertEqual(self.desk.focused()['pid'], self.other.pid)

    def paste(self, selection='clipboard'):
        command = ['wl-paste', '--no-newline', *(['--primary'] if selection == 'primary' else [])]
        try:
            run = subprocess.run(command, env=self.desk.env, capture_output=True, timeout=10)
        except subprocess.TimeoutExpired:
            return None  # it asked an owner that gives nothing, while there is another one by now
        return run.stdout if run.returncode == 0 else None

    def offer(self, text, selection='clipboard'):
        command = ['wl-copy', *(['--primary'] if selection == 'primary' else [])]
        subprocess.run(command, input=text.encode(), env=self.desk.env, check=True, timeout=60, **IN_THE_BACKGROUND)

    def test_a_writer_that_never_writes_holds_up_nothing(self):
        owner = self.desk.spawn(['wl-copy', '--foreground', 'never given'], 'wl-copy')
        self.assert_pasted('never given')
        owner.send_signal(signal.SIGSTOP)
        self.send_clipboard()
        self.assertLess(self.assert_awake(), 2)
        self.phone.send_json(action='clipboard', text='in its place')
        self.assert_pasted('in its place')
        self.desk.stop(owner, signal.SIGKILL)

    def test_a_reader_that_stops_holds_up_no_other(self):
        self.phone.send_json(action='clipboard', text='x' * 3_000_000)
        self.assert_pasted('x' * 3_000_000)
        reader = self.desk.spawn(['sh', '-c', 'wl-paste | sleep 1000'], 'reader')
        self.assert_pasted('x' * 3_000_000)
        self.desk.stop(reader)
        self.phone.send_json(action='clipboard', text='and another')
        self.assert_pasted('and another')

    def test_files_alone_are_no_text(self):
        kind = 'x-special/gnome-copied-files'  # what begins with "text/" wl-copy offers as plain text, too
        subprocess.run(['wl-copy', '--type', kind, 'copy\nfile:///tmp/one'], env=self.desk.env, check=True, timeout=20,
                       **IN_THE_BACKGROUND)
        wait_until(lambda: kind.encode() in subprocess.run(['wl-paste', '--list-types'], env=self.desk.env,
                                                           capture_output=True, timeout=20).stdout)
        self.send_clipboard()
        self.assert_awake()
        self.copy('text')
        self.send_clipboard()
        self.assertEqual(self.sent(), 'text')

    def test_text_under_each_of_its_names(self):
        self.phone.send_json(action='clipboard', text='ü')
        self.assert_pasted('ü')
        self.assertEqual(self.desk.run('wl-paste', '--list-types').split(),
                         ['text/plain;charset=utf-8', 'UTF8_STRING', 'text/plain', 'STRING', 'TEXT'])


del ClipboardTest  # its rules are those of each desktop


if __name__ == '__main__':
    main()
