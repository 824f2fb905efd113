#!/usr/bin/python3
"""Tests that the private session also starts its servers in a container, and that it reports at once why a server did
not start."""

import os
import pathlib
import subprocess
import sys
import unittest

SESSION = pathlib.Path(__file__).resolve().with_name("private_session.py")
FOLDER = pathlib.Path(os.environ["KS7_SESSION_FOLDER"])
WITHOUT_SYSTEMD = ["unshare", "--map-root-user", "--mount", "sh", "-c", 'mount -t tmpfs tmpfs /run && exec "$@"', "sh"]


class PrivateSessionTest(unittest.TestCase):
    def test_pipewire_starts_where_systemd_has_never_run(self):
        done = subprocess.run([*self.without_systemd(), SESSION, "--pipewire", "--", "pw-metadata", "-n", "default"],
                              capture_output=True, text=True)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("Found", done.stdout)

    def test_a_server_that_ends_is_reported_with_its_last_output(self):
        self.add_program("wireplumber", "echo no logind >&2; exit 70")
        done = subprocess.run([SESSION, "--pipewire", "--", "true"], capture_output=True, text=True)
        self.assertEqual(done.returncode, 1)
        self.assertIn("wireplumber.log:\n  no logind", done.stderr)
        self.assertIn("PipeWire's session manager did not start: wireplumber ended with 70", done.stderr)

    def without_systemd(self):
        """Returns a command that hides systemd's folders, as in a container. A container needs no such command and does
        not allow one."""
        if not pathlib.Path("/run/systemd").exists():
            return []
        if subprocess.run([*WITHOUT_SYSTEMD, "true"], capture_output=True).returncode != 0:
            self.skipTest("namespaces are not to be had here")
        return WITHOUT_SYSTEMD

    def add_program(self, name, script):
        """Makes a shell script run instead of the program `name`: its folder becomes the first one in PATH."""
        folder = FOLDER / "programs"
        folder.mkdir()
        (folder / name).write_text(f"#!/bin/sh\n{script}\n")
        (folder / name).chmod(0o755)
        path = os.environ["PATH"]
        os.environ["PATH"] = f"{folder}:{path}"
        self.addCleanup(os.environ.update, PATH=path)


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=2))
