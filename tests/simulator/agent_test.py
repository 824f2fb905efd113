"""Tests the stand-in agent's replies, posts and preferences, as the pane sees them."""

import pathlib
import subprocess
import sys
import unittest
import xml.etree.ElementTree

import dbus

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests" / "support"))

from stand_in import AGENT, AGENT_USB, PREFERENCES, PROGRAM, StandInAgent, preferences, wait_until  # noqa: E402

NO_CAMERA = 0x7FFFFFFFFFFFFFFF
KITCHEN = "00-1b-dc-0f-2a-9c"
DESK = "00-1b-dc-0f-3b-71"
WORKSHOP = "00-1b-dc-0f-5d-04"
ONE = "00-1b-dc-0f-00-01"
TWO = "00-1b-dc-0f-00-02"


# The interfaces that other vendors' agents implement. The test repeats every operation in its order, as name(type
# argument, ...) -> (type argument, ...). A changed operation breaks those agents.
WIRE = {
    "com.orvex.KS7DeviceControllerProxy": [
        "flush() -> ()",
        "cameraDict() -> (a{sa{sv}} cameras)",
        "getAudioLevel_l() -> (d l, d r)",
        "setIgnore(b ignore, a{sv} forCam) -> ()",
        "setName(s name, s forCamAddress) -> ()",
        "checkRemoveCurrentCam(a{sv} camera) -> ()",
        "indexOfPreferredKS7Cam() -> (t row)",
        "validateName(s name) -> (b valid)",
        "streamingStarted() -> ()",
        "pairingInitiated() -> ()",
        "streamingInitiated() -> ()",
        "streamingStopped() -> ()",
        "removeCameraAtIndex(i row, b fromFavorites) -> ()",
        "getKnownZephraDevices() -> ()",
        "sortedDeviceList() -> (as addresses)",
        "cameras() -> (aa{sv} cameras)",
        "getPreferredKS7Cam() -> (a{sv} camera)",
        "isPreferredDeviceAddress(s address) -> (b preferred)",
        "setPreferredDeviceAddress(s address) -> ()",
    ],
    "com.orvex.TernUSBCommandControllerProxy": [
        "startUpdate() -> (i result)",
        "connectedCamNeedsFirmwareUpdate() -> (b needed)",
        "setPassKey(s passKey) -> (i result)",
        "connectedCamHasBTAddress(s address) -> (b matches)",
    ],
}


def methods_of(xml_text, interface):
    """Returns the operations of an interface in order, each as "name(type argument, ...) -> (type argument, ...)"."""
    def arguments(method, direction):
        return ", ".join(f"{arg.get('type')} {arg.get('name')}" for arg in method.iter("arg")
                         if arg.get("direction") == direction)
    for node in xml.etree.ElementTree.fromstring(xml_text).iter("interface"):
        if node.get("name") == interface:
            return [f"{method.get('name')}({arguments(method, 'in')}) -> ({arguments(method, 'out')})"
                    for method in node.iter("method")]
    return []


class AgentCase(unittest.TestCase):
    OPTIONS = ("--scenario", "scripted", "--quick")

    def setUp(self):
        PREFERENCES.unlink(missing_ok=True)
        self.agent = StandInAgent("--no-picture", *self.OPTIONS)

    def tearDown(self):
        self.assertEqual(self.agent.end(), 0)


