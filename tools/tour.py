#!/usr/bin/python3
"""Uses the pane like a person and takes pictures: tools/tour.py BUILD-FOLDER [--docs] [PART...]

Needs a private session with a bus and either an X display with a window manager or Wayland. On Wayland it takes fewer
pictures. ./run --tour runs it in both sessions. It writes the pictures to BUILD-FOLDER/tour/ and prints a line about each.
If a part fails, the tour prints its name, continues with the other parts and exits with code 1.
With --docs it also writes copies of the README's pictures with fewer colours to docs/pictures/.
"""

import argparse
import contextlib
import os
import pathlib
import re
import shutil
import subprocess
import sys
import xml.etree.ElementTree

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests" / "support"))

import accessible  # noqa: E402
import pipewire_nodes  # noqa: E402
import stand_in  # noqa: E402
from screens import IS_WAYLAND, SCREEN  # noqa: E402

GERMAN = {"LC_ALL": "de_DE.UTF-8", "LANGUAGE": "de"}
TRANSLATIONS = ROOT / "resources" / "translations" / "ks7_de.ts"
# The pictures that the README shows, with their file names in docs/pictures/.
DOCUMENTED = {"30-wayland-properties": "properties", "31-wayland-preview": "preview", "33-wayland-dark": "dark",
              "32-wayland-systemsettings": "system-settings"}
# The major version of Plasma. It equals that of Qt.
PLASMA = "6" if shutil.which("kcmshell6") else "5"
# Only in a Plasma session do programs use Plasma's style and icons (Breeze).
PLASMA_SESSION = {"XDG_CURRENT_DESKTOP": "KDE", "KDE_FULL_SESSION": "true", "KDE_SESSION_VERSION": PLASMA}
DARK_SCHEME = pathlib.Path("/usr/share/color-schemes/BreezeDark.colors")
CAMERA_AT_THE_CABLE = "00-1b-dc-0f-5d-04"


class Tour:
    def __init__(self, build, parts, docs):
        self.build = build.resolve()
        self.docs = docs
        self.folder = self.build / "tour"
        self.failures = 0
        self.agent = stand_in.Agent()
        if not parts and not IS_WAYLAND:
            shutil.rmtree(self.folder, ignore_errors=True)
        self.folder.mkdir(parents=True, exist_ok=True)

    # Programs

    def preferences(self, env=None, arguments=()):
        agent = str(self.build / "bin" / "ks7-agent-simulator")
        return accessible.launch([self.build / "bin" / "ks7-preferences", *arguments],
                                 env={"KS7_AGENT": agent, **PLASMA_SESSION, **(env or {})})

    def kde(self, *command):
        return accessible.launch(command, env={
            "KS7_AGENT": str(self.build / "bin" / "ks7-agent-simulator"), **PLASMA_SESSION,
            "QT_PLUGIN_PATH": str(self.build / "plugins")})

    @contextlib.contextmanager
    def fresh_agent(self):
        """Ends a running agent before and after the part, so that the pane launches a new one."""
        self.agent.quit_if_up()
        yield
        self.agent.quit_if_up()

    # Pictures

    def picture(self, program, name, shows):
        path = self.folder / f"{name}.png"
        accessible.screenshot(path, program.x_area())
        if self.docs and name in DOCUMENTED:
            make_small(path, ROOT / "docs" / "pictures" / f"{DOCUMENTED[name]}.png")
        print(f"  build/tour/{path.name}: {shows}", flush=True)

    def part(self, walk):
        try:
            with self.fresh_agent():
                walk(self)
        except accessible.NotThere as problem:
            self.failures += 1
            (self.folder / f"{walk.__name__}.txt").write_text(str(problem))
            print(f"  NOT SHOWN: {walk.__doc__}: {str(problem).splitlines()[0]} (build/tour/{walk.__name__}.txt)",
                  flush=True)


def make_small(picture, copy):
    copy.parent.mkdir(exist_ok=True)
    subprocess.run(["convert", picture, "-strip", "-dither", "None", "-colors", "128", "-define",
                    "png:compression-level=9", f"PNG8:{copy}"], check=True, stdin=subprocess.DEVNULL)


def rows(program):
    return [text for text in program.names("table cell") if text]


def wait_row(program, pattern):
    """Waits for a row of the list whose text matches `pattern`, and returns its accessible object."""
    def fitting():
        return next((cell for cell in program.all(role="table cell")
                     if re.search(pattern, accessible.name_of(cell))), None)
    return accessible.wait_until(fitting, f"a row like {pattern!r}", details=program.dump)


