"""The pane in its own host, with an agent that is stopped, killed and started again, and a look at what the host
uses of the machine."""

import contextlib
import os
import pathlib
import signal
import subprocess
import sys
import unittest

import dbus
import dbus.lowlevel

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))

import accessible  # noqa: E402
import stand_in  # noqa: E402
from accessible import wait_until  # noqa: E402
from pipewire_nodes import AGENT_CAMERA  # noqa: E402

BUILD = pathlib.Path(os.environ["KS7_BUILD"])
HOST = BUILD / "bin" / "ks7-preferences"
SIMULATOR = BUILD / "bin" / "ks7-agent-simulator"
NOWHERE = "/nonexistent"
NOTIFICATIONS = "com.orvex.DistributedNotificationCenter"
NOTIFICATIONS_PATH = "/com/orvex/DistributedNotificationCenter"
KITCHEN = "00-1b-dc-0f-2a-9c"
DESK = "00-1b-dc-0f-3b-71"
NOT_STREAMING = 1
CAMERAS = ("Kitchen, Not Streaming", "Desk, Not Streaming")
MEGABYTE = 1024 * 1024


class AgentProcess:
    """The stand-in agent as a process to be hurt: two cameras, nothing that it does of itself."""

    def __init__(self, *options):
        self.process = subprocess.Popen([SIMULATOR, "--no-picture", "--quick", "--scenario", "scripted", *options],
                                        stdin=subprocess.DEVNULL)
        self.script = stand_in.Agent()
        wait_until(self.is_up, "the agent on the bus")

    def is_up(self):
        if self.process.poll() is not None:
            raise AssertionError(f"the agent ended with {self.process.returncode}")
        return self.script.is_up()

    def add_cameras(self):
        self.script.addCamera(KITCHEN, "Kitchen", "2A9C", NOT_STREAMING, signature="sssi")
        self.script.addCamera(DESK, "Desk", "3B71", NOT_STREAMING, signature="sssi")
        return self

    def calls(self, operation=None):
        calls = [str(call) for call in self.script.recordedCalls()]
        return [call for call in calls if operation is None or call.startswith(operation + "(")]

    def wait_for_call(self, operation, times=1):
        wait_until(lambda: len(self.calls(operation)) >= times, f"{times} of {operation}")

    def stop(self):
        self.process.send_signal(signal.SIGSTOP)

    def resume(self):
        self.process.send_signal(signal.SIGCONT)

    def kill(self):
        self.process.kill()
        self.process.wait()
        wait_until(lambda: not self.script.is_up(), "the names are free")

    def end(self):
        if self.process.poll() is None:
            self.resume()
            self.process.kill()
            self.process.wait()


class CameraProcess:
    """The camera's picture in PipeWire, by its name."""

    def __init__(self):
        # The end of its input would be the camera's.
        self.process = subprocess.Popen([BUILD / "tests" / "virtual_camera", AGENT_CAMERA, "KS-7"],
                                        stdin=subprocess.PIPE, stdout=subprocess.DEVNULL)
        wait_until(self.is_up, "the camera in PipeWire")

    def is_up(self):
        """Whether the session manager has it, too: before that nobody brings a camera and its watcher together."""
        told = subprocess.run(["pw-metadata", "-n", "default", "0"], capture_output=True, text=True,
                              stdin=subprocess.DEVNULL)
        return AGENT_CAMERA in told.stdout

    def end(self):
        self.process.kill()
        self.process.communicate()


