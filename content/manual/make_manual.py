#!/usr/bin/env python3
"""Makes the pages that the panel's guide opens: the manual with pictures of the real panel and the pages that it links
to, and the acknowledgements with the whole texts of the licences.

Usage: make_manual.py RENDERER OUTPUT_FOLDER

RENDERER is sivray-render; it draws the pictures from the content that BRAMEL_COMMON_FILES names.
"""
# SPDX-License-Identifier: GPL-3.0-or-later
import html
import pathlib
import re
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

# The pages of docs/ that become pages of the manual: their files and their titles.
PAGES = {
    "panel.md": ("manual.html", "Sivray"),
    "standalone.md": ("standalone.html", "Sivray: the program"),
    "content.md": ("content.html", "Sivray: sounds and kits"),
    "renderer.md": ("renderer.html", "Sivray: the renderer"),
    "hosts.md": ("hosts.html", "Sivray: hosts"),
}

# Pictures that the renderer cannot draw: a menu, and the program's window.
COPIED = ["panel/similar.png", "standalone.png", "standalone-drop.png", "standalone-dropped.png"]

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


def link(match):
    """The link to the page that a page of docs/ has become; its text alone if it has become none, as pages about the code."""
    address, anchor, text = match.groups(default="")
    if not address.endswith(".md"):
        return match[0]
    name, _ = PAGES.get(address, (None, None))
    return text if name is None else f'<a href="{name}{anchor}">{text}</a>'


def page(text, title):
    body = markdown.markdown(text, extensions=["fenced_code", "tables", "toc"], output_format="html5")
    body = body.replace("\\|", "|")  # In a table's code, where Markdown needs the backslash.
    body = re.sub(r'<a href="([^"#]*)(#[^"]*)?">(.*?)</a>', link, body, flags=re.DOTALL)
    style = (pathlib.Path(__file__).parent / "manual.css").read_text(encoding="utf-8")
    return PAGE.format(title=html.escape(title), style=style, body=body)


def licences():
    yield (
        "\nThe notices and licences of everything that is contained in Sivray's files follow. libpng, FreeType, libsndfile, "
        "libebur128 and, on Linux, zlib are not contained in them: they belong to the system.\n"
    )
    for name, path in LICENCES.items():
        text = (ROOT / path).read_text(encoding="utf-8", errors="replace")
        yield f"\n## {name}\n\n<pre>{html.escape(text)}</pre>\n"


def main():
    renderer, output = sys.argv[1], pathlib.Path(sys.argv[2])
    draw_pictures(renderer, output / "panel")
    for name in COPIED:
        shutil.copy(ROOT / "docs" / name, output / name)
    for source, (name, title) in PAGES.items():
        text = (ROOT / "docs" / source).read_text(encoding="utf-8")
        (output / name).write_text(page(text, title), encoding="utf-8")
    thanks = (ROOT / "docs/acknowledgements.md").read_text(encoding="utf-8") + "".join(licences())
    (output / "acknowledgements.html").write_text(page(thanks, "Sivray: acknowledgements"), encoding="utf-8")


if __name__ == "__main__":
    main()
