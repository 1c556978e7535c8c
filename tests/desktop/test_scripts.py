"""Scripts of the remote control, by the back end alone: real sound servers, a stub browser, real trash folders."""
import json
import os
import pathlib
import re
import socket
import subprocess
import time
import unittest

from brenvale_desk import HERE, PROGRAM, DeskTest, main, wait_until

PERFORM = pathlib.Path(PROGRAM).with_name('perform-script')
LOUDER = 'set volume output volume (output volume of (get volume settings) + 5)'
QUIETER = 'set volume output volume (output volume of (get volume settings) - 5)'
EMPTY_TRASH = 'tell application "Finder" to empty trash'
LOCK = 'tell application "System Events" to lock screen'
SLEEP = 'tell application "System Events" to sleep'


def opening(location):
    return f'open location "{location}"'


class ScriptTest(DeskTest):
    display = False

    def perform(self, *sources, **env):
        """What became of each script: "ok" or "error: ...", in the order of their ends."""
        run = subprocess.run([PERFORM, *sources], env=self.desk.env | env, stdout=subprocess.PIPE, timeout=60, check=True)
        lines = [line.split(' ', 1) for line in run.stdout.decode().splitlines()]
        self.order = [int(number) for number, _ in lines]
        self.assertEqual(sorted(self.order), list(range(len(sources))), 'each script ends once')
        return [result for _, result in lines]


