"""One instance on a session bus, and how other programs reach it."""
import json
import os
import pathlib
import subprocess
import urllib.parse

import dbus

from brenvale_desk import PROGRAM, DeskTest, Program, Recorder, main, wait_until

NAME, PATH, INTERFACE = 'org.brenvale.Brenvale', '/org/brenvale/Brenvale', 'org.freedesktop.Application'
WINDOW = '^Brenvale Settings'


class ApplicationTest(DeskTest):
    def setUp(self):
        super().setUp()
        Recorder(self.desk)
        self.bus = dbus.bus.BusConnection(self.desk.bus_address)
        self.program = self.start()

    def call(self, method, *arguments, signature):
        proxy = self.bus.get_object(NAME, PATH, introspect=False)
        return proxy.get_dbus_method(method, INTERFACE)(*arguments, {}, signature=signature)

    def window(self):
        return self.desk.window(WINDOW)

    def wait_for_window(self):
        return wait_until(self.window, 'the window')

    def start_again(self, *arguments):
        """A second start; gives its exit status and what it printed."""
        run = subprocess.run([PROGRAM, *arguments], env=self.desk.env, capture_output=True, timeout=20)
        return run.returncode, run.stdout + run.stderr

    def make_file(self, name, contents=b'contents'):
        path = self.desk.root / name
        path.write_bytes(contents)
        return path


class SingleInstanceTest(ApplicationTest):
    def test_a_second_start_opens_the_window_of_the_first_and_ends(self):
        self.assertEqual(self.start_again(), (0, b''))
        self.wait_for_window()

    def test_a_second_start_hands_its_files_over(self):
        phone = self.connect(self.program)
        path = self.make_file('two words.txt')
        self.assertEqual(self.start_again(str(path)), (0, b''))
        self.assertEqual(phone.read_json(), {'action': 'file_transfer_start', 'fileName': 'two words.txt', 'fileSize': 8})
        self.wait_for_window()

    def test_a_second_start_in_the_background_asks_for_nothing(self):
        self.assertEqual(self.start_again('--background'), (0, b''))
        self.program.wait_at_rest()
        self.assertEqual(self.window(), '')

    def test_a_file_whose_name_is_no_text_is_sent_however_it_is_named(self):
        phone = self.connect(self.program)
        os.chdir(self.desk.root)
        name = b'bytes \xff%20\xfe.txt'
        pathlib.Path(os.fsdecode(name)).write_bytes(b'1')
        path = os.fsencode(self.desk.root) + b'/' + name
        for argument in (path, name, b'file://' + urllib.parse.quote_from_bytes(path).encode()):
            self.assertEqual(self.start_again(argument), (0, b''))
            message = {}
            while message.get('action') != 'file_chunk':  # the window that opens asks for something too
                message = phone.read_json()
            self.assertEqual(message, {'action': 'file_chunk', 'fileName': 'bytes \ufffd%20\ufffd.txt', 'fileData': 'MQ==',
                                       'isLast': True})

    def test_the_name_is_free_again_when_the_first_has_ended(self):
        self.program.stop()
        self.start()


class EndTest(ApplicationTest):
    def test_a_plugin_that_locked_the_event_loop_and_lets_go_ends_nothing(self):
        self.program.stop()
        plugins = os.environ.get('BRENVALE_TEST_PLUGINS') or pathlib.Path(PROGRAM).parent.parent / 'test-plugins'
        env = self.desk.env | {'QT_PLUGIN_PATH': str(plugins), 'QT_QPA_GENERIC_PLUGINS': 'desktop-lockers'}
        program = self.start(env=env)
        wait_until(lambda: program.error_text() == 'the event loop was unlocked\n', 'the plugin')
        program.wait_at_rest()
        self.assertIsNone(program.process.poll())
        self.connect(program).ping()


class InterfaceTest(ApplicationTest):
    def test_activate_opens_the_window(self):
        self.call('Activate', signature='a{sv}')
        self.wait_for_window()

    def test_activate_brings_a_minimised_window_back(self):
        self.call('Activate', signature='a{sv}')
        window = self.wait_for_window()
        self.desk.run('xdotool', 'windowminimize', '--sync', window)
        wait_until(lambda: not self.window(), 'the window to go')
        self.call('Activate', signature='a{sv}')
        self.assertEqual(self.wait_for_window(), window)

    def test_closing_the_window_ends_nothing_and_it_comes_back(self):
        self.call('Activate', signature='a{sv}')
        for _ in range(2):
            self.desk.run('xdotool', 'windowactivate', '--sync', self.wait_for_window())
            # The window manager may not listen yet to the keys of a window that it has just activated.
            def closed():
                self.desk.run('xdotool', 'key', 'alt+F4')
                return not self.window()
            wait_until(closed, 'the window to close')
            self.connect(self.program).ping()
            self.call('Activate', signature='a{sv}')
        self.wait_for_window()

    def test_actions_open_their_tabs(self):
        self.call('ActivateAction', 'sms', [], signature='sava{sv}')
        self.wait_for_window()
        self.call('ActivateAction', 'no such action', [], signature='sava{sv}')
        self.assertIsNone(self.program.process.poll())

    def test_quit_is_an_action(self):
        self.call('ActivateAction', 'quit', [], signature='sava{sv}')
        self.assertEqual(self.program.process.wait(10), 0)

    def test_open_sends_the_files_and_shows_their_tab(self):
        phone = self.connect(self.program)
        paths = [self.make_file('first.txt', b'1'), self.make_file('ünï 2.txt', b'2')]
        self.call('Open', [f'file://{urllib.parse.quote(str(path))}' for path in paths], signature='asa{sv}')
        names = []
        while len(names) < 2:
            message = phone.read_json()
            if message['action'] == 'file_transfer_start':
                names.append(message['fileName'])
        self.assertEqual(names, ['first.txt', 'ünï 2.txt'])
        self.program.wait_for_line(r'\[AppDelegate\] Service triggered for file: ünï 2\.txt')
        self.wait_for_window()

    def test_a_file_of_localhost_is_a_file_like_any_other(self):
        phone = self.connect(self.program)
        path = self.make_file('a.txt')
        self.call('Open', [f'file://localhost{path}'], signature='asa{sv}')
        self.assertEqual(phone.read_json(), {'action': 'file_transfer_start', 'fileName': 'a.txt', 'fileSize': 8})
        self.wait_for_window()

    def test_a_folder_is_named_by_its_last_component(self):
        self.call('Open', [f'file://{self.desk.root}/home/'], signature='asa{sv}')
        self.program.wait_for_line(r'\[AppDelegate\] Service triggered for file: home')

    def test_open_without_a_file_does_nothing(self):
        for uris in ([], ['https://example.org/a.txt'], ['plain text'], ['file://another.example/etc/hostname']):
            self.call('Open', dbus.Array(uris, signature='s'), signature='asa{sv}')
        self.program.wait_at_rest()
        self.assertEqual(self.window(), '')
        self.assertEqual(self.program.matching(r'\[AppDelegate\] Service.*'), [])


if __name__ == '__main__':
    main()
