#!/usr/bin/python3
"""Recording as a user does it: with the panel's keys and the dialogs, until other programs and Quorvex itself play what was recorded."""

import contextlib
import os
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

from recording_test import pictures, sound, windows_path
from remote import MEDIA_SELECT, POWER, STOP, WINDOWS, Remote, click_in, control, drive, remote_control, video_frame, wait_for, windows, xdotool

RECORD = 1044
CONFIG = WINDOWS / "quorvex.ini"
RATE = 30000 / 1001
OK, CANCEL = 1, 2
ALLOCATE, CHOOSE, READY = "Allocate Capture File", "Set Capture File", "Ready to Record"
CHANGE, SIZE, FREE, NAME = 1087, 401, 400, 0x47C


def stored():
    return dict(line.split("=", 1) for line in CONFIG.read_text().splitlines() if "=" in line)


def state():
    return remote_control("state")


def is_open(caption):
    return any(window.depth == 0 and window.text == caption for window in windows())


def press(caption, button):
    """A button of a dialog; the dialog goes."""
    click_in(control(caption, button))
    wait_for(lambda: not is_open(caption))


def enter(caption, number, kind, text):
    """Writes a text over what is in a dialog's field."""
    click_in(control(caption, number, kind), None, None, "key", "Home", "shift+End")
    xdotool("type", "--delay", 30, text)


def name_file(path):
    field = wait_for(lambda: [w for w in windows() if w.id in (NAME, 0x480) and w.kind in ("Edit", "ComboBox")])[-1]
    click_in(field, None, None, "key", "Home", "shift+End")
    xdotool("type", "--delay", 30, path)
    xdotool("key", "Return")
    wait_for(lambda: not is_open(CHOOSE))


def fill(path):
    """Takes all the room that the disk has left."""
    with open(path, "wb", buffering=0) as file, contextlib.suppress(OSError):
        while True:
            file.write(bytes(4096))


