"""Notification servers as they come and go: none, a late one, a restarted one, a slow one, the real ones."""
import json
import re
import signal
import time
import unittest

from brenvale_desk import DeskTest, Recorder, main, wait_until


class ServersTest(DeskTest):
    def post(self, phone, body, **members):
        phone.send_json(**{'app': 'Mail', 'title': 'Ann', 'body': body, **members})

    def wait_for_body(self, recorder, body):
        shown = lambda: next((call for call in recorder.calls() if call['body'].endswith(f'\n{body}')), None)
        return wait_until(shown, body)


class AbsentServerTest(ServersTest):
    display = False

    def test_no_server_is_one_line_for_each_notification(self):
        program = self.start()
        phone = self.connect(program)
        for number in range(3):
            self.post(phone, f'lost {number}')
        program.wait_for_line(r'\[Notifications\] Post error: \S.*', 3)
        phone.ping()
        self.assertEqual(len(program.matching(r'\[Notifications\].*')), 3)

    def test_server_that_comes_late_shows_what_comes_after_it(self):
        program = self.start()
        phone = self.connect(program)
        self.post(phone, 'too early')
        program.wait_for_line(r'\[Notifications\] Post error: \S.*')
        recorder = Recorder(self.desk)
        program.wait_at_rest()  # it has heard of the server
        self.post(phone, 'in time')
        call, = recorder.wait_for(1)
        self.assertEqual(call['body'], '<b>Ann</b>\nin time')
        self.assertEqual(len(program.matching(r'\[Notifications\].*')), 1)


class ChangingServerTest(ServersTest):
    display = False

    def setUp(self):
        super().setUp()
        self.recorder = Recorder(self.desk)
        self.program = self.start()
        self.phone = self.connect(self.program)

    def restart_server(self, **options):
        self.recorder.stop()
        self.recorder.start(**options)
        self.program.wait_at_rest()  # it has heard of both

    def test_ids_of_a_server_that_restarted_are_forgotten(self):
        self.post(self.phone, 'first', key='k1')
        self.wait_for_body(self.recorder, 'first')
        self.restart_server(first_id=100)
        self.post(self.phone, 'second', key='k1')
        second = self.wait_for_body(self.recorder, 'second')
        self.assertEqual((second['replaces'], second['id']), (0, 100))
        self.post(self.phone, 'third', key='k1')
        self.assertEqual(self.wait_for_body(self.recorder, 'third')['replaces'], 100)

    def test_capabilities_of_the_new_server_hold(self):
        self.post(self.phone, 'with markup')
        self.wait_for_body(self.recorder, 'with markup')
        self.restart_server(caps='body')
        self.post(self.phone, 'without')
        self.assertEqual(self.wait_for_body(self.recorder, 'without')['body'], 'Ann\nwithout')

    def test_server_that_goes_and_none_comes(self):
        self.post(self.phone, 'shown')
        self.wait_for_body(self.recorder, 'shown')
        self.recorder.stop()
        self.post(self.phone, 'lost')
        self.program.wait_for_line(r'\[Notifications\] Post error: \S.*')

    def test_refusal_is_one_line_and_the_next_is_shown(self):
        self.recorder.control('RefuseNext', 'org.freedesktop.Notifications.Error.Whatever')
        self.post(self.phone, 'refused')
        self.program.wait_for_line(r'\[Notifications\] Post error: \S.*')
        self.post(self.phone, 'taken')
        self.wait_for_body(self.recorder, 'taken')
        self.assertEqual(len(self.program.matching(r'\[Notifications\].*')), 1)

    def test_refusal_of_an_exact_repeat_counts_as_shown(self):
        """Plasma refuses the same text within a second: it is on the screen already."""
        self.recorder.control('RefuseNext', 'org.freedesktop.Notifications.Error.ExcessNotificationGeneration')
        self.post(self.phone, 'again')
        self.post(self.phone, 'next')
        self.wait_for_body(self.recorder, 'next')
        self.phone.ping()
        self.assertEqual(self.program.matching(r'\[Notifications\].*'), [])

    def test_refused_repeat_that_took_the_first_away_is_shown_later(self):
        self.post(self.phone, 'again', key='k1')
        self.wait_for_body(self.recorder, 'again')
        self.recorder.control('RefuseNext', 'org.freedesktop.Notifications.Error.ExcessNotificationGeneration')
        self.post(self.phone, 'again', key='k1')
        wait_until(lambda: len(self.recorder.calls()) == 3, 'the second try')
        wait_until(lambda: [call['body'].endswith('again') for call in self.recorder.live()] == [True], 'the repeat on show')

    def test_slow_server_holds_up_nothing(self):
        self.recorder.control('AnswerAfter', 1000)
        for number in range(5):
            self.post(self.phone, f'slow {number}')
        self.phone.ping()  # answered while the server still thinks
        self.connect(self.program).ping()
        for number in range(5):
            self.wait_for_body(self.recorder, f'slow {number}')
        self.assertEqual(self.program.matching(r'\[Notifications\].*'), [])

    def test_one_key_on_a_slow_server_is_shown_once(self):
        self.recorder.control('AnswerAfter', 300)
        for number in range(4):
            self.post(self.phone, f'version {number}', key='k1')
        self.wait_for_body(self.recorder, 'version 3')
        bodies = lambda: [item['body'] for item in self.recorder.live()]
        wait_until(lambda: bodies() == ['<b>Ann</b>\nversion 3'], 'the last version alone')

    def test_storm_is_shown_whole_and_in_order(self):
        frames = [self.phone.frame(1, json.dumps({'app': 'Chat', 'title': 'Ann', 'body': f'message {number}'}).encode())
                  for number in range(500)]
        self.phone.socket.sendall(b''.join(frames))
        calls = self.recorder.wait_for(500)
        self.assertEqual([call['body'] for call in calls], [f'<b>Ann</b>\nmessage {number}' for number in range(500)])
        self.phone.ping()
        self.assertEqual(len(self.recorder.live()), 500)

    def storm(self, count):
        """Many notifications in one segment, as far as the system lets them be one."""
        self.phone.socket.sendall(b''.join(
            self.phone.frame(1, json.dumps({'app': 'Chat', 'title': 'Ann', 'body': f'message {number}'}).encode())
            for number in range(count)))

    def test_none_of_thousands_is_lost(self):
        self.storm(5000)
        calls = self.recorder.wait_for(5000)
        self.assertEqual([call['body'] for call in calls], [f'<b>Ann</b>\nmessage {number}' for number in range(5000)])
        self.assertEqual(self.program.matching(r'\[Notifications\].*'), [])

    def test_a_server_that_stands_still_gets_the_latest_and_every_removal(self):
        self.post(self.phone, 'first')
        self.wait_for_body(self.recorder, 'first')
        self.recorder.process.send_signal(signal.SIGSTOP)
        self.addCleanup(self.recorder.process.send_signal, signal.SIGCONT)
        self.post(self.phone, 'on its way', key='old')
        self.post(self.phone, 'on its way', key='new')  # takes the one away that is on its way
        self.storm(3000)
        self.phone.ping()
        time.sleep(6)  # from now on it counts as one that stands still
        self.post(self.phone, 'the last one')
        self.program.wait_for_line(r'\[Notifications\] Post error: too many notifications are waiting', 1500)
        self.recorder.process.send_signal(signal.SIGCONT)
        self.wait_for_body(self.recorder, 'the last one')
        self.assertEqual([call['known'] for call in self.recorder.calls('CloseNotification')], [True])
        bodies = [call['body'] for call in self.recorder.calls()]
        self.assertEqual(bodies[-1000:-1], [f'<b>Ann</b>\nmessage {number}' for number in range(2001, 3000)])

    def test_a_huge_notification_is_not_kept_twice(self):
        def memory():
            return int(re.search(r'^RssAnon:\s*(\d+) kB', self.program.status(), re.M)[1]) / 1024
        self.post(self.phone, 'x' * 10_000_000)  # whatever is made once is made now
        self.recorder.wait_for(1)
        before = memory()
        for number in range(5):
            self.post(self.phone, f'{number}' + 'y' * 10_000_000)
            self.recorder.wait_for(2 + number)
        self.program.wait_at_rest()
        # The history shares each text (20 MB in memory) with all that names the notification by it.
        self.assertLess(memory() - before, 5 * 20 * 1.3 + 20)
        self.recorder.control('Reply', self.recorder.live()[-1]['id'], 'Hello')
        reply = self.phone.read_json()
        self.assertEqual((reply['action'], reply['message']), ('reply', 'Hello'))
        self.assertTrue(reply['key'] == 'Mail:Ann:4' + 'y' * 10_000_000)

    def test_storm_on_a_slow_server(self):
        self.recorder.control('AnswerAfter', 10)
        for number in range(500):
            self.post(self.phone, f'message {number}')
        calls = self.recorder.wait_for(500)
        self.assertEqual([call['body'] for call in calls], [f'<b>Ann</b>\nmessage {number}' for number in range(500)])
        self.assertEqual(self.program.matching(r'\[Notifications\].*'), [])


