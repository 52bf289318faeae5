#!/usr/bin/python3
"""The sound keys, as a user has them: the sound gets softer and silent, and the level bar stands over film and desktop and leaves no trace."""

import array
import math
import os
import subprocess
import time
import unittest

from PIL import Image, ImageChops, ImageGrab
from remote import MUTE, PAUSE, PLAY, SOUND, WINDOWS, Remote, drag, drive, loudness, make_disc, remote_control, video_frame, wait_for, xdotool

CONFIG = WINDOWS / "quorvex.ini"
GREEN = (0, 255, 0)
# Every picture another, none with the bar's green.
FILM = ["-f", "lavfi", "-i", "testsrc=size=480x360:rate=25:duration=120,lutrgb=g=val/2", "-c:v", "mpeg2video", "-b:v", "4M"]
MARGIN = (15, 12)
SEGMENTS = 31


def screen():
    return ImageGrab.grab(xdisplay=os.environ["DISPLAY"]).convert("RGB")


def steady_loudness(least):
    """What is heard once it neither begins nor changes any more."""
    def steady():
        first, second = loudness(), loudness()
        return min(first, second) > least and abs(first - second) < 0.03 * first and second
    return wait_for(steady)


class Area:
    """What a level bar lies on: a picture, or the screen."""

    def __init__(self, x, y, width, height):
        self.box = (x, y, x + width, y + height)
        self.cell = width // (SEGMENTS + 8)
        self.half = (self.cell + 1) // 2
        self.top = height - 6 * self.half

    def of(self, image):
        return image.crop(self.box)

    def segment(self, index):
        """The rectangle of a large segment."""
        left = (5 + index) * self.cell
        return left, self.top, left + self.half, self.top + 3 * self.half

    def bar(self, image):
        """The segments as they look: # large, . small, ? covered by something else or not there."""
        picture, look = self.of(image), ""
        for left, top, right, bottom in map(self.segment, range(SEGMENTS)):
            middle = picture.getpixel(((left + right - 1) // 2, (top + bottom) // 2)) == GREEN
            corners = {picture.getpixel(corner) == GREEN for corner in ((left, top), (right - 1, top), (left, bottom - 1), (right - 1, bottom - 1))}
            look += "#" if middle and corners == {True} else "." if middle and corners == {False} else "?"
        return look

    def changed(self, before, after):
        """The rectangle in which two screens differ; None when they are equal."""
        return ImageChops.difference(self.of(before), self.of(after)).getbbox()

    def hidden(self, before, after, first, last):
        """Whether two screens are equal but for the segments from first to last."""
        blank = [self.of(image) for image in (before, after)]
        for picture in blank:
            for index in range(first, last + 1):
                picture.paste(Image.new("RGB", (self.half, 3 * self.half)), self.segment(index))
        return ImageChops.difference(*blank).getbbox() is None


def bar_of(level):
    return "#" * level + "." * (SEGMENTS - level)


class SoundKeys(unittest.TestCase):
    def setUp(self):
        CONFIG.write_bytes(b"[QUORVEX]\r\nAutoStartDevice=0\r\n")
        self.remote = Remote()
        self.addCleanup(self.remote.stop)

    def sees_bar(self, area, level):
        wait_for(lambda: area.bar(screen()) == bar_of(level), 3, 0.02)

    def steps(self, area, key, levels):
        """Presses an arrow key: after every press only the segment that changed looks different."""
        before = screen()
        for level in levels:
            xdotool("key", key)
            self.sees_bar(area, level)
            after = screen()
            index = level - 1 if key == "Right" else level
            self.assertEqual(area.changed(before, after), area.segment(index))
            before = after

    def test_a_disc_gets_softer_and_silent(self):
        sheet = make_disc(self.remote.folder, [60])
        tone = array.array("h", (int(12000 * math.sin(2 * math.pi * 441 * i / 44100)) for i in range(100) for _ in range(2)))
        (self.remote.folder / "disc.bin").write_bytes((tone.tobytes() * (60 * 44100 // 100 + 1))[:60 * 75 * 2352])
        self.addCleanup(drive, "eject")
        drive("insert", sheet)
        self.remote.start()
        time.sleep(1.5)
        remote_control("key", "cd")
        wait_for(lambda: remote_control("state")["items"] == "1")
        self.remote.click(PLAY)
        full = steady_loudness(7000)

        desktop = Area(0, 0, 1280, 1024)
        beside = Area(0, 0, 370, 1024)  # the panel, with its clock, stands in the middle
        before = screen()
        self.remote.click(SOUND)
        wait_for(lambda: desktop.bar(screen())[:6] == "######")
        self.softer_and_back(full)
        wait_for(lambda: beside.changed(before, screen()) is None, 6)

        self.silent_and_back(full)

    def test_a_film_gets_softer_and_silent(self):
        film = self.remote.folder / "film.mpg"
        subprocess.run(["ffmpeg", "-v", "error", *FILM[:4], "-f", "lavfi", "-i", "sine=441:duration=60,volume=4", *FILM[4:], "-shortest", film],
                       check=True)
        self.remote.start()
        time.sleep(1.5)
        remote_control("open", film)
        full = steady_loudness(5000)
        self.remote.click(SOUND)
        time.sleep(0.5)  # until the bar stands there: its keys go to the device before
        self.softer_and_back(full)
        self.silent_and_back(full)

    def softer_and_back(self, full):
        """By the arrow keys, with the level bar up."""
        for _ in range(16):
            xdotool("key", "Left")
        half = wait_for(lambda: (heard := loudness()) < full * 0.7 and heard)
        self.assertGreater(half, full * 0.2)
        for _ in range(16):
            xdotool("key", "Right")
        wait_for(lambda: loudness() > full * 0.9)

    def silent_and_back(self, full):
        """By the mute key."""
        self.remote.click(MUTE)
        self.remote.sees(lambda picture: "MUTE" in picture.lamps() and picture.pressed_or_lit_frame(MUTE))
        wait_for(lambda: loudness() == 0)
        self.remote.click(MUTE)
        self.remote.sees(lambda picture: "MUTE" not in picture.lamps())
        wait_for(lambda: loudness() > full * 0.9)

    def test_the_bar_stands_over_a_film_and_leaves_no_trace(self):
        film = self.remote.folder / "film.mpg"
        subprocess.run(["ffmpeg", "-v", "error", *FILM, film], check=True)
        self.remote.start()
        time.sleep(1.5)
        remote_control("open", film)
        x, y, width, height = wait_for(video_frame)
        normal = Area(x + MARGIN[0], y + MARGIN[1], width - 30, height - 24)
        wait_for(lambda: remote_control("state")["state"] == "playing")

        # While it runs.
        self.remote.click(SOUND)
        self.sees_bar(normal, 31)
        xdotool("key", "Left", "key", "Left", "key", "Left")
        self.sees_bar(normal, 29)
        self.remote.click(SOUND)
        wait_for(lambda: set(normal.bar(screen())) == {"?"})

        # Paused: the picture between the segments and after the bar is the picture as it was.
        self.remote.click(PAUSE)
        self.remote.sees(lambda picture: "PAUSE" in picture.lamps())
        time.sleep(0.5)
        still = screen()
        self.remote.click(SOUND)
        self.sees_bar(normal, 29)
        self.steps(normal, "Left", range(28, 24, -1))
        self.steps(normal, "Right", range(26, 29))
        self.no_blink(normal, 20, 31)
        wait_for(lambda: normal.changed(still, screen()) is None, 6)

        # The other adjustments: a balance that one volume for all speakers cannot have, and no tone.
        self.remote.click(SOUND)
        wait_for(lambda: set(normal.bar(screen())) == {"#", "."})
        xdotool("key", "Up")
        wait_for(lambda: normal.bar(screen()) == "." * 15 + "#" + "." * 15)
        xdotool("key", "Up")
        wait_for(lambda: set(normal.bar(screen())) == {"#", "."})
        self.remote.click(SOUND)
        wait_for(lambda: normal.changed(still, screen()) is None, 2)

        # On the whole screen and back while the bar is up, and in a larger window.
        whole = Area(0, 32, 1280, 960)
        xdotool("key", "Escape")
        wait_for(lambda: video_frame() == (0, 0, 1280, 1024))
        time.sleep(0.5)
        large = screen()
        remote_control("key", "sound")
        self.assertIn("#", wait_for(lambda: (bar := whole.bar(screen())).strip("?") and bar))
        wait_for(lambda: whole.changed(large, screen()) is None, 6)
        remote_control("key", "sound")
        xdotool("key", "Escape")
        wait_for(lambda: set(normal.bar(screen())) == {"#", "."}, 3)
        wait_for(lambda: normal.changed(still, screen()) is None, 6)

        # A larger window, the bar up: picture and bar are as large.
        remote_control("key", "sound")
        x, y, width, height = video_frame()
        drag((x + width - 5, y + 200), (x + width + 115, y + 200))
        x, y, width, height = wait_for(lambda: (frame := video_frame()) and frame[2] > width and frame)
        larger = Area(x + MARGIN[0], y + MARGIN[1], width - 30, height - 24)
        wait_for(lambda: set(larger.bar(screen())) == {"#", "."}, 3)
        wait_for(lambda: set(larger.bar(screen())) == {"?"}, 6)
        for area in (whole, larger):
            shown = area.of(large if area is whole else screen())
            for part in range(30, 480, 60):  # within the columns of the test picture
                place = (part * shown.width // 480, shown.height // 4)
                self.assertEqual(shown.getpixel(place), normal.of(still).getpixel((part, 90)))

    def no_blink(self, area, first, last):
        """While the level moves nothing else changes, not for a moment."""
        before = screen()
        pressing = subprocess.Popen(["xdotool", "key", "--delay", "40", *(["Left"] * 5 + ["Right"] * 5)])
        looks = 0
        while pressing.poll() is None:
            looks += 1
            self.assertTrue(area.hidden(before, screen(), first, last - 1), area.changed(before, screen()))
        self.assertGreater(looks, 3)


if __name__ == "__main__":
    unittest.main(verbosity=2)