def cameras_come_and_stream(tour):
    """the list of cameras"""
    with tour.preferences() as pane:
        # On a slow machine the camera may have passed the expected state before the tour looks, so accept later states.
        wait_row(pane, "^Kitchen, (Pairing|Starting|Streaming)")
        tour.picture(pane, "01-pairing", "the pane has launched its agent; a camera pairs, its dot blinks")
        wait_row(pane, "^Kitchen, (Starting|Streaming)")
        tour.picture(pane, "02-starting", "the camera starts")
        pane.wait_for("Kitchen, Streaming")
        tour.picture(pane, "03-list", "the cameras with their status dots, one streams")
        search(tour, pane)
        remove(tour, pane)
        camera_actions(tour, pane)
        overview(tour, pane)


def search(tour, pane):
    pane.click("Desk, Not Found")
    pane.wait_for("Kitchen, Not Streaming")
    known = len(rows(pane))
    pane.press("Add Camera")
    pane.wait_for("Searching for cameras…")
    tour.picture(pane, "04-searching", "another camera was chosen, then +: the agent searches")
    accessible.wait_until(lambda: len(rows(pane)) > known, "a camera found", details=pane.dump)
    pane.wait_gone("Searching for cameras…")
    tour.picture(pane, "05-found", "the search has found one more")


def remove(tour, pane):
    pane.press("Remove Camera")
    pane.wait_gone("Desk, Not Found")
    tour.picture(pane, "06-removed", "− has removed the chosen camera")


def camera_actions(tour, pane):
    menu = pane.open_menu("Camera Actions")
    tour.picture(pane, "07-actions", "the camera actions")
    accessible.key("Escape")
    accessible.wait_until(lambda: menu not in pane.x_windows(), "the closing of the menu")


def overview(tour, pane):
    pane.press("Show All")
    pane.wait_for("KS-7", role="push button")
    tour.picture(pane, "08-overview", "Show All: the overview with the pane's icon")
    pane.press(pane.find("KS-7", role="push button"))
    pane.wait_for("Cameras")


def sheets(tour):
    """the sheets of a camera"""
    with tour.preferences() as pane:
        pane.wait_for("Kitchen, Streaming")
        pane.choose("Camera Actions", "Properties…")
        pane.wait_for("Camera ID:")
        tour.picture(pane, "10-properties", "the properties of a camera, with its name to be changed")
        pane.press("Cancel")
        pane.wait_gone("Camera ID:")
        pane.choose("Camera Actions", "Change Passkey…")
        pane.wait_for("OK", role="push button")
        tour.picture(pane, "11-passkey-cable", "a passkey is changed over the cable: the chosen camera has none")
        pane.press("OK")
        passkey(tour, pane)
        firmware(tour, pane)
        firmware_refused(tour, pane)


def choose_camera_at_the_cable(pane):
    pane.wait_gone("OK", role="push button")
    pane.click(wait_row(pane, "^Workshop, "))
    pane.wait_state(wait_row(pane, "^Workshop, "), "selected")


def passkey(tour, pane):
    for number, digits, title, shows in (
            ("a", "1234", "Passkey Changed", "it is set"),
            ("b", "0000", "Passkey Not Changed", "the camera refuses it"),
            ("c", "9999", "Passkey Not Changed", "it fails on its way")):
        choose_camera_at_the_cable(pane)
        pane.choose("Camera Actions", "Change Passkey…")
        pane.wait_for("New passkey:")
        accessible.type_text(digits)
        accessible.wait_until(lambda: pane.text(pane.find(role="text") or pane.root) == digits, "the digits",
                              details=pane.dump)
        if number == "a":
            tour.picture(pane, "12-passkey", "the passkey of the camera at the cable")
        pane.press("OK")
        pane.wait_for(title)
        tour.picture(pane, f"12-passkey-{number}", f"{title}: {shows}")
        pane.press("OK")
        pane.wait_gone(title)


def open_firmware_sheet(pane):
    choose_camera_at_the_cable(pane)
    pane.choose("Camera Actions", "Update Firmware…")
    pane.wait_for("Click Continue to proceed.")


def firmware(tour, pane):
    open_firmware_sheet(pane)
    tour.picture(pane, "13-firmware-1", "the firmware sheet")
    pane.press("Continue")
    pane.wait_for("Click Continue to start the update.")
    tour.picture(pane, "13-firmware-2", "its second step")
    pane.press("Continue")
    accessible.wait_until(lambda: (pane.value("Firmware update progress") or 0) > 0.2 or pane.all("Firmware update complete."),
                          "some progress")
    tour.picture(pane, "13-firmware-3", "the update is on its way")
    pane.wait_for("Firmware update complete.")
    tour.picture(pane, "13-firmware-4", "the update is done")
    pane.press("Continue")
    pane.wait_gone("Firmware update complete.")


