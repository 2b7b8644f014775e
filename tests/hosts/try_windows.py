#!/usr/bin/env python3
"""Tests the Windows plug-in under Wine, in a window on a virtual screen, and compares it with the one for this system.

Samples must be equal to the bit, and the panel equal but for the rendering of its texts. Pictures of what was seen stay in
build/windows/trial. The installer installs, and what it has installed is loaded and removed. Needs the targets zip and
quick_setup of the build for Windows, and the packages wine, wine64, xvfb and imagemagick.

Usage: try_windows.py [--short]      --short, as in ./test, opens two forms 20 times each; else three forms 100 times each.

SPDX-License-Identifier: GPL-3.0-or-later
"""
import contextlib
import ctypes
import os
import pathlib
import random
import re
import shutil
import subprocess
import sys
import tempfile
import threading
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
RELEASE = ROOT / "build" / "release"
WINDOWS = ROOT / "build" / "windows"
PICTURES = WINDOWS / "trial"
VST3 = "Sivray.vst3/Contents/x86_64-win/Sivray.vst3"
SHORT = "--short" in sys.argv
CYCLES = 20 if SHORT else 100
BUSY = 170  # What the installer ends with where a program has loaded what it would take away.
RECORD = r"Software\Microsoft\Windows\CurrentVersion\Uninstall\Sivray"
LONGEST_SECONDS = 200  # For an answer.
MOST_DIFFERENT = 0.02  # Of the panel's pixels: the texts.
FUZZ = "6%"  # Of the colours' range: rounding is no difference.
PAD, KNOB, KIT, KIT_ROW = (62, 395), (62, 220), (110, 90), (300, 300)
SAVE_AS, IMPORT, FIRST_ROW = (448, 34), (245, 31), (300, 110)  # In the list of kits.
RETURN, ESCAPE = 13, 27  # Codes of Windows.

failures = []


def expect(what, got, wanted=True):
    right = got == wanted
    print(f"{'ok  ' if right else 'BAD '} {what}" + ("" if right else f": {got!r}, not {wanted!r}"), flush=True)
    if not right:
        failures.append(what)


class SoundInfo(ctypes.Structure):
    _fields_ = [("frames", ctypes.c_int64), *((name, ctypes.c_int) for name in
                                              ("rate", "channels", "form", "sections", "seekable"))]


def write_sound(path, form, rate, seed):
    """Writes decaying noise of 0.2 s with libsndfile; `form` is its number for the format."""
    path.parent.mkdir(parents=True, exist_ok=True)
    library = ctypes.CDLL("libsndfile.so.1")
    library.sf_open.restype = ctypes.c_void_p
    info = SoundInfo(rate=rate, channels=2, form=form)
    file = ctypes.c_void_p(library.sf_open(str(path).encode(), 0x20, ctypes.byref(info)))
    frames, dice = rate // 5, random.Random(seed)
    values = (ctypes.c_short * (2 * frames))(*(int(dice.uniform(-20000, 20000) * (1 - i / (2 * frames))) for i in range(2 * frames)))
    library.sf_writef_short(file, values, ctypes.c_int64(frames))
    library.sf_close(file)


class Host:
    """The minimal host with one library, which answers each input line."""

    def __init__(self, command, library, environment):
        self.process = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True,
                                        encoding="utf-8", env=environment, stderr=subprocess.DEVNULL)
        self.process.stdin.write(f"{library}\n")

    def say(self, line):
        """Returns the answer; empty if the host has crashed or hangs."""
        watch = threading.Timer(LONGEST_SECONDS, self.process.kill)
        watch.start()
        try:
            self.process.stdin.write(line + "\n")
            self.process.stdin.flush()
            return self.process.stdout.readline().strip()
        except BrokenPipeError:
            return ""
        finally:
            watch.cancel()

    def click(self, point):
        for line in (f"move {point[0]} {point[1]}", "press", "release", "pump 300"):
            self.say(line)

    def drag(self, point, way):
        self.say(f"move {point[0]} {point[1]}")
        self.say("press")
        for step in range(1, 9):
            self.say(f"move {point[0]} {point[1] + way * step // 8}")
        self.say("release")

    def end(self):
        with contextlib.suppress(BrokenPipeError):
            self.process.stdin.close()
        try:
            return self.process.wait(timeout=60)
        except subprocess.TimeoutExpired:
            self.process.kill()
            return None


