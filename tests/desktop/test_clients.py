"""WebSocket clients by other hands: what they expect of a server is not our own reading of the rules."""
import asyncio
import json
import pathlib
import socket

import tornado.websocket
import websockets

from brenvale_desk import DeskTest, main

DEADLINE = 20


def within_deadline(coroutine):
    return asyncio.run(asyncio.wait_for(coroutine, DEADLINE))


class ClientsTest(DeskTest):
    display = False

    def setUp(self):
        super().setUp()
        self.program = self.start()
        self.url = f'ws://127.0.0.1:{self.program.port}/'

    def assert_greeting(self, greeting):
        self.assertEqual(greeting, {'action': 'connected', 'deviceName': socket.gethostname()})

    def wait_for_sizes(self, *sizes):
        lines = self.program.wait_for_line(r'.*Received complete message.*', len(sizes))
        self.assertEqual([line.split()[5] for line in lines], [str(size) for size in sizes])

    def test_python_websockets(self):
        async def play():
            async with websockets.connect(self.url, subprotocols=['chat']) as phone:
                greeting = await phone.recv()
                self.assertIsInstance(greeting, str)
                self.assert_greeting(json.loads(greeting))
                self.assertIsNone(phone.subprotocol)
                await phone.send('{"a":1}')
                await phone.send(b'{"bb":1}')
                await phone.send(['{"ccc"', ':', '1}'])
                await phone.send([b'{"dddd"', b':1}'])
                await (await phone.ping('beat'))
            self.assertEqual(phone.close_code, 1000)

        within_deadline(play())
        self.wait_for_sizes(7, 8, 9, 10)

    def test_two_phones_at_once(self):
        async def play():
            async with websockets.connect(self.url) as one, websockets.connect(self.url) as other:
                for phone in one, other:
                    self.assert_greeting(json.loads(await phone.recv()))
                for phone in other, one:
                    await phone.send('{}')
                    await (await phone.ping())

        within_deadline(play())
        self.wait_for_sizes(2, 2)

    def test_tornado(self):
        async def play():
            phone = await tornado.websocket.websocket_connect(self.url, compression_options={})
            self.assert_greeting(json.loads(await phone.read_message()))
            await phone.write_message('{"a":1}')
            await phone.write_message(b'{"bb":1}', binary=True)
            phone.close(1000)
            self.assertIsNone(await phone.read_message())
            self.assertEqual(phone.close_code, 1000)

        within_deadline(play())
        self.wait_for_sizes(7, 8)

    def test_node_ws(self):
        script = pathlib.Path(__file__).with_name('node_client.js')
        self.desk.env['NODE_PATH'] = '/usr/share/nodejs'
        seen = json.loads(self.desk.run('node', str(script), self.url))
        greeting, = seen['texts']
        self.assert_greeting(greeting)
        self.assertEqual(seen['pongs'], ['idle', 'inside', 'last'])
        self.assertEqual((seen['binaries'], seen['closed'], seen['extensions']), (0, 1000, ''))
        self.wait_for_sizes(17, 19, 23)

    def test_ipv6(self):
        async def play():
            async with websockets.connect(f'ws://[::1]:{self.program.port}/any/path?query') as phone:
                self.assert_greeting(json.loads(await phone.recv()))

        within_deadline(play())


if __name__ == '__main__':
    main()