class Serving(AgentCase):
    def test_takes_its_names_before_it_announces_its_start(self):
        names = self.agent.ear.names()
        for name in (AGENT, AGENT_USB):
            self.assertLess(names.index(f"{name} taken"), names.index("KS7AgentStarted"))

    def test_one_connection_owns_both_names(self):
        bus = self.agent.bus
        self.assertEqual(bus.get_name_owner(AGENT), bus.get_name_owner(AGENT_USB))

    def test_serves_exactly_what_is_declared(self):
        for name, interface in ((AGENT, "com.orvex.KS7DeviceControllerProxy"),
                                (AGENT_USB, "com.orvex.TernUSBCommandControllerProxy")):
            declared = methods_of((ROOT / "agent" / f"{interface}.xml").read_text(), interface)
            self.assertEqual(self.served(name, interface), declared)
            self.assertEqual(len(declared), len(WIRE[interface]))

    def test_serves_every_operation_in_its_order_with_its_types_and_names(self):
        for name, interface in zip((AGENT, AGENT_USB), WIRE):
            self.assertEqual(self.served(name, interface), WIRE[interface])

    def served(self, name, interface):
        introspectable = self.agent.interface(name, "org.freedesktop.DBus.Introspectable")
        return methods_of(introspectable.Introspect(), interface)

    def test_a_second_agent_ends_with_an_error(self):
        second = subprocess.run([PROGRAM, "--no-picture"], capture_output=True, text=True, timeout=60, check=False)
        self.assertNotEqual(second.returncode, 0)
        self.assertIn("another agent is running", second.stderr)
        self.assertEqual(self.agent.ear.count("KS7AgentStarted"), 1)

    def test_knows_no_camera_until_one_is_added(self):
        devices = self.agent.devices
        self.assertEqual(devices.cameraDict(), {})
        self.assertEqual(devices.sortedDeviceList(), [])
        self.assertEqual(devices.cameras(), [])
        self.assertEqual(devices.getPreferredKS7Cam(), {})
        self.assertEqual(devices.indexOfPreferredKS7Cam(), NO_CAMERA)
        self.assertEqual(devices.getAudioLevel_l(), (0, 0))

    def test_releases_one_name_alone(self):
        self.assertTrue(self.agent.script.releaseName("KS7AgentServerUSB"))
        self.assertFalse(self.agent.bus.name_has_owner(AGENT_USB))
        self.assertTrue(self.agent.bus.name_has_owner(AGENT))
        self.assertTrue(self.agent.script.takeName("KS7AgentServerUSB"))
        self.assertTrue(self.agent.bus.name_has_owner(AGENT_USB))


