#!/usr/bin/python3
"""The system's host name service for tests: hostnamed.py PRETTY-NAME. Each line of standard input is a new name."""
import sys

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

NAME, PATH, PROPERTIES = 'org.freedesktop.hostname1', '/org/freedesktop/hostname1', 'org.freedesktop.DBus.Properties'


class HostName(dbus.service.Object):
    pretty = sys.argv[1]

    @dbus.service.method(PROPERTIES, 'ss', 'v')
    def Get(self, interface, name):
        return self.pretty if name == 'PrettyHostname' else ''

    @dbus.service.signal(PROPERTIES, 'sa{sv}as')
    def PropertiesChanged(self, interface, changed, invalidated):
        pass

    def rename(self, source, _):
        line = source.readline()
        if line:
            self.pretty = line.strip()
            self.PropertiesChanged(NAME, {'PrettyHostname': self.pretty}, [])
        return bool(line)


dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
bus = dbus.SystemBus()
host_name = HostName(bus, PATH)
own = dbus.service.BusName(NAME, bus)
GLib.io_add_watch(sys.stdin, GLib.IO_IN | GLib.IO_HUP, host_name.rename)
GLib.MainLoop().run()
