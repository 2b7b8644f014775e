#!/usr/bin/env python3
"""Compares the rooms that each room links, those that its files include, and those that docs/architecture.md lists.

A room's LINKS must be exactly the rooms that its headers include, and its PRIVATE exactly those that only its sources
include. A room that it reaches through another one must be named as well. The last two columns of the page's table must
name the same rooms; a row like `effects_*` speaks for every room of that pattern that has no row of its own.
"""
# SPDX-License-Identifier: GPL-3.0-or-later

import fnmatch
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)/[^"/]+"', re.MULTILINE)
KEYWORDS = ("FOLDER", "FILE_BY_FILE", "BUNDLE", "LINKS", "PRIVATE", "EXTERNAL")


class Room:
    """One sivray_room, sivray_module or sivray_program: its folder below src and the rooms that it links."""

    def __init__(self, name, words):
        parts, key = {keyword: [] for keyword in KEYWORDS}, None
        for word in words:
            if word in KEYWORDS:
                key = word
            else:
                parts[key].append(word)
        self.name, self.folder = name, parts["FOLDER"][0]
        self.links, self.private = set(parts["LINKS"]), set(parts["PRIVATE"])


def read_rooms():
    text = re.sub(r"#.*", "", (ROOT / "src/CMakeLists.txt").read_text())
    calls = re.findall(r"sivray_(room|module|program)\((\w+)\s([^()]*)\)", text)
    return {name: (kind, Room(name, words.split())) for kind, name, words in calls}


def included_folders(files):
    return {folder for file in files for folder in INCLUDE.findall(file.read_text())}


def names(rooms):
    return " ".join(sorted(rooms)) or "nothing"


def check_includes(rooms):
    """One line for each room whose links are not those that its files need. Rooms without files are skipped."""
    room_of = {room.folder: name for name, (_, room) in rooms.items()}
    for name, (kind, room) in rooms.items():
        folder = ROOT / "src" / room.folder
        files = {suffix: sorted(folder.glob("*" + suffix)) for suffix in (".h", ".cpp")}
        used = {suffix: {room_of[f] for f in included_folders(files[suffix]) if f in room_of} for suffix in files}
        links = (used[".h"] if kind == "room" else used[".h"] | used[".cpp"]) - {name}
        private = used[".cpp"] - links - {name}
        if any(files.values()) and (links, private) != (room.links, room.private):
            yield f"src/CMakeLists.txt: {name} needs LINKS {names(links)}, PRIVATE {names(private)}"


def read_table():
    """The rows of the table of rooms: name or pattern, folder, public and private links."""
    text = (ROOT / "docs/architecture.md").read_text()
    table = text[text.index("\n| Room |") :].strip().split("\n\n", 1)[0]
    for line in table.splitlines()[2:]:
        cells = [cell.strip() for cell in line.strip("|").split("|")]
        yield cells[0], cells[1].strip("`"), *(set(re.findall(r"[\w*]+", cell)) for cell in cells[3:5])


def check_table(rooms):
    """One line for each row that is missing, left over, or wrong."""
    rows = list(read_table())
    plain = {row[0] for row in rows}
    covered = set()

    def spoken_for(pattern):
        return {name for name in fnmatch.filter(rooms, pattern) if name == pattern or name not in plain}

    for pattern, folder, *columns in rows:
        matches = spoken_for(pattern)
        covered |= matches
        if not matches:
            yield f"docs/architecture.md: there is no room {pattern}"
        for name in matches:
            room = rooms[name][1]
            if not fnmatch.fnmatch("src/" + room.folder, re.sub("<.*>", "*", folder)):
                yield f"docs/architecture.md: {name} is in src/{room.folder}"
            said = [set().union(*(spoken_for(word) or {word} for word in column)) for column in columns]
            if said != [room.links, room.private]:
                yield f"docs/architecture.md: {name} has LINKS {names(room.links)}, PRIVATE {names(room.private)}"
    for name in sorted(set(rooms) - covered):
        yield f"docs/architecture.md: the table has no row for {name}"


def main():
    rooms = read_rooms()
    faults = [*check_includes(rooms), *check_table(rooms)]
    print("\n".join(faults) if faults else f"{len(rooms)} rooms link what they include, and the page says so")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
