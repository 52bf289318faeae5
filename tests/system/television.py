"""Quorvex with the virtual TV card: what the tests of television look at and press."""

import os
import time
import unittest

from PIL import ImageGrab, ImageStat

from remote import MEDIA_SELECT, WINDOWS, Remote, drive, video_frame, wait_for, windows, xdotool

CONFIG = WINDOWS / "quorvex.ini"
MARGIN = (15, 12)
BRIGHT, BLACK = 600, 24  # sums of a pixel's three colours


def picture():
    """What the video window shows."""
    x, y, width, height = video_frame()
    box = (x + MARGIN[0], y + MARGIN[1], x + width - MARGIN[0], y + height - MARGIN[1])
    return ImageGrab.grab(box, xdisplay=os.environ["DISPLAY"]).convert("RGB")


def colours():
    """The picture's mean colour in eight columns through its middle: a programme's bars differ, snow is grey."""
    image = picture()
    strip = image.crop((0, image.height * 11 // 16, image.width, image.height * 23 // 32))
    return [ImageStat.Stat(strip.crop((i * strip.width // 8, 0, (i + 1) * strip.width // 8, strip.height))).mean for i in range(8)]


def is_grey(columns):
    return all(max(mean) - min(mean) < 12 for mean in columns)


def is_snow():
    return is_grey(colours())


def brightness():
    return sum(sum(mean) for mean in colours())


def osd():
    """The texts that lie over the picture."""
    return [window.text for window in windows() if window.kind == "myOSCtl" and window.text]


def caption_row():
    """Of the first five places of the captions' bottom row: how much is black, how much is bright."""
    image = picture()
    across, down = image.width * 0.8 / 34, image.height * 0.8 / 15  # captions stay off the picture's edges, a tenth of it
    left, top = image.width // 10, image.height // 10
    box = (int(left + across), int(top + 14 * down), int(left + 6 * across), int(top + 15 * down))
    pixels = [sum(pixel) for pixel in image.crop(box).getdata()]
    return sum(pixel < BLACK for pixel in pixels) / len(pixels), sum(pixel > BRIGHT for pixel in pixels) / len(pixels)


def stored(key):
    """A value of quorvex.ini."""
    lines = dict(line.split("=", 1) for line in CONFIG.read_text().splitlines() if "=" in line)
    return lines.get(key)


def write_stations(text):
    """The list of what is on the air; where it is empty, the card makes it anew."""
    stations = next((WINDOWS.parent / "users").glob("*/AppData/Local/Quorvex")) / "channels.txt"
    stations.write_text(text) if text else stations.unlink()


class Television(unittest.TestCase):
    SETTINGS = b""

    def setUp(self):
        CONFIG.write_bytes(b"[QUORVEX]\r\nAutoStartDevice=0\r\n[CAPTURE]\r\nFrameRate=333667\r\n" + self.SETTINGS)
        drive("card", "on")
        self.addCleanup(drive, "card", "off")
        self.remote = Remote()
        self.addCleanup(self.remote.stop)

    def start(self):
        self.remote.start()
        time.sleep(1.5)

    def open_card(self):
        """TV/CAP, and its first entry."""
        self.remote.click(MEDIA_SELECT)
        time.sleep(0.5)
        xdotool("key", "--delay", 200, "Down", "Right", "Return")
        wait_for(video_frame, 15)
        self.remote.sees(lambda panel: "TV/CAP" in panel.lamps() and "CHANNEL" in panel.lamps())
        time.sleep(0.5)
