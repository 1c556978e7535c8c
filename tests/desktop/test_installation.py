"""What `cmake --install` puts on a system, and that the desktop can start the program from it."""
import pathlib
import subprocess

from brenvale_desk import PROGRAM, DeskTest, Recorder, main, wait_until

BUILD = pathlib.Path(PROGRAM).parent.parent


class InstallationTest(DeskTest):
    def setUp(self):
        super().setUp()
        self.prefix = self.desk.root / 'installed'
        subprocess.run(['cmake', '--install', str(BUILD), '--prefix', str(self.prefix)], check=True, stdout=subprocess.DEVNULL)

    def test_the_desktop_entry_is_valid(self):
        entry = self.prefix / 'share/applications/org.brenvale.Brenvale.desktop'
        subprocess.run(['desktop-file-validate', str(entry)], check=True)
        self.assertTrue((self.prefix / 'share/icons/hicolor/scalable/apps/org.brenvale.Brenvale.svg').exists())

    def test_the_bus_starts_the_program_and_its_window_opens(self):
        Recorder(self.desk)
        installed = (self.prefix / 'share/dbus-1/services/org.brenvale.Brenvale.service').read_text()
        # The prefix of the installation is one of the configuration; here it is another.
        command = next(line for line in installed.splitlines() if line.startswith('Exec='))
        self.assertTrue(command.endswith('/bin/brenvale --background'), command)
        service = installed.replace(command, f'Exec={self.prefix}/bin/brenvale --background')
        (self.desk.root / 'services/org.brenvale.Brenvale.service').write_text(service)
        environment = [f'{name}={value}' for name, value in self.desk.env.items()]
        self.desk.run('dbus-update-activation-environment', *environment)
        self.desk.run('gdbus', 'call', '--session', '--dest', 'org.brenvale.Brenvale', '--object-path', '/org/brenvale/Brenvale',
                      '--method', 'org.freedesktop.Application.Activate', '{}')
        window = lambda: self.desk.run('xdotool', 'search', '--onlyvisible', '--name', '^Brenvale Settings$', check=False)
        wait_until(window, 'the window')
        self.desk.run('gdbus', 'call', '--session', '--dest', 'org.brenvale.Brenvale', '--object-path', '/org/brenvale/Brenvale',
                      '--method', 'org.freedesktop.Application.ActivateAction', 'quit', '[]', '{}')


if __name__ == '__main__':
    main()
