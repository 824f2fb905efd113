"""Computes which rooms (folders) of the source tree include which others, and whether they include in a circle."""

import collections
import pathlib
import re

# The rooms from the bottom to the top. A file may include files of its own room and of earlier rooms in this list.
# docs/ARCHITECTURE.md explains the order.
ROOMS = ("platform/base", "platform/bus", "platform/preferences", "platform/capture", "platform/desktop", "platform/power",
         "platform/sheets", "platform/updates", "platform", "logging", "widgets", "agent", "settings", "cameras", "preview",
         "about", "maintenance", "pane", "hosts", "simulator", "agent_check", "tests", "fuzz", "bench")
# These headers include no other headers of the project, so every room may include them.
BASE = ("platform/QtCompat.h",)
INCLUDE = re.compile(r'^#\s*include "([^"]+)"', re.MULTILINE)


def room_of(name):
    """Returns the room of a file: its top folder, or in platform/ the folder below. Controller*.cpp belongs to pane/ in every
    folder, because it defines a chapter of the controller."""
    folders = name.split("/")[:-1] or ["."]
    if name in BASE:
        return "platform/base"
    if re.fullmatch(r"\w+/Controller\w+\.cpp", name):
        return "pane"
    return "/".join(folders[:2]) if folders[0] == "platform" else folders[0]


def circles(arrows):
    """Returns the circles of a graph: its strongly connected components with more than one node (Tarjan's algorithm)."""
    index, lowest, stack, found = {}, {}, [], []

    def visit(node):
        index[node] = lowest[node] = len(index)
        stack.append(node)
        for target in sorted(arrows.get(node, ())):
            if target not in index:
                visit(target)
            if target in stack:
                lowest[node] = min(lowest[node], lowest[target])
        if lowest[node] == index[node]:
            part = stack[stack.index(node):]
            del stack[stack.index(node):]
            if len(part) > 1:
                found.append(sorted(part))

    for node in sorted(arrows):
        if node not in index:
            visit(node)
    return found


class IncludeGraph:
    def __init__(self, root, files):
        """Reads the includes of `files`, whose names are relative to `root`. Ignores includes of other files, such as generated
        headers."""
        known = set(files)
        self.files = {name: [header for header in INCLUDE.findall((pathlib.Path(root) / name).read_text(encoding="utf-8"))
                             if header in known] for name in files}
        self.arrows = collections.defaultdict(list)
        for name, headers in self.files.items():
            for header in headers:
                if room_of(name) != room_of(header):
                    self.arrows[room_of(name), room_of(header)].append(f"{name} includes {header}")

    def targets(self):
        rooms = collections.defaultdict(set)
        for room, target in self.arrows:
            rooms[room].add(target)
        return rooms

    def problems(self):
        for room in sorted({room_of(name) for name in self.files} - set(ROOMS)):
            yield f"{room}/ has no place in the order of rooms in tools/include_graph.py"
        for (room, target), includes in sorted(self.arrows.items()):
            if {room, target} <= set(ROOMS) and ROOMS.index(room) < ROOMS.index(target):
                yield from (f"{room} may not include {target}: {include}" for include in includes)
        for part in circles(self.targets()):
            yield f"circle of rooms: {', '.join(part)}"
        for part in circles(self.files):
            yield f"circle of files: {', '.join(part)}"

    def summary(self):
        rooms, files = circles(self.targets()), circles(self.files)
        return f"{len(self.files)} files, {len(self.arrows)} arrows, circles: {len(rooms)} of rooms, {len(files)} of files"

    def text(self):
        """Returns a line for each room with the rooms that it includes, from the highest room to the lowest."""
        targets = self.targets()
        return "\n".join(f"{room}: {' '.join(sorted(targets[room], key=ROOMS.index)) or '-'}" for room in reversed(ROOMS))
