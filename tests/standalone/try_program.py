#!/usr/bin/env python3
"""Starts the program on an X server and a sound server of its own, plays it by the keyboard and a MIDI device, and takes the sound
server away.

Usage: try_program.py BUILD_FOLDER. Needs Xvfb and jackd; without them it ends with status 77, which counts as skipped. The
program plays a demo of notes alone, whose sound must be that of sivray-render to the sample: where controllers glide, the
cut of the blocks changes the last bits.
"""
# SPDX-License-Identifier: GPL-3.0-or-later

import array
import ctypes
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import wave

BUILD = pathlib.Path(sys.argv[1]).resolve()
PROGRAM = BUILD / "Sivray" / "sivray"
SKIPPED = 77
RATE = 44100
SERVER = f"sivray-test-{os.getpid()}"


class Recorder:
    """A client of the sound server that records the program's output. Read `left` and `right` after `stop`."""

    def __init__(self):
        self.jack = ctypes.CDLL("libjack.so.0")
        for name in ("jack_client_open", "jack_port_register", "jack_port_get_buffer", "jack_port_name"):
            getattr(self.jack, name).restype = ctypes.c_void_p
        pointer = ctypes.c_void_p
        self.client = pointer(self.jack.jack_client_open(b"recorder", 1, None))
        self.ports = [
            pointer(self.jack.jack_port_register(self.client, name, b"32 bit float mono audio", 1, 0))
            for name in (b"left", b"right")
        ]
        self.blocks = ([], [])
        self.frames = 0
        callback = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_uint32, pointer)
        self.callback = callback(self.take)
        self.jack.jack_set_process_callback(self.client, self.callback, None)
        self.jack.jack_activate(self.client)
        for number, name in enumerate((b"left", b"right"), 1):
            self.jack.jack_connect(self.client, b"Sivray:out_%d" % number, b"recorder:" + name)

    def take(self, frames, _):
        for blocks, port in zip(self.blocks, self.ports):
            blocks.append(ctypes.string_at(self.jack.jack_port_get_buffer(port, frames), 4 * frames))
        self.frames += frames
        return 0

    def peak(self, start):
        """Returns the largest sample from the frame `start` on."""
        return max((max(map(abs, array.array("f", b"".join(blocks))[start:]), default=0.0) for blocks in self.blocks))

    def stop(self):
        self.jack.jack_client_close(self.client)
        self.left, self.right = (array.array("f", b"".join(blocks)) for blocks in self.blocks)


class UnhurriedRecorder(Recorder):
    """The server waits for its clients, so that no block is lost however busy the machine is. Keeps the seconds that follow the
    first sound."""

    def __init__(self, seconds):
        self.most = int(seconds * RATE)
        super().__init__()
        self.jack.jack_set_freewheel(self.client, 1)

    def take(self, frames, _):
        if self.frames < self.most:
            super().take(frames, None)
            if not any(blocks[0].strip(b"\0") for blocks in self.blocks):
                self.blocks, self.frames = ([], []), 0  # Still silent.
        return 0

    def has_all(self):
        return self.frames >= self.most

    def stop(self):
        self.jack.jack_set_freewheel(self.client, 0)
        super().stop()


class JackKeys:
    """A client of the sound server that sends one note to the program's MIDI port."""

    def __init__(self):
        self.jack = ctypes.CDLL("libjack.so.0")
        for name in ("jack_client_open", "jack_port_register", "jack_port_get_buffer"):
            getattr(self.jack, name).restype = ctypes.c_void_p
        pointer = ctypes.c_void_p
        self.note = None
        self.client = pointer(self.jack.jack_client_open(b"keys", 1, None))
        self.port = pointer(self.jack.jack_port_register(self.client, b"out", b"8 bit raw midi", 2, 0))
        self.callback = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_uint32, pointer)(self.give)
        self.jack.jack_set_process_callback(self.client, self.callback, None)
        self.jack.jack_activate(self.client)
        self.connected = self.jack.jack_connect(self.client, b"keys:out", b"Sivray MIDI:in") == 0

    def give(self, frames, _):
        buffer = ctypes.c_void_p(self.jack.jack_port_get_buffer(self.port, frames))
        self.jack.jack_midi_clear_buffer(buffer)
        note, self.note = self.note, None
        if note is not None:
            self.jack.jack_midi_event_write(buffer, 0, bytes([0x90, note, 120]), ctypes.c_size_t(3))
        return 0

    def send(self, note):
        self.note = note


