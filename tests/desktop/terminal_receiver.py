#!/usr/bin/python3
"""Runs in a terminal and writes all bytes that come to a file, behind one that says that it is ready."""
import os
import sys
import tty

tty.setraw(0)
file = os.open(sys.argv[1], os.O_WRONLY | os.O_APPEND)
os.write(file, b'!')
while data := os.read(0, 65536):
    os.write(file, data)
