"""A WebSocket client on a bare socket, which can also do what no proper client does."""
import base64
import json
import os
import socket
import struct

from desk import DEADLINE

CONTINUATION, TEXT, BINARY, CLOSE, PING, PONG = 0, 1, 2, 8, 9, 10


class RawClient:
    def __init__(self, port, host='127.0.0.1'):
        self.socket = socket.create_connection((host, port), timeout=DEADLINE)
        self.host, self.port = host, port
        self.received = bytearray()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.socket.close()

    @property
    def own_port(self):
        return self.socket.getsockname()[1]

    # The handshake.

    def request(self, path='/', **changes):
        """The bytes of a handshake request; a header set to None is left out."""
        headers = {'Host': f'{self.host}:{self.port}', 'Upgrade': 'websocket', 'Connection': 'Upgrade',
                   'Sec-WebSocket-Key': base64.b64encode(os.urandom(16)).decode(), 'Sec-WebSocket-Version': '13'}
        headers |= {name.replace('_', '-'): value for name, value in changes.items()}
        lines = [f'{name}: {value}' for name, value in headers.items() if value is not None]
        return '\r\n'.join([f'GET {path} HTTP/1.1', *lines, '', '']).encode()

    def read_response(self):
        """Status and headers of the server's answer, the names in lower case."""
        while b'\r\n\r\n' not in self.received:
            self._receive_more()
        head, self.received = self.received.split(b'\r\n\r\n', 1)
        first, *lines = head.decode().split('\r\n')
        headers = {name.lower(): value.strip() for name, value in (line.split(':', 1) for line in lines)}
        return int(first.split()[1]), headers

    def open(self, **changes):
        """Performs the handshake and gives the greeting."""
        self.socket.sendall(self.request(**changes))
        status, _ = self.read_response()
        if status != 101:
            raise ConnectionError(f'handshake answered {status}')
        return self.read_json()

    # Frames.

    @staticmethod
    def frame(opcode, payload=b'', final=True, masked=True, reserved=0, claimed_size=None):
        """The bytes of one frame; claimed_size is put in place of the payload's own."""
        size = len(payload) if claimed_size is None else claimed_size
        head = bytes([(0x80 if final else 0) | reserved << 4 | opcode])
        mask_bit = 0x80 if masked else 0
        if size < 126:
            head += bytes([mask_bit | size])
        elif size < 1 << 16:
            head += struct.pack('>BH', mask_bit | 126, size)
        else:
            head += struct.pack('>BQ', mask_bit | 127, size)
        if not masked:
            return head + payload
        mask = os.urandom(4)
        whole = mask * (len(payload) // 4 + 1)
        hidden = int.from_bytes(payload, 'big') ^ int.from_bytes(whole[:len(payload)], 'big')
        return head + mask + hidden.to_bytes(len(payload), 'big')

    def send_frame(self, *arguments, **options):
        self.socket.sendall(self.frame(*arguments, **options))

    def send_text(self, text):
        self.send_frame(TEXT, text.encode())

    def send_json(self, **members):
        self.send_text(json.dumps(members))

    def read_frame(self):
        """Opcode and payload of the next frame; the server's frames are whole and unmasked."""
        first, second = self._take(2)
        size = second & 0x7f
        if size == 126:
            size, = struct.unpack('>H', self._take(2))
        elif size == 127:
            size, = struct.unpack('>Q', self._take(8))
        if not first & 0x80 or first & 0x70 or second & 0x80:
            raise ConnectionError(f'unexpected frame head {first:02x} {second:02x}')
        return first & 0x0f, self._take(size)

    def read_json(self):
        opcode, payload = self.read_frame()
        if opcode != TEXT:
            raise ConnectionError(f'expected a text frame, got opcode {opcode}: {payload[:80]}')
        return json.loads(payload)

    def ping(self, payload=b'barrier'):
        """Returns once the server has answered, and so has read all that was sent before; gives what came first."""
        self.send_frame(PING, payload)
        earlier = []
        while (frame := self.read_frame()) != (PONG, payload):
            earlier.append(frame)
        return earlier

    # Ends.

    def close(self, code=1000):
        """The whole closing handshake; gives the server's code."""
        self.send_frame(CLOSE, struct.pack('>H', code))
        code = self.read_close()
        self.socket.close()
        return code

    def read_close(self):
        """Reads up to the end of the connection; gives the code of the server's close frame, if there was one."""
        code = None
        try:
            while code is None:
                opcode, payload = self.read_frame()
                if opcode == CLOSE:
                    code = struct.unpack('>H', payload[:2])[0] if payload else 0
            self.wait_for_end()
        except ConnectionError:
            pass
        return code

    def wait_for_end(self):
        """Returns once the server has ended the connection."""
        try:
            while True:
                self._receive_more()
        except ConnectionError:
            pass

    def reset(self):
        """Ends the connection as a phone out of reach does: no close frame, no orderly end."""
        self.socket.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack('ii', 1, 0))
        self.socket.close()

    def _take(self, count):
        while len(self.received) < count:
            self._receive_more()
        taken = bytes(self.received[:count])
        del self.received[:count]
        return taken

    def _receive_more(self):
        more = self.socket.recv(1 << 16)
        if not more:
            raise ConnectionError('the server ended the connection')
        self.received += more
