#!/usr/bin/env python3
"""Packs files and folders into a zip archive, the same bytes for the same contents.

Usage: make_zip.py ARCHIVE FOLDER NAME=PATH...     FOLDER is the archive's only one, NAME is where PATH lies inside it.

SPDX-License-Identifier: GPL-3.0-or-later
"""
import pathlib
import sys
import zipfile

DATE = (2020, 1, 1, 0, 0, 0)  # Of every file: that of the build would differ.


def files_in(name, path):
    if path.is_file():
        return [(name, path)]
    return [(f"{name}/{file.relative_to(path).as_posix()}", file) for file in path.rglob("*") if file.is_file()]


def main():
    archive, folder, *pairs = sys.argv[1:]
    entries = []
    for pair in pairs:
        name, _, path = pair.partition("=")
        found = files_in(name, pathlib.Path(path))
        if not found:
            sys.exit(f"make_zip: {path} holds no file: build the release preset first")
        entries += found
    with zipfile.ZipFile(archive, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as packed:
        for name, path in sorted(entries):
            data = path.read_bytes()
            if "/" not in name and name.endswith(".txt"):  # Read by people, the content's texts by programs.
                data = data.replace(b"\n", b"\r\n")
            entry = zipfile.ZipInfo(f"{folder}/{name}", DATE)
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.external_attr = 0o644 << 16
            packed.writestr(entry, data)


if __name__ == "__main__":
    main()
