#!/usr/bin/env python3
"""Repeats the build's commands that start the instrument with an empty home folder, and expects that it stays empty.

Usage: try_home.py BUILD_FOLDER. The commands make again what is there, so that no other test may run meanwhile.
"""
# SPDX-License-Identifier: GPL-3.0-or-later

import os
import pathlib
import subprocess
import sys
import tempfile

BUILD = pathlib.Path(sys.argv[1]).resolve()
STARTERS = ("juce_lv2_helper", "--save-kits")


def main():
    commands = subprocess.run(["ninja", "-C", BUILD, "-t", "commands", "content", "forms"], check=True, text=True, stdout=subprocess.PIPE)
    tried = [line for line in commands.stdout.splitlines() if any(starter in line for starter in STARTERS)]
    if len(tried) != len(STARTERS):
        print(f"WRONG: {len(tried)} commands start the instrument, {len(STARTERS)} are known")
        return 1
    with tempfile.TemporaryDirectory() as home:
        environment = {name: value for name, value in os.environ.items() if not name.startswith(("BRAMEL_", "XDG_"))}
        for command in tried:
            subprocess.run(command, shell=True, check=True, cwd=BUILD, env={**environment, "HOME": home}, stdout=subprocess.DEVNULL)
        left = sorted(str(path) for path in pathlib.Path(home).rglob("*") if ".cache" not in path.parts)
    print(f"In the home: {left}" if left else "The home is empty")
    return 1 if left else 0


if __name__ == "__main__":
    sys.exit(main())
