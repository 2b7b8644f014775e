#!/usr/bin/env python3
"""Makes the display face, a TrueType font, from glyphs drawn as text: '#' is filled, '.' is empty.

The outlines follow the edges of the ink, so that squares which touch show no seam at any size. No time, no machine and no
library goes into the bytes.
"""
# SPDX-License-Identifier: GPL-3.0-or-later
import struct
import sys

FAMILY = "PF Arma Five"
UNIT = 100  # font units per square
ASCENT, DESCENT = 10 * UNIT, 3 * UNIT  # one square is one pixel at height 13
ROWS_ABOVE_BASE = 7
BLANK_WIDTH = 3
RIGHT, DOWN, LEFT, UP = (1, 0), (0, 1), (-1, 0), (0, -1)


def set_above(base, mark):
    """The drawing of a mark over a base. A drawing is its first row's number, 0 being the highest of a capital, and its rows."""
    top, rows = base
    marks = mark[1]
    highest = next(y for y, row in enumerate(rows) if "#" in row) + top
    first = max(highest - 1 - len(marks), ROWS_ABOVE_BASE - ASCENT // UNIT)
    width = max(len(rows[0]), len(marks[0]))
    lines = {}
    for start, part in ((top, rows), (first, marks)):
        left = (width - len(part[0])) // 2
        for y, row in enumerate(part):
            lines.setdefault(start + y, set()).update(left + x for x, cell in enumerate(row) if cell == "#")
    return first, ["".join(".#"[x in lines.get(y, ())] for x in range(width)) for y in range(first, max(lines) + 1)]


def read_glyphs(path):
    """Maps each character to its drawing; a comment begins with ';' and a blank, and words name parts of other glyphs."""
    drawings = {" ": (0, ["." * BLANK_WIDTH])}
    for line in open(path, encoding="utf-8"):
        fields = line.rstrip("\n").split(" ")
        if len(fields) < 2 or (fields[0] == ";" and fields[1][0] not in ".#"):
            continue
        if fields[1] == "=" and len(fields) == 4:
            drawings[fields[0]] = set_above(drawings[fields[2]], drawings[fields[3]])
        else:
            drawings[fields[0]] = (0, fields[1:])
    drawings["\N{NO-BREAK SPACE}"] = drawings[" "]
    return {name: drawing for name, drawing in drawings.items() if len(name) == 1}


def outlines(drawing):
    """Returns the closed outlines of the filled squares, which are to their right, as corners in font units, y upwards."""
    top, rows = drawing
    ink = {(x, top + y) for y, row in enumerate(rows) for x, cell in enumerate(row) if cell == "#"}
    edges = {}
    for x, y in sorted(ink, key=lambda cell: (cell[1], cell[0])):
        for beside, start, way in (((x, y - 1), (x, y), RIGHT), ((x + 1, y), (x + 1, y), DOWN),
                                   ((x, y + 1), (x + 1, y + 1), LEFT), ((x - 1, y), (x, y + 1), UP)):
            if beside not in ink:
                edges.setdefault(start, []).append(way)
    found = []
    while edges:
        start = at = next(iter(edges))
        way, corners = None, []
        while at != start or way is None:
            ways = edges[at]
            # Where two squares touch only at a corner, the line turns right and stays with its own square.
            right = (-way[1], way[0]) if way else None
            chosen = right if right in ways else ways[0]
            ways.remove(chosen)
            if not ways:
                del edges[at]
            if chosen != way:
                corners.append(at)
            way, at = chosen, (at[0] + chosen[0], at[1] + chosen[1])
        found.append([(x * UNIT, (ROWS_ABOVE_BASE - y) * UNIT) for x, y in corners])
    return found


def glyph_record(contours):
    if not contours:
        return b""
    points = [point for contour in contours for point in contour]
    xs, ys = [x for x, _ in points], [y for _, y in points]
    ends, last = [], -1
    for contour in contours:
        last += len(contour)
        ends.append(last)
    record = struct.pack(">5h", len(contours), min(xs), min(ys), max(xs), max(ys))
    record += struct.pack(f">{len(ends)}HH", *ends, 0) + b"\x01" * len(points)
    for values in (xs, ys):
        record += struct.pack(f">{len(values)}h", *(b - a for a, b in zip([0] + values, values)))
    return record + b"\0" * (-len(record) % 4)


def character_map(codes):
    """A format 4 subtable with one segment per character; glyph 0 is the missing glyph."""
    count = len(codes) + 1
    power = 1 << (count.bit_length() - 1)
    ends = codes + [0xFFFF]
    deltas = [(glyph + 1 - code) & 0xFFFF for glyph, code in enumerate(codes)] + [1]
    body = struct.pack(">4H", count * 2, power * 2, power.bit_length() - 1, (count - power) * 2)
    body += struct.pack(f">{count}HH{count}H{count}H{count}H", *ends, 0, *ends, *deltas, *([0] * count))
    return struct.pack(">4HL3H", 0, 1, 3, 1, 12, 4, 6 + len(body), 0) + body


def name_table():
    texts = {1: FAMILY, 2: "Regular", 4: FAMILY, 6: FAMILY.replace(" ", "")}
    records, strings = b"", b""
    for key, text in texts.items():
        data = text.encode("utf-16-be")
        records += struct.pack(">6H", 3, 1, 0x409, key, len(data), len(strings))
        strings += data
    return struct.pack(">3H", 0, len(texts), 6 + len(records)) + records + strings


def checksum(data):
    data += b"\0" * (-len(data) % 4)
    return sum(struct.unpack(f">{len(data) // 4}L", data)) & 0xFFFFFFFF


def font(glyphs):
    characters = sorted(glyphs)
    drawings = [outlines((0, ["####"] * ROWS_ABOVE_BASE))] + [outlines(glyphs[c]) for c in characters]
    advances = [5 * UNIT] + [(len(glyphs[c][1][0]) + 1) * UNIT for c in characters]
    bearings = [min((x for contour in d for x, _ in contour), default=0) for d in drawings]
    records = [glyph_record(d) for d in drawings]
    offsets = [sum(len(r) for r in records[:i]) for i in range(len(records) + 1)]
    corners = [point for d in drawings for contour in d for point in contour]
    box = [min(x for x, _ in corners), min(y for _, y in corners), max(x for x, _ in corners), max(y for _, y in corners)]
    points = max(sum(len(c) for c in d) for d in drawings)
    codes, em, count = [ord(c) for c in characters], ASCENT + DESCENT, len(records)
    tables = {
        b"OS/2": struct.pack(">HhHHH11h10s4L4s3H3h2H2L2h3H", 3, sum(advances) // count, 400, 5, 0, *([0] * 11),
                             bytes([2, 0, 5, 9, 0, 0, 0, 0, 0, 0]), 3, 0, 0, 0, b"TESH", 0x40, codes[0], codes[-1],
                             ASCENT, -DESCENT, 0, ASCENT, DESCENT, 1, 0, 5 * UNIT, ROWS_ABOVE_BASE * UNIT, 0, 32, 0),
        b"cmap": character_map(codes),
        b"glyf": b"".join(records),
        b"head": struct.pack(">LLLLHHqq4hHHhhh", 0x10000, 0x10000, 0, 0x5F0F3CF5, 3, em, 0, 0, *box, 0, 13, 2, 1, 0),
        b"hhea": struct.pack(">L3hH11hH", 0x10000, ASCENT, -DESCENT, 0, max(advances), min(bearings), 0, box[2], 1, 0,
                             0, 0, 0, 0, 0, 0, count),
        b"hmtx": b"".join(struct.pack(">Hh", a, b) for a, b in zip(advances, bearings)),
        b"loca": struct.pack(f">{len(offsets)}L", *offsets),
        b"maxp": struct.pack(">L14H", 0x10000, count, points, max(len(d) for d in drawings), 0, 0, 1, 0, 0, 0, 0, 0, 0, 0,
                             0),
        b"name": name_table(),
        b"post": struct.pack(">LLhhLLLLL", 0x30000, 0, -UNIT, UNIT, 0, 0, 0, 0, 0),
    }
    power = 1 << (len(tables).bit_length() - 1)
    head = struct.pack(">L4H", 0x10000, len(tables), power * 16, power.bit_length() - 1, (len(tables) - power) * 16)
    body, start = b"", len(head) + 16 * len(tables)
    for tag, data in sorted(tables.items()):
        head += struct.pack(">4sLLL", tag, checksum(data), start + len(body), len(data))
        body += data + b"\0" * (-len(data) % 4)
    whole = bytearray(head + body)
    adjustment = whole.index(struct.pack(">L", 0x5F0F3CF5)) - 4
    struct.pack_into(">L", whole, adjustment, (0xB1B0AFBA - checksum(bytes(whole))) & 0xFFFFFFFF)
    return bytes(whole)


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit("usage: display_face.py GLYPHS.txt FONT.ttf")
    with open(sys.argv[2], "wb") as out:
        out.write(font(read_glyphs(sys.argv[1])))
