"""Lists and controls windows on the session's display, which is an X server or a Wayland compositor inside one.

All lengths are pixels of the X server, because the pointer and the screenshots belong to the X server."""

import dataclasses
import json
import os
import pathlib
import subprocess
import time
import uuid

from close_requests import request_close
from timeout import TIMEOUT

IS_WAYLAND = "KS7_WAYLAND_SCALE" in os.environ


@dataclasses.dataclass
class Window:
    """A window's properties from the window manager. `box` is x, y, width and height without the window's frame.
    `frame` includes the frame, but only on Wayland."""
    id: str
    title: str
    box: tuple
    frame: tuple
    active: bool = False
    modal: bool = False
    transient: bool = False
    maximizable: bool = True
    desktop_file: str = ""


def xdotool(*arguments):
    done = subprocess.run(["xdotool", *map(str, arguments)], capture_output=True, text=True, stdin=subprocess.DEVNULL)
    return done.stdout.strip()


class XScreen:
    scale = 1

    def ids(self, pid):
        return xdotool("search", "--onlyvisible", "--pid", pid).split()

    def windows(self, pid):
        active = xdotool("getactivewindow")
        boxes = [(window, x_box(window)) for window in self.ids(pid)]
        return [Window(window, xdotool("getwindowname", window), box, box, active=window == active)
                for window, box in boxes if box]

    def resize(self, window, width, height):
        xdotool("windowsize", "--sync", window.id, width, height)

    def minimize(self, window):
        xdotool("windowminimize", "--sync", window.id)

    def restore(self, window):
        xdotool("windowmap", "--sync", window.id)

    def read_colours(self):
        """Does nothing: a window manager on X has colours of its own."""

    def close(self, window):
        """Closes the window as the button in its title bar does."""
        request_close(window.id)


class KWinScreen:
    """Reads and changes windows with scripts that run in KWin, because a Wayland client cannot read window positions.
    The scripts log their results."""

    scale = float(os.environ.get("KS7_WAYLAND_SCALE", 1))
    all_windows = """workspace.stackingOrder.filter(window => window.pid == %d).map(window => ({
        id: String(window.internalId), title: window.caption, box: window.clientGeometry, frame: window.frameGeometry,
        active: window.active, modal: window.modal, transient: window.transient,
        maximizable: window.maximizable, desktop_file: window.desktopFileName}))"""
    of_id = "workspace.stackingOrder.find(window => String(window.internalId) == %s)"

    def ids(self, pid):
        return [window.id for window in self.windows(pid)]

    def windows(self, pid):
        return [Window(**{**told, "box": self._pixels(told["box"]), "frame": self._pixels(told["frame"])})
                for told in self.evaluate(self.all_windows % pid)]

    def _pixels(self, geometry):
        return tuple(round(geometry[name] * self.scale) for name in ("x", "y", "width", "height"))

    def resize(self, window, width, height):
        frame_width, frame_height = (window.frame[side] - window.box[side] for side in (2, 3))
        self._change(window, "frameGeometry = {x: 0, y: 0, width: %f, height: %f}" % (
            (width + frame_width) / self.scale, (height + frame_height) / self.scale))

    def minimize(self, window):
        self._change(window, "minimized = true")

    def restore(self, window):
        self._change(window, "minimized = false")

    def close(self, window):
        self._change(window, "closeWindow()")

    def activate_nothing(self):
        self.evaluate("(workspace.activeWindow = null, 1)")

    def read_colours(self):
        """Tells KWin that kdeglobals has changed, as System Settings does. KWin then paints title bars in the new
        colours."""
        from gi.repository import Gio, GLib
        bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        changes = GLib.Variant("(a{saay})", ({"General": [b"ColorScheme"]},))
        bus.emit_signal(None, "/kdeglobals", "org.kde.kconfig.notify", "ConfigChanged", changes)
        bus.flush_sync(None)

    def _change(self, window, change):
        self.evaluate(f"({self.of_id % json.dumps(window.id)}.{change}, 1)")

    def evaluate(self, expression):
        """Evaluates an expression in KWin's scripting language and returns the result."""
        name = f"ks7-{uuid.uuid4()}"
        folder = pathlib.Path(os.environ["KS7_SESSION_FOLDER"])
        script = folder / f"{name}.js"
        script.write_text(f"console.warn('{name} ' + JSON.stringify({expression}) + ' end')")
        number = self._call("/Scripting", "org.kde.kwin.Scripting", "loadScript", "(ss)", str(script), name)
        try:
            self._call(f"/Scripting/Script{number}", "org.kde.kwin.Script", "run")
            return json.loads(self._answer(folder / "wayland.log", name))
        finally:
            self._call("/Scripting", "org.kde.kwin.Scripting", "unloadScript", "(s)", name)
            script.unlink()

    @staticmethod
    def _answer(log, name):
        deadline = time.monotonic() + TIMEOUT
        while time.monotonic() < deadline:
            for line in log.read_text(errors="replace").splitlines():
                if f"{name} " in line and line.endswith(" end"):
                    return line.split(f"{name} ", 1)[1][:-len(" end")]
            time.sleep(0.01)
        raise AssertionError(f"KWin did not run a script; see {log}")

    @staticmethod
    def _call(path, interface, method, signature=None, *arguments):
        from gi.repository import Gio, GLib
        bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        parameters = GLib.Variant(signature, arguments) if signature else None
        answer = bus.call_sync("org.kde.KWin", path, interface, method, parameters, None, Gio.DBusCallFlags.NONE,
                               TIMEOUT * 1000, None).unpack()
        return answer[0] if answer else None


def x_box(window):
    """Returns x, y, width and height without the window's frame. Returns None if the window no longer exists."""
    told = subprocess.run(["xwininfo", "-id", window], capture_output=True, text=True, stdin=subprocess.DEVNULL).stdout
    wanted = ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")
    lines = dict(line.strip().split(":", 1) for line in told.splitlines() if ":" in line)
    return tuple(int(lines[name]) for name in wanted) if all(name in lines for name in wanted) else None


SCREEN = KWinScreen() if IS_WAYLAND else XScreen()
