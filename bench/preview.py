#!/usr/bin/python3
"""Compares the live preview with gst-launch. Both show the same camera in turn, on a private display, bus and PipeWire.
Prints each figure as a JSON array, from which bench/run makes a Figure: number, what, beside, samples, limit, unit.

The camera draws the number of each frame as bars. This program reads the numbers from the window after each of its
changes, so both programs are measured in the same way."""

import argparse
import collections
import contextlib
import ctypes
import json
import os
import pathlib
import statistics
import subprocess
import sys
import threading
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
SUPPORT = ROOT / "tests" / "support"
sys.path.insert(0, str(SUPPORT))

import accessible  # noqa: E402
import screens  # noqa: E402

NODE = "KS-7 Wireless Webcam"
AGENT = "com.orvex.KS7AgentServer"
SCRIPT = "com.orvex.KS7AgentSimulator"
CAMERA = "00-1b-dc-0f-00-01"
FORMATS = ("YUY2 640x480", "BGRx 640x480", "YUY2 1280x720")
BITS = 16
HALF_A_FRAME_INTERVAL = 1000 / 30 / 2
# The kernel's clock of another process's processor time (CPUCLOCK_SCHED), which counts in nanoseconds.
PROCESSOR_CLOCK = 2


class XImage(ctypes.Structure):
    _fields_ = [("width", ctypes.c_int), ("height", ctypes.c_int), ("xoffset", ctypes.c_int),
                ("format", ctypes.c_int), ("data", ctypes.POINTER(ctypes.c_uint32))]


class Eye:
    """Reads from the pixels of a window which frame it shows."""

    def __init__(self, window):
        self.window = int(window)
        self.x11 = ctypes.CDLL("libX11.so.6")
        self.damage = ctypes.CDLL("libXdamage.so.1")
        self.x11.XOpenDisplay.restype = ctypes.c_void_p
        self.x11.XGetImage.restype = ctypes.POINTER(XImage)
        self.x11.XGetImage.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.c_int, ctypes.c_int, ctypes.c_uint,
                                       ctypes.c_uint, ctypes.c_ulong, ctypes.c_int]
        self.display = ctypes.c_void_p(self.x11.XOpenDisplay(None))
        bases = ctypes.c_int(), ctypes.c_int()
        self.damage.XDamageQueryExtension(self.display, *map(ctypes.byref, bases))
        self.damage.XDamageCreate(self.display, ctypes.c_ulong(self.window), 0)
        self.event = (ctypes.c_long * 24)()
        self.size = screens.x_box(window)[2:]
        self.bars = None

    def line(self, y):
        """Returns the pixels in line `y` of the window."""
        image = self.x11.XGetImage(self.display, self.window, 0, y, self.size[0], 1, 0xFFFFFFFF, 2)
        pixels = image.contents.data[:self.size[0]]
        self.x11.XDestroyImage(image)
        return pixels

    def find_bars(self):
        """Finds the two bars that enclose the number. Returns the left edge of the green bar, the right edge of the red bar and
        a line that crosses both; None without such bars."""
        for y in range(4, self.size[1], 8):
            pixels = self.line(y)
            green = [x for x, p in enumerate(pixels) if p >> 16 & 255 < 60 and p >> 8 & 255 > 200 and p & 255 < 60]
            red = [x for x, p in enumerate(pixels) if p >> 16 & 255 > 200 and p >> 8 & 255 < 60 and p & 255 < 60]
            if len(green) > 10 and len(red) > 10 and green[0] < red[-1]:
                return green[0], red[-1] + 1, y
        return None

    def number(self):
        """Returns the number of the frame that the window shows now."""
        left, right, y = self.bars
        width = (right - left) / (BITS + 2)
        pixels = self.line(y)
        number = 0
        for bar in range(1, BITS + 1):
            number = number << 1 | (pixels[int(left + (bar + 0.5) * width)] >> 8 & 255 > 128)
        return number

    def changed(self, end):
        """Waits for the next change of the window. Returns False if it does not change before the time `end`."""
        while not self.x11.XPending(self.display):
            if time.monotonic() > end:
                return False
            time.sleep(0.0005)
        while self.x11.XPending(self.display):
            self.x11.XNextEvent(self.display, ctypes.byref(self.event))
        return True

    def wait_for_frame(self, patience=30):
        end = time.monotonic() + patience
        while not self.bars:
            if not self.changed(end):
                sys.exit("no frame was shown")
            self.bars = self.find_bars()

    def close(self):
        self.x11.XCloseDisplay(self.display)

    def watch(self, seconds):
        """Watches the window for some seconds. Returns the time at which each frame number was first seen."""
        seen = {}
        end = time.monotonic() + seconds
        while self.changed(end):
            seen.setdefault(self.number(), time.monotonic())
        return seen


