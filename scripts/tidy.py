#!/usr/bin/env python3
"""Runs clang-tidy over our own source files, several at a time, with the commands of one build folder.

The folder must be configured for Clang and without unity builds, as the preset `lint` does; it need not be built. Of a folder
that the preset `windows` has configured, the sources with code for Windows are checked.

clang-tidy spends nine tenths of its time on the headers of libraries. Sources whose flags differ only in include folders and
definitions are therefore joined into one text and checked together. A finding counts if a source has it when it is
checked alone. With --each, every source is checked alone; only this shows that each one includes what it uses.

A source is skipped if its text, headers, flags and configuration have passed before: the hashes of passed sources are kept in
$SIVRAY_TIDY_CACHE (default ~/.cache/sivray-tidy), until they have not been used for 60 days.

Usage: tidy.py BUILD_FOLDER [--each] [PATH_PREFIX...]
"""
# SPDX-License-Identifier: GPL-3.0-or-later
import concurrent.futures
import functools
import hashlib
import itertools
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
# A limit on units, because the longest one determines the total time on several processors.
UNIT_SOURCES = 40
# Files whose names, or those of their headers, clash with other sources', but not with those of their own set.
APART = [{"BWProgramListView.cpp", "CallCounter.cpp", "EntryPoint.cpp", "Fm.cpp", "GrooveSound.cpp", "Leveller.cpp",
          "LifecycleChecks.cpp", "Loudness.cpp", "RealTimeChecks.cpp", "SivrayFxChorusFlanger.cpp", "SivrayFxGrainShifter.cpp",
          "VoiceKernel.cpp"},
         {"Host.cpp", "InstructionCounter.cpp", "MomentaryLoudness.cpp", "PluginModel.cpp"},
         {"WindowKeysX11.cpp", "X11Connection.cpp"}]
# Flags that Clang does not know, or that affect only its output.
LEFT_OUT = ("--param=", "-fno-keep-inline-dllexport", "-Wa,", "-O", "-fPIC", "-fPIE", "-fvisibility", "-ffunction-sections",
            "-fdata-sections")
# An include that another source of the unit also has is no duplicate: the check ignores includes before a macro.
SEPARATOR = b"\n#define SIVRAY_NEXT_SOURCE\n#undef SIVRAY_NEXT_SOURCE\n"


def closure(path, seen):
    """Adds to `seen` the texts of `path` and of all our own headers that it includes, directly or indirectly."""
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
    """Returns the flags of a compile command, without compiler, launcher, source, object and precompiled headers."""
    words = shlex.split(entry["command"])
    compiler = next(i for i, word in enumerate(words) if re.search("clang|mingw32", pathlib.Path(word).name))
    target = windows_flags(words[compiler]) if "mingw32" in words[compiler] else []
    words = words[compiler + 1:]
    # Clang cannot read GCC's precompiled headers.
    for option in ("-o", *("-include" for word in words if word.endswith("/cmake_pch.hxx"))):
        place = words.index(option)
        del words[place:place + 2]
    return target + [word for word in words if word not in ("-c", entry["file"]) and not word.startswith(LEFT_OUT)]


@functools.cache
def windows_flags(compiler):
    """Returns the flags that make Clang compile for the cross compiler's target, with its headers."""
    said = subprocess.run([compiler, "-E", "-v", "-x", "c++", os.devnull], capture_output=True, text=True, check=True).stderr
    folders = re.search(r"<\.\.\.> search starts here:\n(.*)End of search list", said, re.S)[1].split()
    return ["--target=x86_64-w64-mingw32", *(word for folder in folders if "c++" in folder for word in ("-isystem", folder))]


def places_and_rest(flags):
    """Splits flags into include folders with definitions, and the rest."""
    places, rest = [], []
    words = iter(flags)
    for word in words:
        if word == "-isystem":
            places.append((word, next(words)))
        else:
            (places if word.startswith(("-I", "-D")) else rest).append((word,))
    return places, rest


