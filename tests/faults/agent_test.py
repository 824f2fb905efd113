#!/usr/bin/python3
"""Tests an agent that is missing, cannot start or dies, through the pane's window."""

import os
import pathlib
import signal
import tempfile
import unittest

from fault_pane import CAMERAS, FaultCase, stand_in, wait_until


class NoAgent(FaultCase):
    """Tests a missing or broken agent: each search launches the agent once, the error sheet appears, and the host
    continues."""

    def setUp(self):
        super().setUp()
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.launches = self.folder / "launches"
        self.addCleanup(self.end_what_was_launched)

    def program(self, last_line, mode=0o755):
        """Writes an agent that appends its process ID to a file and then runs `last_line`. Returns the agent's path."""
        path = self.folder / "agent"
        path.write_text(f"#!/bin/sh\necho $$ >> '{self.launches}'\n{last_line}\n")
        path.chmod(mode)
        return path

    def launched(self):
        return self.launches.read_text().split() if self.launches.exists() else []

    def end_what_was_launched(self):
        for pid in self.launched():
            try:
                os.kill(int(pid), signal.SIGKILL)
            except ProcessLookupError:
                pass

    def dismiss_the_sheets(self, pane):
        """Closes every error sheet, because loading and showing the pane have each searched for the agent."""
        def overview():
            if pane.find("KS-7", role="push button"):
                return True
            button = pane.find("OK", role="push button")
            if button:
                pane.press_if_there(button)
            return False
        wait_until(overview, "the overview", pane.dump)

    def show_again(self, pane):
        """Presses the pane's icon in the overview until the pane shows its cameras. Half a second after OK, an error
        sheet opens the overview and so closes the pane. There are two such sheets, so one press may not be enough."""
        def cameras():
            icon = pane.find("KS-7", role="push button")
            if icon:
                pane.press_if_there(icon)
            return self.rows(pane) == list(CAMERAS)
        wait_until(cameras, "the cameras", pane.dump)

    def meet(self, agent, launches):
        pane = self.open_pane(agent=agent)
        pane.wait_for("The KS-7 Preferences cannot be loaded at this time. Please try re-installing your KS-7 software.")
        self.assertEqual(len(self.launched()), launches)
        self.dismiss_the_sheets(pane)
        self.start_agent().add_cameras()
        self.show_again(pane)
        self.assertEqual(len(self.launched()), launches)
        self.assertEqual(self.close(pane), 0)

    def test_a_program_that_is_missing(self):
        self.meet("/nonexistent", 0)

    def test_a_program_that_may_not_be_run(self):
        self.meet(self.program("exit 0", mode=0o644), 0)

    def test_a_program_that_ends_at_once(self):
        self.meet(self.program("exit 1"), 2)

    def test_a_program_that_hangs(self):
        self.meet(self.program("exec sleep 1000"), 2)


class DyingAgent(FaultCase):
    def test_an_agent_that_dies_during_any_call(self):
        self.start_agent().add_cameras()
        pane = self.open_pane()
        for call in ("cameraDict", "sortedDeviceList", "indexOfPreferredKS7Cam", "connectedCamHasBTAddress",
                     "getPreferredKS7Cam"):
            with self.subTest(call):
                self.wait_for_cameras(pane)
                stand_in.Agent().dieDuring(call)
                self.post("KS7CameraListChanged")
                self.wait_for_no_agent(pane)
                self.start_agent().add_cameras()
        self.wait_for_cameras(pane)
        self.assertEqual(self.close(pane), 0)


if __name__ == "__main__":
    unittest.main(verbosity=2)