class Cameras(AgentCase):
    def test_every_change_of_the_list_is_posted_once(self):
        script = self.agent.script
        for change in (lambda: self.agent.add_camera(ONE),
                       lambda: script.setStatus(ONE, 4, signature="si"),
                       lambda: script.renameCamera(ONE, "Door"),
                       lambda: script.setSorted([], signature="as"),
                       script.unsetSorted,
                       lambda: script.removeCamera(ONE),
                       lambda: script.addManyCameras(5000, signature="i")):
            self.assertEqual(self.agent.posts_of(change), ["KS7CameraListChanged"])
        self.assertEqual(len(self.agent.devices.cameraDict()), 5000)

    def test_a_record_has_its_three_values_with_their_types(self):
        self.agent.add_camera(ONE, "Door", 3)
        record = self.agent.devices.cameraDict()[ONE]
        self.assertEqual(record, {"Status": 3, "CameraIDString": "0001", "FriendlyName": "Door"})
        self.assertIsInstance(record["Status"], dbus.Int32)
        self.assertEqual(self.agent.devices.cameras(), [record])

    def test_list_and_dictionary_can_disagree(self):
        self.agent.add_camera(ONE)
        self.agent.add_camera(TWO)
        self.agent.script.setSorted([TWO, "nobody"], signature="as")
        self.assertEqual(self.agent.devices.sortedDeviceList(), [TWO, "nobody"])
        self.assertEqual(set(self.agent.devices.cameraDict()), {ONE, TWO})

    def test_the_preferred_camera_has_a_row_and_a_record(self):
        self.agent.add_camera(ONE)
        self.agent.add_camera(TWO, "Door", 4)
        posts = self.agent.posts_of(lambda: self.agent.script.setPreferred(TWO))
        self.assertEqual(posts, ["KS7PreferredCameraChanged"])
        self.assertEqual(self.agent.devices.indexOfPreferredKS7Cam(), 1)
        self.assertEqual(self.agent.devices.getPreferredKS7Cam()["FriendlyName"], "Door")
        self.assertTrue(self.agent.devices.isPreferredDeviceAddress(TWO))
        self.assertFalse(self.agent.devices.isPreferredDeviceAddress(ONE))
        self.agent.script.setPreferred("")
        self.assertEqual(self.agent.devices.indexOfPreferredKS7Cam(), NO_CAMERA)

    def test_an_unknown_camera_cannot_be_preferred(self):
        self.agent.add_camera(ONE)
        self.agent.devices.setPreferredDeviceAddress(ONE)
        for address in ("", "nobody"):
            self.assertEqual(self.agent.posts_of(
                lambda: self.agent.devices.setPreferredDeviceAddress(address)), [])
        self.assertTrue(self.agent.devices.isPreferredDeviceAddress(ONE))

    def test_names_are_checked_and_kept(self):
        self.agent.add_camera(ONE, "Door")
        for bad in ("", "   ", "x" * 64, "two\nlines", "bell\a"):
            self.assertFalse(self.agent.devices.validateName(bad), bad)
            self.agent.devices.setName(bad, ONE)
        self.assertEqual(self.agent.devices.cameraDict()[ONE]["FriendlyName"], "Door")
        for good in ("x", "x" * 63, "  Ga ra ge ", "Küche"):
            self.assertTrue(self.agent.devices.validateName(good), good)
        posts = self.agent.posts_of(lambda: self.agent.devices.setName("  Küche ", ONE))
        self.assertEqual(posts, ["KS7CameraListChanged"])
        self.assertEqual(self.agent.devices.cameraDict()[ONE]["FriendlyName"], "Küche")
        self.assertEqual(preferences()["FriendlyNames"], {ONE: "Küche"})

    def test_an_ignored_camera_is_not_listed(self):
        self.agent.add_camera(ONE)
        record = self.agent.devices.cameraDict()[ONE]
        self.agent.devices.setIgnore(True, record)
        self.assertEqual(self.agent.devices.cameraDict(), {})
        self.assertEqual(preferences()["IgnoredCams"], {ONE: True})
        self.agent.devices.setIgnore(False, record)
        self.assertEqual(self.agent.devices.sortedDeviceList(), [ONE])

    def test_a_removed_camera_loses_its_name(self):
        self.agent.add_camera(ONE)
        self.agent.add_camera(TWO)
        self.agent.devices.setName("Door", TWO)
        posts = self.agent.posts_of(lambda: self.agent.devices.removeCameraAtIndex(1, True, signature="ib"))
        self.assertEqual(posts, ["KS7CameraListChanged"])
        self.assertEqual(self.agent.devices.sortedDeviceList(), [ONE])
        self.assertEqual(preferences()["FriendlyNames"], {})

    def test_missing_rows_remove_nothing(self):
        self.agent.add_camera(ONE)
        for row in (-1, 1, 2147483647, -2147483648):
            self.assertEqual(self.agent.posts_of(
                lambda: self.agent.devices.removeCameraAtIndex(row, True, signature="ib")), [])
        self.assertEqual(self.agent.devices.sortedDeviceList(), [ONE])

    def test_the_current_camera_is_dropped_when_it_was_removed(self):
        self.agent.add_camera(ONE)
        self.agent.script.setPreferred(ONE)
        record = self.agent.devices.getPreferredKS7Cam()
        self.agent.devices.checkRemoveCurrentCam(record)
        self.assertTrue(self.agent.devices.isPreferredDeviceAddress(ONE))
        self.agent.devices.removeCameraAtIndex(0, True, signature="ib")
        self.agent.devices.checkRemoveCurrentCam(dbus.Dictionary({}, signature="sv"))
        self.assertTrue(self.agent.devices.isPreferredDeviceAddress(ONE))
        self.agent.devices.checkRemoveCurrentCam(record)
        self.assertFalse(self.agent.devices.isPreferredDeviceAddress(ONE))


