#!/usr/bin/python3
"""Tests the module in System Settings: its place, its search words, and repeated showing."""

import contextlib
import os
import pathlib
import re
import sys
import tempfile
import unittest

import dbus

BUILD = pathlib.Path(os.environ["KS7_BUILD"])
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "support"))

import accessible  # noqa: E402
import stand_in  # noqa: E402
from pictures import Picture  # noqa: E402
from screens import SCREEN  # noqa: E402

# The name of another module on our module's page of System Settings, by Qt version and language.
OTHER_MODULES = {"5": {"en": "Applications", "de": "Anwendungen"},
                 "6": {"en": "Default Applications", "de": "Standard-Anwendungen"}}[os.environ["KS7_QT_VERSION"]]
OTHER_MODULE = OTHER_MODULES["en"]
# The colour at the centre of the module's icon.
LENS = (0x2e, 0x6f, 0xb0)
# Messages of Qt, GLib, GStreamer, PipeWire and the pane on standard error.
ABOUT_US = re.compile(r"\bQ[A-Z][a-z]\w+|\bqt\.|GLib|GStreamer|Gst|pipewire|[Kk][Ss]7|(WARNING|CRITICAL) \*\*")
# QML's messages name files of the host. The session has no system bus, so the search for updates fails. On X, System
# Settings of Plasma 6 writes the line of QThreadStorage at its end with any module.
OF_THE_HOST = re.compile(r"\bkf\.|/qml/|\.qml:|The search for updates failed|QThreadStorage: Thread \w+ exited")
# Without a system bus, the host's two messages about Polkit come in this order.
POLKIT = re.compile(r"[^\n]*polkit_system_bus_name_new[^\n]*\n\s*[^\n]*g_object_unref[^\n]*\n")
SHOWING = "KS7SystemPrefsShowing"
CONTROLS = ("Enable KS-7", "Optimize for", "Cameras", "Add Camera", "Remove Camera", "Camera Actions", "Start Preview",
            "Left audio level", "Right audio level", "Show status menu")
# Widths in pixels. The narrow one is below the least width of System Settings.
WIDE, NARROW = 1200, 640
# A height in pixels at which the page needs no scroll bar, also with the picture under the list.
HEIGHT = 960
# The X buttons of the wheel: up and down.
WHEEL = (4, 5)


# Search words that must find the module, by the session's language.
KEYWORDS = {"en": ("webcam", "camera", "bluetooth", "firmware"), "de": ("Kamera", "drahtlos", "Vorschau")}
LANGUAGES = {"en": {}, "de": {"LC_ALL": "de_DE.UTF-8", "LANGUAGE": "de"}}


def system_settings(*arguments, language="en", agent=BUILD / "bin" / "ks7-agent-simulator", **options):
    # foreign_program_environment() disables leak detection, because the host and its libraries have leaks of their own.
    return accessible.launch(["systemsettings", *arguments], env={
        "QT_PLUGIN_PATH": str(BUILD / "plugins"),
        "KS7_AGENT": str(agent),
        **LANGUAGES[language], **accessible.foreign_program_environment()}, **options)


def lines_about_us(errors):
    """Returns the lines of standard error that our code may have caused. Leaves out the lines that System Settings also
    writes without our module."""
    return [line for line in POLKIT.sub("", errors).splitlines()
            if ABOUT_US.search(line) and not OF_THE_HOST.search(line)]


