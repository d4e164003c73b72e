"""Another program that holds a shortcut.

    key_holder.py [CODE MODIFIERS]     holds that key, else Shift+Super+E; a window titled KeyHolder
                                       says that it does
    key_holder.py --try CODE MODIFIERS ends with status 0 if that key was free with every set of locks
"""
import ctypes
import ctypes.util
import os
import sys

SHIFT, SUPER, CAPS, NUM = 1, 64, 2, 16
KEY_E = 26
ASYNC = 1

x11 = ctypes.CDLL(ctypes.util.find_library("X11") or "libX11.so.6")
x11.XOpenDisplay.restype = ctypes.c_void_p
x11.XDefaultRootWindow.argtypes = [ctypes.c_void_p]
x11.XDefaultRootWindow.restype = ctypes.c_ulong
x11.XGrabKey.argtypes = [ctypes.c_void_p, ctypes.c_int, ctypes.c_uint, ctypes.c_ulong, ctypes.c_int,
                         ctypes.c_int, ctypes.c_int]
x11.XCreateSimpleWindow.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.c_int, ctypes.c_int,
                                    ctypes.c_uint, ctypes.c_uint, ctypes.c_uint, ctypes.c_ulong,
                                    ctypes.c_ulong]
x11.XCreateSimpleWindow.restype = ctypes.c_ulong
x11.XStoreName.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.c_char_p]
x11.XMapWindow.argtypes = [ctypes.c_void_p, ctypes.c_ulong]
x11.XNextEvent.argtypes = [ctypes.c_void_p, ctypes.c_void_p]
x11.XSync.argtypes = [ctypes.c_void_p, ctypes.c_int]
ErrorHandler = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)

display = x11.XOpenDisplay(None)
root = x11.XDefaultRootWindow(display)


def grab(key, modifiers):
    """False where another program has it with any of the locks."""
    refused = []
    handler = ErrorHandler(lambda *_: refused.append(True) or 0)
    x11.XSetErrorHandler(handler)
    for locks in (0, CAPS, NUM, CAPS | NUM):
        x11.XGrabKey(display, key, modifiers | locks, root, 0, ASYNC, ASYNC)
    x11.XSync(display, 0)
    return not refused


def hold(key=KEY_E, modifiers=SHIFT | SUPER):
    grab(key, modifiers)
    window = x11.XCreateSimpleWindow(display, root, 20, 800, 40, 20, 0, 0, 0)
    x11.XStoreName(display, window, b"KeyHolder")
    x11.XMapWindow(display, window)
    event = ctypes.create_string_buffer(256)
    while True:
        x11.XNextEvent(display, event)


if sys.argv[1:2] == ["--try"]:
    os._exit(0 if grab(int(sys.argv[2]), int(sys.argv[3])) else 1)
hold(*map(int, sys.argv[1:]))
