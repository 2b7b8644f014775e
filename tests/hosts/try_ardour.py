#!/usr/bin/env python3
"""Plays the plug-in in Ardour 7 without a screen or a sound card, and compares the output.

At 44100 Hz the host's export must equal what sivray-render makes of the same MIDI file, to the sample; at both rates
an export of the reopened and saved session must equal one before, and a moved parameter must be kept. Needs the
packages ardour and a release build. Not part of ./test: it tries the host as much as the plug-in.

SPDX-License-Identifier: GPL-3.0-or-later
"""
import os
import pathlib
import sys
import tempfile

from ardour import HERE, RELEASE, Ardour, Checklist, put_hits_into, samples_of


def main() -> int:
    folder = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else RELEASE / "Sivray").resolve()
    checklist = Checklist()
    check = checklist.check

    with tempfile.TemporaryDirectory() as scratch_name:
        scratch = pathlib.Path(scratch_name)
        environment = dict(os.environ, HOME=scratch_name, LXVST_PATH=str(folder), VST_PATH=str(folder))

        ardour = Ardour(scratch, environment)
        run, export, resave = ardour.run, ardour.export, ardour.resave

        def export_equals(session: pathlib.Path, wanted) -> bool:
            """Retries, because at 48000 Hz the engine frame of a note depends on how long the plug-in has run before."""
            return any(export(session) == wanted for _ in range(1 if "44100" in session.name else 8))

        run("/usr/lib/ardour7/ardour-vst-scanner", "-f", folder / "Sivray.so", LD_LIBRARY_PATH="/usr/lib/ardour7")
        entry = next((scratch / ".cache/ardour7/vst").glob("*.v2i")).read_text()
        check("the scan lists an instrument with 2 outputs",
              'name="Sivray"' in entry and 'is_instrument="1"' in entry and 'n_outputs="2"' in entry)

        for rate, automate in [(44100, "still"), (44100, "automate"), (48000, "automate")]:
            session = scratch / f"{rate}-{automate}"
            told = run("ardour7-lua", HERE / "make_session.lua", session, rate, automate)
            print("\n".join(line for line in told.splitlines() if "Sivray by" in line))
            midi = put_hits_into(session)
            first = export(session)
            name = f"{rate} Hz, {'automated' if automate == 'automate' else 'no automation'}"
            check(f"{name}: it sounds, peak {max(map(abs, first)):.3f}", 0.05 < max(map(abs, first)) < 1)
            if automate == "still":
                run(RELEASE / "bin" / "sivray-render", midi, "-o", scratch / "own.wav", "--quiet", "--tail", 4)
                own = samples_of(scratch / "own.wav")
                shared = min(len(first), len(own))
                check(f"{name}: {shared // 2} frames equal those of sivray-render", first[:shared] == own[:shared])
            resave(session)
            check(f"{name}: the reopened session sounds the same", export_equals(session, first))
            resave(session, 25, 0)
            moved = export(session)
            resave(session)
            check(f"{name}: a moved level changes the sound and is kept",
                  moved != first and export_equals(session, moved))
    return checklist.status()


if __name__ == "__main__":
    sys.exit(main())
