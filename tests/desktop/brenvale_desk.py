"""What the desktop tests share: the program under test, the recording notification server, the test case."""
import itertools
import json
import os
import pathlib
import random
import re
import socket
import sys
import time
import unittest

import dbus

from desk import Desk, wait_until
from raw_client import RawClient

HERE = pathlib.Path(__file__).resolve().parent
PROGRAM = os.environ.get('BRENVALE_PROGRAM') or str(HERE.parent.parent / 'build/dev/bin/brenvale')
NOTIFICATIONS = 'org.freedesktop.Notifications'


def free_port():
    """A port below those that the system hands out, so that no other program comes by it by chance."""
    while True:
        port = random.randint(10000, 32000)
        with socket.socket(socket.AF_INET6) as probe:
            try:
                probe.bind(('::', port))
                return port
            except OSError:
                continue


def listening(port):
    """Whether some process listens on the port; told without connecting, which the program would log."""
    for table in ('tcp', 'tcp6'):
        for line in pathlib.Path(f'/proc/net/{table}').read_text().splitlines()[1:]:
            _, local, _, state = line.split()[:4]
            if state == '0A' and local.endswith(f':{port:04X}'):
                return True
    return False


class Program:
    """One run of Brenvale with settings of its own. Its outputs go to files of the desktop."""

    runs = itertools.count(1)

    def __init__(self, desk, port=None, setting=None, env=None, config_files=None, arguments=('--background',), wrapper=(), **options):
        self.desk = desk
        self.port = port or free_port()
        run = next(self.runs)
        self.output, self.errors = desk.root / f'stdout.{run}', desk.root / f'stderr.{run}'
        config = self.config = desk.root / f'config.{run}'
        (config / 'brenvale').mkdir(parents=True)
        (config / 'brenvale/brenvale.conf').write_text(setting or f'[General]\nport={self.port}\n')
        for name, text in (config_files or {}).items():
            (config / name).parent.mkdir(parents=True, exist_ok=True)
            (config / name).write_text(text)
        env = (desk.env if env is None else env) | {'XDG_CONFIG_HOME': str(config)}
        with open(self.output, 'wb') as output, open(self.errors, 'wb') as errors:
            streams = {'stdout': output, 'stderr': errors} | options
            self.process = desk.spawn([*wrapper, PROGRAM, *arguments], 'brenvale', env=env, **streams)

    def wait_listening(self):
        wait_until(lambda: listening(self.port) or self.process.poll() is not None, 'the program to listen')
        if self.process.poll() is not None:
            raise RuntimeError(f'the program ended with {self.process.returncode}: {self.error_text()}')
        return self

    def stop(self):
        self.desk.stop(self.process)
        return self.process.returncode

    def lines(self):
        """The log so far, whole lines only."""
        return self.output.read_text().split('\n')[:-1]

    def error_text(self):
        return self.errors.read_text()

    def matching(self, pattern):
        """The lines so far that match in full."""
        return [line for line in self.lines() if re.fullmatch(pattern, line)]

    def wait_for_line(self, pattern, count=1):
        """Waits for that many lines that match in full, and gives them."""
        enough = lambda: len(self.matching(pattern)) >= count
        try:
            wait_until(enough)
        except TimeoutError:
            raise TimeoutError(f'{count} of {pattern} never came; the log: {self.lines()[-20:]}') from None
        return self.matching(pattern)

    def connect(self, host='127.0.0.1'):
        """A phone that has been greeted."""
        phone = RawClient(self.port, host)
        phone.greeting = phone.open()
        return phone

    def status(self):
        return pathlib.Path(f'/proc/{self.process.pid}/status').read_text()

    def threads(self):
        return list(pathlib.Path(f'/proc/{self.process.pid}/task').iterdir())

    def descriptors(self):
        return len(os.listdir(f'/proc/{self.process.pid}/fd'))

    def wake_ups(self):
        """How often the threads of the process have waited for something so far."""
        counts = {}
        for thread in self.threads():
            status = (thread / 'status').read_text()
            counts[thread.name] = int(re.search(r'^voluntary_ctxt_switches:\s*(\d+)', status, re.M)[1])
        return counts


    def wait_at_rest(self):
        """Waits until the program has dealt with all that has reached it, from whatever side: every thread sleeps."""
        def at_rest():
            before = self.wake_ups()
            time.sleep(0.1)
            states = [(thread / 'stat').read_text().rsplit(') ', 1)[1][0] for thread in self.threads()]
            return set(states) == {'S'} and self.wake_ups() == before
        wait_until(at_rest, 'the program at rest')


class Recorder:
    """The recording notification server on a desktop's bus."""

    def __init__(self, desk, **options):
        self.desk = desk
        self.log = desk.root / 'notifications.jsonl'
        self.log.touch()
        self.bus = dbus.bus.BusConnection(desk.bus_address)
        self.start(**options)

    def start(self, caps=None, first_id=1):
        command = ['/usr/bin/python3', str(HERE / 'notify_recorder.py'), str(self.log), '--first-id', str(first_id)]
        self.process = self.desk.spawn(command + (['--caps', caps] if caps is not None else []), 'recorder')
        self.desk.wait_for_name(NOTIFICATIONS)

    def stop(self):
        self.desk.stop(self.process)
        wait_until(lambda: not self.desk.has_name(NOTIFICATIONS), 'the server to leave the bus')

    def calls(self, name='Notify'):
        whole_lines = self.log.read_text().split('\n')[:-1]
        return [call for call in map(json.loads, whole_lines) if call['call'] == name]

    def wait_for(self, count, name='Notify'):
        """Waits until a call was made that often in all, and gives the calls."""
        wait_until(lambda: len(self.calls(name)) >= count, f'{count} calls of {name}')
        return self.calls(name)

    def live(self):
        return json.loads(self.control('Live'))

    def control(self, method, *arguments):
        """Click, Reply, Dismiss, AnswerAfter, RefuseNext."""
        proxy = self.bus.get_object(NOTIFICATIONS, '/org/freedesktop/Notifications', introspect=False)
        signatures = {'Live': '', 'AnswerAfter': 'u', 'RefuseNext': 's', 'Dismiss': 'uu'}
        return proxy.get_dbus_method(method, 'org.test.NotifyControl')(
            *arguments, signature=signatures.get(method, 'us'))


class DeskTest(unittest.TestCase):
    """A test with a desktop of its own; tests of the link alone do without a display."""
    display = True
    bus = True

    def setUp(self):
        self.desk = Desk(display=self.display, bus=self.bus)
        self.addCleanup(self.desk.close)

    def start(self, **options):
        program = Program(self.desk, **options)
        return program.wait_listening()

    def connect(self, program, host='127.0.0.1'):
        phone = program.connect(host)
        self.addCleanup(phone.socket.close)
        return phone

    def raw(self, program):
        """A connection without a handshake."""
        client = RawClient(program.port)
        self.addCleanup(client.socket.close)
        return client


def main():
    if not os.access(PROGRAM, os.X_OK):
        sys.exit(f'no program at {PROGRAM}; build it, or set BRENVALE_PROGRAM')
    unittest.main(module='__main__', verbosity=2)
