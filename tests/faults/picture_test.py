#!/usr/bin/python3
"""Tests the loss of the live picture, and a window that closes before the picture appears."""

import os
import pathlib
import subprocess
import unittest

from fault_pane import KITCHEN, CameraProcess, FaultCase, accessible, request_close, topmost_window, wait_until
from held_up_gstreamer import HeldUpGStreamer
from pipewire_nodes import watchers

SOCKET = pathlib.Path(os.environ["XDG_RUNTIME_DIR"]) / "pipewire-0"


class PipeWire:
    """PipeWire, its session manager and a camera, all in processes that tests kill."""

    def __init__(self):
        self.processes = [self.start("pipewire")]
        wait_until(SOCKET.exists, "PipeWire")
        self.processes.append(self.start("wireplumber"))
        self.camera = CameraProcess()

    @staticmethod
    def start(program):
        return subprocess.Popen([program], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                stderr=subprocess.DEVNULL)

    def kill(self):
        for process in self.processes:
            process.kill()
            process.wait()
        self.camera.end()
        SOCKET.unlink(missing_ok=True)


class PictureCase(FaultCase):
    def setUp(self):
        super().setUp()
        self.start_pipewire()
        self.agent = self.start_agent().add_cameras()
        self.agent.script.setPreferred(KITCHEN)
        self.pane = self.open_pane(**self.environment())
        self.wait_for_cameras(self.pane)

    def environment(self):
        return {}

    def start_pipewire(self):
        self.pipewire = PipeWire()
        self.addCleanup(self.pipewire.kill)

    def expect_a_preview(self):
        button = self.pane.wait_for("Start Preview")
        self.pane.wait_state(button, "enabled")
        self.pane.press(button)
        self.pane.wait_for("Stop Preview")
        self.pane.wait_for("Live picture")


class Picture(PictureCase):
    def click_start(self, *input_after):
        """Clicks "Start Preview". Queues more input in the X server at once, so that it arrives before the picture
        appears."""
        button = self.pane.wait_for("Start Preview")
        self.pane.wait_state(button, "enabled")
        self.pane.wait_active("KS-7")
        x, y, width, height = self.pane.rectangle(button)
        accessible.point_at(x + width // 2, y + height // 2)
        accessible.xdotool("click", 1, *input_after)

    def test_pipewire_is_killed_during_the_preview(self):
        self.expect_a_preview()
        with accessible.listen(accessible.ANNOUNCEMENTS) as heard:
            heard.wait_ready(self.agent.script)
            self.pipewire.kill()
            heard.wait_for("Preview is off")
        self.pane.wait_for("Couldn't Start Preview")
        self.pane.press(self.pane.wait_for("OK", role="push button"))
        self.pane.wait_gone("Couldn't Start Preview")
        self.pane.wait_gone("Live picture")
        self.wait_for_cameras(self.pane)
        self.start_pipewire()
        self.expect_a_preview()
        self.assertEqual(self.close(self.pane), 0)

    def test_the_agent_is_stopped_while_the_meters_are_read(self):
        self.expect_a_preview()
        self.agent.wait_for_call("getAudioLevel_l", 2)
        self.agent.script.clearRecord()
        self.agent.stop()
        self.wait_for_no_agent(self.pane)
        self.pane.wait_for("Start Preview")
        self.pane.wait_gone("Live picture")
        self.agent.resume()
        wait_until(self.agent.calls, "a call")
        self.assertEqual(set(self.agent.calls()), {"getAudioLevel_l()"})
        self.post("KS7AgentStarted")
        self.wait_for_cameras(self.pane)
        self.expect_a_preview()

    def test_the_pane_is_left_before_the_picture_shows(self):
        self.click_start("key", "alt+a")
        icon = self.pane.wait_for("KS-7", role="push button")
        self.assertIsNone(self.pane.find("Live picture"))
        self.pane.press(icon)
        self.wait_for_cameras(self.pane)
        self.assertIsNone(self.pane.find("Live picture"))
        self.expect_a_preview()
        self.assertEqual(self.close(self.pane), 0)

    def test_the_window_is_closed_before_the_picture_shows(self):
        window = topmost_window(self.pane.x_windows())
        self.click_start()
        request_close(window)
        self.assertEqual(self.pane.wait_ended(), 0)

    def test_the_window_is_closed_during_the_preview(self):
        self.expect_a_preview()
        self.assertEqual(self.close(self.pane), 0)


class FirstPreview(PictureCase):
    """Tests the first preview in a new home folder. GStreamer first scans all of its plug-ins, and the test holds up
    this scan."""

    def environment(self):
        self.gstreamer = HeldUpGStreamer()
        self.addCleanup(self.gstreamer.close)
        return self.gstreamer.environment()

    def setUp(self):
        super().setUp()
        self.expect_a_preview()
        wait_until(self.gstreamer.has_begun, "the picture is held up")

    def test_the_window_responds_meanwhile_and_the_picture_appears_later(self):
        self.agent.script.renameCamera(KITCHEN, "Pantry")
        self.wait_for_rows(self.pane, "Pantry, Not Streaming", "Desk, Not Streaming")
        self.assertEqual(watchers(), 0)
        self.gstreamer.let_go()
        wait_until(lambda: watchers() == 1, "the picture is taken")
        self.assertEqual(self.close(self.pane), 0)

    def test_a_preview_stopped_meanwhile_does_not_block_the_next(self):
        self.pane.press("Stop Preview")
        self.pane.wait_gone("Live picture")
        self.expect_a_preview()
        self.gstreamer.let_go()
        wait_until(lambda: watchers() == 1, "the picture is taken")
        self.assertEqual(self.close(self.pane), 0)

    def test_the_window_is_closed_meanwhile(self):
        self.assertEqual(self.close(self.pane), 0)


if __name__ == "__main__":
    unittest.main(verbosity=2)
