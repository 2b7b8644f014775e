#!/usr/bin/env python3
"""Plays the plug-in in Ardour 7 without a screen or a sound card, and compares the output.

At 44100 Hz the host's export must equal what sivray-render makes of the same MIDI file, to the sample; at both rates
an export of the reopened and saved session must equal one before, and a moved parameter must be kept. Needs the
packages ardour and a release build. Not part of ./test: it tries the host as much as the plug-in.

SPDX-License-Identifier: GPL-3.0-or-later
"""
import array
import os
import pathlib
import re
import struct
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
RELEASE = HERE.parents[1] / "build" / "release"
TICKS_PER_BEAT = 1920
BEATS = 8
SUPERCLOCKS_PER_SECOND = 282240000
SECONDS = 6


def midi_file() -> bytes:
    """Eighth notes over all pads with falling velocity, from the second beat on, when the master level has settled."""

    def variable(number: int) -> bytes:
        text = bytes([number & 0x7F])
        while number := number >> 7:
            text = bytes([0x80 | number & 0x7F]) + text
        return text

    events = []
    for step in range(14):
        start = TICKS_PER_BEAT + step * TICKS_PER_BEAT // 2
        events += [(start, 0x90, 36 + step % 8, 127 - 6 * step), (start + 200, 0x80, 36 + step % 8, 64)]
    track, now = b"", 0
    for tick, status, note, velocity in sorted(events):
        track += variable(tick - now) + bytes([status, note, velocity])
        now = tick
    track += b"\x00\xff\x2f\x00"
    return b"MThd" + struct.pack(">IHHH", 6, 0, 1, TICKS_PER_BEAT) + b"MTrk" + struct.pack(">I", len(track)) + track


def put_hits_into(session: pathlib.Path) -> pathlib.Path:
    """Writes source, region and length into the session file, because the host's scripts cannot import files."""
    midi = next((session / "interchange").iterdir()) / "midifiles" / "hits.mid"
    midi.write_bytes(midi_file())

    def region(number: int, whole: int) -> str:
        return (f'<Region name="hits" muted="0" opaque="1" locked="0" automatic="0" whole-file="{whole}" start="b0" '
                f'length="b{BEATS * TICKS_PER_BEAT}@b0" id="{number}" type="midi" source-0="9000" '
                'master-source-0="9000"/>')

    text_file = session / "hosted.ardour"
    text = text_file.read_text()
    for empty, filled in [
        ("<Sources/>", '<Sources><Source name="hits.mid" type="midi" flags="" id="9000"/></Sources>'),
        ("<Regions/>", f"<Regions>{region(9001, 1)}</Regions>"),
        ("<Locations/>", '<Locations><Location id="9003" name="session" start="a0" flags="IsSessionRange" locked="0" '
                         f'end="a{SUPERCLOCKS_PER_SECOND * SECONDS}"/></Locations>'),
    ]:
        text = text.replace(empty, filled)
    text = re.sub(r'(<Playlist [^>]*type="midi"[^>]*?)/>', rf"\1>{region(9002, 0)}</Playlist>", text)
    text_file.write_text(text)
    return midi


def samples_of(path: pathlib.Path) -> array.array:
    """Returns all samples of a 24-bit or float WAV file as floats, since the header's time stamp may differ."""
    data, at, bits = path.read_bytes(), 12, 0
    while True:
        name, size = struct.unpack("<4sI", data[at:at + 8])
        if name == b"fmt ":
            bits = struct.unpack("<H", data[at + 22:at + 24])[0]
        if name == b"data":
            body = data[at + 8:at + 8 + size]
            break
        at += 8 + size + size % 2
    if bits == 32:
        return array.array("f", body)
    return array.array("f", (int.from_bytes(body[i:i + 3], "little", signed=True) / 2**23
                             for i in range(0, len(body), 3)))


class Checklist:
    """Prints one line for each check, and counts the failures."""

    def __init__(self) -> None:
        self.failures = 0

    def check(self, what: str, good: bool) -> None:
        self.failures += not good
        print(f"{'ok    ' if good else 'FAILED'} {what}", flush=True)

    def status(self) -> int:
        return 1 if self.failures else 0


def main() -> int:
    folder = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else RELEASE / "Sivray").resolve()
    checklist = Checklist()
    check = checklist.check

    with tempfile.TemporaryDirectory() as scratch_name:
        scratch = pathlib.Path(scratch_name)
        environment = dict(os.environ, HOME=scratch_name, LXVST_PATH=str(folder), VST_PATH=str(folder))

        def run(*command: object, seconds: int = 180) -> str:
            done = subprocess.run([str(word) for word in command], env=environment, stdin=subprocess.DEVNULL,
                                  capture_output=True, text=True, timeout=seconds, check=True)
            return done.stdout

        def export(session: pathlib.Path, name: str) -> array.array:
            """Retries: the host's exporter sometimes stalls at its start or aborts at its end, even without a plug-in."""
            for attempt in range(4):
                try:
                    run("ardour7-export", "-b", "float", "-o", scratch / name, session, "hosted", seconds=60)
                    return samples_of(scratch / name)
                except (subprocess.TimeoutExpired, subprocess.CalledProcessError) as failure:
                    print(f"       the exporter failed ({type(failure).__name__}), attempt {attempt + 1}", flush=True)
            raise SystemExit("FAILED the exporter fails each time")

        def export_equals(session: pathlib.Path, wanted: array.array) -> bool:
            """Retries, because at 48000 Hz the engine frame of a note depends on how long the plug-in has run before."""
            return any(export(session, "again.wav") == wanted for _ in range(1 if "44100" in session.name else 8))

        environment["LD_LIBRARY_PATH"] = "/usr/lib/ardour7"
        run("/usr/lib/ardour7/ardour-vst-scanner", "-f", folder / "Sivray.so")
        del environment["LD_LIBRARY_PATH"]
        entry = next((scratch / ".cache/ardour7/vst").glob("*.v2i")).read_text()
        check("the scan lists an instrument with 2 outputs",
              'name="Sivray"' in entry and 'is_instrument="1"' in entry and 'n_outputs="2"' in entry)

        for rate, automate in [(44100, "still"), (44100, "automate"), (48000, "automate")]:
            session = scratch / f"{rate}-{automate}"
            told = run("ardour7-lua", HERE / "make_session.lua", session, rate, automate)
            print("\n".join(line for line in told.splitlines() if "Sivray by" in line))
            midi = put_hits_into(session)
            first = export(session, "first.wav")
            name = f"{rate} Hz, {'automated' if automate == 'automate' else 'no automation'}"
            check(f"{name}: it sounds, peak {max(map(abs, first)):.3f}", 0.05 < max(map(abs, first)) < 1)
            if automate == "still":
                run(RELEASE / "bin" / "sivray-render", midi, "-o", scratch / "own.wav", "--quiet", "--tail", 4)
                own = samples_of(scratch / "own.wav")
                shared = min(len(first), len(own))
                check(f"{name}: {shared // 2} frames equal those of sivray-render", first[:shared] == own[:shared])
            run("ardour7-lua", HERE / "resave_session.lua", session)
            check(f"{name}: the reopened session sounds the same", export_equals(session, first))
            run("ardour7-lua", HERE / "resave_session.lua", session, 25, 0)
            moved = export(session, "moved.wav")
            run("ardour7-lua", HERE / "resave_session.lua", session)
            check(f"{name}: a moved level changes the sound and is kept",
                  moved != first and export_equals(session, moved))
    return checklist.status()


if __name__ == "__main__":
    sys.exit(main())
