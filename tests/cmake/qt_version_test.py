#!/usr/bin/python3
"""Tests which Qt version the build selects for the installed packages. Also tests the build's message on a system
without KDE Frameworks."""

import os
import pathlib
import subprocess
import tempfile
import unittest

SOURCES = pathlib.Path(__file__).resolve().parents[2]
QT = os.environ["KS7_QT_VERSION"]

PROJECT = """cmake_minimum_required(VERSION 3.25)
project(choice NONE)
set(CMAKE_FIND_USE_CMAKE_SYSTEM_PATH OFF)
set(CMAKE_FIND_USE_SYSTEM_ENVIRONMENT_PATH OFF)
set(KS7_QT_VERSION auto)
include({sources}/cmake/QtVersion.cmake)
message(STATUS "Chosen: ${{KS7_QT_VERSION}}")
"""


def configure(source, build, *options):
    done = subprocess.run([os.environ["CMAKE"], "-S", source, "-B", build, *options], capture_output=True, text=True,
                          stdin=subprocess.DEVNULL)
    return done.returncode, done.stdout + done.stderr


class QtVersionTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def install(self, prefix, **packages):
        """Writes CMake package files that define only the version."""
        for name, version in packages.items():
            place = prefix / "lib" / "cmake" / name
            place.mkdir(parents=True)
            (place / f"{name}Config.cmake").write_text("")
            (place / f"{name}ConfigVersion.cmake").write_text(
                f"set(PACKAGE_VERSION {version})\n"
                "if(NOT PACKAGE_FIND_VERSION VERSION_GREATER PACKAGE_VERSION)\n  set(PACKAGE_VERSION_COMPATIBLE TRUE)\nendif()\n")

    def chosen(self, **packages):
        system = pathlib.Path(tempfile.mkdtemp(dir=self.folder))
        (system / "CMakeLists.txt").write_text(PROJECT.format(sources=SOURCES))
        self.install(system / "usr", **packages)
        code, said = configure(system, system / "build", f"-DCMAKE_PREFIX_PATH={system / 'usr'}")
        self.assertEqual(code, 0, said)
        return said.split("Chosen: ")[1].split()[0]

    def test_kde_frameworks_decide(self):
        both = {"Qt5Widgets": "5.15.8", "Qt6Widgets": "6.8.2"}
        self.assertEqual(self.chosen(KF6KCMUtils="6.13", Qt6Widgets="6.8.2"), "6")
        self.assertEqual(self.chosen(KF5KCMUtils="5.103", Qt5Widgets="5.15.8"), "5")
        self.assertEqual(self.chosen(KF6KCMUtils="6.13", KF5KCMUtils="5.116", **both), "6")
        self.assertEqual(self.chosen(KF5KCMUtils="5.103", **both), "5")

    def test_without_kde_frameworks_the_newest_supported_qt_is_used(self):
        self.assertEqual(self.chosen(Qt6Widgets="6.8.2"), "6")
        self.assertEqual(self.chosen(Qt5Widgets="5.15.8"), "5")
        self.assertEqual(self.chosen(Qt5Widgets="5.15.15", Qt6Widgets="6.8.2"), "6")
        self.assertEqual(self.chosen(Qt5Widgets="5.15.8", Qt6Widgets="6.4.2"), "5")

    def test_without_any_qt_the_newest_is_required(self):
        self.assertEqual(self.chosen(), "6")

    def test_a_system_without_kde_frameworks_builds_the_stand_alone_host_with_a_message(self):
        absent = [f"-DCMAKE_DISABLE_FIND_PACKAGE_KF{version}KCMUtils=ON" for version in (5, 6)]
        build = self.folder / "build"
        code, said = configure(SOURCES, build, "-G", "Ninja", "-DKS7_BUILD_TESTS=OFF", *absent)
        self.assertEqual(code, 0, said)
        self.assertIn(f"KS-7: Qt {QT}, no KDE Frameworks {QT}: stand-alone host only", said)
        targets = (build / "build.ninja").read_text()
        self.assertIn("bin/ks7-preferences:", targets)
        self.assertNotIn("kcm_ks7", targets)


if __name__ == "__main__":
    unittest.main(verbosity=2)
