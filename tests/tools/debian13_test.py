#!/usr/bin/python3
"""Tests tools/debian13 with stand-ins for apt, debootstrap, sudo and namespaces. Nothing is downloaded or mounted, and the
root is a folder of the test."""

import os
import sys
import unittest

from checkout import CheckoutTest

BUILDS = ["build", "build-asan", "build-bench", "build-fuzz", "build-release", "build-tsan"]
LISTS = "http://mirror.example/debian Debian\nhttp://mirror.example/debian-security Debian\n"

# Makes the folders and files of a root that the script needs.
DEBOOTSTRAP = """
echo "$*" >>"$FOLDER/debootstrap"
[ ! -e "$FOLDER/mirror-fails" ] || exit 1
mkdir -p "$4/usr/bin" "$4/usr/sbin" "$4/etc/apt" "$4/var/lib" "$4/proc" "$4/sys"
: >"$4/usr/bin/apt-get"
chmod +x "$4/usr/bin/apt-get"
"""
# Runs the script that mounts, with a new empty folder for each file system. The call with `mount` is only a trial.
UNSHARE = """
all="$*"
echo "${all%% -- *}" >>"$FOLDER/unshare"
[ ! -e "$FOLDER/namespaces-fail" ] || exit 1
while [[ $1 == --* && $1 != -- ]]; do shift; done
[ "$1" = -- ] || exit 0
shift
root=$FOLDER/cache/root
rm -rf "$root/dev" "$root/tmp" "$root/run"
mkdir "$root/dev" "$root/tmp" "$root/run"
exec "$@"
"""
# Keeps the stand-ins in PATH.
CHROOT = """
shift
arguments=()
for argument in "$@"; do
    case $argument in PATH=*) argument=PATH=$FOLDER/programs:${argument#PATH=} ;; esac
    arguments+=("$argument")
done
exec "${arguments[@]}"
"""
INSTALL_PACKAGES = """#!/bin/bash
echo "$*" >>{folder}/installed
[ ! -e {folder}/installation-fails ]
"""
# Prints what apt knows after it has fetched package lists.
APT_GET = """
case $1 in
update) [ ! -e "$FOLDER/lists-of-mirror" ] || cp "$FOLDER/lists-of-mirror" "$FOLDER/lists" ;;
indextargets) cat "$FOLDER/lists" 2>/dev/null ;;
esac
exit 0
"""
SUDO = """
find "$FOLDER/checkout" -mindepth 1 -type d -printf '%P\\n' >"$FOLDER/seen-by-sudo"
export USER_ID=0
exec env "$@"
"""


