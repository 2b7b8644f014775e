"""What the trials in Ardour 7 share: a session with notes, the samples of an export, and Ardour's programs, run without a
window and repeated where the host itself fails.

SPDX-License-Identifier: GPL-3.0-or-later
"""
import array
import pathlib
import re
import struct
import subprocess

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


class Ardour:
    """`scratch` is the folder for files; `environment` sets the host's home and the plug-in folders."""

    def __init__(self, scratch: pathlib.Path, environment: dict[str, str]) -> None:
        self.scratch = scratch
        self.environment = environment

    def run(self, *command: object, seconds: int = 120, **more: str) -> str:
        done = subprocess.run([str(word) for word in command], env={**self.environment, **more},
                              stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=seconds)
        done.check_returncode()
        return done.stdout

    def export(self, session: pathlib.Path) -> array.array:
        """Retries: the host's exporter sometimes stalls at its start or aborts at its end, even without a plug-in."""
        for attempt in range(4):
            try:
                self.run("ardour7-export", "-b", "float", "-o", self.scratch / "out.wav", session, "hosted", seconds=60)
                return samples_of(self.scratch / "out.wav")
            except (subprocess.TimeoutExpired, subprocess.CalledProcessError) as failure:
                print(f"       the exporter failed ({type(failure).__name__}), attempt {attempt + 1}", flush=True)
        raise SystemExit("FAILED the exporter fails each time")

    def resave(self, session: pathlib.Path, *words: object, script: str = "resave_session.lua") -> None:
        """Retries, because the host sometimes saves its session without some of its connections."""
        file = session / "hosted.ardour"
        before = file.read_text()
        for _ in range(8):
            self.run("ardour7-lua", HERE / script, session, *words)
            if file.read_text().count(' other="') == before.count(' other="') > 0:
                return
            file.write_text(before)
        raise SystemExit("FAILED the host loses its connections each time")
