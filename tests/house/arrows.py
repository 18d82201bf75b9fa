#!/usr/bin/env python3
"""Checks every #include of the tree against the rooms file.

Usage: arrows.py TREE [--table]

Reads TREE/tests/house/rooms.txt. Names each include that no arrow allows, each quoted include that is
no file of the tree, each source that is in no room, and exits 1 when there are any. Checks as well that
TREE/CONTRIBUTING.md shows the rooms; --table prints the lines that it has to show, and nothing else.
"""
import fnmatch
import pathlib
import re
import sys

ROOMS = "tests/house/rooms.txt"
PAGE = "CONTRIBUTING.md"
SOURCE_SUFFIXES = {".h", ".cpp", ".c", ".inc"}
SOURCE_FOLDERS = ["bench", "client", "default", "host", "platform", "tests", "tools"]
# Where an include is looked for after the folder of its source and those above it; the build has the
# same folders on its include paths.
INCLUDE_FOLDERS = ["default", "client/include", "client/src", "host", "host/hidl", "host/platform/include",
                   "platform", "tools", "tests/unit", "tests/unit/hidl", "tests/unit/service", "tests/unit/television"]
# What the build generates, by the beginnings of its names, and the room that it stands for.
GENERATED = {"vendor/corvanta/": "interfaces", "android/hidl/base/": "hidl", "qortv/test/": "tests/hidl",
             "callback_overrides.inc": "interfaces", "config_items.inc": "television/settings",
             "configuration_keys.inc": "client/source"}
INCLUDE = re.compile(r'\s*#\s*include\s*([<"])([^>"]+)[>"]')


class Room:
    def __init__(self, name, places, arrows):
        self.name, self.places, self.arrows = name, places, arrows
        self.allowed = set()

    def specificity(self, path):
        """How well the room fits a path: length of its longest place that matches, 0 for none."""
        return max((len(place) for place in self.places
                    if path.startswith(place + "/") or fnmatch.fnmatchcase(path, place)), default=0)


def read_rooms(path):
    rooms = {}
    for number, line in enumerate(path.read_text().splitlines(), 1):
        line = line.split("#")[0].strip()
        if not line:
            continue
        left, arrow, right = line.partition("->")
        name, *places = left.split()
        if not arrow or not places:
            sys.exit(f"{path}:{number}: not a room: {line}")
        rooms[name] = Room(name, places, right.split())

    def resolve(room, walked):
        for arrow in room.arrows:
            name = arrow.rstrip("+")
            if name not in rooms:
                sys.exit(f"{path}: {room.name} may include {name}, which is no room")
            yield name
            if arrow.endswith("+") and name not in walked:
                yield from resolve(rooms[name], walked | {name})

    for room in rooms.values():
        room.allowed = {room.name, *resolve(room, set())}
    return rooms


def room_of(rooms, path):
    best = max(rooms.values(), key=lambda room: room.specificity(path))
    return best if best.specificity(path) else None


def target_of(tree, source, name):
    above = [folder for folder in source.parents if folder != tree and tree in folder.parents]
    for folder in [*above, *(tree / folder for folder in INCLUDE_FOLDERS)]:
        target = (folder / name)
        if target.is_file():
            return target.resolve().relative_to(tree).as_posix()
    return None


def faults(tree, rooms):
    for folder in SOURCE_FOLDERS:
        for source in sorted((tree / folder).rglob("*")):
            if source.suffix not in SOURCE_SUFFIXES or not source.is_file():
                continue
            path = source.relative_to(tree).as_posix()
            room = room_of(rooms, path)
            if room is None:
                yield f"{path}: is in no room of {ROOMS}"
                continue
            for number, line in enumerate(source.read_text().splitlines(), 1):
                match = INCLUDE.match(line)
                if not match:
                    continue
                quoted, name = match[1] == '"', match[2]
                generated = next((r for start, r in GENERATED.items() if name.startswith(start)), None)
                target = target_of(tree, source, name)
                if target is None and generated is None:
                    if quoted:
                        yield f"{path}:{number}: {name} is no file of the tree"
                    continue
                other = generated or getattr(room_of(rooms, target), "name", None)
                if other not in room.allowed:
                    yield f"{path}:{number}: {room.name} -> {other} is no arrow ({name})"


def table(rooms):
    lines = ["| Room | Where | May include |", "|---|---|---|"]
    for room in rooms.values():
        places = ", ".join(f"`{place}`" for place in room.places)
        arrows = ", ".join(room.arrows) or "nothing"
        lines.append(f"| {room.name} | {places} | {arrows} |")
    return "\n".join(lines)


def main():
    arguments = [a for a in sys.argv[1:] if a != "--table"]
    if len(arguments) != 1:
        sys.exit(__doc__)
    tree = pathlib.Path(arguments[0]).resolve()
    rooms = read_rooms(tree / ROOMS)
    if "--table" in sys.argv:
        print(table(rooms))
        return
    found = list(faults(tree, rooms))
    if table(rooms) not in (tree / PAGE).read_text():
        found.append(f"{PAGE}: does not show the table of rooms as it is (arrows.py TREE --table prints it)")
    for fault in found:
        print(fault)
    if found:
        sys.exit(f"arrows.py: {len(found)} faults")
    print("every include follows an arrow")


if __name__ == "__main__":
    main()
