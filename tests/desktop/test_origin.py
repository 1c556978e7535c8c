"""Web pages of other sites are kept out; phones, which send no origin, and pages of this machine are not."""
import socket

from brenvale_desk import DeskTest, main


class OriginTest(DeskTest):
    display = False

    def setUp(self):
        super().setUp()
        self.program = self.start()

    def answer(self, **headers):
        client = self.raw(self.program)
        client.socket.sendall(client.request(**headers))
        status, _ = client.read_response()
        if status == 101:
            client.read_json()
        else:
            client.wait_for_end()
        return status

    def test_foreign_pages_are_refused_and_logged(self):
        foreign = ['http://page.example', 'https://page.example:8443', 'null', 'http://127.0.0.1.page.example',
                   'http://localhost.page.example', f'http://page.example:{self.program.port}',
                   'HTTP://PAGE.EXAMPLE', 'http://192.168.77.1']
        for origin in foreign:
            with self.subTest(origin):
                self.assertEqual(self.answer(Origin=origin), 403)
        lines = self.program.wait_for_line(r'\[WebSocketServer\] Connection \S+ failed: \S.*', len(foreign))
        for line in lines:
            self.assertIn('foreign web origin refused', line)
        self.assertFalse(self.program.matching('.*is ready.*'))

    def test_own_pages_and_programs_pass(self):
        host = f'127.0.0.1:{self.program.port}'
        for origin in (f'http://{host}', 'http://localhost', 'https://localhost:3000', 'http://[::1]:8080',
                       'http://127.0.0.1:1234', 'HTTP://LOCALHOST'):
            with self.subTest(origin):
                self.assertEqual(self.answer(Origin=origin), 101)

    def test_page_of_this_computer_passes_by_its_address_or_name(self):
        own = socket.gethostname()
        for name in ('192.168.77.1', '[2001:db8::1]', own, f'{own}.local', own.upper()):
            with self.subTest(name):
                host = f'{name}:{self.program.port}'
                self.assertEqual(self.answer(Host=host, Origin=f'http://{host}'), 101)
                self.assertEqual(self.answer(Host=host, Origin='http://other.example'), 403)

    def test_page_whose_name_was_made_to_point_here_is_refused(self):
        for name in ('page.example', f'{socket.gethostname()}.page.example', 'page.local'):
            with self.subTest(name):
                host = f'{name}:{self.program.port}'
                self.assertEqual(self.answer(Host=host, Origin=f'http://{host}'), 403)

    def test_no_origin_passes(self):
        self.assertEqual(self.answer(), 101)


if __name__ == '__main__':
    main()
