#!/usr/bin/python3
"""Runs a command in a private session with its own home, XDG folders and runtime folder. Options add servers:

  --bus          a session bus                  (DBUS_SESSION_BUS_ADDRESS)
  --system-bus   a private system bus           (DBUS_SYSTEM_BUS_ADDRESS)
  --display      an X server without a screen   (DISPLAY); --screen WxH sets its size
  --window-manager  a window manager            (implies --display)
  --wayland      KWin's Wayland (WAYLAND_DISPLAY), shown in the X server so that xdotool and import reach it
                 (implies --bus and --display); --scale FACTOR sets the scale of its output
  --pipewire     PipeWire and WirePlumber       (implies --bus)
  --this-display keeps the caller's display and home; only the requested servers are private
  --keep DIR     uses DIR as the session's folder and does not remove it

At the end of the command, the script stops all servers, removes the folder and returns the command's exit code. If the
command fails, the script names the servers that have died and prints the end of their logs. Without --display, Qt
programs draw off-screen.
"""

import argparse
import json
import os
import pathlib
import selectors
import shutil
import signal
import subprocess
import sys
import tempfile
import time

START_TIMEOUT = 90

BUS_CONFIG = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>{kind}</type>
  <listen>unix:path={socket}</listen>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow receive_sender="*" eavesdrop="true"/>
    <allow own="*"/>
    <allow user="*"/>
  </policy>
