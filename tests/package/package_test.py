"""Makes the Debian packages, looks at them, installs them into an empty root, meets the pane in System Settings, and
removes them again."""

import gzip
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ["KS7_BUILD"]) / "package"
sys.path.insert(0, str(SOURCE / "tests/support"))
import accessible  # noqa: E402

PREFERENCES = "ks7-preferences"
SIMULATOR = "ks7-agent-simulator"
MAINTAINER = "Some Body <somebody@vendor.example>"


def run(*command, **options):
    done = subprocess.run([str(part) for part in command], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, errors="replace", **options)
    if done.returncode != 0:
        raise AssertionError(f"{command[0]} ended with {done.returncode}:\n{done.stdout[-6000:]}")
    return done.stdout


def make_packages():
    """{package: file} of a fresh cpack run."""
    run("cmake", "--preset", "release", "-B", BUILD, f"-DKS7_MAINTAINER={MAINTAINER}", cwd=SOURCE)
    run("cmake", "--build", BUILD, "-j2")
    folder = BUILD / "debs"
    shutil.rmtree(folder, ignore_errors=True)
    run("cpack", "-B", folder, cwd=BUILD)
    return {field(file, "Package"): file for file in folder.glob("*.deb")}


def field(file, name):
    return run("dpkg-deb", "--field", file, name).strip()


class Root:
    """An empty system below a folder, with nothing but dpkg's own books."""

    def __init__(self, folder):
        self.path = pathlib.Path(folder)
        for name in ("info", "updates", "triggers"):
            (self.path / "var/lib/dpkg" / name).mkdir(parents=True)
        for name in ("status", "available"):
            (self.path / "var/lib/dpkg" / name).touch()

    def dpkg(self, *arguments):
        # Libraries are those of this machine; the empty root has none.
        return run("dpkg", f"--root={self.path}", "--force-depends", "--force-not-root",
                   "--force-script-chrootless", f"--log={os.devnull}", *arguments)

    def leftovers(self):
        ours = self.path / "var/lib/dpkg"
        return [path for path in self.path.rglob("*") if ours not in (path, *path.parents) and path not in ours.parents]


class PackageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.packages = make_packages()
        cls.folder = tempfile.TemporaryDirectory(prefix="ks7-package-")
        cls.root = Root(cls.folder.name)
        cls.unpacked = cls.root.path
        cls.root.dpkg("--install", *cls.packages.values())

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def files(self, package):
        listing = run("dpkg-deb", "--contents", self.packages[package])
        paths = [line.split(None, 5)[5] for line in listing.splitlines()]
        return {path[1:] for path in paths if not path.endswith("/")}

    def assert_has(self, package, *patterns):
        files = self.files(package)
        for pattern in patterns:
            self.assertTrue([path for path in files if re.fullmatch(pattern, path)], f"{pattern} not in {files}")

    def test_there_are_two_packages(self):
        self.assertEqual(set(self.packages), {PREFERENCES, SIMULATOR})

    def test_the_pane_is_where_its_hosts_look(self):
        self.assert_has(PREFERENCES, "/usr/bin/ks7-preferences", "/usr/lib/[^/]+/ks7/ks7pane.so",
                        "/usr/lib/[^/]+/qt5/plugins/plasma/kcms/systemsettings/kcm_ks7.so")

    def test_the_desktop_finds_name_icon_and_help(self):
        self.assert_has(PREFERENCES, "/usr/share/applications/ks7-preferences.desktop",
                        "/usr/share/icons/hicolor/scalable/apps/ks7-preferences.svg",
                        "/usr/share/icons/hicolor/symbolic/apps/ks7-preferences-symbolic.svg",
                        "/usr/share/metainfo/com.orvex.ks7_preferences.metainfo.xml",
                        "/usr/share/man/man1/ks7-preferences.1.gz",
                        "/usr/share/qlogging-categories5/ks7-preferences.categories")

    def test_the_simulator_has_its_own_package(self):
        self.assert_has(SIMULATOR, "/usr/bin/ks7-agent-simulator", "/usr/share/man/man1/ks7-agent-simulator.1.gz")
        self.assertEqual([path for path in self.files(PREFERENCES) if "simulator" in path], [])

    def test_nothing_lies_outside_usr(self):
        for package in self.packages:
            self.assertEqual([path for path in self.files(package) if not path.startswith("/usr/")], [])

    def test_the_maintainer_is_the_one_configured(self):
        for file in self.packages.values():
            self.assertEqual(field(file, "Maintainer"), MAINTAINER)
        changelog = self.unpacked / "usr/share/doc/ks7-preferences/changelog.Debian.gz"
        self.assertIn(MAINTAINER, gzip.decompress(changelog.read_bytes()).decode())

    def test_the_dependencies_are_computed(self):
        depends = field(self.packages[PREFERENCES], "Depends")
        for library in ("libqt5widgets5", "libqt5dbus5", "libplist3", "libkf5coreaddons5", "libc6 (>= "):
            self.assertIn(library, depends)
        # Plug-ins, which cannot be computed.
        for package in ("gstreamer1.0-pipewire", "libqt5svg5"):
            self.assertIn(package, depends)

    def test_no_file_tells_where_it_was_built(self):
        for path in self.unpacked.rglob("*"):
            if path.is_file() and "var" not in path.relative_to(self.unpacked).parts:
                self.assertNotIn(os.fsencode(SOURCE), path.read_bytes(), path)

    def test_lintian_finds_no_error(self):
        # Root packs in a container; the warning about that is no finding.
        report = subprocess.run(["lintian", "--allow-root", "--fail-on", "error", *map(str, self.packages.values())],
                                stdin=subprocess.DEVNULL, capture_output=True, text=True)
        self.assertEqual(report.returncode, 0, report.stdout + report.stderr)

    def test_the_desktop_entry_is_valid(self):
        print(run("desktop-file-validate", self.unpacked / "usr/share/applications/ks7-preferences.desktop"))

    def test_the_metainfo_is_valid(self):
        run("appstreamcli", "validate", "--no-net", "--pedantic",
            self.unpacked / "usr/share/metainfo/com.orvex.ks7_preferences.metainfo.xml")

    def test_the_installed_program_finds_its_pane(self):
        report = run(self.unpacked / "usr/bin/ks7-preferences", "--diagnose")
        self.assertIn("KS-7", report)

    def test_another_prefix_works_too(self):
        with tempfile.TemporaryDirectory() as prefix:
            run("cmake", "--install", BUILD, "--prefix", prefix)
            self.assertIn("KS-7", run(f"{prefix}/bin/ks7-preferences", "--diagnose"))
            self.assertTrue(list(pathlib.Path(prefix).glob("lib/**/kcms/systemsettings/kcm_ks7.so")))

    # System Settings

    def environment(self):
        plugins = next(self.unpacked.glob("usr/lib/*/qt5/plugins"))
        return {"QT_PLUGIN_PATH": str(plugins), "QT_QUICK_BACKEND": "software",
                "XDG_DATA_DIRS": f"{self.unpacked}/usr/share:/usr/share"}

    def test_the_module_is_listed(self):
        self.assertIn("kcm_ks7", run("kcmshell5", "--list", env=dict(os.environ, **self.environment())))

    def test_system_settings_has_it_by_browsing(self):
        with accessible.launch(["systemsettings"], env=self.environment()) as settings:
            settings.wait_for("KS-7", role="list item", showing=False)

    def test_system_settings_finds_it_by_searching(self):
        for word in ("webcam", "camera", "bluetooth"):
            with self.subTest(word), accessible.launch(["systemsettings"], env=self.environment()) as settings:
                settings.wait_for("KS-7", role="list item", showing=False)
                settings.click(settings.wait_for("Search", role="text", showing=False))
                # Nothing but what the search finds is left once a word that fits nothing has emptied the list.
                accessible.type_text("qqqq")
                accessible.wait_until(lambda: not self.listed(settings), "an empty list", details=settings.dump)
                accessible.key("ctrl+a")
                accessible.type_text(word)
                accessible.wait_until(lambda: "KS-7" in self.listed(settings), f"KS-7 for {word}",
                                      details=settings.dump)

    @staticmethod
    def listed(settings):
        return [accessible.name_of(node) for node in settings.all(role="list item", showing=False)]

    # At last

    def test_zz_removing_leaves_nothing(self):
        self.root.dpkg("--purge", PREFERENCES, SIMULATOR)
        self.assertEqual(self.root.leftovers(), [])


if __name__ == "__main__":
    unittest.main(verbosity=2)
