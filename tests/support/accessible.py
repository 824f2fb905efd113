"""Drives a program as a screen reader and a user do. The helpers use AT-SPI and the X server, in which a nested Wayland
session is also visible.

    with accessible.launch(["build/bin/ks7-preferences"]) as program:
        program.wait_for("Kitchen, Streaming")       # any object with this text or name
        program.press("Add Camera")                  # the action that assistive tools invoke
        program.click(program.find(role="table cell"))   # a real mouse click
        program.set_text(program.find(role="text"), "Desk")

The helpers need a private session (private_session.py --bus --display, or --wayland). Every wait polls a condition. If
the wait fails, the message contains the accessible tree.
"""

import atexit
import contextlib
import os
import signal
import subprocess
import time
import warnings

from screens import IS_WAYLAND, SCREEN, xdotool
from timeout import TIMEOUT

POLL = 0.05
# Limits of AT-SPI calls in milliseconds. A program may block while it waits for its agent, so its replies may be late.
# An action that opens a menu or a nested event loop replies only when that ends, so do not wait for this reply.
SLOW_ANSWER = 20000
ACTION_ANSWER = 1000
# Maps role names of newer AT-SPI and Qt versions to the names that tests use.
ROLES = {"button": "push button", "push button menu": "push button", "button menu": "push button"}
# The event of an announcement. Qt 6.8 has one for it. With Qt 5 the pane shows a notification object instead.
ANNOUNCEMENTS = "object:announcement" if os.environ.get("KS7_QT_VERSION") == "6" else "object:state-changed:showing"
BUS_LAUNCHER = "/usr/libexec/at-spi-bus-launcher"


class NotThere(AssertionError):
    """Raised when an awaited condition did not become true in time."""


def wait_until(condition, what, details=lambda: "", timeout=TIMEOUT):
    """Returns the first true value of `condition`. The failure message names the condition with `what`."""
    deadline = time.monotonic() + timeout
    while True:
        found = condition()
        if found:
            return found
        if time.monotonic() > deadline:
            raise NotThere(f"{what}: not within {timeout} s\n{details()}")
        time.sleep(POLL)


def key(*names):
    """Presses keys or chords by their X names, as in key("Tab") or key("alt+F4")."""
    xdotool("key", "--clearmodifiers", *names)


def point_at(x, y):
    """Moves the pointer and waits for it. xdotool --sync waits 15 s if the pointer is already there, so this case is
    skipped."""
    if not xdotool("getmouselocation").startswith(f"x:{x} y:{y} "):
        xdotool("mousemove", "--sync", x, y)


def type_text(text):
    xdotool("type", "--delay", 20, text)


@contextlib.contextmanager
def held(name):
    """Holds a key down during a with block, as in: with held("Alt_L")."""
    xdotool("keydown", name)
    try:
        yield
    finally:
        xdotool("keyup", name)


def screenshot(path, area=None):
    """Saves a picture of the whole display, or of an area (x, y, width, height)."""
    crop = ["-crop", "{2}x{3}+{0}+{1}".format(*area), "+repage"] if area else []
    subprocess.run(["import", "-window", "root", *crop, str(path)], check=True, stdin=subprocess.DEVNULL)


