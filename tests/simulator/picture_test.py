"""Tests the stand-in agent's picture on a real PipeWire."""

import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))

from pipewire_nodes import AGENT_CAMERA, cameras  # noqa: E402
from processes import stop_process  # noqa: E402
from stand_in import PREFERENCES, PROGRAM, TIMEOUT, StandInAgent, wait_until  # noqa: E402

ONE = "00-1b-dc-0f-00-01"
TWO = "00-1b-dc-0f-00-02"
NOT_STREAMING = 1
STREAMING = 4
CONSUMERS = 30
WIDTH, HEIGHT = 640, 480
LINE = WIDTH * 4
FRAME = LINE * HEIGHT


class Consumer:
    """A process that receives the picture and writes its frames to a file."""

    def __init__(self, node=AGENT_CAMERA, frames=None, caps="video/x-raw", env=None):
        self.file = tempfile.NamedTemporaryFile(dir=os.environ["KS7_SESSION_FOLDER"])
        limit = [f"num-buffers={frames}"] if frames else []
        self.process = subprocess.Popen(
            ["gst-launch-1.0", "-q", "pipewiresrc", f"target-object={node}", *limit, "!", caps, "!",
             "filesink", f"location={self.file.name}", "buffer-mode=unbuffered"],
            stdin=subprocess.DEVNULL, env={**os.environ, **(env or {})})

    def frames(self):
        return os.stat(self.file.name).st_size // FRAME

    def last_frame(self):
        with open(self.file.name, "rb") as file:
            file.seek((self.frames() - 1) * FRAME)
            return file.read(FRAME)

    def wait_for_more(self, frames=10):
        wanted = self.frames() + frames
        wait_until(lambda: self.frames() >= wanted or self.process.poll() is not None, "more frames")
        if self.process.poll() is not None:
            raise AssertionError("the consumer has ended")

    def wait_to_show(self, condition, what):
        wait_until(lambda: self.frames() > 0 and condition(self.last_frame()), what)

    def wait(self):
        return self.process.wait(TIMEOUT)

    def leave(self):
        self.process.send_signal(signal.SIGCONT)
        self.process.kill()
        self.process.wait()
        self.file.close()


def pull(node=AGENT_CAMERA, caps="video/x-raw", frames=5, env=None):
    """Receives some frames in a consumer process and returns its exit code."""
    consumer = Consumer(node, frames, caps, env)
    try:
        return consumer.wait()
    finally:
        consumer.leave()


def is_black(frame):
    return not any(frame[at] or frame[at + 1] or frame[at + 2] for at in range(0, FRAME, 4 * 97))


