"""The log: which lines stand on standard output, and that nothing else does."""
import os
import pty
import re
import signal
import socket
import subprocess

from brenvale_desk import DeskTest, Program, Recorder, main, wait_until
from raw_client import BINARY, TEXT, RawClient

# Every line that the program may print, by component.
DESCRIBED = [
    r'\[WebSocketServer\] Incoming connection from \S+',
    r'\[WebSocketServer\] Connection \S+ state changed to \S.*',
    r'\[WebSocketServer\] Connection \S+ is ready \(handshake complete\)',
    r'\[WebSocketServer\] Connection \S+ failed: \S.*',
    r'\[WebSocketServer\] Connection \S+ cancelled',
    r'\[WebSocketServer\] Receive error from \S+: \S.*',
    r'\[WebSocketServer\] Received complete message of \d+ bytes from \S+',
    r'\[WebSocketServer\] JSON parsing failed: \S.*\. Payload size: \d+ bytes',
    r'\[WebSocketServer\] Error: Received data is not a valid JSON dictionary\.',
    r'\[WebSocketServer\] Command received: .* \[Type: .*\]',
    r'\[WebSocketServer\] Typing unicode text: .*',
    r'\[WebSocketServer\] Error: Command \'.*\' failed\. Accessibility permissions are missing\.',
    r'\[WebSocketServer\] Error: Media keys require Accessibility permissions\.',
    r'\[WebSocketServer\] AppleScript Error: \S.*',
    r'\[AppDelegate\] Incoming call cleared',
    r'\[AppDelegate\] Incoming call detected: .*',
    r'\[Notifications\] Post error: \S.*',
]


