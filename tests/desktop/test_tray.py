"""The tray item and its menu, read and clicked over the bus as a desktop's panel does it."""
import configparser
import json
import pathlib
import shutil
import socket
import subprocess
import time

import dbus

from brenvale_desk import HERE, DeskTest, Program, Recorder, main, wait_until
from raw_client import TEXT

WATCHER = 'org.kde.StatusNotifierWatcher'
SEPARATOR = '---'


class TrayTest(DeskTest):
    def setUp(self):
        super().setUp()
        Recorder(self.desk)
        self.bus = dbus.bus.BusConnection(self.desk.bus_address)

    def start_host(self):
        self.host = self.desk.spawn(['/usr/bin/python3', str(HERE / 'tray_host.py')], 'tray')
        self.desk.wait_for_name(WATCHER)

    def stop_host(self):
        self.desk.stop(self.host)
        wait_until(lambda: not self.desk.has_name(WATCHER), 'the tray to go')

    def tray(self, method, *arguments):
        proxy = self.bus.get_object(WATCHER, '/Tray', introspect=False)
        return proxy.get_dbus_method(method, 'org.test.Tray')(*arguments, signature='s' if arguments else '')

    def wait_for_item(self):
        wait_until(lambda: self.tray('Count') == 1, 'the tray item')

    def rows(self):
        return json.loads(self.tray('Menu'))

    def labels(self):
        return [SEPARATOR if row['separator'] else row['label'] for row in self.rows()]

    def start_shown(self):
        self.start_host()
        self.program = self.start()
        self.wait_for_item()
        return self.program


class MenuTest(TrayTest):
    def test_rows_and_their_keys(self):
        program = self.start_shown()
        wait_until(lambda: 'starting' not in self.labels()[2], 'the state')
        self.assertEqual(self.labels(), [
            'Brenvale', SEPARATOR, f'Server: listening on :{program.port}', SEPARATOR, 'Call…', 'Send SMS…', 'File Drop…',
            'Notifications…', 'Remote Control…', 'Send Clipboard', 'Clipboard History…', 'Settings…', 'Info…', SEPARATOR,
            'Quit Brenvale'])
        rows = {row['label']: row for row in self.rows() if not row['separator']}
        self.assertEqual([rows['Brenvale']['enabled'], self.rows()[2]['enabled']], [False, False])
        keys = {label: row['shortcut'] for label, row in rows.items() if row['shortcut']}
        self.assertEqual({label: ''.join(key).removeprefix('Control+') for label, key in keys.items()}, {
            'Call…': 'C', 'Send SMS…': 'S', 'File Drop…': 'F', 'Notifications…': 'Y', 'Remote Control…': 'R',
            'Send Clipboard': 'V', 'Clipboard History…': 'H', 'Settings…': ',', 'Info…': 'I', 'Quit Brenvale': 'Q'})
        self.assertTrue(all(rows[label]['enabled'] for label in keys))

    def test_its_rows_are_the_actions_of_the_programs_own_entry(self):
        self.start_shown()
        entry = configparser.ConfigParser(interpolation=None)
        entry.read(HERE.parent.parent / 'data/org.brenvale.Brenvale.desktop')
        names = entry['Desktop Entry']['Actions'].strip(';').split(';')
        self.assertEqual([entry[f'Desktop Action {name}']['Name'] for name in names],
                         [label for label in self.labels()[4:] if label != SEPARATOR])

    def test_the_state_follows_the_server(self):
        program = self.start_shown()
        program.stop()
        with socket.socket() as taken:
            taken.bind(('0.0.0.0', program.port))
            taken.listen()
            Program(self.desk, port=program.port)
            self.wait_for_item()
            wait_until(lambda: self.labels()[2] == 'Server: failed – Address already in use', 'the failure')

    def test_quit_ends_the_process(self):
        program = self.start_shown()
        self.tray('Click', 'Quit Brenvale')
        self.assertEqual(program.process.wait(10), 0)

    def test_send_clipboard_sends_the_text_and_opens_nothing(self):
        program = self.start_shown()
        phone = self.connect(program)
        self.tray('Click', 'Send Clipboard')
        program.wait_at_rest()
        self.assertEqual(phone.ping(), [])  # the clipboard is empty
        subprocess.run(['xclip', '-selection', 'clipboard'], input='from the "desk"\n', text=True, env=self.desk.env, check=True)
        self.tray('Click', 'Send Clipboard')
        opcode, payload = phone.read_frame()
        self.assertEqual((opcode, json.loads(payload)), (TEXT, {'action': 'clipboard', 'text': 'from the "desk"\n'}))
        self.assertEqual(self.desk.windows('Brenvale'), [])


