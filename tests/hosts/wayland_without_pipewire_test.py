#!/usr/bin/python3
"""Tests the stand-alone host in a Wayland session without PipeWire, and with a PipeWire that never replies."""

import os
import pathlib
import socket
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "support"))

from scripted_pane import KITCHEN, ScriptedPaneTest  # noqa: E402

SOCKET = pathlib.Path(os.environ["XDG_RUNTIME_DIR"]) / "pipewire-0"
NO_CAMERA = "QuickTime had an error starting the camera preview.\nError: -333"


class WithoutPipeWireTest(ScriptedPaneTest):
    def open_streaming_pane(self):
        self.agent.setStatus(KITCHEN, 4)
        self.open_pane("Kitchen, Streaming")
        self.pane.wait_active("KS-7")

    def expect_the_error(self):
        self.pane.press("Start Preview")
        alert = self.pane.wait_for("Couldn't Start Preview", role="alert")
        self.assertEqual(alert.get_description(), NO_CAMERA)
        self.pane.wait_active("Couldn't Start Preview")
        self.pane.press(self.pane.wait_for("OK", role="push button", within=alert))
        self.pane.wait_gone("Couldn't Start Preview")
        self.assertIsNotNone(self.pane.find("Start Preview"))
        self.assertIsNone(self.pane.find("Live picture"))

    def expect_the_pane_to_go_on(self):
        self.agent.setStatus(KITCHEN, 1)
        self.pane.wait_for("Kitchen, Not Streaming")
        self.assertEqual(self.pane.close_by_key(), 0)

    def test_a_session_without_pipewire(self):
        self.assertFalse(SOCKET.exists())
        self.open_streaming_pane()
        self.expect_the_error()
        self.expect_the_pane_to_go_on()

    def test_a_pipewire_that_never_answers(self):
        with socket.socket(socket.AF_UNIX) as silent:
            silent.bind(str(SOCKET))
            self.addCleanup(SOCKET.unlink)
            silent.listen()
            self.open_streaming_pane()
            self.expect_the_error()
            self.expect_the_pane_to_go_on()


if __name__ == "__main__":
    unittest.main(verbosity=2)
