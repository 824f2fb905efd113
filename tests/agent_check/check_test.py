"""Tests that ks7-agent-check accepts agents that follow the contract, and reports each violation of the others."""

import json
import os
import pathlib
import pty
import signal
import subprocess
import sys
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests" / "support"))

from pipewire_nodes import AGENT_CAMERA, cameras, nodes  # noqa: E402
from processes import stop_process  # noqa: E402
from stand_in import AGENT, PREFERENCES, PROGRAM, TIMEOUT, StandInAgent, preferences, wait_until  # noqa: E402

CHECK = PROGRAM.with_name("ks7-agent-check")
EXAMPLE = ROOT / "docs" / "examples" / "ks7_agent.py"
KITCHEN = "00-1b-dc-0f-2a-9c"
WORKSHOP = "00-1b-dc-0f-5d-04"
PORCH = "00-1b-dc-0f-00-01"
ENVIRONMENT = {**os.environ, "PATH": f"{PROGRAM.parent}:{os.environ['PATH']}", "KS7_INTERFACES": str(ROOT / "agent")}


def check(*arguments, **options):
    return subprocess.run([CHECK, *arguments], stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False,
                          timeout=TIMEOUT, **{"env": ENVIRONMENT, **options})


class Run:
    """A run of ks7-agent-check with --json. The option --slow multiplies the program's time limits, because test
    machines may be busy. With a hanging agent the program waits until a limit ends, so tests of such agents pass a
    lower factor."""

    def __init__(self, *arguments, slow=10):
        done = check("--json", "--slow", str(slow), *arguments)
        self.code = done.returncode
        self.report = json.loads(done.stdout)
        self.demands = {each["id"]: each for each in self.report["demands"]}

    def ids(self, result):
        return [name for name, each in self.demands.items() if each["result"] == result]

    def detail(self, name):
        return self.demands[name]["detail"]


def script(folder, text):
    """Writes an executable script that runs a shell command, and returns its path. Tests launch it as an agent."""
    file = pathlib.Path(folder) / "agent.sh"
    file.write_text(f"#!/bin/sh\n{text}\n")
    file.chmod(0o755)
    return file


def quick_stand_in():
    return script(os.environ["KS7_SESSION_FOLDER"], f"exec {PROGRAM} --quick")


class Good(unittest.TestCase):
    def setUp(self):
        PREFERENCES.unlink(missing_ok=True)

    def passes_whole(self, run, skipped):
        self.assertEqual(run.ids("fail"), [], run.demands)
        self.assertEqual(run.ids("skip"), skipped)
        self.assertEqual((run.code, run.report["failed"], run.report["complete"]), (0, 0, True))
        self.assertEqual([node for node in cameras() if node == AGENT_CAMERA], [])

    def test_the_stand_in_passes_all_demands(self):
        self.passes_whole(Run("--launch", quick_stand_in(), "--allow-changes", WORKSHOP, "--passkey", "1234"), [])

    def test_the_example_passes_all_demands(self):
        run = Run("--launch", EXAMPLE, "--allow-changes", PORCH)
        self.passes_whole(run, ["change.passkey", "change.firmware"])

    def test_without_permission_nothing_is_changed(self):
        agent = StandInAgent("--quick", "--scenario", "empty")
        try:
            agent.add_camera(PORCH)
            before = preferences()
            agent.script.clearRecord()
            run = Run()
            self.assertEqual(run.ids("fail"), [])
            self.assertIn("--allow-changes", run.detail("change.removal"))
            calls = {call.split("(")[0] for call in agent.script.recordedCalls()}
            self.assertEqual(calls & {"setName", "setIgnore", "setPreferredDeviceAddress", "removeCameraAtIndex",
                                      "checkRemoveCurrentCam", "startUpdate", "setPassKey", "streamingStarted",
                                      "streamingStopped", "streamingInitiated", "pairingInitiated"}, set())
            self.assertEqual(agent.script.recordedPosts(), ["KS7StartDiscovering"])
            self.assertEqual(preferences(), before)
        finally:
            agent.end()


