"""The Debian package that cpack makes of the build, without building anything."""
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

import test_installation
from brenvale_desk import HERE, PROGRAM, main

BUILD = pathlib.Path(PROGRAM).parent.parent
SOURCES = HERE.parent.parent / 'src'


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


@unittest.skipUnless(shutil.which('dpkg-deb'), 'this system has no Debian packages')
class PackageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix='package.')
        cls.addClassCleanup(folder.cleanup)
        cls.built = os.stat(PROGRAM)
        # With the mask of a careful user, whose package is to be like everybody's.
        run = subprocess.run(['cpack', '-G', 'DEB', '--config', str(BUILD / 'CPackConfig.cmake'), '-B', folder.name],
                             cwd=folder.name, umask=0o077, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        if run.returncode:
            raise RuntimeError(run.stdout)
        cls.package, = map(str, pathlib.Path(folder.name).glob('*.deb'))

    def field(self, name):
        return output('dpkg-deb', '--field', self.package, name).strip()

    def names(self, field):
        """The packages that a field names, the first of each choice."""
        return {re.match(r'[^ ]+', choice)[0] for choice in self.field(field).split(', ')}

    def files(self):
        """Mode, owner and path of each file and folder."""
        lines = output('dpkg-deb', '--contents', self.package).splitlines()
        return [(mode, owner, path) for mode, owner, _, _, _, path in (line.split(None, 5) for line in lines)]

    def test_nothing_was_built_for_it(self):
        self.assertEqual(os.stat(PROGRAM).st_mtime_ns, self.built.st_mtime_ns)

    def test_it_holds_what_an_installation_holds_and_its_list_of_changes(self):
        files = {path.removeprefix('./usr/') for mode, _, path in self.files() if not mode.startswith('d')}
        files = {re.sub(r'^lib/[^/]+-linux-gnu[^/]*/', 'lib/*/', path) for path in files}
        self.assertEqual(files, test_installation.FoldersTest.FILES | {'share/doc/brenvale/changelog.Debian.gz'})

    def test_all_is_roots_and_readable_by_everybody(self):
        for mode, owner, path in self.files():
            self.assertEqual(owner, 'root/root', path)
            program = path.startswith('./usr/bin/') or mode.startswith('d')
            self.assertEqual(mode[1:], 'rwxr-xr-x' if program else 'rw-r--r--', path)

    def test_the_paths_in_its_files_are_those_of_the_system(self):
        with tempfile.TemporaryDirectory(prefix='package.') as folder:
            subprocess.run(['dpkg-deb', '--extract', self.package, folder], check=True)
            for name in ('share/dbus-1/services/org.brenvale.Brenvale.service', 'lib/systemd/user/brenvale.service'):
                programs = re.findall(r'^Exec(?:Start)?="?([^" \n]+)', (pathlib.Path(folder) / 'usr' / name).read_text(), re.M)
                self.assertEqual(programs, ['/usr/bin/brenvale'])

    def test_its_version_is_lower_than_that_of_a_distribution_and_of_a_later_release(self):
        version = self.field('Version')
        upstream = version.split('-')[0]
        for later in (f'{upstream}-1', f'{upstream}-1~deb99', f'{upstream}-2'):
            subprocess.run(['dpkg', '--compare-versions', version, 'lt', later], check=True)

    def test_it_depends_on_the_module_of_each_import(self):
        imports = set()
        for source in SOURCES.rglob('*.qml'):
            imports |= set(re.findall(r'^import (Qt[A-Za-z.]+)', source.read_text(), re.M))
        self.assertIn('QtQuick', imports)
        modules = {'qml6-module-' + name.lower().replace('.', '-') for name in imports}
        self.assertLessEqual(modules, self.names('Depends'))

    def test_it_depends_on_libraries_and_on_what_they_load(self):
        self.assertLessEqual({'libc6', 'libstdc++6', 'qt6-svg-plugins', 'qml6-module-qtqml-workerscript'}, self.names('Depends'))
        self.assertTrue({'libqt6core6', 'libqt6core6t64'} & self.names('Depends'))
        self.assertLessEqual({'qt6-wayland', 'libpulse0', 'notification-daemon', 'libglib2.0-bin'}, self.names('Recommends'))

    def test_lintian_finds_nothing(self):
        lintian = shutil.which('lintian') or self.skipTest('lintian is not installed')
        command = [lintian, '--fail-on', 'error,warning', '--allow-root', self.package]
        run = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        self.assertEqual((run.returncode, run.stdout), (0, ''))


if __name__ == '__main__':
    main()