class ItemTest(TrayTest):
    def test_it_has_a_picture_in_the_sizes_of_panels(self):
        self.start_shown()
        item = json.loads(self.tray('Item'))
        self.assertTrue({16, 22, 32} <= set(item['sizes']), item)
        self.assertEqual(item['Status'], 'Active')

    def test_an_installed_symbolic_icon_is_named_for_the_panel_to_tint(self):
        name = 'org.brenvale.Brenvale-symbolic'
        folder = pathlib.Path(self.desk.env['XDG_DATA_HOME']) / 'icons/hicolor/symbolic/apps'
        folder.mkdir(parents=True)
        shutil.copy(HERE.parent.parent / f'data/icons/{name}.svg', folder)
        self.start_shown()
        item = json.loads(self.tray('Item'))
        self.assertEqual(item['IconName'], name)
        self.assertTrue({16, 22, 32} <= set(item['sizes']), item)

    def test_without_an_installed_icon_there_are_pictures_alone(self):
        self.start_shown()
        if not pathlib.Path('/usr/share/icons/hicolor/symbolic/apps/org.brenvale.Brenvale-symbolic.svg').exists():
            self.assertEqual(json.loads(self.tray('Item'))['IconName'], '')

    def test_a_tray_that_comes_after_the_program(self):
        program = self.start()
        program.wait_at_rest()
        self.start_host()
        self.wait_for_item()
        self.assertEqual(self.labels()[0], 'Brenvale')

    def test_a_tray_that_restarts(self):
        self.start_shown()
        self.stop_host()
        self.start_host()
        self.wait_for_item()
        self.assertEqual(self.labels()[-1], 'Quit Brenvale')


class NoTrayTest(TrayTest):
    """Ten seconds after the start a desktop without a tray counts as one."""

    AFTER_THE_WAIT = 11

    def window(self):
        return self.desk.window('^Brenvale Settings')

    def test_a_start_by_hand_opens_the_window_once(self):
        self.program = self.start(arguments=())
        window = wait_until(self.window, 'the window', deadline=40)
        self.desk.run('xdotool', 'windowactivate', '--sync', window)
        # The window manager may not listen yet to the keys of a window that it has just activated.
        def closed():
            self.desk.run('xdotool', 'key', 'alt+F4')
            return not self.window()
        wait_until(closed, 'the window to close')
        self.program.wait_at_rest()
        self.assertFalse(self.window())
        self.connect(self.program).ping()

    def test_a_tray_that_comes_later_gets_the_item_all_the_same(self):
        self.start(arguments=())
        wait_until(self.window, 'the window', deadline=40)
        self.start_host()
        self.wait_for_item()

    def test_a_start_in_the_background_opens_nothing(self):
        program = self.start()
        time.sleep(self.AFTER_THE_WAIT)
        program.wait_at_rest()
        self.assertFalse(self.window())

    def test_a_start_by_hand_with_a_tray_opens_nothing(self):
        self.start_host()
        program = self.start(arguments=())
        self.wait_for_item()
        time.sleep(self.AFTER_THE_WAIT)
        program.wait_at_rest()
        self.assertFalse(self.window())


class OldTrayTest(TrayTest):
    """The kind of tray that embeds windows, on X11."""

    def embedded(self):
        return self.desk.window_tree().count('"brenvale" "brenvale"')

    def start_panel(self):
        try:
            return self.desk.spawn(['trayer', '--edge', 'top', '--width', '10'], 'trayer')
        except FileNotFoundError:
            self.skipTest('trayer is not installed')

    def test_it_is_used_where_there_is_no_other(self):
        self.start_panel()
        self.start()
        wait_until(self.embedded, 'the embedded item')

    def test_one_that_restarts(self):
        panel = self.start_panel()
        self.start()
        wait_until(self.embedded, 'the embedded item')
        self.desk.stop(panel)
        wait_until(lambda: not self.embedded(), 'the item to go')
        self.start_panel()
        wait_until(self.embedded, 'the item to come back')

    def test_a_start_by_hand_opens_no_window(self):
        self.start_panel()
        program = self.start(arguments=())
        wait_until(self.embedded, 'the embedded item')
        program.wait_at_rest()
        self.assertEqual(self.desk.windows('^Brenvale Settings'), [])

    def test_one_that_comes_late(self):
        program = self.start()
        time.sleep(11)  # the other kind of tray has had its chance
        program.wait_at_rest()
        self.start_panel()
        wait_until(self.embedded, 'the embedded item')


if __name__ == '__main__':
    main()