class Measured:
    """What a process holds of the machine."""

    def __init__(self, pid):
        self.pid = pid

    def _status(self, name):
        for line in pathlib.Path(f"/proc/{self.pid}/status").read_text().splitlines():
            if line.startswith(name + ":"):
                return int(line.split()[1])
        raise AssertionError(f"no {name} of {self.pid}")

    def resident(self):
        return self._status("VmRSS") * 1024

    def threads(self):
        return self._status("Threads")

    def descriptors(self):
        """What each descriptor stands for; which socket or pipe it is does not matter."""
        kinds = []
        folder = pathlib.Path(f"/proc/{self.pid}/fd")
        for descriptor in folder.iterdir():
            with contextlib.suppress(FileNotFoundError):
                kinds.append(os.readlink(descriptor).split(":")[0])
        return sorted(kinds)

    def match_rules(self):
        """The rules that the bus keeps for all connections of the process."""
        bus = dbus.SessionBus()
        daemon = bus.get_object("org.freedesktop.DBus", "/org/freedesktop/DBus", introspect=False)
        rules = dbus.Interface(daemon, "org.freedesktop.DBus.Debug.Stats").GetAllMatchRules()
        return sorted(str(rule) for name in rules if self._is_ours(bus, name) for rule in rules[name])

    def _is_ours(self, bus, name):
        with contextlib.suppress(dbus.DBusException):
            return int(bus.call_blocking("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                         "GetConnectionUnixProcessID", "s", (name,))) == self.pid
        return False


class MeasuredHeap(Measured):
    """A process that tells what it keeps of its heap. While messages wait to be read the heap grows with them, and the
    allocator keeps what they took for later: that is given back first."""

    LIBRARY = BUILD / "tests" / "ks7_heap_report.so"

    def __init__(self, pid, report):
        super().__init__(pid)
        self.report = report

    def kept(self):
        self.report.unlink(missing_ok=True)
        os.kill(self.pid, signal.SIGUSR2)
        wait_until(self.report.exists, "the report of the heap")
        return int(self.report.read_text())


class FaultCase(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        self.bus = dbus.SessionBus()

    def start_agent(self, *options):
        agent = AgentProcess(*options)
        self.addCleanup(agent.end)
        return agent

    def open_pane(self, agent=NOWHERE, **env):
        """The pane in a window on the display, with a hand on it."""
        pane = accessible.launch([HOST], env={"KS7_AGENT": str(agent), **env})
        self.addCleanup(pane.end)
        return pane

    def start_pane(self, **env):
        """The pane without a display, where nobody looks at it."""
        process = subprocess.Popen([HOST], env=dict(os.environ, KS7_AGENT=NOWHERE, **env), stdin=subprocess.DEVNULL)
        self.addCleanup(self.end_process, process)
        return process

    @staticmethod
    def heap_report():
        return pathlib.Path(os.environ["KS7_SESSION_FOLDER"]) / "heap"

    def report_heap(self):
        """What a program needs in its environment to tell of its heap."""
        return {"LD_PRELOAD": str(MeasuredHeap.LIBRARY), "KS7_HEAP_REPORT": str(self.heap_report())}

    def start_measured_pane(self):
        return MeasuredHeap(self.start_pane(**self.report_heap()).pid, self.heap_report())

    @staticmethod
    def end_process(process):
        if process.poll() is None:
            process.kill()
        process.wait()

    def post(self, name, user_info=None):
        message = dbus.lowlevel.SignalMessage(NOTIFICATIONS_PATH, NOTIFICATIONS, name)
        message.append(dbus.Dictionary(user_info or {}, signature="sv"), signature="a{sv}")
        self.bus.send_message(message)

    def rows(self, pane):
        return [row for row in pane.names("table cell") if row]

    def wait_for_rows(self, pane, *rows):
        wait_until(lambda: self.rows(pane) == list(rows), f"the rows {rows}", pane.dump)

    def wait_for_cameras(self, pane):
        self.wait_for_rows(pane, *CAMERAS)

    def wait_for_no_agent(self, pane):
        """A pane that waits for its agent tells of no row either: it has to be seen that it goes on."""
        wait_until(lambda: not self.rows(pane) and pane.find("Add Camera"), "no row", pane.dump)
        self.assertFalse(pane.ended())

    def plug_in(self, agent):
        """The kitchen's camera is at the cable, with old firmware; what is asked for is begun and never ends."""
        for behaviour in ("firmware", "passKey"):
            agent.script.setBehaviour(behaviour, False)
        agent.script.plugUSB(KITCHEN, True)
        agent.wait_for_call("connectedCamNeedsFirmwareUpdate")

    def close(self, pane):
        """Closes whatever is in front until the program has ended; answers its exit code."""
        def closed():
            if not pane.ended():
                accessible.key("alt+F4")
            return pane.ended()
        wait_until(closed, "the end of the program", pane.dump)
        return pane.process.returncode
