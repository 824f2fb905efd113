#!/usr/bin/python3
"""A small KS-7 camera agent with imaginary cameras, as a starting point for your own. It follows the contract in
AGENT.md.

    ks7-agent-check --launch docs/examples/ks7_agent.py

The program needs python3-gi and the interface files of ks7-agent-dev, or their folder in KS7_INTERFACES. The picture
needs ks7-agent-simulator.
"""

import os
import pathlib
import plistlib
import shutil
import signal
import subprocess
import sys
import tempfile

from gi.repository import Gio, GLib

INTERFACES = pathlib.Path(os.environ.get("KS7_INTERFACES", "/usr/share/dbus-1/interfaces"))
FILE = pathlib.Path(os.environ.get("XDG_CONFIG_HOME") or pathlib.Path.home() / ".config") / "com.orvex.KS7Agent.plist"
DEFAULTS = {"KS7On": True, "ShowStatusMenu": True, "VideoSize2": 1, "LogToFile": False, "FriendlyNames": {}, "IgnoredCams": {}}
TOGGLES = {"KS7ToggleEnabled": "KS7On", "KS7ToggleStatusMenu": "ShowStatusMenu", "KS7ToggleDebugLog": "LogToFile"}
NOT_FOUND, NOT_STREAMING, PAIRING, STARTING, STREAMING = range(5)
ANNOUNCED = {PAIRING: "KS7PairingInitiated", STARTING: "KS7StreamingInitiated", STREAMING: "KS7StreamingStarted"}
NO_ROW = 0x7FFFFFFFFFFFFFFF
STEP = 300  # milliseconds between two steps of a search or of a connection


def read_settings():
    return plistlib.loads(FILE.read_bytes(), fmt=plistlib.FMT_XML) if FILE.exists() else {}


def setting(key):
    try:
        return read_settings().get(key, DEFAULTS[key])
    except Exception:  # use the default when the file cannot be parsed
        return DEFAULTS[key]


def store(**changes):
    """Changes only the given keys of the preferences file. Reads the file first, because other programs change it too.
    Replaces the whole file, so that no reader sees a half-written one. A symbolic link at the path stays a link."""
    try:
        settings = {**read_settings(), **changes}
    except Exception:  # do not overwrite a file that cannot be parsed
        return
    target = FILE.resolve()
    target.parent.mkdir(parents=True, exist_ok=True)
    with tempfile.NamedTemporaryFile(dir=target.parent, delete=False) as file:  # created with mode 0600
        plistlib.dump(settings, file, sort_keys=False)
        file.flush()
        os.fsync(file.fileno())
    if target.exists():
        shutil.copymode(target, file.name)
    os.replace(file.name, target)


class UsbSide:
    """Replies as an agent does while no camera is connected by USB: no camera needs a firmware update, and startUpdate
    and setPassKey fail with -1."""
    startUpdate = lambda self: -1
    connectedCamNeedsFirmwareUpdate = lambda self: False
    setPassKey = lambda self, passkey: -1
    connectedCamHasBTAddress = lambda self, address: False


