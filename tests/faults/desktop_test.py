#!/usr/bin/python3
"""Tests desktop services that start, stop or reply with errors. The pane must not show any effect in its host."""

import json
import os
import pathlib
import signal
import subprocess
import sys
import unittest

import dbus
from fault_pane import BUILD, FaultCase, Measured, wait_until
from processes import stop_process

LOGIND = "org.freedesktop.login1"
LOGIND_PATH = "/org/freedesktop/login1"
MANAGER = "org.freedesktop.login1.Manager"
MOCK = "org.freedesktop.DBus.Mock"
REFUSE = "raise dbus.exceptions.DBusException('no', name='org.freedesktop.DBus.Error.AccessDenied')"
PACKAGEKIT = pathlib.Path(__file__).resolve().parents[1] / "platform" / "updates" / "packagekit_stand_in.py"
UPDATES = pathlib.Path(os.environ["XDG_STATE_HOME"]) / "ks7-preferences" / "updates"
OWN_FILE = (BUILD / "plugins" / "ks7" / "ks7pane.so").resolve()
OWN_PACKAGE = "ks7-preferences;1.0-1;amd64;installed"
NEWER_PACKAGE = "ks7-preferences;1.1-1;amd64;debian"


class Service:
    """A process that owns a name on the system bus."""

    def __init__(self, name, *command, **options):
        self.bus = dbus.SystemBus()
        self.name = name
        self.process = subprocess.Popen([sys.executable, *map(str, command)], stdin=subprocess.DEVNULL, **options)
        wait_until(lambda: self.bus.name_has_owner(name), name)

    def kill(self):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()
        wait_until(lambda: not self.bus.name_has_owner(self.name), f"the end of {self.name}")


class Logind(Service):
    def __init__(self, *arguments):
        super().__init__(LOGIND, "-m", "dbusmock", "--system", *(arguments or ("--template", "logind")),
                         stdout=subprocess.DEVNULL)

    def _interface(self, name):
        return dbus.Interface(self.bus.get_object(LOGIND, LOGIND_PATH), name)

    def inhibitors(self):
        return [what for what, who, *_ in self._interface(MANAGER).ListInhibitors() if who == "KS-7"]

    def prepare_for_sleep(self, start):
        self._interface(MOCK).EmitSignal(MANAGER, "PrepareForSleep", "b", [start])

    @classmethod
    def that_refuses(cls):
        logind = cls(LOGIND, LOGIND_PATH, MANAGER)
        for method, takes, gives in (("Inhibit", "ssss", "h"), ("GetSession", "s", "o"), ("GetSessionByPID", "u", "o")):
            logind._interface(MOCK).AddMethod(MANAGER, method, takes, gives, REFUSE)
        return logind


class SystemBus:
    """A private system bus that tests stop with SIGSTOP."""

    def __init__(self):
        folder = pathlib.Path(os.environ["KS7_SESSION_FOLDER"])
        self.address = f"unix:path={folder / 'own-system-bus'}"
        self.process = subprocess.Popen(
            ["dbus-daemon", "--session", "--nofork", "--print-address", f"--address={self.address}"],
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE)
        self.process.stdout.readline()

    def stop(self):
        stop_process(self.process.pid)

    def resume(self):
        self.process.send_signal(signal.SIGCONT)

    def end(self):
        self.process.kill()
        self.process.communicate()


class PackageKit(Service):
    """A package service that records its calls in a file."""

    def __init__(self, **behaviour):
        self.told = pathlib.Path(os.environ["KS7_SESSION_FOLDER"]) / "packagekit"
        with self.told.open("w") as told:
            super().__init__("org.freedesktop.PackageKit", PACKAGEKIT, json.dumps(behaviour), stdout=told)

    def wait_for_call(self, name):
        wait_until(lambda: name in self.told.read_text(), f"{name} of the package service")


