#!/usr/bin/python3
"""The session manager of an X11 desktop, for tests (XSMP, by the C libraries of X).

The first line of standard output is where programs reach it (SESSION_MANAGER). Then each thing that a program does is a
JSON line. A line on standard input is a logout.
"""
import ctypes as c
import json
import os
import select
import sys

ICE, SM = c.CDLL('libICE.so.6'), c.CDLL('libSM.so.6')
SAVE_LOCAL, SAVE_BOTH, NO_QUESTIONS, ANY_QUESTIONS = 1, 2, 0, 2


def tell(event, **members):
    print(json.dumps({'event': event} | members), flush=True)


class Value(c.Structure):
    _fields_ = [('length', c.c_int), ('value', c.c_void_p)]


class Property(c.Structure):
    _fields_ = [('name', c.c_char_p), ('type', c.c_char_p), ('count', c.c_int), ('values', c.POINTER(Value))]


HANDLERS = {  # what each gets beside the connection and a pointer of ours, in the order of the library's table
    'register_client': [c.c_void_p], 'interact_request': [c.c_int], 'interact_done': [c.c_int],
    'save_yourself_request': [c.c_int] * 5, 'save_yourself_phase2_request': [], 'save_yourself_done': [c.c_int],
    'close_connection': [c.c_int, c.c_void_p], 'set_properties': [c.c_int, c.POINTER(c.POINTER(Property))],
    'delete_properties': [c.c_int, c.c_void_p], 'get_properties': []}
RESULTS = {'register_client': c.c_int}


class Manager:
    def __init__(self):
        self.clients, self.is_ending, self.kept = [], False, []
        new_client = c.CFUNCTYPE(c.c_int, c.c_void_p, c.c_void_p, c.POINTER(c.c_ulong), c.POINTER(c.c_void_p), c.c_void_p)
        admit = c.CFUNCTYPE(c.c_int, c.c_char_p)(lambda _: 1)
        ignored = c.CFUNCTYPE(None, c.c_void_p)(lambda _: None)
        self.kept += [new_client(self.new_client), admit, ignored]
        ICE.IceSetIOErrorHandler(ignored)
        error = c.create_string_buffer(256)
        SM.SmsInitialize(b'test', b'1', self.kept[0], None, admit, 256, error)
        count, listeners = c.c_int(), c.POINTER(c.c_void_p)()
        if not ICE.IceListenForConnections(c.byref(count), c.byref(listeners), 256, error):
            sys.exit(error.value.decode())
        self.listeners = {}
        for number in range(count.value):
            listener = c.c_void_p(listeners[number])
            ICE.IceSetHostBasedAuthProc(listener, admit)
            self.listeners[ICE.IceGetListenConnectionNumber(listener)] = listener
        ICE.IceComposeNetworkIdList.restype = c.c_char_p
        print(ICE.IceComposeNetworkIdList(count, listeners).decode(), flush=True)
        self.connections = {}

    def new_client(self, client, _data, mask, callbacks, _failure):
        mask[0] = 0x3FF
        for number, (name, arguments) in enumerate(HANDLERS.items()):
            kind = c.CFUNCTYPE(RESULTS.get(name), c.c_void_p, c.c_void_p, *arguments)
            handler = kind(getattr(self, name, None) or (lambda *_, name=name: tell(name)))
            self.kept.append(handler)
            callbacks[2 * number] = c.cast(handler, c.c_void_p)
            callbacks[2 * number + 1] = None
        return 1

    def register_client(self, client, _data, _earlier):
        client = c.c_void_p(client)
        SM.SmsRegisterClientReply(client, b'10a0b1c2d3')
        SM.SmsSaveYourself(client, SAVE_LOCAL, 0, NO_QUESTIONS, 0)
        self.clients.append(client)
        tell('registered')
        return 1

    def set_properties(self, _client, _data, count, properties):
        for number in range(count):
            entry = properties[number].contents
            values = [c.string_at(entry.values[place].value, entry.values[place].length) for place in range(entry.count)]
            tell('property', name=entry.name.decode(), values=[value.decode('latin-1') for value in values])

    def save_yourself_done(self, client, _data, is_saved):
        client = c.c_void_p(client)
        tell('saved', success=bool(is_saved))
        (SM.SmsDie if self.is_ending else SM.SmsSaveComplete)(client)

    def close_connection(self, client, *_):
        tell('closed')
        self.clients = [other for other in self.clients if other.value != client]

    def log_out(self):
        self.is_ending = True
        for client in self.clients:
            SM.SmsSaveYourself(client, SAVE_BOTH, 1, ANY_QUESTIONS, 0)

    def run(self):
        while True:
            ready, _, _ = select.select([0, *self.listeners, *self.connections], [], [])
            for number in ready:
                if number == 0:
                    if not os.read(0, 100):
                        return
                    self.log_out()
                elif number in self.listeners:
                    ICE.IceAcceptConnection.restype = c.c_void_p
                    connection = c.c_void_p(ICE.IceAcceptConnection(self.listeners[number], c.byref(c.c_int())))
                    self.connections[ICE.IceConnectionNumber(connection)] = connection
                elif ICE.IceProcessMessages(self.connections[number], None, None) != 0:
                    del self.connections[number]


Manager().run()
