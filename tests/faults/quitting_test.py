#!/usr/bin/python3
"""Tests that the program ends with exit code 0 when its window is closed, in every state of the pane."""

import unittest

import dbus
from fault_pane import FaultCase, accessible, request_close, topmost_window, wait_until


class Quitting(FaultCase):
    def show_pane(self):
        self.agent = self.start_agent().add_cameras()
        self.pane = self.open_pane()
        self.wait_for_cameras(self.pane)

    def expect_a_good_end(self):
        self.assertEqual(self.close(self.pane), 0)

    def choose_and_plug_in(self):
        self.pane.click("Kitchen, Not Streaming")
        self.agent.wait_for_call("setPreferredDeviceAddress")
        self.plug_in(self.agent)

    def start_update(self):
        self.show_pane()
        self.choose_and_plug_in()
        self.pane.choose("Camera Actions", "Update Firmware…")
        self.pane.press(self.pane.wait_for("Continue", role="push button"))
        self.pane.wait_for("Click Continue to start the update.")
        self.pane.press("Continue")
        self.agent.wait_for_call("startUpdate")
        self.pane.wait_for("Now updating firmware.")

    def test_while_the_pane_waits_for_its_agent(self):
        self.show_pane()
        self.pane.press("Show All")
        icon = self.pane.wait_for("KS-7", role="push button")
        self.agent.kill()
        self.pane.press(icon)
        self.expect_a_good_end()

    def test_while_the_agent_hangs_in_a_refresh(self):
        self.show_pane()
        self.agent.stop()
        self.post("KS7CameraListChanged")
        self.expect_a_good_end()

    def test_while_the_agent_dies(self):
        self.show_pane()
        self.agent.kill()
        self.expect_a_good_end()

    def test_with_an_error_in_front(self):
        self.show_pane()
        self.agent.script.bluetooth(False)
        self.pane.wait_for("OK", role="push button")
        self.expect_a_good_end()

    def test_with_the_properties_open(self):
        self.show_pane()
        self.pane.click("Kitchen, Not Streaming")
        self.agent.wait_for_call("setPreferredDeviceAddress")
        self.pane.choose("Camera Actions", "Properties…")
        self.pane.wait_for("Ignore this camera")
        self.expect_a_good_end()

    def test_with_the_passkey_open(self):
        self.show_pane()
        self.choose_and_plug_in()
        self.pane.choose("Camera Actions", "Change Passkey…")
        self.pane.wait_for("New passkey:")
        self.expect_a_good_end()

    def test_right_after_a_new_passkey(self):
        self.show_pane()
        self.choose_and_plug_in()
        self.pane.choose("Camera Actions", "Change Passkey…")
        self.pane.wait_for("New passkey:")
        accessible.type_text("1234")
        okay = self.pane.wait_for("OK", role="push button")
        self.pane.wait_state(okay, "enabled")
        self.pane.press(okay)
        self.expect_a_good_end()

    def test_before_an_update(self):
        self.show_pane()
        self.choose_and_plug_in()
        self.pane.choose("Camera Actions", "Update Firmware…")
        self.pane.wait_for("Click Continue to proceed.")
        self.expect_a_good_end()

    def test_during_an_update(self):
        """During a firmware update, a close request must not close the sheet, because closing would interrupt the
        update. After the update, the sheet and the window can be closed."""
        self.start_update()
        sheet = topmost_window(self.pane.x_windows())
        self.assertEqual(accessible.xdotool("getwindowname", sheet), "Update Firmware")
        request_close(sheet)
        # The pane receives the request before these notifications. If the sheet then shows the progress and the end of
        # the update, the request has not closed it.
        self.post("KS7FirmwareUpdateProgress", {"Value": dbus.Int32(1), "Total": dbus.Int32(4)})
        wait_until(lambda: self.pane.value("Firmware update progress"), "progress", self.pane.dump)
        self.assertTrue(self.pane.find("Now updating firmware."))
        self.post("KS7FirmwareUpdateEnded", {"Result": dbus.Int32(0)})
        self.pane.wait_for("Firmware update complete.")
        self.pane.press("Continue")
        self.expect_a_good_end()

    def test_during_an_update_whose_agent_has_died(self):
        self.start_update()
        self.agent.kill()
        self.wait_for_no_agent(self.pane)
        self.expect_a_good_end()

    def test_with_the_about_box_open(self):
        self.show_pane()
        self.pane.choose("Camera Actions", "About KS-7…")
        self.pane.wait_for("About KS-7")
        self.expect_a_good_end()


if __name__ == "__main__":
    unittest.main(verbosity=2)
