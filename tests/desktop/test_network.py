"""The address that the window shows, in a network of its own that changes."""
import os
import subprocess
import unittest

from brenvale_desk import Program, Recorder, main
from desk import Desk

desk = Desk()
os.environ.update(desk.env)  # the accessibility library finds its bus by the environment of this process
from accessible import Application, add_accessibility  # noqa: E402

add_accessibility(desk)
unittest.addModuleCleanup(desk.close)


class AddressTest(unittest.TestCase):
    def setUp(self):
        if os.geteuid() != 0 or subprocess.run(['unshare', '--net', 'true'], check=False).returncode != 0:
            self.skipTest('no network of its own can be made here')
        recorder = Recorder(desk)
        self.addCleanup(recorder.stop)
        self.program = Program(desk, wrapper=['unshare', '--net'])
        self.addCleanup(self.program.stop)
        desk.wait_for_name('org.brenvale.Brenvale')
        self.ip('link', 'add', 'eth7', 'type', 'veth', 'peer', 'name', 'other')
        desk.run('gapplication', 'action', 'org.brenvale.Brenvale', 'settings')
        self.window = Application(desk, self.program.process.pid)

    def ip(self, *arguments):
        subprocess.run(['nsenter', '--target', str(self.program.process.pid), '--net', 'ip', *arguments], check=True)

    def wait_for_address(self, text):
        def shown():
            return any(text in (node.get_name() or '') for node in self.window.walk())
        self.window.wait(shown, f'{text} in the window')

    def test_it_follows_by_itself(self):
        self.wait_for_address('Not found')
        self.ip('link', 'set', 'other', 'up')
        self.ip('link', 'set', 'eth7', 'up')
        self.ip('address', 'add', '10.7.7.7/24', 'dev', 'eth7')
        self.wait_for_address('10.7.7.7')
        self.ip('address', 'flush', 'dev', 'eth7')
        self.ip('address', 'add', '192.168.5.9/24', 'dev', 'eth7')
        self.wait_for_address('192.168.5.9')
        self.ip('link', 'set', 'other', 'down')  # the cable is pulled out
        self.wait_for_address('Not found')
        self.program.wait_at_rest()


if __name__ == '__main__':
    main()