class _Bus:
    """The session's accessibility bus. Start it after the program, because a Qt program that starts later may never
    register on it."""

    launcher = None
    atspi = None

    @classmethod
    def start(cls):
        if cls.launcher is None:
            cls.launcher = subprocess.Popen([BUS_LAUNCHER, "--launch-immediately"], env=_environment({}),
                                            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                            stderr=subprocess.DEVNULL, start_new_session=True)
        if cls.atspi is None:
            os.environ.pop("NO_AT_BRIDGE", None)
            wait_until(cls.is_up, "the accessibility bus")
            import gi
            warnings.filterwarnings("ignore", category=DeprecationWarning, message="Atspi")
            gi.require_version("Atspi", "2.0")
            from gi.repository import Atspi
            Atspi.init()
            Atspi.set_timeout(SLOW_ANSWER, SLOW_ANSWER)
            cls.atspi = Atspi
        return cls.atspi

    @classmethod
    def is_up(cls):
        asked = subprocess.run(["dbus-send", "--session", "--print-reply", "--dest=org.a11y.Bus", "/org/a11y/bus",
                                "org.a11y.Bus.GetAddress"], capture_output=True, stdin=subprocess.DEVNULL)
        return asked.returncode == 0

    @classmethod
    def stop(cls):
        if cls.launcher is not None:
            cls.launcher.send_signal(signal.SIGTERM)
            cls.launcher.wait()
            cls.launcher = None