class SystemSettingsTest(unittest.TestCase):
    def setUp(self):
        self.agent = stand_in.Agent()

    def tearDown(self):
        self.agent.quit_if_up()

    def sidebar_item(self, settings, name):
        """Finds an item in the sidebar. System Settings draws the items off screen, so they never have the state
        "showing"."""
        return accessible.wait_until(lambda: settings.find(name, role="list item", showing=False),
                                     f"{name} in the sidebar", details=settings.dump)

    def choose(self, settings, name):
        settings.press(self.sidebar_item(settings, name))

    def wait_for_cameras(self, settings):
        settings.wait_for("Add Camera")
        accessible.wait_until(lambda: settings.names("table cell"), "a camera", details=settings.dump)

    def quit(self, settings):
        settings.wait_active()
        accessible.key("ctrl+q")
        return settings.wait_ended()

    def posts(self, name):
        return [post for post in self.agent.recordedPosts() if post.startswith(name)]

    def test_is_in_the_sidebar_and_opens_from_there(self):
        with system_settings() as settings:
            self.choose(settings, "KS-7")
            self.wait_for_cameras(settings)

    def test_is_found_by_its_keywords(self):
        for language, words in KEYWORDS.items():
            for word in words:
                with self.subTest(word), system_settings(language=language) as settings:
                    self.sidebar_item(settings, OTHER_MODULES[language])
                    settings.wait_active()
                    accessible.key("ctrl+f")
                    accessible.type_text(word)
                    self.sidebar_item(settings, "KS-7")
                    accessible.wait_until(
                        lambda: not settings.find(OTHER_MODULES[language], role="list item", showing=False),
                        "only what was searched for", details=settings.dump)

    def test_the_pane_outlives_its_module_ten_times(self):
        with system_settings("kcm_ks7") as settings:
            self.wait_for_cameras(settings)
            before = len(self.posts(SHOWING))
            for _ in range(10):
                self.choose(settings, OTHER_MODULE)
                settings.wait_gone("Add Camera")
                self.choose(settings, "KS-7")
                self.wait_for_cameras(settings)
            self.assertEqual(len(self.posts(SHOWING)) - before, 10)
            self.assertEqual(self.quit(settings), 0)

    def test_has_its_title_and_no_apply_buttons(self):
        with system_settings("kcm_ks7") as settings:
            self.wait_for_cameras(settings)
            self.assertIn("KS-7", settings.title())
            for name in ("Apply", "Reset", "Defaults", "Help"):
                self.assertIsNone(settings.find(name, role="push button"), name)

    def test_without_an_agent_a_key_ends_the_alert(self):
        with system_settings("kcm_ks7", agent="/nonexistent") as settings:
            settings.wait_active("Installation Error")
            accessible.key("Return")
            settings.wait_gone("Installation Error", role="alert")
            self.assertIsNone(settings.find(role="alert"))

    def test_its_icon_is_in_colour_in_the_sidebar(self):
        with system_settings() as settings:
            self.sidebar_item(settings, "KS-7")
            x, y, width, height = settings.windows()[0].box

            def sees_the_lens():
                seen = Picture((x, y, width // 3, height)).bytes
                return any(abs(seen[at] - LENS[0]) < 25 and abs(seen[at + 1] - LENS[1]) < 25 and
                           abs(seen[at + 2] - LENS[2]) < 25 for at in range(0, len(seen), 3))
            accessible.wait_until(sees_the_lens, "the colour of the icon's lens", details=settings.dump)

    def test_option_held_at_opening_shows_debug_logging(self):
        with accessible.held("Alt_L"), system_settings("kcm_ks7") as settings:
            settings.wait_for("Debug logging", role="check box")

    def test_the_tab_key_leaves_the_list(self):
        with system_settings("kcm_ks7") as settings:
            self.wait_for_cameras(settings)
            settings.wait_active()
            settings.focus("Cameras")
            accessible.key("Tab")
            accessible.wait_until(lambda: settings.focused() not in ("", "Cameras"), "Tab to leave the list",
                                  details=settings.dump)

    def test_the_wheel_over_the_pop_up_changes_nothing(self):
        with system_settings("kcm_ks7") as settings:
            self.wait_for_cameras(settings)
            settings.wait_active()
            settings.focus("Cameras")
            pop_up = settings.wait_for("Optimize for", role="combo box")
            before = settings.text(pop_up)
            for button in WHEEL:
                settings.click(pop_up, button=button, times=3)
            # Input is handled in order: when the click after the wheel is noticed, so is the wheel.
            settings.click("Show status menu")
            accessible.wait_until(lambda: self.posts("KS7ToggleStatusMenu"), "the click", details=settings.dump)
            self.assertEqual(settings.text(pop_up), before)
            self.assertEqual(self.posts("KS7ChangedOptimizedPreference"), [])

    def test_a_narrow_window_shows_every_control_inside(self):
        with system_settings("kcm_ks7") as settings:
            self.wait_for_cameras(settings)
            # Begin with a wide window, because System Settings may open with its least width.
            self.resize(settings, WIDE)
            self.resize(settings, NARROW)
            for name in CONTROLS:
                accessible.wait_until(lambda name=name: self.is_inside(settings, name), f"{name!r} inside the window",
                                      details=lambda name=name: f"{settings.rectangle(name)} {settings.windows()}")

    def is_inside(self, settings, name):
        x, y, width, height = settings.rectangle_at_rest(name)
        left, top, window_width, window_height = settings.windows()[0].box
        return left <= x and x + width <= left + window_width and top <= y and y + height <= top + window_height

    def resize(self, settings, width):
        before = settings.windows()[0].box
        SCREEN.resize(settings.windows()[0], width, HEIGHT)
        accessible.wait_until(lambda: abs(settings.windows()[0].box[2] - width) < abs(before[2] - width),
                              f"a width near {width}", details=lambda: f"{settings.windows()}")

    @contextlib.contextmanager
    def settings_without_warnings(self):
        """Opens System Settings with our module. At the end, checks that our code has caused no message on standard
        error."""
        with tempfile.TemporaryFile("w+") as errors:
            with system_settings("kcm_ks7", stderr=errors) as settings:
                self.wait_for_cameras(settings)
                yield settings
            errors.seek(0)
            self.assertEqual(lines_about_us(errors.read()), [])

    def test_closing_after_a_sheet_and_in_a_preview_ends_the_program_well(self):
        for name, begin in (("a sheet", self.open_and_leave_sheet), ("a preview", self.start_preview)):
            with self.subTest(name), self.settings_without_warnings() as settings:
                begin(settings)
                self.assertEqual(self.quit(settings), 0)

    def test_closing_under_a_sheet_ends_the_program_well_when_the_sheet_is_left(self):
        with self.settings_without_warnings() as settings:
            self.open_sheet(settings)
            SCREEN.close(next(window for window in settings.windows() if "Camera Properties" not in window.title))
            accessible.key("alt+F4")
            settings.wait_gone("Camera ID:", role="text")
            self.assertEqual(self.quit(settings), 0)

    def test_the_end_of_the_session_under_a_sheet_ends_the_program_well(self):
        with self.settings_without_warnings() as settings:
            self.open_sheet(settings)
            application = dbus.SessionBus().get_object("org.kde.systemsettings", "/MainApplication", introspect=False)
            application.quit(dbus_interface="org.qtproject.Qt.QCoreApplication", ignore_reply=True)
            self.assertEqual(settings.wait_ended(), 0)

    def open_sheet(self, settings):
        settings.choose("Camera Actions", "Properties…")
        settings.wait_for("Camera ID:")
        settings.wait_active("Camera Properties")

    def open_and_leave_sheet(self, settings):
        self.open_sheet(settings)
        accessible.key("Escape")
        settings.wait_gone("Camera ID:", role="text")
        settings.wait_active()

    def start_preview(self, settings):
        settings.wait_for("Kitchen, Streaming")
        settings.press("Start Preview")
        settings.wait_for("Stop Preview")

    def test_using_the_pane_writes_no_warnings(self):
        with self.settings_without_warnings() as settings:
            for walk in (self.open_and_leave_menu, self.open_and_leave_sheets, self.see_the_preview, self.search,
                         self.leave_and_come_back):
                walk(settings)

    def open_and_leave_menu(self, settings):
        settings.open_menu("Camera Actions")
        accessible.key("Escape")
        settings.wait_gone("Properties…", role="menu item")

    def open_and_leave_sheets(self, settings):
        self.open_and_leave_sheet(settings)
        self.open_and_leave(settings, "Change Passkey…", "Connect To USB")
        settings.click(self.row(settings, "Workshop"))
        settings.wait_state(self.row(settings, "Workshop"), "selected")
        self.open_and_leave(settings, "Change Passkey…", "Change Passkey")
        self.open_and_leave(settings, "Update Firmware…", "Update Firmware")
        self.open_and_leave(settings, "About KS-7…", "About KS-7")

    def open_and_leave(self, settings, action, title):
        settings.choose("Camera Actions", action)
        settings.wait_active(title)
        accessible.key("Escape")
        accessible.wait_until(lambda: len(settings.windows()) == 1, f"the closing of {title!r}", details=settings.dump)
        settings.wait_active()

    def row(self, settings, camera):
        return accessible.wait_until(lambda: next((cell for cell in settings.all(role="table cell")
                                                   if accessible.name_of(cell).startswith(camera)), None),
                                     f"the row of {camera}", details=settings.dump)

    def see_the_preview(self, settings):
        settings.click(self.row(settings, "Kitchen"))
        self.start_preview(settings)
        settings.wait_for("Live picture", role="image")
        self.resize(settings, WIDE)
        self.resize(settings, NARROW)
        settings.press("Stop Preview")
        settings.wait_gone("Live picture", role="image")

    def search(self, settings):
        # "Add Camera" is disabled while a camera streams.
        settings.click(self.row(settings, "Desk"))
        settings.wait_for("Kitchen, Not Streaming")
        settings.press("Add Camera")
        settings.wait_for("Searching for cameras…")

    def leave_and_come_back(self, settings):
        self.choose(settings, OTHER_MODULE)
        settings.wait_gone("Add Camera")
        self.choose(settings, "KS-7")
        self.wait_for_cameras(settings)

    def test_changes_made_while_another_module_is_shown_appear(self):
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
