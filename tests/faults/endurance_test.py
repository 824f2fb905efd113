#!/usr/bin/python3
"""Tests the pane under repetition: an agent that crashes two hundred times, and a flood of notifications."""

import unittest

import dbus
import dbus.lowlevel

import fault_pane
from fault_pane import MEGABYTE, NOTIFICATIONS, NOTIFICATIONS_PATH, FaultCase, Measured, wait_until

RESTARTS = 200
# The number of restarts before the first measurement. They fill caches that the process keeps: fonts, allocator pools,
# threads of the bus.
WARM_UP = 30
BURST = 100_000
LIST_CHANGES = 2_000


class CrashLoop(FaultCase):
    def restart(self, agent):
        """Kills the agent, starts another one and waits until the pane has connected to the new agent."""
        agent.kill()
        agent = self.start_agent()
        agent.wait_for_call("getPreferredKS7Cam")
        return agent

    @staticmethod
    def held(pane):
        """Counts the resources of the pane's process. Count only while an agent runs: the pane may notice an agent's
        death later than the test, so the counts would depend on the timing."""
        return pane.descriptors(), pane.threads(), pane.match_rules()

    def test_the_pane_connects_after_every_restart_and_uses_no_more_memory(self):
        agent = self.start_agent()
        pane = Measured(self.start_pane().pid)
        agent.wait_for_call("getPreferredKS7Cam", 2)
        for _ in range(WARM_UP):
            agent = self.restart(agent)
        before, resident = self.held(pane), pane.resident()
        for _ in range(RESTARTS - WARM_UP):
            agent = self.restart(agent)
        self.assertEqual(self.held(pane), before)
        self.assertLess(pane.resident() - resident, 2 * MEGABYTE)


class Bursts(FaultCase):
    def setUp(self):
        super().setUp()
        self.agent = self.start_agent().add_cameras()

    def burst(self, name, count, user_info=None):
        for _ in range(count):
            self.post(name, user_info)
        self.bus.flush()

    def show_pane(self):
        self.agent.script.clearRecord()
        pane = self.start_measured_pane()
        self.agent.wait_for_call("getPreferredKS7Cam", 2)
        return pane

    def wait_until_heard(self):
        """Posts a change of the list and waits for the pane's refresh, which proves that the pane has received all
        earlier posts."""
        asked = len(self.agent.calls("cameraDict"))
        self.post("KS7CameraListChanged")
        self.agent.wait_for_call("cameraDict", asked + 1)

    def test_unknown_and_display_only_notifications_leak_nothing(self):
        pane = self.show_pane()
        number = dbus.Int32(1)
        kinds = (("KS7NobodyKnowsThis", {"Value": number}),
                 ("KS7FirmwareUpdateProgress", {"Value": number, "Total": dbus.Int32(2)}),
                 ("KS7FirmwareUpdateEnded", {"Result": dbus.Int32(0)}))
        for name, user_info in kinds:
            self.burst(name, 1000, user_info)
        self.wait_until_heard()
        kept, resident = pane.kept(), pane.resident()
        for name, user_info in kinds:
            with self.subTest(name):
                self.burst(name, BURST, user_info)
                self.wait_until_heard()
                self.assertLess(pane.kept() - kept, MEGABYTE)
                self.assertLess(pane.resident() - resident, 2 * MEGABYTE)

    def test_every_change_of_the_list_is_a_refresh_and_a_click_is_handled_between(self):
        pane = self.open_pane()
        self.wait_for_cameras(pane)
        kitchen, desk = (pane.rectangle(f"{name}, Not Streaming") for name in ("Kitchen", "Desk"))
        self.choose(desk)
        of_a_choice = self.choose(kitchen)
        self.agent.script.clearRecord()
        self.burst("KS7CameraListChanged", LIST_CHANGES // 2)
        self.click_into(desk)
        self.burst("KS7CameraListChanged", LIST_CHANGES // 2)
        self.agent.wait_for_call("cameraDict", LIST_CHANGES)
        self.wait_until_heard()
        calls = self.agent.calls()
        chosen = next(i for i, call in enumerate(calls) if call.startswith("setPreferredDeviceAddress"))
        refreshes = [i for i, call in enumerate(calls) if call == "cameraDict()"]
        # Each list change causes one refresh and wait_until_heard() causes another. The click on Desk causes as many as
        # the earlier click on Kitchen, which is `of_a_choice`.
        self.assertEqual(len(refreshes), LIST_CHANGES + 1 + of_a_choice)
        self.assertLess(chosen, refreshes[-2])
        self.assertEqual(self.close(pane), 0)

    def choose(self, row):
        """Clicks a row and returns how often the pane then reads the list."""
        self.agent.script.clearRecord()
        self.click_into(row)
        self.agent.wait_for_call("setPreferredDeviceAddress")
        self.wait_until_heard()
        return len(self.agent.calls("cameraDict")) - 1

    def click_into(self, rectangle):
        x, y, width, height = rectangle
        fault_pane.accessible.point_at(x + width // 2, y + height // 2)
        fault_pane.accessible.xdotool("click", 1)

    def test_user_info_of_any_type_is_none_or_zero(self):
        pane = self.show_pane()
        odd = ("text", dbus.Double(1e300), dbus.UInt64(2 ** 64 - 1), dbus.ByteArray(b"\0\1"),
               dbus.Array([1, 2], signature="i"), dbus.Dictionary({"a": 1}, signature="si"), dbus.Boolean(True),
               dbus.Int32(-2 ** 31), dbus.ObjectPath("/a"), dbus.Struct((1, "b")))
        for name in ("KS7FirmwareUpdateProgress", "KS7FirmwareUpdateEnded", "KS7PassKeySet", "KS7OnOffChanged",
                     "KS7NoBluetooth", "KS7FoundBluetooth", "KS7StreamingStarted", "KS7PreferredCameraChanged"):
            for value in odd:
                self.post(name, {"Value": value, "Total": value, "Result": value, "PassKey": value})
            self.post_arguments(name)
            self.post_arguments(name, "text", 5)
            self.post_arguments(name, [1, 2])
        self.wait_until_heard()
        self.assertGreater(pane.resident(), 0)

    def post_arguments(self, name, *arguments):
        message = dbus.lowlevel.SignalMessage(NOTIFICATIONS_PATH, NOTIFICATIONS, name)
        message.append(*arguments)
        self.bus.send_message(message)


if __name__ == "__main__":
    unittest.main(verbosity=2)
