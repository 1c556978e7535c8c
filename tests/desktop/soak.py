#!/usr/bin/python3
"""Uses the real program for a long time, and shows what that does to its memory, descriptors and threads.

    tests/desktop/soak.py [--minutes 15] [--every 60]

Run by hand, from the folder of the tests or any other. Each round connects phones, sends notifications, logs, clipboard
texts and files in both directions, rings, answers a notification, types and moves the pointer, opens the window on every
tab and closes it, and lets phones go in every way. A line
of the table is taken at rest. The status is 1 where the last third of the run stands higher than the first third after
the start.
"""
import argparse
import base64
import os
import random
import re
import statistics
import sys
import time

import dbus

from brenvale_desk import Program, Recorder, wait_until
from desk import Desk
from raw_client import CLOSE, RawClient

NAME, PATH, INTERFACE = 'org.brenvale.Brenvale', '/org/brenvale/Brenvale', 'org.freedesktop.Application'
TABS = ['call', 'sms', 'file-drop', 'notifications', 'remote', 'clipboard', 'settings', 'info']


class Soak:
    def __init__(self, desk):
        self.desk = desk
        self.recorder = Recorder(desk)
        self.program = Program(desk).wait_listening()
        self.bus = dbus.bus.BusConnection(desk.bus_address)
        self.application = self.bus.get_object(NAME, PATH, introspect=False)
        self.counts = dict.fromkeys(['rounds', 'phones', 'notifications', 'files in', 'files out', 'calls', 'replies',
                                    'remote', 'windows'], 0)
        self.outgoing = desk.root / 'outgoing.bin'
        self.outgoing.write_bytes(os.urandom(3 << 20))

    def phone(self):
        phone = RawClient(self.program.port)
        phone.open()
        self.counts['phones'] += 1
        return phone

    def leave(self, phone):
        way = random.choice(['close', 'reset', 'vanish', 'break'])
        if way == 'close':
            phone.send_frame(CLOSE, b'\x03\xe8')
            phone.wait_for_end()
        elif way == 'reset':
            phone.reset()
        elif way == 'break':
            phone.send_frame(3)
            phone.wait_for_end()
        phone.socket.close()

    def notifications(self, phone):
        for number in range(50):
            members = {'app': random.choice(['Chat', 'Mail', 'SMS', 'Unknown']), 'title': f'Ann {number}',
                       'body': f'{self.counts["rounds"]}.{number % 40} ' + 'text ' * random.randint(1, 40)}
            if number % 2:
                members['key'] = f'key {number}'
            phone.send_json(**members)
        self.counts['notifications'] += 50

    def logs(self, phone):
        messages = [{'id': str(number), 'address': f'+49170{number % 80:07}', 'body': f'message {number}',
                     'date': 1700000000000 + number * 1000, 'type': 1 + number % 2} for number in range(500)]
        calls = [{'id': str(number), 'number': f'+49170{number % 80:07}', 'name': f'Person {number % 80}',
                  'date': 1700000000000 + number * 1000, 'duration': number, 'type': 1 + number % 3} for number in range(200)]
        phone.send_json(action='sms_history', messages=messages)
        phone.send_json(action='call_history', calls=calls)
        phone.send_json(action='device_info', wifiName='Home', deviceName='Phone')
        phone.send_json(action='battery_status', level=random.randint(1, 100), isCharging=bool(random.randint(0, 1)))
        phone.send_json(action='clipboard', text='copied ' * random.randint(1, 1000))

    def file_in(self, phone):
        name, contents = f'in {self.counts["files in"] % 7}.bin', os.urandom(random.randint(1, 3 << 20))
        phone.send_json(action='file_transfer_start', fileName=name, fileSize=len(contents))
        for start in range(0, len(contents), 1 << 20):
            chunk = contents[start:start + (1 << 20)]
            phone.send_json(action='file_chunk', fileName=name, fileData=base64.b64encode(chunk).decode(),
                            isLast=start + len(chunk) >= len(contents))
        phone.ping()
        path = self.desk.root / 'home/Downloads' / name
        wait_until(lambda: path.exists() and path.stat().st_size == len(contents), 'the file')
        self.counts['files in'] += 1

    def file_out(self, phone):
        self.application.Open([f'file://{self.outgoing}'], {}, signature='asa{sv}', dbus_interface=INTERFACE)
        size = 0
        while size < self.outgoing.stat().st_size:
            message = phone.read_json()
            if message.get('action') == 'file_chunk':
                size += len(base64.b64decode(message['fileData']))
        self.counts['files out'] += 1

    def do(self, action):
        self.application.ActivateAction(action, [], {}, signature='sava{sv}', dbus_interface=INTERFACE)

    def panels(self):
        return self.desk.windows('^Brenvale Call$')

    def call(self, phone):
        number = f'+49170{random.randint(0, 9999999):07}'
        phone.send_json(action='incoming_call', state='RINGING', number=number, name='Ann')
        wait_until(self.panels, 'the panel of the ringing call')
        if random.randint(0, 1):
            self.do('answer-call')
            phone.send_json(action='call_state_changed', state='OFFHOOK', number=number)
            self.do('mute-call')
            self.do('end-call')
        else:
            self.do('decline-call')
        phone.send_json(action='call_state_changed', state='IDLE')
        wait_until(lambda: not self.panels(), 'the panel to go')
        self.counts['calls'] += 1

    def reply(self, phone):
        key = f'reply {self.counts["replies"]}'
        phone.send_json(app='Chat', title='Ann', body=key, key=key)
        shown = lambda: [live for live in self.recorder.live() if key in live['body']]
        self.recorder.control('Reply', wait_until(shown, 'the notification')[0]['id'], 'Yes')
        while phone.read_json().get('key') != key:
            pass
        self.counts['replies'] += 1

    def remote(self, phone):
        for number in range(50):
            phone.send_json(action='remote_control', command='m', type='mouse_move', dx=random.randint(-9, 9), dy=1)
            phone.send_json(action='remote_control', command='key_left')
        phone.send_json(action='remote_control', command='t', type='keyboard_text', text='round äöü 漢 👍')
        self.counts['remote'] += 1

    def windows(self):
        for tab in TABS:
            self.do(tab)
            time.sleep(0.05)
        find = lambda: self.desk.windows('^Brenvale Settings')
        window = wait_until(find, 'the window')[0]
        self.desk.run('xdotool', 'windowactivate', '--sync', window, check=False)

        def closed():
            if find():
                self.desk.run('xdotool', 'key', 'alt+F4')
                time.sleep(0.05)
            return not find()
        wait_until(closed, 'the window to close')
        self.counts['windows'] += 1

    def round(self):
        try:
            self.use()
        except Exception:
            time.sleep(2)  # it may be on its way out
            if self.program.process.poll() is not None:
                sys.exit(f'the program ended with {self.program.process.returncode}: {self.program.error_text()}')
            states = [(thread.name, (thread / 'stat').read_text().rsplit(') ', 1)[1][0], (thread / 'wchan').read_text())
                      for thread in self.program.threads()]
            print('the program lives:', self.counts, states, file=sys.stderr)
            raise

    def use(self):
        phones = [self.phone() for _ in range(3)]
        self.notifications(phones[0])
        self.logs(phones[1])
        self.file_in(phones[0])
        self.file_out(phones[0])
        self.call(phones[0])
        self.reply(phones[0])
        self.remote(phones[1])
        for phone in phones[:2]:
            phone.ping()
        self.windows()
        for number in self.recorder.live()[:-20]:
            self.recorder.control('Dismiss', number['id'], 2)
        for phone in phones:
            self.leave(phone)
        self.counts['rounds'] += 1
        self.recorder.log.write_text('')  # the test's own file

    def sample(self):
        try:
            self.program.wait_at_rest()
        except TimeoutError:
            print('not at rest:', self.program.wake_ups(), file=sys.stderr)
        status = self.program.status()
        kilobytes = lambda name: int(re.search(rf'^{name}:\s*(\d+) kB', status, re.M)[1])
        return {'MB': kilobytes('VmRSS') / 1024, 'own MB': kilobytes('RssAnon') / 1024,
                'descriptors': self.program.descriptors(), 'threads': len(self.program.threads())}


