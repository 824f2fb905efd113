"""Tests the script interface of the stand-in agent: its record of calls and posts, and the faults that it simulates."""

import pathlib
import signal
import sys
import unittest

import dbus

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))

from stand_in import AGENT, PREFERENCES, StandInAgent, wait_until  # noqa: E402

ONE = "00-1b-dc-0f-00-01"
EMPTY = dbus.Dictionary({}, signature="sv")


class FaultCase(unittest.TestCase):
    def setUp(self):
        PREFERENCES.unlink(missing_ok=True)
        self.agent = StandInAgent("--no-picture", "--quick", "--scenario", "scripted")

    def tearDown(self):
        self.agent.end()

    def ask(self, operation, *arguments):
        """Sends a call without waiting for its reply. The reply or error is later appended to the returned list."""
        answers = []
        getattr(self.agent.devices, operation)(*arguments, timeout=60, reply_handler=answers.append,
                                               error_handler=answers.append)
        return answers


class Memory(FaultCase):
    def test_calls_and_posts_are_recorded_in_their_order(self):
        self.agent.devices.flush()
        self.agent.pane_posts("KS7ToggleStatusMenu", {"Value": dbus.Int32(1)})
        self.agent.devices.setName("Door", ONE)
        self.agent.pane_posts("KS7SystemPrefsShowing")
        self.agent.devices.removeCameraAtIndex(-1, True, signature="ib")
        self.agent.usb.connectedCamHasBTAddress(ONE)
        calls = ["flush()", f'setName("Door", "{ONE}")', "removeCameraAtIndex(-1, true)",
                 f'connectedCamHasBTAddress("{ONE}")']
        posts = ['KS7ToggleStatusMenu {"Value":1}', "KS7SystemPrefsShowing"]
        self.assertEqual(self.agent.script.recordedCalls(), calls)
        self.assertEqual(self.agent.script.recordedPosts(), posts)
        self.assertEqual(self.agent.script.recordedEvents(),
                         [calls[0], posts[0], calls[1], posts[1], calls[2], calls[3]])
        self.agent.script.clearRecord()
        self.assertEqual(self.agent.script.recordedEvents(), [])

    def test_its_own_posts_are_not_among_them(self):
        self.agent.script.post("KS7ChangedOptimizedPreference", EMPTY)
        self.agent.listen_up()
        self.assertEqual(self.agent.script.recordedPosts(), [])

    def test_a_malformed_post_is_ignored(self):
        message = dbus.lowlevel.SignalMessage("/com/orvex/DistributedNotificationCenter",
                                              "com.orvex.DistributedNotificationCenter", "KS7ToggleEnabled")
        message.append("Value", dbus.Int32(1))
        self.agent.bus.send_message(message)
        self.agent.listen_up()
        self.assertEqual(self.agent.script.recordedPosts(), ["KS7ToggleEnabled"])

    def test_posts_of_other_types_are_ignored(self):
        for arguments in ([dbus.Array([1, 2], signature="i")], [dbus.Struct((1, "a"))], [],
                          [dbus.Dictionary({"Value": 1}, signature="si")], [EMPTY, "more"]):
            message = dbus.lowlevel.SignalMessage("/com/orvex/DistributedNotificationCenter",
                                                  "com.orvex.DistributedNotificationCenter", "KS7ToggleEnabled")
            message.append(*arguments)
            self.agent.bus.send_message(message)
        self.agent.listen_up()
        self.assertEqual(self.agent.script.recordedPosts(), ["KS7ToggleEnabled"] * 5)

    def test_anything_can_be_posted(self):
        info = dbus.Dictionary({"Value": dbus.Int32(5), "PassKey": "12"}, signature="sv")
        self.agent.script.post("KS7Anything", info)
        self.agent.wait_for_post("KS7Anything")
        self.assertEqual(self.agent.ear.infos("KS7Anything"), [info])
        with self.assertRaises(dbus.DBusException):
            self.agent.script.post("not a name", EMPTY)

    def test_levels_can_be_fixed(self):
        self.agent.script.setAudioLevels(0.5, 0.25)
        self.assertEqual(self.agent.devices.getAudioLevel_l(), (0.5, 0.25))
        self.agent.script.setAudioLevels(-1.0, -1.0)
        self.assertEqual(self.agent.devices.getAudioLevel_l(), (0, 0))

    def test_invalid_script_calls_are_refused(self):
        script = self.agent.script
        for nonsense in (lambda: script.addManyCameras(-1, signature="i"), lambda: script.setBehaviour("x", True),
                         lambda: script.preference("x"), lambda: script.hangDuring("", 0.0)):
            with self.assertRaises(dbus.DBusException):
                nonsense()