def firmware_refused(tour, pane):
    tour.agent.plugUSB(CAMERA_AT_THE_CABLE, True)
    tour.agent.setErrorCode("startUpdate", -110)
    open_firmware_sheet(pane)
    pane.press("Continue")
    pane.wait_for("Click Continue to start the update.")
    pane.press("Continue")
    pane.wait_for("An error occurred updating firmware.")
    tour.picture(pane, "14-firmware-refused", "the agent refuses another update")


def live_preview(tour):
    """the live picture"""
    with tour.preferences() as pane:
        pane.wait_for("Kitchen, Streaming")
        pipewire_nodes.wait_for_camera()
        pane.press("Start Preview")
        pane.wait_for("Stop Preview")
        accessible.wait_until(lambda: (pane.value("Left audio level") or 0) > 0, "a sound", details=pane.dump)
        accessible.wait_until(lambda: not black(pane, "Live picture"), "a picture", details=pane.dump)
        tour.picture(pane, "15-preview", "the live picture and its sound levels")


def black(pane, name):
    """Returns whether the widget `name`, which shows the picture, is still black on the screen."""
    x, y, width, height = pane.rectangle(name)
    told = subprocess.run(["import", "-window", "root", "-crop", f"{width}x{height}+{x}+{y}", "-format", "%[fx:maxima]",
                           "info:"], capture_output=True, text=True, check=True, stdin=subprocess.DEVNULL)
    return float(told.stdout) < 0.1


def about_box(tour):
    """the about box"""
    with tour.preferences() as pane:
        pane.wait_for("Cameras")
        pane.choose("Camera Actions", "About KS-7…")
        accessible.wait_until(lambda: pane.find("About KS-7", showing=False), "the about box", details=pane.dump)
        tour.picture(pane, "16-about", "the about box")


def no_agent(tour):
    """the alert that the agent cannot be reached"""
    with tour.preferences(env={"KS7_AGENT": "/nonexistent"}) as pane:
        pane.wait_for("OK", role="push button")
        tour.picture(pane, "17-no-agent", "no agent comes up: what the pane says after its 21 attempts")


@contextlib.contextmanager
def dark(is_dark=True):
    """Lets programs that are started inside the `with` block use a dark colour scheme, if `is_dark`."""
    settings = pathlib.Path(os.environ["XDG_CONFIG_HOME"]) / "kdeglobals"
    before = settings.read_text() if settings.exists() else ""
    if is_dark:
        settings.write_text(f"{before}[Icons]\nTheme=breeze-dark\n\n{DARK_SCHEME.read_text()}")
        SCREEN.read_colours()
    try:
        yield
    finally:
        settings.write_text(before)
        SCREEN.read_colours()


def scales_and_themes(tour):
    """the pane in a light and a dark theme, at 100, 150 and 200 % scale"""
    for theme in ("light", "dark"):
        for scale in ("1", "1.5", "2"):
            with dark(theme == "dark"), tour.preferences(env={"QT_SCALE_FACTOR": scale}) as pane:
                wait_row(pane, r", Streaming$")
                tour.picture(pane, f"18-{theme}-{scale}", f"{theme}, at scale {scale}")
            tour.agent.quit_if_up()


def dark_sheets(tour):
    """a sheet and the camera actions in a dark theme"""
    with dark(), tour.preferences() as pane:
        wait_row(pane, r", Streaming$")
        pane.open_menu("Camera Actions")
        pane.wait_for("Properties…", role="menu item")
        tour.picture(pane, "19-dark-actions", "the camera actions, dark")
        pane.click(pane.find("Properties…", role="menu item"))
        pane.wait_for("Camera ID:")
        tour.picture(pane, "19-dark-properties", "the properties, dark")


def narrow_window(tour):
    """a narrow window"""
    with tour.preferences() as pane:
        wait_row(pane, r", Streaming$")
        resize(pane, 320, 640)
        tour.picture(pane, "20-narrow", "in a narrow window the picture goes under the list")


def resize(pane, width, height):
    SCREEN.resize(pane.windows()[0], width, height)


