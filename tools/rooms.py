#!/usr/bin/env python3
"""Checks who includes whom: a room sees itself and the rooms below it.

    tools/rooms.py [FOLDER]   the checkout, by default the one this file lies in

Prints each #include that runs another way. Exit status: 0 when there is none.
"""
import pathlib
import re
import sys

# From the cellar up. Rooms of one floor do not see each other.
FLOORS = (
    ("core",),
    ("z80", "display", "cards", "sound", "tape", "devtools"),  # devices: their own records only
    ("machine",),
    ("loop", "media", "typing"),
    ("forms", "sound/sdl"),  # the engine ends with forms; sdl is one program's sound device
    ("script", "desktop", "companion", "testkit"),
    ("bench", "fuzz"),
)
# The one pair that sees each other: the forms' records are part of the machine.
UPWARDS = {"machine/Machine.h": "forms"}
# A room's tests, in its folder "test", see everything; nothing else sees a test but the benchmarks, which
# measure the plain models of the tests beside the real thing.
TEST = "test"
SEES_TESTS = "bench"

FLOOR_OF = {room: floor for floor, rooms in enumerate(FLOORS) for room in rooms}
INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"')


def room_of(file):
    """The room in whose folder the file lies, or in a folder inside it; None for a stranger."""
    inside = [room for room in FLOOR_OF if file.startswith(room + "/")]
    return max(inside, key=len, default=None)


def is_test(file):
    return TEST in pathlib.PurePath(file).parts


def fault_of(file, included):
    """What is wrong with this file's including that one, or None."""
    if is_test(file):
        return None
    here, there = room_of(file), room_of(included)
    if here is None:
        return "its folder is no room of tools/rooms.py"
    if there is None:
        return "is no file of a room"
    if is_test(included) and here != SEES_TESTS:
        return "only tests see tests"
    if here == there or FLOOR_OF[there] < FLOOR_OF[here] or UPWARDS.get(file) == there:
        return None
    return f"{here} does not see {there}"


def main():
    root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).parents[1]).resolve()
    sources = [
        path.relative_to(root).as_posix()
        for pattern in ("*/**/*.h", "*/**/*.cpp")
        for path in root.glob(pattern)
        if path.relative_to(root).parts[0] not in ("build", ".git")
    ]
    faults = 0
    for file in sorted(sources):
        for number, line in enumerate((root / file).read_text().splitlines(), 1):
            include = INCLUDE.match(line)
            fault = fault_of(file, include[1]) if include else None
            if fault:
                print(f'{file}:{number}: "{include[1]}": {fault}')
                faults += 1
    print(f"rooms: {len(sources)} files, {faults} includes that run the wrong way")
    return 1 if faults or not sources else 0


sys.exit(main())
