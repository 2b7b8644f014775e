#!/usr/bin/env python3
"""Makes the Windows installer from Sivray.nsi and the files of each component. The same contents give the same bytes.

Usage: make_setup.py INSTALLER VERSION ICON [--quick] COMPONENT:NAME=PATH...
NAME is where PATH, a file or a folder, lies in the component's folder. --quick packs in a few seconds, into a larger file.

SPDX-License-Identifier: GPL-3.0-or-later
"""
import pathlib
import struct
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent))
from make_zip import contents_of, files_in  # noqa: E402


def escaped(text):
    return str(text).replace("$", "$$").replace("/", "\\")


def install_macro(component, files):
    """Sorted by folder, because each File command writes into the folder of the last SetOutPath."""
    lines, last = [f"!macro Install_{component} base"], None
    for name, source in files:
        folder, _, file = name.rpartition("/")
        if folder != last:
            lines.append(f'  SetOutPath "${{base}}\\{escaped(folder)}"'.replace('\\"', '"'))
            last = folder
        lines.append(f'  File "/oname={escaped(file)}" "{str(source).replace("$", "$$")}"')
    return lines + ["!macroend"]


def remove_macro(component, files):
    lines = [f"!macro Remove_{component} base"]
    lines += [f'  Delete "${{base}}\\{escaped(name)}"' for name, _ in files]
    folders = {parent for name, _ in files for parent in pathlib.PurePosixPath(name).parents} - {pathlib.PurePosixPath(".")}
    lines += [f'  RMDir "${{base}}\\{escaped(folder)}"' for folder in sorted(folders, reverse=True)]
    return lines + ["!macroend"]


def side_picture():
    """The picture on the first and the last page, a Windows bitmap: the panel's blue, with a lit pad as in the icon."""
    width, height = 164, 314
    night, cobalt, lit = (18, 20, 62), (42, 48, 166), (255, 196, 32)
    pad_x, pad_y = range(52, 112), range(70, 130)
    rows = bytearray()
    for y in reversed(range(height)):  # The lowest row comes first.
        ground = [low + (high - low) * y // height for low, high in zip(night, cobalt)]
        for x in range(width):
            rows += bytes(reversed(lit if x in pad_x and y in pad_y else ground))
    header = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, len(rows), 0, 0, 0, 0)
    return struct.pack("<2sIII", b"BM", 14 + len(header) + len(rows), 0, 14 + len(header)) + header + rows


def main():
    installer, version, icon, *pairs = sys.argv[1:]
    quick = ["-DQUICK"] if "--quick" in pairs else []
    components = {}
    with tempfile.TemporaryDirectory() as folder:
        copies = pathlib.Path(folder)
        for pair in pairs:
            if pair == "--quick":
                continue
            component, _, rest = pair.partition(":")
            name, _, path = rest.partition("=")
            for entry, source in files_in(name, pathlib.Path(path).resolve()):
                data = contents_of(entry, source)
                if data != source.read_bytes():
                    source = copies / entry
                    source.write_bytes(data)
                components.setdefault(component, []).append((entry, source))
        lines = []
        for component, files in components.items():
            files.sort(key=lambda file: file[0].rpartition("/"))
            lines += install_macro(component, files) + remove_macro(component, files)
        pathlib.Path(installer).parent.mkdir(exist_ok=True)
        picture = copies / "side.bmp"
        picture.write_bytes(side_picture())
        script = copies / "files.nsh"
        script.write_text("\n".join(lines) + "\n", encoding="utf-8")
        subprocess.run(["makensis", "-V2", "-WX", "-INPUTCHARSET", "UTF8", f"-DVERSION={version}", f"-DICON={icon}",
                        f"-DPICTURE={picture}", f"-DOUT={installer}", f"-DFILES={script}", *quick, HERE / "Sivray.nsi"],
                       check=True)


if __name__ == "__main__":
    main()
