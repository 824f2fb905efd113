"""Lists PipeWire's nodes with pw-dump."""

import json
import subprocess

import accessible

# The property node.name of the agent's picture.
AGENT_CAMERA = "KS-7 Wireless Webcam"


def nodes():
    """Returns the properties of every node."""
    text = subprocess.run(["pw-dump"], capture_output=True, text=True, check=True, stdin=subprocess.DEVNULL).stdout.strip()
    objects = {}
    # If objects change while pw-dump runs, it prints further lists with the changes after the first one. Read them all.
    while text:
        listed, end = json.JSONDecoder().raw_decode(text)
        objects |= {each["id"]: each for each in listed}
        text = text[end:].strip()
    return [(each.get("info") or {}).get("props") or {} for each in objects.values()
            if each.get("type") == "PipeWire:Interface:Node"]


def cameras():
    """Returns node.description by node.name, for every node of class Video/Source."""
    return {node["node.name"]: node.get("node.description") for node in nodes()
            if node.get("media.class") == "Video/Source"}


def watchers():
    """Returns the number of streams that consume video."""
    return sum(node.get("media.class") == "Stream/Input/Video" for node in nodes())


def wait_for_camera():
    """Waits for the agent's node. The agent connects to PipeWire only after it has taken its bus names."""
    accessible.wait_until(lambda: AGENT_CAMERA in cameras(), "the picture of the agent's camera")