class Desktop(FaultCase):
    def setUp(self):
        super().setUp()
        self.another_day()
        self.agent = self.start_agent().add_cameras()

    @staticmethod
    def another_day():
        """Deletes the time of the last query, because the pane queries the package service only once a day."""
        UPDATES.unlink(missing_ok=True)

    def show_pane(self, **env):
        self.pane = self.open_pane(**env)
        self.wait_for_cameras(self.pane)

    def start(self, service, **behaviour):
        started = service(**behaviour)
        self.addCleanup(started.kill)
        return started

    def wait_for_inhibitors(self, logind, count):
        wait_until(lambda: len(logind.inhibitors()) == count, f"{count} inhibitors", lambda: str(logind.inhibitors()))

    def expect_nothing_to_be_seen(self):
        self.wait_for_cameras(self.pane)
        self.assertIsNone(self.pane.find("OK", role="push button"))
        self.assertIsNone(self.pane.find("Install", role="push button"))

    # logind

    def test_a_restarted_logind_gets_one_inhibitor(self):
        logind = self.start(Logind)
        self.show_pane()
        self.wait_for_inhibitors(logind, 1)
        host = Measured(self.pane.process.pid)
        held = host.descriptors()
        for _ in range(5):
            logind.kill()
            logind = self.start(Logind)
            self.wait_for_inhibitors(logind, 1)
            wait_until(lambda: host.descriptors() == held, "the descriptors", lambda: f"{held}\n{host.descriptors()}")
        self.expect_nothing_to_be_seen()
        logind.prepare_for_sleep(True)
        self.wait_for_inhibitors(logind, 0)
        logind.prepare_for_sleep(False)
        self.wait_for_inhibitors(logind, 1)
        self.assertEqual(self.close(self.pane), 0)
        self.wait_for_inhibitors(logind, 0)

    def test_a_logind_that_replies_with_errors(self):
        logind = self.start(Logind.that_refuses)
        self.show_pane()
        self.agent.script.clearRecord()
        logind.prepare_for_sleep(True)
        self.agent.wait_for_call("getPreferredKS7Cam")
        logind.prepare_for_sleep(False)
        self.expect_nothing_to_be_seen()
        logind.kill()
        self.wait_for_inhibitors(self.start(Logind), 1)
        self.expect_nothing_to_be_seen()

    def test_the_machine_sleeps_while_the_agent_is_stopped(self):
        logind = self.start(Logind)
        self.show_pane()
        self.wait_for_inhibitors(logind, 1)
        self.agent.script.clearRecord()
        self.agent.stop()
        logind.prepare_for_sleep(True)
        self.wait_for_inhibitors(logind, 0)
        self.wait_for_no_agent(self.pane)
        self.agent.resume()
        self.agent.wait_for_call("cameraDict")
        self.assertEqual(self.agent.calls(), ["cameraDict()"])
        logind.prepare_for_sleep(False)
        self.wait_for_inhibitors(logind, 1)
        self.post("KS7AgentStarted")
        self.wait_for_cameras(self.pane)

    # The system bus

    def test_a_silent_system_bus_does_not_delay_the_window(self):
        system_bus = SystemBus()
        self.addCleanup(system_bus.end)
        system_bus.stop()
        # show_pane() fails if the cameras do not appear within its time limit. A blocking call on the silent system bus
        # would last longer than this limit.
        self.show_pane(DBUS_SYSTEM_BUS_ADDRESS=system_bus.address)
        self.expect_nothing_to_be_seen()
        self.assertEqual(self.close(self.pane), 0)

    def test_an_absent_system_bus(self):
        self.show_pane(DBUS_SYSTEM_BUS_ADDRESS="unix:path=/nonexistent/bus")
        self.expect_nothing_to_be_seen()
        self.assertEqual(self.close(self.pane), 0)

    # PackageKit

    def test_a_package_service_that_replies_with_errors(self):
        packagekit = self.start(PackageKit, query="failed")
        self.show_pane()
        packagekit.wait_for_call("SearchFiles")
        self.expect_nothing_to_be_seen()
        self.assertEqual(self.close(self.pane), 0)

    def test_a_package_service_that_ends_during_a_search_and_restarts(self):
        packagekit = self.start(PackageKit, query="vanish")
        self.show_pane()
        packagekit.wait_for_call("SearchFiles")
        packagekit.kill()
        self.expect_nothing_to_be_seen()
        self.assertEqual(self.close(self.pane), 0)
        self.start(PackageKit, owners={str(OWN_FILE): OWN_PACKAGE}, updates=[[5, NEWER_PACKAGE]])
        self.another_day()
        self.show_pane()
        self.pane.wait_for("Install", role="push button")
        self.assertEqual(self.close(self.pane), 0)


if __name__ == "__main__":
    unittest.main(verbosity=2)
