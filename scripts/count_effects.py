#!/usr/bin/env python3
# Counts what every effect costs, in instructions per stereo frame, and what a change to it costs, in thousands of
# instructions. Prints the table of docs/benchmarks.md.
#   scripts/count_effects.py [build directory, build/release when left out]
# Needs valgrind, a processor with AVX2, and bench_effects built.
# SPDX-License-Identifier: GPL-3.0-or-later
import re
import subprocess
import sys

FRAMES_PER_BLOCK = 512
SHORT_RUN, LONG_RUN = 20, 220
CHANGES = 10
OVERHEAD_BUDGET = 25
SILENCE_BUDGET = 40
CHANGE_BUDGET = 600  # Thousands of instructions. Clearing memory counts as one a byte.

# Name and budget by type id.
EFFECTS = [
    ("Bypass", 1), ("Marlo Chorus", 60), ("Marlo Phase", 44), ("Marlo Ensemble", 100), ("Chorus/Flanger", 36),
    ("Phaser", 84), ("Tremolo", 17), ("Auto Pan", 31), ("Pump", 22), ("Slicer", 20), ("Ring Mod", 8),
    ("Grain Shifter", 21), ("Short Delay", 10), ("BPM Delay", 12), ("Room Reverb", 14), ("Hall Reverb", 40),
    ("Gate Reverb", 42), ("Compressor", 55), ("Master Compressor", 55), ("Drive", 48), ("Distortion", 150),
    ("Kiln Force", 58), ("Decimator", 40), ("EQ", 62), ("Peaking EQ", 23), ("LPF", 56), ("HPF", 56), ("BPF", 56),
    ("Comb Filter", 27), ("Talking Mod", 62)]

# The hall's tail outlasts the wait, and rounding keeps the peaking equalizer's output at -1.
NEVER_SILENT = {"Hall Reverb", "Peaking EQ"}


def instructions(program, effect, blocks, form, *options):
    command = ["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null", *options, program, "count",
               str(effect), str(blocks), form]
    report = subprocess.run(command, capture_output=True, text=True, check=True).stderr
    return int(re.search(r"Collected : (\d+)", report).group(1))


def per_frame(program, effect, form):
    more = instructions(program, effect, LONG_RUN, form) - instructions(program, effect, SHORT_RUN, form)
    return more / ((LONG_RUN - SHORT_RUN) * FRAMES_PER_BLOCK)


def per_change(program, effect):
    return instructions(program, effect, CHANGES, "change", "--toggle-collect=*takeChange*") / CHANGES / 1000


def main():
    program = (sys.argv[1] if len(sys.argv) > 1 else "build/release") + "/bin/bench_effects"
    over = []
    print("| Id | Effect | Sound | Silence after its tail | Budget | In the master effect | Change to it |")
    print("|---:|---|---:|---:|---:|---:|---:|")
    for effect, (name, budget) in enumerate(EFFECTS):
        alone, quiet, whole = (per_frame(program, effect, form) for form in ("alone", "quiet", "whole"))
        change = per_change(program, effect)
        print(f"| {effect} | {name} | {alone:.1f} | {quiet:.1f} | {budget} | + {whole - alone:.1f} | {change:.1f} |",
              flush=True)
        silence_budget = alone + 2 if name in NEVER_SILENT else SILENCE_BUDGET
        if (alone > budget or quiet > silence_budget or whole - alone > OVERHEAD_BUDGET or change > CHANGE_BUDGET):
            over.append(name)
    if over:
        sys.exit("count_effects: above budget: " + ", ".join(over))


if __name__ == "__main__":
    main()
