"""Tests `ks7-preferences --diagnose` on machines where everything works, something is broken, or nothing is present."""

import contextlib
import datetime
import os
import pathlib
import plistlib
import re
import subprocess
import sys
import tempfile
import unittest

TESTS = pathlib.Path(__file__).resolve().parents[1]
sys.path.insert(0, str(TESTS / "support"))
import stand_in  # noqa: E402
from processes import stop_process  # noqa: E402

BIN = pathlib.Path(os.environ["KS7_BUILD"]) / "bin"
PACKAGEKIT = TESTS / "platform/updates/packagekit_stand_in.py"
PREFERENCES = pathlib.Path(os.environ["XDG_CONFIG_HOME"]) / "com.orvex.KS7Agent.plist"


def diagnose(env=None):
    """Returns the report as a dictionary. The entry "cameras" is a list of the report's indented lines."""
    done = subprocess.run([BIN / "ks7-preferences", "--diagnose"], stdin=subprocess.DEVNULL, capture_output=True,
                          text=True, env=env)
    assert done.returncode == 0, f"ended with {done.returncode}: {done.stderr}"
    report = dict(line.split(": ", 1) for line in done.stdout.splitlines() if not line.startswith(" "))
    report["cameras"] = [line.strip() for line in done.stdout.splitlines() if line.startswith(" ")]
    report["text"] = done.stdout
    return report


@contextlib.contextmanager
def agent(*options):
    agent = stand_in.AgentProcess("--no-picture", *options)
    try:
        yield agent.process, agent.script
    finally:
        agent.end()


@contextlib.contextmanager
def packagekit():
    process = subprocess.Popen([PACKAGEKIT, "{}"], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True)
    try:
        assert process.stdout.readline() == "ready\n"
        yield
    finally:
        process.kill()
        process.wait()
        process.stdout.close()


