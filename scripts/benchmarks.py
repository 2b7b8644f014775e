#!/usr/bin/env python3
# Counts what the paths of docs/benchmarks.md cost in instructions, compares two such counts, and writes the figures into
# the page.
#   scripts/benchmarks.py measure OUT.csv [--build build/release] [--only PREFIX]
#       counts every path, or those whose names begin with PREFIX: name, figure, unit, commit, machine. Fails when an
#       effect is above its budget. All paths took half an hour on two busy cores.
#   scripts/benchmarks.py compare OLD.csv NEW.csv [--limit 2]
#       prints what has changed, and fails when a path takes more instructions by over 2 per cent and over 0.2.
#   scripts/benchmarks.py page FILE.csv
#       writes the figures into docs/benchmarks.md: the table of effects, and the number behind each <!--name-->.
# Needs valgrind (apt-get install valgrind; no test needs it), a processor with AVX2, and the programs bench_effects,
# bench_engine, bench_resample, bench_shell, bench_panel and bench_construction (cmake --build build/release --target bench/all). The
# last two read the content of the build.
# SPDX-License-Identifier: GPL-3.0-or-later
import argparse
import concurrent.futures
import csv
import os
import pathlib
import platform
import re
import subprocess
import sys

PAGE = pathlib.Path(__file__).parent.parent / "docs" / "benchmarks.md"
FIELDS = ["name", "figure", "unit", "commit", "machine"]
PER_FRAME, THOUSANDS = "instructions a frame", "thousand instructions"

# Name and budget by type id.
EFFECTS = [
    ("Bypass", 1), ("Marlo Chorus", 60), ("Marlo Phase", 44), ("Marlo Ensemble", 100), ("Chorus/Flanger", 36),
    ("Phaser", 84), ("Tremolo", 17), ("Auto Pan", 31), ("Pump", 22), ("Slicer", 20), ("Ring Mod", 8),
    ("Grain Shifter", 21), ("Short Delay", 10), ("BPM Delay", 12), ("Room Reverb", 14), ("Hall Reverb", 40),
    ("Gate Reverb", 42), ("Compressor", 55), ("Master Compressor", 55), ("Drive", 48), ("Distortion", 150),
    ("Kiln Force", 58), ("Decimator", 40), ("EQ", 62), ("Peaking EQ", 23), ("LPF", 56), ("HPF", 56), ("BPF", 56),
    ("Comb Filter", 27), ("Talking Mod", 62)]
MASTER_BUDGET, SILENCE_BUDGET = 25, 40
CHANGE_BUDGET = 600  # Thousands of instructions. Clearing memory counts as one a byte.

# The hall's tail outlasts the wait, and rounding keeps the peaking equalizer's output at -1.
NEVER_SILENT = {"Hall Reverb", "Peaking EQ"}

EFFECT_CASES = ("sound", "sound sse2", "silence", "whole", "change")
ENGINE_SCENES = {"dry8": 128, "dry8short": 64, "decay8": 128, "wet8": 128, "dry4": 128, "dry1": 128, "decay1": 128,
                 "out8": 128, "outs8": 128, "idle": 128, "rest": 128, "host8": 64, "host8wet": 64, "host1": 64,
                 "hostrest": 64, "SSE2": 128, "SSE4.1": 128, "AVX2": 128}
RATES = {"48000": ("output", "input", "silence", "outs", "rests"), "96000": ("output", "input", "silence"),
         "192000": ("output", "input", "silence")}


def instructions(command, *options):
    report = subprocess.run(["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null", *options, *command],
                            capture_output=True, text=True, check=True).stderr
    return int(re.search(r"Collected : (\d+)", report).group(1))


def per_frame(program, frames, blocks, before, after=()):
    few, many = (instructions([program, "count", *before, str(n), *after]) for n in blocks)
    return (many - few) / ((blocks[1] - blocks[0]) * frames)


def paths(folder):
    """Every path: its name, its unit and a function that counts it."""
    found = []

    def add(name, unit, count, *arguments):
        found.append((name, unit, lambda: count(*arguments)))

    effects, engine, resample = (f"{folder}/bench_{area}" for area in ("effects", "engine", "resample"))
    for number, (name, _) in enumerate(EFFECTS):
        for case in EFFECT_CASES[:-1]:
            after = {"sound": ["alone"], "sound sse2": ["alone", "sse2"], "silence": ["quiet"], "whole": ["whole"]}[case]
            add(f"effect/{name}/{case}", PER_FRAME, per_frame, effects, 512, (20, 220), [str(number)], after)
        add(f"effect/{name}/change", THOUSANDS, lambda n: instructions(
            [effects, "count", str(n), "10", "change"], "--toggle-collect=*takeChange*") / 10000, number)
    for scene, frames in ENGINE_SCENES.items():
        add(f"engine/{scene}", PER_FRAME, per_frame, engine, frames, (100, 500), [scene])
    for rate, scenes in RATES.items():
        for scene in scenes:
            add(f"resample/{rate}/{scene}", PER_FRAME, per_frame, resample, 128, (100, 400), [rate], [scene])
            if scene in ("output", "input"):
                add(f"resample/{rate}/{scene} sse2", PER_FRAME, per_frame, resample, 128, (100, 400), [rate],
                    [scene, "sse2"])
    add("shell/silence", PER_FRAME, per_frame, f"{folder}/bench_shell", 128, (100, 500), [])
    for scale in ("1", "2"):
        add(f"panel/further {scale}00 %", THOUSANDS, per_frame, f"{folder}/bench_panel", 1000, (5, 15), [scale])
    add("shell/instance", THOUSANDS, per_frame, f"{folder}/bench_construction", 1000, (5, 15), [])
    return found


