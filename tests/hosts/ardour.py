"""Runs Ardour 7's programs without a window, and repeats runs in which the host itself fails.

SPDX-License-Identifier: GPL-3.0-or-later
"""
import array
import pathlib
import subprocess

from try_ardour import HERE, samples_of


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
