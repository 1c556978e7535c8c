"""What `cmake --install` puts on a system, and that the desktop can start the program from it."""
import configparser
import gzip
import os
import pathlib
import re
import subprocess
import tempfile
import unittest

from brenvale_desk import PROGRAM, DeskTest, Recorder, main, wait_until

BUILD = pathlib.Path(PROGRAM).parent.parent
ID = 'org.brenvale.Brenvale'


def install(prefix, **environment):
    subprocess.run(['cmake', '--install', str(BUILD), '--prefix', str(prefix)], check=True, stdout=subprocess.DEVNULL,
                   env=os.environ | environment)


def complaints(*command, **environment):
    """What a checking program says, which is nothing where all is well."""
    run = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, env=os.environ | environment)
    return run.stdout or (f'status {run.returncode}' if run.returncode else '')


class InstalledTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix='installation.')
        cls.addClassCleanup(folder.cleanup)
        cls.root = pathlib.Path(folder.name)
        install(cls.root / 'prefix')

    def path(self, name):
        return self.root / 'prefix' / name

    def keys(self, name):
        """A file of keys in sections."""
        parser = configparser.ConfigParser(interpolation=None, delimiters='=', strict=True)
        parser.optionxform = str
        parser.read(self.path(name))
        return parser


class FoldersTest(InstalledTest):
    FILES = {
        'bin/brenvale', 'bin/brenvale-phone', 'lib/systemd/user/brenvale.service',
        f'share/applications/{ID}.desktop', f'share/dbus-1/services/{ID}.service', f'share/metainfo/{ID}.metainfo.xml',
        f'share/icons/hicolor/scalable/apps/{ID}.svg', f'share/icons/hicolor/symbolic/apps/{ID}-symbolic.svg',
        'share/man/man1/brenvale.1.gz', 'share/man/man1/brenvale-phone.1.gz',
        'share/doc/brenvale/copyright', 'share/doc/brenvale/linux.md', 'share/doc/brenvale/protocol.md',
        'share/doc/brenvale/security.md', f'share/nemo/actions/{ID}.nemo_action', f'share/Thunar/sendto/{ID}.desktop',
        f'share/kio/servicemenus/{ID}.desktop', 'share/caja/extensions/libbrenvale-caja.caja-extension',
        'lib/*/nautilus/extensions-4/libbrenvale-nautilus.so', 'lib/*/caja/extensions-2.0/libbrenvale-caja.so'}

    def files(self, folder):
        """The folder of libraries is the system's."""
        paths = {str(path.relative_to(folder)) for path in folder.rglob('*') if not path.is_dir()}
        return {re.sub(r'lib(?:64|/[a-z0-9_-]+-linux-gnu[a-z0-9]*)/', 'lib/*/', path) for path in paths}

    def test_all_is_below_the_prefix(self):
        self.assertEqual(self.files(self.root / 'prefix'), self.FILES)

    def test_destdir_stands_before_the_prefix_and_in_no_file(self):
        staged = self.root / 'staged'
        install('/opt/phone', DESTDIR=str(staged))
        self.assertEqual(self.files(staged), {f'opt/phone/{name}' for name in self.FILES})
        for name in ('share/dbus-1/services/org.brenvale.Brenvale.service', 'lib/systemd/user/brenvale.service'):
            text = (staged / 'opt/phone' / name).read_text()
            self.assertIn('/opt/phone/bin/brenvale', text)
            self.assertNotIn(str(staged), text)

    def test_the_files_are_readable_by_all_whatever_the_mask(self):
        before = os.umask(0o077)
        try:
            install(self.root / 'masked')
        finally:
            os.umask(before)
        for name in self.FILES:
            file, = (self.root / 'masked').glob(name)
            mode = file.stat().st_mode & 0o777
            self.assertEqual(mode, 0o755 if name.startswith('bin/') else 0o644, name)