</busconfig>
"""


class Session:
    def __init__(self, folder, this_display=False):
        self.folder = pathlib.Path(folder)
        self.env = dict(os.environ)
        self.processes = []
        if this_display:
            self.move_runtime_folder()
        else:
            self.be_private()
        self.write_wireplumber_settings()

    def move_runtime_folder(self):
        """Makes a private folder the runtime folder XDG_RUNTIME_DIR. The socket of the caller's Wayland display stays
        in the caller's runtime folder, so its full path is put into WAYLAND_DISPLAY."""
        wayland = self.env.get("WAYLAND_DISPLAY")
        if wayland:
            self.env["WAYLAND_DISPLAY"] = os.path.join(self.env.get("XDG_RUNTIME_DIR", ""), wayland)
        self.env["XDG_RUNTIME_DIR"] = str(self.folder / "runtime")
        (self.folder / "runtime").mkdir(mode=0o700, parents=True, exist_ok=True)

    def be_private(self):
        for name in ("DBUS_SESSION_BUS_ADDRESS", "DISPLAY", "WAYLAND_DISPLAY", "AT_SPI_BUS_ADDRESS", "XAUTHORITY"):
            self.env.pop(name, None)
        for variable, name in (("HOME", "home"), ("XDG_CONFIG_HOME", "home/.config"),
                               ("XDG_DATA_HOME", "home/.local/share"), ("XDG_STATE_HOME", "home/.local/state"),
                               ("XDG_CACHE_HOME", "home/.cache"), ("XDG_RUNTIME_DIR", "runtime")):
            path = self.folder / name
            path.mkdir(parents=True, exist_ok=True)
            self.env[variable] = str(path)
        (self.folder / "runtime").chmod(0o700)
        # Hide the machine's own system bus from the programs.
        self.env["DBUS_SYSTEM_BUS_ADDRESS"] = f"unix:path={self.folder}/no-system-bus"
        self.env["QT_QPA_PLATFORM"] = "offscreen"
        # Share GStreamer's registry of plug-ins among all tests of a build. Otherwise each new home would need a new
        # scan.
        if "KS7_BUILD" in self.env:
            self.env["GST_REGISTRY"] = os.path.join(self.env["KS7_BUILD"], "tests", "gstreamer-registry.bin")
            # Let programs find the desktop files of the build, which contain names and icons.
            shared = os.path.join(self.env["KS7_BUILD"], "share")
            self.env["XDG_DATA_DIRS"] = f"{shared}:{self.env.get('XDG_DATA_DIRS') or '/usr/local/share:/usr/share'}"
        self.env["KS7_CLOCK_ROOT"] = str(self.make_fast_processor())
        self.env["NO_AT_BRIDGE"] = "1"
        self.env.setdefault("LC_ALL", "C.UTF-8")

    def make_fast_processor(self):
        """Simulates a fast processor. Many virtual machines report no processor clock, and the pane then hides a
        control."""
        root = self.folder / "processor"
        core = root / "sys/devices/system/cpu/cpu0/cpufreq"
        core.mkdir(parents=True, exist_ok=True)
        (core / "cpuinfo_max_freq").write_text("3000000\n")
        return root

    def write_wireplumber_settings(self):
        """Disables WirePlumber's Bluetooth monitor. The monitor needs logind, and without it WirePlumber 0.4 exits, for
        example in a container. The setting is in the home folder, so it also applies when a test starts WirePlumber."""
        scripts = self.folder / "home/.config/wireplumber/bluetooth.lua.d"
        scripts.mkdir(parents=True, exist_ok=True)
        (scripts / "80-disabled.lua").write_text("bluez_monitor.enabled = false\n")

    def spawn(self, command, **options):
        options.setdefault("env", self.env)
        process = subprocess.Popen(command, stdin=subprocess.DEVNULL, start_new_session=True, **options)
        self.processes.append(process)
        return process

    def log(self, name):
        return open(self.folder / f"{name}.log", "wb")

    def wait_for(self, condition, server, what):
        deadline = time.monotonic() + START_TIMEOUT
        while not condition():
            if server.poll() is not None:
                self.give_up(f"{what} did not start: {server.args[0]} ended with {server.returncode}")
            if time.monotonic() > deadline:
                self.give_up(f"{what} did not start")
            time.sleep(0.02)

    def give_up(self, reason):
        self.print_logs()
        sys.exit(f"private_session: {reason}")

    def start_bus(self, kind):
        socket = self.folder / "runtime" / ("bus" if kind == "session" else "system-bus")
        config = self.folder / f"{kind}.conf"
        config.write_text(BUS_CONFIG.format(kind=kind, socket=socket))
        with self.log(f"{kind}-bus") as log:
            bus = self.spawn(["dbus-daemon", f"--config-file={config}", "--nofork"], stdout=log, stderr=log)
        self.wait_for(socket.exists, bus, f"the {kind} bus")
        variable = "DBUS_SESSION_BUS_ADDRESS" if kind == "session" else "DBUS_SYSTEM_BUS_ADDRESS"
        self.env[variable] = f"unix:path={socket}"

    def start_display(self, screen):
        reader, writer = os.pipe()
        with self.log("display") as log:
            self.spawn(["Xvfb", "-displayfd", str(writer), "-screen", "0", f"{screen}x24", "-nolisten", "tcp",
                        "-noreset"], pass_fds=(writer,), stdout=log, stderr=log)
        os.close(writer)
        number = self.display_number(reader)
        os.close(reader)
        if not number:
            self.give_up("the display did not start")
        self.env["DISPLAY"] = f":{number}"
        self.env["QT_QPA_PLATFORM"] = "xcb"

    def display_number(self, reader):
        """Reads the display's number and the line end after it. Xvfb writes the number and the line end separately, and
        dies if the pipe is closed in between."""
        line = b""
        with selectors.DefaultSelector() as selector:
            selector.register(reader, selectors.EVENT_READ)
            while not line.endswith(b"\n") and selector.select(START_TIMEOUT):
                part = os.read(reader, 32)
                if not part:
                    break
                line += part
        return line.decode().strip()

    def start_window_manager(self):
        self.use_keyboard()
        with self.log("window-manager") as log:
            manager = self.spawn(["openbox", "--sm-disable"], stdout=log, stderr=log)
        self.wait_for(self.has_window_manager, manager, "the window manager")

    def use_keyboard(self):
        """Sends the display's first key. Without it, the window manager sometimes misses the first shortcut of a test,
        such as Alt+F4."""
        subprocess.run(["xdotool", "key", "Shift_L"], env=self.env, stdin=subprocess.DEVNULL, check=True)

    def has_window_manager(self):
        asked = subprocess.run(["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"], env=self.env, capture_output=True,
                               stdin=subprocess.DEVNULL)
        return b"window id" in asked.stdout

    def start_wayland(self, screen, scale):
        """Runs KWin without OpenGL, in one X window that covers the X screen."""
        width, height = screen.split("x")
        name = "wayland-ks7"
        self.write_kwin_settings(int(width), int(height), scale)
        self.env.update(XDG_SESSION_TYPE="wayland", XDG_CURRENT_DESKTOP="KDE", KDE_FULL_SESSION="true",
                        KDE_SESSION_VERSION="6", QT_QPA_PLATFORM="wayland")
        with self.log("wayland") as log:
            kwin = self.spawn(["kwin_wayland", "--x11-display", self.env["DISPLAY"], "--socket", name,
                               "--no-lockscreen", "--width", width, "--height", height],
                              stdout=log, stderr=log, env={**self.env, "KWIN_COMPOSE": "Q", "QT_QPA_PLATFORM": "",
                                                         "XCURSOR_THEME": "breeze_cursors"})
        self.wait_for((pathlib.Path(self.env["XDG_RUNTIME_DIR"]) / name).exists, kwin, "the Wayland compositor")
        self.wait_for(self.has_compositor_window, kwin, "the Wayland compositor's output")
        self.env["WAYLAND_DISPLAY"] = name
        self.env["KS7_WAYLAND_SCALE"] = str(scale)

    def write_kwin_settings(self, width, height, scale):
        """Disables animations, which would disturb comparisons of pixels. Also sets the scale, because KWin ignores its
        option --scale on X."""
        settings = pathlib.Path(self.env["XDG_CONFIG_HOME"])
        (settings / "kdeglobals").write_text("[KDE]\nAnimationDurationFactor=0\n")
        (settings / "kwinrc").write_text("[Windows]\nPlacement=Centered\n")
        output = {"connectorName": "X11-0", "scale": scale,
                  "mode": {"width": width, "height": height, "refreshRate": 60000}}
        place = {"enabled": True, "outputIndex": 0, "position": {"x": 0, "y": 0}, "priority": 0}
        (settings / "kwinoutputconfig.json").write_text(json.dumps(
            [{"name": "outputs", "data": [output]},
             {"name": "setups", "data": [{"lidClosed": False, "outputs": [place]}]}]))

    def has_compositor_window(self):
        asked = subprocess.run(["xwininfo", "-root", "-children"], env=self.env, capture_output=True,
                               stdin=subprocess.DEVNULL)
        return b"KDE Wayland Compositor" in asked.stdout

    def start_pipewire(self):
        self.env["PIPEWIRE_RUNTIME_DIR"] = self.env["XDG_RUNTIME_DIR"]
        socket = pathlib.Path(self.env["XDG_RUNTIME_DIR"]) / "pipewire-0"
        with self.log("pipewire") as log:
            pipewire = self.spawn(["pipewire"], stdout=log, stderr=log)
        self.wait_for(socket.exists, pipewire, "PipeWire")
        with self.log("wireplumber") as log:
            manager = self.spawn(["wireplumber"], stdout=log, stderr=log,
                                 env={**self.env, "XDG_CONFIG_HOME": str(self.folder / "home/.config")})
        self.wait_for(self.has_session_manager, manager, "PipeWire's session manager")

    def has_session_manager(self):
        asked = subprocess.run(["pw-metadata", "-n", "default"], env=self.env, capture_output=True,
                               stdin=subprocess.DEVNULL)
        return b"Found" in asked.stdout

    def tell_of_the_dead(self):
        """Prints the names of servers that have died, because they may have caused the command's failure."""
        dead = [process for process in self.processes if process.poll() is not None]
        for process in dead:
            print(f"private_session: {process.args[0]} ended with {process.returncode}", file=sys.stderr)
        if dead:
            self.print_logs()

    def print_logs(self):
        """Prints the end of every server's log, because the session's folder is removed afterwards."""
        for log in sorted(self.folder.glob("*.log")):
            print(f"{log.name}:", *log.read_text(errors="replace").splitlines()[-10:], sep="\n  ", file=sys.stderr)

    def end(self):
        for process in reversed(self.processes):
            try:
                os.killpg(process.pid, signal.SIGTERM)
            except ProcessLookupError:
                pass
        for process in self.processes:
            try:
                process.wait(3)
            except subprocess.TimeoutExpired:
                os.killpg(process.pid, signal.SIGKILL)
                process.wait()


