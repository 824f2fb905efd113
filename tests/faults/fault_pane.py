"""Helpers that run the stand-alone host with an agent, disturb that agent, and measure the host's resources."""

import contextlib
import os
import pathlib
import signal
import subprocess
import sys
import unittest

import dbus

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))

import accessible  # noqa: E402
import stand_in  # noqa: E402
from accessible import wait_until  # noqa: E402
from close_requests import request_close, topmost_window  # noqa: E402
from pipewire_nodes import AGENT_CAMERA  # noqa: E402
from stand_in import NOTIFICATIONS, NOTIFICATIONS_PATH  # noqa: E402, F401

BUILD = pathlib.Path(os.environ["KS7_BUILD"])
HOST = BUILD / "bin" / "ks7-preferences"
NOWHERE = "/nonexistent"
KITCHEN = "00-1b-dc-0f-2a-9c"
DESK = "00-1b-dc-0f-3b-71"
NOT_STREAMING = 1
CAMERAS = ("Kitchen, Not Streaming", "Desk, Not Streaming")
MEGABYTE = 1024 * 1024


class AgentProcess(stand_in.AgentProcess):
    """The stand-in agent without a picture. It acts on commands only."""

    def __init__(self, *options):
        super().__init__("--no-picture", *stand_in.SCRIPTED, *options)

    def add_cameras(self):
        self.add_camera(KITCHEN, "Kitchen", NOT_STREAMING)
        self.add_camera(DESK, "Desk", NOT_STREAMING)
        return self


class CameraProcess:
    """A process that publishes a PipeWire node with the name of the agent's camera."""

    def __init__(self):
        # The camera program ends at the end of its standard input, so keep a pipe open.
        self.process = subprocess.Popen([BUILD / "tests" / "virtual_camera", AGENT_CAMERA, "KS-7"],
                                        stdin=subprocess.PIPE, stdout=subprocess.DEVNULL)
        wait_until(self.is_up, "the camera in PipeWire")

    def is_up(self):
        """Returns whether the session manager knows the node. It links consumers only to nodes that it knows."""
        told = subprocess.run(["pw-metadata", "-n", "default", "0"], capture_output=True, text=True,
                              stdin=subprocess.DEVNULL)
        return AGENT_CAMERA in told.stdout

    def end(self):
        self.process.kill()
        self.process.communicate()


class Measured:
    """Measures the resources of a process."""

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
        """Returns the kind of each open descriptor: the target of its /proc link, without the inode number."""
        kinds = []
        folder = pathlib.Path(f"/proc/{self.pid}/fd")
        for descriptor in folder.iterdir():
            with contextlib.suppress(FileNotFoundError):
                kinds.append(os.readlink(descriptor).split(":")[0])
        return sorted(kinds)

    def match_rules(self):
        """Returns the D-Bus match rules of all connections of the process."""
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
    """Measures the used heap of a process. The process first returns free memory to the system, because its allocator
    keeps memory that it used for unread messages."""

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
        """Starts the host and connects to its accessible tree, so that tests can use its controls."""
        pane = accessible.launch([HOST], env={"KS7_AGENT": str(agent), **env})
        self.addCleanup(pane.end)
        return pane

    def start_pane(self, **env):
        """Starts the host without accessibility and returns its process."""
        process = subprocess.Popen([HOST], env=dict(os.environ, KS7_AGENT=NOWHERE, **env), stdin=subprocess.DEVNULL)
        self.addCleanup(self.end_process, process)
        return process

    @staticmethod
    def heap_report():
        return pathlib.Path(os.environ["KS7_SESSION_FOLDER"]) / "heap"

    def report_heap(self):
        """Returns the environment of a program that reports its heap."""
        return {"LD_PRELOAD": str(MeasuredHeap.LIBRARY), "KS7_HEAP_REPORT": str(self.heap_report())}

    def start_measured_pane(self):
        return MeasuredHeap(self.start_pane(**self.report_heap()).pid, self.heap_report())

    @staticmethod
    def end_process(process):
        if process.poll() is None:
            process.kill()
        process.wait()

    def post(self, name, user_info=None):
        stand_in.post(self.bus, name, user_info)

    def rows(self, pane):
        return [row for row in pane.names("table cell") if row]

    def wait_for_rows(self, pane, *rows):
        wait_until(lambda: self.rows(pane) == list(rows), f"the rows {rows}", pane.dump)

    def wait_for_cameras(self, pane):
        self.wait_for_rows(pane, *CAMERAS)

    def wait_for_no_agent(self, pane):
        """Waits until the pane shows an empty table. While the pane blocks in a call, its accessible tree cannot be
        read and seems to have no rows. So also wait until the button "Add Camera" can be read."""
        wait_until(lambda: not self.rows(pane) and pane.find("Add Camera"), "no row", pane.dump)
        self.assertFalse(pane.ended())

    def plug_in(self, agent):
        """Puts the kitchen camera with old firmware on the USB cable. Passkey changes and updates start, but never
        end."""
        for behaviour in ("firmware", "passKey"):
            agent.script.setBehaviour(behaviour, False)
        agent.script.plugUSB(KITCHEN, True)
        agent.wait_for_call("connectedCamNeedsFirmwareUpdate")

    def close(self, pane):
        """Requests the close of the topmost window until the program has ended, and returns the exit code. Qt ignores a
        request to a window under a modal sheet. So each window gets one request each time it becomes the topmost one,
        and never a second one while it stays there."""
        asked = None

        def ended():
            nonlocal asked
            top = topmost_window(pane.x_windows())
            if top not in (None, asked):
                request_close(top)
                asked = top
            return pane.ended()
        wait_until(ended, "the end of the program", pane.dump)
        return pane.process.returncode
