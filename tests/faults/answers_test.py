#!/usr/bin/python3
"""Tests an agent whose replies are malformed, very long or contain markup and control characters."""

import unittest

from fault_pane import DESK, KITCHEN, NOT_STREAMING, FaultCase, wait_until

REFRESH = ("cameraDict", "sortedDeviceList", "indexOfPreferredKS7Cam", "getPreferredKS7Cam",
           "connectedCamHasBTAddress")
KINDS = ("wrongType", "empty", "extra", "error", "oddValues", "huge")
THIRTY_MEGABYTES = 30 * 1000 * 1000
HOSTILE = {
    "mark-up": "<b>Kitchen</b><img src='file:///etc/passwd'>&amp;",
    "format directives": "%s%n%@%d%1$s%1",
    "line breaks": "Kit\nchen\r\n\u2028Door\u2029\x0b\x0c\x85end",
    "control characters": "Kit\x01\x07\x1b[31mchen\x7f",
    "turned direction": "\u202egnikooC\u2066\u2067\u200f",
    "characters that are none": "\ufdd0\ufffe\uffff\ufffd",
    "accents without end": "K" + "\u0301" * 5000,
    "a very long word": "x" * 100_000,
    "nothing": "",
}


class Answers(FaultCase):
    def setUp(self):
        super().setUp()
        self.agent = self.start_agent().add_cameras()
        self.pane = self.open_pane()
        self.wait_for_cameras(self.pane)

    def refresh(self):
        """Requests a refresh and waits until the pane reads the list again, which proves that the pane continues."""
        asked = len(self.agent.calls("cameraDict"))
        self.post("KS7CameraListChanged")
        self.agent.wait_for_call("cameraDict", asked + 1)

    def expect_one_line_each(self, pane):
        """Checks that both rows have the normal height, so no name contains a line break."""
        cells = [cell for cell in pane.all(role="table cell")]
        heights = {pane.rectangle(cell)[3] for cell in cells}
        self.assertEqual(len(heights), 1)
        self.assertLess(heights.pop(), 80)

    def test_malformed_replies_count_as_no_reply(self):
        for operation in REFRESH:
            for kind in KINDS:
                with self.subTest(operation=operation, kind=kind):
                    self.agent.script.malformReplies(operation, kind)
                    self.refresh()
                    self.assertFalse(self.pane.ended())
            self.agent.script.malformReplies(operation, "")
        self.refresh()
        self.wait_for_cameras(self.pane)
        self.assertEqual(self.close(self.pane), 0)

    def test_thirty_megabytes_are_one_row(self):
        self.agent.script.renameCamera(KITCHEN, "x" * THIRTY_MEGABYTES)
        wait_until(lambda: "Kitchen, Not Streaming" not in self.rows(self.pane), "the long name")
        self.assertEqual(len(self.pane.all(role="table cell")), 2)
        self.assertTrue(self.agent.is_up())
        self.expect_one_line_each(self.pane)
        self.agent.script.renameCamera(KITCHEN, "Kitchen")
        self.wait_for_cameras(self.pane)

    def test_hostile_names_are_one_line_of_plain_text(self):
        for kind, name in HOSTILE.items():
            with self.subTest(kind):
                self.agent.script.addCamera(KITCHEN, name, name[:4], NOT_STREAMING, signature="sssi")
                wait_until(lambda: self.first_row() != "Kitchen, Not Streaming", "the name", self.pane.dump)
                self.expect_one_line_each(self.pane)
                self.expect_no_control_characters(self.first_row())
                self.agent.script.addCamera(KITCHEN, "Kitchen", "2A9C", NOT_STREAMING, signature="sssi")
                self.wait_for_cameras(self.pane)

    def first_row(self):
        return next(iter(self.rows(self.pane)), "Kitchen, Not Streaming")

    def expect_no_control_characters(self, text):
        self.assertEqual([c for c in text if ord(c) < 32 or c in "\x7f\x85\u2028\u2029\u2066\u2067"], [])
        if "\u202e" in text:
            # The direction override must end with the camera's name, so that the status stays readable.
            self.assertRegex(text, "^\u2068.*\u202e.*\u2069, Not Streaming$")

    def test_the_name_field_shows_markup_as_plain_text(self):
        name = HOSTILE["mark-up"]
        self.agent.script.addCamera(DESK, name, "<i>1</i>", NOT_STREAMING, signature="sssi")
        row = wait_until(lambda: next((cell for cell in self.pane.all(role="table cell")
                                       if "img" in self.pane.text(cell)), None), "the row", self.pane.dump)
        self.pane.click(row, times=2)
        field = self.pane.wait_for(name, role="text")
        self.assertEqual(self.pane.text(field), name)
        self.pane.wait_for("<i>1</i>")


if __name__ == "__main__":
    unittest.main(verbosity=2)