def arguments():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    for flag in ("--bus", "--system-bus", "--display", "--this-display", "--window-manager", "--wayland",
                 "--pipewire"):
        parser.add_argument(flag, action="store_true")
    parser.add_argument("--screen", default="1280x1024")
    parser.add_argument("--scale", type=float, default=1)
    parser.add_argument("--keep", metavar="DIR")
    parser.add_argument("command", nargs=argparse.REMAINDER)
    options = parser.parse_args()
    if options.command[:1] == ["--"]:
        options.command = options.command[1:]
    if not options.command:
        parser.error("no command")
    return options


def run(options, folder):
    session = Session(folder, options.this_display)
    try:
        if options.bus or options.pipewire or options.wayland:
            session.start_bus("session")
        if options.system_bus:
            session.start_bus("system")
        if options.display or options.window_manager or options.wayland:
            session.start_display(options.screen)
        if options.window_manager:
            session.start_window_manager()
        if options.wayland:
            session.start_wayland(options.screen, options.scale)
        if options.pipewire:
            session.start_pipewire()
        session.env["KS7_SESSION_FOLDER"] = str(folder)
        code = subprocess.call(options.command, env=session.env)
        if code:
            session.tell_of_the_dead()
        return code
    finally:
        session.end()


def main():
    # Exit through an exception on SIGTERM, so that the started servers end too.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    options = arguments()
    if options.keep:
        sys.exit(run(options, options.keep))
    folder = tempfile.mkdtemp(prefix="ks7-")
    try:
        code = run(options, folder)
    finally:
        shutil.rmtree(folder, ignore_errors=True)
    sys.exit(code if code >= 0 else 128 - code)


if __name__ == "__main__":
    main()
