#!/usr/bin/python3
"""An evening with the virtual TV card, as a user has it: opened from the menu, its channels worked with keys, its picture read off the screen."""

import time
import unittest

from PIL import ImageGrab, ImageStat

from remote import MEDIA_SELECT, POWER, WINDOWS, Remote, drive, remote_control, video_frame, wait_for, xdotool

CONFIG = WINDOWS / "quorvex.ini"
MARGIN = (15, 12)


def picture():
    """What the video window shows."""
    x, y, width, height = video_frame()
    box = (x + MARGIN[0], y + MARGIN[1], x + width - MARGIN[0], y + height - MARGIN[1])
    return ImageGrab.grab(box).convert("RGB")


def colours():
    """The picture's mean colour in eight columns through its middle: a programme's bars differ, snow is grey."""
    image = picture()
    strip = image.crop((0, image.height // 4, image.width, image.height // 4 + 20))
    return [ImageStat.Stat(strip.crop((i * strip.width // 8, 0, (i + 1) * strip.width // 8, 20))).mean for i in range(8)]


def is_snow():
    return all(max(mean) - min(mean) < 12 for mean in colours())


def brightness():
    image = picture()
    return sum(ImageStat.Stat(image.crop((0, image.height // 5, image.width, image.height // 2))).mean)


def stored(key):
    lines = dict(line.split("=", 1) for line in CONFIG.read_text().splitlines() if "=" in line)
    return lines.get(key)


class TvSession(unittest.TestCase):
    def setUp(self):
        CONFIG.write_bytes(b"[QUORVEX]\r\nAutoStartDevice=0\r\n[CAPTURE]\r\nFrameRate=333667\r\n")
        drive("card", "on")
        self.addCleanup(drive, "card", "off")
        self.remote = Remote()
        self.addCleanup(self.remote.stop)
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

    def test_channels_inputs_and_the_picture(self):
        self.open_card()
        self.assertFalse(is_snow(), "channel 2 has a programme")
        self.assertEqual(self.remote.look().number(6), "2")
        self.assertEqual(self.remote.look().number(9), "69")

        xdotool("key", "Up")
        self.remote.sees(lambda panel: panel.number(6) == "3")
        wait_for(is_snow)
        xdotool("key", "Down", "Down")
        self.remote.sees(lambda panel: panel.number(6) == "69")
        xdotool("key", "2")
        self.remote.sees(lambda panel: panel.number(6) == "2")
        xdotool("key", "Return")
        wait_for(lambda: not is_snow())
        xdotool("key", "ctrl+r")
        self.remote.sees(lambda panel: panel.number(6) == "69")
        xdotool("key", "Delete")
        self.remote.sees(lambda panel: panel.number(6) == "2")
        self.assertEqual(remote_control("state")["channels"], "67")
        xdotool("key", "1")
        self.remote.sees(lambda panel: panel.number(6) == "1")
        self.remote.sees(lambda panel: panel.number(6) == "2", 6)  # nothing more was typed

        normal = brightness()
        remote_control("key", "picture", *["right"] * 6)
        wait_for(lambda: brightness() > normal * 1.1)
        remote_control("key", *["left"] * 6)
        wait_for(lambda: abs(brightness() - normal) < normal * 0.05)

        tuner = colours()
        xdotool("key", "ctrl+v")
        wait_for(lambda: colours() != tuner and "CHANNEL" not in self.remote.look().lamps())
        self.assertEqual(remote_control("state")["input"], "VIDEO 1")
        self.assertEqual(drive("card", "status")["input"], "0")
        self.assertEqual(stored("VideoInputType"), "1")
        xdotool("key", "ctrl+v", "ctrl+v")
        self.remote.sees(lambda panel: panel.number(6) == "2")
        self.remote.click(POWER)
        self.assertEqual(self.remote.ended(), 0)
        self.assertEqual(stored("LastDevice"), "1")
        self.assertEqual(stored("LastChannel"), "2")
        self.assertTrue(stored("AntennaChannelList").startswith("2 3 4 "))
        self.assertTrue(stored("AntennaChannelList").rstrip().endswith(" 68"))

    def test_a_card_that_is_pulled_out_is_survived(self):
        self.open_card()
        drive("card", "off")
        self.remote.sees_text("The capture device is gone")
        for key in ("Up", "5", "Return", *["ctrl+v"] * 3, "ctrl+c", "ctrl+r", "Escape", "Escape"):
            xdotool("key", key)
            time.sleep(0.1)
        remote_control("key", "picture", "right", "close")
        wait_for(lambda: remote_control("state")["device"] == "none")
        drive("card", "on")
        self.open_card()
        xdotool("key", "2", "Return")
        wait_for(lambda: not is_snow())


if __name__ == "__main__":
    unittest.main(verbosity=2)
