#!/usr/bin/python3
"""A session bus that keeps silent for as long as a person has patience, and goes on: under the shown pane, and when the
stand-alone host starts."""

import os
import signal
import subprocess
import time
import unittest

from fault_pane import HOST, NOWHERE, FaultCase, accessible, wait_until

LONG = 10
# Seconds: one call's time, twice the twenty-one attempts to reach the agent, and a slow machine. Without a limit the
# library waits for ever.
WINDOW = 60


class SilentBusCase(FaultCase):
    def process_of_the_bus(self):
        name = "org.freedesktop.DBus"
        return int(self.bus.call_blocking(name, "/org/freedesktop/DBus", name, "GetConnectionUnixProcessID", "s",
                                          (name,)))

    def stop_the_bus(self):
        self.daemon = self.process_of_the_bus()
        os.kill(self.daemon, signal.SIGSTOP)
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

    def test_the_host_answers_and_takes_the_agent_up_again(self):
        self.stop_the_bus()
        self.pane.click("Desk, Not Streaming")
        self.wait_for_no_agent(self.pane)
        self.pane.press("Show All")
        icon = self.pane.wait_for("KS-7", role="push button")
        self.resume_the_bus()
        self.pane.press(icon)
        self.wait_for_cameras(self.pane)
        self.assertEqual(self.close(self.pane), 0)

    def test_the_next_start_of_the_agent_is_taken_up(self):
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
    """Without a bus there is no accessibility either: only the display tells."""

    def window_names(self, process):
        windows = accessible.xdotool("search", "--onlyvisible", "--pid", process.pid, "--name", ".").split()
        return [accessible.xdotool("getwindowname", window) for window in windows]

    def test_the_window_comes_and_says_what_is_wrong(self):
        self.stop_the_bus()
        process = subprocess.Popen([HOST], env=dict(os.environ, KS7_AGENT=NOWHERE), stdin=subprocess.DEVNULL)
        self.addCleanup(self.end_process, process)
        wait_until(lambda: "KS-7" in self.window_names(process), "the window", timeout=WINDOW)
        wait_until(lambda: "Installation Error" in self.window_names(process), "the error", timeout=WINDOW)
        self.assertIsNone(process.poll())


if __name__ == "__main__":
    unittest.main(verbosity=2)
