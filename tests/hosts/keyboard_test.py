#!/usr/bin/python3
"""Tests the main tasks in the stand-alone host with the keyboard alone."""

import pathlib
import plistlib
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "support"))

from accessible import ANNOUNCEMENTS, key, listen, type_text, wait_until  # noqa: E402
from pipewire_nodes import wait_for_camera  # noqa: E402
from scripted_pane import KITCHEN, PREFERENCES, ScriptedPaneTest  # noqa: E402

DESK = "00-1b-dc-0f-77-01"
READING_ORDER = ["Show All", "Enable KS-7", "Optimize for", "Cameras", "Add Camera", "Remove Camera", "Camera Actions",
                 "Start Preview", "Show status menu"]
# The arrow keys that reach each item in the menu of the camera actions.
CHOOSE_CAMERA, PROPERTIES, CHANGE_PASSKEY = ("Down",) * 2, ("Down",) * 3, ("Down",) * 4
UPDATE_FIRMWARE, ABOUT = ("Up", "Up"), ("Up",)


class KeyboardTest(ScriptedPaneTest):
    agent_options = ()

    def setUp(self):
        super().setUp()
        self.agent.addCamera(DESK, "Desk", "7701", 1)
        self.open_pane()

    # Verbs

    def tab_to(self, name):
        """Presses Tab until the named control has the focus. Fails if another control keeps the focus."""
        for _ in READING_ORDER:
            if self.pane.focused() == name:
                return
            self.tab()
        self.pane.wait_focused(name)

    def tab(self, chord="Tab"):
        before = self.pane.focused()
        key(chord)
        wait_until(lambda: self.pane.focused() not in ("", before), f"{chord} to leave {before}", details=self.pane.dump)
        return self.pane.focused()

    def open_actions(self):
        self.tab_to("Camera Actions")
        key("space")
        self.pane.wait_for("Properties…", role="menu item")

    def choose_action(self, *way):
        self.open_actions()
        key(*way, "Return")

    def wait_call(self, operation):
        wait_until(lambda: self.calls(operation), operation, details=self.pane.dump)
        return self.calls(operation)

    def stored(self, setting):
        return plistlib.loads(PREFERENCES.read_bytes())[setting]

    # Going round

    def test_tab_goes_round_in_reading_order_and_back(self):
        self.tab_to("Show All")
        there = ["Show All"] + [self.tab() for _ in READING_ORDER]
        self.assertEqual(there, READING_ORDER + ["Show All"])
        back = [self.tab("shift+Tab") for _ in READING_ORDER]
        self.assertEqual(back, READING_ORDER[::-1])

    def test_the_mnemonics_activate_their_controls(self):
        for chord, box in (("alt+m", "Show status menu"), ("alt+e", "Enable KS-7")):
            key(chord)
            self.pane.wait_state(box, "checked", False)
        key("alt+e")
        self.pane.wait_state("Enable KS-7", "checked")
        key("alt+o")
        self.pane.wait_focused("Optimize for")
        key("alt+a")
        self.pane.wait_focused("KS-7")
        key("space")
        self.pane.wait_for("Add Camera")

    # Cameras

    def test_a_camera_is_chosen_in_the_menu(self):
        self.choose_action(*CHOOSE_CAMERA, "Right", "Down")
        self.assertIn(DESK, self.wait_call("setPreferredDeviceAddress")[0])
        self.agent.setPreferred(DESK)
        self.agent.post("KS7PreferredCameraChanged", {})
        self.pane.wait_state("Desk, Not Streaming", "selected")
        self.pane.wait_focused("Camera Actions")

    def test_one_of_many_cameras_is_chosen_in_the_menu(self):
        for number in range(49):
            self.agent.addCamera(f"00-1b-dc-0f-88-{number:02x}", f"Room {number:02}", f"88{number:02X}", 1)
        wait_until(lambda: len(self.pane.all(role="table cell", showing=False)) == 51, "all cameras",
                   details=self.pane.dump)
        # "Right" opens the submenu of the cameras and makes its first item current. "Up" then wraps around to the last
        # camera.
        self.choose_action(*CHOOSE_CAMERA, "Right", "Up")
        self.assertIn("00-1b-dc-0f-88-30", self.wait_call("setPreferredDeviceAddress")[0])

    def test_a_closed_menu_returns_the_focus(self):
        self.open_actions()
        key("Escape")
        self.pane.wait_gone("Properties…", role="menu item")
        self.pane.wait_focused("Camera Actions")

    def test_a_search_is_started(self):
        self.tab_to("Add Camera")
        key("space")
        wait_until(lambda: self.posts("KS7StartDiscovering"), "the search", details=self.pane.dump)
        self.agent.post("KS7StartedDiscovering", {})
        self.pane.wait_for("Searching for cameras…")
        self.agent.post("KS7StoppedDiscovering", {})
        self.pane.wait_gone("Searching for cameras…")
        self.pane.wait_focused("Add Camera")

    def test_a_camera_is_removed_and_tab_still_works(self):
        self.tab_to("Remove Camera")
        key("space")
        self.assertIn("removeCameraAtIndex(0, true)", self.wait_call("removeCameraAtIndex")[0])
        self.pane.wait_gone("Kitchen, Not Streaming")
        self.tab_to("Start Preview")
        self.tab_to("Cameras")

    # Sheets

    def test_a_refused_passkey_keeps_the_keyboard(self):
        self.agent.plugUSB(KITCHEN, False)
        self.choose_action(*CHANGE_PASSKEY)
        self.pane.wait_focused("New passkey:")
        with listen(ANNOUNCEMENTS) as heard:
            # The program sends events some time after a listener has come.
            wait_until(lambda: key("Return") or heard.names(), "the rule", details=self.pane.dump)
            type_text("12ab")
            heard.forget()
            key("Return")
            heard.wait_for("1 to 16 digits")
        self.pane.wait_focused("New passkey:")
        key("Escape")
        self.pane.wait_focused("Camera Actions")

    def test_a_camera_is_renamed(self):
        self.choose_action(*PROPERTIES)
        self.pane.wait_focused("Name:")
        type_text("Hall")
        key("Return")
        self.pane.wait_for("Hall, Not Streaming")
        self.pane.wait_focused("Camera Actions")

    def test_tab_goes_through_the_properties(self):
        self.choose_action(*PROPERTIES)
        self.pane.wait_focused("Name:")
        fields = ["Name:", "Camera ID:", "Ignore this camera", "OK", "Cancel"]
        self.assertEqual([self.tab() for _ in fields], fields[1:] + fields[:1])
        for chord, field in (("alt+i", "Camera ID:"), ("alt+n", "Name:")):
            key(chord)
            self.pane.wait_focused(field)
        key("alt+g")
        self.pane.wait_state("Ignore this camera", "checked")
        key("Escape")
        self.pane.wait_gone("Name:", role="text")
        self.pane.wait_focused("Camera Actions")
        self.assertEqual(self.calls("setName"), [])

    def test_sheets_and_alerts_return_the_focus(self):
        self.agent.plugUSB(KITCHEN, False)
        self.choose_action(*CHANGE_PASSKEY)
        self.pane.wait_focused("New passkey:")
        type_text("1234")
        key("Return")
        self.pane.wait_for("Passkey Changed")
        self.pane.wait_focused("OK")
        key("Return")
        self.pane.wait_gone("Passkey Changed")
        self.pane.wait_focused("Camera Actions")

    def test_the_firmware_is_updated_to_the_end(self):
        self.agent.plugUSB(KITCHEN, True)
        self.agent.setBehaviour("firmware", False)
        self.choose_action(*UPDATE_FIRMWARE)
        self.pane.wait_focused("Continue")
        key("Return")
        self.pane.wait_for("Click Continue to start the update.")
        key("Return")
        self.pane.wait_focused("Firmware update progress")
        self.agent.post("KS7FirmwareUpdateEnded", {"Result": 0})
        self.pane.wait_focused("Continue")
        key("Return")
        self.pane.wait_gone("Continue", role="push button")
        self.pane.wait_focused("Camera Actions")

    def test_the_about_box_opens_and_closes(self):
        self.choose_action(*ABOUT)
        self.pane.wait_for("v1.0")
        self.pane.wait_focused("OK")
        self.assertEqual({self.tab(), self.tab(), self.tab()}, {"www.orvex.example", "OK", "Copy Diagnosis"})
        key("Escape")
        self.pane.wait_gone("v1.0")
        self.pane.wait_focused("Camera Actions")
        self.choose_action(*ABOUT)
        self.pane.wait_focused("OK")
        key("Return")
        self.pane.wait_gone("v1.0")

    # Service and preview

    def test_the_service_is_switched_off_and_on(self):
        self.tab_to("Enable KS-7")
        for is_on in (False, True):
            key("space")
            wait_until(lambda: bool(self.stored("KS7On")) == is_on, f"the service on: {is_on}", details=self.pane.dump)
            self.pane.wait_state("Cameras", "enabled", is_on)
            self.pane.wait_focused("Enable KS-7")

    def test_a_choice_is_made_in_the_pop_up(self):
        self.tab_to("Optimize for")
        key("space")
        self.pane.wait_state("Optimize for", "expanded")
        key("Home", "Return")
        wait_until(lambda: self.stored("VideoSize2") == 0, "smooth motion", details=self.pane.dump)
        self.pane.wait_focused("Optimize for")

    def test_the_preview_is_started_and_stopped(self):
        self.agent.setStatus(KITCHEN, 4)
        self.pane.wait_for("Kitchen, Streaming")
        wait_for_camera()
        self.tab_to("Start Preview")
        # The button keeps its Alt+P shortcut when its text changes.
        for chord in ("space", "alt+p"):
            key(chord)
            self.pane.wait_focused("Stop Preview")
            key(chord)
            self.pane.wait_focused("Start Preview")

    def test_the_window_closes(self):
        self.assertEqual(self.pane.close_by_key(), 0)


if __name__ == "__main__":
    unittest.main(verbosity=2)