class Hanging(FaultCase):
    def test_calls_during_a_hang_get_their_replies_in_order_afterwards(self):
        self.agent.add_camera(ONE)
        self.agent.script.hang(0.0)
        answers = [self.ask("setName", "Door", ONE), self.ask("cameraDict")]
        wait_until(lambda: len(self.agent.script.recordedCalls()) == 2, "the agent has got both calls")
        self.assertEqual(answers, [[], []])
        self.agent.script.resume()
        wait_until(lambda: answers[1], "the second call is answered")
        self.assertEqual(answers[1][0][ONE]["FriendlyName"], "Door")

    def test_a_hang_ends_by_itself(self):
        self.agent.script.hang(0.2)
        answers = self.ask("validateName", "Door")
        wait_until(lambda: answers, "the call is answered")
        self.assertEqual(answers, [True])

    def test_one_operation_hangs_alone(self):
        self.agent.script.hangDuring("cameraDict", 0.0)
        answers = self.ask("cameraDict")
        self.assertEqual(self.agent.devices.sortedDeviceList(), [])
        self.assertEqual(answers, [])

    def test_a_hang_delays_posts_too(self):
        self.agent.script.hang(0.0)
        self.agent.pane_posts("KS7ToggleEnabled", {"Value": dbus.Int32(0)})
        self.agent.listen_up()
        self.assertEqual(self.agent.ear.count("KS7OnOffChanged"), 0)
        self.agent.script.resume()
        self.agent.wait_for_post("KS7OnOffChanged")


class Dying(FaultCase):
    def wait_for_the_end(self):
        wait_until(self.agent.has_ended, "the agent has ended")
        wait_until(lambda: not self.agent.bus.name_has_owner(AGENT), "the names are released")

    def test_dies_at_once(self):
        self.agent.script.die()
        self.wait_for_the_end()
        self.assertNotEqual(self.agent.process.returncode, 0)

    def test_dies_during_an_operation(self):
        self.agent.script.dieDuring("sortedDeviceList")
        self.agent.devices.cameraDict()
        with self.assertRaises(dbus.DBusException):
            self.agent.devices.sortedDeviceList()
        self.wait_for_the_end()

    def test_ends_on_request_and_on_a_signal(self):
        for tell in (self.agent.script.quit, lambda: self.agent.process.send_signal(signal.SIGINT)):
            tell()
            self.wait_for_the_end()
            self.assertEqual(self.agent.process.returncode, 0)
            self.agent.end()
            self.agent = StandInAgent("--no-picture", "--scenario", "scripted")


class MalformedReplies(FaultCase):
    def answer_to(self, operation, kind):
        self.agent.script.malformReplies(operation, kind)
        return getattr(self.agent.devices, operation)()

    def test_replies_of_another_type(self):
        for operation in ("cameraDict", "sortedDeviceList", "indexOfPreferredKS7Cam", "getPreferredKS7Cam"):
            self.assertEqual(self.answer_to(operation, "wrongType"), "nonsense")
        self.assertEqual(self.answer_to("getAudioLevel_l", "wrongType"), ("nonsense", "nonsense"))

    def test_replies_without_a_value_or_with_one_too_many(self):
        self.assertIsNone(self.answer_to("cameraDict", "empty"))
        self.assertEqual(self.answer_to("sortedDeviceList", "extra"), ([], "nonsense"))
        self.assertEqual(self.answer_to("flush", "extra"), "nonsense")

    def test_an_error_reply(self):
        with self.assertRaises(dbus.DBusException):
            self.answer_to("cameraDict", "error")

    def test_the_right_type_with_invalid_contents(self):
        cameras = self.answer_to("cameraDict", "oddValues")
        self.assertEqual(set(cameras), {"", "odd", "bare"})
        self.assertEqual(cameras["bare"], {})
        self.assertIsInstance(cameras["odd"]["Status"], str)

    def test_huge_replies(self):
        cameras = self.answer_to("cameraDict", "huge")
        self.assertEqual(len(cameras), 5000)
        self.assertEqual(max(len(camera["FriendlyName"]) for camera in cameras.values()), 10000)
        self.assertEqual(self.answer_to("indexOfPreferredKS7Cam", "huge"), 0xFFFFFFFFFFFFFFFF)

    def test_valid_replies_again(self):
        self.answer_to("cameraDict", "wrongType")
        self.assertEqual(self.answer_to("cameraDict", ""), {})


if __name__ == "__main__":
    unittest.main(verbosity=2)