class DiagnosisTest(unittest.TestCase):
    def tearDown(self):
        if PREFERENCES.is_dir():
            PREFERENCES.rmdir()
        PREFERENCES.unlink(missing_ok=True)

    def write_preferences(self, content, mode=0o600):
        PREFERENCES.write_bytes(content)
        PREFERENCES.chmod(mode)

    # The program

    def test_names_its_version_and_its_own_file(self):
        report = diagnose()
        version = subprocess.run([BIN / "ks7-preferences", "--version"], capture_output=True, text=True).stdout
        self.assertEqual(version.strip(), "ks7-preferences " + report["KS-7 preferences"])
        self.assertTrue(report["Pane"].endswith("/ks7pane.so"), report["Pane"])

    def test_reports_without_bus_and_agent(self):
        with tempfile.TemporaryDirectory() as home:
            report = diagnose({"HOME": home, "PATH": os.environ["PATH"],
                               "DBUS_SESSION_BUS_ADDRESS": f"unix:path={home}/none",
                               "DBUS_SYSTEM_BUS_ADDRESS": f"unix:path={home}/none"})
        self.assertEqual(report["KS-7 node"], "none")
        for service in ("com.orvex.KS7AgentServer", "Cameras", "BlueZ", "logind", "PackageKit"):
            self.assertEqual(report[service], "unknown, no answer from the bus")
        self.assertIn("No such file", report["Preferences"])
        self.assertIn("(not there)", report["Log folder"])

    # The agent

    def test_reports_that_no_agent_runs(self):
        report = diagnose()
        self.assertEqual(report["com.orvex.KS7AgentServer"], "not there")
        self.assertEqual(report["Cameras"], "unknown, no agent")

    def test_reports_the_agent_and_its_start_time(self):
        # The kernel reports the start time in clock ticks, which are rounded down, so allow a difference.
        earliest = datetime.datetime.now() - datetime.timedelta(seconds=5)
        with agent("--scenario", "scripted") as (process, _):
            report = diagnose()
        started = re.fullmatch(r"running since (\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d), process (\d+)",
                               report["com.orvex.KS7AgentServer"])
        self.assertIsNotNone(started, report["com.orvex.KS7AgentServer"])
        self.assertGreater(datetime.datetime.fromisoformat(started[1]), earliest)
        self.assertEqual(int(started[2]), process.pid)
        self.assertEqual(report["Cameras"], "0")

    def test_lists_the_cameras(self):
        with agent("--scenario", "scripted") as (_, script):
            script.addCamera("00-1b-dc-0f-2a-9c", "Kitchen", "2A9C", 4)
            script.addCamera("00-1b-dc-0f-11-22", "Desk\nPackageKit: running", "1122", 0)
            report = diagnose()
        self.assertEqual(report["Cameras"], "2")
        self.assertIn("Kitchen (2A9C): status 4 Streaming", report["cameras"])
        # The line break is shown as its code, so that a camera's name cannot look like a line of the report.
        self.assertIn("Desk⟨U+000A⟩PackageKit: running (1122): status 0 Not Found", report["cameras"])

    def test_shows_place_markers_in_names_unchanged(self):
        with agent("--scenario", "scripted") as (_, script):
            script.addCamera("00-1b-dc-0f-2a-9c", "Cam %1", "2A9C", 4)
            script.addCamera("00-1b-dc-0f-11-22", "%4 %2 %99", "%3", 0)
            report = diagnose()
        self.assertEqual(set(report["cameras"]),
                         {"Cam %1 (2A9C): status 4 Streaming", "%4 %2 %99 (%3): status 0 Not Found"})

    def test_gives_up_on_an_agent_that_hangs(self):
        with agent("--scenario", "scripted") as (process, _):
            stop_process(process.pid)
            report = diagnose()
        self.assertEqual(report["Cameras"], "unknown, the agent does not answer")

    # The desktop's services

    def test_reports_which_services_are_available(self):
        self.assertEqual(diagnose()["PackageKit"], "not there")
        with packagekit():
            report = diagnose()
        self.assertEqual(report["PackageKit"], "running")
        self.assertEqual(report["BlueZ"], "not there")
        self.assertEqual(report["logind"], "not there")

    # The preferences

    def test_names_the_settings_and_none_of_their_values(self):
        secrets = {"PassKey": "471108", "FriendlyNames": {"00-1b": "Nursery"}, "KS7On": True}
        self.write_preferences(plistlib.dumps(secrets), 0o640)
        report = diagnose()
        self.assertEqual(report["Preferences"], f"{PREFERENCES}, mode 0640, a property list")
        self.assertEqual(set(report["Settings"].split(", ")), set(secrets))
        self.assertNotIn("471108", report["text"])
        self.assertNotIn("Nursery", report["text"])

    def test_reports_that_the_preferences_are_malformed(self):
        self.write_preferences(b"<plist><dict><key>PassKey</key>471108")
        report = diagnose()
        self.assertTrue(report["Preferences"].endswith("mode 0600, not a property list"), report["Preferences"])
        self.assertNotIn("471108", report["text"])

    def test_reports_the_permissions_of_the_owner_and_not_of_the_reader(self):
        # root may write a file that has no permission for it.
        self.write_preferences(plistlib.dumps({}), 0o440)
        self.assertEqual(diagnose()["Preferences"], f"{PREFERENCES}, mode 0440, a property list")

    def test_reports_why_the_preferences_cannot_be_read(self):
        PREFERENCES.mkdir()
        self.assertNotIn("mode", diagnose()["Preferences"])

    # The logs

    def test_counts_the_log_files(self):
        folder = pathlib.Path.home() / "Library/Logs/KS7_Logs/KS-7 System Preferences"
        folder.mkdir(parents=True)
        (folder / "one.log").touch()
        (folder / "two.log").touch()
        self.assertTrue(diagnose()["Log folder"].endswith("KS7_Logs, files: 2"))


if __name__ == "__main__":
    unittest.main(verbosity=2)
