#!/usr/bin/env python3
"""Runs clang-tidy over our own source files, several at a time, with the commands of one build folder.

The folder must be configured for Clang and without unity builds, as the preset `lint` does; it need not be built.

A file is skipped if its text, headers, flags and configuration have passed before: the hashes of passed files are kept in
$SIVRAY_TIDY_CACHE (default ~/.cache/sivray-tidy).

Usage: tidy.py BUILD_FOLDER [PATH_PREFIX...]
"""
# SPDX-License-Identifier: GPL-3.0-or-later
import concurrent.futures
import hashlib
import json
import os
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
TIDY = "clang-tidy-14"
CACHE = pathlib.Path(os.environ.get("SIVRAY_TIDY_CACHE", pathlib.Path.home() / ".cache" / "sivray-tidy"))
INCLUDE = re.compile(rb'^\s*#\s*include\s+"([^"]+)"', re.M)
ROOTS = [ROOT / "src", ROOT / "tools", ROOT / "tests", ROOT / "bench", ROOT / "tools" / "content", ROOT / "tools" / "render"]


def closure(path, seen):
    """Adds to `seen` the texts of `path` and of all our own headers that it includes, directly or not."""
    if path in seen:
        return
    text = path.read_bytes()
    seen[path] = text
    for name in sorted(set(INCLUDE.findall(text))):
        for root in [path.parent, *ROOTS]:
            candidate = root / name.decode()
            if candidate.is_file():
                closure(candidate.resolve(), seen)
                break


def fingerprint(path, command, version):
    seen = {}
    closure(path, seen)
    digest = hashlib.sha256(version + (ROOT / ".clang-tidy").read_bytes())
    flags = re.sub(r"\S*" + re.escape(str(ROOT)) + r"\S*", "", command)
    digest.update(re.sub(r" -o \S+", "", flags).encode())
    for header in sorted(seen):
        digest.update(str(header.relative_to(ROOT)).encode() + seen[header])
    return digest.hexdigest()


def check(path, build):
    result = subprocess.run([TIDY, "--quiet", "-p", str(build), str(path)], capture_output=True, text=True)
    return result.returncode, result.stdout + (result.stderr if result.returncode else "")


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    prefixes = tuple(str(ROOT / prefix) for prefix in (sys.argv[2:] or ["src", "tools"]))
    version = subprocess.run([TIDY, "--version"], capture_output=True, check=True).stdout
    CACHE.mkdir(parents=True, exist_ok=True)
    todo = []
    commands = json.loads((build / "compile_commands.json").read_text())
    if any("/Unity/" in entry["file"] for entry in commands):
        sys.exit(f"{build} merges sources: configure the preset lint and name build/lint")
    for entry in commands:
        path = pathlib.Path(entry["file"])
        if str(path).startswith(prefixes):
            stamp = CACHE / fingerprint(path, entry["command"], version)
            if not stamp.exists():
                todo.append((path, stamp))
    print(f"clang-tidy: {len(todo)} files to check", flush=True)
    failed = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        jobs = {pool.submit(check, path, build): (path, stamp) for path, stamp in todo}
        for job in concurrent.futures.as_completed(jobs):
            path, stamp = jobs[job]
            code, output = job.result()
            if code:
                failed += 1
                print(output)
            else:
                stamp.touch()
    print(f"clang-tidy: {len(todo) - failed} passed, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
