#!/usr/bin/python3
"""Compresses hours of use into minutes: opens, closes, switches, previews, renames, changes passkeys, updates firmware,
kills and restarts the agent, in random order.

KS7_SOAK_SECONDS sets the duration (default 480, at most 600). KS7_SOAK_SEED sets the seed, which is printed so that a
run can be repeated. The first round of actions is the base line. Afterwards the program may use at most 2 MB more
memory, half a MB of it on the heap. It must have the same descriptors and no additional threads.
"""

import os
import random
import sys
import time
import unittest

import dbus
from fault_pane import (DESK, KITCHEN, MEGABYTE, NOT_STREAMING, CameraProcess, FaultCase, MeasuredHeap, accessible,
                        wait_until)

LONGEST = 600
SECONDS = min(LONGEST, int(os.environ.get("KS7_SOAK_SECONDS", 480)))
SEED = int(os.environ.get("KS7_SOAK_SEED", random.SystemRandom().randrange(2 ** 32)))


class Soak(FaultCase):
    def setUp(self):
        super().setUp()
        self.random = random.Random(SEED)
        self.addCleanup(CameraProcess().end)
        self.deeds = 0

    # The actions

    def all_deeds(self):
        return [self.hide_and_show, self.preview, self.rename, self.change_passkey, self.update_firmware,
                self.lose_and_find_the_agent, self.about, self.lists_and_statuses, self.settings]

    def hide_and_show(self):
        self.pane.press("Show All")
        self.pane.press(self.pane.wait_for("KS-7", role="push button"))
        self.pane.wait_for("Cameras")

    def preview(self):
        self.pane.press("Start Preview")
        self.pane.wait_for("Stop Preview")
        self.pane.wait_for("Live picture")
        self.pane.press("Stop Preview")
        self.pane.wait_for("Start Preview")
        self.pane.wait_gone("Live picture")

    def rename(self):
        self.pane.choose("Camera Actions", "Properties…")
        self.pane.wait_for("Ignore this camera")
        accessible.key("ctrl+a")
        accessible.type_text(f"Room {self.random.randrange(100)}")
        self.pane.press("OK")
        self.pane.wait_gone("Ignore this camera")

    def change_passkey(self):
        self.pane.choose("Camera Actions", "Change Passkey…")
        self.pane.wait_for("New passkey:")
        accessible.type_text(str(self.random.randrange(1, 10 ** 6)))
        okay = self.pane.wait_for("OK", role="push button")
        self.pane.wait_state(okay, "enabled")
        self.pane.press(okay)
        self.agent.wait_for_call("setPassKey")
        self.post("KS7PassKeySet", {"Result": dbus.Int32(5)})
        self.dismiss()
        self.agent.script.clearRecord()

    def update_firmware(self):
        self.pane.choose("Camera Actions", "Update Firmware…")
        self.pane.wait_for("Click Continue to proceed.")
        self.pane.press("Continue")
        self.pane.wait_for("Click Continue to start the update.")
        self.pane.press("Continue")
        self.agent.wait_for_call("startUpdate")
        for value in range(1, 5):
            self.post("KS7FirmwareUpdateProgress", {"Value": dbus.Int32(value), "Total": dbus.Int32(4)})
        self.post("KS7FirmwareUpdateEnded", {"Result": dbus.Int32(self.random.choice((0, 7)))})
        self.pane.wait_for("Firmware update complete.")
        self.pane.press("Continue")
        self.pane.wait_gone("Firmware update complete.")
        self.agent.script.clearRecord()

    def lose_and_find_the_agent(self):
        self.agent.kill()
        self.wait_for_no_agent(self.pane)
        self.begin_agent()

    def about(self):
        self.pane.choose("Camera Actions", "About KS-7…")
        self.pane.wait_for("About KS-7")
        accessible.key("Escape")
        self.pane.wait_gone("About KS-7")

    def lists_and_statuses(self):
        for _ in range(self.random.randrange(1, 50)):
            self.agent.script.setStatus(DESK, self.random.randrange(-1, 8), signature="si")
        self.agent.script.setStatus(DESK, NOT_STREAMING, signature="si")

    def settings(self):
        for name in self.random.sample(("Enable KS-7", "Show status menu"), 2):
            self.pane.press(name)
            self.pane.press(name)

    # Helpers of the actions

    def dismiss(self):
        self.pane.press(self.pane.wait_for("OK", role="push button"))
        self.pane.wait_gone("OK", role="push button")

    def begin_agent(self):
        """Starts the agent, selects a camera and puts it on the USB cable, so that every action is possible."""
        self.agent = self.start_agent().add_cameras()
        for behaviour in ("firmware", "passKey"):
            self.agent.script.setBehaviour(behaviour, False)
        self.agent.script.setPreferred(KITCHEN)
        self.agent.script.plugUSB(KITCHEN, True)
        self.wait_for_two_cameras()

    def wait_for_two_cameras(self):
        wait_until(lambda: len(self.rows(self.pane)) == 2, "two cameras", self.pane.dump)

    def do(self, deed):
        self.deeds += 1
        try:
            deed()
            self.wait_for_two_cameras()
        except AssertionError as error:
            raise AssertionError(f"{deed.__name__}, deed {self.deeds} of seed {SEED}") from error

    def round(self):
        """Performs every action once, in a random order."""
        deeds = self.all_deeds()
        self.random.shuffle(deeds)
        for deed in deeds:
            self.do(deed)

    @staticmethod
    def holds_no_more(host, descriptors, threads):
        """Returns whether the host has the same descriptors and no additional threads. It may have fewer threads,
        because some threads of the first round may end late."""
        return host.descriptors() == descriptors and host.threads() <= threads

    def test_nothing_grows(self):
        print(f"\nseed {SEED}, {SECONDS} s", flush=True)
        end = time.monotonic() + SECONDS
        first = self.start_agent().add_cameras()
        self.pane = self.open_pane(**self.report_heap())
        self.wait_for_cameras(self.pane)
        first.kill()
        self.begin_agent()
        host = MeasuredHeap(self.pane.process.pid, self.heap_report())
        self.round()
        held = host.descriptors(), host.threads()
        kept, resident = host.kept(), host.resident()
        rounds = 1
        while time.monotonic() < end:
            self.round()
            rounds += 1
        wait_until(lambda: self.holds_no_more(host, *held), "the descriptors and threads of the first round",
                   lambda: f"{held}\n{(host.descriptors(), host.threads())}")
        kept_more, grown = host.kept() - kept, host.resident() - resident
        print(f"seed {SEED}: {rounds} rounds, {self.deeds} deeds, {grown // 1024} kB grown, {kept_more // 1024} kB of them "
              "on the heap", flush=True)
        self.assertLessEqual(kept_more, MEGABYTE // 2)
        self.assertLessEqual(grown, 2 * MEGABYTE)
        self.assertEqual(self.close(self.pane), 0)


if __name__ == "__main__":
    sys.exit(not unittest.main(verbosity=2, exit=False).result.wasSuccessful())
