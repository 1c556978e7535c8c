"""What the tests of posted events share: programs that receive, and the one that posts."""
import json
import os
import pathlib
import subprocess
import time

from desk import DEADLINE, wait_until

HERE = pathlib.Path(__file__).resolve().parent
BUILD = pathlib.Path(os.environ.get('BRENVALE_BIN', HERE.parent.parent / 'build/dev/bin'))


class Poster:
    """The poster of events, driven by lines."""

    def __init__(self, desk, env=None):
        self.desk = desk
        self.process = subprocess.Popen([BUILD / 'post-events'], env=(desk.env if env is None else env),
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True,
                                        encoding='utf-8')
        desk.children.append(self.process)
        self.first = self.process.stdout.readline().strip()

    def send(self, line):
        self.process.stdin.write(line + '\n')
        self.process.stdin.flush()

    def type(self, text):
        self.send('text ' + json.dumps(text))

    def ask(self, line):
        self.send(line)
        return self.process.stdout.readline().strip()

    def close(self):
        """Ends it in its own way, and waits for that."""
        if self.process in self.desk.children:
            self.process.stdin.close()
            self.process.wait(DEADLINE)
            self.process.stdout.close()
            self.desk.children.remove(self.process)


class Receiver:
    """A program with the keyboard; `text` is what it has received."""

    def __init__(self, desk, kind):
        self.desk, self.kind = desk, kind
        self.file = desk.root / f'{kind}.received'
        self.file.write_bytes(b'')
        desk.env |= {'QT_IM_MODULE': 'none', 'GTK_IM_MODULE': 'gtk-im-context-simple', 'QT_QPA_PLATFORM': 'xcb'}
        commands = {
            'qt': [BUILD / 'receiving-window', self.file],
            'gtk': ['/usr/bin/python3', HERE / 'gtk_receiver.py', self.file],
            'entry': ['/usr/bin/python3', HERE / 'gtk_receiver.py', self.file, 'entry'],
            'xterm': ['xterm', '-u8', '-T', 'receiver', '-e', '/usr/bin/python3', HERE / 'terminal_receiver.py',
                      self.file],
        }
        self.process = desk.spawn(commands[kind], kind)
        self.next_activation = 0
        wait_until(self.takes_keyboard, 'the focus')
        if kind == 'xterm':
            wait_until(lambda: self.file.stat().st_size, 'the program in the terminal')

    def takes_keyboard(self):
        """A window manager may keep the keyboard from a window that comes up after keys were pressed."""
        if self.process.poll() is not None:
            raise RuntimeError(f'the receiver has ended: {(self.desk.root / f"{self.kind}.log").read_text()}')
        run = lambda *words: self.desk.run('xdotool', *words, check=False).strip()
        if run('getactivewindow', 'getwindowname') == run('getwindowfocus', 'getwindowname') == 'receiver':
            return True
        windows = run('search', '--onlyvisible', '--name', '^receiver$').split()
        if windows and time.monotonic() > self.next_activation:
            run('windowactivate', windows[0])
            self.next_activation = time.monotonic() + 1
        return False

    def entries(self):
        lines = self.file.read_text(encoding='utf-8').split('\n')
        return [json.loads(line) for line in lines[:-1]]

    @property
    def text(self):
        if self.kind == 'xterm':
            return self.file.read_bytes()[1:].decode('utf-8', 'replace').replace('\r', '\n')
        # Each entry has all of the text: only the last ones are worth reading.
        lines = self.file.read_bytes().split(b'\n')[:-1]
        entries = (json.loads(line) for line in reversed(lines))
        return next((entry['text'] for entry in entries if 'text' in entry), '')

    def keys(self):
        """What came as keys: (keysym, whether it went down, Qt's modifiers)."""
        return [(entry['key'], entry['down'], entry['modifiers']) for entry in self.entries() if 'key' in entry]

    def stop(self):
        self.desk.stop(self.process)
