"""The whole program as users have it: started under Wine, its panel read off the screen, its keys pressed with the mouse.

Needs the environment that ./check sets up (a virtual screen of its own).
"""

import array
import io
import math
import os
import subprocess
import sys
import tempfile
import time
from collections import namedtuple
from pathlib import Path

from PIL import Image

ROOT = Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT / "resources" / "art"), str(ROOT / "tests" / "support")]
sys.dont_write_bytecode = True

from layout import DIGITS, KEYS, LAMPS, PANEL_SIZE, TEXT_LINE  # noqa: E402

BIN = ROOT / "build" / "win" / "bin"
TESTS = ROOT / "build" / "win" / "tests"
WINDOWS = ROOT / "build" / os.environ.get("QUORVEX_ENV", "wine") / "drive_c" / "windows"
LAMP_NAMES = {14: "AM", 15: "PM", 18: "CHANNEL", 19: "TRACK", 20: "FILE", 21: "CHAPTER", 22: "OF", 23: "PAUSE", 24: "MUTE", 25: "REC",
              26: "RND", 27: "REP", 28: "1", 29: "ALL", 30: "MENU", 31: "CC", 32: "TIMER", 33: "IDLE", 34: "TV/CAP", 35: "DVD", 36: "CD"}
POWER, HIDE, MEDIA_SELECT, REPEAT, RANDOM, EJECT = 1016, 1055, 1057, 1043, 1098, 1041
MUTE, SOUND = 1061, 1102
STOP, PAUSE, PLAY, PREVIOUS, REWIND, FAST_FORWARD, NEXT = 1001, 1009, 1000, 1015, 1008, 1007, 1014


def in_wine(*command, **options):
    """Runs a Windows program to its end; returns the finished process. Where Wine itself did not start (docs/testing.md) it is started again."""
    for _ in range(3):
        done = subprocess.run([ROOT / "tools" / "in-wine", *command], capture_output=True, text=True, stdin=subprocess.DEVNULL, **options)
        if "failed to map the shared user data" not in done.stderr:
            break
    return done


def drive(*command):
    done = in_wine(BIN / "qvdrive.exe", *map(str, command))
    if done.returncode:
        raise AssertionError(f"qvdrive {command} ended with {done.returncode}: {done.stdout}{done.stderr}")
    return dict(line.split("=", 1) for line in done.stdout.splitlines())


def empty_drive():
    """The drive without a disc, its tray closed, at its usual speed."""
    for command in ("eject", "eject", "close"):
        drive(command)
    drive("speed", 100)


def xdotool(*words):
    subprocess.run(["xdotool", *map(str, words)], check=True)


Window = namedtuple("Window", "depth id kind left top right bottom enabled text")


def windows():
    """The player's visible windows and all that they contain, parents before their children."""
    done = in_wine(TESTS / "window_tree.exe")
    lines = [line.split("\t", 8) for line in done.stdout.splitlines()]
    return [Window(int(depth), int(number), kind, *map(int, rest), text) for depth, number, kind, *rest, text in lines]


def control(caption, number, kind="Button"):
    """A control of the dialog with this caption, waited for."""
    def find():
        inside = False
        for window in windows():
            inside = window.text == caption if window.depth == 0 else inside
            if inside and (window.id, window.kind) == (number, kind):
                return window
        return None
    return wait_for(find)


def click_in(window, x=None, y=None, *more):
    """Clicks a place in a window, by default its middle. `more`: what xdotool is to do after it."""
    across = (window.right - window.left) // 2 if x is None else x
    down = (window.bottom - window.top) // 2 if y is None else y
    xdotool("mousemove", window.left + across, window.top + down, "click", 1, *more)


def wait_for(what, limit=20.0, every=0.05):
    """Waits until what() answers something true and returns that; fails with its last answer."""
    end = time.monotonic() + limit
    while True:
        answer = what()
        if answer:
            return answer
        if time.monotonic() > end:
            raise AssertionError(f"{getattr(what, '__name__', what)}: still {answer!r} after {limit} s")
        time.sleep(every)