class Settings(AgentCase):
    def test_the_file_is_filled_in_at_the_start(self):
        self.assertEqual(preferences(), {"KS7On": True, "ShowStatusMenu": True, "VideoSize2": 1,
                                         "LogToFile": False, "FriendlyNames": {}})

    def test_the_switches_write_the_file(self):
        for post, key in (("KS7ToggleStatusMenu", "ShowStatusMenu"), ("KS7ToggleDebugLog", "LogToFile"),
                          ("KS7ToggleEnabled", "KS7On")):
            for value in (0, 1):
                self.agent.pane_posts(post, {"Value": dbus.Int32(value)})
                wait_until(lambda: preferences()[key] is bool(value), f"{key} becomes {value}")

    def test_switching_off_is_stored_then_posted_and_ends_the_streams(self):
        self.agent.add_camera(ONE, status=4)
        self.agent.add_camera(TWO, status=0)
        stored = []
        self.agent.bus.add_signal_receiver(lambda *_: stored.append(preferences()["KS7On"]), "KS7OnOffChanged")
        posts = self.agent.posts_of(
            lambda: self.agent.pane_posts("KS7ToggleEnabled", {"Value": dbus.Int32(0)}))
        self.assertEqual(posts, ["KS7ToggleEnabled", "KS7OnOffChanged", "KS7CameraListChanged",
                                 "KS7StreamingEnded"])
        self.assertEqual(stored, [False])
        self.assertEqual((self.agent.status_of(ONE), self.agent.status_of(TWO)), (1, 0))

    def test_a_switch_without_a_value_changes_nothing(self):
        before = preferences()
        self.agent.posts_of(lambda: self.agent.pane_posts("KS7ToggleEnabled", {}))
        self.assertEqual(preferences(), before)

    def test_the_video_size_is_read_again_when_it_has_changed(self):
        PREFERENCES.write_bytes(PREFERENCES.read_bytes().replace(b"<integer>1<", b"<integer>0<"))
        self.agent.pane_posts("KS7ChangedOptimizedPreference")
        wait_until(lambda: self.agent.script.preference("VideoSize2") == 0, "the agent reads the new size")

    def test_a_file_that_cannot_be_parsed_is_kept(self):
        self.assertEqual(self.agent.end(), 0)
        PREFERENCES.write_text("not a property list")
        self.agent = StandInAgent("--no-picture", *self.OPTIONS)
        self.agent.pane_posts("KS7ToggleStatusMenu", {"Value": dbus.Int32(0)})
        self.agent.listen_up()
        self.assertEqual(PREFERENCES.read_text(), "not a property list")


class Cable(AgentCase):
    def plug(self, needs_firmware=True):
        self.agent.add_camera(ONE)
        self.agent.script.plugUSB(ONE, needs_firmware, signature="sb")

    def test_knows_which_camera_is_plugged_in(self):
        self.assertFalse(self.agent.usb.connectedCamHasBTAddress(""))
        self.plug()
        self.assertTrue(self.agent.usb.connectedCamHasBTAddress(ONE))
        self.assertTrue(self.agent.usb.connectedCamNeedsFirmwareUpdate())
        self.assertFalse(self.agent.usb.connectedCamHasBTAddress(TWO))
        posts = self.agent.posts_of(self.agent.script.unplugUSB)
        self.assertEqual(posts, ["KS7USBDeviceDisconnected"])
        self.assertFalse(self.agent.usb.connectedCamHasBTAddress(ONE))
        self.assertFalse(self.agent.usb.connectedCamNeedsFirmwareUpdate())

    def test_a_passkey_is_set_and_reported(self):
        self.plug()
        self.assertEqual(self.agent.usb.setPassKey("0000"), 0)
        self.agent.wait_for_post("KS7PassKeySet")
        self.assertEqual(self.agent.ear.infos("KS7PassKeySet"), [{"Result": 0, "PassKey": "0000"}])

    def test_an_invalid_passkey_is_refused(self):
        self.assertNotEqual(self.agent.usb.setPassKey("1234"), 0)
        self.plug()
        for bad in ("", "12a4", "1" * 17, "1 2", "𝟏" * 17):
            self.assertNotEqual(self.agent.usb.setPassKey(bad), 0, bad)
        self.assertEqual(self.agent.usb.setPassKey("٣" * 16), 0)
        self.assertEqual(self.agent.usb.setPassKey("𝟏" * 16), 0)

    def test_a_passkey_fails_as_the_script_wants(self):
        self.plug()
        self.agent.script.setErrorCode("setPassKey", -5, signature="si")
        self.assertEqual(self.agent.usb.setPassKey("1234"), -5)
        self.agent.script.setErrorCode("setPassKey", 0, signature="si")
        self.agent.script.setErrorCode("KS7PassKeySet", 7, signature="si")
        self.assertEqual(self.agent.usb.setPassKey("1234"), 0)
        self.agent.wait_for_post("KS7PassKeySet")
        self.assertEqual(self.agent.ear.infos("KS7PassKeySet"), [{"Result": 7}])

    def test_an_update_makes_progress_and_ends(self):
        self.plug()
        self.assertEqual(self.agent.usb.startUpdate(), 0)
        self.assertNotEqual(self.agent.usb.startUpdate(), 0)
        self.agent.wait_for_post("KS7FirmwareUpdateEnded")
        progress = self.agent.ear.infos("KS7FirmwareUpdateProgress")
        self.assertEqual([info["Value"] for info in progress], list(range(1, 51)))
        self.assertEqual({int(info["Total"]) for info in progress}, {50})
        self.assertIsInstance(progress[0]["Value"], dbus.Int32)
        self.assertEqual(self.agent.ear.infos("KS7FirmwareUpdateEnded"), [{"Result": 0}])
        self.assertFalse(self.agent.usb.connectedCamNeedsFirmwareUpdate())
        self.assertNotEqual(self.agent.usb.startUpdate(), 0)

    def test_an_update_fails_as_the_script_wants(self):
        self.plug()
        self.agent.script.setErrorCode("startUpdate", 3, signature="si")
        self.assertEqual(self.agent.usb.startUpdate(), 3)
        self.agent.script.setErrorCode("startUpdate", 0, signature="si")
        self.agent.script.setErrorCode("KS7FirmwareUpdateEnded", -9, signature="si")
        self.assertEqual(self.agent.usb.startUpdate(), 0)
        self.agent.wait_for_post("KS7FirmwareUpdateEnded")
        self.assertEqual(self.agent.ear.infos("KS7FirmwareUpdateEnded"), [{"Result": -9}])
        self.assertTrue(self.agent.usb.connectedCamNeedsFirmwareUpdate())

    def test_an_update_waits_for_the_script_on_request(self):
        self.plug()
        self.agent.script.setBehaviour("firmware", False)
        self.assertEqual(self.agent.posts_of(self.agent.usb.startUpdate), [])


