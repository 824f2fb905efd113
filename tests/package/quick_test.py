#!/usr/bin/python3
"""Makes the Debian packages from the existing build and checks them."""

import os
import pathlib
import sys
import tempfile
import unittest

BUILD = pathlib.Path(os.environ["KS7_BUILD"])
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))

from packages import Packages, field, run  # noqa: E402


class QuickPackageTest(Packages, unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory(prefix="ks7-package-")
        debs = pathlib.Path(cls.folder.name) / "debs"
        cls.unpacked = pathlib.Path(cls.folder.name) / "unpacked"
        run("cpack", "-B", debs, cwd=BUILD)
        cls.packages = {field(file, "Package"): file for file in debs.glob("*.deb")}
        for file in cls.packages.values():
            run("dpkg-deb", "--extract", file, cls.unpacked)

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()


if __name__ == "__main__":
    unittest.main(verbosity=2)
