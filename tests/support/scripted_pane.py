"""The stand-alone host on an agent that does only what a test says: one camera, known and idle, to begin with."""

import os
import pathlib
import subprocess
import unittest

import accessible
import stand_in

BUILD = pathlib.Path(os.environ["KS7_BUILD"])
PREFERENCES = pathlib.Path(os.environ["XDG_CONFIG_HOME"]) / "com.orvex.KS7Agent.plist"
KITCHEN = "00-1b-dc-0f-2a-9c"


class ScriptedPaneTest(unittest.TestCase):
    agent_options = ("--no-picture",)

    def setUp(self):
        PREFERENCES.unlink(missing_ok=True)
        self.simulator = subprocess.Popen([BUILD / "bin" / "ks7-agent-simulator", "--scenario", "scripted", "--quick",
                                           *self.agent_options], stdin=subprocess.DEVNULL)
        self.agent = stand_in.Agent()
        self.agent.wait_up()
        self.agent.addCamera(KITCHEN, "Kitchen", "2A9C", 1)
        self.agent.setPreferred(KITCHEN)
        for behaviour in ("passKey", "firmware", "demoFailures"):
            self.agent.setBehaviour(behaviour, True)
        self.pane = None

    def tearDown(self):
        if self.pane:
            self.pane.end()
        self.agent.quit_if_up()
        self.simulator.wait()

    def open_pane(self, row="Kitchen, Not Streaming", **env):
        self.pane = accessible.launch([BUILD / "bin" / "ks7-preferences"], env=env)
        self.pane.wait_for(row)

    def calls(self, operation):
        return [call for call in self.agent.recordedCalls() if call.startswith(operation + "(")]

    def posts(self, name):
        return [post for post in self.agent.recordedPosts() if post.startswith(name)]
