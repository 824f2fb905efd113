#!/usr/bin/python3
"""Tests that no wait gets longer when the wall clock jumps back or forward by an hour while the pane waits."""

import datetime
import os
import pathlib
import re
import subprocess
import tempfile
import unittest

from fault_pane import FaultCase, HOST, KITCHEN, NOWHERE, wait_until

HOUR = datetime.timedelta(hours=1)
LOGS = pathlib.Path(os.environ["HOME"]) / "Library" / "Logs" / "KS7_Logs"
LINE = re.compile(r"^(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d)\S* .*cameraStatusChanged", re.MULTILINE)
LIBRARY = "/usr/lib/x86_64-linux-gnu/faketime/libfaketime.so.1"


class Clock(FaultCase):
    def setUp(self):
        super().setUp()
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.clock = pathlib.Path(folder.name) / "clock"
        self.put("+0")
        self.agent = self.start_agent().add_cameras()
        self.agent.script.setPreferred(KITCHEN)
        self.agent.script.setPreference("LogToFile", True)
        self.agent.script.clearRecord()
        self.pane = self.start_pane_under_the_clock()
        self.agent.wait_for_call("getPreferredKS7Cam", 2)

    def put(self, offset):
        """Sets the pane's faked time. Renames a new file over libfaketime's file, so that the pane never reads a
        half-written one."""
        new = self.clock.with_suffix(".new")
        new.write_text(offset + "\n")
        new.replace(self.clock)

    def start_pane_under_the_clock(self):
        runtime = os.environ.get("KS7_SANITIZER_RUNTIME")
        env = dict(os.environ, KS7_AGENT=NOWHERE, FAKETIME_TIMESTAMP_FILE=str(self.clock), FAKETIME_NO_CACHE="1",
                   FAKETIME_DONT_FAKE_MONOTONIC="1", LD_PRELOAD=":".join(filter(None, (runtime, LIBRARY))))
        process = subprocess.Popen([HOST], env=env, stdin=subprocess.DEVNULL)
        self.addCleanup(self.end_process, process)
        return process

    def expect_a_refresh(self):
        # getPreferredKS7Cam() is the last call of a refresh. After it, no call of this refresh is left to be recorded.
        asked = len(self.agent.calls("getPreferredKS7Cam"))
        self.post("KS7CameraListChanged")
        self.agent.wait_for_call("getPreferredKS7Cam", asked + 1)

    def expect_one_time_out(self, offset):
        """Checks that a call without a reply ends although the clock jumps, and that the pane then makes its next
        call."""
        self.agent.script.clearRecord()
        self.agent.script.hangDuring("cameraDict", 0.0)
        self.post("KS7CameraListChanged")
        self.agent.wait_for_call("cameraDict")
        ends = self.ends_of_connections()
        self.put(offset)
        wait_until(lambda: self.ends_of_connections() > ends, "the end of the call")
        self.post("KS7AgentStarted")
        self.agent.wait_for_call("cameraDict", 2)
        self.assertEqual(self.agent.calls("sortedDeviceList"), [])
        self.agent.script.resume()
        self.agent.wait_for_call("sortedDeviceList")
        self.assertIsNone(self.pane.poll())

    def expect_the_log_to_say(self, offset):
        """Checks that the log shows the last refresh with the new clock's time, within half an hour."""
        def is_logged():
            return self.logged() and abs(self.logged() - (datetime.datetime.now() + offset)) < HOUR / 2
        wait_until(is_logged, f"a line {offset} from now", lambda: str(self.logged()))

    @staticmethod
    def logs():
        """Returns the contents of the log files, the newest one last."""
        files = sorted((path for path in LOGS.rglob("*") if path.is_file()), key=lambda path: path.stat().st_mtime_ns)
        return [path.read_text(errors="replace") for path in files]

    def logged(self):
        """Returns the time of the last refresh from the newest log file."""
        times = [time for log in self.logs() for time in LINE.findall(log)]
        return datetime.datetime.fromisoformat(times[-1]) if times else None

    def ends_of_connections(self):
        """Counts the log lines of connections that have ended."""
        return sum(log.count("connectionDidDie:") for log in self.logs())

    def test_an_hour_back(self):
        self.expect_the_log_to_say(0 * HOUR)
        self.put("-3600")
        self.expect_a_refresh()
        self.expect_the_log_to_say(-HOUR)
        self.expect_one_time_out("-7200")

    def test_an_hour_forward(self):
        self.expect_the_log_to_say(0 * HOUR)
        self.put("+3600")
        self.expect_a_refresh()
        self.expect_the_log_to_say(HOUR)
        self.expect_one_time_out("+7200")


if __name__ == "__main__":
    unittest.main(verbosity=2)
