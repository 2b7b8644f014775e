#!/usr/bin/env python3
"""Packs PNG files unchanged into a Windows icon.

Usage: make_icon.py ICON PICTURE.png...

SPDX-License-Identifier: GPL-3.0-or-later
"""
import pathlib
import struct
import sys

PNG_SIZE = slice(16, 24)  # Width and height, 32 bits each, the higher byte first.
HEADER, ENTRY = struct.Struct("<HHH"), struct.Struct("<BBBBHHII")
LARGEST = 256  # Its sides are written as 0.


def main():
    icon, *paths = sys.argv[1:]
    pictures = []
    for path in paths:
        data = pathlib.Path(path).read_bytes()
        width, height = struct.unpack(">II", data[PNG_SIZE])
        if max(width, height) <= LARGEST:
            pictures.append((width, height, data))
    pictures.sort(key=lambda picture: picture[0])
    head, offset = HEADER.pack(0, 1, len(pictures)), HEADER.size + ENTRY.size * len(pictures)
    for width, height, data in pictures:
        head += ENTRY.pack(width % LARGEST, height % LARGEST, 0, 0, 1, 32, len(data), offset)
        offset += len(data)
    pathlib.Path(icon).write_bytes(head + b"".join(data for _, _, data in pictures))


if __name__ == "__main__":
    main()