class VolumeTest(ScriptTest):
    def start_pulseaudio(self, *modules):
        loads = [word for module in ('module-native-protocol-unix', *modules) for word in ('-L', module)]
        self.desk.spawn(['pulseaudio', '-n', '--daemonize=no', '--exit-idle-time=-1', '--use-pid-file=no', *loads], 'pulseaudio')
        wait_until(lambda: 'Server Name' in self.pactl('info', check=False), 'the sound server')

    def start_pipewire(self):
        for program in ('pipewire', 'wireplumber', 'pipewire-pulse'):
            self.desk.spawn([program], program)
        wait_until(lambda: 'PipeWire' in self.pactl('info', check=False), 'the sound server')
        self.pactl('load-module', 'module-null-sink', 'sink_name=test')
        wait_until(lambda: 'test' in self.pactl('list', 'short', 'sinks'), 'the output')
        self.pactl('set-default-sink', 'test')
        wait_until(lambda: self.pactl('get-default-sink').strip() == 'test', 'the default output')
        # From 1.4 on, an output that is no device takes a volume only once something has played on it.
        self.desk.spawn(['pacat', '--playback', '/dev/zero'], 'pacat')
        wait_until(lambda: 'RUNNING' in self.pactl('list', 'short', 'sinks'), 'silence to play')

    def pactl(self, *command, **options):
        return self.desk.run('pactl', *command, **({'stderr': subprocess.DEVNULL} | options))

    def volumes(self):
        """Of the channels, in hundredths."""
        return [int(number) for number in re.findall(r'(\d+)%', self.pactl('get-sink-volume', '@DEFAULT_SINK@'))]

    def set_volumes(self, hundredths):
        self.pactl('set-sink-volume', '@DEFAULT_SINK@', *(f'{number}%' for number in hundredths))
        return self.volumes()

    def assert_change(self, before, sources, after):
        # PipeWire says yes before it has done what it was told, and sets up an output that is new by itself.
        wait_until(lambda: self.set_volumes(before) == before, f'the volumes to be {before}')
        self.assertEqual(self.perform(*sources), ['ok'] * len(sources))
        wait_until(lambda: self.volumes() == after, f'the volumes to be {after}')

    def assert_steps(self):
        for before, sources, after in ((93, [LOUDER], 98), (98, [LOUDER], 100), (50, [LOUDER, LOUDER, QUIETER, LOUDER], 60),
                                       (7, [QUIETER], 2), (2, [QUIETER, QUIETER], 0), (0, [LOUDER], 5), (130, [LOUDER], 100)):
            self.assert_change([before] * 2, sources, [after] * 2)
        for hundredths in range(0, 96, 9):
            self.assert_change([hundredths] * 2, [LOUDER], [hundredths + 5] * 2)

    def test_pulseaudio(self):
        self.start_pulseaudio('module-null-sink sink_name=test')
        self.assert_steps()

    def test_pipewire(self):
        self.start_pipewire()
        self.assert_steps()

    def test_the_balance_and_the_mute_stay(self):
        self.start_pulseaudio('module-null-sink sink_name=test')
        self.pactl('set-sink-mute', 'test', '1')
        self.assert_change([40, 80], [LOUDER, LOUDER], [45, 90])
        self.assertIn('yes', self.pactl('get-sink-mute', 'test'))

    def test_it_is_the_default_output(self):
        self.start_pulseaudio('module-null-sink sink_name=other', 'module-null-sink sink_name=test')
        self.pactl('set-default-sink', 'test')
        self.pactl('set-sink-volume', 'other', '50%')
        self.assert_change([50, 50], [LOUDER], [55, 55])
        self.assertIn(' 50%', self.pactl('get-sink-volume', 'other'))
        self.assertIn(' 55%', self.pactl('get-sink-volume', 'test'))

    def test_a_server_without_an_output(self):
        self.start_pulseaudio()
        self.assertRegex(self.perform(LOUDER)[0], '^error: .+')

    def test_no_server(self):
        began = time.monotonic()
        self.assertEqual(self.perform(LOUDER, QUIETER), ['error: The sound server: Connection refused'] * 2)
        self.assertLess(time.monotonic() - began, 3)
        self.assertEqual(self.desk.run('pgrep', '-f', f'pulseaudio.*{self.desk.root}', check=False), '')

    def test_a_server_that_takes_the_connection_and_never_answers(self):
        path = self.desk.root / 'silent'
        with socket.socket(socket.AF_UNIX) as server:
            server.bind(str(path))
            server.listen()
            self.assertEqual(self.perform(LOUDER, PULSE_SERVER=f'unix:{path}'),
                             ['error: The sound server does not answer.'])

    def test_a_server_that_goes_away_meanwhile(self):
        path = self.desk.root / 'going'
        with socket.socket(socket.AF_UNIX) as server:
            server.bind(str(path))
            server.listen()
            process = subprocess.Popen([PERFORM, LOUDER], stdout=subprocess.PIPE,
                                       env=self.desk.env | {'PULSE_SERVER': f'unix:{path}'})
            connection, _ = server.accept()
            connection.recv(1)
            connection.close()
            self.assertRegex(process.communicate(timeout=20)[0], b'^0 error: .+')


    def test_the_phone_changes_it_and_no_connection_stays(self):
        self.start_pulseaudio('module-null-sink sink_name=test')
        self.pactl('set-sink-volume', 'test', '50%')
        program = self.start()
        program.wait_at_rest()
        threads, descriptors = len(program.threads()), program.descriptors()
        phone = self.connect(program)
        for command in ('vol_up', 'vol_up', 'vol_down', 'vol_up'):
            phone.send_json(action='remote_control', command=command)
        wait_until(lambda: self.volumes() == [60, 60], 'the volume')
        phone.socket.close()
        program.wait_for_line(r'\[WebSocketServer\] .*(failed|cancelled).*')
        wait_until(lambda: 'Brenvale' not in self.pactl('list', 'clients'), 'the end of the connection')
        wait_until(lambda: (len(program.threads()), program.descriptors()) == (threads, descriptors), 'nothing left open')
        self.assertEqual(program.matching('.*AppleScript Error.*'), [])

    def test_what_fails_is_a_line_of_the_log_and_the_link_goes_on(self):
        program = self.start()
        phone = self.connect(program)
        phone.send_json(action='remote_control', command='vol_up')
        phone.send_json(action='remote_control', command='open_url', url='https://example.org/" & "x')
        lines = program.wait_for_line(r'\[WebSocketServer\] AppleScript Error: .+', 2)
        self.assertEqual({line.split(': ', 1)[1] for line in lines},
                         {'The sound server: Connection refused', 'The location ends early, at a quote in it.'})
        phone.ping()

    def test_a_server_that_never_answers_holds_up_neither_link_nor_main(self):
        path = self.desk.root / 'silent'
        with socket.socket(socket.AF_UNIX) as server:
            server.bind(str(path))
            server.listen()
            program = self.start(env=self.desk.env | {'PULSE_SERVER': f'unix:{path}'})
            phone = self.connect(program)
            phone.send_json(action='remote_control', command='vol_up')
            connection, _ = server.accept()
            phone.ping()
            phone.send_json(app='Mail', title='Ann', body='meanwhile')  # its end is a line that main writes
            program.wait_for_line(r'\[Notifications\] Post error: .+')
            self.assertEqual(program.matching('.*AppleScript Error.*'), [])
            program.wait_for_line(r'\[WebSocketServer\] AppleScript Error: The sound server does not answer\.')
            connection.close()


