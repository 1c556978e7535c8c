#!/usr/bin/python3
"""A notification server for tests: notify_recorder.py LOG [--caps A,B,...] [--first-id N]

Each call of a client becomes one JSON line of LOG. The test plays the user, and the server's moods, over the
interface org.test.NotifyControl on the same object. Ids are as the notification rules have them: a replaces_id
that is still shown is kept, any other gives a new id.
"""
import argparse
import json

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

NOTIFICATIONS = 'org.freedesktop.Notifications'
CONTROL = 'org.test.NotifyControl'
PATH = '/org/freedesktop/Notifications'

# Reasons of NotificationClosed.
DISMISSED, CLOSED_BY_CALL = 2, 3


def plain(value):
    """A D-Bus value as JSON has it."""
    if isinstance(value, dbus.Boolean):
        return bool(value)
    if isinstance(value, dict):
        return {str(key): plain(item) for key, item in value.items()}
    if isinstance(value, (list, tuple)):
        return [plain(item) for item in value]
    for kind in (int, float):
        if isinstance(value, kind):
            return kind(value)
    return str(value)


class Recorder(dbus.service.Object):
    def __init__(self, bus, log, capabilities, first_id):
        super().__init__(bus, PATH)
        self.log, self.capabilities, self.next_id = log, capabilities, first_id
        self.live = {}
        self.delay = 0
        self.refusals = []

    def record(self, call, **fields):
        print(json.dumps({'call': call, **fields}, ensure_ascii=False), file=self.log, flush=True)

    # What clients call.

    @dbus.service.method(NOTIFICATIONS, 'susssasa{sv}i', 'u', async_callbacks=('answer', 'refuse'))
    def Notify(self, app, replaces, icon, summary, body, actions, hints, timeout, answer, refuse):
        fields = {'replaces': int(replaces), 'app': str(app), 'icon': str(icon), 'summary': str(summary),
                  'body': str(body), 'actions': plain(actions), 'hints': plain(hints), 'timeout': int(timeout)}
        if self.refusals:
            error = self.refusals.pop(0)
            self.record('Notify', refused=error, **fields)
            refuse(dbus.DBusException('refused by the test', name=error))
            return
        number = int(replaces)
        if number not in self.live:
            number, self.next_id = self.next_id, self.next_id + 1
        self.live[number] = {'id': number, **fields}
        self.record('Notify', **self.live[number])
        self.later(lambda: answer(dbus.UInt32(number)))

    @dbus.service.method(NOTIFICATIONS, 'u', '')
    def CloseNotification(self, number):
        self.record('CloseNotification', id=int(number), known=int(number) in self.live)
        self.take_away(number, CLOSED_BY_CALL)

    @dbus.service.method(NOTIFICATIONS, '', 'as', async_callbacks=('answer', 'refuse'))
    def GetCapabilities(self, answer, refuse):
        self.record('GetCapabilities')
        self.later(lambda: answer(dbus.Array(self.capabilities, signature='s')))

    @dbus.service.method(NOTIFICATIONS, '', 'ssss')
    def GetServerInformation(self):
        return 'recorder', 'test', '0', '1.2'

    @dbus.service.signal(NOTIFICATIONS, 'uu')
    def NotificationClosed(self, number, reason):
        pass

    @dbus.service.signal(NOTIFICATIONS, 'us')
    def ActionInvoked(self, number, action):
        pass

    @dbus.service.signal(NOTIFICATIONS, 'us')
    def NotificationReplied(self, number, text):
        pass

    @dbus.service.signal(NOTIFICATIONS, 'us')
    def ActivationToken(self, number, token):
        pass

    # What the test calls.

    @dbus.service.method(CONTROL, 'us', '')
    def Click(self, number, action):
        resident = self.live.get(int(number), {}).get('hints', {}).get('resident', False)
        self.ActivationToken(number, f'token-{number}')
        self.ActionInvoked(number, action)
        if not resident:
            self.take_away(number, DISMISSED)

    @dbus.service.method(CONTROL, 'us', '')
    def Reply(self, number, text):
        self.NotificationReplied(number, text)
        self.take_away(number, DISMISSED)

    @dbus.service.method(CONTROL, 'uu', '')
    def Dismiss(self, number, reason):
        self.take_away(number, reason)

    @dbus.service.method(CONTROL, '', 's')
    def Live(self):
        """The notifications shown now, oldest first, as a JSON list."""
        return json.dumps(list(self.live.values()), ensure_ascii=False)

    @dbus.service.method(CONTROL, 'u', '')
    def AnswerAfter(self, milliseconds):
        """From now on answers come late."""
        self.delay = int(milliseconds)

    @dbus.service.method(CONTROL, 's', '')
    def RefuseNext(self, error):
        """The next Notify that is not refused yet gets this D-Bus error."""
        self.refusals.append(str(error))

    def later(self, step):
        if self.delay:
            GLib.timeout_add(self.delay, lambda: step() and False)
        else:
            step()

    def take_away(self, number, reason):
        if self.live.pop(int(number), None) is not None:
            self.NotificationClosed(number, reason)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument('log')
    parser.add_argument('--caps', default='actions,body,body-markup,persistence,inline-reply,sound')
    parser.add_argument('--first-id', type=int, default=1)
    arguments = parser.parse_args()
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    bus = dbus.SessionBus()
    with open(arguments.log, 'a', encoding='utf-8') as log:
        capabilities = [name for name in arguments.caps.split(',') if name]
        Recorder(bus, log, capabilities, arguments.first_id)
        name = dbus.service.BusName(NOTIFICATIONS, bus, do_not_queue=True)
        GLib.MainLoop().run()
        del name


if __name__ == '__main__':
    main()
