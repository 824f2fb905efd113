#!/usr/bin/python3
"""A session bus that stands still under the pane in its host, as long as a person has patience, and goes on."""

import os
import signal
import time
import unittest

from fault_pane import FaultCase, wait_until

LONG = 10


class StoppedBus(FaultCase):
    def setUp(self):
        super().setUp()
        self.start_agent().add_cameras()
        self.pane = self.open_pane()
        self.wait_for_cameras(self.pane)
        self.daemon = self.process_of_the_bus()

    def process_of_the_bus(self):
        name = "org.freedesktop.DBus"
        return int(self.bus.call_blocking(name, "/org/freedesktop/DBus", name, "GetConnectionUnixProcessID", "s",
                                          (name,)))

    def stop_the_bus(self):
        os.kill(self.daemon, signal.SIGSTOP)
        self.addCleanup(os.kill, self.daemon, signal.SIGCONT)
        self.stopped = time.monotonic()

    def resume_the_bus(self):
        wait_until(lambda: time.monotonic() - self.stopped >= LONG, "the length of the fault")
        os.kill(self.daemon, signal.SIGCONT)

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


if __name__ == "__main__":
    unittest.main(verbosity=2)