class CameraSide:
    def __init__(self, post):
        self.post, self.preferred, self.searching = post, None, False
        self.known = {}  # maps each address to [name, status], in the order of the camera list
        self.add("00-1b-dc-0f-00-01", "Porch", NOT_STREAMING)
        self.add("00-1b-dc-0f-00-02", "Garage", NOT_FOUND)

    def add(self, address, name, status):
        self.known.setdefault(address, [setting("FriendlyNames").get(address, name), status])

    def rows(self):
        return [address for address in self.known if not setting("IgnoredCams").get(address)]

    def record(self, address):
        name, status = self.known[address]
        return {"Status": GLib.Variant("i", status), "FriendlyName": GLib.Variant("s", name),
                "CameraIDString": GLib.Variant("s", address.replace("-", "")[-4:].upper())}

    # Work that no remote call starts: it starts with the program or after a notification from the pane

    def hear(self, name, info):
        if name == "KS7StartDiscovering" and not self.searching and setting("KS7On"):
            self.searching = True
            self.post("KS7StartedDiscovering")
            GLib.timeout_add(STEP, self.find)
        elif name in TOGGLES and "Value" in info:
            store(**{TOGGLES[name]: bool(info["Value"])})
            if name == "KS7ToggleEnabled":
                self.post("KS7OnOffChanged")
                self.connect()

    def find(self):
        if "00-1b-dc-0f-00-03" not in self.known:
            self.add("00-1b-dc-0f-00-03", "Attic", NOT_STREAMING)
            self.post("KS7CameraListChanged")
        self.searching = False
        self.post("KS7StoppedDiscovering")

    def enter(self, address, status):
        self.known[address][1] = status
        self.post("KS7CameraListChanged")
        self.post(ANNOUNCED.get(status, "KS7StreamingEnded"))

    def connect(self):
        """Ends all running streams. Then takes the preferred camera, which the person has chosen, to the status
        STREAMING, one status per STEP."""
        for address in [each for each, (_, status) in self.known.items() if status in ANNOUNCED]:
            self.enter(address, NOT_STREAMING)
        GLib.timeout_add(STEP, self.advance, self.preferred, NOT_STREAMING)

    def advance(self, address, expected):
        if address == self.preferred and self.known.get(address, [None, None])[1] == expected and setting("KS7On"):
            self.enter(address, expected + 1)
            if expected + 1 < STREAMING:
                GLib.timeout_add(STEP, self.advance, address, expected + 1)

    def prefer(self, address):
        self.preferred = address
        self.post("KS7PreferredCameraChanged")
        self.connect()

    # The operations

    flush = streamingStarted = pairingInitiated = streamingInitiated = lambda self: None
    streamingStopped = getKnownZephraDevices = lambda self: None
    sortedDeviceList = rows
    cameraDict = lambda self: {address: self.record(address) for address in self.rows()}
    cameras = lambda self: [self.record(address) for address in self.rows()]
    getAudioLevel_l = lambda self: (0.0, 0.0)
    indexOfPreferredKS7Cam = lambda self: self.rows().index(self.preferred) if self.preferred in self.rows() else NO_ROW
    getPreferredKS7Cam = lambda self: self.record(self.preferred) if self.preferred in self.rows() else {}
    isPreferredDeviceAddress = lambda self, address: address == self.preferred
    validateName = lambda self, name: 0 < len(name.strip()) <= 63 and name.isprintable()

    def setPreferredDeviceAddress(self, address):
        if address in self.known and address != self.preferred:
            self.prefer(address)

    def setName(self, name, address):
        if address in self.known and self.validateName(name):
            self.known[address][0] = name
            store(FriendlyNames={**setting("FriendlyNames"), address: name})
            self.post("KS7CameraListChanged")

    def setIgnore(self, ignore, record):
        for address in self.known:
            if self.record(address)["CameraIDString"].unpack() == record.get("CameraIDString"):
                store(IgnoredCams={**setting("IgnoredCams"), address: ignore})
                self.post("KS7CameraListChanged")

    def removeCameraAtIndex(self, row, from_favorites):
        if 0 <= row < len(self.rows()):  # the pane sends row -1 if no row is selected
            del self.known[self.rows()[row]]
            self.post("KS7CameraListChanged")

    def checkRemoveCurrentCam(self, record):
        if self.preferred and self.preferred not in self.known:
            self.prefer(None)


class Wire:
    """Connects the agent to the session bus: exports two objects, exchanges notifications, takes two bus names."""
    POSTS = ("/com/orvex/DistributedNotificationCenter", "com.orvex.DistributedNotificationCenter")
    OBJECTS = (("com.orvex.KS7AgentServerUSB", "com.orvex.TernUSBCommandControllerProxy"),
               ("com.orvex.KS7AgentServer", "com.orvex.KS7DeviceControllerProxy"))

    def __init__(self):
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        self.cameras = CameraSide(self.post)
        for (name, interface), served in zip(self.OBJECTS, (UsbSide(), self.cameras)):
            declared = Gio.DBusNodeInfo.new_for_xml((INTERFACES / f"{interface}.xml").read_text()).interfaces[0]
            self.bus.register_object("/" + name.replace(".", "/"), declared, self.answer_for(served), None, None)
        self.bus.signal_subscribe(None, self.POSTS[1], None, self.POSTS[0], None, Gio.DBusSignalFlags.NONE, self.heard)

    def answer_for(self, served):
        def answer(bus, sender, path, interface, method, arguments, call):
            result = getattr(served, method)(*arguments.unpack())
            types = [each.signature for each in call.get_method_info().out_args]
            results = result if len(types) > 1 else (result,) * len(types)
            call.return_value(GLib.Variant(f"({''.join(types)})", tuple(results)))
        return answer

    def post(self, name, **info):
        self.bus.emit_signal(None, *self.POSTS, name, GLib.Variant("(a{sv})", (info,)))

    def heard(self, bus, sender, path, interface, name, arguments):
        if sender != bus.get_unique_name() and arguments.get_type_string() == "(a{sv})":
            self.cameras.hear(name, arguments.unpack()[0])

    def take_names(self):
        """Takes the bus name of the USB object first. As soon as the pane has found the name of the device controller,
        it looks for the USB name, which must exist by then."""
        for name, _ in self.OBJECTS:
            taken = self.bus.call_sync("org.freedesktop.DBus", "/", "org.freedesktop.DBus", "RequestName",
                                       GLib.Variant("(su)", (name, 4)), None, Gio.DBusCallFlags.NONE, -1)
            if taken.unpack() != (1,):
                sys.exit(f"another agent owns {name}")


def main():
    store(**{key: setting(key) for key in DEFAULTS})
    loop = GLib.MainLoop()
    GLib.unix_signal_add(GLib.PRIORITY_DEFAULT, signal.SIGTERM, loop.quit)
    wire = Wire()
    wire.take_names()
    wire.post("KS7AgentStarted")
    # A real agent publishes the picture itself with libpipewire; see "Picture" in AGENT.md.
    simulator = shutil.which("ks7-agent-simulator")
    picture = simulator and subprocess.Popen([simulator, "--picture-only"])
    try:
        loop.run()
    finally:
        if picture:
            picture.terminate()


if __name__ == "__main__":
    main()
