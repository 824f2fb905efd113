#!/usr/bin/python3
"""Tests that the stand-alone host's window, sheets, alerts and about box fit on a screen of 400x300 logical pixels."""

import pathlib
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "support"))

from accessible import wait_until  # noqa: E402
from screens import xdotool  # noqa: E402
from scripted_pane import KITCHEN, ScriptedPaneTest  # noqa: E402


class SmallScreenTest(ScriptedPaneTest):
    def open_large(self):
        self.open_pane(QT_SCALE_FACTOR="2")

    def choose_action(self, item):
        self.pane.press("Camera Actions", "showmenu")
        self.pane.press(self.pane.wait_for(item, role="menu item"))

    def window_of(self, title):
        return wait_until(lambda: next((window for window in self.pane.windows() if window.title == title), None),
                          f"the window {title!r}", details=lambda: f"{self.pane.windows()}")

    def assert_fits(self, title):
        width, height = map(int, xdotool("getdisplaygeometry").split())

        def fits():
            x, y, window_width, window_height = self.window_of(title).box
            return 0 <= x and 0 <= y and x + window_width <= width and y + window_height <= height
        wait_until(fits, f"{title!r} on the screen", details=lambda: f"{self.pane.windows()}")

    def test_the_window(self):
        self.open_large()
        self.assert_fits("KS-7")

    def test_the_firmware_sheet(self):
        self.agent.plugUSB(KITCHEN, True)
        self.open_large()
        self.choose_action("Update Firmware…")
        self.assert_fits("Update Firmware")

    def test_the_about_box(self):
        self.open_large()
        self.choose_action("About KS-7…")
        self.assert_fits("About KS-7")

    def test_an_alert(self):
        self.open_large()
        self.agent.post("KS7NoBluetooth", {})
        self.assert_fits("Bluetooth Error")


if __name__ == "__main__":
    unittest.main(verbosity=2)
