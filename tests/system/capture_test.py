#!/usr/bin/python3
"""Recording as a user does it: with the panel's keys and the dialogs, until other programs and Quorvex itself play what was recorded."""

import tempfile
import unittest
from pathlib import Path

from recording_test import pictures, sound
from remote import POWER, click_in, control, drive, remote_control, wait_for, windows, windows_path, xdotool
from television import CONFIG, Television, stored

RECORD = 1044
RATE = 30000 / 1001
OK = 1
ALLOCATE, CHOOSE, READY = "Allocate Capture File", "Set Capture File", "Ready to Record"
CHANGE, SIZE, NAME = 1087, 401, 0x47C


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


class Capture(Television):
    def setUp(self):
        super().setUp()
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.file = self.folder / "tape.avi"

    def start_with(self, **options):
        lines = ["[QUORVEX]", "AutoStartDevice=0", "[CAPTURE]", "FrameRate=333667", *(f"{key}={value}" for key, value in options.items())]
        CONFIG.write_bytes("\r\n".join(lines + [""]).encode())
        self.start()
        self.open_card()

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
        self.start_with(EnableTimeLimit=1, TimeLimit=4, PromptToSave=1)
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
        self.assertEqual(stored("CaptureFile"), windows_path(self.file))
        self.assertEqual([stored(key) for key in ("TimeLimit", "EnableTimeLimit", "PromptToSave")], ["4", "1", "1"])

    def test_power_finishes_the_file(self):
        for prompt in (0, 1):
            self.start_with(CaptureFile=windows_path(self.file), PromptToSave=prompt)
            self.record()
            self.remote.click(POWER)
            if prompt:
                name_file(windows_path(self.folder / "kept"))
            self.assertEqual(self.remote.ended(20), 0)
            self.check(self.file)
        self.check(self.folder / "kept.avi")

    def test_a_card_that_is_pulled_out_finishes_the_file(self):
        self.start_with(CaptureFile=windows_path(self.file))
        self.record()
        drive("card", "off")
        self.remote.sees_text("The capture device is gone")
        self.remote.sees(lambda panel: "REC" not in panel.lamps())
        self.check(self.file, silence=1.5)

    def test_killed_it_is_recovered_at_the_next_start(self):
        self.start_with(CaptureFile=windows_path(self.file))
        self.record(90)
        self.remote.process.kill()
        self.remote.process.wait(10)
        self.assertTrue(Path(f"{self.file}.journal").exists())
        wait_for(lambda: not self.remote.is_visible())
        self.start()
        self.open_card()
        text = wait_for(lambda: state()["title"])
        self.assertTrue(text.startswith("Recovered 00:00:0"), text)
        self.assertGreaterEqual(self.check(self.file, silence=1.5), 1.9)


if __name__ == "__main__":
    unittest.main(verbosity=2)