def units_of(sources):
    """Groups sources (paths with their flags) into units: lists of paths with their common flags."""
    groups = {}
    for path, flags in sorted(sources):
        places, rest = places_and_rest(flags)
        kind = next((i for i, names in enumerate(APART) if path.name in names), None)
        has_juce = any("juce" in word for word in flags)
        groups.setdefault((kind, has_juce, *rest), []).append((path, places, rest))
    for group in groups.values():
        mains = [source for source in group if source[0].name == "main.cpp"]  # No two of them go together.
        others = [source for source in group if source[0].name != "main.cpp"]
        count = -(-len(others) // UNIT_SOURCES)
        units = [others[i * len(others) // count:(i + 1) * len(others) // count] for i in range(count)]
        units = [unit + main for unit, main in itertools.zip_longest(units, ([main] for main in mains), fillvalue=[])]
        for unit in units:
            places = dict.fromkeys(place for _, places, _ in unit for place in places)
            yield [path for path, _, _ in unit], [word for words in (*unit[0][2], *places) for word in words]


def run_tidy(build, source, flags):
    result = subprocess.run([TIDY, "--quiet", str(source), "--", *flags], cwd=build, capture_output=True, text=True)
    return result.returncode, result.stdout + (result.stderr if result.returncode else "")


def check(build, unit, paths, flags):
    """Checks the sources as one unit, then each source with a finding separately; halves units that do not compile.
    Returns the failed ones and the findings."""
    if len(paths) == 1:
        code, output = run_tidy(build, paths[0], flags)
        return (paths if code else []), output
    unit.parent.mkdir(exist_ok=True)
    text, starts = b"", []
    for path in paths:
        starts.append(text.count(b"\n"))
        text += path.read_bytes() + SEPARATOR
    unit.write_bytes(text)
    folders = [word for folder in dict.fromkeys(path.parent for path in paths) for word in ("-iquote", str(folder))]
    # The compilers report names that hide others, in each source's own text.
    code, output = run_tidy(build, unit, [*flags, *folders, "-Wno-shadow"])
    if not code:
        return [], ""
    places = re.findall(r"^(.+?):(\d+):\d+: (?:error|warning)", output, re.M)
    named = {max(i for i, start in enumerate(starts) if start < int(line)) for file, line in places if file == str(unit)}
    if not named:
        return paths, output  # Findings in headers alone.
    if "clang-diagnostic-error" in output:
        half = len(paths) // 2
        parts = [check(build, unit.with_stem(f"{unit.stem}-{i}"), part, flags) for i, part in enumerate((paths[:half], paths[half:]))]
        failed = [path for part, _ in parts for path in part]
        if not failed:
            output = f"clang-tidy: names clash in {unit.name}; one of the sources belongs into APART:\n{output}"
        return failed, (output if not failed else "") + "".join(text for _, text in parts)
    failed, findings = [], []
    for path in (paths[i] for i in sorted(named)):
        code, alone = run_tidy(build, path, flags)
        if code:
            failed.append(path)
            findings.append(alone)
    if not failed:
        findings.append(f"clang-tidy: {unit.name} finds what no source has alone:\n{output}")
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
    known, stamps, sources = set(), {}, []
    commands = json.loads((build / "compile_commands.json").read_text())
    if any("/Unity/" in entry["file"] and "mingw32" not in entry["command"] for entry in commands):
        sys.exit(f"{build} merges sources: configure the preset lint and name build/lint")
    for entry in commands:
        path = pathlib.Path(entry["file"])
        if path not in known and str(path).startswith(prefixes) and ("mingw32" not in entry["command"] or b"_WIN32" in path.read_bytes()):
            known.add(path)
            flags = compiler_flags(entry)
            stamp = CACHE / fingerprint(path, flags, version)
            if stamp.exists():
                stamp.touch()
            else:
                stamps[path] = stamp
                sources.append((path, flags))
    units = [([path], flags) for path, flags in sources] if each else list(units_of(sources))
    units.sort(key=lambda unit: -len(unit[0]))
    print(f"clang-tidy: {len(stamps)} sources to check in {len(units)} units", flush=True)
    failures = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        jobs = {}
        for number, (paths, flags) in enumerate(units):
            jobs[pool.submit(check, build, build / "merged" / f"{number}.cpp", paths, flags)] = paths
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
