#!/usr/bin/env python3
"""Makes the two pages that the panel's guide opens: the manual with pictures of the real panel, and the
acknowledgements with the whole texts of the licences.

Usage: make_manual.py RENDERER OUTPUT_FOLDER

RENDERER is sivray-render; it draws the pictures from the content that BRAMEL_COMMON_FILES names.
"""
# SPDX-License-Identifier: GPL-3.0-or-later
import html
import pathlib
import shutil
import subprocess
import sys

import markdown

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
KIT = ["--program", "Deep House"]

# The pictures by name, with what the renderer is told.
PICTURES = {
    "sound": ["--lit", "1", "--lit", "7"],
    "character": ["--page", "character"],
    "mix": ["--page", "mix"],
    "samples": ["--open", "samples=7"],
    "effects": ["--open", "effects"],
    "programs": ["--open", "programs"],
    "save-as": ["--open", "save-as"],
    "settings": ["--open", "settings"],
}

# The notices of all that is compiled in, and the licences whose whole text is not among them.
LICENCES = {
    "Notices": "packaging/copyright",
    "Apache License 2.0": "resources/fonts/roboto/LICENSE.txt",
    "GNU General Public License": "LICENSE",
}

PAGE = """<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<title>{title}</title>
<style>{style}</style>
</head>
<body>
{body}
</body>
</html>
"""


def draw_pictures(renderer, folder):
    folder.mkdir(parents=True, exist_ok=True)
    for name, options in PICTURES.items():
        picture = folder / f"{name}.png"
        subprocess.run([renderer, "--panel", str(picture), *KIT, *options], check=True)


def page(text, title):
    body = markdown.markdown(text, extensions=["tables"], output_format="html5")
    style = (pathlib.Path(__file__).parent / "manual.css").read_text(encoding="utf-8")
    return PAGE.format(title=html.escape(title), style=style, body=body)


def licences():
    for name, path in LICENCES.items():
        text = (ROOT / path).read_text(encoding="utf-8", errors="replace")
        yield f"\n## {name}\n\n<pre>{html.escape(text)}</pre>\n"


def main():
    renderer, output = sys.argv[1], pathlib.Path(sys.argv[2])
    draw_pictures(renderer, output / "panel")
    shutil.copy(ROOT / "docs/panel/similar.png", output / "panel")  # A menu, which the renderer does not draw.
    manual = (ROOT / "docs/panel.md").read_text(encoding="utf-8")
    (output / "manual.html").write_text(page(manual, "Sivray"), encoding="utf-8")
    thanks = (ROOT / "docs/acknowledgements.md").read_text(encoding="utf-8") + "".join(licences())
    (output / "acknowledgements.html").write_text(page(thanks, "Sivray: acknowledgements"), encoding="utf-8")


if __name__ == "__main__":
    main()
