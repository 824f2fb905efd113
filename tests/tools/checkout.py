"""A temporary checkout for the test of a tool. Shell scripts stand in for the programs that the tool calls."""

import os
import pathlib
import subprocess
import tempfile
import unittest

SOURCES = pathlib.Path(__file__).resolve().parents[2]


class CheckoutTest(unittest.TestCase):
    """Gives each test a checkout with copies of the files in TOOLS."""

    TOOLS = ()

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="ks7-tools-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.checkout = self.folder / "checkout"
        self.programs = self.folder / "programs"
        self.programs.mkdir()
        self.environment = {**os.environ, "PATH": f"{self.programs}:{os.environ['PATH']}", "FOLDER": str(self.folder)}
        for tool in self.TOOLS:
            self.write(tool, (SOURCES / tool).read_text(encoding="utf-8"))

    def write(self, name, text):
        self.write_program(self.checkout / name, text)

    def add_program(self, name, script):
        """Adds a shell script that runs instead of the program `name`."""
        self.write_program(self.programs / name, f"#!/bin/bash\n{script}\n")

    def write_program(self, path, text):
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")
        path.chmod(0o755)

    def run_tool(self, *command, **environment):
        """Runs a tool of the checkout. Returns its exit code, and its output and errors together."""
        done = subprocess.run([self.checkout / command[0], *command[1:]], cwd=self.checkout, text=True,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                              env={**self.environment, **environment})
        return done.returncode, done.stdout
