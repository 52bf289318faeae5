#!/usr/bin/python3
"""The panel on a display set to 200 %: twice its size, its keys where they are drawn, its display in the large glyphs."""

import subprocess
import unittest
from pathlib import Path

from PIL import Image
from remote import MUTE, POWER, ROOT, WINDOWS, Picture, Remote, drive, empty_drive, in_wine, make_disc, wait_for, xdotool
from layout import KEYS, MASK_SIZE, PANEL_SIZE, scaled

CONFIG = WINDOWS / "quorvex.ini"
DESKTOP = r"HKCU\Control Panel\Desktop"


def set_density(dots_per_inch):
    done = in_wine("reg", "add", DESKTOP, "/v", "LogPixels", "/t", "REG_DWORD", "/d", str(dots_per_inch), "/f")
    if done.returncode:
        raise AssertionError(done.stderr)


class LargePicture(Picture):
    mask = Image.open(Path(ROOT) / "build" / "win" / "art" / "segments_2x.bmp").convert("1")

    def lit(self, box):
        return super().lit(scaled(box, 2))

    def glyph(self, box):
        x, y, width, height = scaled(box, 2)
        rows = min(height, 2 * MASK_SIZE[1] - y)
        return {(dx, dy) for dy in range(rows) for dx in range(width) if not self.mask.getpixel((x + dx, y + dy))}


class LargeRemote(Remote):
    def find(self):
        window = wait_for(self.is_visible, 20)[0]
        shape = subprocess.run(["xdotool", "getwindowgeometry", "--shell", window], capture_output=True, text=True, check=True).stdout
        numbers = dict(line.split("=") for line in shape.splitlines())
        self.x, self.y, self.size = int(numbers["X"]), int(numbers["Y"]), (int(numbers["WIDTH"]), int(numbers["HEIGHT"]))

    def look(self):
        subprocess.run(["import", "-window", "root", "-crop", f"{self.size[0]}x{self.size[1]}+{self.x}+{self.y}",
                        self.folder / "panel.ppm"], check=True)
        return LargePicture(Image.open(self.folder / "panel.ppm").convert("RGB"))

    def point(self, key):
        x, y, width, height = scaled(KEYS[key][:4], 2)
        xdotool("mousemove", self.x + x + width // 2, self.y + y + height // 2)


class Scale(unittest.TestCase):
    def setUp(self):
        self.remote = LargeRemote()
        self.addCleanup(CONFIG.unlink, missing_ok=True)
        self.addCleanup(set_density, 96)
        self.addCleanup(self.remote.stop)

    def test_at_200_percent_the_panel_is_twice_as_large(self):
        CONFIG.write_bytes(b"[QUORVEX]\r\nLastDevice=3\r\n")
        empty_drive()
        drive("insert", make_disc(self.remote.folder, [83, 60]))
        self.addCleanup(empty_drive)
        set_density(192)
        self.remote.start()
        self.assertEqual(self.remote.size, scaled(PANEL_SIZE, 2))
        self.assertEqual((self.remote.x, self.remote.y), ((1280 - 2 * PANEL_SIZE[0]) // 2, 1024 - 2 * 195))
        self.remote.sees(lambda picture: picture.lamps() >= {"CD", "TRACK", "OF"} and picture.number(9) == "2" and picture.time())
        self.remote.click(MUTE)
        self.remote.sees(lambda picture: "MUTE" in picture.lamps())
        self.remote.click(MUTE)
        self.remote.sees(lambda picture: "MUTE" not in picture.lamps())
        self.remote.click(POWER)
        self.assertEqual(self.remote.ended(), 0)


if __name__ == "__main__":
    unittest.main(verbosity=2)
