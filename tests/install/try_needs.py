#!/usr/bin/env python3
"""Checks that the installed libraries and programs run on all systems in the README and export no internal names.

Usage: try_needs.py FOLDER...

Reads each binary below the folders with objdump and nm. Fails on a library that not every supported system has, on a version of one
that is too new, and on a library for hosts that exports more than its entry points.
"""
# SPDX-License-Identifier: GPL-3.0-or-later

import pathlib
import re
import subprocess
import sys

# Libraries with the same name and the functions that we call on Ubuntu 22.04, Debian 12 and later, Fedora and Arch.
EVERYWHERE = {"libc.so.6", "libm.so.6", "libX11.so.6", "libfreetype.so.6", "libpng16.so.16", "libz.so.1"}
LOADER = re.compile(r"ld-linux-.*\.so\.\d")
OF_ONE = {
    "sivray": {"libasound.so.2"},
    "sivray-content": {"libebur128.so.1", "libsndfile.so.1"},
}
# The newest symbol version of each library on the oldest of these systems. Libraries without versions are not listed.
NEWEST = {"GLIBC": (2, 35), "PNG16": (0,), "ALSA": (0, 9, 0), "ZLIB": (1, 2, 9), "libsndfile.so": (1, 0)}

ENTRIES = {
    "vst/Sivray.so": {"VSTPluginMain", "createVstPlugin"},
    ".vst3": {"GetPluginFactory", "ModuleEntry", "ModuleExit"},
    ".lv2": {"lv2_descriptor", "lv2ui_descriptor"},
    ".clap": {"clap_entry"},
}


def said_by(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def is_binary(path):
    if path.is_symlink() or not path.is_file():
        return False
    with path.open("rb") as file:
        return file.read(4) == b"\x7fELF"


def is_too_new(version):
    match = re.fullmatch(r"(.+?)[_.]([0-9.]+)(rc\d+)?", version)
    return not match or match[1] not in NEWEST or tuple(map(int, match[2].split("."))) > NEWEST[match[1]]


def faults(path):
    head = said_by("objdump", "--private-headers", path)
    for library in re.findall(r"^ +NEEDED +(\S+)", head, re.MULTILINE):
        if library not in EVERYWHERE | OF_ONE.get(path.name, set()) and not LOADER.fullmatch(library):
            yield f"needs {library}"
    references = head.partition("Version References:")[2]
    for version in re.findall(r"0x[0-9a-f]+ 0x[0-9a-f]+ \d+ (\S+)", references):
        if is_too_new(version):
            yield f"needs version {version}"
    for part, entries in ENTRIES.items():
        if re.search(r"\.(so|clap)$", path.name) and part in str(path):
            exported = {line.split()[0] for line in said_by("nm", "-D", "--defined-only", "-P", path).splitlines()}
            if exported != entries:
                yield f"exports {', '.join(sorted(exported))}"


def main():
    binaries = sorted(path for folder in sys.argv[1:] for path in pathlib.Path(folder).rglob("*") if is_binary(path))
    found = [f"{path}: {fault}" for path in binaries for fault in faults(path)]
    kinds = sum(any(part in str(path) for path in binaries) for part in ENTRIES)
    if kinds != len(ENTRIES):
        found.append(f"of {len(ENTRIES)} plug-ins {kinds} were found below {' '.join(sys.argv[1:])}")
    print("\n".join(found) or f"{len(binaries)} binaries need nothing that a supported system may lack")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
