"""The port: where it is read from, and what happens when it is taken."""
import signal
import socket
import unittest

from brenvale_desk import DeskTest, Program, free_port, listening, main

DEFAULT_PORT = 8765


def hold(port, family=socket.AF_INET, address='0.0.0.0'):
    """Another program that listens on the port."""
    holder = socket.socket(family)
    if family == socket.AF_INET6:
        holder.setsockopt(socket.IPPROTO_IPV6, socket.IPV6_V6ONLY, 1)
    holder.bind((address, port))
    holder.listen()
    return holder


class PortTest(DeskTest):
    display = False
    bus = False  # on one bus there is one program

    def assert_serves(self, program):
        for host in ('127.0.0.1', '::1'):
            self.connect(program, host).ping()

    def test_port_of_the_settings(self):
        self.assert_serves(self.start())

    def test_default_port(self):
        if listening(DEFAULT_PORT):
            raise unittest.SkipTest(f'port {DEFAULT_PORT} is taken on this machine')
        for setting in ('[Other]\n', '[General]\n', '[General]\nport=0\n', '[General]\nport=-1\n', '[General]\nport=\n',
                        '[General]\nport=-70000\n'):
            with self.subTest(setting=setting):
                program = Program(self.desk, port=DEFAULT_PORT, setting=setting).wait_listening()
                self.assert_serves(program)
                program.stop()

    def test_port_above_the_range_stops_the_process(self):
        for port in (65536, 70000, 2**40, 2**63 - 1, 10**20):
            with self.subTest(port=port):
                program = Program(self.desk, port=port, setting=f'[General]\nport={port}\n')
                self.assertEqual(program.process.wait(20), -signal.SIGABRT)
                self.assertIn('Not enough bits to represent the passed value', program.error_text())
                self.assertEqual(program.lines(), [])

    def test_taken_port_is_tried_again_until_it_comes_free(self):
        holders = {
            'IPv4': (socket.AF_INET, '0.0.0.0'),
            'IPv4, this machine alone': (socket.AF_INET, '127.0.0.1'),
            'IPv6': (socket.AF_INET6, '::'),
        }
        # All at once, as each waits for the next try.
        waiting = []
        for name, place in holders.items():
            port = free_port()
            holder = hold(port, *place)
            self.addCleanup(holder.close)
            waiting.append((name, holder, Program(self.desk, port=port)))
        other = self.start()  # a later program that listens shows that the others have had their first try
        self.assert_serves(other)
        for name, holder, program in waiting:
            self.assertIsNone(program.process.poll(), name)
            holder.close()
        for name, _, program in waiting:
            with self.subTest(name):
                self.assert_serves(program.wait_listening())

    def test_port_is_free_at_once_after_a_stop(self):
        program = self.start()
        phones = [self.connect(program) for _ in range(5)]
        program.process.kill()  # the server's side is left in TIME_WAIT
        for phone in phones:
            phone.wait_for_end()
        program.process.wait()
        self.assertFalse(listening(program.port))
        self.assert_serves(Program(self.desk, port=program.port).wait_listening())

    def test_second_program_on_one_port_does_not_share_it(self):
        first = self.start()
        second = Program(self.desk, port=first.port)
        self.addCleanup(second.stop)
        third = self.start()  # by now the second has had its try
        for _ in range(20):
            self.connect(first).ping()
        self.assertEqual(second.matching(r'\[WebSocketServer\].*'), [])
        third.stop()


if __name__ == '__main__':
    main()
