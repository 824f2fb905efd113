"""Drives the stand-in agent, ks7-agent-simulator.

    agent = stand_in.Agent()                    # an agent that already runs on this session's bus
    agent.wait_up()
    agent.setStatus("00-1b-dc-0f-2a-9c", 4)

    agent = stand_in.AgentProcess(*stand_in.SCRIPTED)   # starts an agent that acts on commands only
    agent.stop()

    agent = stand_in.StandInAgent("--quick")    # starts an agent and records its posts
    agent.script.setPreferred("00-1b-dc-0f-2a-9c")
    agent.wait_for_post("KS7PreferredCameraChanged")
"""

import contextlib
import os
import pathlib
import plistlib
import signal
import subprocess
import time

import dbus
import dbus.lowlevel
import dbus.mainloop.glib
from gi.repository import GLib

import accessible
from processes import stop_process
from timeout import TIMEOUT

NOTIFICATIONS = "com.orvex.DistributedNotificationCenter"
AGENT = "com.orvex.KS7AgentServer"
AGENT_USB = "com.orvex.KS7AgentServerUSB"
SCRIPT = "com.orvex.KS7AgentSimulator"
# Options of an agent that has no cameras and acts on commands only.
SCRIPTED = ("--scenario", "scripted", "--quick")
PROGRAM = pathlib.Path(os.environ["KS7_BUILD"]) / "bin" / "ks7-agent-simulator"
PREFERENCES = pathlib.Path(os.environ["XDG_CONFIG_HOME"]) / "com.orvex.KS7Agent.plist"


def path_of(name):
    """Returns the object path that belongs to a bus name."""
    return "/" + name.replace(".", "/")


NOTIFICATIONS_PATH = path_of(NOTIFICATIONS)


class Agent:
    """Calls the agent's script interface. Each operation of this interface is a method of this class."""

    def __init__(self, bus=None):
        self._bus = bus or dbus.SessionBus()

    def is_up(self):
        return self._bus.name_has_owner(AGENT)

    def wait_up(self):
        accessible.wait_until(self.is_up, "the agent on the bus")
        return self

    def wait_gone(self):
        accessible.wait_until(lambda: not self.is_up(), "the end of the agent")

    def __getattr__(self, operation):
        return getattr(dbus.Interface(self._bus.get_object(SCRIPT, path_of(SCRIPT)), SCRIPT), operation)

    def die(self):
        """Ends the agent's process at once, without a clean-up."""
        self._end("die")

    def quit_if_up(self):
        if self.is_up():
            self._end("quit")

    def _end(self, operation):
        with contextlib.suppress(dbus.DBusException):
            self.__getattr__(operation)()
        self.wait_gone()


def wait_until(condition, what):
    """Runs the event loop until the condition is true, and returns the condition's value."""
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
    """Records all notifications and all changes of a bus name's owner, in the order in which the bus delivers them."""

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


def post(bus, name, user_info=None):
    """Posts a distributed notification."""
    message = dbus.lowlevel.SignalMessage(NOTIFICATIONS_PATH, NOTIFICATIONS, name)
    message.append(dbus.Dictionary(user_info or {}, signature="sv"), signature="a{sv}")
    bus.send_message(message)


class AgentProcess:
    """An agent that the test starts, stops and kills."""

    def __init__(self, *options, **process_options):
        self.script = Agent()
        self.process = subprocess.Popen([PROGRAM, *options], **{"stdin": subprocess.DEVNULL, **process_options})
        self.wait_up()

    def wait_up(self):
        accessible.wait_until(self.is_up, "the agent on the bus")

    def is_up(self):
        if self.has_ended():
            raise AssertionError(f"the agent ended with {self.process.returncode}")
        return self.script.is_up()

    def has_ended(self):
        return self.process.poll() is not None

    def add_camera(self, address, name="Camera", status=1):
        self.script.addCamera(address, name, address[-5:].replace("-", "").upper(), status, signature="sssi")

    def calls(self, operation=None):
        """Returns the recorded calls of one operation. Returns all calls if no operation is given."""
        calls = [str(call) for call in self.script.recordedCalls()]
        return [call for call in calls if operation is None or call.startswith(operation + "(")]

    def wait_for_call(self, operation, times=1):
        accessible.wait_until(lambda: len(self.calls(operation)) >= times, f"{times} of {operation}")

    def stop(self):
        stop_process(self.process.pid)

    def resume(self):
        self.process.send_signal(signal.SIGCONT)

    def kill(self):
        self.process.kill()
        self.process.wait()
        self.script.wait_gone()

    def end(self):
        """Kills the agent's process, even if it is stopped."""
        if not self.has_ended():
            self.resume()
            self.process.kill()
            self.process.wait()


class StandInAgent(AgentProcess):
    """An agent process with D-Bus proxies for its interfaces. An Ear records its posts. Waits run GLib's event loop."""

    def __init__(self, *options, **process_options):
        dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
        self.bus = dbus.SessionBus()
        self.ear = Ear(self.bus)
        super().__init__(*options, **process_options)

    def wait_up(self):
        wait_until(lambda: self.has_ended() or "KS7AgentStarted" in self.ear.names(), "the agent has started")

    def interface(self, name, interface):
        proxy = self.bus.get_object(name, path_of(name), introspect=False)
        return dbus.Interface(proxy, interface)

    @property
    def devices(self):
        return self.interface(AGENT, "com.orvex.KS7DeviceControllerProxy")

    @property
    def usb(self):
        return self.interface(AGENT_USB, "com.orvex.TernUSBCommandControllerProxy")

    def pane_posts(self, name, user_info=None):
        post(self.bus, name, user_info)

    def wait_for_post(self, name, times=1):
        wait_until(lambda: self.ear.count(name) >= times, f"{name} is posted")

    def posts_of(self, act):
        """Returns the names of the agent's posts during `act`, in order."""
        self.listen_up()
        self.ear.forget()
        act()
        self.listen_up()
        return self.ear.names()[:-1]

    def listen_up(self):
        """Posts a mark through the agent and waits for it. The bus keeps the order, so the Ear then has all earlier
        posts."""
        marks = self.ear.count("KS7Mark")
        self.script.post("KS7Mark", dbus.Dictionary({}, signature="sv"))
        self.wait_for_post("KS7Mark", marks + 1)

    def status_of(self, address):
        return int(self.devices.cameraDict()[address]["Status"])

    def end(self):
        """Terminates the agent and returns its exit code."""
        if not self.has_ended():
            self.process.terminate()
        code = self.process.wait(TIMEOUT)
        wait_until(lambda: not self.bus.name_has_owner(AGENT), "the names are released")
        self.ear.close()
        return code
