#!/usr/bin/python3
"""A file manager of tests: it loads a menu library of ours as the real one does, and chooses its entry.

Usage: file_manager.py Nautilus|Caja LIBRARY ADDRESS...   prints the label of the entry, if there is one, and a dot, and stays
"""
import ctypes
import sys

import gi
from gi.repository import GLib, GObject, Gio

HOST = sys.argv[1]
gi.require_version(HOST, '4.0' if HOST == 'Nautilus' else '2.0')
if HOST == 'Caja':
    gi.require_version('Gtk', '3.0')
Host = getattr(__import__('gi.repository', fromlist=[HOST]), HOST)


if HOST == 'Caja':
    from gi.repository import Gtk


class File(GObject.Object, Host.FileInfo):
    """What a file manager knows of a file."""

    def __init__(self, address):
        super().__init__()
        self.file = Gio.File.new_for_uri(address)

    def do_get_location(self):
        return self.file

    def do_get_file_type(self):
        return self.file.query_file_type(Gio.FileQueryInfoFlags.NONE, None)


class Module(GObject.TypeModule):
    """A library as GLib sees it, which is here for as long as the process."""

    def do_load(self):
        return True


def load(path):
    # The host's functions come from its own library, which the import has loaded.
    ctypes.CDLL({'Nautilus': 'libnautilus-extension.so.4', 'Caja': 'libcaja-extension.so.1'}[HOST], ctypes.RTLD_GLOBAL)
    library = ctypes.CDLL(path, ctypes.RTLD_GLOBAL)
    function = lambda name: getattr(library, f'{HOST.lower()}_module_{name}')
    module = Module()
    module.use()
    function('initialize')(ctypes.c_void_p(hash(module)))
    types, count = ctypes.POINTER(ctypes.c_size_t)(), ctypes.c_int()
    function('list_types')(ctypes.byref(types), ctypes.byref(count))
    assert count.value == 1
    return GObject.new(GObject.type_from_name('BrenvaleMenu')), module


def main():
    menu, module = load(sys.argv[2])
    files = [File(address) for address in sys.argv[3:]]
    window = [] if HOST == 'Nautilus' else [Gtk.Window()]
    items = Host.MenuProvider.get_file_items(menu, *window, files)
    for item in items:
        print(item.get_property('label'), flush=True)
        item.emit('activate')
    print('.', flush=True)
    GLib.MainLoop().run()


main()
