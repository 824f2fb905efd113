#!/usr/bin/python3
"""Tests that ./run installs every Python module that the tour imports, and the plug-ins that the package recommends."""

import os
import pathlib
import re
import subprocess
import sys
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
CPACK = pathlib.Path(os.environ["KS7_BUILD"]) / "CPackConfig.cmake"
SECTIONS = {"build", "run", "display", "kde"}
MODULES_OF_THE_TOUR = """
import sys
before = set(sys.modules)
sys.path.insert(0, "{tools}")
import tour
imported = [sys.modules[name] for name in set(sys.modules) - before]
print(*(module.__file__ for module in imported if getattr(module, "__file__", None)), sep="\\n")
"""


def installed_for_the_tour():
    section, packages = None, set()
    for line in (ROOT / "tools" / "packages.txt").read_text().splitlines():
        if line.startswith("["):
            section = line[1:line.index("]")]
        elif line and not line.startswith("#") and section in SECTIONS:
            packages.add(line.split()[0])
    return packages


def packages_of(files):
    told = subprocess.run(["dpkg-query", "--search", *files], capture_output=True, text=True, check=True).stdout
    return {line.split(":")[0] for line in told.splitlines()}


class TourPackagesTest(unittest.TestCase):
    def imported_files(self):
        done = subprocess.run([sys.executable, "-c", MODULES_OF_THE_TOUR.format(tools=ROOT / "tools")],
                              capture_output=True, text=True, check=True)
        return [file for file in done.stdout.splitlines() if "/dist-packages/" in file]

    def test_every_module_comes_with_a_package_of_the_tour(self):
        packages = packages_of(self.imported_files())
        self.assertIn("python3-gi", packages)
        self.assertEqual(packages - installed_for_the_tour(), set())

    def test_a_run_has_what_the_package_recommends(self):
        recommended = re.search(r'set\(CPACK_DEBIAN_PREFERENCES_PACKAGE_RECOMMENDS "([^"]+)"\)', CPACK.read_text())[1]
        self.assertEqual(set(recommended.split(", ")) - installed_for_the_tour(), set())


if __name__ == "__main__":
    unittest.main(verbosity=2)
