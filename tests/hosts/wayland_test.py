#!/usr/bin/python3
"""Tests the stand-alone host on KWin's Wayland: the pixels of sheets, menus and picture on the display."""

import os
import pathlib
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "support"))

import accessible  # noqa: E402
from accessible import held, key, point_at, wait_until  # noqa: E402
from pictures import Picture  # noqa: E402
from pipewire_nodes import wait_for_camera  # noqa: E402
from screens import SCREEN  # noqa: E402
from scripted_pane import KITCHEN, ScriptedPaneTest  # noqa: E402

DESK = "00-1b-dc-0f-77-01"
COLOR_SCHEMES = pathlib.Path("/usr/share/color-schemes")
# The colour at the centre of the program's icon.
LENS = (0x2e, 0x6f, 0xb0)
BLACK = (0, 0, 0)
# The limit for a pixel's red value. The dark edge of a green dot is below this limit. Edge pixels that are blended with
# white are above it.
DARK_EDGE = 90
# The width of the shadow around a window, in pixels.
SHADOW = 60


def is_inked(pixel):
    return min(pixel) < 248


class WaylandTest(ScriptedPaneTest):
    def setUp(self):
        super().setUp()
        self.agent.addCamera(DESK, "Desk", "7701", 0)

    # Verbs

    def main_window(self):
        return next(window for window in self.pane.windows() if window.title == "KS-7")

    def window(self, title):
        return wait_until(lambda: next((window for window in self.pane.windows() if window.title == title), None),
                          f"the window {title!r}", details=lambda: f"{self.pane.windows()}")

    def choose_action(self, item):
        self.pane.open_menu("Camera Actions")
        self.pane.click(self.pane.wait_for(item, role="menu item"))

    def look_inactive(self):
        """Takes a picture of the main window while it is inactive and the pointer is outside of it. The list must have
        the focus, because the end of its focus frame shows that the window has been painted as inactive."""
        wait_until(self.shows_focus_frame, "the list's focus frame")
        point_at(2, 2)
        SCREEN.activate_nothing()
        wait_until(lambda: not any(window.active for window in self.pane.windows()), "an inactive window")
        self.pane.wait_state(self.pane.wait_for("KS-7", role="frame"), "active", False)
        wait_until(lambda: not self.shows_focus_frame(), "a list without its focus frame")
        return self.steady_picture(self.main_window().box)

    def shows_focus_frame(self):
        """Checks whether the left edge of the list is coloured. Looks below the rows, because a selected row is
        coloured too."""
        x, y, _, height = self.pane.rectangle("Cameras")
        bottom = y + height - round(12 * SCREEN.scale)
        edge = Picture((x, bottom, round(6 * SCREEN.scale), 1))
        return any(max(pixel) - min(pixel) > 60 for pixel in edge.row(bottom, x, x + edge.width))

    def steady_picture(self, area):
        """Takes pictures until two in a row are equal, and returns the last one."""
        seen = [Picture(area)]

        def is_steady():
            seen.append(Picture(area))
            return seen[-1].bytes == seen[-2].bytes
        wait_until(is_steady, "a steady picture")
        return seen[-1]

    def activate(self):
        self.pane.click("Cameras")
        self.pane.wait_active()

    def assert_stands_over_its_window(self, sheet):
        box, behind = sheet.frame, self.main_window().frame
        self.assertLess(abs(2 * box[0] + box[2] - 2 * behind[0] - behind[2]), 8, (box, behind))
        self.assertGreaterEqual(box[1], behind[1])
        self.assertTrue(sheet.transient, sheet)

    def assert_leaves_behind_as_before(self, before, sheet):
        """Checks that the main window's pixels have not changed, except under the sheet and its shadow."""
        point_at(2, 2)
        self.assertEqual(self.main_window().box, before.area)
        changed = []

        def is_unchanged():
            changed[:] = Picture(before.area).differences(before, sheet.frame, SHADOW)
            return not changed
        try:
            wait_until(is_unchanged, "the same picture behind", timeout=5)
        except accessible.NotThere:
            self.fail(f"{len(changed)} pixels changed behind {sheet.title!r}, the first at {changed[0]}")

    # Sheets and alerts

    def sheet_is_well_placed(self, before, title, focused):
        sheet = self.window(title)
        self.assertTrue(sheet.modal, sheet)
        self.assertEqual(sheet.frame, sheet.box, "a title bar, which has buttons to minimise and maximise")
        self.dialog_is_well_placed(before, title, focused)

    def dialog_is_well_placed(self, before, title, focused):
        sheet = self.window(title)
        self.pane.wait_active(title)
        self.pane.wait_focused(focused)
        self.assert_stands_over_its_window(sheet)
        self.assert_leaves_behind_as_before(before, sheet)
        key("Escape")
        wait_until(lambda: len(self.pane.windows()) == 1, f"the closing of {title!r}", details=self.pane.dump)
        self.pane.wait_active("KS-7")

    def open_and_look(self):
        self.open_pane()
        before = self.look_inactive()
        self.activate()
        return before

    def test_the_properties_sheet(self):
        before = self.open_and_look()
        self.choose_action("Properties…")
        self.sheet_is_well_placed(before, "Camera Properties", "Name:")

    def test_the_passkey_sheet(self):
        self.agent.plugUSB(KITCHEN, False)
        before = self.open_and_look()
        self.choose_action("Change Passkey…")
        self.sheet_is_well_placed(before, "Change Passkey", "New passkey:")

    def test_the_firmware_sheet(self):
        self.agent.plugUSB(KITCHEN, True)
        before = self.open_and_look()
        self.choose_action("Update Firmware…")
        self.sheet_is_well_placed(before, "Update Firmware", "Continue")

    def test_an_alert(self):
        before = self.open_and_look()
        self.agent.post("KS7PassKeySet", {"Result": 9})
        self.sheet_is_well_placed(before, "Passkey Not Changed", "OK")

    def test_the_about_box(self):
        before = self.open_and_look()
        self.choose_action("About KS-7…")
        self.assertFalse(self.window("About KS-7").maximizable)
        self.dialog_is_well_placed(before, "About KS-7", "OK")

    def test_a_window_closes_when_its_sheet_has_been_left(self):
        self.open_pane()
        self.choose_action("Properties…")
        self.pane.wait_active("Camera Properties")
        SCREEN.close(self.main_window())
        key("alt+F4")
        self.pane.wait_gone("Camera ID:", role="text")
        self.pane.wait_active("KS-7")
        self.assertEqual(self.pane.close_by_key(), 0)

    # Menus

    def test_a_menu_opens_below_its_button_and_inside_the_display(self):
        self.open_pane()
        self.pane.open_menu("Camera Actions")
        item = self.pane.rectangle(self.pane.wait_for("Properties…", role="menu item"))
        button = self.pane.rectangle("Camera Actions")
        self.assertLess(abs(item[0] - button[0]), 40)
        self.assertGreater(item[1], button[1])
        key("Escape")
        self.pane.wait_gone("Properties…", role="menu item")
        self.pane.wait_active("KS-7")

    # Option

    def test_option_held_at_opening_shows_debug_logging(self):
        with held("Alt_L"):
            self.open_pane()
            self.pane.wait_for("Debug logging", role="check box")

    def test_without_option_there_is_no_debug_logging(self):
        self.open_pane()
        self.pane.wait_active()
        self.assertIsNone(self.pane.find("Debug logging"))

    # Looks

    def test_the_window_has_the_name_of_its_desktop_file(self):
        self.open_pane()
        self.assertEqual(self.main_window().desktop_file, "ks7-preferences")

    def test_the_title_bar_has_the_icon_of_the_desktop_file(self):
        """Tests the icon that KWin finds through the desktop file in build/share, a folder in XDG_DATA_DIRS."""
        self.open_pane()
        window = self.main_window()
        x, y, _, _ = window.frame
        bar = Picture((x, y, 60, window.box[1] - y))
        colours = {bar.pixel(column, row) for column in range(x, x + 60) for row in range(y, window.box[1])}
        self.assertTrue(any(all(abs(part - wanted) < 30 for part, wanted in zip(colour, LENS)) for colour in colours))

    def test_a_dark_colour_scheme(self):
        settings = pathlib.Path(os.environ["XDG_CONFIG_HOME"]) / "kdeglobals"
        light = settings.read_text()
        self.addCleanup(settings.write_text, light)
        settings.write_text(light + (COLOR_SCHEMES / "BreezeDark.colors").read_text())
        self.open_pane()
        picture = self.look_inactive()
        x, y, width, height = self.pane.rectangle("Show status menu")
        self.assertLess(max(picture.pixel(x + width + 30, y + height // 2)), 100)
        # The table keeps a light background in a dark colour scheme, because it draws names in black.
        x, y, width, height = self.pane.rectangle("Cameras")
        self.assertGreater(min(picture.pixel(x + width // 2, y + height - 10)), 180)

    def test_nothing_is_clipped_and_edges_are_sharp(self):
        """Tests the layout at the session's scale, which may be fractional."""
        self.open_pane()
        self.assert_nothing_is_clipped("KS-7", "frame")
        self.assert_frame_is_sharp(self.look_inactive())

    def test_nothing_is_clipped_in_dialogs(self):
        self.agent.plugUSB(KITCHEN, True)
        self.open_pane()
        for action, title in (("Properties…", "Camera Properties"), ("Change Passkey…", "Change Passkey"),
                              ("Update Firmware…", "Update Firmware"), ("About KS-7…", "About KS-7")):
            self.choose_action(action)
            self.assert_nothing_is_clipped_until_left(title, "dialog")
        self.agent.post("KS7PassKeySet", {"Result": 9})
        self.assert_nothing_is_clipped_until_left("Passkey Not Changed", "alert")

    def assert_nothing_is_clipped_until_left(self, title, role):
        self.pane.wait_active(title)
        self.assert_nothing_is_clipped(title, role)
        key("Escape")
        wait_until(lambda: len(self.pane.windows()) == 1, f"the closing of {title!r}", details=self.pane.dump)
        self.pane.wait_active("KS-7")

    def assert_nothing_is_clipped(self, title, role):
        left, top, width, height = self.window(title).box
        nodes = [node for node in self.pane.nodes(self.pane.wait_for(title, role=role))
                 if self.pane.has(node, "showing") and accessible.name_of(node)]
        self.assertGreater(len(nodes), 2, title)
        for node in nodes:
            x, y, node_width, node_height = self.pane.rectangle(node)
            self.assertTrue(left - 2 <= x and x + node_width <= left + width + 2 and
                            top - 2 <= y and y + node_height <= top + height + 2, (title, accessible.name_of(node)))

    def assert_frame_is_sharp(self, picture):
        """Checks that the black picture borders directly on the background at all four sides, without blended
        pixels."""
        list_x, list_y, list_width, list_height = self.pane.rectangle("Cameras")
        y = list_y + list_height // 2
        left = next(x for x in range(list_x + list_width + 3, picture.area[0] + picture.width)
                    if picture.pixel(x, y) == BLACK)
        background = picture.pixel(left - 1, y)
        self.assertGreater(min(background), 150)
        for step_x, step_y in ((-1, 0), (1, 0), (0, -1), (0, 1)):
            x, row = left + 20, y
            while picture.pixel(x, row) == BLACK:
                x, row = x + step_x, row + step_y
            self.assertEqual(picture.pixel(x, row), background, (step_x, step_y))

    def test_dots_are_sharp_and_not_clipped(self):
        """Tests that the green dot is round and eight units wide at the display's scale, with a dark edge next to
        white."""
        self.open_pane()
        self.agent.setStatus(DESK, 4)
        row = self.pane.wait_for("Desk, Streaming")
        picture = self.look_inactive()
        dot = self.pixels_of_dot(picture, self.pane.rectangle(row))
        self.assertEqual((len(dot), {len(row) for row in dot}), (round(8 * SCREEN.scale), {round(8 * SCREEN.scale)}))
        for line in (*dot, *zip(*dot)):
            inked = [is_inked(pixel) for pixel in line]
            self.assertEqual(inked, inked[::-1], "the dot is not round")
        middle = len(dot) // 2
        for line in (dot[middle], list(zip(*dot))[middle]):
            for edge in (line[0], line[-1]):
                self.assertLess(edge[0], DARK_EDGE, f"a blurred edge: {line}")

    @staticmethod
    def pixels_of_dot(picture, cell):
        """Returns the pixel rows of a dot. The dot is at the left of its table row, below the camera's name."""
        x, y, _, height = cell
        rows = range(y + height // 2, y + height)
        columns = range(x, x + round(13 * SCREEN.scale))
        rows = [row for row in rows if any(is_inked(picture.pixel(column, row)) for column in columns)]
        columns = [column for column in columns if any(is_inked(picture.pixel(column, row)) for row in rows)]
        return [picture.row(row, columns[0], columns[-1] + 1) for row in range(rows[0], rows[-1] + 1)]


class WaylandPictureTest(ScriptedPaneTest):
    agent_options = ()

    def test_the_preview_shows_changing_frames(self):
        self.open_pane()
        self.agent.setStatus(KITCHEN, 4)
        self.pane.wait_for("Kitchen, Streaming")
        wait_for_camera()
        self.pane.press("Start Preview")
        x, y, width, height = self.pane.rectangle(self.pane.wait_for("Live picture", role="image"))
        # Leave out four pixels at each edge of the picture. At a fractional scale, its rectangle may include pixels
        # beside the picture.
        area = (x + 4, y + 4, width - 8, height - 8)
        wait_until(lambda: Picture(area).brightest() > 100, "a picture", details=self.pane.dump)
        first = Picture(area)
        wait_until(lambda: Picture(area).bytes != first.bytes, "another picture", details=self.pane.dump)
        self.pane.press("Stop Preview")
        self.pane.wait_gone("Live picture", role="image")
        wait_until(lambda: Picture(area).brightest() < 10, "black again")


if __name__ == "__main__":
    unittest.main(verbosity=2)
