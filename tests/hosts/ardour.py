"""Runs Ardour 7's programs without a window, and again where they fail by themselves.

SPDX-License-Identifier: GPL-3.0-or-later
"""
import array
import pathlib
import subprocess

from try_ardour import HERE, samples_of


class Ardour:
    """`scratch` takes the files, and `environment` holds the host's home and the folders of the plug-ins."""

    def __init__(self, scratch: pathlib.Path, environment: dict[str, str]) -> None:
        self.scratch = scratch
        self.environment = environment

    def run(self, *command: object, seconds: int = 120, **more: str) -> str:
        done = subprocess.run([str(word) for word in command], env={**self.environment, **more},
                              stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=seconds)
        done.check_returncode()
        return done.stdout

    def export(self, session: pathlib.Path) -> array.array:
        """The host's exporter stalls at its start or aborts at its end now and then, without a plug-in too."""
        for attempt in range(4):
            try:
                self.run("ardour7-export", "-b", "float", "-o", self.scratch / "out.wav", session, "hosted", seconds=60)
                return samples_of(self.scratch / "out.wav")
            except (subprocess.TimeoutExpired, subprocess.CalledProcessError) as failure:
                print(f"       the exporter failed ({type(failure).__name__}), attempt {attempt + 1}", flush=True)
        raise SystemExit("FAILED the exporter fails each time")

    def resave(self, session: pathlib.Path, *words: object, script: str = "resave_session.lua") -> None:
        """The host saves its session without some of its connections now and then."""
        file = session / "hosted.ardour"
        before = file.read_text()
        for _ in range(8):
            self.run("ardour7-lua", HERE / script, session, *words)
            if file.read_text().count(' other="') == before.count(' other="') > 0:
                return
            file.write_text(before)
        raise SystemExit("FAILED the host loses its connections each time")