def machine():
    for line in pathlib.Path("/proc/cpuinfo").read_text().splitlines():
        if line.startswith("model name"):
            return line.split(":", 1)[1].strip()
    return platform.machine()


def above_budget(figures):
    over = []
    for name, budget in EFFECTS:
        sound, _, silence, whole, change = (figures.get(f"effect/{name}/{case}", 0) for case in EFFECT_CASES)
        silence_budget = sound + 2 if name in NEVER_SILENT else SILENCE_BUDGET
        if sound > budget or silence > silence_budget or whole - sound > MASTER_BUDGET or change > CHANGE_BUDGET:
            over.append(name)
    return over


def measure(options):
    os.environ["BRAMEL_COMMON_FILES"] = os.path.abspath(options.build + "/Sivray")
    commit = subprocess.run(["git", "rev-parse", "--short", "HEAD"], capture_output=True, text=True).stdout.strip()
    chosen = [path for path in paths(options.build + "/bin") if path[0].startswith(options.only)]
    figures = {}
    with open(options.file, "w", newline="") as out, concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        rows = csv.writer(out)
        rows.writerow(FIELDS)
        for (name, unit, _), figure in zip(chosen, pool.map(lambda path: path[2](), chosen)):
            figures[name] = figure
            rows.writerow([name, f"{figure:.2f}", unit, commit, machine()])
            print(f"{name}: {figure:.2f} {unit}", flush=True)
    over = above_budget(figures)
    if over:
        sys.exit("benchmarks: above budget: " + ", ".join(over))


def read(file):
    with open(file, newline="") as rows:
        return {row["name"]: float(row["figure"]) for row in csv.DictReader(rows)}


def compare(options):
    old, new = read(options.file), read(options.new)
    worse = []
    for name in old.keys() & new.keys():
        by = new[name] - old[name]
        if abs(by) > max(0.2, old[name] * options.limit / 100):
            print(f"{name}: {old[name]:.2f} to {new[name]:.2f}")
            if by > 0:
                worse.append(name)
    if not old.keys() & new.keys():
        sys.exit("benchmarks: the two files have no path in common")
    if worse:
        sys.exit("benchmarks: worse: " + ", ".join(sorted(worse)))
    print(f"benchmarks: none of {len(old.keys() & new.keys())} paths is worse")


def effect_table(figures):
    lines = ["| Id | Effect | Sound | Silence after its tail | Budget | In the master effect | Change to it |",
             "|---:|---|---:|---:|---:|---:|---:|"]
    for number, (name, budget) in enumerate(EFFECTS):
        sound, _, silence, whole, change = (figures[f"effect/{name}/{case}"] for case in EFFECT_CASES)
        lines.append(f"| {number} | {name} | {sound:.1f} | {silence:.1f} | {budget} | + {whole - sound:.1f} | {change:.1f} |")
    return "\n".join(lines)


def page(options):
    figures = read(options.file)
    text = PAGE.read_text()
    if all(f"effect/{name}/change" in figures for name, _ in EFFECTS):
        text = re.sub(r"(<!--effects-->\n)(?:\|.*\n)*", lambda found: found[1] + effect_table(figures) + "\n", text)

    def number(found):
        decimals = len(found[2].partition(".")[2])
        return f"<!--{found[1]}-->{figures[found[1]]:.{decimals}f}" if found[1] in figures else found[0]

    PAGE.write_text(re.sub(r"<!--([^>]+?)-->([0-9.]+)", number, text))
    print(f"benchmarks: wrote {PAGE}")


def main():
    parser = argparse.ArgumentParser(prog="benchmarks.py")
    commands = parser.add_subparsers(required=True)
    command = commands.add_parser("measure")
    command.add_argument("file")
    command.add_argument("--build", default="build/release")
    command.add_argument("--only", default="")
    command.set_defaults(run=measure)
    command = commands.add_parser("compare")
    command.add_argument("file")
    command.add_argument("new")
    command.add_argument("--limit", type=float, default=2)
    command.set_defaults(run=compare)
    command = commands.add_parser("page")
    command.add_argument("file")
    command.set_defaults(run=page)
    options = parser.parse_args()
    options.run(options)


if __name__ == "__main__":
    main()