class Broken(unittest.TestCase):
    def setUp(self):
        PREFERENCES.unlink(missing_ok=True)
        self.agent = StandInAgent("--quick", "--no-picture")

    def tearDown(self):
        self.agent.end()

    def only(self, *groups, slow=10):
        return Run(*(part for group in groups for part in ("--only", group)), slow=slow)

    def test_an_agent_that_hangs_in_a_call(self):
        self.agent.script.hangDuring("cameraDict", 0.0)
        run = self.only("operation", "end", slow=1)
        self.assertEqual(run.ids("fail"), ["operation.cameraDict", "end.alive"])
        self.assertIn("no reply within 3 s", run.detail("operation.cameraDict"))
        self.assertEqual(run.code, 1)

    def test_an_agent_that_hangs_in_every_call(self):
        stop_process(self.agent.process.pid)
        run = self.only("operation", "load", "end", slow=1)
        self.agent.process.send_signal(signal.SIGCONT)
        self.assertIn("no reply within 3 s", run.detail("operation.flush"))
        self.assertEqual(run.ids("fail"), ["operation.flush", "end.alive"])
        self.assertEqual(run.detail("load.hundred"), "the agent replies to nothing")

    def test_an_agent_that_replies_with_another_type(self):
        for kind, came in (("wrongType", 'instead of "as"'), ("empty", 'nothing instead of "as"'), ("error", "as a script wanted")):
            self.agent.script.malformReplies("sortedDeviceList", kind)
            run = self.only("operation", "load", "list", "posts")
            self.assertEqual(run.ids("fail"), ["operation.sortedDeviceList"])
            self.assertIn(came, run.detail("operation.sortedDeviceList"))

    def test_an_agent_whose_list_contradicts_itself(self):
        self.agent.script.setSorted([PORCH], signature="as")
        run = self.only("list")
        self.assertIn("list.order", run.ids("fail"))
        self.assertIn(f"sortedDeviceList has [{PORCH}]", run.detail("list.order"))

    def test_an_agent_whose_address_has_a_place_marker(self):
        self.agent.script.addCamera("%1", "Kitchen", "2A9C", 99, signature="sssi")
        self.assertIn("%1 has the status 99", self.only("list").detail("list.records"))

    def test_an_agent_that_dies(self):
        self.agent.script.dieDuring("cameras")
        run = self.only("operation", "list", "end")
        self.assertEqual(run.ids("fail"), ["operation.cameras", "end.alive"])
        self.assertIn("ended without a reply", run.detail("operation.cameras"))
        self.assertIn("the agent has ended", run.detail("list.order"))
        self.assertEqual(run.code, 1)

    def test_an_agent_that_posts_nothing(self):
        self.agent.script.mute(True)
        run = self.only("posts", slow=1)
        self.assertIn("the agent did not post KS7StartedDiscovering in time", run.detail("posts.search"))
        self.assertIn("posts.search", run.ids("fail"))

    def test_an_agent_that_omits_keys(self):
        self.agent.script.forgetKeys(True)
        before = preferences()
        run = Run("--only", "file", "--allow-changes", KITCHEN)
        self.assertEqual(run.ids("fail"), ["file.foreign"])
        self.assertIn("has dropped the key com.orvex.KS7AgentCheck.", run.detail("file.foreign"))
        self.assertEqual(preferences(), {**before, "FriendlyNames": preferences()["FriendlyNames"]})

    def test_an_agent_with_two_nodes(self):
        twins = [subprocess.Popen([PROGRAM, "--picture-only"]) for _ in range(2)]
        try:
            wait_until(lambda: sum(each.get("node.name") == AGENT_CAMERA for each in nodes()) == 2, "both nodes")
            run = self.only("picture")
        finally:
            for twin in twins:
                twin.terminate()
                twin.wait()
        self.assertEqual(run.ids("fail"), ["picture.node"])
        self.assertEqual(run.detail("picture.node"), f'2 nodes have the name "{AGENT_CAMERA}"')

    def test_an_agent_that_shares_the_names_with_another(self):
        self.agent.script.releaseName("KS7AgentServerUSB")
        owner = subprocess.Popen([sys.executable, "-c", "import dbus, sys; bus = dbus.SessionBus();"
                                  "bus.request_name('com.orvex.KS7AgentServerUSB'); print('up', flush=True); sys.stdin.read()"],
                                 stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        try:
            owner.stdout.readline()
            run = self.only("names")
        finally:
            owner.communicate()
        self.assertEqual(run.ids("fail"), ["names.process"])
        self.assertEqual(run.detail("names.process"),
                         f"process {self.agent.process.pid} owns one name, process {owner.pid} the other")


class NothingToCheck(unittest.TestCase):
    def assert_refused(self, reason, *arguments, **options):
        done = check(*arguments, **options)
        self.assertEqual((done.returncode, done.stdout), (2, ""), done.stderr)
        self.assertEqual(len(done.stderr.splitlines()), 1, done.stderr)
        self.assertIn(reason, done.stderr)

    def test_no_bus(self):
        self.assert_refused("there is no session bus", env={**ENVIRONMENT, "DBUS_SESSION_BUS_ADDRESS": "unix:path=/nowhere"})

    def test_no_agent(self):
        self.assert_refused("there is no agent on the session bus")

    def test_no_program(self):
        self.assert_refused("cannot be started", "--launch", "/nowhere")

    def test_a_program_that_is_not_an_agent(self):
        self.assert_refused("has not taken the agent's bus names", "--launch", "/bin/true")

    def test_another_agent_and_another_camera(self):
        agent = StandInAgent("--quick", "--no-picture")
        try:
            self.assert_refused(f"process {agent.process.pid} owns {AGENT}", "--launch", PROGRAM)
            self.assert_refused(f"but these: {PORCH[:12]}", "--allow-changes", "nobody")
        finally:
            agent.end()

    def test_invalid_arguments(self):
        for arguments, reason in ((["--only", "x"], "no group"), (["--slow", "0"], "a number from 1"), (["x"], "too many"),
                                  (["--odd"], "odd")):
            self.assert_refused(reason, *arguments)

    def test_an_interruption_restores_and_ends_what_was_started(self):
        PREFERENCES.unlink(missing_ok=True)
        program = script(os.environ["KS7_SESSION_FOLDER"], f"exec {PROGRAM}")
        run = subprocess.Popen([CHECK, "--launch", program, "--only", "posts"], stdout=subprocess.PIPE, text=True, env=ENVIRONMENT)
        wait_until(PREFERENCES.exists, "the launched agent")
        run.send_signal(signal.SIGINT)
        out, _ = run.communicate(timeout=TIMEOUT)
        self.assertEqual(run.returncode, 2, out)
        self.assertEqual(cameras(), {})


class Output(unittest.TestCase):
    def setUp(self):
        self.agent = StandInAgent("--quick", "--no-picture")

    def tearDown(self):
        self.agent.end()

    def test_plain_lines_in_a_pipe(self):
        out = check("--only", "names").stdout
        self.assertEqual(out.splitlines(), [
            "pass  names.owned: Both bus names are owned",
            "pass  names.process: One process owns both names",
            "skip  names.started: KS7AgentStarted is posted once, when both names are owned: the agent was running "
            "already; --launch starts one",
            "2 passed, 0 failed, 1 skipped"])

    def test_progress_and_colours_on_a_terminal(self):
        reader, writer = pty.openpty()
        run = subprocess.Popen([CHECK, "--only", "names"], stdin=subprocess.DEVNULL, stdout=writer, env=ENVIRONMENT)
        os.close(writer)
        out = b""
        try:
            while part := os.read(reader, 4096):
                out += part
        except OSError:  # os.read() fails when the program has closed the terminal
            pass
        self.assertEqual(run.wait(TIMEOUT), 0)
        self.assertIn("…     names.owned".encode(), out)
        self.assertIn(b"\033[32mpass", out)

    def test_its_output_is_translated_into_german(self):
        german = {**ENVIRONMENT, "LC_ALL": "de_DE.UTF-8", "LANGUAGE": "de"}
        self.assertIn("Beide Busnamen haben einen Besitzer", check("--only", "names", env=german).stdout)
        self.assertIn("Startet dieses Programm", check("--help", env=german).stdout)
        self.assertEqual(json.loads(check("--json", "--only", "names", env=german).stdout)["demands"][0]["demand"],
                         "Both bus names are owned")


if __name__ == "__main__":
    unittest.main(verbosity=2)