def wait_until_equal(what, wanted, limit=20.0):
    """Waits until what() answers what is wanted; fails with what it answered instead."""
    end = time.monotonic() + limit
    while (answer := what()) != wanted:
        if time.monotonic() > end:
            raise AssertionError(f"still {answer!r} after {limit} s, not {wanted!r}")
        time.sleep(0.05)


def environment():
    """Where the screen and the sound of ./check are."""
    script = f"source {ROOT}/tools/wine/environment.sh; choose_display_and_sound; echo $DISPLAY $PULSE_SERVER"
    words = subprocess.run(["bash", "-c", script], capture_output=True, text=True, check=True).stdout.split()
    os.environ["DISPLAY"], os.environ["PULSE_SERVER"] = words


environment()


def remote_control(*words):
    """Works the running program by qvremote; returns the lines that it prints."""
    done = in_wine(BIN / "qvremote.exe", *map(str, words))
    if done.returncode:
        raise AssertionError(f"qvremote {words}: {done.stderr}")
    return dict(line.split("=", 1) for line in done.stdout.splitlines())


def video_frame():
    """The video window's rectangle: x, y, width, height; none when there is none."""
    found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", "^QUORVEX Video$"], capture_output=True, text=True).stdout.split()
    if not found:
        return None
    shape = subprocess.run(["xdotool", "getwindowgeometry", "--shell", found[0]], capture_output=True, text=True, check=True).stdout
    numbers = dict(line.split("=") for line in shape.splitlines())
    return tuple(int(numbers[name]) for name in ("X", "Y", "WIDTH", "HEIGHT"))


def loudness(seconds=0.4):
    """Of what reaches the speakers: the root of the mean square, 0 to 32767."""
    size = int(seconds * 44100) * 4
    with subprocess.Popen(["parec", "-d", "sink.monitor", "--rate=44100", "--channels=2", "--format=s16le", "--latency-msec=50"],
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL) as recorder:
        samples = array.array("h", recorder.stdout.read(size))
        recorder.terminate()
    return math.sqrt(sum(sample * sample for sample in samples) / len(samples))