BROWSER = '''#!/usr/bin/python3 -IS
import json, os, sys
links = {}
for name in os.listdir('/proc/self/fd'):
    try:
        links[int(name)] = os.readlink(f'/proc/self/fd/{name}')
    except OSError:
        pass
record = {'arguments': [os.fsencode(word).hex() for word in sys.argv[1:]], 'descriptors': links}
path = f'%s/{os.getpid()}'
with open(path + '.new', 'w') as file:
    json.dump(record, file)
os.rename(path + '.new', path)
'''


class LocationTest(ScriptTest):
    def setUp(self):
        super().setUp()
        self.opened = self.desk.root / 'opened'
        self.opened.mkdir()
        self.browser = self.desk.root / 'my browser'
        self.browser.write_text(BROWSER % self.opened)
        self.browser.chmod(0o755)
        applications = pathlib.Path(self.desk.env['XDG_DATA_HOME']) / 'applications'
        applications.mkdir()
        (applications / 'stub.desktop').write_text(
            f'[Desktop Entry]\nType=Application\nName=Stub\nExec="{self.browser}" %u\n')
        (self.desk.config / 'mimeapps.list').write_text('[Default Applications]\n' + ''.join(
            f'{kind}=stub.desktop\n' for kind in ('x-scheme-handler/http', 'x-scheme-handler/https',
                                                  'x-scheme-handler/mailto', 'x-scheme-handler/tel', 'text/plain')))

    def records(self, count):
        whole = lambda: [path for path in self.opened.iterdir() if path.suffix != '.new']
        wait_until(lambda: len(whole()) >= count, f'{count} started programs')
        return [json.loads(path.read_text()) for path in whole()]

    def test_the_program_gets_exactly_the_address(self):
        addresses = ['https://example.org/', 'https://example.org/a b  c?x=%20%25%zz&y=1;z#frag#2',
                     'http://[2001:db8::1%25eth0]:8080/', 'mailto:ann@example.org?subject=Hi%20there&body=a+b',
                     "https://example.org/$(touch x)`touch x`;&|<>'*?[]{}~!\\", 'tel:+1-555-0100',
                     'https://пример.example/ü/😀/\u202e', 'HTTPS://Example.ORG/%7E']
        for number, address in enumerate(addresses, 1):
            with self.subTest(address=address):
                self.assertEqual(self.perform(opening(address)), ['ok'])
                arguments = [record['arguments'] for record in self.records(number)]
                self.assertIn([address.encode().hex()], arguments)
        self.assertEqual(len(list(self.opened.iterdir())), len(addresses))

    def test_ten_thousand_characters(self):
        address = 'https://example.org/?q=' + 'a%20&' * 2000
        self.assertEqual(self.perform(opening(address)), ['ok'])
        self.assertEqual(self.records(1)[0]['arguments'], [address.encode().hex()])

    def test_the_program_inherits_nothing_of_ours(self):
        self.perform(LOUDER, opening('https://example.org/'))
        descriptors = self.records(1)[0]['descriptors']
        self.assertEqual([descriptors[name] for name in ('0', '1', '2')], ['/dev/null'] * 3)
        rest = [target for name, target in descriptors.items() if int(name) > 2 and not target.startswith('/proc/')]
        self.assertEqual(rest, [])

    def test_an_address_that_nothing_opens(self):
        for address in ('javascript:alert(1)', 'gopher://example.org/', 'example.org', '/etc/passwd', 'file:///nowhere'):
            with self.subTest(address=address):
                self.assertRegex(self.perform(opening(address))[0], '^error: .+')
        self.assertEqual(list(self.opened.iterdir()), [])

    def test_a_file_goes_to_the_program_for_its_kind(self):
        note = self.desk.root / 'a note.txt'
        note.write_text('words')
        address = f'file://{self.desk.root}/a%20note.txt'
        self.assertEqual(self.perform(opening(address)), ['ok'])
        self.assertEqual(self.records(1)[0]['arguments'], [address.encode().hex()])

    def test_what_is_no_such_script_opens_nothing(self):
        sources = ['open location "https://example.org/', 'open location "https://example.org/" ',
                   'open location "https://example.org/"x"', 'do shell script "id"', '', EMPTY_TRASH + ' ']
        self.assertEqual([result[:6] for result in self.perform(*sources)], ['error:'] * len(sources))
        self.assertEqual(list(self.opened.iterdir()), [])

    def test_of_a_flood_ten_are_opened_and_the_others_are_errors(self):
        results = self.perform(*[opening(f'https://example.org/{number}') for number in range(500)])
        self.assertEqual(results.count('ok'), 10)
        self.assertEqual(results.count('error: Too many locations were opened just now.'), 490)
        self.assertEqual(len(self.records(10)), 10)

    def test_a_program_that_is_not_there(self):
        self.browser.unlink()
        self.assertRegex(self.perform(opening('https://example.org/'))[0], '^error: .+')