def in_german(text):
    """Returns the German translation of a text. Reads it from the .ts file, so that a changed translation needs no change
    here."""
    for message in xml.etree.ElementTree.parse(TRANSLATIONS).iter("message"):
        if message.findtext("source") == text:
            return message.findtext("translation")
    raise accessible.NotThere(f"'{text}' has no German translation")


def german(tour):
    """the pane in German"""
    with tour.preferences(env=GERMAN) as pane:
        wait_row(pane, f"Kitchen, (?!{in_german('Pairing')})")
        tour.picture(pane, "23-german", "in German")
        pane.choose(in_german("Camera Actions"), in_german("Properties…"))
        pane.wait_for(in_german("Cancel"), role="push button")
        tour.picture(pane, "23-german-properties", "the properties in German")
        pane.press(in_german("Cancel"))
        pane.wait_gone(in_german("Cancel"), role="push button")
        tour.agent.post("KS7StartedDiscovering", {})
        pane.wait_for(in_german("Searching for cameras…"))
        tour.picture(pane, "23-german-searching", "a search in German")
        resize(pane, 320, 640)
        tour.picture(pane, "23-german-narrow", "in German, narrow")


def right_to_left(tour):
    """the pane from right to left"""
    with tour.preferences(arguments=["-reverse"]) as pane:
        wait_row(pane, r", Streaming$")
        tour.picture(pane, "24-rtl", "from right to left")
        pane.choose("Camera Actions", "Properties…")
        pane.wait_for("Camera ID:")
        tour.picture(pane, "24-rtl-properties", "the properties, from right to left")
        pane.press("Cancel")
        pane.wait_gone("Camera ID:")
        pane.open_menu("Camera Actions")
        pane.wait_for("Properties…", role="menu item")
        tour.picture(pane, "24-rtl-actions", "the camera actions, from right to left")


def kcmshell(tour):
    """the module in kcmshell"""
    with tour.kde(f"kcmshell{PLASMA}", "kcm_ks7") as pane:
        wait_row(pane, r", Streaming$")
        tour.picture(pane, "21-kcmshell", f"the same pane in kcmshell{PLASMA}")
        resize(pane, 720, 560)
        tour.picture(pane, "21-kcmshell-narrow", "kcmshell, 720 pixels wide")


def system_settings(tour):
    """the module in System Settings"""
    with tour.kde("systemsettings", "kcm_ks7") as pane:
        wait_row(pane, r", Streaming$")
        tour.picture(pane, "22-systemsettings", "the same pane in System Settings")
        resize(pane, 720, 600)
        pane.wait_for("Cameras")
        tour.picture(pane, "22-systemsettings-narrow", "System Settings, as near to 720 pixels as it lets itself be made")


def start_preview(tour, pane):
    wait_row(pane, r", Streaming$")
    pipewire_nodes.wait_for_camera()
    pane.press("Start Preview")
    pane.wait_for("Live picture", role="image")
    accessible.wait_until(lambda: not black(pane, "Live picture"), "a picture", details=pane.dump)


def wayland_pane(tour):
    """the pane on Wayland"""
    with tour.preferences() as pane:
        wait_row(pane, r", Streaming$")
        pane.choose("Camera Actions", "Properties…")
        pane.wait_for("Camera ID:")
        pane.wait_active("Camera Properties")
        tour.picture(pane, "30-wayland-properties", "Wayland: the properties of a camera")
        accessible.key("Escape")
        pane.wait_gone("Camera ID:")
        start_preview(tour, pane)
        tour.picture(pane, "31-wayland-preview", "Wayland: the live picture")


def wayland_system_settings(tour):
    """System Settings on Wayland, light and dark"""
    for is_dark, name in ((False, "32-wayland-systemsettings"), (True, "33-wayland-dark")):
        with dark(is_dark), tour.kde("systemsettings", "kcm_ks7") as pane:
            start_preview(tour, pane)
            tour.picture(pane, name, f"Wayland: System Settings, {'dark' if is_dark else 'light'}")
        tour.agent.quit_if_up()


X_WALKS = (cameras_come_and_stream, sheets, live_preview, about_box, no_agent, scales_and_themes, dark_sheets,
           narrow_window, german, right_to_left, kcmshell, system_settings)
WALKS = (wayland_pane, wayland_system_settings) if IS_WAYLAND else X_WALKS


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--docs", action="store_true")
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("parts", nargs="*")
    options = parser.parse_args()
    tour = Tour(options.build, options.parts, options.docs)
    for walk in WALKS:
        if not options.parts or walk.__name__ in options.parts:
            tour.part(walk)
    sys.exit(1 if tour.failures else 0)


if __name__ == "__main__":
    main()
