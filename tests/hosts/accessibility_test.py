#!/usr/bin/python3
"""Tests the stand-alone host's accessible tree: the pane, its sheets, its menu and its alerts."""

import itertools
import pathlib
import plistlib
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "support"))

from accessible import ANNOUNCEMENTS, listen, name_of, role_of, wait_until  # noqa: E402
from pipewire_nodes import wait_for_camera  # noqa: E402
from scripted_pane import KITCHEN, PREFERENCES, ScriptedPaneTest  # noqa: E402

DESK = "00-1b-dc-0f-77-01"
# The roles of controls, which all need a name.
INTERACTIVE = {"push button", "toggle button", "check box", "radio button", "combo box", "text",
               "password text", "table", "table cell", "link", "menu item", "check menu item", "list item", "slider"}
# The roles of texts, containers and pictures.
OTHER = {"application", "frame", "dialog", "alert", "filler", "panel", "label", "progress bar",
         "animation", "image", "separator", "list", "popup menu", "menu", "menu bar", "window", "scroll pane"}
HALL = "00-1b-dc-0f-77-03"
CONFIRM = "Click Continue to start the update."
METERS = ("Left audio level", "Right audio level")
# The visible objects of the pane, from top to bottom and from left to right.
PANE = [
    ("push button", "Show All"),
    ("check box", "Enable KS-7"),
    ("label", "Optimize for:"),
    ("combo box", "Optimize for"),
    ("table", "Cameras"),
    ("table cell", "Kitchen, Not Streaming"),
    ("table cell", "Desk, Not Found"),
    ("push button", "Add Camera"),
    ("push button", "Remove Camera"),
    ("push button", "Camera Actions"),
    ("label", "Preview is off"),
    ("label", "L"),
    ("progress bar", "Left audio level"),
    ("label", "R"),
    ("progress bar", "Right audio level"),
    ("push button", "Start Preview"),
    ("check box", "Show status menu"),
    ("label", "v1.0 by Orvex Network"),
]