class SessionTest(ScriptTest):
    def serve(self, **answers):
        self.log = self.desk.root / 'session.log'
        self.log.write_text('')
        arguments = [f'{name}={answer}' for name, answer in answers.items()]
        self.desk.spawn(['/usr/bin/python3', '-B', str(HERE / 'session_services.py'), str(self.log), *arguments], 'services')
        self.desk.wait_for_name('org.test.SessionServices')

    def calls(self):
        return self.log.read_text().splitlines()

    def test_logind_locks(self):
        self.serve(login1='yes', freedesktop='yes')
        self.assertEqual(self.perform(LOCK), ['ok'])
        self.assertEqual(self.calls(), ['login1 Lock'])

    def test_the_screen_saver_locks_where_logind_does_not(self):
        for answers, expected in (({'freedesktop': 'yes'}, ['freedesktop Lock']), ({'gnome': 'yes'}, ['gnome Lock']),
                                  ({'login1': 'refused', 'freedesktop': 'refused', 'gnome': 'yes'},
                                   ['login1 Lock', 'freedesktop Lock', 'gnome Lock']),
                                  ({'login1': 'silent', 'freedesktop': 'yes'}, ['login1 Lock', 'freedesktop Lock'])):
            with self.subTest(answers=answers):
                self.setUp()
                self.serve(**answers)
                self.assertEqual(self.perform(LOCK), ['ok'])
                self.assertEqual(self.calls(), expected)

    def test_where_nobody_locks_it_is_an_error(self):
        self.assertEqual(self.perform(LOCK), ['error: org.freedesktop.login1: it is not running.'])
        self.serve(login1='refused')
        self.assertEqual(self.perform(LOCK), ['error: org.freedesktop.login1: Permission denied by a test.'])

    def test_logind_suspends_without_a_question(self):
        self.serve(login1='yes')
        self.assertEqual(self.perform(SLEEP), ['ok'])
        self.assertEqual(self.calls(), ['login1 Suspend False'])

    def test_a_refused_suspend_is_an_error(self):
        self.serve(login1='refused')
        self.assertEqual(self.perform(SLEEP), ['error: org.freedesktop.login1: Permission denied by a test.'])

    def test_a_logind_that_never_answers_is_an_error(self):
        self.serve(login1='silent')
        self.assertEqual(self.perform(SLEEP, LOCK), ['error: org.freedesktop.login1: it does not answer.'] * 2)

    def test_without_a_bus_it_is_an_error(self):
        nowhere = 'unix:path=/nonexistent/bus'
        results = self.perform(LOCK, SLEEP, DBUS_SESSION_BUS_ADDRESS=nowhere, DBUS_SYSTEM_BUS_ADDRESS=nowhere)
        self.assertEqual(results, ['error: org.freedesktop.login1: there is no bus.'] * 2)


def namespace():
    """How to run a command with mounts of its own, or nothing where the system does not let us."""
    command = ['unshare', '--mount'] if os.geteuid() == 0 else ['unshare', '--mount', '--map-root-user']
    tried = subprocess.run([*command, 'mount', '-t', 'tmpfs', 'tmpfs', '/mnt'], capture_output=True)
    return command if tried.returncode == 0 else None


