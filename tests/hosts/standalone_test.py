#!/usr/bin/python3
"""Tests ks7-preferences with the real plug-in and the stand-in agent."""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

BUILD = pathlib.Path(os.environ["KS7_BUILD"])
PROGRAM = BUILD / "bin" / "ks7-preferences"
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "support"))

import accessible  # noqa: E402
import stand_in  # noqa: E402
from screens import SCREEN  # noqa: E402

SHOWING = "KS7SystemPrefsShowing"


def without_display(*arguments, **additions):
    env = {name: value for name, value in os.environ.items() if name not in ("DISPLAY", "QT_QPA_PLATFORM")}
    return subprocess.run([PROGRAM, *arguments], env={**env, **additions}, capture_output=True, text=True, stdin=subprocess.DEVNULL)


class StandaloneTest(unittest.TestCase):
    def setUp(self):
        self.agent = stand_in.Agent()

    def tearDown(self):
        self.agent.quit_if_up()

    def open_host(self, program=PROGRAM, agent=BUILD / "bin" / "ks7-agent-simulator", **options):
        return accessible.launch([program], env={"KS7_AGENT": str(agent)}, **options)

    def wait_for_cameras(self, host):
        return accessible.wait_until(lambda: host.names("table cell"), "a camera", details=host.dump)

    def showings(self):
        return sum(post.startswith(SHOWING) for post in self.agent.recordedPosts())

    def test_show_all_and_back(self):
        with self.open_host() as host:
            self.wait_for_cameras(host)
            self.assertEqual(host.title(), "KS-7")
            before = self.showings()
            host.press("Show All")
            icon = host.wait_for("KS-7", role="push button")
            host.wait_gone("Add Camera")
            self.assertEqual(self.showings(), before)
            host.press(icon)
            self.wait_for_cameras(host)
            self.assertEqual(self.showings(), before + 1)

    def test_iconified_it_stays_connected(self):
        with self.open_host() as host:
            self.wait_for_cameras(host)
            before = self.showings()
            window = host.windows()[0]
            SCREEN.minimize(window)
            SCREEN.restore(window)
            self.wait_for_cameras(host)
            self.assertEqual(self.showings(), before)

    def test_closing_it_while_shown_ends_the_program_well(self):
        with self.open_host() as host:
            self.wait_for_cameras(host)
            self.assertEqual(host.close_by_key(), 0)

    def test_without_an_agent_one_key_opens_the_overview_each_time(self):
        with self.open_host(agent="/nonexistent") as host:
            for _ in range(2):
                # Loading and showing the pane request alerts with the same text, so only one alert appears.
                host.wait_active("Installation Error")
                self.assertEqual(len(host.all("Installation Error", role="alert")), 1)
                accessible.key("Return")
                host.wait_focused("KS-7")
                accessible.key("space")

    def test_the_alert_of_the_start_stands_over_the_window(self):
        with self.open_host(agent="/nonexistent") as host:
            window = host.wait_for("KS-7", role="frame")
            alert = host.wait_for("Installation Error", role="alert")

            def is_centred():
                x, y, width, height = host.rectangle(window)
                left, top, alert_width, alert_height = host.rectangle(alert)
                # Allow some pixels of difference, because the two windows' frames have different sizes.
                return abs(2 * left + alert_width - 2 * x - width) < 60 and \
                    abs(2 * top + alert_height - 2 * y - height) < 60
            accessible.wait_until(is_centred, "the alert over its window",
                                  details=lambda: f"{host.rectangle(window)} {host.rectangle(alert)}")

    def test_a_missing_plugin_is_reported_in_a_window_and_on_stderr(self):
        with tempfile.TemporaryDirectory() as folder:
            moved = pathlib.Path(folder) / "bin" / "ks7-preferences"
            moved.parent.mkdir()
            shutil.copy2(PROGRAM, moved)
            with self.open_host(moved, stderr=subprocess.PIPE, text=True) as host:
                host.wait_for("The KS-7 pane cannot be loaded.")
                host.press(host.wait_for("OK", role="push button"))
                self.assertEqual(host.wait_ended(), 1)
                self.assertIn("The KS-7 pane cannot be loaded.", host.process.stderr.read())
                host.process.stderr.close()

    def test_prints_its_version_and_its_options_without_a_display(self):
        version = without_display("--version")
        self.assertEqual((version.returncode, version.stdout), (0, "ks7-preferences 1.0\n"))
        self.assertIn("--version", without_display("--help").stdout)

    def test_prints_its_options_in_the_language_of_the_session(self):
        told = without_display("--help", LC_ALL="de_DE.UTF-8", LANGUAGE="de").stdout
        self.assertIn("Zeigt die Einstellungen der drahtlosen Webcam KS-7.", told)


if __name__ == "__main__":
    unittest.main(verbosity=2)
