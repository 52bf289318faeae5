"""The pictures of the test discs, coded as MPEG-2 elementary streams.

Every picture says which it is, so that a test can read it off the screen (tests/support/disc_marks.h): across its top lie two rows of
20 blocks, 36 pixels wide and a sixteenth of the height each. Block i is bright when bit i of the row's number is set.
  upper row: bits 0-15 the picture's number from 0, bit 18 always dark, bit 19 always bright
  lower row: bits 0-7 the chapter from 1 (menus: 0), bits 8-17 the film (FILM_...), bit 18 always bright, bit 19 always dark
Below: a red, a green and a blue field, the numbers as text, a moving bar, noise (so that coded pictures have a usual size).
"""
import random
import subprocess
from pathlib import Path
from typing import NamedTuple

WIDTH, BLOCKS = 720, 20
FONT = "/usr/share/fonts/truetype/liberation/LiberationSans-Bold.ttf"
DARK, BRIGHT, GROUND = 30, 220, 90


class System(NamedTuple):
    name: str
    height: int
    rate: str
    group: int  # pictures of a GOP

    @property
    def second(self):
        """Seconds of two groups, which a chapter lasts."""
        numerator, denominator = map(int, self.rate.split("/"))
        return 2 * self.group * denominator / numerator


NTSC = System("NTSC", 480, "30000/1001", 15)
PAL = System("PAL", 576, "25/1", 12)


def ffmpeg(*arguments, **options):
    return subprocess.Popen(["ffmpeg", "-nostdin", "-loglevel", "error", "-y", *map(str, arguments)], **options)


def finish(process):
    if process.wait():
        raise SystemExit(f"ffmpeg failed: {process.args}")


def block_line(number):
    return b"".join(bytes([BRIGHT if number >> i & 1 else DARK]) * (WIDTH // BLOCKS) for i in range(BLOCKS))


def raw_picture(system, film, number, chapter, noise):
    strip = system.height // 16
    upper, lower = block_line(number & 0xFFFF | 1 << 19), block_line(chapter | film << 8 | 1 << 18)
    ground = bytes([GROUND]) * WIDTH
    bar = number * 8 % (WIDTH - 40)
    moving = ground[:bar] + bytes([BRIGHT]) * 40 + ground[bar + 40:]
    rough = bytes(GROUND + (value & 31) for value in range(256))
    return (upper * strip + lower * strip + ground * (8 * strip) + moving * strip + ground * strip
            + noise.randbytes(WIDTH * 2 * strip).translate(rough) + ground * (2 * strip))


def painted(system, film, words):
    """ffmpeg's filters for the colour fields and the text."""
    strip = system.height // 16
    fields = [f"drawbox=x={60 + 210 * i}:y={3 * strip}:w=180:h={2 * strip}:color={colour}:t=fill" for i, colour in enumerate(("0xC00000", "0x00C000", "0x0000C0"))]
    text = f"drawtext=fontfile={FONT}:fontcolor=white:fontsize={strip * 3 // 2}:x=(w-text_w)/2:y={7 * strip}:text='{words}'"
    return ",".join(["format=yuv444p", *fields, text])


def encode(path, system, film, chapters, words, aspect="4:3", more_filters=()):
    """A film of `chapters` chapters of two groups each; 0: one group without chapters, for a menu."""
    count = system.group * (2 * chapters or 1)
    noise = random.Random(film)
    filters = ",".join([painted(system, film, words), *more_filters])
    process = ffmpeg("-f", "rawvideo", "-pix_fmt", "gray", "-s", f"{WIDTH}x{system.height}", "-r", system.rate, "-i", "-", "-vf", filters,
                     "-c:v", "mpeg2video", "-g", system.group, "-bf", 2, "-flags", "+cgop", "-sc_threshold", 1000000000, "-mpv_flags", "+strict_gop",
                     "-b:v", "3M", "-maxrate", "8M", "-bufsize", 1835008, "-pix_fmt", "yuv420p", "-aspect", aspect, "-f", "mpeg2video", path, stdin=subprocess.PIPE)
    for number in range(count):
        chapter = number // (2 * system.group) + 1 if chapters else 0
        process.stdin.write(raw_picture(system, film, number, chapter, noise))
    process.stdin.close()
    finish(process)
    return Path(path)
