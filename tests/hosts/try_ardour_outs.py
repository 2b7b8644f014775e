#!/usr/bin/env python3
"""Routes the outputs of the LV2 plug-in to tracks in Ardour 7, without a screen or a sound card, and compares them.

At 44100 Hz the export of one bus alone must equal the stem that sivray-render writes of the same MIDI file, to the sample;
a session with a compressor on one pad must sound the same, but for the rounding of the host's sum, when it was saved and
opened again. Needs the package ardour and the target forms of a release build. Not part of ./test: it tries the host as much
as the plug-in.

SPDX-License-Identifier: GPL-3.0-or-later
"""
import os
import pathlib
import sys
import tempfile

from ardour import HERE, RELEASE, Ardour, Checklist, put_hits_into, samples_of

KIT = "Dub Techno"
RATE = 44100
SNARE = "Pad 2"
SUM_ERROR = 2.0**-22  # The host adds the buses in an order that changes, and each sum is rounded.


def main() -> int:
    checklist = Checklist()
    check = checklist.check

    with tempfile.TemporaryDirectory() as scratch_name:
        scratch = pathlib.Path(scratch_name)
        environment = dict(os.environ, HOME=scratch_name, LV2_PATH=f"{RELEASE / 'forms'}:/usr/lib/lv2")
        environment["DISPLAY"] = ":none"  # without one, JUCE would try the first screen of the machine
        ardour = Ardour(scratch, environment)
        session = scratch / "outs"
        print(ardour.run("ardour7-lua", HERE / "make_outs_session.lua", session, RATE, KIT, SNARE))
        midi = put_hits_into(session)

        def heard(bus: str, compressor: str):
            ardour.resave(session, bus, compressor, script="change_outs_session.lua")
            return ardour.export(session)

        ardour.run(RELEASE / "bin/sivray-render", midi, "-o", scratch / "own.wav", "--quiet", "--tail", 4, "--program", KIT,
                   "--stems")
        for bus in ["Main", SNARE, "Pad 8", "Effect"]:
            name = bus.lower().replace(" ", "")
            stem = scratch / ("own.wav" if bus == "Main" else f"own-{name}.wav")
            own, sound = samples_of(stem), heard(bus, "plain")
            shared = min(len(sound), len(own))
            most = max(abs(a - b) for a, b in zip(sound, own))
            check(f"{bus}: {shared // 2} frames, peak {max(map(abs, own)):.3f}, equal the renderer's (difference {most:.7f})",
                  sound[:shared] == own[:shared])
        plain = heard("all", "plain")
        sound = heard("all", "compressed")
        check("the compressor on one pad is heard", sound != plain and max(map(abs, sound)) > 0.05)
        for again in range(1, 4):
            ardour.resave(session)
            most = max(abs(a - b) for a, b in zip(sound, ardour.export(session)))
            check(f"reopened and saved {again} times, it sounds the same (difference {most:.9f})", most < SUM_ERROR)
    return checklist.status()


if __name__ == "__main__":
    sys.exit(main())
