#!/usr/bin/python3
"""A desktop portal for tests: remote_desktop_portal.py LOG [--deny] [--devices N] [--slow SECONDS] [--unready]
    [--no-registry]

It gives consent to keys and pointer events as org.freedesktop.portal.RemoteDesktop does, or refuses it. Each call
becomes one JSON line of LOG; requests are answered by a signal a moment later. The double is steered by calls of
org.test.Portal: CloseSessions ends those that run, as the user does by the mark that the desktop shows; BackEndCame has the portal of
--unready take keys and the pointer from then on.
"""
import argparse
import json
import time

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
    def __init__(self, bus, log, options):
        super().__init__(bus, PATH)
        self.bus, self.log, self.options = bus, log, options
        self.sessions = {}  # of each path: itself, and whether it was started
        self.waiting = []
        self.device_types = 0 if options.unready else 7
        self.program = None

    def record(self, call, options=None, **values):
        """Options with their type on the bus."""
        fields = {str(name): f'{type(value).__name__} {value}' for name, value in (options or {}).items()
                  if name not in ('handle_token', 'session_handle_token')}
        print(json.dumps({'call': call, **fields, **values}), file=self.log, flush=True)

    def answer(self, sender, options, code, results):
        path = f'{PATH}/request/{sender[1:].replace(".", "_")}/{options["handle_token"]}'
        request = Request(self.bus, path)

        def respond():
            request.Response(dbus.UInt32(code), dbus.Dictionary(results, signature='sv'))
            request.remove_from_connection()
        GLib.timeout_add(20, respond)
        return dbus.ObjectPath(path)

    @dbus.service.method('org.freedesktop.DBus.Properties', 'ss', 'v')
    def Get(self, interface, name):
        time.sleep(self.options.slow)
        return {'version': dbus.UInt32(2), 'AvailableDeviceTypes': dbus.UInt32(self.device_types)}[name]

    @dbus.service.signal('org.freedesktop.DBus.Properties', 'sa{sv}as')
    def PropertiesChanged(self, interface, changed, invalidated):
        pass

    @dbus.service.method('org.freedesktop.host.portal.Registry', 'sa{sv}')
    def Register(self, program, options):
        if self.options.no_registry:
            raise dbus.exceptions.DBusException('no such interface', name='org.freedesktop.DBus.Error.UnknownMethod')
        self.program = str(program)
        self.record('Register', program=self.program)

    @dbus.service.method(REMOTE_DESKTOP, 'a{sv}', 'o', sender_keyword='sender')
    def CreateSession(self, options, sender=None):
        self.record('CreateSession', options)
        path = f'{PATH}/session/{sender[1:].replace(".", "_")}/{options["session_handle_token"]}'

        def closed():
            self.record('Close')
            self.sessions.pop(path).remove_from_connection()
        self.sessions[path] = Session(self.bus, path, closed)
        return self.answer(sender, options, GRANTED, {'session_handle': path})

    @dbus.service.method(REMOTE_DESKTOP, 'oa{sv}', 'o', sender_keyword='sender')
    def SelectDevices(self, session, options, sender=None):
        self.record('SelectDevices', options)
        return self.answer(sender, options, GRANTED, {})

    @dbus.service.method(REMOTE_DESKTOP, 'osa{sv}', 'o', sender_keyword='sender')
    def Start(self, session, parent, options, sender=None):
        self.record('Start', options)
        if self.options.deny:
            return self.answer(sender, options, REFUSED, {})
        self.sessions[session].is_started = True
        return self.answer(sender, options, GRANTED,
                           {'devices': dbus.UInt32(self.options.devices), 'restore_token': 'kept'})

    def notify(self, session, call, *values):
        if not getattr(self.sessions.get(session), 'is_started', False):
            self.record('refused ' + call)
            raise dbus.exceptions.DBusException('Invalid session', name='org.freedesktop.DBus.Error.AccessDenied')
        self.record(call, values=list(values))

    @dbus.service.method(REMOTE_DESKTOP, 'oa{sv}dd')
    def NotifyPointerMotion(self, session, options, dx, dy):
        self.notify(session, 'NotifyPointerMotion', float(dx), float(dy))

    @dbus.service.method(REMOTE_DESKTOP, 'oa{sv}iu')
    def NotifyPointerButton(self, session, options, button, state):
        self.notify(session, 'NotifyPointerButton', int(button), int(state))

    @dbus.service.method(REMOTE_DESKTOP, 'oa{sv}iu')
    def NotifyKeyboardKeycode(self, session, options, code, state):
        self.notify(session, 'NotifyKeyboardKeycode', int(code), int(state))

    @dbus.service.method(REMOTE_DESKTOP, 'oa{sv}iu')
    def NotifyKeyboardKeysym(self, session, options, keysym, state):
        self.notify(session, 'NotifyKeyboardKeysym', int(keysym), int(state))

    @dbus.service.method('org.test.Portal')
    def BackEndCame(self):
        self.device_types = 7
        self.PropertiesChanged(REMOTE_DESKTOP, {'AvailableDeviceTypes': dbus.UInt32(self.device_types)}, [])

    @dbus.service.method('org.test.Portal')
    def CloseSessions(self):
        for path in list(self.sessions):
            session = self.sessions.pop(path)
            session.Closed({})
            session.remove_from_connection()


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument('log')
    parser.add_argument('--deny', action='store_true')
    parser.add_argument('--devices', type=int, default=3, help='1 keyboard, 2 pointer')
    parser.add_argument('--slow', type=float, default=0, help='seconds that it needs before its first answer')
    parser.add_argument('--unready', action='store_true', help='without a back end until BackEndCame')
    parser.add_argument('--no-registry', action='store_true', help='as portals before version 1.20')
    arguments = parser.parse_args()
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    bus = dbus.SessionBus()
    with open(arguments.log, 'a', encoding='utf-8') as log:
        Portal(bus, log, arguments)
        name = dbus.service.BusName(PORTAL, bus, do_not_queue=True)
        GLib.MainLoop().run()
        del name


if __name__ == '__main__':
    main()
