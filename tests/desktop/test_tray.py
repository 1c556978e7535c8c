"""The tray item and its menu, read and clicked over the bus as a desktop's panel does it."""
import configparser
import json
import pathlib
import shutil
import socket
import subprocess

from brenvale_desk import HERE, Program, main, wait_until
from raw_client import TEXT
from tray_desk import SEPARATOR, TrayTest


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


if __name__ == '__main__':
    main()
