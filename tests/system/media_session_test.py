#!/usr/bin/python3
"""A session with media files, as a user has it: opened by qvremote, played one after the other, the film's window worked with the mouse."""

import struct
import subprocess
import time
import unittest

from remote import BIN, NEXT, PAUSE, PLAY, POWER, REPEAT, ROOT, STOP, WINDOWS, Remote, drag, loudness, remote_control, video_frame, wait_for, xdotool

CONFIG, ALBUMS = WINDOWS / "quorvex.ini", WINDOWS / "mfiles.abm"
SOUND = ["-f", "lavfi", "-i", "sine=440:duration=3"]
PICTURE = ["-f", "lavfi", "-i", "testsrc=size=320x240:rate=25:duration=3"]
# One of each kind, from different encoders.
KINDS = {
    "film.mpg": PICTURE + SOUND + ["-c:v", "mpeg1video", "-c:a", "mp2"],
    "clip.avi": PICTURE + SOUND + ["-c:v", "mpeg4", "-c:a", "libmp3lame"],
    "clip.mov": PICTURE + SOUND + ["-c:v", "mjpeg", "-pix_fmt", "yuvj420p", "-c:a", "pcm_s16be"],
    "song.mp3": SOUND + ["-c:a", "libmp3lame"],
    "noise.wav": SOUND + ["-c:a", "pcm_s16le"],
}
# Two files more, by way of a list in the words of Windows and Unix.
LIST = "; mine\r\n\r\nsong.mp3\nnoise.wav\r\n"


def midi_scale():
    """A Standard MIDI File: six notes of half a second each."""
    notes = b"".join(bytes([0, 0x90, 60 + step, 100, 0x83, 0x60, 0x80, 60 + step, 0]) for step in range(6))
    track = notes + b"\x00\xff\x2f\x00"
    return b"MThd" + struct.pack(">IHHH", 6, 0, 1, 480) + b"MTrk" + struct.pack(">I", len(track)) + track


class MediaSession(unittest.TestCase):
    def setUp(self):
        for store in (CONFIG, ALBUMS):
            store.unlink(missing_ok=True)
        CONFIG.write_bytes(b"[QUORVEX]\r\nAutoStartDevice=0\r\n")
        self.remote = Remote()
        self.addCleanup(self.remote.stop)
        self.folder = self.remote.folder

    def make(self, name, arguments):
        subprocess.run(["ffmpeg", "-v", "error", "-y", *arguments, str(self.folder / name)], check=True)
        return self.folder / name

    def test_every_kind_plays_to_its_end_and_the_next_follows(self):
        self.remote.start()
        time.sleep(1.5)
        files = [self.make(name, arguments) for name, arguments in KINDS.items()]
        files += [self.folder / "tune.mid", self.folder / "list.m3u"]
        files[-2].write_bytes(midi_scale())
        files[-1].write_text(LIST)
        names = [*KINDS, "tune.mid", "song.mp3", "noise.wav"]
        remote_control("open", *files)
        for number, name in enumerate(names, 1):
            self.remote.sees(lambda picture: (picture.number(6), picture.number(9)) == (str(number), str(len(names))), 15)
            self.remote.sees_text(name)
            wait_for(lambda: (video_frame() is not None) == name.endswith(("mpg", "avi", "mov")))
            self.assertGreater(loudness(0.5), 100, name)
            self.remote.sees(lambda picture: picture.time() == "00:00:02")
        wait_for(lambda: remote_control("state")["state"] == "stopped", 10)
        self.assertEqual(remote_control("state")["time"], "00:00:00.0")
        self.remote.click(POWER)
        self.assertEqual(self.remote.ended(), 0)
        self.assertIn(b"Tracks=8", ALBUMS.read_bytes())

    def test_the_video_window_is_worked_with_the_mouse(self):
        film = self.make("long film.mpg", ["-f", "lavfi", "-i", "testsrc=size=480x360:rate=25:duration=60", "-c:v", "mpeg2video"])
        # Not running yet, the panel is started; what is handed over goes before the last device.
        # The program that is started keeps the standard error output of the one that starts it, under Wine: so not a pipe.
        nowhere = subprocess.DEVNULL
        subprocess.run([ROOT / "tools" / "in-wine", BIN / "qvremote.exe", "open", film], stdin=nowhere, stdout=nowhere, stderr=nowhere, check=True)
        self.remote.find()
        wait_for(video_frame, 10)
        self.assertEqual(video_frame(), (self.remote.x + (534 - 510) // 2, self.remote.y - 384 - 4, 510, 384))
        x, y, width, height = video_frame()
        drag((x + 100, y + 100), (x + 40, y + 60))
        wait_for(lambda: video_frame() == (x - 60, y - 40, width, height))
        # The right edge drawn out: the picture keeps its shape.
        x, y, width, height = video_frame()
        edge = x + width - 5
        drag((edge, y + 200), (edge + 120, y + 200))
        wait_for(lambda: video_frame() == (x, y, 630, (630 - 30) * 360 // 480 + 24))
        normal = video_frame()
        xdotool("key", "Escape")
        wait_for(lambda: video_frame() == (0, 0, 1280, 1024))
        xdotool("key", "Escape")
        wait_for(lambda: video_frame() == normal)

        self.remote.click(PAUSE)
        self.remote.sees(lambda picture: "PAUSE" in picture.lamps())
        paused = remote_control("state")["time"]
        remote_control("key", "forward", "forward")
        self.assertGreater(remote_control("state")["time"], paused)
        self.remote.click(PLAY)
        self.remote.click(REPEAT)
        self.assertEqual(remote_control("state")["repeat"], "one")
        self.remote.click(NEXT)
        wait_for(lambda: remote_control("state")["time"] < "00:00:03")
        self.remote.click(STOP)
        wait_for(lambda: remote_control("state")["state"] == "stopped")
        remote_control("key", "close")
        wait_for(lambda: video_frame() is None)
        self.assertEqual(remote_control("state")["device"], "none")
        remote_control("key", "power")


if __name__ == "__main__":
    unittest.main(verbosity=2)
