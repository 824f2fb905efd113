"""Builds the Debian packages, checks them and installs them into an empty root folder. Opens the installed pane in both
hosts and removes the packages again."""

import gzip
import os
import pathlib
import shutil
import sys
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ["KS7_BUILD"]) / "package"
sys.path.insert(0, str(SOURCE / "tests/support"))
import accessible  # noqa: E402
import stand_in  # noqa: E402
from packages import DEVELOPMENT, PREFERENCES, QT, SIMULATOR, Packages, field, run  # noqa: E402

MAINTAINER = "Some Body <somebody@vendor.example>"


def make_packages():
    """Builds the packages with cpack and returns their files by package name."""
    run("cmake", "--preset", "release", "-B", BUILD, f"-DKS7_MAINTAINER={MAINTAINER}", cwd=SOURCE)
    run("cmake", "--build", BUILD, "-j2")
    folder = BUILD / "debs"
    shutil.rmtree(folder, ignore_errors=True)
    run("cpack", "-B", folder, cwd=BUILD)
    return {field(file, "Package"): file for file in folder.glob("*.deb")}


class Root:
    """A root folder that contains only an empty dpkg database."""

    def __init__(self, folder):
        self.path = pathlib.Path(folder)
        for name in ("info", "updates", "triggers"):
            (self.path / "var/lib/dpkg" / name).mkdir(parents=True)
        for name in ("status", "available"):
            (self.path / "var/lib/dpkg" / name).touch()

    def dpkg(self, *arguments):
        # The root folder contains no libraries, so dpkg must ignore dependencies. Programs use the libraries of this
        # machine.
        return run("dpkg", f"--root={self.path}", "--force-depends", "--force-not-root",
                   "--force-script-chrootless", f"--log={os.devnull}", *arguments)

    def leftovers(self):
        ours = self.path / "var/lib/dpkg"
        return [path for path in self.path.rglob("*") if ours not in (path, *path.parents) and path not in ours.parents]


class PackageTest(Packages, unittest.TestCase):
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

    def test_the_maintainer_is_the_one_configured(self):
        for file in self.packages.values():
            self.assertEqual(field(file, "Maintainer"), MAINTAINER)
        changelog = self.unpacked / "usr/share/doc/ks7-preferences/changelog.Debian.gz"
        self.assertIn(MAINTAINER, gzip.decompress(changelog.read_bytes()).decode())

    def test_no_file_contains_the_path_of_the_build(self):
        for path in self.unpacked.rglob("*"):
            if path.is_file() and "var" not in path.relative_to(self.unpacked).parts:
                self.assertNotIn(os.fsencode(SOURCE), path.read_bytes(), path)

    def test_the_installed_program_finds_its_pane(self):
        report = run(self.unpacked / "usr/bin/ks7-preferences", "--diagnose")
        self.assertIn("KS-7", report)

    def test_another_prefix_works_too(self):
        with tempfile.TemporaryDirectory() as prefix:
            run("cmake", "--install", BUILD, "--prefix", prefix)
            self.assertIn("KS-7", run(f"{prefix}/bin/ks7-preferences", "--diagnose"))
            self.assertTrue(list(pathlib.Path(prefix).glob("lib/**/kcms/systemsettings/kcm_ks7.so")))

    # The hosts

    def environment(self):
        plugins = next(self.unpacked.glob(f"usr/lib/*/qt{QT}/plugins"))
        return {"QT_PLUGIN_PATH": str(plugins), "QT_QUICK_BACKEND": "software",
                "XDG_DATA_DIRS": f"{self.unpacked}/usr/share:/usr/share",
                "KS7_AGENT": str(self.unpacked / "usr/bin/ks7-agent-simulator")}

    def test_both_hosts_show_the_cameras_of_the_installed_agent(self):
        for command in ([self.unpacked / "usr/bin/ks7-preferences"], ["systemsettings", "kcm_ks7"]):
            agent = stand_in.Agent()
            self.addCleanup(agent.quit_if_up)
            with self.subTest(command[0]), accessible.launch(command, env=self.environment()) as host:
                host.wait_for("Desk, Not Found", role="table cell")
                self.assertTrue(agent.is_up())
            agent.quit_if_up()

    def test_the_module_is_listed(self):
        self.assertIn("kcm_ks7", run(f"kcmshell{QT}", "--list", env=dict(os.environ, **self.environment())))

    def test_system_settings_has_it_by_browsing(self):
        with accessible.launch(["systemsettings"], env=self.environment()) as settings:
            settings.wait_for("KS-7", role="list item", showing=False)

    def test_system_settings_finds_it_by_searching(self):
        for word in ("webcam", "camera", "bluetooth"):
            with self.subTest(word), accessible.launch(["systemsettings"], env=self.environment()) as settings:
                settings.wait_for("KS-7", role="list item", showing=False)
                settings.click(settings.wait_for("Search", role="text", showing=False))
                # The search first uses a word without results, which empties the list. So the list then shows only
                # results of the next search.
                accessible.type_text("qqqq")
                accessible.wait_until(lambda: not self.listed(settings), "an empty list", details=settings.dump)
                accessible.key("ctrl+a")
                accessible.type_text(word)
                accessible.wait_until(lambda: "KS-7" in self.listed(settings), f"KS-7 for {word}",
                                      details=settings.dump)

    @staticmethod
    def listed(settings):
        return [accessible.name_of(node) for node in settings.all(role="list item", showing=False)]

    # unittest runs the tests by name. This test has the last name, because it removes the packages.

    def test_zz_removing_leaves_nothing(self):
        self.root.dpkg("--purge", PREFERENCES, SIMULATOR, DEVELOPMENT)
        self.assertEqual(self.root.leftovers(), [])


if __name__ == "__main__":
    unittest.main(verbosity=2)
