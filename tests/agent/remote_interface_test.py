"""Tests the generator of the proxies and adaptors of the remote interfaces."""

import pathlib
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
INTERFACE = '<node><interface name="com.orvex.ThingProxy">{}</interface></node>'


class Generating(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def generate(self, methods):
        declaration = self.folder / "thing.xml"
        declaration.write_text(INTERFACE.format(methods), encoding="utf-8")
        return subprocess.run([sys.executable, ROOT / "cmake" / "remote_interface.py", declaration, self.folder],
                              capture_output=True, text=True, timeout=60, check=False)

    def test_documents_an_operation_with_the_comment_before_it(self):
        self.generate('<!-- Opens\n     it. --><method name="open"/><method name="close"/>')
        header = (self.folder / "ThingProxy.h").read_text(encoding="utf-8")
        self.assertIn("    /// Opens it.\n    virtual void open() { }\n    virtual void close() { }\n", header)

    def test_refuses_a_type_without_a_translation(self):
        done = self.generate('<method name="open"><arg name="door" type="(iv)" direction="in"/></method>')
        self.assertNotEqual(done.returncode, 0)
        self.assertIn("open: no C++ type for (iv)", done.stderr)
        self.assertFalse((self.folder / "ThingProxy.h").exists())


if __name__ == "__main__":
    unittest.main(verbosity=2)
