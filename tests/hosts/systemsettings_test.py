#!/usr/bin/python3
"""The module in System Settings: found where a person looks for it, and shown again however often another is chosen."""

import os
import pathlib
import sys
import unittest

import dbus

BUILD = pathlib.Path(os.environ["KS7_BUILD"])
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "support"))

import accessible  # noqa: E402
import stand_in  # noqa: E402

# Another module of the same page.
OTHER_MODULE = {"5": "Applications", "6": "Default Applications"}[os.environ["KS7_QT_VERSION"]]
SHOWING = "KS7SystemPrefsShowing"


def system_settings(*arguments):
    # What the host and its libraries leave behind when they end is not ours to judge.
    return accessible.launch(["systemsettings", *arguments], env={
        "QT_PLUGIN_PATH": str(BUILD / "plugins"),
        "KS7_AGENT": str(BUILD / "bin" / "ks7-agent-simulator"),
        **accessible.foreign_program_environment()})


class SystemSettingsTest(unittest.TestCase):
    def setUp(self):
        self.agent = stand_in.Agent()

    def tearDown(self):
        self.agent.quit_if_up()

    def sidebar_item(self, settings, name):
        """The sidebar is drawn off the window, so it never counts as showing."""
        return accessible.wait_until(lambda: settings.find(name, role="list item", showing=False),
                                     f"{name} in the sidebar", details=settings.dump)

    def choose(self, settings, name):
        settings.press(self.sidebar_item(settings, name))

    def wait_for_cameras(self, settings):
        settings.wait_for("Add Camera")
        accessible.wait_until(lambda: settings.names("table cell"), "a camera", details=settings.dump)

    def showings(self):
        return sum(post.startswith(SHOWING) for post in self.agent.recordedPosts())

    def test_is_in_the_sidebar_and_opens_from_there(self):
        with system_settings() as settings:
            self.choose(settings, "KS-7")
            self.wait_for_cameras(settings)

    def test_is_found_by_what_a_person_calls_it(self):
        for word in ("webcam", "camera", "bluetooth"):
            with self.subTest(word), system_settings() as settings:
                self.sidebar_item(settings, OTHER_MODULE)
                accessible.key("ctrl+f")
                accessible.type_text(word)
                self.sidebar_item(settings, "KS-7")
                accessible.wait_until(
                    lambda: not settings.find(OTHER_MODULE, role="list item", showing=False),
                    "only what was searched for", details=settings.dump)

    def test_the_pane_outlives_its_module_ten_times(self):
        with system_settings("kcm_ks7") as settings:
            self.wait_for_cameras(settings)
            before = self.showings()
            for _ in range(10):
                self.choose(settings, OTHER_MODULE)
                settings.wait_gone("Add Camera")
                self.choose(settings, "KS-7")
                self.wait_for_cameras(settings)
            self.assertEqual(self.showings() - before, 10)
            accessible.key("ctrl+q")
            self.assertEqual(settings.wait_ended(), 0)

    def test_what_the_agent_reports_while_another_module_is_shown_is_seen(self):
        with system_settings("kcm_ks7") as settings:
            self.wait_for_cameras(settings)
            self.choose(settings, OTHER_MODULE)
            settings.wait_gone("Add Camera")
            self.agent.post("KS7PassKeySet", dbus.Dictionary({"Result": 9}, signature="sv"))
            settings.wait_for("Passkey Not Changed")
            settings.press("OK")
            settings.wait_gone("Passkey Not Changed")


if __name__ == "__main__":
    unittest.main(verbosity=2)
