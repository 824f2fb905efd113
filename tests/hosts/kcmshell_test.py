#!/usr/bin/python3
"""Tests the module in kcmshell with the stand-in agent, through accessibility and synthetic input."""

import os
import pathlib
import sys
import unittest

BUILD = pathlib.Path(os.environ["KS7_BUILD"])
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "support"))

import accessible  # noqa: E402
import stand_in  # noqa: E402

KCMSHELL = "kcmshell" + os.environ["KS7_QT_VERSION"]


class KcmshellTest(unittest.TestCase):
    def setUp(self):
        self.agent = stand_in.Agent()

    def tearDown(self):
        self.agent.quit_if_up()

    def open_module(self, agent=BUILD / "bin" / "ks7-agent-simulator"):
        return accessible.launch([KCMSHELL, "kcm_ks7"], env={
            "QT_PLUGIN_PATH": str(BUILD / "plugins"),
            "KS7_AGENT": str(agent),
            **accessible.foreign_program_environment()})

    def rows(self, module):
        return [name for name in module.names("table cell") if name]

    def wait_row(self, module, ending):
        return accessible.wait_until(
            lambda: next((cell for cell in module.all(role="table cell")
                          if accessible.name_of(cell).endswith(ending)), None),
            f"a row that ends in {ending!r}", details=module.dump)

    def test_shows_our_pane_and_no_error_page(self):
        with self.open_module() as module:
            for name in ("Add Camera", "Remove Camera", "Camera Actions", "Enable KS-7", "Show status menu"):
                module.wait_for(name)
            self.assertIn("KS-7", module.title())

    def test_lists_the_cameras_of_the_agent_that_the_pane_launched(self):
        self.assertFalse(self.agent.is_up())
        with self.open_module() as module:
            self.wait_row(module, ", Streaming")
            self.assertTrue(self.agent.is_up())
            self.assertTrue(all(", " in row for row in self.rows(module)), self.rows(module))

    def test_a_click_on_a_row_makes_that_camera_the_preferred_one(self):
        with self.open_module() as module:
            self.wait_row(module, ", Streaming")
            self.agent.clearRecord()
            module.click("Desk, Not Found")
            accessible.wait_until(
                lambda: any(call.startswith("setPreferredDeviceAddress(") for call in self.agent.recordedCalls()),
                "the choice of the camera", details=module.dump)
            module.click(module.wait_for("Kitchen, Not Streaming"))
            module.wait_for("Kitchen, Streaming")

    def test_an_agent_that_dies_leaves_an_empty_list(self):
        with self.open_module() as module:
            self.wait_row(module, ", Streaming")
            self.agent.die()
            accessible.wait_until(lambda: not self.rows(module), "an empty list", details=module.dump)
            module.wait_state("Remove Camera", "enabled", False)

    def test_without_an_agent_a_key_ends_the_alert(self):
        with self.open_module(agent="/nonexistent") as module:
            module.wait_active("Installation Error")
            accessible.key("Return")
            module.wait_gone("Installation Error", role="alert")
            module.wait_active("KS-7")
            self.assertIsNone(module.find(role="alert"))

    def test_option_held_at_opening_shows_debug_logging(self):
        with accessible.held("Alt_L"), self.open_module() as module:
            module.wait_for("Debug logging", role="check box")

    def test_the_module_names_its_authors_and_its_web_site(self):
        module = (BUILD / "plugins/plasma/kcms/systemsettings/kcm_ks7.so").read_bytes()
        for entry in (b"BugReportUrl", b"Authors", b"Orvex Network", b"License", b"Website"):
            self.assertIn(entry, module)

    def test_the_window_closes_and_the_program_ends_well(self):
        with self.open_module() as module:
            self.wait_row(module, ", Streaming")
            self.assertEqual(module.close_by_key(), 0)


if __name__ == "__main__":
    unittest.main(verbosity=2)
