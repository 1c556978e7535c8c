#!/usr/bin/python3
"""The desktop's portal of settings for tests: settings_portal.py COLOR-SCHEME. Each line of standard input is a new one."""
import sys

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

NAME, PATH, SETTINGS = 'org.freedesktop.portal.Desktop', '/org/freedesktop/portal/desktop', 'org.freedesktop.portal.Settings'
APPEARANCE, KEY = 'org.freedesktop.appearance', 'color-scheme'


class Settings(dbus.service.Object):
    scheme = dbus.UInt32(sys.argv[1])

    @dbus.service.method(SETTINGS, 'ss', 'v')
    def Read(self, group, key):
        if (group, key) != (APPEARANCE, KEY):
            raise dbus.DBusException('no such setting', name='org.freedesktop.portal.Error.NotFound')
        return dbus.UInt32(self.scheme, variant_level=2)  # as the real one

    @dbus.service.signal(SETTINGS, 'ssv')
    def SettingChanged(self, group, key, value):
        pass

    def change(self, source, _):
        line = source.readline()
        if line:
            self.scheme = dbus.UInt32(line)
            self.SettingChanged(APPEARANCE, KEY, self.scheme)
        return bool(line)


dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
bus = dbus.SessionBus()
settings = Settings(bus, PATH)
own = dbus.service.BusName(NAME, bus)
GLib.io_add_watch(sys.stdin, GLib.IO_IN | GLib.IO_HUP, settings.change)
GLib.MainLoop().run()