class TrashTest(ScriptTest):
    def setUp(self):
        super().setUp()
        self.trash = pathlib.Path(self.desk.env['XDG_DATA_HOME']) / 'Trash'

    def fill(self, trash, count=1):
        for folder in ('files', 'info'):
            (trash / folder).mkdir(parents=True)
        for number in range(count):
            (trash / f'files/{number}').touch()
            (trash / f'info/{number}.trashinfo').touch()

    def left(self, folder):
        return sorted(path.name for path in folder.iterdir())

    def test_the_home_trash(self):
        self.fill(self.trash, 1000)
        self.assertEqual(self.perform(EMPTY_TRASH), ['ok'])
        self.assertEqual((self.left(self.trash / 'files'), self.left(self.trash / 'info')), ([], []))

    def test_no_trash(self):
        self.assertEqual(self.perform(EMPTY_TRASH), ['ok'])
        self.assertFalse(self.trash.exists())

    def in_namespace(self, prepare, examine):
        """Runs the shell text `prepare` with mounts of its own, empties the trash, runs `examine`: its output."""
        command = namespace()
        if command is None:
            self.skipTest('no mounts of our own here')
        text = f'set -e; disk=$0; {prepare}\n"$1" "$2"\n{examine}'
        disk = self.desk.root / 'disk'
        disk.mkdir()
        run = subprocess.run([*command, 'sh', '-c', text, str(disk), str(PERFORM), EMPTY_TRASH], env=self.desk.env,
                             stdout=subprocess.PIPE, timeout=60, check=True)
        return run.stdout.decode().splitlines()

    def test_the_trash_folders_of_a_mounted_disk(self):
        prepare = ('mount -t tmpfs tmpfs "$disk"; u=$(id -u); for t in "$disk/.Trash-$u" "$disk/.Trash/$u"; do '
                   'mkdir -p "$t/files/d" "$t/info"; touch "$t/files/d/f" "$t/info/d.trashinfo"; done; '
                   'chmod 1777 "$disk/.Trash"; touch "$disk/kept" "$disk/.Trash/kept"')
        self.assertEqual(self.in_namespace(prepare, 'cd "$disk"; find . -name kept -o -name f -o -name d.trashinfo | sort'),
                         ['0 ok', './.Trash/kept', './kept'])

    def test_a_shared_trash_that_is_not_sticky_is_left_alone(self):
        prepare = 'mount -t tmpfs tmpfs "$disk"; u=$(id -u); mkdir -p "$disk/.Trash/$u/files/d"; chmod 777 "$disk/.Trash"'
        self.assertEqual(self.in_namespace(prepare, 'ls "$disk/.Trash/$u/files"'), ['0 ok', 'd'])

    def test_mounts_inside_the_trash_are_not_entered(self):
        self.fill(self.trash)
        (self.trash / 'files/folder/inner').mkdir(parents=True)
        (self.trash / 'files/bind').mkdir()
        outside = self.desk.root / 'outside'
        outside.mkdir()
        (outside / 'kept').touch()
        prepare = (f'mount -t tmpfs tmpfs "{self.trash}/files/folder/inner"; touch "{self.trash}/files/folder/inner/kept"; '
                   f'mount --bind "{outside}" "{self.trash}/files/bind"')
        lines = self.in_namespace(prepare, f'cd "{self.trash}/files"; find . | sort')
        self.assertRegex(lines[0], r'^0 error: "(inner|bind)" can\'t be deleted: .* \(and 1 more\)$')
        self.assertEqual(lines[1:], ['.', './bind', './bind/kept', './folder', './folder/inner', './folder/inner/kept'])
        self.assertTrue((outside / 'kept').exists())

    def test_a_trash_that_is_mounted_read_only_is_an_error(self):
        self.fill(self.trash)
        prepare = f'mount --bind "{self.trash}" "{self.trash}"; mount -o remount,bind,ro "{self.trash}"'
        lines = self.in_namespace(prepare, f'ls "{self.trash}/files"')
        self.assertEqual(lines, ['0 error: "0" can\'t be deleted: Read-only file system', '0'])

    @unittest.skipUnless(os.geteuid() == 0, 'needs to become another user')
    def test_files_of_others_are_an_error_and_the_rest_goes(self):
        user = 4711
        self.fill(self.trash, 2)
        (self.trash / 'files/foreign').mkdir()
        (self.trash / 'files/foreign/kept').touch()
        for path in (self.trash, self.trash / 'files', self.trash / 'info'):
            os.chown(path, user, user)
        for path in (self.desk.root, *self.trash.relative_to(self.desk.root).parents):
            (self.desk.root / path).chmod(0o755)
        run = subprocess.run([PERFORM, EMPTY_TRASH], env=self.desk.env, user=user, group=user, extra_groups=[],
                             stdout=subprocess.PIPE, timeout=60, check=True)
        self.assertEqual(run.stdout.decode(), '0 error: "kept" can\'t be deleted: Permission denied\n')
        self.assertEqual(self.left(self.trash / 'files'), ['foreign'])


if __name__ == '__main__':
    if not os.access(PERFORM, os.X_OK):
        raise SystemExit(f'no program at {PERFORM}; build it')
    main()