def drag(start, end):
    """As a hand does it, in steps."""
    middle = [(a + b) // 2 for a, b in zip(start, end)]
    xdotool("mousemove", *start, "sleep", 0.2, "mousedown", 1, "sleep", 0.3, "mousemove", *middle, "sleep", 0.2, "mousemove", *end,
            "sleep", 0.3, "mouseup", 1)


def make_disc(folder, seconds, name="disc"):
    """A disc image of silent tracks of so many seconds each; returns its CUE sheet."""
    frames, lines = 0, [f'FILE "{name}.bin" BINARY']
    for number, length in enumerate(seconds, 1):
        lines += [f"TRACK {number:02} AUDIO", f"INDEX 01 {frames // 4500:02}:{frames // 75 % 60:02}:{frames % 75:02}"]
        frames += length * 75
    with open(folder / f"{name}.bin", "wb") as image:
        image.truncate(frames * 2352)
    (folder / f"{name}.cue").write_text("\n".join(lines) + "\n")
    return folder / f"{name}.cue"


class Picture:
    """The panel at one moment."""

    mask = Image.open(ROOT / "build" / "win" / "art" / "segments.bmp").convert("1")

    def __init__(self, image):
        self.image = image

    def lit(self, box):
        """The pixels of a box, from its corner, that are lit: bright green, red or cyan."""
        x, y, width, height = box
        found = set()
        for dy in range(height):
            for dx in range(width):
                red, green, blue = self.image.getpixel((x + dx, y + dy))
                if max(red, green) == 255 and (red, green) != (255, 255):
                    found.add((dx, dy))
        return found

    def glyph(self, box):
        x, y, width, height = box
        return {(dx, dy) for dy in range(height) for dx in range(width) if y + dy < 70 and not self.mask.getpixel((x + dx, y + dy))}

    def digit(self, element):
        """The digit shown; None for a blank one."""
        lit = self.lit(DIGITS[element])
        if not lit:
            return None
        for digit in range(10):
            if lit == self.glyph(DIGITS[digit]):
                return digit
        raise HalfPainted(f"element {element} shows no digit")

    def lamp(self, element):
        lit = self.lit(LAMPS[element])
        if lit and lit != self.glyph(LAMPS[element]):
            raise HalfPainted(f"lamp {element} is lit in part")
        return bool(lit)

    def lamps(self):
        return {name for element, name in LAMP_NAMES.items() if self.lamp(element)}

    def number(self, first):
        digits = [self.digit(element) for element in range(first, first + 3)]
        return "".join("" if digit is None else str(digit) for digit in digits)

    def time(self):
        digits = [self.digit(element) for element in range(6)]
        if None in digits:
            return None
        return "{}{}:{}{}:{}{}".format(*digits)

    def text_pixels(self):
        x, y, width, height = TEXT_LINE
        return self.image.crop((x, y, x + width, y + height)).tobytes()

    def pressed_or_lit_frame(self, key):
        x, y, width, height, _ = KEYS[key]
        return all(self.image.getpixel((x + dx, y)) == (0, 255, 0) for dx in range(width))


class HalfPainted(AssertionError):
    """The display shows what is no digit and no whole lamp."""


class Remote:
    """A running quorvex.exe."""

    def __init__(self):
        self.folder = Path(tempfile.mkdtemp(prefix="quorvex-"))
        self.process = None
        self.rendered = {}

    def start(self):
        self.process = subprocess.Popen([ROOT / "tools" / "in-wine", BIN / "quorvex.exe"], stdin=subprocess.DEVNULL,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.find()

    def find(self):
        """Waits for the panel, also when somebody else has started it."""
        screen = subprocess.run(["xdotool", "getdisplaygeometry"], capture_output=True, text=True, check=True).stdout.split()
        self.x, self.y = (int(screen[0]) - PANEL_SIZE[0]) // 2, int(screen[1]) - 195
        wait_for(self.is_visible, 20)

    def is_visible(self):
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", "^Quorvex$"], capture_output=True, text=True)
        return found.stdout.split()

    def look(self):
        area = f"{PANEL_SIZE[0]}x{PANEL_SIZE[1]}+{self.x}+{self.y}"
        done = subprocess.run(["import", "-window", "root", "-crop", area, "ppm:-"], capture_output=True, check=True)
        return Picture(Image.open(io.BytesIO(done.stdout)).convert("RGB"))

    def sees(self, what, limit=20.0):
        """Waits until what(picture) is true. Seen in the middle of being painted the panel is looked at again."""
        def seen():
            try:
                return what(self.look())
            except HalfPainted as half:
                seen.__name__ = str(half)
                return False
        return wait_for(seen, limit)

    def shows_text(self, picture, text):
        """Whether the text line shows a text, held against Windows' own drawing of it."""
        if text not in self.rendered:
            target = self.folder / "line.ppm"
            done = in_wine(TESTS / "text_line.exe", text, str(target))
            assert done.returncode == 0, done.stderr
            self.rendered[text] = Image.open(target).convert("RGB").tobytes()
        return picture.text_pixels() == self.rendered[text]

    def sees_text(self, text, limit=10.0):
        self.sees(lambda picture: self.shows_text(picture, text), limit)

    def point(self, key):
        x, y, width, height, _ = KEYS[key]
        xdotool("mousemove", self.x + x + width // 2, self.y + y + height // 2)

    def click(self, key, button=1):
        self.point(key)
        xdotool("click", button)

    def hold(self, key, seconds):
        self.point(key)
        xdotool("mousedown", 1)
        time.sleep(seconds)
        xdotool("mouseup", 1)

    def ended(self, limit=10.0):
        """Waits for the program's end; returns its exit code."""
        return self.process.wait(limit)

    def stop(self):
        in_wine("taskkill", "/F", "/IM", "quorvex.exe")
        if self.process:
            self.process.wait(10)
