"""What PipeWire offers and who takes it, as any program sees it."""

import json
import subprocess

import accessible

# What the agent calls the picture of its camera.
AGENT_CAMERA = "KS-7 Wireless Webcam"


def nodes():
    """The properties of every node."""
    text = subprocess.run(["pw-dump"], capture_output=True, text=True, check=True, stdin=subprocess.DEVNULL).stdout.strip()
    objects = {}
    # What changes while pw-dump looks stands in a second list behind the first.
    while text:
        listed, end = json.JSONDecoder().raw_decode(text)
        objects |= {each["id"]: each for each in listed}
        text = text[end:].strip()
    return [(each.get("info") or {}).get("props") or {} for each in objects.values()
            if each.get("type") == "PipeWire:Interface:Node"]


def cameras():
    """node.name to node.description of every Video/Source."""
    return {node["node.name"]: node.get("node.description") for node in nodes()
            if node.get("media.class") == "Video/Source"}


def watchers():
    """How many streams take a picture."""
    return sum(node.get("media.class") == "Stream/Input/Video" for node in nodes())


def wait_for_camera():
    """The agent says that its camera streams a little before its picture can be had."""
    accessible.wait_until(lambda: AGENT_CAMERA in cameras(), "the picture of the agent's camera")