class Keyboard:
    """Simulates keys and mouse on the X server."""

    def __init__(self):
        self.x11, self.xtst = ctypes.CDLL("libX11.so.6"), ctypes.CDLL("libXtst.so.6")
        self.x11.XOpenDisplay.restype = ctypes.c_void_p
        self.display = ctypes.c_void_p(self.x11.XOpenDisplay(None))
        self.no_error = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)(lambda *_: 0)
        self.x11.XSetErrorHandler(self.no_error)  # A window that is not shown yet takes no focus.

    def key(self, letter, is_down):
        symbol = 0xFF1B if letter == "\x1b" else ord(letter)
        code = self.x11.XKeysymToKeycode(self.display, ctypes.c_ulong(symbol))
        self.xtst.XTestFakeKeyEvent(self.display, code, int(is_down), 0)
        self.x11.XFlush(self.display)

    def click(self, x, y):
        """Clicks on the panel. The window is in the middle of the screen; the strip above the panel is 40 pixels high."""
        self.xtst.XTestFakeMotionEvent(self.display, -1, (1024 - 768) // 2 + x, (768 - 508) // 2 + 40 + y, 0)
        for is_down in (1, 0):
            self.xtst.XTestFakeButtonEvent(self.display, 1, is_down, 0)
            self.x11.XFlush(self.display)
            time.sleep(0.2)

    def tap(self, letter):
        self.key(letter, True)
        time.sleep(0.2)
        self.key(letter, False)

    def focus(self):
        """Gives the focus to the program's window, as there is no window manager. Returns whether it has the focus."""
        root = ctypes.c_ulong(self.x11.XDefaultRootWindow(self.display))
        unused, focused, count = ctypes.c_ulong(), ctypes.c_ulong(), ctypes.c_uint()
        children = ctypes.POINTER(ctypes.c_ulong)()
        by = ctypes.byref
        self.x11.XQueryTree(self.display, root, by(unused), by(unused), by(children), by(count))
        for child in children[: count.value]:
            self.x11.XSetInputFocus(self.display, ctypes.c_ulong(child), 0, ctypes.c_ulong(0))
        self.x11.XGetInputFocus(self.display, by(focused), by(ctypes.c_int()))
        return focused.value in children[: count.value]


def check(condition, text):
    print("ok   " if condition else "WRONG", text, flush=True)
    if not condition:
        sys.exit(1)


def content_with_demo(folder, demo):
    """Copies the built content with another demo: every pad in turn, eight hits per second."""
    tempo = bytes.fromhex("00ff510307a120")  # 120 beats a minute.
    hits = b"".join(bytes([0, 0x99, 36 + 3 * i % 8, 60 + i, 24, 0x89, 36 + 3 * i % 8, 0]) for i in range(64))
    track = tempo + hits + bytes.fromhex("00ff2f00")
    demo.write_bytes(b"MThd" + bytes.fromhex("00000006000000010060") + b"MTrk" + len(track).to_bytes(4, "big") + track)
    built, made = BUILD / "Sivray/Tesh/Bramel", folder / "Tesh/Bramel"
    (made / "Resource/SivrayDemo").mkdir(parents=True)
    (made / "Resource/SivrayDemo/demo.mid").symlink_to(demo)
    (made / "Macro").symlink_to(built / "Macro")
    for part in (built / "Resource").iterdir():
        if part.name != "SivrayDemo":
            (made / "Resource" / part.name).symlink_to(part)
    return folder


class Scene:
    """The servers, a temporary home folder, and the program."""

    def __init__(self, folder):
        self.log = folder / "log"
        os.environ.update(
            XDG_CONFIG_HOME=str(folder / "config"), BRAMEL_DOCUMENTS=str(folder / "documents"), JACK_DEFAULT_SERVER=SERVER,
            JACK_NO_AUDIO_RESERVATION="1")
        self.keys = folder / "keys"  # Of the only MIDI device.
        os.mkfifo(self.keys)
        os.environ["BRAMEL_COMMON_FILES"] = str(content_with_demo(folder / "content", folder / "demo.mid"))
        self.children = []
        read_end, write_end = os.pipe()
        self.start("Xvfb", "-displayfd", str(write_end), "-screen", "0", "1024x768x24", pass_fds=[write_end])
        os.environ["DISPLAY"] = ":" + os.read(read_end, 9).decode().strip()

    def start(self, *command, **options):
        child = subprocess.Popen(command, stdout=subprocess.DEVNULL, **{"stderr": subprocess.DEVNULL, **options})
        self.children.append(child)
        return child

    def start_sound_server(self):
        server = self.start("jackd", "--sync", "--no-realtime", "-n", SERVER, "-d", "dummy", "-r", str(RATE), "-p", "512")
        time.sleep(1.0)
        return server

    def start_program(self):
        self.log.write_text("")
        with_device = {"LD_PRELOAD": str(BUILD / "bin/test_sequencer.so"), "SIVRAY_TEST_KEYS": str(self.keys)}
        return self.start(str(PROGRAM), stderr=self.log.open("a"), env={**os.environ, **with_device})

    def send_note(self, note):
        """Sends a note from the MIDI device. Fails if the program has not opened it."""
        keys = os.open(self.keys, os.O_WRONLY | os.O_NONBLOCK)
        os.write(keys, bytes([0x90, note, 120]))
        os.close(keys)

    def said(self, text):
        """Waits until the program has printed the text."""
        return comes_true(lambda: text in self.log.read_text())

    def end(self):
        """Ends the sound server by a request, because a killed one stays in the system's list of at most eight servers."""
        for child in reversed(self.children):
            child.terminate()
            child.wait()


def render(*options):
    subprocess.run([BUILD / "bin" / "sivray-render", "--quiet", *options], check=True)


def demo_by_renderer(folder, state):
    file = folder / "demo.wav"
    render(folder / "demo.mid", "-o", file, "--preroll", "1", "--state", state)
    with wave.open(str(file)) as sound:
        data = sound.readframes(sound.getnframes())
    return [
        [int.from_bytes(data[i : i + 3], "little", signed=True) for i in range(3 * channel, len(data), 6)]
        for channel in (0, 1)
    ]


def compare(recorded, rendered, seconds):
    """Returns the first frame at which recording and rendering differ by more than the rounding to 24 bits; None if equal."""
    first = next((i for i, value in enumerate(recorded) if value != 0.0), len(recorded))
    offset = first - next(i for i, value in enumerate(rendered) if abs(value) > 0)
    for i in range(int(seconds * RATE)):
        place = i + offset
        value = recorded[place] if 0 <= place < len(recorded) else 0.0
        if abs(value * 2**23 - rendered[i]) > 1.0:
            return i
    return None


def comes_true(condition, seconds=60.0):
    """Waits for a condition that takes moments, or longer if other programs use all cores."""
    end = time.monotonic() + seconds
    while not condition() and time.monotonic() < end:
        time.sleep(0.1)
    return condition()


def check_heard(action, name):
    loud, silent = 0.05, 0.01
    recorder = Recorder()
    fifth = RATE // 5
    check(comes_true(lambda: recorder.frames > fifth and recorder.peak(recorder.frames - fifth) < silent), "silence before " + name)
    before = recorder.frames
    action()
    heard = comes_true(lambda: recorder.peak(before) > loud, 15.0)
    recorder.stop()
    check(heard, f"{name} sounds (peak {recorder.peak(before):.2f})")


def play(scene, folder):
    state = folder / "config/sivray/sound.state"
    state.parent.mkdir(parents=True, exist_ok=True)
    render("--program", "Dub Echo", "--save-state", state)
    server = scene.start_sound_server()
    program = scene.start_program()
    check(scene.said("JACK: system, 44100 Hz, 512 frames"), "the program opens the sound server's device")
    keyboard = Keyboard()
    check(comes_true(keyboard.focus), "its window takes the keyboard")
    time.sleep(0.5)

    recorder = UnhurriedRecorder(5.5)
    keyboard.tap(" ")
    check(comes_true(recorder.has_all), "it plays the demo")
    recorder.stop()
    keyboard.tap(" ")
    left, right = demo_by_renderer(folder, state)
    differs = [compare(recorder.left, left, 5.0), compare(recorder.right, right, 5.0)]
    check(differs == [None, None], f"the demo sounds as sivray-render plays it, for 5 s (differs at {differs})")

    check_heard(lambda: keyboard.tap("a"), "the key A")
    check_heard(lambda: scene.send_note(38), "a note of a MIDI device")
    if not pathlib.Path("/dev/snd/seq").exists():
        keys = JackKeys()
        check(keys.connected, "without ALSA's sequencer the program has a MIDI port of the sound server")
        check_heard(lambda: keys.send(38), "a note of the sound server")
    keyboard.click(425, 160)  # Opens the sample browser, whose first click beside it only closes it.
    time.sleep(0.5)
    keyboard.tap("\x1b")
    check_heard(lambda: keyboard.click(63, 405), "a pad under the browser that Escape has closed")

    keyboard.tap(" ")
    time.sleep(0.5)
    server.terminate()
    server.wait()
    check(scene.said("The sound device is gone"), "it says that the sound server has gone")
    check(program.poll() is None, "and lives on")
    scene.log.write_text("")
    scene.start_sound_server()
    check(scene.said("JACK: system"), "it plays again when the server is back")
    program.send_signal(signal.SIGTERM)
    check(program.wait(60) == 0, "a request to end ends it, with status 0")
    check(demo_by_renderer(folder, state) == [left, right], "it remembers the sound")


def refuse(scene):
    signal.signal(signal.SIGHUP, signal.SIG_IGN)  # As nohup does; the program inherits it.
    program = scene.start_program()
    signal.signal(signal.SIGHUP, signal.SIG_DFL)
    check(scene.said("No sound"), "without sound server and card it says so, and shows its window")
    check(program.poll() is None, "and waits for a device")
    program.send_signal(signal.SIGHUP)
    time.sleep(0.5)
    check(program.poll() is None, "and outlives a hang-up under nohup")
    program.send_signal(signal.SIGINT)
    check(program.wait(60) == 0, "and ends when asked")

    def fails(change, *texts):
        main, terminal = os.openpty()
        environment = {**os.environ, **change}
        status = subprocess.run([PROGRAM], env=environment, stderr=terminal, timeout=60, check=False).returncode
        said = os.read(main, 4096).decode()
        check(status == 1 and all(text in said for text in texts), f"it refuses with status 1: {said.strip()}")

    fails({"DISPLAY": ":9876"}, "no screen")
    fails({"BRAMEL_COMMON_FILES": "/nowhere"}, "/nowhere")


def main():
    if not shutil.which("Xvfb") or not shutil.which("jackd"):
        print("Skipped: it needs Xvfb and jackd")
        return SKIPPED
    with tempfile.TemporaryDirectory() as name:
        scene = Scene(pathlib.Path(name))
        try:
            refuse(scene)
            play(scene, pathlib.Path(name))
        finally:
            print(scene.log.read_text(), end="")
            scene.end()
    return 0


if __name__ == "__main__":
    sys.exit(main())
