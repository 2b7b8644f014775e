#!/usr/bin/env python3
"""Compares the linked rooms of each room with those that its files include and with the list in docs/architecture.md.

A room's LINKS must be exactly the rooms that its headers include, and its PRIVATE exactly those that only its sources
include, all of which stand before it. A room that it reaches through another one must be named as well. Of a room with
sub-folders, each may include only those that FOLDERS names before it. The page's table lists the same rooms in this order.
"""
# SPDX-License-Identifier: GPL-3.0-or-later

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)/[^"/]+"', re.MULTILINE)
KEYWORDS = ("FOLDER", "FOLDERS", "FILE_BY_FILE", "COLD", "BUNDLE", "LINKS", "PRIVATE", "EXTERNAL")


class Room:
    """One sivray_room, sivray_module or sivray_program: its folders below src and the rooms that it links."""

    def __init__(self, name, kind, words):
        parts, key = {keyword: [] for keyword in KEYWORDS}, None
        for word in words:
            if word in KEYWORDS:
                key = word
            else:
                parts[key].append(word)
        self.name, self.kind, self.folder = name, kind, parts["FOLDER"][0]
        # The list is from the ground up: the room's own folder may include all others.
        self.folders = [f"{self.folder}/{sub}" for sub in parts["FOLDERS"]] + [self.folder]
        self.links, self.private = set(parts["LINKS"]), set(parts["PRIVATE"])


def read_rooms():
    """Returns the rooms by name. Of two calls with one name (builds with and without the editor), the first counts."""
    text = re.sub(r"#.*", "", (ROOT / "src/CMakeLists.txt").read_text())
    rooms = {}
    for kind, name, words in re.findall(r"sivray_(room|module|program)\((\w+)\s([^()]*)\)", text):
        rooms.setdefault(name, Room(name, kind, words.split()))
    return rooms


def included_folders(files):
    return {folder for file in files for folder in INCLUDE.findall(file.read_text())}


def names(rooms):
    return " ".join(sorted(rooms)) or "nothing"


def check_includes(rooms):
    """Returns one line for each room whose links differ from those that its files need. Skips rooms without files."""
    room_of = {folder: room.name for room in rooms.values() for folder in room.folders}
    for room in rooms.values():
        used = {".h": set(), ".cpp": set()}
        for place, folder in enumerate(room.folders):
            for suffix in used:
                included = included_folders((ROOT / "src" / folder).glob("*" + suffix))
                used[suffix] |= {room_of[f] for f in included if f in room_of}
                for above in sorted(included.intersection(room.folders[place + 1 :])):
                    yield f"src/CMakeLists.txt: {folder} includes {above}, which stands above it"
        links = (used[".h"] if room.kind == "room" else used[".h"] | used[".cpp"]) - {room.name}
        private = used[".cpp"] - links - {room.name}
        if any(used.values()) and (links, private) != (room.links, room.private):
            yield f"src/CMakeLists.txt: {room.name} needs LINKS {names(links)}, PRIVATE {names(private)}"


def check_order(rooms):
    """Returns one line for each room that links a room listed after it."""
    before = set()
    for room in rooms.values():
        for above in sorted((room.links | room.private) - before):
            yield f"src/CMakeLists.txt: {room.name} links {above}, which does not stand before it"
        before.add(room.name)


def check_table(rooms):
    """Returns a line if the rooms, folders or order in the table of rooms differ."""
    text = (ROOT / "docs/architecture.md").read_text()
    table = text[text.index("\n| Room |") :].strip().split("\n\n", 1)[0]
    rows = [re.findall(r"[\w/]+", line)[:2] for line in table.splitlines()[2:]]
    wanted = [[room.name, "src/" + room.folder] for room in rooms.values()]
    for row in [row for row in rows if row not in wanted] + [row for row in wanted if row not in rows]:
        yield f"docs/architecture.md: {row[0]} in {row[1]} stands either in the table or in src/CMakeLists.txt"
    if sorted(rows) == sorted(wanted) and rows != wanted:
        yield "docs/architecture.md: the table has another order than src/CMakeLists.txt: " + " ".join(row[0] for row in wanted)


def main():
    rooms = read_rooms()
    faults = [*check_includes(rooms), *check_order(rooms), *check_table(rooms)]
    print("\n".join(faults) if faults else f"{len(rooms)} rooms link what they include, and the page says so")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
