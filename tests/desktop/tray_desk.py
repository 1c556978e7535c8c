"""A test desktop with a tray that can come and go."""
import json

import dbus

from brenvale_desk import HERE, DeskTest, Recorder, wait_until

WATCHER = 'org.kde.StatusNotifierWatcher'
SEPARATOR = '---'


class TrayTest(DeskTest):
    def setUp(self):
        super().setUp()
        Recorder(self.desk)
        self.bus = dbus.bus.BusConnection(self.desk.bus_address)

    def start_host(self):
        self.host = self.desk.spawn(['/usr/bin/python3', str(HERE / 'tray_host.py')], 'tray')
        self.desk.wait_for_name(WATCHER)

    def stop_host(self):
        self.desk.stop(self.host)
        wait_until(lambda: not self.desk.has_name(WATCHER), 'the tray to go')

    def tray(self, method, *arguments):
        proxy = self.bus.get_object(WATCHER, '/Tray', introspect=False)
        return proxy.get_dbus_method(method, 'org.test.Tray')(*arguments, signature='s' if arguments else '')

    def wait_for_item(self):
        wait_until(lambda: self.tray('Count') == 1, 'the tray item')

    def rows(self):
        return json.loads(self.tray('Menu'))

    def labels(self):
        return [SEPARATOR if row['separator'] else row['label'] for row in self.rows()]

    def start_shown(self):
        self.start_host()
        self.program = self.start()
        self.wait_for_item()
        return self.program
