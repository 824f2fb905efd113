"""The arrows between the rooms of the source tree, computed from the includes."""

import collections
import pathlib
import re

# From the bottom up: a file includes files of its own room and of the rooms before it. docs/ARCHITECTURE.md explains it.
ROOMS = ("platform/base", "platform/bus", "platform/preferences", "platform/capture", "platform/desktop", "platform/power",
         "platform/sheets", "platform/updates", "platform", "logging", "widgets", "agent", "settings", "cameras", "preview",
         "about", "maintenance", "pane", "hosts", "simulator", "agent_check", "tests", "fuzz", "bench")
# Includes nothing, so every room may include it.
BASE = ("platform/QtCompat.h",)
INCLUDE = re.compile(r'^#\s*include "([^"]+)"', re.MULTILINE)


def room_of(name):
    """The folder of a file; in platform/ the folder below it. The controller's chapters belong to pane/ wherever they stand."""
    folders = name.split("/")[:-1] or ["."]
    if name in BASE:
        return "platform/base"
    if re.fullmatch(r"\w+/Controller\w+\.cpp", name):
        return "pane"
    return "/".join(folders[:2]) if folders[0] == "platform" else folders[0]


def circles(arrows):
    """The strongly connected parts of a graph that have more than one node (Tarjan's algorithm)."""
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
        """Reads the includes of `files`, named from `root`. Generated headers are not among them and are left out."""
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
        """One line for each room, from the top down, with the rooms that it includes."""
        targets = self.targets()
        return "\n".join(f"{room}: {' '.join(sorted(targets[room], key=ROOMS.index)) or '-'}" for room in reversed(ROOMS))
