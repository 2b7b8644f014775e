#!/usr/bin/env python3
"""Packs files and folders into a zip archive. The same contents and SOURCE_DATE_EPOCH give the same bytes.

Usage: make_zip.py ARCHIVE FOLDER NAME=PATH...     FOLDER is the archive's only one, NAME is where PATH lies inside it.

SPDX-License-Identifier: GPL-3.0-or-later
"""
import os
import pathlib
import sys
import time
import zipfile

# The time of every file. The files' own times would differ between builds; the default is the earliest in such
# archives.
DATE = max((1980, 1, 1, 0, 0, 0), time.gmtime(int(os.environ.get("SOURCE_DATE_EPOCH", "0")))[:6])


def files_in(name, path):
    """Returns name and path of the file, or of each file in the folder. Exits if there is none."""
    found = [(name, path)] if path.is_file() else [
        (f"{name}/{file.relative_to(path).as_posix()}", file) for file in path.rglob("*") if file.is_file()]
    if not found:
        sys.exit(f"{sys.argv[0]}: {path} holds no file: build the release preset first")
    return found


def contents_of(name, path):
    data = path.read_bytes()
    if "/" not in name and name.endswith(".txt"):  # Read by people, the content's texts by programs.
        data = data.replace(b"\n", b"\r\n")
    return data


def main():
    archive, folder, *pairs = sys.argv[1:]
    entries = []
    for pair in pairs:
        name, _, path = pair.partition("=")
        entries += files_in(name, pathlib.Path(path))
    with zipfile.ZipFile(archive, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as packed:
        for name, path in sorted(entries):
            entry = zipfile.ZipInfo(f"{folder}/{name}", DATE)
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.external_attr = 0o644 << 16
            packed.writestr(entry, contents_of(name, path))


if __name__ == "__main__":
    main()