def verdict(samples):
    """What has grown from the first third to the last; the first sample is the start."""
    settled = samples[1:]
    third = max(1, len(settled) // 3)
    grown = []
    for name, allowance in ('own MB', 4), ('descriptors', 0), ('threads', 0):
        early = statistics.median(sample[name] for sample in settled[:third])
        late = statistics.median(sample[name] for sample in settled[-third:])
        if late > early + allowance:
            grown.append(f'{name}: {early:.1f} → {late:.1f}')
    return grown


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument('--minutes', type=float, default=15)
    parser.add_argument('--every', type=float, default=60, help='seconds between two lines')
    arguments = parser.parse_args()
    with Desk() as desk:
        soak = Soak(desk)
        soak.round()  # whatever is made once is made now
        began = time.monotonic()
        samples, columns = [], ['minute', 'rounds', 'phones', 'notifications', 'files in', 'files out', 'calls',
                                'replies', 'remote', 'windows', 'MB', 'own MB', 'descriptors', 'threads']
        print(' '.join(f'{column:>13}' for column in columns))
        while True:
            sample = {'minute': (time.monotonic() - began) / 60, **soak.counts, **soak.sample()}
            samples.append(sample)
            print(' '.join(f'{sample[column]:13.1f}' if isinstance(sample[column], float) else f'{sample[column]:13}'
                           for column in columns), flush=True)
            if sample['minute'] >= arguments.minutes:
                break
            until = time.monotonic() + arguments.every
            while time.monotonic() < until:
                soak.round()
        grown = verdict(samples)
        print('grown: ' + '; '.join(grown) if grown else 'nothing has grown')
        sys.exit(bool(grown))


if __name__ == '__main__':
    main()
