#!/usr/bin/env python3
"""Runs clang-tidy over our own source files, several at a time, with the commands of one build folder.

The folder must be configured for Clang and without unity builds, as the preset `lint` does; it need not be built. Of a folder
that the preset `windows` has configured, the sources with code for Windows are checked.

clang-tidy spends most of its time on the headers of libraries. Sources of one folder with equal flags are therefore joined
into one text and checked together, so that each header is read once. A finding counts if a source has it when it is checked
alone. With --each, every source is checked alone; only this shows that each one includes what it uses.

A source is skipped if its text, headers, flags and configuration have passed before: the hashes of passed sources are kept in
$SIVRAY_TIDY_CACHE (default ~/.cache/sivray-tidy), until they have not been used for 60 days.

Usage: tidy.py BUILD_FOLDER [--each] [PATH_PREFIX...]
"""
# SPDX-License-Identifier: GPL-3.0-or-later
import concurrent.futures
import functools
import hashlib
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
TIDY = "clang-tidy-14"
CACHE = pathlib.Path(os.environ.get("SIVRAY_TIDY_CACHE", pathlib.Path.home() / ".cache" / "sivray-tidy"))
CACHE_DAYS = 60
INCLUDE = re.compile(rb'^\s*#\s*include\s+"([^"]+)"', re.M)
ROOTS = [ROOT / "src", ROOT / "tools", ROOT / "tests", ROOT / "bench", ROOT / "tools" / "content", ROOT / "tools" / "render"]
# The longest unit bounds the time that several processors need.
UNIT_SOURCES = 24
# Their names, or those of headers that they include, clash with their neighbours'.
ALONE = {"CallCounter.cpp", "Fm.cpp", "InstructionCounter.cpp", "LifecycleChecks.cpp", "RealTimeChecks.cpp",
         "SivrayFxChorusFlanger.cpp", "WindowKeysX11.cpp", "X11Connection.cpp"}
# An include that another source of the unit has too is no duplicate: the check forgets the includes before a macro.
NOT_CLANGS = ("--param=", "-fno-keep-inline-dllexport", "-Wa,")
SEPARATOR = b"\n#define SIVRAY_NEXT_SOURCE\n#undef SIVRAY_NEXT_SOURCE\n"


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


def fingerprint(path, flags, version):
    seen = {}
    closure(path, seen)
    digest = hashlib.sha256(version + (ROOT / ".clang-tidy").read_bytes())
    digest.update(re.sub(r"\S*" + re.escape(str(ROOT)) + r"\S*", "", shlex.join(flags)).encode())
    for header in sorted(seen):
        digest.update(str(header.relative_to(ROOT)).encode() + seen[header])
    return digest.hexdigest()


def compiler_flags(entry):
    """The flags of a compile command, without the compiler, its launcher, the source and the object."""
    words = shlex.split(entry["command"])
    compiler = next(i for i, word in enumerate(words) if re.search("clang|mingw32", pathlib.Path(word).name))
    target = windows_flags(words[compiler]) if "mingw32" in words[compiler] else []
    words = words[compiler + 1:]
    output = words.index("-o")
    return target + [word for word in words[:output] + words[output + 2:]
                     if word not in ("-c", entry["file"]) and not word.startswith(NOT_CLANGS)]


@functools.cache
def windows_flags(compiler):
    """Those by which Clang compiles as the cross compiler does, with its headers."""
    said = subprocess.run([compiler, "-E", "-v", "-x", "c++", os.devnull], capture_output=True, text=True, check=True).stderr
    folders = re.search(r"<\.\.\.> search starts here:\n(.*)End of search list", said, re.S)[1].split()
    return ["--target=x86_64-w64-mingw32", *(word for folder in folders if "c++" in folder for word in ("-isystem", folder))]


def run_tidy(build, source, flags):
    result = subprocess.run([TIDY, "--quiet", str(source), "--", *flags], cwd=build, capture_output=True, text=True)
    return result.returncode, result.stdout + (result.stderr if result.returncode else "")


def check(build, unit, paths, flags):
    """Checks the sources together, then those alone that a finding names. Returns the failed ones and the findings."""
    if len(paths) == 1:
        code, output = run_tidy(build, paths[0], flags)
        return (paths if code else []), output
    unit.parent.mkdir(exist_ok=True)
    text, starts = b"", []
    for path in paths:
        starts.append(text.count(b"\n"))
        text += path.read_bytes() + SEPARATOR
    unit.write_bytes(text)
    code, output = run_tidy(build, unit, [*flags, "-iquote", str(paths[0].parent)])
    if not code:
        return [], ""
    places = re.findall(r"^(.+?):(\d+):\d+: (?:error|warning)", output, re.M)
    named = {max(i for i, start in enumerate(starts) if start < int(line)) for file, line in places if file == str(unit)}
    if "clang-diagnostic-error" in output or not named:
        named = range(len(paths))
        if all(file != str(unit) for file, _ in places):
            return paths, output  # Findings in headers alone.
    failed, findings = [], []
    for path in (paths[i] for i in sorted(named)):
        code, alone = run_tidy(build, path, flags)
        if code:
            failed.append(path)
            findings.append(alone)
    if not failed:
        findings.append(f"clang-tidy: {unit.name} cannot be checked as one; name the source with the clash in ALONE:\n{output}")
    return failed, "".join(findings)


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    each = "--each" in sys.argv
    prefixes = tuple(str(ROOT / word) for word in sys.argv[2:] if word != "--each") or (str(ROOT / "src"), str(ROOT / "tools"))
    version = subprocess.run([TIDY, "--version"], capture_output=True, check=True).stdout + (b"each" if each else b"")
    CACHE.mkdir(parents=True, exist_ok=True)
    for stamp in CACHE.iterdir():
        if stamp.stat().st_mtime < time.time() - CACHE_DAYS * 86400:
            stamp.unlink(missing_ok=True)
    stamps, groups = {}, {}
    commands = json.loads((build / "compile_commands.json").read_text())
    if any("/Unity/" in entry["file"] and "mingw32" not in entry["command"] for entry in commands):
        sys.exit(f"{build} merges sources: configure the preset lint and name build/lint")
    for entry in commands:
        path = pathlib.Path(entry["file"])
        if str(path).startswith(prefixes) and ("mingw32" not in entry["command"] or b"_WIN32" in path.read_bytes()):
            flags = compiler_flags(entry)
            stamp = CACHE / fingerprint(path, flags, version)
            if stamp.exists():
                stamp.touch()
            else:
                stamps[path] = stamp
                alone = each or path.name in ALONE
                groups.setdefault((path if alone else path.parent, *flags), []).append(path)
    units = [(paths[i:i + UNIT_SOURCES], flags) for (_, *flags), paths in groups.items() for i in range(0, len(paths), UNIT_SOURCES)]
    units.sort(key=lambda unit: -len(unit[0]))
    print(f"clang-tidy: {len(stamps)} sources to check in {len(units)} units", flush=True)
    failures = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        jobs = {}
        for number, (paths, flags) in enumerate(units):
            name = str(paths[0].parent.relative_to(ROOT)).replace("/", "_")
            jobs[pool.submit(check, build, build / "merged" / f"{name}-{number}.cpp", paths, flags)] = paths
        for job in concurrent.futures.as_completed(jobs):
            failed, output = job.result()
            print(output, end="", flush=True)
            failures += len(failed)
            for path in set(jobs[job]) - set(failed):
                stamps[path].touch()
    print(f"clang-tidy: {len(stamps) - failures} passed, {failures} failed")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
