#!/usr/bin/env python3
"""Plays the plug-in's LV2 and VST 3 forms in Ardour 7 without a screen or a sound card, and compares the output.

At 44100 Hz the host's export of a kit must equal what sivray-render makes with VST 2 of the same MIDI file, to the sample,
and a session that was made with LV2 must sound the same when VST 3 gets its state. Needs the package ardour and the target
forms of a release build. Not part of ./test: it tries the host as much as the plug-in.

SPDX-License-Identifier: GPL-3.0-or-later
"""
import base64
import os
import pathlib
import re
import struct
import sys
import tempfile

from ardour import HERE, RELEASE, Ardour, Checklist, put_hits_into, samples_of

KIT = "Dub Techno"
RATE = 44100
LETTERS = ".ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+"


def from_juce_base64(text: str) -> bytes:
    """Encodes bytes as their number, a point, and a letter for every six bits, lowest bits first."""
    length, letters = text.split(".", 1)
    letters += LETTERS[0] * (-len(letters) % 4)
    data = bytearray()
    for at in range(0, len(letters), 4):
        bits = sum(LETTERS.index(letter) << 6 * place for place, letter in enumerate(letters[at:at + 4]))
        data += bits.to_bytes(3, "little")
    return bytes(data[:int(length)])


def lv2_state(session: pathlib.Path) -> bytes:
    """Returns the state in the session as it was saved last."""
    text = max(session.glob("plugins/*/state*/state.ttl"), key=lambda file: file.stat().st_mtime).read_text()
    return from_juce_base64(re.search(r':StateString> "([^"]*)"', text).group(1))


def put_into_vst3(session: pathlib.Path, state: bytes) -> None:
    """A preset as VST 3 keeps it: header with the class's id, data, and a list of their places."""
    file = session / "hosted.ardour"
    text = file.read_text()
    found = re.search(r"<chunk>([^<]*)</chunk>", text)
    header = base64.b64decode(found.group(1))[:40]
    entries = b"List" + struct.pack("<i", 1) + b"Comp" + struct.pack("<qq", 48, len(state))
    chunk = header + struct.pack("<q", 48 + len(state)) + state + entries
    text = text[:found.start(1)] + base64.b64encode(chunk).decode() + text[found.end(1):]
    # The host overwrites the state with the parameter values that it knows.
    file.write_text(re.sub(r'<Port id="\d+" value="[^"]*"/>', "", text))


def main() -> int:
    checklist = Checklist()
    check = checklist.check

    with tempfile.TemporaryDirectory() as scratch_name:
        scratch = pathlib.Path(scratch_name)
        bundles = RELEASE / "forms"
        environment = dict(os.environ, HOME=scratch_name, LV2_PATH=f"{bundles}:/usr/lib/lv2")
        environment["DISPLAY"] = ":none"  # without one, JUCE would try the first screen of the machine
        vst3 = scratch / ".vst3" / "Sivray.vst3"
        vst3.parent.mkdir()
        vst3.symlink_to(bundles / "Sivray.vst3")

        ardour = Ardour(scratch, environment)
        run, export, resave = ardour.run, ardour.export, ardour.resave

        run("/usr/lib/ardour7/ardour-vst3-scanner", "-f", vst3, LD_LIBRARY_PATH="/usr/lib/ardour7")
        entry = next((scratch / ".cache/ardour7/vst").glob("*.v3i")).read_text()
        check("the VST 3 scan lists an instrument with the outputs of all ten buses",
              'name="Sivray"' in entry and 'category="Instrument|Drum"' in entry and 'n_outputs="20"' in entry)

        def make(form: str) -> pathlib.Path:
            session = scratch / form
            told = run("ardour7-lua", HERE / "make_form_session.lua", session, RATE, form, KIT)
            print("\n".join(line for line in told.splitlines() if "Sivray by" in line))
            return session

        session = make("LV2")
        midi = put_hits_into(session)
        sound = export(session)
        run(RELEASE / "bin/sivray-render", midi, "-o", scratch / "own.wav", "--quiet", "--tail", 4, "--program", KIT)
        own = samples_of(scratch / "own.wav")
        shared = min(len(sound), len(own))
        check(f"LV2: {shared // 2} frames of the kit {KIT}, peak {max(map(abs, own)):.3f}, equal VST 2's",
              sound[:shared] == own[:shared] and max(map(abs, own)) > 0.05)
        resave(session)
        check("LV2: the reopened session sounds the same", export(session) == sound)
        state = lv2_state(session)

        session = make("VST3")
        put_hits_into(session)
        check("VST 3: another kit sounds otherwise", export(session) != sound)
        put_into_vst3(session, state)
        check("VST 3: with the state of the LV2 session it sounds as that does", export(session) == sound)
        resave(session)
        check("VST 3: the reopened session sounds the same", export(session) == sound)
        resave(session, 25, 0)
        changed = export(session)
        resave(session)
        check("VST 3: a moved level changes the sound and is kept", changed != sound and export(session) == changed)
    return checklist.status()


if __name__ == "__main__":
    sys.exit(main())
