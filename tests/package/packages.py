"""Tests the contents of the Debian packages, for packages from any build."""

import gzip
import os
import pathlib
import platform
import re
import subprocess

PREFERENCES = "ks7-preferences"
SIMULATOR = "ks7-agent-simulator"
DEVELOPMENT = "ks7-agent-dev"
QT = os.environ["KS7_QT_VERSION"]
LIBRARIES = {
    "5": ("libqt5widgets5", "libqt5dbus5", "libkf5coreaddons5"),
    "6": ("libqt6widgets6", "libqt6dbus6", "libkf6coreaddons6"),
}[QT]
SVG_PLUGINS = {"5": "libqt5svg5", "6": "qt6-svg-plugins"}[QT]


def run(*command, **options):
    done = subprocess.run([str(part) for part in command], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, errors="replace", **options)
    if done.returncode != 0:
        raise AssertionError(f"{command[0]} ended with {done.returncode}:\n{done.stdout[-6000:]}")
    return done.stdout


def field(file, name):
    return run("dpkg-deb", "--field", file, name).strip()


class Packages:
    """The tests of the packages. A subclass provides `packages` (files by package name) and `unpacked` (a folder with
    their contents)."""

    packages = {}
    unpacked = None

    def files(self, package):
        listing = run("dpkg-deb", "--contents", self.packages[package])
        paths = [line.split(None, 5)[5] for line in listing.splitlines()]
        return {path[1:] for path in paths if not path.endswith("/")}

    def assert_has(self, package, *patterns):
        files = self.files(package)
        for pattern in patterns:
            self.assertTrue([path for path in files if re.fullmatch(pattern, path)], f"{pattern} not in {files}")

    def test_there_are_three_packages(self):
        self.assertEqual(set(self.packages), {PREFERENCES, SIMULATOR, DEVELOPMENT})

    def test_the_pane_is_where_its_hosts_look(self):
        self.assert_has(PREFERENCES, "/usr/bin/ks7-preferences", "/usr/lib/[^/]+/ks7/ks7pane.so",
                        f"/usr/lib/[^/]+/qt{QT}/plugins/plasma/kcms/systemsettings/kcm_ks7.so")

    def test_the_desktop_finds_name_icon_and_help(self):
        self.assert_has(PREFERENCES, "/usr/share/applications/ks7-preferences.desktop",
                        "/usr/share/icons/hicolor/scalable/apps/ks7-preferences.svg",
                        "/usr/share/icons/hicolor/symbolic/apps/ks7-preferences-symbolic.svg",
                        "/usr/share/metainfo/com.orvex.ks7_preferences.metainfo.xml",
                        "/usr/share/man/man1/ks7-preferences.1.gz",
                        f"/usr/share/qlogging-categories{QT}/ks7-preferences.categories")

    def test_the_simulator_has_its_own_package(self):
        self.assert_has(SIMULATOR, "/usr/bin/ks7-agent-simulator", "/usr/share/man/man1/ks7-agent-simulator.1.gz")
        self.assertEqual([path for path in self.files(PREFERENCES) if "simulator" in path], [])

    def test_the_bus_can_start_the_simulator(self):
        service = "usr/share/dbus-1/services/com.orvex.KS7AgentServer.service"
        self.assert_has(SIMULATOR, f"/{service}")
        entries = dict(line.split("=", 1) for line in (self.unpacked / service).read_text().splitlines() if "=" in line)
        self.assertEqual(entries["Name"], "com.orvex.KS7AgentServer")
        self.assertIn(entries["Exec"], self.files(SIMULATOR))

    def test_one_package_has_all_files_for_the_author_of_an_agent(self):
        self.assert_has(DEVELOPMENT, "/usr/bin/ks7-agent-check", "/usr/share/man/man1/ks7-agent-check.1.gz",
                        "/usr/share/doc/ks7-agent-dev/AGENT.md.*", "/usr/share/doc/ks7-agent-dev/examples/ks7_agent.py")
        self.assertIn("libpipewire-0.3-0", field(self.packages[DEVELOPMENT], "Depends"))

    def test_other_builds_find_the_interfaces(self):
        folder = run("pkg-config", "--variable=interfaces_dir", "ks7-agent",
                     env={**os.environ, "PKG_CONFIG_PATH": str(self.unpacked / "usr/share/pkgconfig")}).strip()
        names = {file.name for file in pathlib.Path(folder).glob("*.xml")}
        self.assertEqual(names, {"com.orvex.KS7DeviceControllerProxy.xml", "com.orvex.TernUSBCommandControllerProxy.xml"})

    def test_nothing_lies_outside_usr(self):
        for package in self.packages:
            self.assertEqual([path for path in self.files(package) if not path.startswith("/usr/")], [])

    def test_the_dependencies_are_computed(self):
        depends = field(self.packages[PREFERENCES], "Depends")
        for library in (*LIBRARIES, "libgstreamer1.0-0", "libpipewire-0.3-0", "libc6 (>= "):
            self.assertIn(library, depends)
        # The packaging tools cannot detect plug-ins, so the package declares these dependencies by hand.
        for package in ("gstreamer1.0-pipewire", SVG_PLUGINS):
            self.assertIn(package, depends)

    def test_the_changelog_names_this_release(self):
        changelog = self.unpacked / "usr/share/doc/ks7-preferences/changelog.Debian.gz"
        release = platform.freedesktop_os_release()["VERSION_CODENAME"]
        self.assertIn(f") {release}; ", gzip.decompress(changelog.read_bytes()).decode())

    def test_lintian_finds_nothing(self):
        # The suppressed tag is only for uploads to Debian's archive. --allow-root: root runs lintian in a container, and
        # lintian would warn about that.
        report = subprocess.run(["lintian", "--allow-root", "--fail-on", "error,warning",
                                 "--suppress-tags", "initial-upload-closes-no-bugs", *map(str, self.packages.values())],
                                stdin=subprocess.DEVNULL, capture_output=True, text=True)
        self.assertEqual(report.returncode, 0, report.stdout + report.stderr)

    def test_the_desktop_entry_is_valid(self):
        print(run("desktop-file-validate", self.unpacked / "usr/share/applications/ks7-preferences.desktop"))

    def test_the_metainfo_is_valid(self):
        run("appstreamcli", "validate", "--no-net", "--pedantic",
            self.unpacked / "usr/share/metainfo/com.orvex.ks7_preferences.metainfo.xml")
