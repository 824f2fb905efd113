"""Requests the close of X windows, as the close button in a title bar does.

Use these requests instead of Alt+F4 where a test is not about the key. The window manager sometimes misses the first
shortcut of a session, and xdotool has no command for a close request."""

import ctypes
import subprocess

CLIENT_MESSAGE = 33
SUBSTRUCTURE_NOTIFY_AND_REDIRECT = 1 << 19 | 1 << 20
# The source of the request: a user's action in another program, such as a taskbar.
PAGER = 2


class ClientMessage(ctypes.Structure):
    """XClientMessageEvent with data in format 32."""
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("window", ctypes.c_ulong), ("message_type", ctypes.c_ulong),
                ("format", ctypes.c_int), ("data", ctypes.c_long * 5)]


class Event(ctypes.Union):
    """XEvent. Xlib copies events of this size."""
    _fields_ = [("client", ClientMessage), ("pad", ctypes.c_long * 24)]


def _xlib():
    xlib = ctypes.CDLL("libX11.so.6")
    xlib.XOpenDisplay.restype = ctypes.c_void_p
    xlib.XDefaultRootWindow.restype = ctypes.c_ulong
    xlib.XDefaultRootWindow.argtypes = xlib.XCloseDisplay.argtypes = [ctypes.c_void_p]
    xlib.XInternAtom.restype = ctypes.c_ulong
    xlib.XInternAtom.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int]
    xlib.XSendEvent.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.c_int, ctypes.c_long, ctypes.POINTER(Event)]
    return xlib


def topmost_window(windows):
    """Returns the topmost of these windows, or None if the window manager controls none of them."""
    printed = subprocess.run(["xprop", "-root", "_NET_CLIENT_LIST_STACKING"], capture_output=True, text=True,
                          stdin=subprocess.DEVNULL, check=True).stdout
    stack = [str(int(window, 16)) for window in printed.partition("#")[2].replace(",", " ").split()]
    return next((window for window in reversed(stack) if window in windows), None)


def request_close(window):
    """Sends the window manager one request to close the window."""
    xlib = _xlib()
    display = xlib.XOpenDisplay(None)
    if not display:
        raise RuntimeError("the display cannot be opened")
    message = xlib.XInternAtom(display, b"_NET_CLOSE_WINDOW", False)
    event = Event(client=ClientMessage(type=CLIENT_MESSAGE, window=int(window), message_type=message, format=32))
    event.client.data[1] = PAGER
    xlib.XSendEvent(display, xlib.XDefaultRootWindow(display), False, SUBSTRUCTURE_NOTIFY_AND_REDIRECT,
                    ctypes.byref(event))
    # XCloseDisplay() sends the request before it disconnects.
    xlib.XCloseDisplay(display)
