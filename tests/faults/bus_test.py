#!/usr/bin/python3
"""Tests a session bus that hangs and continues, both while the pane is shown and when the stand-alone host starts. Also
tests a system bus that hangs when kcmshell starts."""

import os
import signal
import subprocess
import time
import unittest

from desktop_test import SystemBus
from fault_pane import BUILD, HOST, NOWHERE, FaultCase, accessible, wait_until
from processes import stop_process

LONG = 10
# Time limit in seconds: one call's timeout, two series of 21 attempts to reach the agent, and a slow machine. Without
# the pane's own timeouts, Qt would wait for the bus without a limit.
WINDOW = 60


class SilentBusCase(FaultCase):
    def process_of_the_bus(self):
        name = "org.freedesktop.DBus"
        return int(self.bus.call_blocking(name, "/org/freedesktop/DBus", name, "GetConnectionUnixProcessID", "s",
                                          (name,)))

    def stop_the_bus(self):
        self.daemon = self.process_of_the_bus()
        stop_process(self.daemon)
        self.addCleanup(os.kill, self.daemon, signal.SIGCONT)
        self.stopped = time.monotonic()

    def resume_the_bus(self):
        wait_until(lambda: time.monotonic() - self.stopped >= LONG, "the length of the fault")
        os.kill(self.daemon, signal.SIGCONT)


class StoppedBus(SilentBusCase):
    def setUp(self):
        super().setUp()
        self.start_agent().add_cameras()
        self.pane = self.open_pane()
        self.wait_for_cameras(self.pane)

    def test_the_host_responds_and_reconnects_to_the_agent(self):
        self.stop_the_bus()
        self.pane.click("Desk, Not Streaming")
        self.wait_for_no_agent(self.pane)
        self.pane.press("Show All")
        icon = self.pane.wait_for("KS-7", role="push button")
        self.resume_the_bus()
        self.pane.press(icon)
        self.wait_for_cameras(self.pane)
        self.assertEqual(self.close(self.pane), 0)

    def test_the_pane_connects_to_the_restarted_agent(self):
        self.stop_the_bus()
        self.pane.click("Desk, Not Streaming")
        self.wait_for_no_agent(self.pane)
        self.resume_the_bus()
        self.post("KS7AgentStarted")
        self.wait_for_cameras(self.pane)

    def test_the_window_can_be_closed_meanwhile(self):
        self.stop_the_bus()
        self.pane.click("Desk, Not Streaming")
        self.assertEqual(self.close(self.pane), 0)


class SilentFromTheStart(SilentBusCase):
    """Accessibility needs the session bus, so these tests read the window titles from the display."""

    def window_names(self, process):
        windows = accessible.xdotool("search", "--onlyvisible", "--pid", process.pid, "--name", ".").split()
        return [accessible.xdotool("getwindowname", window) for window in windows]

    def test_the_window_opens_and_shows_the_error(self):
        self.stop_the_bus()
        process = subprocess.Popen([HOST], env=dict(os.environ, KS7_AGENT=NOWHERE), stdin=subprocess.DEVNULL)
        self.addCleanup(self.end_process, process)
        wait_until(lambda: "KS-7" in self.window_names(process), "the window", timeout=WINDOW)
        wait_until(lambda: "Installation Error" in self.window_names(process), "the error", timeout=WINDOW)
        self.assertIsNone(process.poll())


class SilentSystemBus(FaultCase):
    """Tests the module in kcmshell while the system bus does not reply. kcmshell must start nevertheless. The pane may
    block for at most the timeout of one call."""

    def open_module(self, system_bus):
        module = accessible.launch(["kcmshell" + os.environ["KS7_QT_VERSION"], "kcm_ks7"], env={
            "QT_PLUGIN_PATH": str(BUILD / "plugins"), "KS7_AGENT": NOWHERE,
            "DBUS_SYSTEM_BUS_ADDRESS": system_bus.address, **accessible.foreign_program_environment()})
        self.addCleanup(module.end)
        return module

    @unittest.skipUnless((BUILD / "plugins" / "plasma").exists(), "built without the module of System Settings")
    def test_the_module_opens_lists_its_cameras_and_closes(self):
        self.start_agent().add_cameras()
        system_bus = SystemBus()
        self.addCleanup(system_bus.end)
        system_bus.stop()
        module = self.open_module(system_bus)
        self.wait_for_cameras(module)
        module.click("Desk, Not Streaming")
        module.wait_state("Camera Actions", "enabled")
        system_bus.resume()
        self.wait_for_cameras(module)
        self.assertEqual(self.close(module), 0)


if __name__ == "__main__":
    unittest.main(verbosity=2)
