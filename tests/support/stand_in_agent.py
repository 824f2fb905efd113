"""The stand-in agent as a test's partner: starts it, plays it, and listens to what it posts."""

import os
import pathlib
import plistlib
import subprocess
import time

import dbus
import dbus.mainloop.glib
from gi.repository import GLib

dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)

TIMEOUT = 90
NOTIFICATIONS = "com.orvex.DistributedNotificationCenter"
NOTIFICATIONS_PATH = "/com/orvex/DistributedNotificationCenter"
AGENT = "com.orvex.KS7AgentServer"
AGENT_USB = "com.orvex.KS7AgentServerUSB"
SCRIPT = "com.orvex.KS7AgentSimulator"
PROGRAM = pathlib.Path(os.environ["KS7_BUILD"]) / "bin" / "ks7-agent-simulator"
PREFERENCES = pathlib.Path(os.environ["XDG_CONFIG_HOME"]) / "com.orvex.KS7Agent.plist"


def wait_until(condition, what):
    """Turns the event loop until the condition holds; returns what it answered."""
    deadline = time.monotonic() + TIMEOUT
    context = GLib.MainContext.default()
    tick = GLib.timeout_add(20, lambda: True)
    try:
        while True:
            result = condition()
            if result:
                return result
            if time.monotonic() > deadline:
                raise AssertionError(f"waited in vain: {what}")
            context.iteration(True)
    finally:
        GLib.source_remove(tick)


def preferences():
    return plistlib.loads(PREFERENCES.read_bytes())


class Ear:
    """Hears every notification and every change of a name's owner, in the order of the bus."""

    def __init__(self, bus):
        self.heard = []
        self.matches = [
            bus.add_signal_receiver(self.notification, dbus_interface=NOTIFICATIONS, path=NOTIFICATIONS_PATH,
                                    member_keyword="member"),
            bus.add_signal_receiver(self.owner_changed, "NameOwnerChanged", "org.freedesktop.DBus"),
        ]

    def notification(self, *arguments, member):
        self.heard.append((member, arguments[0] if arguments else None))

    def owner_changed(self, name, _old, new):
        if not name.startswith(":"):
            self.heard.append((f"{name} {'taken' if new else 'released'}", None))

    def names(self):
        return [name for name, _ in self.heard]

    def infos(self, name):
        return [info for heard, info in self.heard if heard == name]

    def count(self, name):
        return self.names().count(name)

    def forget(self):
        self.heard.clear()

    def close(self):
        for match in self.matches:
            match.remove()


class StandInAgent:
    def __init__(self, *options, **process_options):
        self.bus = dbus.SessionBus()
        self.ear = Ear(self.bus)
        self.process = subprocess.Popen([PROGRAM, *options], **process_options)
        wait_until(lambda: self.has_ended() or "KS7AgentStarted" in self.ear.names(), "the agent has started")

    def interface(self, name, interface):
        proxy = self.bus.get_object(name, "/" + name.replace(".", "/"), introspect=False)
        return dbus.Interface(proxy, interface)

    @property
    def devices(self):
        return self.interface(AGENT, "com.orvex.KS7DeviceControllerProxy")

    @property
    def usb(self):
        return self.interface(AGENT_USB, "com.orvex.TernUSBCommandControllerProxy")

    @property
    def script(self):
        return self.interface(SCRIPT, SCRIPT)

    def pane_posts(self, name, user_info=None):
        message = dbus.lowlevel.SignalMessage(NOTIFICATIONS_PATH, NOTIFICATIONS, name)
        message.append(dbus.Dictionary(user_info or {}, signature="sv"), signature="a{sv}")
        self.bus.send_message(message)

    def add_camera(self, address, name="Camera", status=1):
        self.script.addCamera(address, name, address[-5:].replace("-", "").upper(), status,
                              signature="sssi")

    def wait_for_post(self, name, times=1):
        wait_until(lambda: self.ear.count(name) >= times, f"{name} is posted")

    def posts_of(self, act):
        """What is posted while this is done, in order."""
        self.listen_up()
        self.ear.forget()
        act()
        self.listen_up()
        return self.ear.names()[:-1]

    def listen_up(self):
        """Waits until everything posted by now has been heard: a mark comes after all that went before it."""
        marks = self.ear.count("KS7Mark")
        self.script.post("KS7Mark", dbus.Dictionary({}, signature="sv"))
        self.wait_for_post("KS7Mark", marks + 1)

    def status_of(self, address):
        return int(self.devices.cameraDict()[address]["Status"])

    def has_ended(self):
        return self.process.poll() is not None

    def end(self):
        if not self.has_ended():
            self.process.terminate()
        code = self.process.wait(TIMEOUT)
        wait_until(lambda: not self.bus.name_has_owner(AGENT), "the names are released")
        self.ear.close()
        return code
