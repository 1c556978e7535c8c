"""The wire below the messages: the handshake and the frames, right and wrong ones."""
import json
import re
import struct

from brenvale_desk import DeskTest, main
from raw_client import BINARY, CLOSE, CONTINUATION, PING, PONG, TEXT

MEGABYTE = 1 << 20
MESSAGE_LIMIT = 128 * MEGABYTE
PROTOCOL_ERROR, BAD_TEXT, TOO_BIG = 1002, 1007, 1009


class FramingTest(DeskTest):
    display = False

    def setUp(self):
        super().setUp()
        self.program = self.start()
        self.phone = self.connect(self.program)

    def sizes(self):
        self.assertEqual(self.phone.ping(), [])
        lines = self.program.matching(r'.*Received complete message.*')
        return [int(line.split()[5]) for line in lines]

    def assert_serving(self):
        """A new phone is greeted and read as ever."""
        self.connect(self.program).ping()

    def assert_ends_with(self, code, *frames):
        for frame in frames:
            self.phone.socket.sendall(frame)
        self.assertEqual(self.phone.read_close(), code)
        self.phone.socket.close()
        self.program.wait_for_line(r'\[WebSocketServer\] Receive error from \S+: \S.*')
        self.program.wait_for_line(r'\[WebSocketServer\] Connection \S+ failed: \S.*')
        self.assert_serving()

    # Messages.

    def test_fragments_make_one_message(self):
        self.phone.send_frame(TEXT, b'{"a":', final=False)
        self.phone.send_frame(CONTINUATION, b'', final=False)
        self.phone.send_frame(CONTINUATION, b'"', final=False)
        self.phone.send_frame(CONTINUATION, b'x"}', final=True)
        self.phone.send_frame(BINARY, b'{', final=False)
        self.phone.send_frame(CONTINUATION, b'}', final=True)
        self.assertEqual(self.sizes(), [9, 2])

    def test_a_thousand_fragments(self):
        text = json.dumps({'action': 'none', 'text': 'ä€😀' * 400}, ensure_ascii=False).encode()
        cuts = [text[i:i + 1] for i in range(len(text))]  # characters cut in the middle too
        frames = [self.phone.frame(TEXT, cuts[0], final=False)]
        frames += [self.phone.frame(CONTINUATION, cut, final=False) for cut in cuts[1:]]
        self.phone.socket.sendall(b''.join(frames) + self.phone.frame(CONTINUATION, b'', final=True))
        self.assertEqual(self.sizes(), [len(text)])
        self.assertFalse(self.program.matching('.*JSON.*'))

    def test_bytes_that_trickle_in(self):
        for byte in self.phone.frame(TEXT, b'{"slow":1}'):
            self.phone.socket.sendall(bytes([byte]))
        self.assertEqual(self.sizes(), [10])

    def test_frames_that_come_with_the_handshake(self):
        phone = self.raw(self.program)
        phone.socket.sendall(phone.request() + phone.frame(TEXT, b'{"early":1}') + phone.frame(PING, b'early'))
        self.assertEqual(phone.read_response()[0], 101)
        self.assertEqual(phone.read_json()['action'], 'connected')
        self.assertEqual(phone.read_frame(), (PONG, b'early'))
        self.assertEqual(self.sizes(), [11])

    def test_frames_that_come_with_a_long_handshake(self):
        for length in (1000, 1400, 1500, 2000, 5000):  # of a header, around what the protocol stack has room for
            with self.subTest(length=length):
                phone = self.raw(self.program)
                early = json.dumps({'early': 'x' * length}).encode()
                phone.socket.sendall(phone.request(Cookie='c' * length) + phone.frame(TEXT, early) +
                                     phone.frame(PING, b'early'))
                self.assertEqual(phone.read_response()[0], 101)
                self.assertEqual(phone.read_json()['action'], 'connected')
                self.assertEqual(phone.read_frame(), (PONG, b'early'))
                self.assertEqual(self.sizes()[-1], len(early))

    def test_large_message_arrives_whole(self):
        self.phone.send_json(action='none', text='x' * (40 * MEGABYTE))
        size, = self.sizes()
        self.assertGreater(size, 40 * MEGABYTE)
        self.assertFalse(self.program.matching('.*JSON.*'))

    def test_pings_are_answered_in_order_also_inside_a_message(self):
        self.phone.send_frame(TEXT, b'{"a"', final=False)
        payloads = [b'', *(f'{number}'.encode() for number in range(500)), bytes(range(125))]
        for payload in payloads:
            self.phone.send_frame(PING, payload)
        self.phone.send_frame(CONTINUATION, b':1}')
        self.assertEqual([self.phone.read_frame() for _ in payloads], [(PONG, payload) for payload in payloads])
        self.assertEqual(self.sizes(), [7])

    def test_unasked_pong_is_ignored(self):
        self.phone.send_frame(PONG, b'unasked')
        self.assertEqual(self.sizes(), [])

    # What one phone can do to the others.

    def test_announced_sizes_take_no_memory(self):
        resident = lambda: int(re.search(r'VmRSS:\s*(\d+)', self.program.status())[1]) >> 10
        before = resident()
        greedy = [self.connect(self.program) for _ in range(20)]
        for phone in greedy:
            phone.socket.sendall(phone.frame(BINARY, claimed_size=100 * MEGABYTE) + b'{"few":"bytes"')
        for phone in greedy:
            phone.socket.close()
        self.assert_serving()
        self.assertLess(resident() - before, 100)

    def test_phone_that_never_reads_holds_up_nobody(self):
        deaf = self.connect(self.program)
        deaf.socket.setblocking(False)
        flood = b''.join(deaf.frame(PING, bytes(125)) for _ in range(1000))
        sent = 0
        try:
            while sent < 64 * MEGABYTE:
                sent += deaf.socket.send(flood)
        except BlockingIOError:
            pass  # the server has stopped reading, as its answers are not taken
        self.assert_serving()

    # Ends.

    def test_close_is_answered(self):
        for code in (1000, 1001, 3000, 4999):
            with self.subTest(code=code):
                self.assertEqual(self.connect(self.program).close(code), code)

    def test_close_without_a_code_is_answered(self):
        self.phone.send_frame(CLOSE)
        self.assertIsNotNone(self.phone.read_close())

    def test_data_after_close_is_not_read(self):
        self.phone.socket.sendall(self.phone.frame(CLOSE, struct.pack('>H', 1000)) + self.phone.frame(TEXT, b'{}'))
        self.assertEqual(self.phone.read_close(), 1000)
        self.assertFalse(self.program.matching(r'.*Received complete message.*'))

    # What no client may send.

    def test_broken_frames_end_the_connection(self):
        frame = self.phone.frame
        broken = {
            'unmasked': [frame(TEXT, b'{}', masked=False)],
            'reserved bit 1': [frame(TEXT, b'{}', reserved=4)],
            'reserved bit 3': [frame(TEXT, b'{}', reserved=1)],
            'reserved opcode': [frame(3, b'{}')],
            'reserved control opcode': [frame(11, b'')],
            'fragmented ping': [frame(PING, b'x', final=False)],
            'long ping': [frame(PING, b'x' * 126)],
            'continuation of nothing': [frame(CONTINUATION, b'{}')],
            'message inside a message': [frame(TEXT, b'{', final=False), frame(TEXT, b'}')],
            'close of one byte': [frame(CLOSE, b'x')],
            'close with a forbidden code': [frame(CLOSE, struct.pack('>H', 1005))],
        }
        for name, frames in broken.items():
            with self.subTest(name):
                self.phone = self.connect(self.program)
                self.assert_ends_with(PROTOCOL_ERROR, *frames)

    def test_text_that_is_not_utf8(self):
        for payload in (b'{"a":"\xff"}', b'\xc3', b'\xed\xa0\x80', b'\xf8\x88\x80\x80\x80'):
            with self.subTest(payload=payload):
                self.phone = self.connect(self.program)
                self.assert_ends_with(BAD_TEXT, self.phone.frame(TEXT, payload))

    def test_message_beyond_the_limit(self):
        self.assert_ends_with(TOO_BIG, self.phone.frame(BINARY, claimed_size=MESSAGE_LIMIT + 1))
        line, = self.program.wait_for_line(r'\[WebSocketServer\] Receive error from .*')
        self.assertIn('message too big', line)

    def test_size_with_its_top_bit_set(self):
        self.phone.send_frame(BINARY, claimed_size=1 << 63)
        self.assertIn(self.phone.read_close(), (PROTOCOL_ERROR, TOO_BIG))
        self.assert_serving()

    def test_fragments_that_add_up_beyond_the_limit(self):
        self.phone.send_frame(BINARY, b'{}', final=False)
        self.assert_ends_with(TOO_BIG, self.phone.frame(CONTINUATION, claimed_size=MESSAGE_LIMIT - 1))

    # Handshakes.

    def test_answer_to_the_handshake(self):
        phone = self.raw(self.program)
        request = phone.request(Sec_WebSocket_Key='dGhlIHNhbXBsZSBub25jZQ==', Sec_WebSocket_Protocol='chat',
                                Sec_WebSocket_Extensions='permessage-deflate; client_max_window_bits')
        phone.socket.sendall(request)
        status, headers = phone.read_response()
        self.assertEqual(status, 101)
        self.assertEqual(headers['sec-websocket-accept'], 's3pPLMBiTxaQ9kYGzzhZRbK+xOo=')
        self.assertNotIn('sec-websocket-protocol', headers)
        self.assertNotIn('sec-websocket-extensions', headers)

    def test_other_version_is_told_the_right_one(self):
        phone = self.raw(self.program)
        phone.socket.sendall(phone.request(Sec_WebSocket_Version='8'))
        status, headers = phone.read_response()
        self.assertEqual((status, headers.get('sec-websocket-version')), (426, '13'))
        phone.wait_for_end()
        self.assert_serving()

    def test_requests_that_are_no_handshake_are_refused(self):
        requests = {
            'plain GET': dict(Upgrade=None, Connection=None, Sec_WebSocket_Key=None, Sec_WebSocket_Version=None),
            'no key': dict(Sec_WebSocket_Key=None),
            'no version': dict(Sec_WebSocket_Version=None),
            'another upgrade': dict(Upgrade='h2c'),
        }
        for name, changes in requests.items():
            with self.subTest(name):
                phone = self.raw(self.program)
                phone.socket.sendall(phone.request(**changes))
                status, _ = phone.read_response()
                self.assertTrue(400 <= status < 500, status)
                phone.wait_for_end()
        self.assert_serving()

    def test_bytes_that_are_no_request_end_the_connection(self):
        for garbage in (b'\x16\x03\x01\x02\r\n\r\n', b'\r\n\r\n\0\0\r\n\r\n',
                        b'POST / HTTP/1.1\r\nContent-Length: 99999999999\r\n\r\n'):
            with self.subTest(garbage=garbage[:8]):
                phone = self.raw(self.program)
                phone.socket.sendall(garbage)
                phone.wait_for_end()
        self.assert_serving()

    def test_endless_header_is_cut_off(self):
        phone = self.raw(self.program)
        with self.assertRaises(ConnectionError):
            phone.socket.sendall(b'GET / HTTP/1.1\r\nX: ')
            for _ in range(10000):
                phone.socket.sendall(b'x' * 10000)
        self.assert_serving()

    def test_slow_handshake_holds_up_nobody(self):
        slow = self.raw(self.program)
        request = slow.request()
        for byte in request[:-1]:
            slow.socket.sendall(bytes([byte]))
        self.assert_serving()
        slow.socket.sendall(request[-1:])
        self.assertEqual(slow.read_response()[0], 101)
        self.assertEqual(slow.read_json()['action'], 'connected')
        slow.ping()


if __name__ == '__main__':
    main()