def caption_of(frame):
    """Returns the upper half of a frame. This half shows the camera's name and does not change from frame to frame."""
    return frame[:FRAME // 2]


def has_text(frame):
    pixels = {frame[at:at + 3] for at in range(0, FRAME // 2, 4)}
    return b"\xff\xff\xff" in pixels and len(pixels) > 2


def scripted_agent(*options, **process_options):
    PREFERENCES.unlink(missing_ok=True)
    return StandInAgent("--quick", "--scenario", "scripted", *options, **process_options)


class PictureCase(unittest.TestCase):
    def setUp(self):
        self.agent = scripted_agent()
        self.consumers = []
        wait_until(lambda: AGENT_CAMERA in cameras(), "the node")

    def tearDown(self):
        for consumer in self.consumers:
            consumer.leave()
        self.agent.end()

    def watch(self, **options):
        consumer = Consumer(**options)
        self.consumers.append(consumer)
        return consumer

    def camera_streams(self, address=ONE, name="Kitchen"):
        self.agent.add_camera(address, name, STREAMING)
        self.agent.script.setPreferred(address)

    def set_status(self, address, status):
        self.agent.script.setStatus(address, status, signature="si")


class WhatItShows(PictureCase):
    def test_the_node_exists_as_long_as_the_agent(self):
        self.assertEqual(cameras(), {AGENT_CAMERA: AGENT_CAMERA})
        for end in (self.agent.end, lambda: self.agent.script.die()):
            end()
            wait_until(lambda: not cameras(), "the end of the node")
            self.agent.end()
            self.agent = scripted_agent()
            wait_until(lambda: AGENT_CAMERA in cameras(), "the node")

    def test_it_is_black_while_no_camera_streams(self):
        watcher = self.watch()
        watcher.wait_for_more()
        self.assertTrue(is_black(watcher.last_frame()))
        self.camera_streams()
        watcher.wait_to_show(has_text, "the camera's name")
        self.set_status(ONE, NOT_STREAMING)
        watcher.wait_to_show(is_black, "black")

    def test_the_picture_moves(self):
        self.camera_streams()
        watcher = self.watch()
        watcher.wait_to_show(has_text, "the camera's name")
        first = watcher.last_frame()
        watcher.wait_to_show(lambda frame: frame != first and caption_of(frame) == caption_of(first), "movement")

    def test_the_picture_continues_when_another_camera_is_chosen(self):
        self.camera_streams()
        watcher = self.watch()
        watcher.wait_to_show(has_text, "the first camera's name")
        first = caption_of(watcher.last_frame())
        self.set_status(ONE, NOT_STREAMING)
        watcher.wait_to_show(is_black, "black")
        self.camera_streams(TWO, "Garage")
        watcher.wait_to_show(lambda frame: has_text(frame) and caption_of(frame) != first, "the second camera's name")
        watcher.wait_for_more()

    def test_a_new_name_is_shown(self):
        self.camera_streams()
        watcher = self.watch()
        watcher.wait_to_show(has_text, "the name")
        first = caption_of(watcher.last_frame())
        self.agent.devices.setName("Pantry", ONE)
        watcher.wait_to_show(lambda frame: caption_of(frame) != first, "the new name")

    def test_without_a_picture_there_is_no_node(self):
        self.agent.end()
        self.agent = scripted_agent("--no-picture")
        self.camera_streams()
        self.assertEqual(self.agent.status_of(ONE), STREAMING)
        self.assertEqual(cameras(), {})


class Consumers(PictureCase):
    def setUp(self):
        super().setUp()
        self.camera_streams()

    def test_consumers_may_connect_and_leave(self):
        for _ in range(CONSUMERS):
            self.assertEqual(pull(frames=2), 0)
        self.assertFalse(self.agent.has_ended())
        self.assertEqual(cameras(), {AGENT_CAMERA: AGENT_CAMERA})

    def test_a_consumer_that_stays_gets_many_frames(self):
        self.assertEqual(pull(frames=150), 0)

    def test_a_second_consumer_gets_frames_after_the_first_left(self):
        first = self.watch()
        first.wait_for_more()
        second = self.watch()
        second.wait_for_more()
        first.leave()
        second.wait_for_more(30)

    def test_several_consumers_at_once(self):
        watchers = [self.watch() for _ in range(4)]
        for watcher in watchers:
            watcher.wait_for_more()
        for leaver in (0, 2):
            watchers[leaver].leave()
            for other in (1, 3):
                watchers[other].wait_for_more()

    def test_a_consumer_with_another_format_does_not_affect_others(self):
        watcher = self.watch()
        watcher.wait_for_more()
        refused = self.watch(caps="video/x-raw,format=GRAY8,width=16,height=16")
        watcher.wait_for_more(30)
        refused.leave()
        watcher.wait_for_more(30)
        self.assertEqual(pull(), 0)

    def test_a_consumer_that_hangs_and_dies_does_not_affect_others(self):
        hanging = self.watch()
        hanging.wait_for_more()
        stop_process(hanging.process.pid)
        self.assertEqual(pull(frames=30), 0)
        hanging.leave()
        self.assertEqual(pull(frames=30), 0)


class OwnPipeWire:
    """A separate PipeWire, which a test stops and starts."""

    def __init__(self):
        self.folder = tempfile.TemporaryDirectory(dir=os.environ["XDG_RUNTIME_DIR"])
        self.env = {**os.environ, "PIPEWIRE_RUNTIME_DIR": self.folder.name, "XDG_RUNTIME_DIR": self.folder.name}
        self.processes = []

    def start(self):
        self.processes.append(self.spawn("pipewire"))
        wait_until(lambda: self.answers("pw-cli", "info", "0"), "PipeWire")
        self.processes.append(self.spawn("wireplumber"))
        wait_until(lambda: self.answers("pw-metadata", "-n", "default"), "the session manager")

    def spawn(self, program):
        return subprocess.Popen([program], env=self.env, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                stderr=subprocess.DEVNULL)

    def answers(self, *command):
        asked = subprocess.run(command, env=self.env, capture_output=True, stdin=subprocess.DEVNULL, check=False)
        return asked.returncode == 0 and (command[0] != "pw-metadata" or b"Found" in asked.stdout)

    def offers_camera(self):
        return AGENT_CAMERA.encode() in subprocess.run(["pw-dump"], env=self.env, capture_output=True, check=False,
                                                       stdin=subprocess.DEVNULL).stdout

    def hang(self):
        stop_process(self.processes[0].pid)

    def go_on(self):
        self.processes[0].send_signal(signal.SIGCONT)

    def stop(self):
        for process in self.processes:
            process.send_signal(signal.SIGCONT)
            process.kill()
            process.wait()
        self.processes.clear()

    def close(self):
        self.stop()
        self.folder.cleanup()


class PipeWireComesAndGoes(unittest.TestCase):
    def setUp(self):
        self.pipewire = OwnPipeWire()
        self.agent = scripted_agent(env={**os.environ, "PIPEWIRE_RUNTIME_DIR": self.pipewire.folder.name},
                                    stderr=subprocess.PIPE)
        self.agent.add_camera(ONE, "Kitchen", STREAMING)
        self.agent.script.setPreferred(ONE)

    def tearDown(self):
        self.agent.end()
        self.pipewire.close()

    def complaints(self):
        lines = self.agent.process.stderr.read().decode().splitlines()
        return [line for line in lines if "no picture" in line]

    def test_without_pipewire_the_agent_works_and_logs_it_once(self):
        for status in (NOT_STREAMING, STREAMING, NOT_STREAMING, STREAMING):
            self.agent.script.setStatus(ONE, status, signature="si")
        self.assertEqual(self.agent.status_of(ONE), STREAMING)
        self.assertEqual(self.agent.end(), 0)
        self.assertEqual(len(self.complaints()), 1)

    def test_the_picture_appears_when_pipewire_starts_and_restarts(self):
        for _ in range(2):
            self.pipewire.start()
            wait_until(self.pipewire.offers_camera, "the node")
            self.assertEqual(pull(env=self.pipewire.env), 0)
            self.pipewire.stop()
            self.assertEqual(self.agent.status_of(ONE), STREAMING)

    def test_the_agent_replies_and_ends_while_pipewire_hangs(self):
        self.agent.end()
        self.pipewire.start()
        self.pipewire.hang()
        self.agent = scripted_agent(env=self.pipewire.env)
        self.agent.add_camera(ONE, "Kitchen", STREAMING)
        self.assertEqual(self.agent.status_of(ONE), STREAMING)
        self.assertEqual(self.agent.end(), 0)


class PictureAlone(unittest.TestCase):
    def test_two_cameras_side_by_side(self):
        programs = [subprocess.Popen([PROGRAM, "--picture-only", "--node-name", name, "--node-description", text,
                                      "--size", "320x240", "--framerate", "15"])
                    for name, text in (("first", "One"), ("second", AGENT_CAMERA))]
        try:
            wait_until(lambda: len(cameras()) == 2, "both nodes")
            self.assertEqual(cameras(), {"first": "One", "second": AGENT_CAMERA})
            for name in ("first", "second"):
                self.assertEqual(pull(name, "video/x-raw,width=320,height=240,framerate=15/1"), 0)
        finally:
            for program in programs:
                program.send_signal(signal.SIGTERM)
        self.assertEqual([program.wait(TIMEOUT) for program in programs], [0, 0])
        wait_until(lambda: not cameras(), "the end of the nodes")

    def test_it_gives_up_without_pipewire(self):
        picture = subprocess.run([PROGRAM, "--picture-only"], env={**os.environ, "PIPEWIRE_RUNTIME_DIR": "/nowhere"},
                                 capture_output=True, text=True, timeout=TIMEOUT, check=False)
        self.assertNotEqual(picture.returncode, 0)
        self.assertIn("no picture", picture.stderr)


if __name__ == "__main__":
    unittest.main(verbosity=2)