@contextlib.contextmanager
def screen():
    """An X server whose display is named in the environment."""
    reader, writer = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(writer), "-screen", "0", "1700x1000x24", "-nolisten", "tcp"],
                              pass_fds=[writer], stderr=subprocess.DEVNULL)
    os.close(writer)
    with os.fdopen(reader) as numbers:
        os.environ["DISPLAY"] = ":" + numbers.readline().strip()
    try:
        yield
    finally:
        server.terminate()
        server.wait()


def picture_of_screen(name, size="768x468"):
    file = PICTURES / f"{name}.png"
    subprocess.run(["import", "-window", "root", "-crop", f"{size}+0+0", "+repage", file], check=True)
    return file


def difference(a, b):
    """Returns the share of differing pixels."""
    result = subprocess.run(["compare", "-metric", "AE", "-fuzz", FUZZ, a, b, "null:"], capture_output=True, text=True)
    width, height = subprocess.run(["identify", "-format", "%w %h", a], capture_output=True, text=True,
                                   check=True).stdout.split()
    return float(re.match(r"[0-9.e+]+", result.stderr)[0]) / (int(width) * int(height))


class Trial:
    def __init__(self, folder):
        self.folder = folder
        os.environ["BRAMEL_DOCUMENTS"] = str(folder / "documents-here")  # Our own tools leave nothing in the user's home.
        self.home = folder / "Sivray \u592a\u9f13 \u30c9\u30e9\u30e0"
        shutil.unpack_archive(WINDOWS / "Sivray-windows.zip", folder)
        (folder / "Sivray").rename(self.home)
        self.prefix = WINDOWS / "prefix"  # As in tests/windows/wine.sh; kept for the next time.
        self.environment = dict(os.environ, WINEPREFIX=str(self.prefix), WINEDEBUG="-all",
                                WINEDLLOVERRIDES="winemenubuilder.exe=d;mscoree=;mshtml=",
                                BRAMEL_DOCUMENTS=self.windows_path(folder / "documents"))
        self.environment.pop("BRAMEL_COMMON_FILES", None)
        if not (self.prefix / "system.reg").exists():
            self.wine("wineboot", "-i")
            self.wine("wineserver", "-w")
        self.wine("wine", "winecfg", "-v", "win10")  # Older ones are refused by the installer.
        self.drive = self.prefix / "drive_c"
        self.users = next(self.drive.glob("users/*/AppData"))

    def wine(self, *command, **options):
        return subprocess.run(command, env=self.environment, check=False, stderr=subprocess.DEVNULL, text=True,
                              stdout=subprocess.PIPE, timeout=LONGEST_SECONDS, **options)

    @staticmethod
    def windows_path(path):
        return "Z:" + str(path).replace("/", "\\")

    def host(self, library=None, **environment):
        return Host(["wine", WINDOWS / "bin" / "try-plugin.exe"], self.windows_path(library or self.home / "Sivray.dll"),
                    dict(self.environment, **environment))

    def samples(self):
        state = self.folder / "dub.state"
        subprocess.run([RELEASE / "bin" / "sivray-render", "--program", "Dub Echo", "--save-state", state], check=True,
                       stdout=subprocess.DEVNULL)
        # With the content of the archive, because the one that was built here may be newer.
        linux = Host([RELEASE / "bin" / "try-plugin"], RELEASE / "Sivray" / "Sivray.so",
                     dict(self.environment, BRAMEL_COMMON_FILES=str(self.home), BRAMEL_DOCUMENTS=str(self.folder / "documents")))
        windows = self.host()
        linux.say("load")
        windows.say("load")
        linux.say(f"state {state}")
        windows.say(f"state {self.windows_path(state)}")
        for rate in (44100, 48000):
            linux.say(f"render {rate} {self.folder / 'linux'}")
            windows.say(f"render {rate} {self.windows_path(self.folder / 'windows')}")
            here, there = (self.folder / "linux").read_bytes(), (self.folder / "windows").read_bytes()
            expect(f"{len(here) // 8} frames at {rate} Hz are equal to the bit, and not silent",
                   here == there and any(here))
        clap = self.host(self.home / "Sivray.clap")
        for host, path in ((linux, state), (clap, self.windows_path(state))):
            host.say("load")
            host.say(f"state {path}")
        linux.say(f"render-notes 48000 {self.folder / 'linux'}")
        clap.say(f"render-notes 48000 {self.windows_path(self.folder / 'windows')}")
        here, there = (self.folder / "linux").read_bytes(), (self.folder / "windows").read_bytes()
        expect("CLAP's samples here are VST 2's on Linux, and not silent", here == there and any(here))
        for host in (linux, windows, clap):
            host.end()

    def content(self):
        lone = self.folder / "lone" / "Sivray.dll"
        lone.parent.mkdir()
        shutil.copy(self.home / "Sivray.dll", lone)
        host = self.host(lone)
        expect("without content there is no plug-in", host.say("load"), "none")
        host.end()
        host = self.host(lone, BRAMEL_COMMON_FILES=self.windows_path(self.home))
        expect("content is found in %BRAMEL_COMMON_FILES%", host.say("load"), "ok")
        host.end()
        drive = self.drive
        for common in (drive / "Program Files" / "Common Files", self.users / "Local" / "Programs" / "Common"):
            common.mkdir(parents=True, exist_ok=True)
            (common / "Tesh").symlink_to(self.home / "Tesh")
            host = self.host(lone)
            expect(f"content is found in {common.relative_to(drive)}", host.say("load"), "ok")
            host.end()
            (common / "Tesh").unlink()

    def own_sounds(self):
        """Files get the same numbers and samples as on this system; where the decoders may differ, the same numbers."""
        sounds = self.folder / "Größe 鼓"
        exact = {"Oak Kick.wav": 0x010002, "Elm Tom.aiff": 0x020003, "Fir Snare.flac": 0x170002, "Fir Snare 2.wav": 0x010006}
        for number, (name, form) in enumerate(exact.items()):
            write_sound(sounds / "exact" / name, form, 44100, number)
        write_sound(sounds / "other" / "Yew Hat.ogg", 0x200060, 44100, 7)
        write_sound(sounds / "other" / "Ash Clap.wav", 0x010002, 96000, 8)
        (sounds / "other" / "broken.flac").write_bytes(b"fLaC")
        here = {**os.environ, "XDG_DATA_HOME": str(self.folder / "data"), "BRAMEL_COMMON_FILES": str(RELEASE / "Sivray")}
        tool = RELEASE / "bin" / "sivray-content"
        own = self.users / "Local" / "sivray" / "content"

        def add(folder):
            subprocess.run([tool, "add", sounds / folder], env=here, check=False, stdout=subprocess.DEVNULL)
            return self.wine("wine", self.home / "sivray-content.exe", "add", self.windows_path(sounds / folder))

        def lists():
            ours = subprocess.run([tool, "list", "--fields"], env=here, capture_output=True, text=True, check=True).stdout
            theirs = self.wine("wine", self.home / "sivray-content.exe", "list", "--fields").stdout
            return [[line for line in text.splitlines() if line.startswith("sound\t")] for text in (ours, theirs)]

        expect("own sounds are added", add("exact").returncode, 0)
        ours, theirs = lists()
        expect("with the numbers and samples that they get here", (theirs, len(theirs)), (ours, len(exact)))
        library = "Tesh/Bramel/Resource/SivrayPCM"
        for name in ("drumdata.bin", "sampleparam.bin", "drumparam.bin", "drumparam_category.bin"):
            expect(f"{name} is the same as here", (own / library / name).read_bytes() ==
                   (self.folder / "data" / "sivray" / "content" / library / name).read_bytes())
        said = add("other").stdout
        expect("a broken file is named", "broken.flac: not used: it " in said)
        ours, theirs = lists()
        expect("OGG files and high rates are read", [line.split("\t")[1:3] for line in theirs],
               [line.split("\t")[1:3] for line in ours])
        removed = self.wine("wine", self.home / "sivray-content.exe", "remove", "--all")
        expect("and all are removed", (removed.returncode, lists()[1]), (0, []))
        shutil.rmtree(own.parent)

    def panel(self, library):
        """Writes pictures into a folder named after the library's extension."""
        form = pathlib.Path(library).suffix[1:]
        (PICTURES / form).mkdir(exist_ok=True)

        def picture(name, size="768x468"):
            return picture_of_screen(f"{form}/{name}", size)

        print(f"{library}:")
        host = self.host(self.home / library, BRAMEL_DOCUMENTS=self.windows_path(self.folder / "documents" / form))
        expect("content is found beside the library, in a folder with blanks and Japanese letters", host.say("load"), "ok")
        expect("the panel opens", host.say("open"), "768x468")
        still = picture("panel")
        drawn = PICTURES / "panel-here.png"
        subprocess.run([RELEASE / "bin" / "sivray-render", "--panel", drawn], check=True, stdout=subprocess.DEVNULL)
        share = difference(still, drawn)
        expect(f"{share:.2%} of the pixels differ from the panel drawn here", share < MOST_DIFFERENT)

        host.say(f"move {PAD[0]} {PAD[1]}")
        host.say("press")
        host.say("pump 200")
        expect("a pad lights", difference(still, picture("pad")) > 0.005)
        host.say("release")
        host.say("moves")
        host.drag(KNOB, -40)
        expect("a knob moves a parameter", int(host.say("moves")) > 0)
        host.say("strike 65")
        expect("keys go to the host after clicks", host.say("characters"), "1")
        host.click(KIT)
        opened = picture("kits")
        host.click(KIT_ROW)
        expect("the list of kits opens, and a kit is chosen", difference(opened, picture("kit-chosen")) > 0.005)
        host.say("press")
        host.say("close")  # Clicks count all the same once the panel is open again.
        host.say("release")
        self.close_and_open(host, picture, closes_elsewhere=form == "dll")  # VST 3 forbids other threads.
        self.names(host, picture)
        expect("the library is unloaded", host.say("unload"), "ok")
        expect("the host ends", host.end(), 0)

    @staticmethod
    def close_and_open(host, picture, closes_elsewhere):
        expect("the panel opens again", host.say("open"), "768x468")
        expect("it takes a scale", host.say("scale 2"), "ok")
        host.say("pump 400")
        picture("doubled", "1536x936")
        host.say("scale 1")
        if closes_elsewhere:
            expect("it closes on another thread, with its plug-in", host.say("close-elsewhere"), "ok")
        host.say("pump 100")

    @staticmethod
    def names(host, picture):
        host.say("load")
        host.say("open")
        host.click(KIT)
        host.click(SAVE_AS)
        host.say("characters")
        for key in b"ABCD":
            host.say(f"strike {key}")
        picture("name")
        expect("a text field keeps its keys", host.say("characters"), "0")
        host.say(f"strike {RETURN}")
        host.say("pump 500")
        still = picture("saved")
        host.say(f"move {FIRST_ROW[0]} {FIRST_ROW[1]}")
        host.say("right-click")
        host.say("pump 300")
        expect("a menu opens inside the panel", 0.0005 < difference(still, picture("menu")) < 0.01)
        host.say(f"strike {ESCAPE}")
        host.say("pump 200")
        host.click(IMPORT)
        host.say("pump 1500")
        picture("dialog", "1536x936")
        expect("the panel closes below a file dialog", host.say("close"), "ok")
        host.say("pump 500")

    def three(self):
        """Two copies of the library and the other form, each separate from the others and with an open panel."""
        shutil.copy(self.home / "Sivray.dll", self.home / "Copy.dll")
        host = self.host()
        libraries = [self.windows_path(self.home / name) for name in ("Sivray.dll", "Copy.dll", VST3)]
        for library in libraries:
            host.say(f"use {library}")
            host.say("load")
            expect("one of three panels opens", host.say("open"), "768x468")
        for library in libraries:
            host.say(f"use {library}")
            expect("it closes, and its library is unloaded", (host.say("close"), host.say("unload")), ("ok", "ok"))
        expect("the host ends", host.end(), 0)

    def scaled(self):
        """On a screen of 144 dots per inch, in a DPI-aware host that sends no scale."""
        key = ("reg", "add", r"HKCU\Control Panel\Desktop", "/v", "LogPixels", "/t", "REG_DWORD", "/f", "/d")
        self.wine("wine", *key, "144")
        self.wine("wineserver", "-k")
        for library in ("Sivray.dll", "Sivray.clap"):
            host = self.host(self.home / library)
            host.say("load")
            expect(f"the panel of {library} takes the scale of the host's window", host.say("open"), "1152x702")
            host.say("close")
            host.say("unload")
            host.end()
        program = self.start_program()
        picture_of_screen("program-scaled", "1700x1000")
        large = self.program_size()
        teller = self.host()
        teller.say("destroy-window")
        expect("the program hears of another scale", teller.say("dots 96"), "ok")
        teller.end()
        time.sleep(2)
        picture_of_screen("program-rescaled", "1700x1000")
        small = self.program_size()
        expect("the program has the scale of its screen", [a - b for a, b in zip(large, small)], [384, 254])
        self.wine("wineboot", "--kill")
        program.wait(timeout=60)
        self.wine("wine", *key, "96")
        self.wine("wineserver", "-k")

    @staticmethod
    def program_size():
        windows = subprocess.run(["xwininfo", "-root", "-tree"], capture_output=True, text=True, check=True).stdout
        return [int(side) for side in re.search(r'"Sivray": .*?(\d+)x(\d+)\+', windows).groups()]

    def start_program(self):
        """Returns when its window exists."""
        program = subprocess.Popen(["wine", self.home / "Sivray.exe"], env=self.environment, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL)
        is_shown = False
        end = time.monotonic() + LONGEST_SECONDS
        while not is_shown and time.monotonic() < end:
            time.sleep(1)
            windows = subprocess.run(["xwininfo", "-root", "-tree"], capture_output=True, text=True, check=True).stdout
            is_shown = '"Sivray"' in windows
        expect("the program shows its window", is_shown)
        time.sleep(2)  # Until it has painted.
        return program

    def program(self):
        program = str(self.home / "Sivray.exe")
        version = self.wine("wine", program, "--version")
        expect("the program answers to an option", version.stdout.strip().startswith("sivray "))
        expect("and to a wrong one", self.wine("wine", program, "--wrong").returncode, 2)
        settings = self.users / "Roaming" / "Sivray"
        shutil.rmtree(settings, ignore_errors=True)
        running = self.start_program()
        picture_of_screen("program", "1536x936")
        self.wine("wineboot", "--end-session")
        running.wait(timeout=60)
        expect("the program keeps its sound when the session ends", (settings / "sound.state").exists())

    def life(self, library):
        host = self.host(self.home / library)
        expect(f"loaded, opened, clicked, closed and unloaded {CYCLES} times", host.say(f"live {CYCLES}"), "ok")
        host.say("load")
        host.say("open")
        host.say("destroy-window")
        host.say("pump 200")
        host.say("close")
        expect("the host's window goes first", host.say("unload"), "ok")
        expect("the host ends", host.end(), 0)
        host = self.host(self.home / library)
        host.say("load")
        host.say("open")
        expect("the host ends with the panel open", host.end(), 0)


    def user_files(self):
        """Returns everything that an installation may have changed."""
        own = {"windows", "Temp"}
        return {path for path in self.drive.rglob("*") if not own & set(path.relative_to(self.drive).parts)}

    def installed(self, mode, registry, common, program):
        """Installs silently, loads each form from its installed folder, and uninstalls. The mode determines the folders."""
        before = self.user_files()
        setup = next((WINDOWS / "quick").glob("*-setup.exe"))
        vst2 = self.drive / "vst2"  # Made by the installer.
        result = self.wine("wine", setup, "/S", f"/{mode}", "/Vst2=C:\\vst2")
        expect(f"{mode}: the installer ends well", result.returncode, 0)
        record = self.wine("wine", "reg", "query", f"{registry}\\{RECORD}").stdout
        values = dict(re.findall(r"^ +(\w+) +REG_\w+ +(.*?)\r?$", record, re.MULTILINE))
        expect("Windows knows its name, publisher and size",
               (values.get("DisplayName"), values.get("Publisher"), int(values.get("EstimatedSize", "0"), 0) > 50000),
               ("Sivray", "TESH", True))
        for library in (vst2 / "Sivray.dll", common / "VST3" / VST3, common / "CLAP" / "Sivray.clap"):
            host = self.host(library)
            expect(f"{library.name} is installed with its content", (host.say("load"), host.say("open")), ("ok", "768x468"))
            folder = values["InstallLocation"]
            # Wine puts arguments with blanks into quotes, which this argument must not have.
            if library.suffix == ".dll" and " " not in folder:
                refused = self.wine("wine", f"{folder}\\Uninstall.exe", "/S", f"_?={folder}")
                expect("nothing is removed while a host has it loaded", (refused.returncode, library.exists()), (BUSY, True))
            host.end()
        version = self.wine("wine", program / "Sivray.exe", "--version")
        expect("the program is installed", version.stdout.strip().startswith("sivray "))
        expect("it is in the Start menu", len(list(self.drive.rglob("Sivray.lnk"))), 1)
        self.wine("wine", f"{values['InstallLocation']}\\Uninstall.exe", "/S")
        self.wine("wineserver", "-w")  # The uninstaller goes on in a copy of itself.
        left = self.user_files() - before
        expect("no file is left", sorted(str(path) for path in left), [])
        expect("and no record", self.wine("wine", "reg", "query", f"{registry}\\{RECORD}").returncode, 1)

    def installer(self):
        local = self.users / "Local" / "Programs"
        shutil.rmtree(local, ignore_errors=True)  # As before this user's first installation.
        self.installed("CurrentUser", "HKCU", local / "Common", local / "Sivray")
        if not SHORT:
            files = self.drive / "Program Files"
            self.installed("AllUsers", "HKLM", files / "Common Files", files / "Sivray")


def main():
    for preset, targets in (("release", ["Sivray", "sivray-render", "content", "try-plugin"]),
                            ("windows", ["zip", "quick_setup", "try-plugin"])):
        subprocess.run(["cmake", "--build", ROOT / "build" / preset, "--target", *targets], check=True,
                       stdout=subprocess.DEVNULL)
    PICTURES.mkdir(exist_ok=True)
    with tempfile.TemporaryDirectory(prefix="sivray-") as folder, screen():
        trial = Trial(pathlib.Path(folder))
        trial.samples()
        trial.content()
        trial.own_sounds()
        for library in ("Sivray.dll",) if SHORT else ("Sivray.dll", VST3, "Sivray.clap"):
            trial.panel(library)
        for library in ("Sivray.dll", "Sivray.clap") if SHORT else ("Sivray.dll", VST3, "Sivray.clap"):
            trial.life(library)
        trial.installer()
        trial.program()
        trial.scaled()
        if not SHORT:
            trial.three()
        subprocess.run(["wineserver", "-k"], env=trial.environment, check=False)
    print(f"{len(failures)} faults; pictures in {PICTURES}")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