class Search(AgentCase):
    OPTIONS = ("--scenario", "empty", "--quick")

    def search(self):
        self.agent.listen_up()
        self.agent.ear.forget()
        self.agent.pane_posts("KS7StartDiscovering")
        self.agent.wait_for_post("KS7StoppedDiscovering")
        return self.agent.ear.names()

    def test_a_search_finds_one_camera(self):
        self.assertEqual(self.search(), ["KS7StartDiscovering", "KS7StartedDiscovering", "KS7CameraListChanged",
                                         "KS7StoppedDiscovering"])
        (camera,) = self.agent.devices.cameraDict().values()
        self.assertEqual(camera["Status"], 1)
        self.search()
        self.assertEqual(len(self.agent.devices.sortedDeviceList()), 2)

    def test_the_camera_found_pairs_starts_and_streams_when_it_is_chosen(self):
        self.search()
        (address,) = self.agent.devices.sortedDeviceList()
        self.agent.ear.forget()
        self.agent.devices.setPreferredDeviceAddress(address)
        self.agent.wait_for_post("KS7StreamingStarted")
        self.assertEqual(self.agent.ear.names(),
                         ["KS7PreferredCameraChanged", "KS7CameraListChanged", "KS7PairingInitiated",
                          "KS7CameraListChanged", "KS7StreamingInitiated", "KS7CameraListChanged",
                          "KS7StreamingStarted"])
        self.assertEqual(self.agent.status_of(address), 4)
        levels = {self.agent.devices.getAudioLevel_l() for _ in range(20)}
        self.assertGreater(len(levels), 1)
        self.assertTrue(all(0 < level < 1 for pair in levels for level in pair))

    def test_a_camera_that_stays_a_favourite_is_found_again(self):
        self.search()
        (address,) = self.agent.devices.sortedDeviceList()
        self.agent.devices.setName("Door", address)
        self.agent.devices.removeCameraAtIndex(0, False, signature="ib")
        self.assertEqual(self.agent.devices.sortedDeviceList(), [])
        self.search()
        self.assertEqual(self.agent.devices.cameraDict()[address]["FriendlyName"], "Door")

    def test_bluetooth_is_lost_and_found(self):
        self.search()
        (address,) = self.agent.devices.sortedDeviceList()
        self.agent.devices.setPreferredDeviceAddress(address)
        self.agent.wait_for_post("KS7StreamingStarted")
        self.agent.script.bluetooth(False)
        self.agent.wait_for_post("KS7NoBluetooth")
        self.assertEqual(self.agent.status_of(address), 0)
        self.assertEqual(self.agent.posts_of(lambda: self.agent.pane_posts("KS7StartDiscovering")),
                         ["KS7StartDiscovering"])
        self.agent.script.bluetooth(True)
        self.agent.wait_for_post("KS7FoundBluetooth")
        self.agent.wait_for_post("KS7StreamingStarted")


