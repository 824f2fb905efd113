"""The picture that the stand-in agent offers while its camera streams, on a real PipeWire."""

import os
import pathlib
import signal
import subprocess
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))

from held_up_gstreamer import HeldUpGStreamer  # noqa: E402
from pipewire_nodes import AGENT_CAMERA, cameras  # noqa: E402
from stand_in_agent import PREFERENCES, PROGRAM, TIMEOUT, StandInAgent, wait_until  # noqa: E402

ONE = "00-1b-dc-0f-00-01"
WATCHERS = 30


def pull(node, caps="video/x-raw", frames=5):
    """Takes some frames from the node as any program would."""
    command = ["gst-launch-1.0", "-q", "pipewiresrc", f"target-object={node}", f"num-buffers={frames}", "!", caps, "!",
               "fakesink"]
    return subprocess.run(command, timeout=TIMEOUT, check=False).returncode


class AgentPicture(unittest.TestCase):
    def setUp(self):
        PREFERENCES.unlink(missing_ok=True)
        self.agent = StandInAgent("--quick", "--scenario", "scripted")

    def tearDown(self):
        self.agent.end()

    def camera_streams(self):
        self.agent.add_camera(ONE, "Kitchen", 4)
        self.agent.script.setPreferred(ONE)
        wait_until(lambda: AGENT_CAMERA in cameras(), "the picture is offered")

    def test_there_is_a_picture_while_the_camera_streams(self):
        self.assertEqual(cameras(), {})
        self.camera_streams()
        self.assertEqual(cameras(), {AGENT_CAMERA: AGENT_CAMERA})
        self.assertEqual(pull(AGENT_CAMERA), 0)
        self.agent.script.setStatus(ONE, 1, signature="si")
        wait_until(lambda: not cameras(), "the picture has gone")
        self.agent.script.setStatus(ONE, 4, signature="si")
        wait_until(lambda: AGENT_CAMERA in cameras(), "the picture is offered again")
        self.assertEqual(pull(AGENT_CAMERA), 0)

    def test_watchers_may_come_and_go(self):
        self.camera_streams()
        for _ in range(WATCHERS):
            self.assertEqual(pull(AGENT_CAMERA, frames=2), 0)
        self.assertFalse(self.agent.has_ended())
        self.assertEqual(cameras(), {AGENT_CAMERA: AGENT_CAMERA})

    def test_it_goes_with_the_agent(self):
        for end in (lambda: self.agent.end(), lambda: self.agent.script.die()):
            self.camera_streams()
            end()
            wait_until(lambda: not cameras(), "the picture has gone")
            self.agent.end()
            self.agent = StandInAgent("--quick", "--scenario", "scripted")

    def test_it_stays_when_the_camera_is_renamed(self):
        self.camera_streams()
        self.agent.devices.setName("Pantry", ONE)
        self.assertEqual(pull(AGENT_CAMERA), 0)

    def test_the_agent_does_without_a_picture(self):
        self.assertEqual(self.agent.end(), 0)
        self.agent = StandInAgent("--quick", "--scenario", "scripted", "--no-picture")
        self.agent.add_camera(ONE, "Kitchen", 4)
        self.agent.script.setPreferred(ONE)
        self.assertEqual(self.agent.status_of(ONE), 4)
        self.assertEqual(cameras(), {})


class SlowStart(unittest.TestCase):
    def setUp(self):
        PREFERENCES.unlink(missing_ok=True)
        self.gstreamer = HeldUpGStreamer()
        self.agent = StandInAgent("--quick", "--scenario", "scripted", env={**os.environ, **self.gstreamer.environment()})
        self.agent.add_camera(ONE, "Kitchen", 4)
        self.agent.script.setPreferred(ONE)
        wait_until(self.gstreamer.has_begun, "the picture is held up")

    def tearDown(self):
        self.gstreamer.close()
        self.agent.end()

    def test_the_agent_answers_meanwhile_and_the_picture_comes_later(self):
        self.assertEqual(self.agent.status_of(ONE), 4)
        self.assertEqual(cameras(), {})
        self.gstreamer.let_go()
        wait_until(lambda: AGENT_CAMERA in cameras(), "the picture is offered")

    def test_the_agent_ends_meanwhile(self):
        self.assertEqual(self.agent.end(), 0)


class NoPipeWire(unittest.TestCase):
    def setUp(self):
        PREFERENCES.unlink(missing_ok=True)
        self.environment = {**os.environ, "PIPEWIRE_RUNTIME_DIR": "/nowhere"}

    def test_the_agent_goes_on_without_a_picture_and_says_so_once(self):
        agent = StandInAgent("--quick", "--scenario", "scripted", env=self.environment, stderr=subprocess.PIPE)
        agent.add_camera(ONE, "Kitchen", 4)
        agent.script.setPreferred(ONE)
        for status in (1, 4, 1, 4):
            agent.script.setStatus(ONE, status, signature="si")
        self.assertEqual(agent.status_of(ONE), 4)
        self.assertEqual(agent.end(), 0)
        complaints = agent.process.stderr.read().decode().splitlines()
        self.assertEqual(len([line for line in complaints if "no picture" in line]), 1, complaints)

    def test_a_picture_alone_gives_up(self):
        picture = subprocess.run([PROGRAM, "--picture-only"], env=self.environment, capture_output=True, text=True,
                                 timeout=TIMEOUT, check=False)
        self.assertNotEqual(picture.returncode, 0)
        self.assertIn("no picture", picture.stderr)


class PictureAlone(unittest.TestCase):
    def test_two_cameras_side_by_side(self):
        programs = [subprocess.Popen([PROGRAM, "--picture-only", "--node-name", name, "--node-description", text,
                                      "--size", "320x240", "--framerate", "15"])
                    for name, text in (("first", "One"), ("second", AGENT_CAMERA))]
        try:
            wait_until(lambda: len(cameras()) == 2, "both pictures are offered")
            self.assertEqual(cameras(), {"first": "One", "second": AGENT_CAMERA})
            for name in ("first", "second"):
                self.assertEqual(pull(name, "video/x-raw,width=320,height=240,framerate=15/1"), 0)
        finally:
            for program in programs:
                program.send_signal(signal.SIGTERM)
        self.assertEqual([program.wait(TIMEOUT) for program in programs], [0, 0])
        wait_until(lambda: not cameras(), "the pictures have gone")


if __name__ == "__main__":
    unittest.main(verbosity=2)