class LogTest(DeskTest):
    def link_lines(self, program):
        return [line for line in program.lines() if line.startswith('[WebSocketServer]')]

    def assert_lines(self, lines, patterns):
        self.assertEqual(len(lines), len(patterns), lines)
        for line, pattern in zip(lines, patterns):
            self.assertRegex(line, f'^{pattern}$')

    def opened(self, program, phone):
        """The lines of one connection up to its greeting; the states before ready may have lines or not."""
        endpoint = f'127.0.0.1:{phone.own_port}'
        program.wait_for_line(fr'.*{endpoint} is ready \(handshake complete\)')
        lines = [line for line in self.link_lines(program) if not re.search(r'to (setup|preparing|waiting)', line)]
        self.assert_lines(lines[:3], [
            fr'\[WebSocketServer\] Incoming connection from {endpoint}',
            fr'\[WebSocketServer\] Connection {endpoint} state changed to ready',
            fr'\[WebSocketServer\] Connection {endpoint} is ready \(handshake complete\)',
        ])
        return endpoint, len(self.link_lines(program))

    def closed(self, program, endpoint, since):
        """The lines of an end that the other side brought about."""
        program.wait_for_line(fr'.*Connection {endpoint} failed: .+')
        self.assert_lines(self.link_lines(program)[since:], [
            fr'\[WebSocketServer\] Receive error from {endpoint}: \S.*',
            fr'\[WebSocketServer\] Connection {endpoint} state changed to failed.*',
            fr'\[WebSocketServer\] Connection {endpoint} failed: \S.*',
        ])

    def test_connection_and_clean_close(self):
        program = self.start()
        phone = self.connect(program)
        endpoint, count = self.opened(program, phone)
        phone.close()
        self.closed(program, endpoint, count)

    def test_connection_lost_without_a_close(self):
        program = self.start()
        phone = self.connect(program)
        endpoint, count = self.opened(program, phone)
        phone.reset()
        self.closed(program, endpoint, count)

    def test_end_of_stream_without_a_close_frame(self):
        program = self.start()
        phone = self.connect(program)
        endpoint, count = self.opened(program, phone)
        phone.socket.shutdown(socket.SHUT_WR)
        phone.wait_for_end()
        self.closed(program, endpoint, count)

    def test_ipv6_peer_is_named(self):
        program = self.start()
        phone = self.connect(program, '::1')
        line, = program.wait_for_line(r'\[WebSocketServer\] Incoming connection from .+')
        self.assertIn('::1', line)
        self.assertIn(str(phone.own_port), line)

    def received_lines(self, *messages):
        """The lines that some messages bring, each a pair of opcode and bytes."""
        program = self.start()
        phone = self.connect(program)
        endpoint, count = self.opened(program, phone)
        for opcode, payload in messages:
            phone.send_frame(opcode, payload)
        self.assertEqual(phone.ping(), [])
        received = fr'\[WebSocketServer\] Received complete message of %d bytes from {endpoint}'
        return self.link_lines(program)[count:], received

    def test_message_is_logged_by_size_in_either_opcode(self):
        lines, received = self.received_lines((TEXT, b'{"action":"nothing"}'), (BINARY, b'{ }'), (TEXT, '"ü'.encode()))
        self.assert_lines(lines, [received % 20, received % 3, received % 3,
                                  r'\[WebSocketServer\] JSON parsing failed: \S.*\. Payload size: 3 bytes'])

    def test_broken_json_and_json_that_is_no_object(self):
        broken = r'\[WebSocketServer\] JSON parsing failed: \S.*\. Payload size: %d bytes'
        no_object = r'\[WebSocketServer\] Error: Received data is not a valid JSON dictionary\.'
        lines, received = self.received_lines((TEXT, b'{"action":'), (TEXT, b'[1,2]'), (TEXT, b'"text"'), (TEXT, b'7'),
                                              (TEXT, b'null'), (BINARY, b'\xff\xfe{'))
        self.assert_lines(lines, [received % 10, broken % 10, received % 5, no_object, received % 6, no_object,
                                  received % 1, no_object, received % 4, no_object, received % 3, broken % 3])

    def test_empty_and_useless_messages_bring_no_line_of_their_own(self):
        useless = [b'{}', b'{"title":"no app"}', b'{"action":"unknown","app":"Mail","title":"x"}',
                   b'{"action":"Clipboard","text":"capital letter"}', b'{"action":"sms_history"}',
                   b'{"action":"connected"}', b'{"app":"Mail","time":"not a number"}']
        lines, received = self.received_lines((TEXT, b''), (BINARY, b''), *((TEXT, text) for text in useless))
        self.assert_lines(lines, [received % len(text) for text in useless])

    def test_nothing_but_described_lines_and_an_empty_standard_error(self):
        program = self.start()
        phone = self.connect(program)
        phone.send_json(app='Mail', title='Ann', body='No server takes this')
        phone.send_json(action='clipboard', text='copied')
        phone.send_json(action='battery_status', level=50, isCharging=True)
        phone.send_json(action='device_info', wifiName='Home', deviceName='Phone')
        program.wait_for_line(r'\[Notifications\] Post error: \S.*')
        phone.reset()
        program.wait_for_line(r'.* failed: .+')
        program.stop()
        for line in program.lines():
            self.assertTrue(any(re.fullmatch(pattern, line) for pattern in DESCRIBED), line)
        self.assertEqual(program.error_text(), '')

    def test_a_call_is_logged_when_it_rings_and_when_that_ends_and_once_at_the_start_that_none_rings(self):
        program = self.start()
        phone = self.connect(program)
        phone.send_json(action='incoming_call', number='+49 170 1', name='Ann')
        program.wait_for_line(r'\[AppDelegate\] Incoming call detected: .*')
        phone.send_json(action='call_state_changed', state='OFFHOOK')
        program.wait_for_line(r'\[AppDelegate\] Incoming call cleared', 2)
        self.assertEqual(program.matching(r'\[AppDelegate\] .*'), [
            '[AppDelegate] Incoming call cleared', '[AppDelegate] Incoming call detected: +49 170 1',
            '[AppDelegate] Incoming call cleared'])

    def test_end_of_the_process_is_silent(self):
        for how in signal.SIGTERM, signal.SIGINT:
            with self.subTest(signal=how.name):
                program = self.start()
                phone = self.connect(program)
                _, count = self.opened(program, phone)
                program.process.send_signal(how)
                program.process.wait(10)
                self.assertEqual(self.link_lines(program)[count:], [])
                self.assertEqual(program.error_text(), '')

    def test_lines_leave_a_pipe_at_once(self):
        program = Program(self.desk, stdout=subprocess.PIPE).wait_listening()
        self.addCleanup(program.process.stdout.close)
        pipe = program.process.stdout.fileno()
        os.set_blocking(pipe, False)
        self.connect(program)
        seen = b''

        def ready_line_came():
            nonlocal seen
            try:
                seen += os.read(pipe, 1 << 16)
            except BlockingIOError:
                pass
            return b'is ready (handshake complete)\n' in seen

        wait_until(ready_line_came, 'the log in the pipe')

    def test_a_reader_that_goes_away_does_not_end_the_program(self):
        program = Program(self.desk, stdout=subprocess.PIPE).wait_listening()
        program.process.stdout.close()
        for _ in range(3):
            self.connect(program).ping()
        self.assertIsNone(program.process.poll())

    def flood(self, phone, count):
        """Messages that bring one line each."""
        for _ in range(count // 1000):
            phone.socket.sendall(phone.frame(TEXT, b'{}') * 1000)
            phone.ping()

    def test_a_reader_that_stops_stops_nothing_and_gets_the_lines_later(self):
        self.recorder = Recorder(self.desk)
        program = Program(self.desk, stdout=subprocess.PIPE).wait_listening()
        self.addCleanup(program.process.stdout.close)
        phone = RawClient(program.port)
        self.addCleanup(phone.socket.close)
        phone.open()
        self.flood(phone, 20_000)
        phone.send_json(app='Mail', title='Ann', body='Hello')
        self.assertEqual(self.recorder.wait_for(1)[0]['summary'], 'Mail')
        phone.socket.close()
        program.process.send_signal(signal.SIGTERM)
        text = program.process.stdout.read().decode()
        self.assertEqual(program.process.wait(10), -signal.SIGTERM)
        received = re.findall(r'Received complete message of 2 bytes', text)
        self.assertEqual(len(received), 20_000)
        self.assertIn('Receive error from', text.splitlines()[-3])

    def test_more_than_the_bound_loses_the_oldest_and_says_how_many(self):
        program = Program(self.desk, stdout=subprocess.PIPE).wait_listening()
        self.addCleanup(program.process.stdout.close)
        phone = RawClient(program.port)
        self.addCleanup(phone.socket.close)
        phone.open()
        self.flood(phone, 100_000)
        phone.send_text('not JSON')
        phone.ping()
        program.process.send_signal(signal.SIGTERM)
        lines = program.process.stdout.read().decode().splitlines()
        left_out = [int(count) for line in lines
                    for count in re.findall(r'^\[Log\] (\d+) lines were not read in time and are left out$', line)]
        self.assertEqual(len(left_out), 1)
        # All the others are there: those of the connection, one for each message, and one for what is no JSON.
        before = next(place for place, line in enumerate(lines) if 'Received complete message' in line)
        self.assertEqual(len(lines) - 1 + left_out[0], before + 100_000 + 2)
        self.assertRegex(lines[-1], 'JSON parsing failed')

    def test_a_stopped_terminal_stops_nothing(self):
        ours, its = pty.openpty()
        self.addCleanup(os.close, ours)
        program = Program(self.desk, stdout=its).wait_listening()
        os.close(its)
        phone = self.connect(program)
        os.write(ours, b'\x13')  # Ctrl-S
        self.flood(phone, 2000)
        os.write(ours, b'\x11')  # Ctrl-Q
        seen = b''
        while seen.count(b'Received complete message of 2 bytes') < 2000:
            seen += os.read(ours, 1 << 16)
        self.assertEqual(phone.ping(), [])

    def test_a_reader_that_never_reads_again_does_not_keep_the_program(self):
        program = Program(self.desk, stdout=subprocess.PIPE).wait_listening()
        self.addCleanup(program.process.stdout.close)
        phone = RawClient(program.port)
        self.addCleanup(phone.socket.close)
        phone.open()
        self.flood(phone, 5000)
        program.process.send_signal(signal.SIGTERM)
        self.assertEqual(program.process.wait(10), -signal.SIGTERM)


if __name__ == '__main__':
    main()