class AccessibilityTest(ScriptedPaneTest):
    def setUp(self):
        super().setUp()
        self.agent.addCamera(DESK, "Desk", "7701", 0)

    # Verbs

    def shown(self):
        return [node for node in self.pane.nodes() if self.pane.has(node, "showing")]

    def related(self, node, kind):
        return [name_of(target) for target in self.pane.related(node, kind)]

    def assert_all_can_be_read(self):
        """Checks that every control and meter has a name, and that screen readers know every role. A dialog that is
        closing has objects without a role, so a problem counts only if it stays."""
        problems = []

        def all_can_be_read():
            problems[:] = filter(None, map(self.what_cannot_be_read, self.shown()))
            return not problems
        wait_until(all_can_be_read, "a tree that can be read", details=lambda: f"{problems}\n{self.pane.dump()}")

    def what_cannot_be_read(self, node):
        role, name = role_of(node), name_of(node)
        if role not in INTERACTIVE | OTHER:
            return f"{name!r} has the role {role}"
        if not name and (role in INTERACTIVE or role == "progress bar" or self.pane.has(node, "focusable")):
            return f"a {role} without a name"
        if role in ("text", "combo box") and not self.related(node, "labelled-by"):
            return f"the {role} {name!r} has no label"
        if role == "progress bar" and not 0 <= self.pane.value(node) <= 1:
            return f"the meter {name!r} is out of its range"
        return None

    def assert_controls(self, *expected, within):
        names = [(role_of(node), name_of(node)) for node in self.pane.nodes(self.pane.wait_for(within))
                 if self.pane.has(node, "showing") and name_of(node)]
        for control in expected:
            self.assertIn(control, names)
        self.assertTrue(names[0][0] in ("dialog", "alert"), names[0])

    def choose_action(self, item):
        """Opens the menu of the camera actions and triggers an item, both through AT-SPI."""
        self.pane.press("Camera Actions", "showmenu")
        self.pane.press(self.pane.wait_for(item, role="menu item"))
        wait_until(lambda: not self.pane.find(item, role="menu item"), "the closing of the menu",
                   details=self.pane.dump)

    def be_heard(self, heard):
        """Changes a camera's status until the listener receives an event. A program starts to send events only some
        time after a listener has registered."""
        statuses = itertools.cycle((2, 1))

        def told():
            self.agent.setStatus(KITCHEN, next(statuses))
            return heard.names()
        wait_until(told, "the first word", details=self.pane.dump)
        self.agent.setStatus(KITCHEN, 0)
        heard.wait_for("Kitchen, Not Found")
        heard.forget()

    def be_told(self, heard):
        """Restarts the search for cameras until the listener receives its first announcement. Afterwards a search is
        still running."""
        def told():
            self.agent.post("KS7StoppedDiscovering", {})
            self.agent.post("KS7StartedDiscovering", {})
            return "Searching for cameras…" in heard.names()
        wait_until(told, "the first news", details=self.pane.dump)
        heard.forget()

    def wait_described(self, node, description):
        wait_until(lambda: node.get_description() == description, description, details=self.pane.dump)

    def press(self, button, within):
        self.pane.press(self.pane.wait_for(button, role="push button", within=self.pane.wait_for(within)))

    # The pane

    def test_every_control_of_the_pane_is_named_in_reading_order(self):
        self.open_pane()
        self.assert_all_can_be_read()
        named = [(role_of(node), name_of(node)) for node in self.shown() if name_of(node)]
        named = [entry for entry in named if entry[0] not in ("application", "frame", "list item")]
        self.assertEqual(named, PANE)

    def test_labels_belong_to_their_controls(self):
        self.open_pane()
        self.assertEqual(self.related("Optimize for", "labelled-by"), ["Optimize for:"])
        self.assertEqual(self.related("Optimize for:", "label-for"), ["Optimize for"])
        for meter, label in zip(METERS, "LR"):
            self.assertEqual(self.related(meter, "labelled-by"), [label])
        for button in ("Add Camera", "Remove Camera", "Camera Actions"):
            self.assertTrue(self.pane.wait_for(button).get_description(), button)

    def test_the_pop_up_exposes_its_choice(self):
        self.open_pane()
        pop_up = self.pane.wait_for("Optimize for", role="combo box")
        self.assertEqual(self.pane.text(pop_up), "Picture quality")
        self.assertEqual(self.pane.names("list item", within=pop_up), ["Smooth motion", "Picture quality"])
        self.assertFalse([name_of(node) for node in self.pane.nodes(pop_up) if self.pane.has(node, "focused")],
                         "a closed list never has the keyboard")

    def test_a_choice_is_made_in_the_pop_up(self):
        self.open_pane()
        pop_up = self.pane.wait_for("Optimize for", role="combo box")
        for action, text, stored in (("decrease", "Smooth motion", 0), ("increase", "Picture quality", 1)):
            self.pane.press(pop_up, action)
            wait_until(lambda: self.pane.text(pop_up) == text, text, details=self.pane.dump)
            wait_until(lambda: plistlib.loads(PREFERENCES.read_bytes())["VideoSize2"] == stored, f"{text} stored")

    def test_the_table_exposes_its_rows_and_the_selection(self):
        self.open_pane()
        table = self.pane.wait_for("Cameras", role="table").get_table_iface()
        self.assertEqual((table.get_n_rows(), table.get_n_columns()), (2, 1))
        self.assertEqual(list(table.get_selected_rows()), [0])
        kitchen, desk = self.pane.all(role="table cell")
        self.assertTrue(self.pane.has(kitchen, "selected"))
        self.assertFalse(self.pane.has(desk, "selected"))
        self.pane.press(desk)
        wait_until(lambda: f'setPreferredDeviceAddress("{DESK}")' in self.agent.recordedCalls(), "the choice",
                   details=self.pane.dump)
        self.agent.post("KS7PreferredCameraChanged", {})
        self.pane.wait_state(desk, "selected")

    def test_one_of_many_cameras_is_chosen(self):
        for number in range(49):
            self.agent.addCamera(f"00-1b-dc-0f-88-{number:02x}", f"Room {number:02}", f"88{number:02X}", 1)
        self.open_pane()
        wait_until(lambda: len(self.pane.all(role="table cell", showing=False)) == 51, "all cameras",
                   details=self.pane.dump)
        # The table has to be scrolled to show the row of Room 48. A screen reader can press this row nevertheless.
        wanted = self.pane.wait_for("Room 48, Not Streaming", role="table cell", showing=False)
        self.pane.press(wanted)
        wait_until(lambda: self.calls("setPreferredDeviceAddress"), "the choice", details=self.pane.dump)
        self.assertIn("00-1b-dc-0f-88-30", self.calls("setPreferredDeviceAddress")[0])

    def test_a_camera_is_removed(self):
        self.open_pane()
        self.pane.press("Remove Camera")
        wait_until(lambda: self.calls("removeCameraAtIndex"), "the removal", details=self.pane.dump)
        self.pane.wait_gone("Kitchen, Not Streaming")
        self.pane.wait_for("Desk, Not Found")

    def test_an_empty_list_says_what_to_do(self):
        self.open_pane()
        for camera in (KITCHEN, DESK):
            self.agent.removeCamera(camera)
        self.agent.post("KS7CameraListChanged", {})
        self.pane.wait_gone(role="table cell")
        table = self.pane.wait_for("Cameras", role="table")
        self.assertEqual(table.get_description(), "No cameras found. Choose + to search.")
        self.agent.post("KS7StartedDiscovering", {})
        self.wait_described(table, "Searching for cameras…")
        self.agent.setPreference("KS7On", False)
        self.agent.post("KS7OnOffChanged", {})
        self.wait_described(table, "KS-7 is switched off.")
        self.assert_all_can_be_read()
        self.agent.die()
        self.wait_described(table, "The camera agent is not running or does not answer. Leave this page or close this window, and open it again.")

    def test_changes_are_announced(self):
        self.open_pane()
        with listen(ANNOUNCEMENTS) as heard:
            self.be_told(heard)
            self.agent.renameCamera(DESK, "Study")
            self.pane.wait_for("Study, Not Found")
            self.agent.addCamera(HALL, "Hall", "0003", 1)
            heard.wait_for("New camera: Hall")
            self.assertFalse([news for news in heard.names() if "Study" in news], "a renamed camera is not new")
            self.agent.post("KS7StoppedDiscovering", {})
            heard.wait_for("The search has ended.")
            # The focus must be outside of the list: there the row's new name is reported in place of an announcement.
            self.pane.focus("Enable KS-7")
            self.agent.setStatus(KITCHEN, 4)
            heard.wait_for("Kitchen, Streaming")
            self.agent.die()
            heard.wait_for("The camera agent is not running or does not answer. Leave this page or close this window, and open it again.")

    def test_a_removal_and_the_next_choice_are_announced(self):
        self.open_pane()
        with listen(ANNOUNCEMENTS) as heard:
            self.be_told(heard)
            self.pane.focus("Remove Camera")
            self.pane.press("Remove Camera")
            heard.wait_for("Removed from the list: Kitchen. Now chosen: Desk, Not Found")
            self.assertEqual([news for news in heard.names() if "Desk" in news], heard.names()[-1:])

    def test_lost_bluetooth_is_shown_until_it_returns(self):
        self.open_pane()
        self.agent.post("KS7NoBluetooth", {})
        self.press("OK", "Bluetooth Error")
        # Wait until the alert is gone: an object that disappears while the tree is read has no role.
        self.pane.wait_gone("Bluetooth Error")
        self.pane.wait_for("Bluetooth is off. Turn it on to use your cameras.")
        button = self.pane.wait_for("Bluetooth Settings…", role="push button")
        self.assertEqual(button.get_description(), "Bluetooth is off. Turn it on to use your cameras.")
        self.assert_all_can_be_read()
        self.agent.post("KS7FoundBluetooth", {})
        self.pane.wait_gone("Bluetooth Settings…")

    def test_a_new_status_of_the_chosen_camera_is_announced_once(self):
        self.open_pane()
        with listen("object:property-change:accessible-name") as heard:
            self.be_heard(heard)
            self.agent.setStatus(KITCHEN, 3)
            heard.wait_for("Kitchen, Starting")
            # The pane must announce neither a refresh without changes nor a new status of a camera that is not
            # selected. Cause both, and then a change that is announced: no event may come between the two
            # announcements.
            self.agent.post("KS7CameraListChanged", {})
            self.agent.setStatus(DESK, 1)
            self.pane.wait_for("Desk, Not Streaming")
            self.agent.setStatus(KITCHEN, 4)
            heard.wait_for("Kitchen, Streaming")
            self.assertEqual(heard.names(), ["Kitchen, Starting", "Kitchen, Streaming"])

    # The camera actions

    def test_the_camera_actions_open_and_close(self):
        self.open_pane()
        self.assertIsNone(self.pane.find(role="menu item"))
        self.pane.press("Camera Actions", "showmenu")
        self.pane.wait_for("Properties…", role="menu item")
        self.assertEqual([name for name in self.pane.names("menu item") if name],
                         ["Use This Camera", "Choose Camera", "Properties…", "Change Passkey…", "Update Firmware…",
                          "About KS-7…"])
        self.assert_all_can_be_read()
        self.pane.wait_state("Camera Actions", "expanded")

    # The sheets

    def test_the_properties_sheet(self):
        self.open_pane()
        self.choose_action("Properties…")
        self.assert_controls(("text", "Name:"), ("text", "Camera ID:"), ("check box", "Ignore this camera"),
                             ("push button", "OK"), ("push button", "Cancel"), within="Camera Properties")
        self.assert_all_can_be_read()
        self.press("Cancel", "Camera Properties")
        self.pane.wait_gone("Camera ID:")

    def test_a_camera_is_renamed(self):
        self.open_pane()
        self.choose_action("Properties…")
        self.pane.set_text(self.pane.wait_for("Name:", role="text"), "Hall")
        self.press("OK", "Camera Properties")
        self.pane.wait_for("Hall, Not Streaming")

    def test_the_passkey_sheet_and_its_alert(self):
        self.agent.plugUSB(KITCHEN, False)
        self.open_pane()
        self.choose_action("Change Passkey…")
        self.assert_controls(("text", "New passkey:"), ("push button", "OK"), ("push button", "Cancel"),
                             within="Change Passkey")
        self.assertEqual(self.pane.wait_for("Change Passkey", role="dialog").get_description(), "Kitchen (2A9C)")
        field = self.pane.wait_for("New passkey:", role="text")
        self.assertEqual(field.get_description(), "1 to 16 digits")
        for line in ("1 to 16 digits", "Kitchen (2A9C)"):
            self.pane.wait_for(line, role="label")
        self.assert_all_can_be_read()
        self.pane.set_text(field, "1234")
        self.press("OK", "Change Passkey")
        self.assert_controls(("push button", "OK"), within="Passkey Changed")
        self.assertIn("has been set to \"1234\"", self.pane.wait_for("Passkey Changed").get_description())
        self.assert_all_can_be_read()

    def test_the_firmware_sheet(self):
        self.agent.plugUSB(KITCHEN, True)
        self.open_pane()
        self.choose_action("Update Firmware…")
        self.assert_controls(("push button", "Continue"), ("push button", "Cancel"), within="Update Firmware")
        self.assertEqual(self.pane.wait_for("Update Firmware", role="dialog").get_description(), "Kitchen (2A9C)")
        self.assert_all_can_be_read()
        self.agent.setBehaviour("firmware", False)
        with listen(ANNOUNCEMENTS) as heard:
            heard.wait_ready(self.agent)
            # Without the keyboard on Continue, because a screen reader reads a new description there by itself.
            self.pane.focus(self.pane.wait_for("Cancel", role="push button"))
            self.press("Continue", "Update Firmware")
            wait_until(lambda: [news for news in heard.names() if CONFIRM in news], CONFIRM, details=self.pane.dump)
        self.pane.wait_for(CONFIRM)
        self.press("Continue", "Update Firmware")
        bar = self.pane.wait_for("Firmware update progress", role="progress bar")
        self.pane.wait_focused("Firmware update progress")
        self.assertEqual(bar.get_description(), "Now updating firmware. Do not disconnect the camera.")
        self.pane.wait_for("Kitchen (2A9C)", role="label")
        self.agent.post("KS7FirmwareUpdateProgress", {"Value": 1, "Total": 4})
        wait_until(lambda: self.pane.value(bar) > 0, "progress", details=self.pane.dump)
        self.assert_all_can_be_read()
        self.agent.post("KS7FirmwareUpdateEnded", {"Result": 0})
        self.pane.wait_focused("Continue")
        self.wait_described(self.pane.wait_for("Continue", role="push button"),
                            "Firmware update complete. Please disconnect the camera now.")
        self.press("Continue", "Update Firmware")
        self.pane.wait_gone("Firmware update complete.")

    def test_the_about_box(self):
        self.open_pane()
        self.choose_action("About KS-7…")
        self.assert_controls(("link", "www.orvex.example"), ("label", "v1.0"), ("push button", "OK"),
                             ("push button", "Copy Diagnosis"),
                             within="About KS-7")
        self.assert_all_can_be_read()

    def test_the_overview(self):
        self.open_pane()
        self.pane.press("Show All")
        self.pane.wait_for("KS-7", role="push button")
        self.assert_all_can_be_read()


class MetersTest(ScriptedPaneTest):
    agent_options = ()

    def test_the_meters_expose_the_audio_levels(self):
        self.open_pane()
        self.agent.setStatus(KITCHEN, 4)
        self.pane.wait_for("Kitchen, Streaming")
        self.agent.setAudioLevels(0.2, 0.4)
        wait_for_camera()
        self.pane.press("Start Preview")
        # The meters move to a new level in an animation, so wait for the final values.
        for meter, level in zip(METERS, (0.3, 0.6)):
            wait_until(lambda: abs((self.pane.value(meter) or 0) - level) < 1e-6, f"{meter} {level}",
                       details=self.pane.dump)
        self.pane.wait_for("Live picture", role="image")
        self.pane.press("Stop Preview")
        wait_until(lambda: self.pane.value(METERS[0]) == 0, "silence", details=self.pane.dump)


if __name__ == "__main__":
    unittest.main(verbosity=2)
