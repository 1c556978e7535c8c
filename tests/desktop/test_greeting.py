"""The greeting: the name of the computer as its owner calls it."""
import pathlib
import socket
import subprocess

from brenvale_desk import DeskTest, main, wait_until


class GreetingTest(DeskTest):
    display = False

    def start_host_name_service(self, name):
        script = pathlib.Path(__file__).with_name('hostnamed.py')
        command = ['/usr/bin/python3', str(script), name]
        service = self.desk.spawn(command, 'hostnamed', stdin=subprocess.PIPE, text=True)
        self.addCleanup(service.stdin.close)
        self.desk.wait_for_name('org.freedesktop.hostname1')
        return service

    def greeting(self, program):
        phone = self.connect(program)
        phone.socket.close()
        return phone.greeting

    def wait_for_name(self, program, name):
        wait_until(lambda: self.greeting(program) == {'action': 'connected', 'deviceName': name}, name)

    def test_host_name(self):
        program = self.start()
        self.assertEqual(self.greeting(program), {'action': 'connected', 'deviceName': socket.gethostname()})

    def test_pretty_name_goes_before_the_host_name(self):
        self.start_host_name_service('Ann\'s "desk" \\ 🖥')
        self.wait_for_name(self.start(), 'Ann\'s "desk" \\ 🖥')

    def test_empty_pretty_name_counts_as_none(self):
        self.start_host_name_service('')
        self.wait_for_name(self.start(), socket.gethostname())

    def test_new_name_holds_from_then_on(self):
        service = self.start_host_name_service('Old')
        program = self.start()
        self.wait_for_name(program, 'Old')
        print('New', file=service.stdin, flush=True)
        self.wait_for_name(program, 'New')


if __name__ == '__main__':
    main()
