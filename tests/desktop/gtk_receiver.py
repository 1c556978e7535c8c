#!/usr/bin/python3
"""A GTK 3 window with a text view (or "entry": a single line): gtk_receiver.py FILE [entry] writes what it holds, a
JSON object a line."""
import json
import sys

import gi
gi.require_version('Gtk', '3.0')
from gi.repository import GLib, Gtk  # noqa: E402

log = open(sys.argv[1], 'a', buffering=1)
pending = []


def write(**what):
    log.write(json.dumps(what) + '\n')


def changed(holder):
    if not pending:
        pending.append(GLib.timeout_add(10, report, holder))


def report(holder):
    pending.clear()
    text = holder.get_text() if isinstance(holder, Gtk.Entry) else holder.get_property('text')
    write(text=text)
    return False


window = Gtk.Window(title='receiver')
window.set_default_size(600, 400)
if 'entry' in sys.argv[2:]:
    box = Gtk.Entry()
    box.connect('changed', changed)
else:
    box = Gtk.TextView()
    box.set_wrap_mode(Gtk.WrapMode.WORD_CHAR)
    box.get_buffer().connect('changed', changed)
box.connect('focus-in-event', lambda *_: write(focus=True) or False)
window.add(box)
window.connect('destroy', Gtk.main_quit)
window.show_all()
Gtk.main()
