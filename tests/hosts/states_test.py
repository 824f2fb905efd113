#!/usr/bin/python3
"""Tests that the stand-alone host's window explains each state of the pane, and how it uses small and large windows."""

import os
import pathlib
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "support"))

from accessible import IS_WAYLAND, name_of, point_at, wait_until  # noqa: E402
from pictures import Picture  # noqa: E402
from pipewire_nodes import wait_for_camera  # noqa: E402
from screens import SCREEN, xdotool  # noqa: E402
from scripted_pane import KITCHEN, ScriptedPaneTest  # noqa: E402

SAME_NAME = {"00-1b-dc-0f-77-01": "7701", "00-1b-dc-0f-77-02": "7702"}
WHITE = (255, 255, 255)
# The smallest contrast of a text that the accessibility guidelines of the web accept.
READABLE = 4.5


def luminance(pixel):
    parts = [part / 255 for part in pixel]
    linear = [part / 12.92 if part <= 0.04045 else ((part + 0.055) / 1.055) ** 2.4 for part in parts]
    return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2]


def contrast(one, other):
    darker, lighter = sorted((luminance(one), luminance(other)))
    return (lighter + 0.05) / (darker + 0.05)


class ShownPaneTest(ScriptedPaneTest):
    # Verbs

    def wait_described(self, name, description, role=None):
        node = self.pane.wait_for(name, role=role)
        wait_until(lambda: node.get_description() == description, description, details=self.pane.dump)

    def choose_action(self, item):
        self.pane.press("Camera Actions", "showmenu")
        self.pane.press(self.pane.wait_for(item, role="menu item"))

    def press(self, button, within):
        self.pane.press(self.pane.wait_for(button, role="push button", within=self.pane.wait_for(within)))

    def size_at_rest(self, name, role=None):
        return self.pane.rectangle_at_rest(self.pane.wait_for(name, role=role))[2:]


