#!/usr/bin/python3
"""A session with DVDs, as a user has it: menus worked with keys and mouse, chapters, subtitles, sounds and captions chosen, seen and heard.

What the discs show and sound: tests/support/make_discs.py. Every picture has its number, chapter and film in blocks across its top.
"""

import array
import os
import subprocess
import time
import unittest

from PIL import ImageGrab
from remote import (BIN, EJECT, NEXT, PAUSE, PLAY, PREVIOUS, ROOT, STOP, WINDOWS, Remote, drive, in_wine, remote_control, video_frame,
                    wait_for, windows, xdotool)

DISCS = ROOT / "build" / "win" / "tests" / "discs"
CONFIG = WINDOWS / "quorvex.ini"
LIT = (255, 255, 0)
TITLE_MENU, ROOT_MENU, SUB_MENU = 101, 102, 103
WHITE, CYAN, MAGENTA = (255, 255, 255), (0, 255, 255), (255, 0, 255)
DISC_SIZE = (720, 480)


def is_like(colour, other):
    return all(abs(a - b) < 60 for a, b in zip(colour, other))


class Shot:
    """The film at one moment."""

    def __init__(self):
        x, y, width, height = wait_for(video_frame)
        self.image = ImageGrab.grab((x + 15, y + 12, x + width - 15, y + height - 12), xdisplay=os.environ["DISPLAY"]).convert("RGB")

    def at(self, x, y):
        """The colour at a place of the disc's picture."""
        return self.image.getpixel((x * self.image.width // DISC_SIZE[0], y * self.image.height // DISC_SIZE[1]))

    def row(self, number):
        bright = [self.at(36 * block + 18, 30 * number + 15)[1] > 125 for block in range(20)]
        return sum(bit << block for block, bit in enumerate(bright))

    def marks(self):
        """Film, chapter and number of the picture; none when it is no picture of a disc."""
        upper, lower = self.row(0), self.row(1)
        return (lower >> 8 & 0x3FF, lower & 0xFF, upper & 0xFFFF) if (upper >> 18, lower >> 18) == (2, 1) else None

    def selected(self):
        """The menu's button that has the yellow frame, from 0 (four in a row); none when none or several have it."""
        boxes = [(60 + 160 * (index % 4), 180 + 80 * (index // 4)) for index in range(12)]
        found = [index for index, (left, top) in enumerate(boxes)
                 if all(is_like(self.at(x, y), LIT) for x, y in ((left + 4, top + 24), (left + 115, top + 24), (left + 60, top + 4)))]
        return found[0] if len(found) == 1 else None

    def subtitles(self):
        """The colours of the four bars that subtitles stand on, from the lowest; none where there is no bar."""
        colours = [self.at(125, 480 - 60 - 30 * stream + 4) for stream in range(4)]
        return [colour if max(colour) > 200 else None for colour in colours]


def film_is(number, chapter=None):
    def seen():
        marks = Shot().marks()
        return marks and marks[0] == number and chapter in (None, marks[1]) and marks
    return wait_for(seen)


def tone():
    """The pitch of what is heard, in Hz."""
    command = ["parec", "--device=sink.monitor", "--format=s16le", "--rate=48000", "--channels=1", "--latency-msec=50"]
    with subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL) as recorder:
        samples = array.array("h", recorder.stdout.read(2 * 48000 // 2))
        recorder.kill()
    rises = sum(a < 0 <= b for a, b in zip(samples, samples[1:]))
    return rises * 2


class DvdSession(unittest.TestCase):
    def setUp(self):
        CONFIG.write_bytes(b"[QUORVEX]\r\nAutoStartDevice=0\r\n")
        self.remote = Remote()
        self.addCleanup(drive, "eject")
        self.addCleanup(self.remote.stop)

    def play(self, disc):
        drive("insert", DISCS / disc)
        self.remote.start()
        time.sleep(1.5)
        remote_control("key", "dvd")

    def at_chapter(self, chapter, chapters):
        self.remote.sees(lambda picture: (picture.number(6), picture.number(9)) == (str(chapter), str(chapters)))
        self.assertIn("CHAPTER", self.remote.look().lamps())

    def selects(self, index):
        wait_for(lambda: Shot().selected() == index)

    def point_at(self, index):
        x, y, width, height = video_frame()
        left, top = 60 + 160 * (index % 4) + 60, 180 + 80 * (index // 4) + 24
        xdotool("mousemove", x + 15 + left * (width - 30) // 720, y + 12 + top * (height - 24) // 480)

    def test_menus_are_worked_with_keys_and_mouse(self):
        self.play("menus.iso")
        film_is(TITLE_MENU)
        self.remote.sees(lambda picture: {"MENU", "DVD"} <= picture.lamps())
        self.selects(0)
        xdotool("key", "KP_Add")
        self.selects(1)
        xdotool("key", "Return")
        film_is(2)
        # This title's subtitles are forced: seen though no subtitles are chosen.
        wait_for(lambda: is_like(Shot().subtitles()[0] or LIT, CYAN))
        # At its end the title's menu comes back, on which its first button leads to the menu of the other titles.
        film_is(TITLE_MENU)
        self.selects(0)
        xdotool("key", "Return")
        film_is(ROOT_MENU)
        self.selects(0)
        for key, index in (("Down", 4), ("KP_Add", 5), ("Up", 1), ("KP_Subtract", 0), ("Down", 4)):
            xdotool("key", key)
            self.selects(index)
        xdotool("key", "Return")
        film_is(1, 5)
        self.at_chapter(5, 25)
        self.remote.sees(lambda picture: picture.time() == "00:00:05" and "MENU" not in picture.lamps())
        xdotool("key", "ctrl+m")
        film_is(ROOT_MENU)
        self.point_at(6)
        self.selects(6)
        self.point_at(10)
        self.selects(10)
        xdotool("click", 1)
        film_is(SUB_MENU)
        self.remote.click(STOP)
        wait_for(lambda: remote_control("state")["state"] == "stopped")

    def test_chapters_pauses_and_the_time(self):
        self.play("chapters.iso")
        film_is(1)
        for key, step in ((NEXT, 1), (NEXT, 1), (NEXT, 1), (PREVIOUS, -1)):
            before = int(remote_control("state")["item"])
            self.remote.click(key)
            wait_for(lambda: abs(int(remote_control("state")["item"]) - before - step) <= 1)
        self.remote.click(NEXT, button=3)
        wait_for(lambda: any(window.kind == "#32768" for window in windows()))
        xdotool("key", "End", "Return")
        film_is(1, 25)
        self.at_chapter(25, 25)
        wait_for(lambda: remote_control("state")["state"] == "stopped")
        self.remote.click(PLAY)
        film_is(1, 2)
        self.remote.click(PAUSE)
        self.remote.sees(lambda picture: "PAUSE" in picture.lamps())
        paused = Shot().marks()
        time.sleep(0.5)
        self.assertEqual(Shot().marks(), paused)
        seconds = int(self.remote.look().time()[-2:])
        self.assertLessEqual(abs(paused[2] / 30 - seconds), 1.1)
        xdotool("key", "Escape")
        time.sleep(0.5)
        self.assertEqual(Shot.marks(self.full_screen()), paused)
        xdotool("key", "Escape")
        wait_for(lambda: Shot().marks() == paused)
        self.remote.click(PLAY)
        film_is(1, paused[1] + 1)

    def full_screen(self):
        """The picture that fills the screen's width."""
        shot = Shot()
        screen = ImageGrab.grab(xdisplay=os.environ["DISPLAY"]).convert("RGB")
        shot.image = screen.crop((0, 32, 1280, 992))
        return shot

    def choose_stream(self, *keys):
        xdotool("key", "ctrl+l")
        wait_for(lambda: any(window.kind == "#32768" for window in windows()))
        time.sleep(0.3)
        xdotool("key", "--delay", 80, *keys, "Return")

    def test_subtitles_and_sounds_are_chosen_by_language(self):
        self.play("streams")
        film_is(1)
        wait_for(lambda: abs(tone() - 440) < 20)
        self.assertEqual(Shot().subtitles(), [None] * 4)
        self.choose_stream("Down", "Down", "Right", "Down")
        wait_for(lambda: is_like(Shot().subtitles()[0] or LIT, WHITE))
        self.choose_stream("Down", "Down", "Right", "Down", "Down", "Down")
        wait_for(lambda: is_like(Shot().subtitles()[2] or LIT, MAGENTA))
        self.choose_stream("Down", "Down", "Right")
        time.sleep(0.3)
        for _ in range(20):
            self.assertEqual(Shot().subtitles(), [None] * 4)
        self.choose_stream("Down", "Right", "Down", "Down")
        wait_for(lambda: abs(tone() - 1320) < 40)

    def caption_pixels(self, row):
        """How many pixels of a caption's row are as bright as its letters, and how many as black as its box."""
        shot = Shot()
        if not shot.marks():
            return 0, 0  # the window is there, the film is not yet
        width, height = shot.image.size
        line = height * 8 / 10 / 15
        area = shot.image.crop((width // 10, int(height / 10 + line * (row - 1)), width * 9 // 10, int(height / 10 + line * row)))
        pixels = list(area.getdata())
        return sum(min(pixel) > 200 for pixel in pixels), sum(max(pixel) < 20 for pixel in pixels)

    def test_captions_stand_on_the_picture_with_and_without_a_box(self):
        self.play("captions")
        film_is(1, 2)
        self.assertLess(self.caption_pixels(15)[0], 20)
        xdotool("key", "ctrl+c")
        self.remote.sees(lambda picture: "CC" in picture.lamps())
        # From picture 60 on two lines stand there, from picture 120 on nothing.
        wait_for(lambda: self.caption_pixels(15)[0] > 150)
        self.assertTrue(59 <= Shot().marks()[2] <= 75)
        self.assertLess(self.caption_pixels(15)[1], 2500)
        xdotool("key", "ctrl+c")
        self.remote.sees(lambda picture: "CC" not in picture.lamps())
        wait_for(lambda: self.caption_pixels(15)[0] < 20)
        remote_control("key", "power")
        self.remote.ended()
        CONFIG.write_bytes(b"[QUORVEX]\r\nAutoStartDevice=0\r\n[DVD]\r\nClosedCaption=1\r\nCCOpaque=1\r\n")
        self.remote.start()
        time.sleep(1.5)
        remote_control("key", "dvd")
        wait_for(lambda: self.caption_pixels(15)[0] > 150)
        self.assertGreater(self.caption_pixels(15)[1], 2500)

    def test_what_is_no_film_is_told_and_a_disc_may_go_at_any_time(self):
        drive("insert", DISCS / "damaged" / "data.iso")
        self.remote.start()
        time.sleep(1.5)
        self.assert_told()
        drive("insert", DISCS / "endless")
        self.assert_told()
        drive("insert", DISCS / "chapters.iso")
        remote_control("key", "dvd")
        film_is(1, 2)
        drive("eject")
        wait_for(lambda: remote_control("state")["state"] == "stopped" and video_frame() is None)
        self.remote.sees(lambda picture: "DVD" in picture.lamps() and "CHAPTER" not in picture.lamps() and not picture.number(6).strip())
        # Play opens what lies in the drive then; a disc may also be changed for another one.
        for disc, film in (("menus.iso", TITLE_MENU), ("streams", 1)):
            drive("insert", DISCS / disc)
            wait_for(lambda: video_frame() is None)
            self.remote.click(PLAY)
            film_is(film)
        # Eject takes the player off the disc and opens the tray, and closes it again.
        drive("insert", DISCS / "menus.iso")
        wait_for(lambda: video_frame() is None)
        self.remote.click(EJECT)
        wait_for(lambda: drive("status")["tray"] == "open")
        self.remote.click(EJECT)
        wait_for(lambda: drive("status")["tray"] == "closed")
        self.remote.click(PLAY)
        film_is(TITLE_MENU)
        xdotool("mousemove", *video_frame()[:2])
        remote_control("key", "close")
        wait_for(lambda: video_frame() is None)
        drive("eject")
        drive("eject")
        self.assert_told()

    def assert_told(self):
        """The DVD key brings the two boxes, and no device is left."""
        in_wine(BIN / "qvremote.exe", "key", "dvd")
        wait_for(lambda: any(window.text == "Error initializing DVD device." for window in windows()))
        xdotool("key", "Return")
        wait_for(lambda: any(window.text.startswith("* ") for window in windows()))
        xdotool("key", "Return")
        wait_for(lambda: remote_control("state")["device"] == "none")


if __name__ == "__main__":
    unittest.main(verbosity=2)
