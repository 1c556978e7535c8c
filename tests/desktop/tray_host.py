#!/usr/bin/python3
"""A desktop's tray for tests: it owns org.kde.StatusNotifierWatcher and is the host as well.

The test plays the user over the interface org.test.Tray at /Tray: which items there are, what their menus show, a
click on a row.
"""
import json

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

WATCHER = 'org.kde.StatusNotifierWatcher'
ITEM = 'org.kde.StatusNotifierItem'
MENU = 'com.canonical.dbusmenu'
PROPERTIES = 'org.freedesktop.DBus.Properties'
CONTROL = 'org.test.Tray'
WHOLE_DEPTH = dbus.Int32(-1)


class Watcher(dbus.service.Object):
    def __init__(self, bus):
        super().__init__(bus, '/StatusNotifierWatcher')
        self.bus, self.items = bus, []

    @dbus.service.method(WATCHER, 's', '', sender_keyword='sender')
    def RegisterStatusNotifierItem(self, service, sender=None):
        item = (sender, service) if service.startswith('/') else (service, '/StatusNotifierItem')
        self.items.append(item)
        self.StatusNotifierItemRegistered(''.join(item))
        self.bus.watch_name_owner(item[0], lambda owner: owner or self.forget(item))

    def forget(self, item):
        if item in self.items:
            self.items.remove(item)

    @dbus.service.method(WATCHER, 's', '')
    def RegisterStatusNotifierHost(self, service):
        pass

    @dbus.service.signal(WATCHER, 's')
    def StatusNotifierItemRegistered(self, service):
        pass

    @dbus.service.signal(WATCHER, '')
    def StatusNotifierHostRegistered(self):
        pass

    def properties(self):
        return dbus.Dictionary({'IsStatusNotifierHostRegistered': True, 'ProtocolVersion': dbus.Int32(0),
                                'RegisteredStatusNotifierItems': dbus.Array(map(''.join, self.items), signature='s')},
                               signature='sv')

    # Some toolkits look at the description before they read a property.
    @dbus.service.method('org.freedesktop.DBus.Introspectable', '', 's', path_keyword='path', connection_keyword='bus')
    def Introspect(self, path=None, bus=None):
        head = f'<interface name="{WATCHER}">'
        kinds = {'IsStatusNotifierHostRegistered': 'b', 'ProtocolVersion': 'i', 'RegisteredStatusNotifierItems': 'as'}
        lines = ''.join(f'<property name="{name}" type="{kind}" access="read"/>' for name, kind in kinds.items())
        return super().Introspect(path, bus).replace(head, head + lines)

    @dbus.service.method(PROPERTIES, 'ss', 'v')
    def Get(self, interface, name):
        return self.properties()[name]

    @dbus.service.method(PROPERTIES, 's', 'a{sv}')
    def GetAll(self, interface):
        return self.properties()


class Control(dbus.service.Object):
    def __init__(self, bus, watcher):
        super().__init__(bus, '/Tray')
        self.bus, self.watcher = bus, watcher

    def reach(self, interface, path=None):
        """The item that came last."""
        service, item_path = self.watcher.items[-1]
        return dbus.Interface(self.bus.get_object(service, path or item_path, introspect=False), interface)

    def properties(self):
        return self.reach(PROPERTIES).GetAll(ITEM)

    def menu(self):
        return self.reach(MENU, self.properties()['Menu'])

    def rows(self):
        menu = self.menu()
        menu.AboutToShow(0)
        _, (_, _, rows) = menu.GetLayout(dbus.Int32(0), WHOLE_DEPTH, dbus.Array([], signature='s'))
        return [(int(number), properties) for number, properties, _ in rows]

    @dbus.service.method(CONTROL, '', 'u')
    def Count(self):
        return len(self.watcher.items)

    @dbus.service.method(CONTROL, '', 's')
    def Item(self):
        properties = self.properties()
        sizes = [int(width) for width, height, pixels in properties.get('IconPixmap', [])]
        shown = {str(name): str(value) for name, value in properties.items() if 'Pixmap' not in name}
        return json.dumps(shown | {'sizes': sizes})

    @dbus.service.method(CONTROL, '', 's')
    def Menu(self):
        return json.dumps([{
            'label': str(row.get('label', '')), 'enabled': bool(row.get('enabled', True)),
            'separator': row.get('type') == 'separator',
            'shortcut': ['+'.join(map(str, keys)) for keys in row.get('shortcut', [])],
        } for _, row in self.rows()], ensure_ascii=False)

    @dbus.service.method(CONTROL, 's', '')
    def Click(self, label):
        number = next(number for number, row in self.rows() if row.get('label') == label)
        self.menu().Event(dbus.Int32(number), 'clicked', dbus.String('', variant_level=1), dbus.UInt32(0))


def main():
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    bus = dbus.SessionBus()
    Control(bus, Watcher(bus))
    name = dbus.service.BusName(WATCHER, bus, do_not_queue=True)
    GLib.MainLoop().run()
    del name


if __name__ == '__main__':
    main()