class Capture(unittest.TestCase):
    def setUp(self):
        drive("card", "on")
        self.addCleanup(drive, "card", "off")
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.file = self.folder / "tape.avi"
        self.remote = Remote()
        self.addCleanup(self.remote.stop)

    def start(self, **options):
        lines = ["[QUORVEX]", "AutoStartDevice=0", "[CAPTURE]", "FrameRate=333667", *(f"{key}={value}" for key, value in options.items())]
        CONFIG.write_bytes("\r\n".join(lines + [""]).encode())
        self.open_card()

    def open_card(self):
        self.remote.start()
        time.sleep(1.5)
        self.remote.click(MEDIA_SELECT)
        time.sleep(0.5)
        xdotool("key", "--delay", 200, "Down", "Right", "Return")
        wait_for(video_frame, 15)
        self.remote.sees(lambda panel: "TV/CAP" in panel.lamps())

    def record(self, frames=45):
        """Presses Record, confirms, and waits until so many pictures are in the file."""
        self.remote.click(RECORD)
        press(READY, OK)
        self.remote.sees(lambda panel: "REC" in panel.lamps())
        wait_for(lambda: int(state().get("frames", 0)) >= frames, 30)

    def check(self, path, seconds=None, silence=0.5):
        """The file is whole: every picture in its place, with sound for all of them (but for so many seconds at the end)."""
        numbers, places, _ = pictures(path)
        self.assertEqual([number - numbers[0] for number in numbers], places)
        length = (places[-1] + 1) / RATE
        self.assertAlmostEqual(len(sound(path)) / 48000, length, delta=silence)
        if seconds is not None:
            self.assertAlmostEqual(length, seconds, delta=1)
        self.assertFalse(Path(f"{path}.journal").exists())
        return length

    def test_allocated_recorded_saved_and_played(self):
        self.start(EnableTimeLimit=1, TimeLimit=4, PromptToSave=1)
        self.remote.click(RECORD)
        click_in(control("Quorvex", OK))
        click_in(control(ALLOCATE, CHANGE))
        name_file(windows_path(self.folder / "tape"))
        enter(ALLOCATE, SIZE, "Edit", "12a")
        self.assertEqual(wait_for(lambda: control(ALLOCATE, SIZE, "Edit").text), "1")
        enter(ALLOCATE, SIZE, "Edit", "24")
        press(ALLOCATE, OK)
        self.assertEqual(self.file.stat().st_size, 24 << 20)
        press(READY, OK)
        self.remote.sees(lambda panel: "REC" in panel.lamps() and self.remote.shows_text(panel, windows_path(self.file)))
        name_file(windows_path(self.folder / "kept"))
        self.remote.sees_text("Capture file saved")
        self.assertNotIn("REC", self.remote.look().lamps())
        told = state()
        self.assertEqual(told["recording"], "off")
        kept = self.folder / "kept.avi"
        length = self.check(kept, 4)
        self.assertAlmostEqual((int(told["frames"]) + int(told["dropped"])) / RATE, length, delta=0.1)
        self.check(self.file, 4)

        remote_control("open", kept)
        wait_for(lambda: state()["device"] == "file")
        wait_for(lambda: state()["time"] >= "00:00:02", 20)
        self.remote.click(POWER)
        self.assertEqual(self.remote.ended(), 0)
        self.assertEqual(stored()["CaptureFile"], windows_path(self.file))
        self.assertEqual((stored()["TimeLimit"], stored()["EnableTimeLimit"], stored()["PromptToSave"]), ("4", "1", "1"))

    def test_cancelled_nothing_is_recorded(self):
        self.start(CaptureFile=windows_path(self.file))
        self.remote.click(RECORD)
        press(READY, CANCEL)
        self.remote.sees(lambda panel: "REC" not in panel.lamps())
        self.assertNotIn("frames", state())
        self.record()
        self.remote.click(STOP)
        self.remote.sees(lambda panel: "REC" not in panel.lamps())
        self.check(self.file)

    def test_power_finishes_the_file(self):
        for prompt in (0, 1):
            self.start(CaptureFile=windows_path(self.file), PromptToSave=prompt)
            self.record()
            self.remote.click(POWER)
            if prompt:
                name_file(windows_path(self.folder / "kept"))
            self.assertEqual(self.remote.ended(20), 0)
            self.check(self.file)
        self.check(self.folder / "kept.avi")

    def test_a_card_that_is_pulled_out_finishes_the_file(self):
        self.start(CaptureFile=windows_path(self.file))
        self.record()
        drive("card", "off")
        self.remote.sees_text("The capture device is gone")
        self.remote.sees(lambda panel: "REC" not in panel.lamps())
        self.check(self.file, silence=1.5)

    def test_killed_it_is_recovered_at_the_next_start(self):
        self.start(CaptureFile=windows_path(self.file))
        self.record(90)
        self.remote.process.kill()
        self.remote.process.wait(10)
        self.assertTrue(Path(f"{self.file}.journal").exists())
        wait_for(lambda: not self.remote.is_visible())
        self.open_card()
        text = wait_for(lambda: state()["title"])
        self.assertTrue(text.startswith("Recovered 00:00:0"), text)
        self.assertGreaterEqual(self.check(self.file, silence=1.5), 1.9)

    def test_a_full_disk_ends_the_recording(self):
        disk = self.folder / "disk"
        disk.mkdir()
        if subprocess.run(["mount", "-t", "tmpfs", "-o", "size=5000k", "none", disk], capture_output=True, check=False).returncode:
            self.skipTest("no disk can be mounted here")
        self.addCleanup(subprocess.run, ["umount", "-l", disk], check=True)
        letter = WINDOWS.parents[1] / "dosdevices" / "s:"
        letter.symlink_to(disk)
        self.addCleanup(os.unlink, letter)
        self.start()
        self.remote.click(RECORD)
        click_in(control("Quorvex", OK))
        click_in(control(ALLOCATE, CHANGE))
        name_file("S:\\tape.avi")
        self.assertEqual(control(ALLOCATE, SIZE, "Edit").text, "4")
        self.assertEqual(control(ALLOCATE, FREE, "Static").text, "4")
        press(ALLOCATE, OK)
        fill(disk / "rest")  # no room is left but what is set aside, not even for the journal
        press(READY, OK)
        self.remote.sees_text("Recording stopped: the disk is full", 20)
        self.assertNotIn("REC", self.remote.look().lamps())
        self.check(disk / "tape.avi", silence=1.5)


if __name__ == "__main__":
    unittest.main(verbosity=2)
