"""What happens to the computer and to the desktop while the program runs: after all of it the phone still gets through."""
import contextlib
import ctypes
import itertools
import os
import re
import socket
import struct

import dbus
import dbus.lowlevel

from brenvale_desk import DeskTest, Program, Recorder, main, wait_until
from test_files import small_disk

LOGIND, LOGIND_PATH = 'org.freedesktop.login1', '/org/freedesktop/login1'


def fall_silent(phone):
    """The phone is out of reach from now on: its system answers nothing any more and does not say so."""
    SO_ATTACH_FILTER, RETURN = 26, 0x06
    take_nothing = ctypes.create_string_buffer(struct.pack('HBBI', RETURN, 0, 0, 0), 8)
    phone.socket.setsockopt(socket.SOL_SOCKET, SO_ATTACH_FILTER,
                            struct.pack('@HP', 1, ctypes.addressof(take_nothing)))


class SleepTest(DeskTest):
    display = False

    def setUp(self):
        super().setUp()
        self.bus = dbus.bus.BusConnection(self.desk.bus_address)
        self.bus.request_name(LOGIND)

    def announce(self, is_ahead):
        signal = dbus.lowlevel.SignalMessage(LOGIND_PATH, LOGIND + '.Manager', 'PrepareForSleep')
        signal.append(is_ahead)
        self.bus.send_message(signal)
        self.bus.flush()

    def test_a_phone_that_vanished_meanwhile_is_found_within_seconds_and_the_others_stay(self):
        program = self.start()
        staying, vanished = self.connect(program), self.connect(program)
        self.announce(True)
        fall_silent(vanished)
        self.announce(False)
        address = '%s:%d' % vanished.socket.getsockname()[:2]
        program.wait_for_line(rf'\[WebSocketServer\] Connection {re.escape(address)} failed: Connection timed out')
        staying.ping()
        program.wait_at_rest()
        self.assertEqual(len(program.matching(r'.* failed: .*')), 1)
        staying.ping()
        self.connect(program).ping()

    def test_waking_up_again_and_again_ends_nothing(self):
        program = self.start()
        phone = self.connect(program)
        for _ in range(20):
            self.announce(True)
            self.announce(False)
        phone.ping()
        program.wait_at_rest()
        self.assertFalse(program.matching(r'.* failed: .*'))


class BusTest(DeskTest):
    def test_a_session_bus_that_ends_leaves_the_link_alone(self):
        Recorder(self.desk)
        program = self.start()
        phone = self.connect(program)
        bus = next(child for child in self.desk.children if child.args[0] == 'dbus-daemon')
        self.desk.stop(bus)
        program.wait_at_rest()
        self.assertIsNone(program.process.poll())
        phone.send_json(app='Mail', title='Ann', body='Hello', key='k')
        phone.send_json(action='clipboard', text='copied')
        program.wait_for_line(r'\[Notifications\] Post error: .*')
        phone.ping()
        self.connect(program).ping()
        program.wait_at_rest()


class FullDiskTest(DeskTest):
    def test_settings_that_cannot_be_written_hold_until_the_end_and_are_written_again_later(self):
        if os.geteuid() != 0:
            self.skipTest('a disk of its own needs root')
        Program.runs = itertools.count(1000)
        config = self.desk.root / 'config.1000'
        config.mkdir()
        with small_disk(config, '16k'):
            program = self.start()
            settings = config / 'brenvale/brenvale.conf'
            before = settings.read_text()
            with open(config / 'filler', 'wb', buffering=0) as filler, contextlib.suppress(OSError):
                while True:
                    filler.write(bytes(4096))
            self.open_tab('sms')
            self.connect(program).ping()
            program.wait_at_rest()
            self.assertEqual(settings.read_text(), before)
            (config / 'filler').unlink()
            self.open_tab('info')
            wait_until(lambda: 'selectedSettingsTab=3' in settings.read_text(), 'the settings on the disk')
            self.assertIn(f'port={program.port}', settings.read_text())
            program.stop()

    def open_tab(self, name):
        self.desk.run('gapplication', 'action', 'org.brenvale.Brenvale', name)


if __name__ == '__main__':
    main()
