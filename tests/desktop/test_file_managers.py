"""The entry "Send to Android" of file managers: the files that are chosen arrive at the phone, whatever they are called.

The libraries are loaded as Nautilus and Caja load them, by their own interface; the other entries are carried out by the
rules of those who read them.
"""
import base64
import configparser
import json
import os
import pathlib
import subprocess
from urllib.parse import quote_from_bytes

from gi.repository import GLib

from brenvale_desk import HERE, PROGRAM, DeskTest, Recorder, main, wait_until

DATA = HERE.parent.parent / 'data/filemanagers'
LIBRARIES = pathlib.Path(PROGRAM).parent.parent / 'file-managers'
HOSTS = ('Nautilus', 'Caja')
ENTRY = 'Send to Android'
# What a shell, an address, a text or a list would take apart.
ODD_NAMES = [b'plain.txt', b'two  words.txt', b"quote'.txt", b'percent%20%U%%.txt', b'line\nend.txt', b'bytes \xff\xfe.txt',
             'ünï 日本 😀.txt'.encode(), b'$HOME `id`.txt', b'-dash', b'a;b&c|d.txt', b'hash#query?.txt', b' blanks ', b'*[a].txt',
             b'tab\tname', b'~', b'(a)<b>,{c}!']


class FileManagerTest(DeskTest):
    def setUp(self):
        super().setUp()
        Recorder(self.desk)
        self.folder = os.fsencode(self.desk.root / 'files')
        os.mkdir(self.folder)
        self.env = self.desk.env | {'PATH': f'{pathlib.Path(PROGRAM).parent}:{self.desk.env["PATH"]}'}

    def make_files(self, names):
        """Files that contain their names; gives their paths."""
        paths = [self.folder + b'/' + name for name in names]
        for name, path in zip(names, paths):
            with open(path, 'wb') as file:
                file.write(name)
        return paths

    def received(self, phone, count):
        """The contents of that many files that the phone is sent."""
        contents = []
        while len(contents) < count:
            _, payload = phone.read_frame()
            # The announcement of a file has its name as it is.
            message = json.loads(payload, strict=False)
            if message['action'] == 'file_chunk':
                contents.append(base64.b64decode(message['fileData']))
        return contents

    def keys(self, name):
        parser = configparser.ConfigParser(interpolation=None, delimiters='=')
        parser.optionxform = str
        parser.read(DATA / name)
        return parser


class LibraryTest(FileManagerTest):
    def choose(self, host, paths):
        """Opens the menu of these files and chooses the entry; whether there was one."""
        output = self.desk.root / 'menu'
        with open(output, 'wb') as stream:
            library = LIBRARIES / f'libbrenvale-{host.lower()}.so'
            addresses = [path if isinstance(path, str) else 'file://' + quote_from_bytes(path) for path in paths]
            self.desk.spawn(['/usr/bin/python3', str(HERE / 'file_manager.py'), host, str(library), *addresses],
                            'file_manager', stdout=stream)
        wait_until(lambda: output.read_text().endswith('.\n'), 'the menu')
        lines = output.read_text().split('\n')[:-2]
        self.assertIn(lines, ([], [ENTRY]))
        return bool(lines)

    def test_files_of_any_name_are_sent(self):
        phone = self.connect(self.start())
        paths = self.make_files(ODD_NAMES)
        for host in HOSTS:
            with self.subTest(host):
                self.assertTrue(self.choose(host, paths))
                self.assertEqual(self.received(phone, len(paths)), ODD_NAMES)

    def test_many_files_are_sent_in_one_go(self):
        program = self.start()
        names = [b'%04d' % number for number in range(2000)]
        self.assertTrue(self.choose('Nautilus', self.make_files(names)))
        program.wait_for_line(r'\[AppDelegate\] Service triggered for file: \d{4}', len(names))

    def test_what_cannot_be_sent_has_no_entry(self):
        file, = self.make_files([b'file'])
        pipe = self.folder + b'/pipe'
        os.mkfifo(pipe)
        for host in HOSTS:
            for paths in ([self.folder], [file, self.folder], [pipe], [self.folder + b'/missing'], ['trash:///a'], []):
                with self.subTest(host, paths=paths):
                    self.assertFalse(self.choose(host, paths))

    def test_a_link_to_a_file_is_a_file(self):
        phone = self.connect(self.start())
        self.make_files([b'file'])
        link = self.folder + b'/link'
        os.symlink(b'file', link)
        self.assertTrue(self.choose('Nautilus', [link]))
        self.assertEqual(self.received(phone, 1), [b'file'])


class EntryTest(FileManagerTest):
    def test_the_entry_of_thunar(self):
        phone = self.connect(self.start())
        entry = self.keys('thunar.desktop')['Desktop Entry']
        self.assertEqual(entry['Name'], ENTRY)
        self.assertEqual(subprocess.run(['desktop-file-validate', DATA / 'thunar.desktop']).returncode, 0)
        paths = self.make_files(ODD_NAMES)
        subprocess.run(['gio', 'launch', str(DATA / 'thunar.desktop'), *paths], env=self.env, check=True)
        self.assertEqual(self.received(phone, len(paths)), ODD_NAMES)

    def test_the_entry_of_nemo(self):
        phone = self.connect(self.start())
        action = self.keys('org.brenvale.Brenvale.nemo_action')['Nemo Action']
        self.assertEqual((action['Name'], action['Selection'], action['Extensions'], action['Quote']),
                         (ENTRY, 'notnone', 'nodirs;', 'double'))
        paths = self.make_files(ODD_NAMES)
        addresses = ' '.join(f'"{GLib.filename_to_uri(os.fsdecode(path))}"' for path in paths if b'\xff' not in path)
        _, command = GLib.shell_parse_argv(action['Exec'].replace('%U', addresses))
        subprocess.run(command, env=self.env, check=True)
        self.assertEqual(self.received(phone, len(paths) - 1), [name for name in ODD_NAMES if b'\xff' not in name])

    def test_the_entry_of_dolphin(self):
        phone = self.connect(self.start())
        menu = self.keys('dolphin.desktop')
        self.assertEqual(menu['Desktop Entry']['MimeType'], 'application/octet-stream;')  # every file, and no folder
        action = menu[f'Desktop Action {menu["Desktop Entry"]["Actions"].strip(";")}']
        self.assertEqual((action['Name'], action['Exec']), (ENTRY, 'brenvale %U'))
        paths = self.make_files(ODD_NAMES)
        subprocess.run(['brenvale', *paths], env=self.env, check=True)
        self.assertEqual(self.received(phone, len(paths)), ODD_NAMES)


if __name__ == '__main__':
    main()