class RealServersTest(ServersTest):
    """Smoke tests: the servers that desktops have take what we send."""

    def start_with(self, kind):
        try:
            self.desk.start_notifier(kind)
        except FileNotFoundError as absent:
            raise unittest.SkipTest(str(absent))
        self.program = self.start()
        self.phone = self.connect(self.program)

    def dunst_counts(self):
        lines = self.desk.run('dunstctl', 'count').splitlines()
        return {name.strip(): int(count) for name, count in (line.split(':') for line in lines)}

    def test_dunst(self):
        self.start_with('dunst')
        self.post(self.phone, 'one', key='a')
        self.post(self.phone, 'two', key='b')
        self.post(self.phone, 'one, changed', key='a')
        self.post(self.phone, 'three')
        wait_until(lambda: self.dunst_counts()['Currently displayed'] == 3, 'three notifications')
        self.desk.run('dunstctl', 'close-all')
        wait_until(lambda: self.dunst_counts()['History'] == 3, 'the history')
        rows = json.loads(self.desk.run('dunstctl', 'history'))['data'][0]
        self.assertEqual({row['summary']['data'] for row in rows}, {'Mail'})
        bodies = {row['body']['data'] for row in rows}
        self.assertEqual({body.rsplit('\n', 1)[-1] for body in bodies}, {'one, changed', 'two', 'three'})
        self.assertEqual(self.program.matching(r'\[Notifications\].*'), [])

    def shows_window(self, kind, title):
        self.start_with(kind)
        windows = lambda: self.desk.window_tree().count(title)
        before = windows()
        self.post(self.phone, '1 < 2 & <3', title='Ann & Bob')
        wait_until(lambda: windows() > before, 'the bubble')
        self.assertEqual(self.program.matching(r'\[Notifications\].*'), [])

    def test_xfce(self):
        self.shows_window('xfce', '"xfce4-notifyd":')

    def test_notification_daemon(self):
        self.shows_window('gnome', '"Notification":')


if __name__ == '__main__':
    main()
