#!/usr/bin/python3
"""Tests a stopped agent process and a sleeping machine, through the pane's window."""

import signal
import time
import unittest

from fault_pane import KITCHEN, FaultCase, wait_until
from processes import stop_process

# Seconds that the machine sleeps. This exceeds the timeout of all calls except startUpdate() and setPassKey().
A_NIGHT = 5


class StoppedAgent(FaultCase):
    """Tests an agent whose process is stopped. The pane's first call times out, and then the pane closes the
    connection. So an agent that is resumed later receives only this one call."""

    def setUp(self):
        super().setUp()
        self.agent = self.start_agent().add_cameras()
        self.pane = self.open_pane()
        self.wait_for_cameras(self.pane)
        self.agent.script.clearRecord()

    def expect_the_pane_to_go_on(self):
        self.wait_for_no_agent(self.pane)
        self.post("KS7CameraListChanged")
        self.pane.press("Show All")
        self.pane.press(self.pane.wait_for("KS-7", role="push button"))
        self.wait_for_cameras(self.pane)
        self.assertFalse(self.pane.ended())

    def test_before_a_refresh(self):
        self.agent.stop()
        self.post("KS7CameraListChanged")
        self.wait_for_no_agent(self.pane)
        for _ in range(5):
            self.post("KS7CameraListChanged")
        self.agent.resume()
        self.agent.wait_for_call("cameraDict")
        self.assertEqual(self.agent.calls(), ["cameraDict()"])
        self.expect_the_pane_to_go_on()

    def test_before_the_pane_is_shown(self):
        self.pane.press("Show All")
        icon = self.pane.wait_for("KS-7", role="push button")
        self.agent.stop()
        self.pane.press(icon)
        self.wait_for_no_agent(self.pane)
        self.agent.resume()
        self.agent.wait_for_call("flush")
        self.assertEqual(self.agent.calls(), ["flush()"])
        self.expect_the_pane_to_go_on()

    def test_while_a_camera_is_chosen(self):
        self.agent.stop()
        self.pane.click("Desk, Not Streaming")
        self.wait_for_no_agent(self.pane)
        self.agent.resume()
        wait_until(self.agent.calls, "a call")
        self.assertEqual(len(self.agent.calls()), 1, self.agent.calls())
        self.expect_the_pane_to_go_on()

    def test_killed_while_stopped(self):
        self.agent.stop()
        self.agent.kill()
        self.wait_for_no_agent(self.pane)
        self.start_agent().add_cameras()
        self.wait_for_cameras(self.pane)

    def test_while_an_update_starts(self):
        """This test takes 30 s, the timeout of calls that make the agent write to the camera."""
        self.agent.script.setPreferred(KITCHEN)
        self.plug_in(self.agent)
        self.pane.choose("Camera Actions", "Update Firmware…")
        self.pane.press(self.pane.wait_for("Continue", role="push button"))
        self.pane.wait_for("Click Continue to start the update.")
        self.agent.script.clearRecord()
        self.agent.stop()
        self.pane.press("Continue")
        self.wait_for_no_agent(self.pane)
        self.pane.wait_gone("Now updating firmware.")
        self.agent.resume()
        self.agent.wait_for_call("startUpdate")
        self.assertEqual(self.agent.calls(), ["startUpdate()"])
        self.post("KS7AgentStarted")
        self.wait_for_cameras(self.pane)
        self.assertEqual(self.close(self.pane), 0)


class SleepingMachine(FaultCase):
    """Stops the agent and the pane during a call, as a sleeping machine does, and resumes them in either order."""

    def setUp(self):
        super().setUp()
        self.agent = self.start_agent().add_cameras()
        self.pane = self.open_pane()
        self.wait_for_cameras(self.pane)
        self.fall_asleep_in_a_call()

    def fall_asleep_in_a_call(self):
        self.agent.script.clearRecord()
        self.agent.script.hangDuring("cameraDict", 0.0)
        self.post("KS7CameraListChanged")
        self.agent.wait_for_call("cameraDict")
        self.agent.stop()
        stop_process(self.pane.process.pid)
        asleep = time.monotonic()
        wait_until(lambda: time.monotonic() - asleep >= A_NIGHT, "the end of the night")

    def expect_a_connection_to_the_agent(self):
        # The pane's accessible tree can be read again only after the call has returned or timed out. A notification
        # during the call could reach the pane before it has closed the connection, and would then have no effect.
        self.pane.wait_for("Add Camera")
        self.post("KS7AgentStarted")
        self.wait_for_cameras(self.pane)
        self.assertEqual(self.close(self.pane), 0)

    def test_the_agent_continues_first_and_replies(self):
        self.agent.resume()
        self.agent.script.resume()
        self.pane.process.send_signal(signal.SIGCONT)
        self.expect_a_connection_to_the_agent()

    def test_the_pane_continues_first(self):
        self.pane.process.send_signal(signal.SIGCONT)
        self.wait_for_no_agent(self.pane)
        self.agent.resume()
        self.agent.script.resume()
        self.expect_a_connection_to_the_agent()


if __name__ == "__main__":
    unittest.main(verbosity=2)