def _environment(additions):
    env = dict(os.environ, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", QT_ACCESSIBILITY="1", **additions)
    env.pop("NO_AT_BRIDGE", None)
    return env


def foreign_program_environment():
    """Returns the environment of a foreign program that loads our plug-in. If the plug-in has a sanitizer, the program
    must load the sanitizer's library first. Leaks of such a program do not count."""
    runtime = os.environ.get("KS7_SANITIZER_RUNTIME")
    if not runtime:
        return {}
    options = os.environ.get("ASAN_OPTIONS", "")
    return {"LD_PRELOAD": runtime, "ASAN_OPTIONS": ":".join(filter(None, (options, "detect_leaks=0")))}


def launch(command, env=None, windows=1, **options):
    """Starts a program. Returns it when its windows are mapped and it is on the accessibility bus."""
    process = subprocess.Popen([str(part) for part in command], env=_environment(env or {}),
                               stdin=subprocess.DEVNULL, **options)
    program = Program(process)
    try:
        wait_until(lambda: program.ended() or len(program.x_windows()) >= windows, f"a window of {command[0]}")
        if program.ended():
            raise NotThere(f"{command[0]} ended with {process.returncode} before it showed a window")
        program.attach()
    except BaseException:
        program.end()
        raise
    return program


@contextlib.contextmanager
def listen(event):
    """Collects the accessible events of one type during a with block, as in
    listen("object:property-change:accessible-name")."""
    atspi = _Bus.start()
    heard = Heard()
    listener = atspi.EventListener.new(heard.note)
    listener.register(event)
    try:
        yield heard
    finally:
        listener.deregister(event)


class Heard:
    """Collects the names of the events' sources in order. For announcements, it collects their texts instead."""

    def __init__(self):
        self._names = []

    def note(self, event, *_):
        if event.type.startswith("object:announcement"):
            self._names.append(event.any_data)
        # Every widget that appears sends "showing". Only a notification object is an announcement.
        elif not event.type.startswith("object:state-changed:showing") or role_of(event.source) == "notification":
            self._names.append(name_of(event.source))

    def names(self):
        from gi.repository import GLib
        while GLib.MainContext.default().iteration(False):
            pass
        return list(self._names)

    def forget(self):
        self._names.clear()

    def wait_ready(self, agent):
        """Has the agent start and end searches until the first announcement is received. A program starts to send
        events only some time after a listener has registered."""
        def told():
            agent.post("KS7StartedDiscovering", {})
            agent.post("KS7StoppedDiscovering", {})
            return self.names()
        wait_until(told, "the first announcement")

    def wait_for(self, name):
        wait_until(lambda: name in self.names(), f"word of {name!r}", details=lambda: str(self._names))


class Program:
    """A running program: its accessible tree, and input to its widgets."""

    def __init__(self, process):
        self.process = process
        self.atspi = None
        self.root = None

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.end()

    # The process and its windows

    def ended(self):
        return self.process.poll() is not None

    def end(self):
        if not self.ended():
            self.process.terminate()
            try:
                self.process.wait(TIMEOUT)
            except subprocess.TimeoutExpired:
                self.process.kill()
                self.process.wait()

    def wait_ended(self):
        """Waits until the program ends by itself, and returns its exit code."""
        wait_until(self.ended, "the end of the program", details=self.dump)
        return self.process.returncode

    def x_windows(self):
        """Returns the display's identifiers of the program's visible windows."""
        return SCREEN.ids(self.process.pid)

    def windows(self):
        """Returns the program's visible windows with their properties. On Wayland, the topmost window is the last."""
        return SCREEN.windows(self.process.pid)

    def title(self):
        return self.windows()[0].title

    def x_area(self, frame=(0, 0, 0, 0) if IS_WAYLAND else (2, 22, 2, 7)):
        """Returns the area of the display that the program's windows cover. `frame` adds a margin (left, top, right,
        bottom)."""
        boxes = [window.frame for window in self.windows()]
        x = max(0, min(box[0] for box in boxes) - frame[0])
        y = max(0, min(box[1] for box in boxes) - frame[1])
        right = max(box[0] + box[2] for box in boxes) + frame[2]
        bottom = max(box[1] + box[3] for box in boxes) + frame[3]
        return x, y, right - x, bottom - y

    def wait_active(self, title=None):
        """Waits until one of the program's windows has the focus, because keys sent before that are lost."""
        def is_active():
            return next((node for node in _children(self.root) if self.has(node, "active") and
                         title in (None, name_of(node))), None)
        return wait_until(is_active, f"the keyboard in {title or 'a window'}", details=self.dump)

    def close_by_key(self):
        """Closes the window with Alt+F4 and returns the program's exit code."""
        self.wait_active()
        # The window manager closes the window that it knows as active. It may learn of the focus after the program.
        wait_until(lambda: any(window.active for window in self.windows()), "the window manager's active window",
                   details=self.dump)
        key("alt+F4")
        return self.wait_ended()

    def attach(self):
        self.atspi = _Bus.start()
        wait_until(lambda: self.ended() or self._find_root(), "the program on the accessibility bus")
        if self.ended():
            raise NotThere(f"the program ended with {self.process.returncode} before it could be looked at")

    def _find_root(self):
        desktop = self.atspi.get_desktop(0)
        desktop.clear_cache()
        for application in _children(desktop):
            if application.get_process_id() == self.process.pid:
                application.set_cache_mask(self.atspi.Cache.NONE)
                self.root = application
                return application
        return None

    # Reading the accessible tree

    def nodes(self, within=None):
        """Yields all accessible objects, parents first, freshly read from the program."""
        pending = [within or self.root]
        while pending:
            node = pending.pop()
            yield node
            pending.extend(reversed(_children(node)))

    def all(self, name=None, role=None, showing=True, within=None):
        """Returns the objects with this name (or text) and this role, such as "push button", "check box" or "table
        cell"."""
        return [node for node in self.nodes(within) if _matches(self, node, name, role, showing)]

    def find(self, name=None, role=None, showing=True, within=None):
        """Returns the first matching object, or None."""
        return next((node for node in self.nodes(within) if _matches(self, node, name, role, showing)), None)

    def wait_for(self, name=None, role=None, showing=True, within=None, timeout=TIMEOUT):
        return wait_until(lambda: self.find(name, role, showing, within), f"{role or 'something'} {name!r}",
                          self.dump, timeout)

    def wait_gone(self, name=None, role=None, within=None):
        wait_until(lambda: not self.find(name, role, True, within), f"the going of {role or ''} {name!r}",
                   details=self.dump)

    def wait_state(self, node, state, is_set=True):
        """Waits for a state such as "enabled", "checked", "focused", "selected" or "showing"."""
        node = self._node(node)
        wait_until(lambda: self.has(node, state) == is_set, f"{name_of(node)!r} {'' if is_set else 'not '}{state}",
                   details=self.dump)

    def has(self, node, state):
        node = self._node(node)
        value = getattr(self.atspi.StateType, state.upper())
        return bool(_asked(lambda: node.get_state_set().contains(value), False))

    def focused(self):
        """Returns the name of the focused object, or "". For a row of a table, returns the table's name."""
        with_focus = [node for node in self.nodes() if self.has(node, "focused") and role_of(node) != "list item"]
        if not with_focus:
            return ""
        is_row = role_of(with_focus[-1]) == "table cell"
        return name_of(with_focus[-1].get_parent() if is_row else with_focus[-1])

    def wait_focused(self, name):
        wait_until(lambda: self.focused() == name, f"the keyboard on {name!r}",
                   details=lambda: f"it is on {self.focused()!r}\n{self.dump()}")

    def names(self, role, within=None):
        """Returns the names of all objects of one role in order, such as the rows of a list."""
        return [name_of(node) for node in self.all(role=role, within=within)]

    def text(self, node):
        """Returns the text of a field or label."""
        node = self._node(node)
        interface = _asked(node.get_text_iface, None)
        if interface is None:
            return name_of(node)
        # Call the function of the Text class. In newer bindings, the object has another method of the same name.
        text = self.atspi.Text
        return _asked(lambda: text.get_text(interface, 0, text.get_character_count(interface)), "")

    def value(self, node):
        """Returns the value of a meter or progress bar."""
        node = self._node(node)
        return _asked(lambda: node.get_value_iface().get_current_value(), None)

    def related(self, node, kind):
        """Returns the objects that have a relation to this one, such as "labelled-by" or "label-for"."""
        relations = _asked(self._node(node).get_relation_set, [])
        return [relation.get_target(index) for relation in relations
                if relation.get_relation_type().value_nick == kind for index in range(relation.get_n_targets())]

    def rectangle(self, node):
        """Returns the object's x, y, width and height on the display."""
        node = self._node(node)
        box = self._extents(node)
        if not IS_WAYLAND:
            return box
        # A Wayland client only knows positions relative to its window, so add the window's position on the display.
        top = self._top(node)
        origin, window = self._extents(top), self._window_of(top)
        return (window.box[0] + round((box[0] - origin[0]) * SCREEN.scale),
                window.box[1] + round((box[1] - origin[1]) * SCREEN.scale),
                round(box[2] * SCREEN.scale), round(box[3] * SCREEN.scale))

    def _extents(self, node):
        box = node.get_component_iface().get_extents(self.atspi.CoordType.SCREEN)
        return box.x, box.y, box.width, box.height

    def _top(self, node):
        parent = node.get_parent()
        while parent is not None and role_of(parent) != "application":
            node, parent = parent, parent.get_parent()
        return node

    def _window_of(self, top):
        """Returns the display's window that shows a top-level accessible object. Compares the titles, then the
        sizes."""
        width, height = (round(length * SCREEN.scale) for length in self._extents(top)[2:])

        def unlikeness(window):
            return (window.title != name_of(top), abs(window.box[2] - width) + abs(window.box[3] - height))
        return min(reversed(wait_until(self.windows, "a window", details=self.dump)), key=unlikeness)

    def dump(self):
        """Returns the accessible tree as text, for failure messages."""
        lines = []

        def walk(node, depth):
            shown = "" if self.has(node, "showing") else " (hidden)"
            lines.append(f"{'  ' * depth}{role_of(node)} {name_of(node)!r}{shown}")
            for child in _children(node):
                walk(child, depth + 1)
        if self.root is not None and not self.ended():
            walk(self.root, 0)
        return "\n".join(lines) or f"(nothing; the program {'has ended' if self.ended() else 'is not attached'})"

    # Using the controls

    def press_if_there(self, node):
        """Presses a button that disappears when it is pressed, and waits until it has disappeared. Qt performs a press
        through AT-SPI only after an animation of 0.1 s. A second press would restart the animation."""
        with contextlib.suppress(NotThere):
            self.press(node, timeout=2)
            wait_until(lambda: not self.has(node, "showing"), f"the going of {name_of(node)!r}", timeout=2)

    def press(self, node, action=("press", "click", "toggle", "activate", "showmenu"), timeout=TIMEOUT):
        """Invokes the default action of a button, a check box or a menu item."""
        node = self._node(node)
        wanted = (action,) if isinstance(action, str) else action
        interface = node.get_action_iface()

        def offered():
            # The object may disappear during the reading, if the program rebuilds its menu. Then it offers no action.
            names = _asked(lambda: [interface.get_action_name(index).lower()
                                    for index in range(interface.get_n_actions())], [])
            return next((names.index(name) + 1 for name in wanted if name in names), 0)
        # Wait until the action exists, because a disabled control has none.
        index = wait_until(offered, f"any of {wanted} on {name_of(node)!r}", self.dump, timeout) - 1
        self.atspi.set_timeout(ACTION_ANSWER, SLOW_ANSWER)
        _asked(lambda: interface.do_action(index), False)
        self.atspi.set_timeout(SLOW_ANSWER, SLOW_ANSWER)

    def rectangle_at_rest(self, node):
        """Waits until three readings of the object's rectangle in a row are equal, and returns the rectangle."""
        readings = []

        def equal_readings():
            readings.append(self.rectangle(node))
            return readings[-3:].count(readings[-1]) == 3
        wait_until(equal_readings, "a rectangle at rest", details=self.dump)
        return readings[-1]

    def click(self, node, button=1, times=1):
        """Waits until the layout no longer moves the object, then clicks its centre with the mouse."""
        x, y, width, height = self.rectangle_at_rest(node)
        point_at(x + width // 2, y + height // 2)
        xdotool("click", "--repeat", times, "--delay", 40, button)

    def open_menu(self, button):
        """Opens a button's menu with the mouse and returns the identifier of the menu's window."""
        before = set(self.x_windows())
        self.click(button)
        return wait_until(lambda: set(self.x_windows()) - before, "the menu", details=self.dump).pop()

    def choose(self, button, item):
        """Opens a button's menu, waits until the item is enabled and clicks the item."""
        self.open_menu(button)
        entry = self.wait_for(item, role="menu item")
        self.wait_state(entry, "enabled")
        self.click(entry)

    def focus(self, node):
        node = self._node(node)
        node.get_component_iface().grab_focus()
        self.wait_focused(name_of(node))

    def set_text(self, node, text):
        """Replaces the text of a field and waits until the field has it."""
        node = self._node(node)
        node.get_editable_text_iface().set_text_contents(text)
        wait_until(lambda: self.text(node) == text, f"the text {text!r}", details=self.dump)

    def _node(self, node):
        return self.wait_for(node) if isinstance(node, str) else node


def _asked(question, otherwise):
    """Returns the result of the call, or `otherwise` if the object no longer exists."""
    try:
        return question()
    except Exception as error:
        # GLib reports a missing object with a GLib.Error. Compare the class's name, because gi may not be loaded yet.
        if type(error).__name__ not in ("GError", "Error", "AttributeError"):
            raise
        return otherwise


def _children(node):
    count = _asked(node.get_child_count, 0)
    children = (_asked(lambda index=index: node.get_child_at_index(index), None) for index in range(count))
    return [child for child in children if child is not None]


def role_of(node):
    name = _asked(node.get_role_name, "")
    return ROLES.get(name, name)


def name_of(node):
    """Returns the name, for a dialog without the program's name, which Qt 6.11 adds."""
    name = _asked(node.get_name, "") or ""
    return name.partition(" — ")[0] if " — " in name and role_of(node) in ("alert", "dialog") else name


def _matches(program, node, name, role, showing):
    if role is not None and role_of(node) != role:
        return False
    if name is not None and name_of(node) != name and program.text(node) != name:
        return False
    return not showing or program.has(node, "showing")


atexit.register(_Bus.stop)