class Camera:
    """A virtual camera that numbers its frames. Records the time at which each frame was sent."""

    def __init__(self, program, form):
        self.sent = {}
        self.process = subprocess.Popen([program, NODE, "KS-7", "0x2a6099", form, "30"], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, text=True)
        self.obey("number\ntell")
        threading.Thread(target=self.listen, daemon=True).start()

    def obey(self, command):
        self.process.stdin.write(command + "\n")
        self.process.stdin.flush()

    def listen(self):
        for line in self.process.stdout:
            what, number, moment = line.split()
            if what == "sent":
                self.sent[int(number) % 2 ** BITS] = int(moment) / 1e9

    def end(self):
        self.process.kill()
        self.process.wait()


def processor_time(pid):
    """Returns the seconds of user and system time of all threads, ended ones included."""
    return time.clock_gettime(~pid << 3 | PROCESSOR_CLOCK)


def processor_share(pid, seconds):
    """Returns the processor time of the next seconds in percent of one core."""
    before, begin = processor_time(pid), time.monotonic()
    time.sleep(seconds)
    return (processor_time(pid) - before) / (time.monotonic() - begin) * 100


def play(operation, *arguments):
    subprocess.run(["dbus-send", "--session", "--print-reply", f"--dest={AGENT}", f"/{SCRIPT.replace('.', '/')}",
                    f"{SCRIPT}.{operation}", *arguments], check=True, stdout=subprocess.DEVNULL)


def window_of(*search):
    return accessible.wait_until(lambda: accessible.xdotool("search", "--onlyvisible", *search).split(), "a window")[0]


class Pane:
    """Shows the preview in ks7-preferences, as one side of the comparison."""
    name = "ours"

    def __init__(self, build):
        self.command = [build / "bin" / "ks7-preferences"]
        self.environment = dict(os.environ, KS7_AGENT="/nonexistent")
        self.first_frames = []
        # Find the button through accessibility in an extra run, so that the measured run works without accessibility.
        with accessible.launch(self.command, env={"KS7_AGENT": "/nonexistent"}) as pane:
            button = pane.wait_for("Start Preview", role="push button")
            pane.wait_state(button, "enabled")
            x, y, width, height = pane.rectangle(button)
            left, top, *_ = screens.x_box(pane.x_windows()[0])
            self.button = x - left + width // 2, y - top + height // 2
            # The view has a size only while it is shown, so start the preview.
            pane.press(button)
            self.view = pane.rectangle(pane.wait_for("Live picture"))[2:]

    def frame_size(self, form):
        """Returns the size in which the pane shows frames of a format. It scales them down to its view, but never up."""
        width, height = map(int, form.split()[1].split("x"))
        scale = min(1, self.view[0] / width, self.view[1] / height)
        return round(width * scale), round(height * scale)

    def start(self):
        process = subprocess.Popen(self.command, env=self.environment, stdin=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL)
        window = window_of("--pid", process.pid)
        eye = Eye(window)
        # Wait until the window has not changed for a second.
        while eye.changed(time.monotonic() + 1):
            pass
        accessible.xdotool("mousemove", "--sync", "--window", window, *self.button)
        clicked = time.monotonic()
        accessible.xdotool("click", 1)
        eye.wait_for_frame()
        self.first_frames.append((time.monotonic() - clicked) * 1000)
        return process, eye


class Launch:
    """Shows the camera with gst-launch, which does not scale the frames."""
    name = "launch"
    # PipeWire 1.4 refuses a format without a pixel aspect ratio.
    chain = ["!", "video/x-raw,pixel-aspect-ratio=1/1;video/x-raw", "!", "videoconvert"]

    def start(self):
        process = subprocess.Popen(["gst-launch-1.0", "-q", "pipewiresrc", f"target-object={NODE}", *self.chain,
                                    "!", "ximagesink"], stdin=subprocess.DEVNULL)
        eye = Eye(window_of("--name", "gst-launch"))
        eye.wait_for_frame()
        return process, eye


class ScalingLaunch(Launch):
    """Shows the camera with gst-launch, which scales each frame to the size that the pane uses."""
    name = "scaling"

    def __init__(self, size):
        width, height = size
        self.chain = [*Launch.chain[:2], "!", "videoconvertscale", "add-borders=false", "!",
                      f"video/x-raw,format=BGRx,width={width},height={height},pixel-aspect-ratio=1/1"]


