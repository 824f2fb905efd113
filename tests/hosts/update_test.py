#!/usr/bin/python3
"""Tests how an update's offer is answered in the stand-alone host, with the keyboard or through the accessibility tree."""

import json
import os
import pathlib
import signal
import subprocess
import sys
import unittest

TESTS = pathlib.Path(__file__).resolve().parents[1]
sys.path.insert(0, str(TESTS / "support"))

from accessible import ANNOUNCEMENTS, key, listen, wait_until  # noqa: E402
from scripted_pane import BUILD, ScriptedPaneTest  # noqa: E402

STAND_IN = TESTS / "platform" / "updates" / "packagekit_stand_in.py"
UPDATES = pathlib.Path(os.environ["XDG_STATE_HOME"]) / "ks7-preferences" / "updates"
PLUGIN = BUILD.resolve() / "plugins" / "ks7" / "ks7pane.so"
OFFER = "Version 2.0-1 of the KS-7 settings is available."
INSTALLED = "Version 2.0-1 is installed. Restart this application to use it."


class UpdateTest(ScriptedPaneTest):
    def setUp(self):
        super().setUp()
        # The pane queries the package service once a day.
        UPDATES.unlink(missing_ok=True)
        self.told = pathlib.Path(os.environ["KS7_SESSION_FOLDER"]) / "packagekit"
        behaviour = {"owners": {str(PLUGIN): "ks7-preferences;1.0-1;amd64;installed"},
                     "updates": [[5, "ks7-preferences;2.0-1;amd64;main"]]}
        with self.told.open("w") as told:
            self.service = subprocess.Popen([STAND_IN, json.dumps(behaviour)], stdin=subprocess.DEVNULL, stdout=told)
        self.addCleanup(self.end_service)
        wait_until(lambda: "ready" in self.told.read_text(), "the package service")

    def end_service(self):
        self.service.kill()
        self.service.wait()

    def open_offer(self):
        self.open_pane()
        self.pane.wait_for(OFFER)

    def is_installing(self):
        return "UpdatePackages 2 ks7-preferences;2.0-1;amd64;main" in self.told.read_text()

    def press_key_on(self, button):
        """Goes to the button by Tab and presses it."""
        for _ in range(20):
            if self.pane.focused() == button:
                break
            before = self.pane.focused()
            key("shift+Tab")
            wait_until(lambda: self.pane.focused() not in ("", before), "the next control", details=self.pane.dump)
        self.pane.wait_focused(button)
        key("space")

    def test_the_offer_is_announced(self):
        # The service must not reply before the listener receives announcements.
        self.service.send_signal(signal.SIGSTOP)
        self.open_pane()
        with listen(ANNOUNCEMENTS) as heard:
            heard.wait_ready(self.agent)
            self.service.send_signal(signal.SIGCONT)
            heard.wait_for(OFFER)

    def test_the_offer_is_accepted_with_the_keyboard(self):
        self.open_offer()
        self.press_key_on("Install")
        self.pane.wait_for(INSTALLED)
        self.assertTrue(self.is_installing())
        # The installation hides the button that had the focus, so the focus must move on.
        wait_until(lambda: self.pane.focused(), "a focus", details=self.pane.dump)

    def test_the_offer_is_postponed_with_its_mnemonic(self):
        self.open_offer()
        key("alt+l")
        self.pane.wait_gone(OFFER)
        self.assertFalse(self.is_installing())
        wait_until(lambda: self.pane.focused(), "a focus", details=self.pane.dump)

    def test_the_offer_is_accepted_through_the_accessibility_tree(self):
        self.open_offer()
        with listen(ANNOUNCEMENTS) as heard:
            heard.wait_ready(self.agent)
            self.pane.press("Install")
            heard.wait_for(INSTALLED)
        self.assertTrue(self.is_installing())
        self.pane.press(self.pane.wait_for("OK", role="push button"))
        self.pane.wait_gone(INSTALLED)

    def test_the_offer_is_skipped_through_the_accessibility_tree(self):
        self.open_offer()
        self.pane.press("Skip This Version")
        self.pane.wait_gone(OFFER)
        self.assertIn("2.0-1", UPDATES.read_text())


if __name__ == "__main__":
    unittest.main(verbosity=2)
