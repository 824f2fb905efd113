"""A base class of tests with the stand-alone host and an agent that acts on commands only. The agent begins with one
known, idle camera."""

import os
import pathlib
import unittest

import accessible
import stand_in

BUILD = pathlib.Path(os.environ["KS7_BUILD"])
PREFERENCES = stand_in.PREFERENCES
KITCHEN = "00-1b-dc-0f-2a-9c"


class ScriptedPaneTest(unittest.TestCase):
    agent_options = ("--no-picture",)

    def setUp(self):
        PREFERENCES.unlink(missing_ok=True)
        self.simulator = stand_in.AgentProcess(*stand_in.SCRIPTED, *self.agent_options)
        self.agent = self.simulator.script
        self.agent.addCamera(KITCHEN, "Kitchen", "2A9C", 1)
        self.agent.setPreferred(KITCHEN)
        for behaviour in ("passKey", "firmware", "demoFailures"):
            self.agent.setBehaviour(behaviour, True)
        self.pane = None

    def tearDown(self):
        if self.pane:
            self.pane.end()
        self.agent.quit_if_up()
        self.simulator.process.wait()

    def open_pane(self, row="Kitchen, Not Streaming", **env):
        self.pane = accessible.launch([BUILD / "bin" / "ks7-preferences"], env=env)
        self.pane.wait_for(row)
        # A moment after it is shown, the pane moves the focus to the list. Wait for that, or it takes away a focus that
        # the test has set.
        self.pane.wait_focused("Cameras")

    def calls(self, operation):
        return self.simulator.calls(operation)

    def posts(self, name):
        return [post for post in self.agent.recordedPosts() if post.startswith(name)]