class Debian13Test(CheckoutTest):
    TOOLS = ["tools/debian13"]

    def setUp(self):
        super().setUp()
        self.root = self.folder / "cache" / "root"
        self.environment |= {"KS7_DEBIAN13_ROOT": str(self.root), "USER_ID": "0"}
        self.write("tools/packages.txt", "[build]\ncmake\n")
        self.write("tools/install-packages", INSTALL_PACKAGES.format(folder=self.folder))
        for name, script in (("debootstrap", DEBOOTSTRAP), ("unshare", UNSHARE), ("chroot", CHROOT), ("apt-get", APT_GET),
                             ("sudo", SUDO), ("id", 'echo "$USER_ID"'), ("eatmydata", 'exec "$@"')):
            self.add_program(name, script)
        (self.programs / "mount").symlink_to("/bin/true")
        (self.folder / "lists").write_text(LISTS)

    def calls(self, name):
        path = self.folder / name
        return path.read_text().splitlines() if path.exists() else []

    def happens(self, name):
        (self.folder / name).touch()

    def runs(self, *command, **environment):
        code, said = self.run_tool("tools/debian13", *command, **environment)
        self.assertEqual(code, 0, said)
        return said

    def fails(self, expected, message, **environment):
        code, said = self.run_tool("tools/debian13", "true", **environment)
        self.assertEqual(code, expected, said)
        self.assertIn(message, said)

    def test_without_a_command_it_prints_its_use(self):
        code, said = self.run_tool("tools/debian13")
        self.assertEqual(code, 2)
        self.assertIn("tools/debian13 ./test", said)
        self.assertIn("Exit codes: 2", said)
        self.assertFalse(self.root.exists())

    def test_the_root_is_made_once_from_the_mirror_of_the_machine(self):
        self.runs("true")
        self.runs("true")
        self.assertEqual(len(self.calls("debootstrap")), 1)
        self.assertTrue(self.calls("debootstrap")[0].endswith(f"trixie {self.root}.new http://mirror.example/debian"))
        self.assertEqual((self.root / "etc/apt/sources.list").read_text().splitlines(), [
            "deb http://mirror.example/debian trixie main", "deb http://mirror.example/debian trixie-updates main",
            "deb http://mirror.example/debian-security trixie-security main"])

    def test_packages_are_installed_after_a_change_of_the_list_only(self):
        self.runs("true")
        self.runs("true")
        self.assertEqual(self.calls("installed"), ["debian13", "build run display kde test fuzz check"])
        self.write("tools/packages.txt", "[build]\ncmake\nninja-build\n")
        self.runs("true")
        self.assertEqual(len(self.calls("installed")), 3)

    def test_an_installation_that_fails_is_repeated_by_the_next_run(self):
        self.runs("true")
        self.write("tools/packages.txt", "[build]\nninja-build\n")
        self.happens("installation-fails")
        self.fails(69, "the packages could not be installed from the mirror")
        (self.folder / "installation-fails").unlink()
        self.runs("true")
        self.assertEqual(len(self.calls("installed")), 4)

    def test_the_exit_code_is_that_of_the_command(self):
        self.assertEqual(self.run_tool("tools/debian13", "bash", "-c", "exit 42")[0], 42)

    def test_the_command_runs_in_the_checkout_and_knows_nothing_of_the_session(self):
        said = self.runs("bash", "-c", "pwd; env", DISPLAY=":9", WAYLAND_DISPLAY="wayland-9", XDG_RUNTIME_DIR="/run/user/9",
                         DBUS_SESSION_BUS_ADDRESS="unix:path=/run/user/9/bus", CI="yes", KS7_TIMEOUT="7", CCACHE_DIR="/ccache")
        lines = said.splitlines()
        self.assertIn(str(self.checkout), lines)
        self.assertLessEqual({"CI=yes", "KS7_TIMEOUT=7", "CCACHE_DIR=/ccache", "HOME=/root"}, set(lines))
        for name in ("DISPLAY", "WAYLAND_DISPLAY", "XDG_RUNTIME_DIR", "DBUS_SESSION_BUS_ADDRESS"):
            self.assertFalse([line for line in lines if line.startswith(f"{name}=")], said)
        for kind in ("--mount", "--pid", "--ipc", "--uts", "--kill-child"):
            self.assertIn(kind, self.calls("unshare")[-1].split())

    def test_fetches_package_lists_where_apt_has_none(self):
        (self.folder / "lists").rename(self.folder / "lists-of-mirror")
        self.runs("true")
        self.assertEqual(len(self.calls("debootstrap")), 1)

    def test_says_that_there_is_no_mirror(self):
        (self.folder / "lists").write_text("http://elsewhere.example/apt Somebody\n")
        self.fails(69, "apt has no Debian mirror")
        self.assertFalse(self.calls("debootstrap"))

    def test_says_that_the_mirror_has_no_debian_13(self):
        self.happens("mirror-fails")
        self.fails(69, "the mirror has no Debian 13")
        self.assertFalse(self.root.exists())

    def test_says_that_debootstrap_could_not_be_installed(self):
        self.happens("installation-fails")
        self.fails(69, "debootstrap could not be installed")
        self.assertFalse(self.calls("debootstrap"))

    def test_says_that_namespaces_are_forbidden(self):
        self.happens("namespaces-fail")
        self.fails(77, "does not allow namespaces")
        self.assertFalse(self.calls("debootstrap"))

    def test_with_sudo_the_user_makes_the_folders(self):
        self.runs("true", USER_ID="1000")
        seen = self.calls("seen-by-sudo")
        self.assertLessEqual({*BUILDS, *(f"build-debian13/{build}" for build in BUILDS)}, set(seen))
        self.assertEqual(len(self.calls("debootstrap")), 1)

    def test_without_sudo_it_says_that_it_needs_root(self):
        (self.programs / "sudo").unlink()
        # Only the stand-ins and links to the programs that run before the question, because this machine may have sudo.
        for name in ("bash", "readlink", "dirname", "mkdir"):
            (self.programs / name).symlink_to(os.path.realpath(f"/usr/bin/{name}"))
        self.fails(77, "sudo is not installed", USER_ID="1000", PATH=str(self.programs))


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=2))
