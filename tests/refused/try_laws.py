#!/usr/bin/env python3
# Breaks a law of an effect and the plain lanes in many ways, of which none may compile.
#   try_laws.py COMPILER INCLUDE_FOLDER...
# SPDX-License-Identifier: GPL-3.0-or-later
import pathlib
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor

HERE = pathlib.Path(__file__).parent
LAW = (HERE / "CompleteLaw.cpp").read_text()
LANES = (HERE.parent.parent / "src/effects/interfaces/OneSample.h").read_text().replace("#pragma once", "")

# The replaced text, its replacement, and a word of the compiler's message.
CASES = [
    (" kParts{", " kPart{", "kParts"), (".sleepsAfter", ".sleepAfter", "sleepAfter"), (" step(", " steps(", "Steps"),
    (" aim(", " aims(", "aims"), (" eachSmoothed(", " eachSmooth(", "glides"), (" derive(", " derives(", "derives"),
    (" fitsLanes(", " fitLanes(", "lanes"), (" runBaseline;", " runSSE2;", "lanes"), (" runAvx2;", " runAVX2;", "lanes"),
    (" isSilent(", " isSilence(", "sleeps"), (" skip(", " skips(", "sleeps"),
    (" kRequiredSamples ", " kSamples ", "kRequiredSamples"), (" kLineLength ", " kLength ", "kLineLength"),
    (" writeIndex ", " writeAt ", "writeIndex"),
    # The law names a part less than it has.
    (".glides = true, ", "", "glides"), ("baselineAndAvx2", "avx2", "lanes"), (", .sleepsAfter = 64", "", "sleeps"),
    # A part has another type.
    ("bool isSilent(unsigned count) const", "bool isSilent() const", "sleeps"),
    ("RunInLanes<CompleteLaw> runAvx2", "int runAvx2", "lanes"),
    # Two parts of which a law may have one.
    ("  void derive();", "  void derive();\n  void glide(const Settings& to, bool immediate);\n"
     "  bool restsAt(const Settings& to, bool immediate) const;", "glides"),
    ("  void derive();", "  void derive();\n  struct Side {} left, right;\n"
     "  void stepSide(const Settings& to, Side& side, std::int16_t& sample);", "Steps")]


LANE_CASES = [
    (" leak(OneSample ", " leaks(OneSample ", "SampleKind"), (" sum(OneSample a,", " add(OneSample a,", "SampleKind"),
    (" kWords =", " kWord =", "SampleKind"), ("OneSample narrowed()", "OneSample narrow()", "WideKind"),
    ("bool isAnyNegative(OneWord a)", "int isAnyNegative(OneWord a)", "WordKind"),
    ("OneWord lowerHalves()", "OneWord lowerHalf()", "WordKind"), (" magnitude(OneWord", " abs(OneWord", "WordKind")]


def answer(text):
    command = [sys.argv[1], "-std=c++20", "-fsyntax-only", "-x", "c++", *["-I" + folder for folder in sys.argv[2:]], "-"]
    result = subprocess.run(command, input=text, capture_output=True, text=True)
    return result.returncode, result.stderr


def complaint(text, case):
    right, wrong, word = case
    if right not in text:
        return f"'{right}' is not in the text"
    code, errors = answer(text.replace(right, wrong))
    if code == 0:
        return f"'{wrong}' for '{right}' compiles"
    return None if word in errors else f"'{wrong}' for '{right}' is refused without a word of '{word}':\n{errors}"


def main():
    complaints = []
    for text, cases in ((LAW, CASES), (LANES, LANE_CASES)):
        code, errors = answer(text)
        if code != 0:
            complaints.append("the unbroken text does not compile:\n" + errors)
        with ThreadPoolExecutor(2) as pool:
            complaints += [said for said in pool.map(lambda case, text=text: complaint(text, case), cases) if said]
    sys.exit("\n".join(complaints) or None)


if __name__ == "__main__":
    main()
