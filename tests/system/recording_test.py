#!/usr/bin/python3
"""Recordings as other programs see them: every picture that the card sent is there, in its place, with all sound, whatever was in the file before,
and also when the program that recorded was killed."""

import array
import random
import struct
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

from remote import ROOT, TESTS, drive, in_wine, wait_for

ROUNDS = 20
BLOCKS = (20, 16)  # the marks of the card's pictures, tests/support/disc_marks.h
RATE = 30000 / 1001


def windows_path(path):
    return "Z:" + str(path).replace("/", "\\")


def bench(*words):
    done = in_wine(TESTS / "capture_bench.exe", *map(str, words))
    if done.returncode:
        raise AssertionError(f"capture_bench {words}: {done.stdout} {done.stderr}")
    return done.stdout


def pictures(path):
    """The numbers burnt into the pictures, as ffmpeg shows them, each with its place in the stream; the channel that is shown."""
    shown = subprocess.run(["ffmpeg", "-nostdin", "-v", "error", "-i", path, "-map", "0:v", "-fps_mode", "passthrough", "-vf",
                            f"scale={BLOCKS[0]}:{BLOCKS[1]}:flags=neighbor,format=gray", "-f", "rawvideo", "-"], capture_output=True, check=True)
    assert not shown.stderr, shown.stderr
    rows = [shown.stdout[at : at + BLOCKS[0]] for at in range(0, len(shown.stdout), BLOCKS[0])]
    marks = [sum((grey > 125) << bit for bit, grey in enumerate(row)) for row in rows]
    numbers, channel = marks[:: BLOCKS[1]], marks[1] >> 8 & 0x3FF
    listed = subprocess.run(["ffprobe", "-v", "error", "-select_streams", "v", "-show_entries", "packet=pts", "-of", "csv=p=0", path],
                            capture_output=True, text=True, check=True).stdout.split()
    places = [int(line.strip(",")) for line in listed]
    assert len(numbers) == len(places), (len(numbers), len(places))
    assert all(number >> 18 == 2 for number in numbers), "a picture without marks"
    return [number & 0xFFFF for number in numbers], places, channel


def sound(path):
    data = subprocess.run(["ffmpeg", "-nostdin", "-v", "error", "-i", path, "-map", "0:a", "-ac", "1", "-f", "s16le", "-"],
                          capture_output=True, check=True).stdout
    return array.array("h", data)


def parts(path):
    """The chunks of the file's top level."""
    found = []
    with open(path, "rb") as file:
        while len(header := file.read(12)) >= 8:
            found.append(header[:4])
            file.seek(struct.unpack_from("<I", header, 4)[0] + 8 - len(header), 1)
    return found


def places_written(path):
    """The pictures in a file that was empty before and is not finished, chunk by chunk."""
    data = path.read_bytes()
    at, count = data.index(b"movi") + 4, 0
    while (name := data[at : at + 4]) in (b"00dc", b"01wb"):
        count += name == b"00dc"
        length = struct.unpack_from("<I", data, at + 4)[0]
        at += 8 + length + length % 2
    return count


class Recording(unittest.TestCase):
    def setUp(self):
        drive("card", "on")
        self.addCleanup(drive, "card", "off")
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.file = Path(folder.name) / "capture.avi"

    def check(self, path):
        """Every picture is in its place, and there is sound for all of them; answers how many places there are."""
        numbers, places, channel = pictures(path)
        self.assertEqual([number - numbers[0] for number in numbers], places)
        heard = sound(path)
        self.assertAlmostEqual(len(heard) / 48000, (places[-1] + 1) / RATE, delta=0.6)
        middle = heard[len(heard) // 4 : len(heard) * 3 // 4]
        rises = sum(before < 0 <= after for before, after in zip(middle, middle[1:]))
        length = len(middle) / 48000
        self.assertAlmostEqual(rises, (200 + 20 * channel) * length, delta=1 + 3 * length)
        return places[-1] + 1

    def record(self, seconds, master=-1):
        done = bench("record", windows_path(self.file), seconds, 320, 240, master)
        return {name: int(value) for name, value in (line.split() for line in done.splitlines())}

    def test_everything_is_recorded(self):
        for size in (None, 64):
            if size:
                bench("allocate", windows_path(self.file), size)
                self.assertEqual(self.file.stat().st_size, size << 20)
                self.assertGreaterEqual(self.file.stat().st_blocks * 512, size << 20, "the space is taken")
            for master in (-1, 0, 1):
                told = self.record(3, master)
                self.assertEqual(self.check(self.file), told["frames"] + told["dropped"])
                self.assertEqual(parts(self.file)[0], b"RIFF")
        self.assertEqual(self.file.stat().st_size, 64 << 20, "the space stays")
        self.assertEqual(parts(self.file), [b"RIFF", b"JUNK"])
        copy = self.file.with_name("copy.avi")
        bench("copy", windows_path(self.file), windows_path(copy))
        self.assertEqual(self.check(copy), told["frames"] + told["dropped"])
        self.assertEqual(parts(copy), [b"RIFF"])
        self.assertLess(copy.stat().st_size, 32 << 20)

    def test_a_killed_recording_is_finished(self):
        journal = self.file.with_name("capture.avi.journal")
        bench("allocate", windows_path(self.file), 64)
        self.record(4)  # so that there is an older recording to be mistaken for this one
        chance = random.Random()
        for is_fresh in [False, True] * (ROUNDS // 2):
            if is_fresh:
                self.file.unlink()
                bench("allocate", windows_path(self.file), 64)
            recorder = subprocess.Popen([ROOT / "tools" / "in-wine", TESTS / "capture_bench.exe", "record", windows_path(self.file), "60", "320", "240"],
                                        stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            self.addCleanup(recorder.kill)
            wait_for(journal.exists, 30)
            first = journal.stat().st_mtime_ns
            wait_for(lambda: journal.stat().st_mtime_ns > first, 30)
            time.sleep(chance.uniform(0.2, 2))
            recorder.kill()
            recorder.wait()
            written = places_written(self.file) if is_fresh else 0
            length = wait_for(lambda: bench("recover", windows_path(self.file)), 10)
            self.assertFalse(journal.exists())
            count = self.check(self.file)
            self.assertAlmostEqual(int(length) / 1000, count / RATE, delta=0.6)
            self.assertEqual(self.file.stat().st_size, 64 << 20)
            self.assertEqual(parts(self.file), [b"RIFF", b"JUNK"])
            self.assertLessEqual(written - count, RATE, "no more than a second is lost")


if __name__ == "__main__":
    unittest.main(verbosity=2)
