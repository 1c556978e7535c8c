#!/usr/bin/python3
"""Services that lock and suspend, for tests: session_services.py LOG NAME=ANSWER...

NAME is login1, freedesktop or gnome (screen savers). ANSWER is "yes", "refused" or "silent", which is no answer at
all. Each call that comes is a line of the file LOG.
"""
import sys

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

LOG = sys.argv[1]
NEVER = []  # what is never answered


class Refused(dbus.DBusException):
    _dbus_error_name = 'org.freedesktop.DBus.Error.AccessDenied'


def called(line, answer, ok, error):
    with open(LOG, 'a') as log:
        log.write(line + '\n')
    if answer == 'yes':
        ok()
    elif answer == 'refused':
        error(Refused('Permission denied by a test'))
    else:
        NEVER.append((ok, error))


class Answering(dbus.service.Object):
    def __init__(self, bus, path, answer):
        super().__init__(bus, path)
        self.answer = answer


class Manager(Answering):
    @dbus.service.method('org.freedesktop.login1.Manager', 'b', '', async_callbacks=('ok', 'error'))
    def Suspend(self, interactive, ok, error):
        called(f'login1 Suspend {bool(interactive)}', self.answer, ok, error)


class Session(Answering):
    @dbus.service.method('org.freedesktop.login1.Session', '', '', async_callbacks=('ok', 'error'))
    def Lock(self, ok, error):
        called('login1 Lock', self.answer, ok, error)


class FreedesktopScreenSaver(Answering):
    @dbus.service.method('org.freedesktop.ScreenSaver', '', '', async_callbacks=('ok', 'error'))
    def Lock(self, ok, error):
        called('freedesktop Lock', self.answer, ok, error)


class GnomeScreenSaver(Answering):
    @dbus.service.method('org.gnome.ScreenSaver', '', '', async_callbacks=('ok', 'error'))
    def Lock(self, ok, error):
        called('gnome Lock', self.answer, ok, error)


def serve(bus, kind, answer):
    if kind == 'login1':
        return [Manager(bus, '/org/freedesktop/login1', answer),
                Session(bus, '/org/freedesktop/login1/session/auto', answer),
                dbus.service.BusName('org.freedesktop.login1', bus)]
    if kind == 'freedesktop':
        return [FreedesktopScreenSaver(bus, '/org/freedesktop/ScreenSaver', answer),
                dbus.service.BusName('org.freedesktop.ScreenSaver', bus)]
    return [GnomeScreenSaver(bus, '/org/gnome/ScreenSaver', answer), dbus.service.BusName('org.gnome.ScreenSaver', bus)]


dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
bus = dbus.SystemBus()
kept = [serve(bus, *argument.split('=')) for argument in sys.argv[2:]]
ready = dbus.service.BusName('org.test.SessionServices', bus)
GLib.MainLoop().run()