class StatesTest(ShownPaneTest):
    # Words

    def test_a_list_without_a_chosen_camera_says_what_to_do(self):
        self.agent.setPreferred("")
        self.open_pane()
        self.pane.wait_for("Choose a camera in the list to use it.", role="label")
        self.agent.setPreferred(KITCHEN)
        self.agent.post("KS7PreferredCameraChanged", {})
        self.pane.wait_gone("Choose a camera in the list to use it.")

    def test_buttons_that_are_off_say_why(self):
        self.open_pane()
        self.wait_described("Remove Camera", "Remove the selected camera")
        self.agent.setStatus(KITCHEN, 4)
        self.pane.wait_state("Add Camera", "enabled", False)
        self.wait_described("Add Camera", "Cameras can be added only while no camera is in use")
        self.wait_described("Remove Camera", "A camera can be removed only while it is not in use")

    def test_cameras_of_one_name_differ_by_their_ids(self):
        for address, camera_id in SAME_NAME.items():
            self.agent.addCamera(address, "Kitchen", camera_id, 1)
        self.open_pane()
        wait_until(lambda: len(self.pane.all(role="table cell")) == 3, "three cameras", details=self.pane.dump)
        self.pane.open_menu("Camera Actions")
        self.pane.click(self.pane.wait_for("Choose Camera", role="menu item"))
        for camera_id in ("2A9C", *SAME_NAME.values()):
            wait_until(lambda: any(camera_id in name_of(node) for node in self.pane.nodes()), camera_id,
                       details=self.pane.dump)

    # Focus and places

    def test_the_focus_comes_back_to_the_list_with_bluetooth(self):
        self.open_pane()
        self.agent.post("KS7NoBluetooth", {})
        self.press("OK", "Bluetooth Error")
        self.pane.wait_gone("Bluetooth Error")
        self.pane.wait_state("Cameras", "enabled", False)
        self.agent.post("KS7FoundBluetooth", {})
        self.pane.wait_focused("Cameras")

    def test_continue_stays_in_its_place_without_cancel(self):
        self.agent.plugUSB(KITCHEN, True)
        self.agent.setBehaviour("firmware", False)
        self.open_pane()
        self.choose_action("Update Firmware…")
        with_cancel = self.pane.rectangle_at_rest(self.pane.wait_for("Continue", role="push button"))
        self.press("Continue", "Update Firmware")
        self.pane.wait_for("Click Continue to start the update.")
        self.press("Continue", "Update Firmware")
        self.pane.wait_gone("Cancel", role="push button")
        self.assertEqual(self.pane.rectangle_at_rest(self.pane.wait_for("Continue", role="push button")), with_cancel)

    def test_a_menu_of_many_cameras_stays_on_the_screen(self):
        for number in range(51):
            self.agent.addCamera(f"00-1b-dc-0f-88-{number:02x}", f"Room {number:02}", f"88{number:02X}", 1)
        self.open_pane()
        wait_until(lambda: len(self.pane.all(role="table cell", showing=False)) == 52, "all cameras",
                   details=self.pane.dump)
        self.pane.open_menu("Camera Actions")
        before = set(self.pane.x_windows())
        self.pane.click(self.pane.wait_for("Choose Camera", role="menu item"))
        wait_until(lambda: set(self.pane.x_windows()) - before, "the submenu", details=self.pane.dump)
        width, height = map(int, xdotool("getdisplaygeometry").split())
        for window in self.pane.windows():
            x, y, window_width, window_height = window.box
            self.assertTrue(0 <= x and x + window_width <= width and 0 <= y and y + window_height <= height, window)

    # Pixels

    def test_the_chosen_row_can_be_read_and_its_mark_has_a_rim(self):
        self.open_pane()
        self.agent.setStatus(KITCHEN, 4)
        row = self.pane.wait_for("Kitchen, Streaming", role="table cell")
        point_at(2, 2)
        x, y, width, height = self.pane.rectangle_at_rest(row)

        def picture():
            return Picture((x, y, width, height))
        highlight = picture().pixel(x + width - 8, y + height // 2)
        self.assertGreaterEqual(contrast(highlight, WHITE), READABLE, highlight)
        mark = [picture().pixel(column, y + line) for line in range(height // 2, height)
                for column in range(x, x + round(10 * SCREEN.scale))]
        self.assertIn(WHITE, mark)
        self.assertTrue(any(green > red + 40 and green > blue + 40 for red, green, blue in mark), mark)

    # Sizes

    def test_the_rows_grow_with_the_text_size_of_the_desktop(self):
        self.open_pane()
        _, default = self.size_at_rest("Kitchen, Not Streaming", role="table cell")
        self.pane.end()
        settings = pathlib.Path(os.environ["XDG_CONFIG_HOME"]) / "kdeglobals"
        before = settings.read_text() if settings.exists() else ""
        self.addCleanup(settings.write_text, before)
        settings.write_text(f"{before}\n[General]\nfont=DejaVu Sans,20,-1,5,50,0,0,0,0,0\n")
        self.open_pane(XDG_CURRENT_DESKTOP="KDE", KDE_FULL_SESSION="true",
                       KDE_SESSION_VERSION="6" if IS_WAYLAND else os.environ.get("KS7_QT_VERSION", "5"))
        _, large = self.size_at_rest("Kitchen, Not Streaming", role="table cell")
        self.assertGreater(large, default * 3 // 2)


class PictureTest(ShownPaneTest):
    agent_options = ()

    def start_preview(self):
        wait_for_camera()
        self.pane.press("Start Preview")

    def resize(self, width, height):
        window = self.pane.windows()[0]
        SCREEN.resize(window, width, height)
        wait_until(lambda: self.pane.windows()[0].box[2:] == (width, height), f"a window of {width}x{height}",
                   details=lambda: f"{self.pane.windows()}")

    def test_a_black_picture_says_why_it_is_black(self):
        self.agent.setStatus(KITCHEN, 0)
        self.open_pane("Kitchen, Not Found")
        self.pane.wait_for("Preview is off", role="label")
        self.start_preview()
        waiting = "Waiting for the picture of Kitchen: Not Found"
        self.pane.wait_for(waiting, role="label")
        self.wait_described("Live picture", waiting, role="image")
        self.pane.press("Stop Preview")
        self.pane.wait_for("Preview is off", role="label")

    def test_a_wide_window_gives_its_width_to_the_picture(self):
        self.open_pane()
        self.resize(1600, 900)
        self.start_preview()
        picture = self.size_at_rest("Live picture", role="image")
        listed = self.size_at_rest("Cameras", role="table")
        self.assertLess(listed[0], 1600 // 3)
        self.assertGreater(picture[0], 1600 // 2)

    def test_a_small_window_takes_the_arrangement_with_the_larger_picture(self):
        self.open_pane()
        self.resize(600, 411)
        self.start_preview()
        width, height = self.size_at_rest("Live picture", role="image")
        self.assertGreater(min(width, height * 4 // 3), 158)


if __name__ == "__main__":
    unittest.main(verbosity=2)