def measure(side, camera, seconds):
    """Runs one of the compared programs. Returns a dictionary: its processor time in percent of one core, with frames and of
    the frames alone, the percentage of the sent frames that were seen, and the median delay in milliseconds."""
    process, eye = side.start()
    used = processor_share(process.pid, seconds)
    begin = time.monotonic()
    seen = eye.watch(max(3, seconds / 3))
    # Ignore frames of the last 0.3 s, because they may not be visible yet.
    sent = {number: moment for number, moment in camera.sent.items() if begin < moment < time.monotonic() - 0.3}
    delays = [seen[number] - moment for number, moment in sent.items() if number in seen]
    camera.obey("pause")
    time.sleep(1)
    without = processor_share(process.pid, seconds / 2)
    camera.obey("resume")
    process.terminate()
    process.wait()
    eye.close()
    told = {"processor": used, "frames": used - without, "shown": len(delays) / len(sent) * 100,
            "delay": statistics.median(delays) * 1000}
    print(side.name, {what: round(value, 2) for what, value in told.items()}, flush=True)
    return told


def figures(form, told):
    """Returns the figures for one format. told[side] lists the dictionaries that measure() has returned for one of the
    compared programs."""
    def samples(side, what):
        return [each[what] for each in told[side]]
    ours, theirs, scaling = (samples(side, "processor") for side in ("ours", "launch", "scaling"))
    alone, scaling_alone = (samples(side, "frames") for side in ("ours", "scaling"))
    # A limit is always an upper limit, so report the share of frames that were not shown.
    return [(10, f"processor time, {form}", "gst-launch", [a / b for a, b in zip(ours, theirs)], None, "×"),
            (10, f"processor time, {form}", "scaling gst-launch", [a / b for a, b in zip(ours, scaling)], 1.1, "×"),
            (10, f"processor time, {form}, frames alone", "scaling gst-launch", [a / b for a, b in zip(alone, scaling_alone)],
             1.1, "×"),
            (10, f"lost frames, {form}", "–", [100 - each for each in samples("ours", "shown")], 1, " %"),
            (10, f"camera to screen, {form}", "half a frame interval", samples("ours", "delay"), HALF_A_FRAME_INTERVAL, " ms"),
            (10, f"camera to screen, {form}, gst-launch", "–", samples("launch", "delay"), None, " ms")]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build", default=str(ROOT / "build-bench"), help="the build folder; default: build-bench")
    parser.add_argument("--seconds", type=float, default=12, help="duration of a measurement; default: 12")
    parser.add_argument("--rounds", type=int, default=2, help="measurements of each program for each format; default: 2")
    options = parser.parse_args()
    if "KS7_SESSION_FOLDER" not in os.environ:
        os.execv(SUPPORT / "private_session.py", ["private_session.py", "--bus", "--window-manager", "--pipewire", "--",
                                                  "/usr/bin/python3", *sys.argv])
    build = pathlib.Path(options.build)
    # GStreamer searches for its plug-ins once. Do it before the measurement, so that it does not count.
    subprocess.run(["gst-inspect-1.0"], stdout=subprocess.DEVNULL, check=True)
    with contextlib.ExitStack() as ending:
        agent = subprocess.Popen([build / "bin" / "ks7-agent-simulator", "--no-picture", "--scenario", "scripted"])
        ending.callback(lambda: (agent.kill(), agent.wait()))
        accessible.wait_until(lambda: subprocess.run(
            ["dbus-send", "--session", "--print-reply", f"--dest={AGENT}", "/", "org.freedesktop.DBus.Peer.Ping"],
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0, "the agent")
        play("setPreference", "string:KS7On", "variant:boolean:true")
        play("addCamera", f"string:{CAMERA}", "string:Kitchen", "string:0001", "int32:4")
        play("setPreferred", f"string:{CAMERA}")
        program = build / "bench" / "virtual_camera"
        camera = Camera(program, FORMATS[0])
        try:
            pane = Pane(build)
        finally:
            camera.end()
        for form in FORMATS:
            camera = Camera(program, form)
            told = collections.defaultdict(list)
            sides = pane, Launch(), ScalingLaunch(pane.frame_size(form))
            try:
                for _ in range(options.rounds):
                    for side in sides:
                        told[side.name].append(measure(side, camera, options.seconds))
            finally:
                camera.end()
            for figure in figures(form, told):
                print(json.dumps(figure), flush=True)
        print(json.dumps((10, "click to first frame, 750 ms by design", "–", pane.first_frames, None, " ms")), flush=True)


if __name__ == "__main__":
    main()