class EntriesTest(InstalledTest):
    ENTRY = f'share/applications/{ID}.desktop'

    def test_the_desktop_entry_is_valid(self):
        self.assertEqual(complaints('desktop-file-validate', str(self.path(self.ENTRY))), '')

    def test_the_desktop_entry_takes_files_but_is_the_program_of_no_kind_of_file(self):
        entry = self.keys(self.ENTRY)['Desktop Entry']
        self.assertTrue(entry['Exec'].endswith(' %U'))
        self.assertNotIn('MimeType', entry)

    def test_each_action_of_the_desktop_entry_asks_for_what_it_is_named(self):
        entry = self.keys(self.ENTRY)
        for name in entry['Desktop Entry']['Actions'].strip(';').split(';'):
            self.assertEqual(entry[f'Desktop Action {name}']['Exec'], f'gapplication action {ID} {name}')

    def test_the_description_for_software_centres_is_valid(self):
        path = self.path(f'share/metainfo/{ID}.metainfo.xml')
        run = subprocess.run(['appstreamcli', 'validate', '--no-net', str(path)], capture_output=True, text=True)
        self.assertEqual(run.returncode, 0, run.stdout)

    def test_the_unit_is_valid(self):
        unit = self.path('lib/systemd/user/brenvale.service')
        self.assertEqual(complaints('systemd-analyze', 'verify', '--user', '--man=no', str(unit),
                                    XDG_RUNTIME_DIR=str(self.root)), '')


class ManualTest(InstalledTest):
    def page(self, name):
        return gzip.decompress(self.path(f'share/man/man1/{name}.1.gz').read_bytes()).decode()

    def help(self, name):
        run = subprocess.run([str(self.path(f'bin/{name}')), '--help'], capture_output=True, text=True, check=True,
                             env=os.environ | {'QT_QPA_PLATFORM': 'offscreen'})
        return run.stdout

    def test_the_pages_are_sound(self):
        for name in ('brenvale', 'brenvale-phone'):
            page = self.root / f'{name}.1'
            page.write_text(self.page(name))
            self.assertEqual(complaints('mandoc', '-Tlint', '-Wwarning', str(page)), '')
            self.assertNotIn('@', self.page(name))

    def test_they_have_each_option(self):
        for name in ('brenvale', 'brenvale-phone'):
            described = set(re.findall(r'Fl -([a-z-]+)', self.page(name)))
            self.assertLessEqual(set(re.findall(r'--([a-z-]+)', self.help(name))), described)

    def test_the_phones_has_each_command(self):
        described = set(re.findall(r'^\.It Cm ([a-z-]+)', self.page('brenvale-phone'), re.M))
        commands = set(re.findall(r'^  ([a-z-]+) ', self.help('brenvale-phone'), re.M))
        self.assertEqual(described, commands)


class StartTest(DeskTest):
    def setUp(self):
        super().setUp()
        self.prefix = self.desk.root / 'installed'
        install(self.prefix)

    def test_the_bus_starts_the_program_and_its_window_opens(self):
        Recorder(self.desk)
        service = (self.prefix / f'share/dbus-1/services/{ID}.service').read_text()
        self.assertIn(f'Exec={self.prefix}/bin/brenvale --background\n', service)
        (self.desk.root / f'services/{ID}.service').write_text(service)
        environment = [f'{name}={value}' for name, value in self.desk.env.items()]
        self.desk.run('dbus-update-activation-environment', *environment)
        self.desk.run('gdbus', 'call', '--session', '--dest', ID, '--object-path', '/org/brenvale/Brenvale',
                      '--method', 'org.freedesktop.Application.Activate', '{}')
        wait_until(lambda: self.desk.windows('^Brenvale Settings$'), 'the window')
        self.desk.run('gapplication', 'action', ID, 'quit')
        wait_until(lambda: not self.desk.has_name(ID), 'the end')


if __name__ == '__main__':
    main()
