#!/usr/bin/python3
"""Tests sleep, wake-up and a switch to another user, while the pane shows a picture from a real PipeWire.
python-dbusmock plays logind. Also tests that a hidden pane is idle."""

import collections
import os
import pathlib
import subprocess
import sys
import time
import unittest

import dbus

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))

import accessible  # noqa: E402
import stand_in  # noqa: E402
from accessible import wait_until  # noqa: E402
from pipewire_nodes import wait_for_camera, watchers  # noqa: E402

BUILD = pathlib.Path(os.environ["KS7_BUILD"])
LOGIND = "org.freedesktop.login1"
MANAGER = "org.freedesktop.login1.Manager"
SESSION = "org.freedesktop.login1.Session"
MOCK = "org.freedesktop.DBus.Mock"
KITCHEN = "00-1b-dc-0f-2a-9c"
# A process without a wake-up for this many seconds is idle, because all timers of the preview are faster.
CALM = 3
OUT_OF_DATE = "The list of cameras is out of date. Leave this page or close this window, and open it again."


class Logind:
    def __init__(self):
        self.bus = dbus.SystemBus()
        self.process = subprocess.Popen(["/usr/bin/python3", "-m", "dbusmock", "--system", "--template", "logind"],
                                        stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
        wait_until(lambda: self.bus.name_has_owner(LOGIND), "logind on the bus")
        self.manager = self.bus.get_object(LOGIND, "/org/freedesktop/login1")

    def prepares(self, sleep):
        self.manager.EmitSignal(MANAGER, "PrepareForSleep", "b", [dbus.Boolean(sleep)],
                                dbus_interface=MOCK)

    def add_session(self, name):
        path = self.manager.AddSession(name, "seat0", dbus.UInt32(os.getuid()), "person", True, dbus_interface=MOCK)
        self.session = self.bus.get_object(LOGIND, path)

    def gives_the_screen(self, is_ours):
        self.session.UpdateProperties(SESSION, {"Active": dbus.Boolean(is_ours)}, dbus_interface=MOCK)

    def held_up(self):
        """Returns the number of sleep inhibitors that the pane holds."""
        held = self.manager.ListInhibitors(dbus_interface=MANAGER)
        return sum((str(what), str(who), str(mode)) == ("sleep", "KS-7", "delay") for what, who, _, mode, _, _ in held)

    def end(self):
        self.process.kill()
        self.process.wait()


def tasks(process):
    return list(pathlib.Path(f"/proc/{process.pid}/task").iterdir())


def thread_names(process):
    """Returns how many threads have each name."""
    return collections.Counter((task / "comm").read_text().strip() for task in tasks(process))


def wake_ups(process):
    lines = [line for task in tasks(process) for line in (task / "status").read_text().splitlines()]
    return sum(int(line.split()[1]) for line in lines if line.startswith("voluntary_ctxt_switches"))


class PaneWithLogind(unittest.TestCase):
    agent_of_the_pane = "/nonexistent"
    session = "c7"

    def setUp(self):
        self.logind = Logind()
        self.logind.add_session(self.session)
        self.addCleanup(self.logind.end)
        simulator = stand_in.AgentProcess(*stand_in.SCRIPTED)
        self.addCleanup(simulator.end)
        self.agent = simulator.script
        self.agent.setPreference("KS7On", dbus.Boolean(True, variant_level=1))
        self.agent.addCamera(KITCHEN, "Kitchen", "2A9C", 4, signature="sssi")
        self.agent.setPreferred(KITCHEN)
        wait_for_camera()
        self.pane = accessible.launch([BUILD / "bin" / "ks7-preferences"], env={
            "KS7_AGENT": str(self.agent_of_the_pane), "XDG_SESSION_ID": self.session})
        self.addCleanup(self.pane.end)
        wait_until(lambda: self.logind.held_up() == 1, "the pane makes the sleep wait")

    def start_preview(self):
        self.pane.press("Start Preview")
        self.pane.wait_for("Stop Preview")
        wait_until(lambda: watchers() == 1, "the picture is taken")

    def assert_stopped(self):
        self.pane.wait_for("Start Preview")
        wait_until(lambda: watchers() == 0, "the picture is let go of")


class SleepTest(PaneWithLogind):
    def test_the_preview_stops_before_the_machine_sleeps(self):
        self.start_preview()
        self.logind.prepares(True)
        wait_until(lambda: self.logind.held_up() == 0, "the machine may sleep")
        self.assert_stopped()
        self.logind.prepares(False)
        wait_until(lambda: self.logind.held_up() == 1, "the next sleep waits")
        self.assert_stopped()
        self.start_preview()
        self.logind.prepares(True)
        wait_until(lambda: self.logind.held_up() == 0, "the machine may sleep again")
        self.assert_stopped()

    def test_it_stops_right_after_its_start_too(self):
        self.pane.press("Start Preview")
        self.pane.wait_for("Stop Preview")
        self.logind.prepares(True)
        wait_until(lambda: self.logind.held_up() == 0, "the machine may sleep")
        self.assert_stopped()

    def sleep_is_met_under(self, *cover):
        """The preview runs under an open sheet or menu. Checks that sleep ends the preview and that the sheet or menu
        stays open."""
        self.pane.wait_for(*cover)
        self.logind.prepares(True)
        wait_until(lambda: self.logind.held_up() == 0, "the machine may sleep")
        wait_until(lambda: watchers() == 0, "the picture is let go of")
        self.assertTrue(self.pane.find(*cover), self.pane.dump())
        self.logind.prepares(False)
        wait_until(lambda: self.logind.held_up() == 1, "the next sleep waits")
        self.assertTrue(self.pane.find(*cover), self.pane.dump())

    def test_it_stops_under_an_open_sheet_or_menu(self):
        self.start_preview()
        self.pane.choose("Camera Actions", "Properties…")
        self.sleep_is_met_under("Camera ID:", "text")
        self.pane.press("Cancel")
        self.pane.wait_gone("Camera ID:", role="text")
        self.assert_stopped()

        self.start_preview()
        self.pane.open_menu("Camera Actions")
        self.sleep_is_met_under("About KS-7…", "menu item")
        self.pane.click("About KS-7…")
        self.assert_stopped()

        self.start_preview()
        self.sleep_is_met_under("About KS-7")
        self.assert_stopped()

    def test_an_agent_that_hangs_does_not_keep_the_machine_awake(self):
        self.start_preview()
        self.agent.hang(0.0)
        self.agent.clearRecord()
        self.logind.prepares(True)
        wait_until(lambda: self.logind.held_up() == 0, "the machine may sleep")
        self.assert_stopped()
        # The pane makes at most one call that times out before it lets the machine sleep.
        self.assertLessEqual(len(self.agent.recordedCalls()), 1, self.agent.recordedCalls())
        self.agent.resume()
        self.logind.prepares(False)
        wait_until(lambda: self.logind.held_up() == 1, "the next sleep waits")

    def test_no_order_of_messages_blocks_sleep_forever(self):
        self.start_preview()
        for order in ((True, True), (False, False, True), (True, False, True), (False, True, True, False, True)):
            for sleep in order:
                self.logind.prepares(sleep)
            wait_until(lambda: self.logind.held_up() == 0, f"the machine may sleep after {order}")
        self.logind.prepares(False)
        wait_until(lambda: self.logind.held_up() == 1, "the next sleep waits")
        self.pane.end()
        wait_until(lambda: self.logind.held_up() == 0, "nothing is left of the pane")

    def test_a_hidden_pane_does_nothing(self):
        before = thread_names(self.pane.process)
        self.start_preview()
        self.agent.post("KS7StartedDiscovering", dbus.Dictionary({}, signature="sv"))
        self.pane.wait_for("Searching for cameras…")
        self.pane.press("Show All")
        self.pane.wait_for("KS-7", role="push button")
        wait_until(lambda: watchers() == 0, "the picture is let go of")
        last = [wake_ups(self.pane.process), time.monotonic()]

        def is_calm():
            now = wake_ups(self.pane.process)
            if now != last[0]:
                last[:] = now, time.monotonic()
            return time.monotonic() - last[1] > CALM
        wait_until(is_calm, f"{CALM} s without a wake-up")
        # GLib keeps the thread "pool-spawner" once it has started it. A stopped preview leaves no other thread.
        left = thread_names(self.pane.process) - before - collections.Counter({"pool-spawner": 1})
        self.assertFalse(left)


class SwitchTest(PaneWithLogind):
    """Tests the pane while another user's session is active, and after its own session has become active again."""
    agent_of_the_pane = BUILD / "bin" / "ks7-agent-simulator"

    def switch_away(self):
        self.logind.gives_the_screen(False)
        self.assert_stopped()
        self.pane.wait_gone(role="table cell")
        self.pane.wait_state("Start Preview", "enabled", False)

    def post(self, name):
        self.agent.post(name, dbus.Dictionary({}, signature="sv"))

    def wait_until_heard(self):
        """Starts and stops a search, which shows that the pane has received all earlier notifications. The bus keeps
        their order."""
        self.post("KS7StartedDiscovering")
        self.pane.wait_for("Searching for cameras…")
        self.post("KS7StoppedDiscovering")
        self.pane.wait_gone("Searching for cameras…")

    def list_says(self):
        return self.pane.wait_for("Cameras", role="table").get_description()

    def come_back(self):
        """Checks that the pane connects again and reads the cameras after the agent's next notification."""
        self.logind.gives_the_screen(True)
        wait_until(lambda: self.list_says() == OUT_OF_DATE, "the connection", details=self.list_says)
        self.post("KS7CameraListChanged")
        self.pane.wait_for("Kitchen, Streaming")

    def test_the_pane_releases_agent_and_picture_and_reconnects(self):
        for _ in range(2):
            self.start_preview()
            self.switch_away()
            self.agent.clearRecord()
            self.post("KS7CameraListChanged")
            self.agent.setStatus(KITCHEN, 4)
            self.pane.press("Show status menu")
            self.wait_until_heard()
            self.assertEqual(self.agent.recordedCalls(), [])
            self.come_back()
            self.assert_stopped()

    def test_an_agent_that_ended_meanwhile_is_launched(self):
        self.start_preview()
        self.switch_away()
        self.agent.quit_if_up()
        self.logind.gives_the_screen(True)
        self.agent.wait_up()
        self.addCleanup(self.agent.quit_if_up)
        self.pane.wait_for("Kitchen, Streaming")
        self.assertIsNone(self.pane.find("Installation Error"))

    def test_a_session_switch_closes_the_passkey_sheet(self):
        self.agent.plugUSB(KITCHEN, False)
        self.agent.setStatus(KITCHEN, 1)
        self.pane.wait_for("Kitchen, Not Streaming")
        self.pane.choose("Camera Actions", "Change Passkey…")
        self.pane.wait_for("New passkey:", role="text")
        self.switch_away()
        self.pane.wait_gone("New passkey:", role="text")
        self.agent.setStatus(KITCHEN, 4)
        self.wait_until_heard()
        self.come_back()

    def test_an_active_session_that_is_reported_again_changes_nothing(self):
        self.start_preview()
        self.agent.clearRecord()
        self.logind.gives_the_screen(True)
        wait_until(lambda: len([call for call in self.agent.recordedCalls() if call.startswith("getAudioLevel")]) > 3,
                   "the meters go on")
        self.assertEqual(watchers(), 1)
        self.assertIsNotNone(self.pane.find("Stop Preview"))


if __name__ == "__main__":
    unittest.main(verbosity=2)
