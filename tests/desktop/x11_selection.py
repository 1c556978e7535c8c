#!/usr/bin/python3
"""The other side of a selection of X11, with the manners that a test asks for: x11_selection COMMAND...

hang              owns the clipboard and answers nobody
stop BYTES        owns it with a long text, and gives only that much of it
pieces TEXT       owns it with the text, given in pieces of one character
files             owns it with files alone
manager FILE      is the clipboard manager: writes down what it is given to keep, and its formats
ask TARGET...     asks for several targets at once (MULTIPLE), prints each with its type
targets           prints the names of what the owner gives
take TARGET       prints the type of that target and whether it came at once or in pieces
dawdle            begins to read, and never reads on
"""
import sys
import time

from Xlib import X, Xatom, display
from Xlib.protocol import event

DISPLAY = display.Display()
WINDOW = DISPLAY.screen().root.create_window(0, 0, 1, 1, 0, X.CopyFromParent, event_mask=X.PropertyChangeMask)


def atom(name):
    return DISPLAY.intern_atom(name)


def name(number):
    return DISPLAY.get_atom_name(number) if number else None


def say(*words):
    print(*words, flush=True)


def own(selection):
    WINDOW.set_selection_owner(atom(selection), X.CurrentTime)
    DISPLAY.flush()
    say('ready')


def notify(request, prop):
    request.requestor.send_event(event.SelectionNotify(
        time=request.time, requestor=request.requestor, selection=request.selection, target=request.target,
        property=prop))
    DISPLAY.flush()


def serve(targets, convert):
    """Answers requests until another program takes the selection."""
    own('CLIPBOARD')
    while True:
        request = DISPLAY.next_event()
        if request.type == X.SelectionClear:
            return
        if request.type != X.SelectionRequest:
            continue
        if request.target == atom('TARGETS'):
            request.requestor.change_property(request.property, Xatom.ATOM, 32, [atom(target) for target in targets])
            notify(request, request.property)
        elif name(request.target) in targets:
            convert(request)
        else:
            notify(request, X.NONE)


def give_pieces(pieces):
    def convert(request):
        request.requestor.change_attributes(event_mask=X.PropertyChangeMask)
        request.requestor.change_property(request.property, atom('INCR'), 32, [1])
        notify(request, request.property)
        for piece in pieces:
            wait_for_property(request.requestor, request.property, X.PropertyDelete)
            request.requestor.change_property(request.property, request.target, 8, piece)
            DISPLAY.flush()
    return convert


def wait_for_property(window, prop, state):
    while True:
        change = DISPLAY.next_event()
        if change.type == X.PropertyNotify and (change.window.id, change.atom, change.state) == (window.id, prop, state):
            return


def convert(selection, target, prop='ANSWER'):
    """What the owner answers: the property, or nothing."""
    WINDOW.convert_selection(atom(selection), atom(target), atom(prop), X.CurrentTime)
    while True:
        answer = DISPLAY.next_event()
        if answer.type == X.SelectionNotify:
            return answer.property != X.NONE


def taken(prop):
    return WINDOW.get_full_property(atom(prop), X.AnyPropertyType, sizehint=1 << 20)


def read(selection, target):
    """The type, whether it came in pieces, and the bytes."""
    if not convert(selection, target):
        return None, False, b''
    answer = taken('ANSWER')
    if answer.property_type != atom('INCR'):
        return name(answer.property_type), False, answer.value
    pieces, kind = [], None
    while True:
        WINDOW.delete_property(atom('ANSWER'))
        wait_for_property(WINDOW, atom('ANSWER'), X.PropertyNewValue)
        piece = taken('ANSWER')
        kind = name(piece.property_type)
        if not len(piece.value):
            WINDOW.delete_property(atom('ANSWER'))
            DISPLAY.flush()
            return kind, True, b''.join(pieces)
        pieces.append(bytes(piece.value))


def hang():
    own('CLIPBOARD')
    while True:
        time.sleep(1000)


def stop(count):
    sent = [b'x' * int(count)]
    convert_once = give_pieces(sent)
    serve(['UTF8_STRING'], convert_once)


def pieces(text):
    serve(['UTF8_STRING'], give_pieces([*(letter.encode() for letter in text), b'']))


def files():
    def give(request):
        request.requestor.change_property(request.property, request.target, 8, b'file:///tmp/one\r\n')
        notify(request, request.property)
    serve(['text/uri-list', 'x-special/gnome-copied-files'], give)


def manager(path):
    own('CLIPBOARD_MANAGER')
    while True:
        request = DISPLAY.next_event()
        if request.type != X.SelectionRequest:
            continue
        assert request.target == atom('SAVE_TARGETS')
        _, _, targets = read('CLIPBOARD', 'TARGETS')
        kind, _, value = read('CLIPBOARD', 'UTF8_STRING')
        with open(path, 'wb') as kept:
            kept.write(bytes(value))
        notify(request, request.property)
        say('kept', kind, *map(name, targets))


def ask(*targets):
    pairs = [number for target in targets for number in (atom(target), atom(f'ANSWER_{target}'))]
    WINDOW.change_property(atom('ANSWER'), atom('ATOM_PAIR'), 32, pairs)
    say('answered' if convert('CLIPBOARD', 'MULTIPLE') else 'refused')
    places = taken('ANSWER').value[1::2]
    for target, place in zip(targets, places):
        answer = taken(f'ANSWER_{target}') if place else None
        say(target, name(answer.property_type) if answer else None)


def dawdle():
    convert('CLIPBOARD', 'UTF8_STRING')
    say(name(taken('ANSWER').property_type))
    WINDOW.delete_property(atom('ANSWER'))
    DISPLAY.flush()
    while True:
        time.sleep(1000)


def take(target):
    kind, in_pieces, value = read('CLIPBOARD', target)
    say(kind, 'in pieces' if in_pieces else 'at once', len(value))


def targets():
    say(*sorted(map(name, read('CLIPBOARD', 'TARGETS')[2])))


if __name__ == '__main__':
    globals()[sys.argv[1]](*sys.argv[2:])
