#!/usr/bin/python3
"""Tests each task of the settings, the sheets and the about box once, in the stand-alone host with the stand-in agent.
The input is synthetic keys and mouse clicks."""

import datetime
import os
import pathlib
import plistlib
import stat
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "support"))

import accessible  # noqa: E402
from accessible import key, type_text, wait_until  # noqa: E402
from scripted_pane import KITCHEN, PREFERENCES, ScriptedPaneTest  # noqa: E402

# The arrow keys that reach an item in the menu of the camera actions, from the nearer end of the menu.
PROPERTIES = ("Down",) * 3
CHANGE_PASSKEY = ("Down",) * 4
UPDATE_FIRMWARE = ("Up", "Up")
ABOUT = ("Up",)
SITE = "http://www.orvex.example"


class FlowsTest(ScriptedPaneTest):
    """Each test begins with one known, idle camera and prepares everything else itself."""

    # Verbs

    def plug_in(self, needs_firmware=False):
        self.agent.plugUSB(KITCHEN, needs_firmware)

    def choose_action(self, *steps):
        """Opens the menu of the camera actions with the mouse and triggers an item with the keys."""
        self.open_popup("Camera Actions")
        key(*steps, "Return")

    def open_popup(self, control):
        closed = len(self.pane.x_windows())
        self.pane.click(control)
        wait_until(lambda: len(self.pane.x_windows()) > closed, "the pop-up", details=self.pane.dump)

    def wait_focused(self, name, role):
        node = self.pane.wait_for(name, role=role)
        self.pane.wait_state(node, "focused")
        return node

    def expect_alert(self, title, message):
        self.pane.wait_for(title)
        self.pane.wait_for(message)
        self.wait_focused("OK", "push button")
        key("Return")
        self.pane.wait_gone(message)

    # Properties

    def test_a_double_click_renames_the_camera(self):
        self.open_pane()
        self.pane.click("Kitchen, Not Streaming", times=2)
        self.wait_focused("Name:", "text")
        # The field's old name is selected, so typing replaces it.
        type_text("Hall")
        key("Return")
        self.pane.wait_for("Hall, Not Streaming")
        self.pane.wait_gone("Name:", role="text")

    def test_escape_leaves_the_name_and_the_id_is_read_only(self):
        self.open_pane()
        self.choose_action(*PROPERTIES)
        self.wait_focused("Name:", "text")
        type_text("Hall")
        shown = self.pane.wait_for("Camera ID:", role="text")
        self.assertEqual(self.pane.text(shown), "2A9C")
        key("Tab")
        self.pane.wait_state(shown, "focused")
        type_text("9")
        self.assertEqual(self.pane.text(shown), "2A9C")
        key("Escape")
        self.pane.wait_gone("Camera ID:", role="text")
        self.pane.wait_for("Kitchen, Not Streaming")
        self.assertEqual(self.calls("setName"), [])

    # Passkey

    def begin_passkey_change(self):
        self.plug_in()
        self.open_pane()
        self.choose_action(*CHANGE_PASSKEY)
        return self.wait_focused("New passkey:", "text")

    def test_a_new_passkey_is_set(self):
        self.begin_passkey_change()
        okay = self.pane.wait_for("OK", role="push button")
        self.assertFalse(self.pane.has(okay, "enabled"))
        type_text("12x")
        self.assertFalse(self.pane.has(okay, "enabled"))
        key("BackSpace")
        self.pane.wait_state(okay, "enabled")
        type_text("34")
        key("Return")
        self.expect_alert("Passkey Changed",
                          "Your camera's Bluetooth passkey has been set to \"1234\".  You will be asked for this "
                          "passkey the next time you use the camera.")
        self.assertEqual(len(self.calls("setPassKey")), 1)
        self.assertTrue(self.calls("removeCameraAtIndex"))
        self.assertTrue(self.posts("KS7StartDiscovering"))

    def test_a_passkey_is_refused_at_once_and_later(self):
        for passkey, code in (("0000", -104), ("9999", -105)):
            with self.subTest(passkey):
                self.begin_passkey_change() if not self.pane else self.choose_action(*CHANGE_PASSKEY)
                self.wait_focused("New passkey:", "text")
                type_text(passkey)
                self.pane.click(self.pane.wait_for("OK", role="push button"))
                self.expect_alert("Passkey Not Changed",
                                  "An error occurred setting your camera's Bluetooth passkey. Please try again.\n"
                                  f"Error: {code}")

    def test_without_a_cable_an_alert_appears(self):
        self.open_pane()
        self.choose_action(*CHANGE_PASSKEY)
        self.expect_alert("Connect To USB",
                          "To change your Bluetooth Passcode, you must connect the KS-7 to your computer via USB. "
                          "Please connect the camera and try again.")

    def test_unplugging_closes_the_passkey_sheet(self):
        self.begin_passkey_change()
        self.agent.unplugUSB()
        self.pane.wait_gone("New passkey:", role="text")

    # Firmware

    def begin_update(self):
        self.plug_in(needs_firmware=True)
        self.open_pane()
        self.choose_action(*UPDATE_FIRMWARE)
        self.pane.wait_for("Update Firmware puts the latest firmware version on your KS-7.")
        self.pane.wait_for("Click Continue to proceed.")
        self.wait_focused("Continue", "push button")
        key("Return")
        self.pane.wait_for("Do not disconnect the camera until the update is complete.")
        self.pane.wait_for("Click Continue to start the update.")
        self.wait_focused("Continue", "push button")

    def test_an_update_runs_to_its_end(self):
        self.agent.setBehaviour("firmware", False)
        self.begin_update()
        key("Return")
        self.pane.wait_for("Now updating firmware.")
        bar = self.pane.wait_for("Firmware update progress")
        self.assertIsNone(self.pane.find("Cancel", role="push button"))
        key("Escape")
        seen = []
        for value in (1, 3, 4):
            self.agent.post("KS7FirmwareUpdateProgress", {"Value": value, "Total": 4})
            wait_until(lambda: self.pane.value(bar) not in seen[-1:] + [None, 0], "progress", details=self.pane.dump)
            seen.append(self.pane.value(bar))
        self.assertEqual(seen, sorted(seen))
        self.assertFalse(self.pane.has(self.pane.find("Continue"), "enabled"))
        self.agent.post("KS7FirmwareUpdateEnded", {"Result": -107})
        self.pane.wait_for("Firmware update complete.")
        self.pane.wait_for("Please disconnect the camera now.")
        key("Return")
        self.pane.wait_gone("Firmware update complete.")

    def test_an_update_of_the_stand_in_ends_and_another_can_be_cancelled(self):
        self.begin_update()
        self.pane.click("Continue")
        self.pane.wait_for("Firmware update complete.")
        self.pane.click("Continue")
        self.pane.wait_gone("Firmware update complete.")
        self.plug_in(needs_firmware=True)
        self.choose_action(*UPDATE_FIRMWARE)
        self.pane.wait_for("Click Continue to proceed.")
        self.wait_focused("Continue", "push button")
        key("Escape")
        self.pane.wait_gone("Click Continue to proceed.")

    def test_a_refused_update_shows_the_reason(self):
        self.agent.setErrorCode("startUpdate", -12)
        self.begin_update()
        key("Return")
        self.pane.wait_for("An error occurred updating firmware.")
        self.pane.wait_for("Error: -12")
        key("Return")
        self.pane.wait_gone("Error: -12")

    def test_an_agent_that_dies_during_an_update_closes_the_sheet_but_not_the_window(self):
        self.agent.setBehaviour("firmware", False)
        self.begin_update()
        key("Return")
        self.pane.wait_for("Now updating firmware.")
        self.agent.die()
        self.pane.wait_gone("Now updating firmware.")
        self.pane.press("Show All")
        self.pane.wait_for("KS-7", role="push button")
        self.assertEqual(self.pane.close_by_key(), 0)

    # Settings

    def stored(self):
        return plistlib.loads(PREFERENCES.read_bytes())

    def test_the_switches_reach_the_agent(self):
        self.open_pane()
        for box, setting, post in (("Enable KS-7", "KS7On", "KS7ToggleEnabled"),
                                   ("Show status menu", "ShowStatusMenu", "KS7ToggleStatusMenu")):
            node = self.pane.wait_for(box, role="check box")
            self.assertTrue(self.pane.has(node, "checked"))
            self.pane.click(node)
            wait_until(lambda: self.posts(post), post, details=self.pane.dump)
            wait_until(lambda: not self.stored()[setting], f"{setting} off", details=self.pane.dump)
            self.pane.wait_state(node, "checked", False)
        # Press the check box through AT-SPI, as a screen reader does.
        self.pane.press(node)
        wait_until(lambda: self.stored()["ShowStatusMenu"], "the status menu on", details=self.pane.dump)
        self.agent.setPreference("KS7On", True)
        self.agent.post("KS7OnOffChanged", {})
        self.pane.wait_state("Enable KS-7", "checked")

    def test_a_size_is_on_disk_when_the_agent_is_notified(self):
        written = {**self.stored(), "Nested": [1, {"data": b"\0\xff", "real": 0.1}],
                   "Date": datetime.datetime(2010, 2, 3, 4, 5, 6)}
        PREFERENCES.write_bytes(plistlib.dumps(written))
        before = self.stored()
        self.open_pane()
        self.open_popup(self.pane.wait_for(role="combo box"))
        key("Home", "Return")
        wait_until(lambda: self.posts("KS7ChangedOptimizedPreference"), "the post", details=self.pane.dump)
        self.assertEqual(self.stored(), {**before, "VideoSize2": 0})

    def test_alt_held_reveals_debug_logging(self):
        self.open_pane()
        self.assertIsNone(self.pane.find("Debug logging"))
        self.pane.press("Show All")
        icon = self.pane.wait_for("KS-7", role="push button")
        with accessible.held("Alt_L"):
            self.pane.press(icon)
            box = self.pane.wait_for("Debug logging", role="check box")
        self.pane.click(box)
        folder = pathlib.Path.home() / "Library" / "Logs" / "KS7_Logs"
        wait_until(lambda: list(folder.rglob("*.log")), "a log file", details=self.pane.dump)

    # About

    def test_the_link_opens_the_site_once(self):
        folder = pathlib.Path(os.environ["KS7_SESSION_FOLDER"])
        opened = folder / "opened"
        handler = folder / "bin" / "xdg-open"
        handler.parent.mkdir(exist_ok=True)
        handler.write_text(f"#!/bin/sh\nprintf '%s\\n' \"$@\" >>'{opened}'\n")
        handler.chmod(handler.stat().st_mode | stat.S_IXUSR)
        self.open_pane(PATH=f"{handler.parent}:{os.environ['PATH']}")
        self.choose_action(*ABOUT)
        link = self.pane.wait_for("www.orvex.example", role="link")
        self.pane.wait_for("v1.0")
        # Pressing on the link and releasing outside of it must not open the site.
        x, y, width, height = self.pane.rectangle(link)
        accessible.point_at(x + width // 2, y + height // 2)
        accessible.xdotool("mousedown", 1)
        accessible.point_at(x + width + 40, y + height // 2)
        accessible.xdotool("mouseup", 1)
        self.pane.click(link)
        wait_until(opened.exists, "the opening of the site", details=self.pane.dump)
        key("Escape")
        self.pane.wait_gone("www.orvex.example", role="link")
        self.assertEqual(opened.read_text().split(), [SITE])


if __name__ == "__main__":
    unittest.main(verbosity=2)
