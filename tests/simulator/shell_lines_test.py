"""Tests the example in the simulator's help: its shell lines work when pasted, and the manual page has the same
lines."""

import os
import pathlib
import subprocess
import sys
import unittest

import dbus
import dbus.mainloop.glib

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests" / "support"))

from stand_in import AGENT, PROGRAM, TIMEOUT, Ear, wait_until  # noqa: E402

HELP = subprocess.run([PROGRAM, "--help"], capture_output=True, text=True, check=True).stdout
LINES = HELP[HELP.index("ks7-agent-simulator --scenario"):].split("\n\n")[0]


class ShellLines(unittest.TestCase):
    def test_five_lines_show_a_camera_and_end_the_agent(self):
        self.assertEqual(len(LINES.splitlines()), 5)
        dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
        bus = dbus.SessionBus()
        ear = Ear(bus)
        shell = subprocess.run(["bash"], input=LINES + "\n", capture_output=True, text=True, timeout=TIMEOUT, check=False,
                               env={**os.environ, "PATH": f"{PROGRAM.parent}:{os.environ['PATH']}"})
        self.assertEqual(shell.returncode, 0)
        self.assertNotIn("Error", shell.stderr)
        wait_until(lambda: f"{AGENT} released" in ear.names(), "the end of the agent")
        self.assertEqual([name for name in ear.names() if name.startswith("KS7")], ["KS7AgentStarted", "KS7CameraListChanged",
                                                                                    "KS7CameraListChanged"])

    def test_the_manual_page_has_the_same_lines(self):
        page = pathlib.Path(os.environ["KS7_BUILD"], "packaging/ks7-agent-simulator.1").read_text()
        self.assertIn(LINES.strip(), page.replace("\\-", "-"))


if __name__ == "__main__":
    unittest.main(verbosity=2)
