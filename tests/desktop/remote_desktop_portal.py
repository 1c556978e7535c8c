#!/usr/bin/python3
"""A desktop portal for tests: remote_desktop_portal.py LOG [--deny] [--devices N]

It gives consent to keys and pointer events as org.freedesktop.portal.RemoteDesktop does, or refuses it. Each call
becomes one JSON line of LOG; requests are answered by a signal a moment later.
"""
import argparse
import json

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

PORTAL = 'org.freedesktop.portal.Desktop'
REMOTE_DESKTOP = 'org.freedesktop.portal.RemoteDesktop'
PATH = '/org/freedesktop/portal/desktop'
GRANTED, REFUSED = 0, 1


class Request(dbus.service.Object):
    @dbus.service.signal('org.freedesktop.portal.Request', 'ua{sv}')
    def Response(self, code, results):
        pass


class Session(dbus.service.Object):
    def __init__(self, bus, path, closed):
        super().__init__(bus, path)
        self.closed = closed

    @dbus.service.method('org.freedesktop.portal.Session')
    def Close(self):
        self.closed()

    @dbus.service.signal('org.freedesktop.portal.Session', 'a{sv}')
    def Closed(self, details):
        pass


class Portal(dbus.service.Object):
    def __init__(self, bus, log, deny, devices):
        super().__init__(bus, PATH)
        self.bus, self.log, self.deny, self.devices = bus, log, deny, devices
        self.sessions = []

    def record(self, call, options):
        """Values with their type on the bus."""
        fields = {str(name): f'{type(value).__name__} {value}' for name, value in options.items()
                  if name not in ('handle_token', 'session_handle_token')}
        print(json.dumps({'call': call, **fields}), file=self.log, flush=True)

    def answer(self, sender, options, code, results):
        path = f'{PATH}/request/{sender[1:].replace(".", "_")}/{options["handle_token"]}'
        request = Request(self.bus, path)

        def respond():
            request.Response(dbus.UInt32(code), dbus.Dictionary(results, signature='sv'))
            request.remove_from_connection()
        GLib.timeout_add(20, respond)
        return dbus.ObjectPath(path)

    @dbus.service.method(REMOTE_DESKTOP, 'a{sv}', 'o', sender_keyword='sender')
    def CreateSession(self, options, sender=None):
        self.record('CreateSession', options)
        path = f'{PATH}/session/{sender[1:].replace(".", "_")}/{options["session_handle_token"]}'
        self.sessions.append(Session(self.bus, path, lambda: self.record('Close', {})))
        return self.answer(sender, options, GRANTED, {'session_handle': path})

    @dbus.service.method(REMOTE_DESKTOP, 'oa{sv}', 'o', sender_keyword='sender')
    def SelectDevices(self, session, options, sender=None):
        self.record('SelectDevices', options)
        return self.answer(sender, options, GRANTED, {})

    @dbus.service.method(REMOTE_DESKTOP, 'osa{sv}', 'o', sender_keyword='sender')
    def Start(self, session, parent, options, sender=None):
        self.record('Start', options)
        results = {} if self.deny else {'devices': dbus.UInt32(self.devices), 'restore_token': 'kept'}
        return self.answer(sender, options, REFUSED if self.deny else GRANTED, results)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument('log')
    parser.add_argument('--deny', action='store_true')
    parser.add_argument('--devices', type=int, default=3, help='1 keyboard, 2 pointer')
    arguments = parser.parse_args()
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    bus = dbus.SessionBus()
    with open(arguments.log, 'a', encoding='utf-8') as log:
        Portal(bus, log, arguments.deny, arguments.devices)
        name = dbus.service.BusName(PORTAL, bus, do_not_queue=True)
        GLib.MainLoop().run()
        del name


if __name__ == '__main__':
    main()