class Demo(AgentCase):
    OPTIONS = ("--scenario", "demo", "--quick")

    def setUp(self):
        super().setUp()
        self.agent.wait_for_post("KS7StreamingStarted")
        self.agent.wait_for_post("KS7USBDeviceConnected")

    def test_one_camera_streams_one_is_away_and_one_is_at_the_cable(self):
        cameras = {str(camera["FriendlyName"]): int(camera["Status"])
                   for camera in self.agent.devices.cameraDict().values()}
        self.assertEqual(cameras, {"Kitchen": 4, "Desk": 0, "Workshop": 1})
        self.assertEqual(self.agent.devices.sortedDeviceList(), [KITCHEN, DESK, WORKSHOP])
        self.assertEqual(self.agent.devices.indexOfPreferredKS7Cam(), 0)
        self.assertTrue(self.agent.usb.connectedCamHasBTAddress(WORKSHOP))
        self.assertTrue(self.agent.usb.connectedCamNeedsFirmwareUpdate())

    def test_the_camera_at_the_cable_does_not_stream(self):
        posts = self.agent.posts_of(lambda: self.agent.devices.setPreferredDeviceAddress(WORKSHOP))
        self.assertEqual(posts, ["KS7PreferredCameraChanged", "KS7CameraListChanged", "KS7StreamingEnded"])
        self.assertEqual((self.agent.status_of(KITCHEN), self.agent.status_of(WORKSHOP)), (1, 1))
        self.agent.script.unplugUSB()
        self.agent.wait_for_post("KS7StreamingStarted")
        self.assertEqual(self.agent.status_of(WORKSHOP), 4)

    def test_one_passkey_is_refused_and_one_fails_later(self):
        self.assertEqual(self.agent.usb.setPassKey("0000"), -104)
        self.assertEqual(self.agent.usb.setPassKey("9999"), 0)
        self.agent.wait_for_post("KS7PassKeySet")
        self.assertEqual(self.agent.ear.infos("KS7PassKeySet"), [{"Result": -105}])

    def test_the_first_update_succeeds_and_the_second_fails(self):
        self.assertEqual(self.agent.usb.startUpdate(), 0)
        self.agent.wait_for_post("KS7FirmwareUpdateEnded")
        wait_until(self.agent.usb.connectedCamNeedsFirmwareUpdate, "the camera wants another update")
        self.assertEqual(self.agent.usb.startUpdate(), 0)
        self.agent.wait_for_post("KS7FirmwareUpdateEnded", 2)
        self.assertEqual([int(info["Result"]) for info in self.agent.ear.infos("KS7FirmwareUpdateEnded")], [0, -107])

    def test_unplugging_ends_an_update_with_an_error(self):
        self.agent.usb.startUpdate()
        self.agent.wait_for_post("KS7FirmwareUpdateProgress")
        self.agent.script.unplugUSB()
        self.agent.wait_for_post("KS7FirmwareUpdateEnded")
        self.assertEqual(self.agent.ear.infos("KS7FirmwareUpdateEnded"), [{"Result": -108}])

    def test_a_given_name_is_kept_after_a_restart(self):
        self.agent.devices.setName("Pantry", KITCHEN)
        self.assertEqual(self.agent.end(), 0)
        self.agent = StandInAgent("--no-picture", *self.OPTIONS)
        wait_until(lambda: KITCHEN in self.agent.devices.cameraDict(), "the cameras are known")
        self.assertEqual(self.agent.devices.cameraDict()[KITCHEN]["FriendlyName"], "Pantry")


if __name__ == "__main__":
    unittest.main(verbosity=2)
