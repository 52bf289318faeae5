#!/usr/bin/python3
"""A whole session with an audio CD, as a user has it: start, disc in, every transport key, disc out, Power."""

import time
import unittest

from remote import (EJECT, FAST_FORWARD, MEDIA_SELECT, NEXT, PAUSE, PLAY, POWER, RANDOM, REPEAT, STOP, WINDOWS, Remote, drive, empty_drive, make_disc,
                    wait_for, xdotool)

CONFIG, STORE = WINDOWS / "quorvex.ini", WINDOWS / "cd.abm"


class CdSession(unittest.TestCase):
    def setUp(self):
        for store in (CONFIG, STORE):
            store.unlink(missing_ok=True)
        empty_drive()
        self.remote = Remote()
        self.addCleanup(self.remote.stop)

    def seconds(self):
        shown = self.remote.look().time()
        if shown is None:
            return None
        hours, minutes, seconds = map(int, shown.split(":"))
        return hours * 3600 + minutes * 60 + seconds

    def sees_lamps(self, *names):
        self.remote.sees(lambda picture: set(names) <= picture.lamps())

    def lacks_lamps(self, *names):
        self.remote.sees(lambda picture: not set(names) & picture.lamps())

    def test_a_session(self):
        remote = self.remote
        begun = time.time()
        remote.start()
        # The lamp test: every digit an eight, every lamp on, for half a second.
        remote.sees(lambda picture: picture.digit(0) == 8 and picture.lamp(23), 3)
        remote.sees_text("ver 04.09.1999")
        self.assertEqual(remote.look().lamps() - {"AM", "PM"}, {"IDLE"})
        clock = remote.sees(lambda picture: picture.time())
        now = time.localtime()
        self.assertIn(int(clock[:2]), (now.tm_hour, now.tm_hour - 12))
        self.assertLess(abs(int(clock[3:5]) - now.tm_min) % 59, 2)

        disc = make_disc(remote.folder, [200, 180, 240])
        drive("insert", disc)
        remote.click(MEDIA_SELECT)
        time.sleep(1)
        xdotool("mousemove_relative", 30, 36)  # the third item: CD
        xdotool("click", 1)
        remote.sees(lambda picture: (picture.number(6), picture.number(9)) == ("1", "3"))
        self.sees_lamps("TRACK", "OF", "CD")
        self.lacks_lamps("IDLE", "AM", "PM")
        remote.sees_text("Track 01")
        first = self.seconds()
        remote.sees(lambda picture: picture.pressed_or_lit_frame(PLAY))
        wait_for(lambda: self.seconds() >= first + 2)
        self.assertEqual(drive("status")["mode"], "playing")

        remote.click(NEXT)
        remote.sees(lambda picture: picture.number(6) == "2")
        remote.sees_text("Track 02")
        wait_for(lambda: drive("status")["track"] == "2")

        remote.click(PAUSE)
        self.sees_lamps("PAUSE")
        paused = drive("status")["time"]
        time.sleep(1.2)
        self.assertEqual(drive("status")["time"], paused)
        remote.click(PAUSE)
        self.lacks_lamps("PAUSE")

        remote.click(REPEAT)
        self.sees_lamps("REP", "1")
        remote.click(REPEAT)
        self.sees_lamps("REP", "ALL")
        remote.click(REPEAT)
        self.lacks_lamps("REP", "1", "ALL")
        remote.click(RANDOM)
        self.sees_lamps("RND")
        remote.click(RANDOM)
        self.lacks_lamps("RND")

        # Held for three seconds: after half a second a second of the track every 50 ms.
        begun = self.seconds()
        remote.hold(FAST_FORWARD, 3)
        wait_for(lambda: self.seconds() >= begun + 25)
        self.assertLess(self.seconds(), begun + 65)
        wait_for(lambda: drive("status")["mode"] == "playing")
        minutes, seconds = map(int, drive("status")["time"].split(":"))
        self.assertGreater(minutes * 60 + seconds, begun + 20)

        remote.click(STOP)
        remote.sees(lambda picture: picture.time() == "00:00:00" and not picture.pressed_or_lit_frame(PLAY))
        self.assertEqual(drive("status")["mode"], "stopped")
        xdotool("key", "Next")  # Page Down
        wait_for(lambda: drive("status")["mode"] == "playing")

        remote.click(EJECT)
        remote.sees_text("No disc loaded")
        self.assertEqual(drive("status")["tray"], "open")
        remote.click(POWER)
        self.assertEqual(remote.ended(), 0)
        self.assertEqual(CONFIG.read_bytes(), b"[QUORVEX]\r\nAutoStartDevice=1\r\nLastDevice=3\r\nDisableAPM=0\r\nDisableScreenSaver=0\r\n"
                                              b"[TV]\r\nLastCapDevice=-1\r\n")
        self.assertEqual(STORE.read_bytes(), b"[CD List]\r\nNumber of CDs=1\r\n1=00000500\r\n[00000500]\r\nTitle=\r\nArtist=\r\n"
                                             b"1=Track 01\r\n2=Track 02\r\n3=Track 03\r\nPlaylist=1 2 3 \r\n")
        # What the player and the drive keep is nobody else's to write.
        for path in WINDOWS.parent.rglob("*"):
            if path.is_file() and not path.is_symlink() and path.stat().st_mtime >= begun:
                self.assertEqual(path.stat().st_mode & 0o022, 0, path)

    def test_power_ends_the_program_whether_the_drive_answers_late_or_never(self):
        CONFIG.write_bytes(b"[QUORVEX]\nLastDevice=3\n")
        drive("insert", make_disc(self.remote.folder, [60]))
        self.addCleanup(drive, "answer-in", 0)
        for milliseconds in (5000, 4_000_000_000):
            self.remote.start()
            self.remote.sees(lambda picture: picture.number(9) == "1")
            drive("answer-in", milliseconds)
            time.sleep(0.5)  # it is asked five times a second
            self.remote.click(POWER)
            self.assertEqual(self.remote.ended(), 0)
            drive("answer-in", 0)

    def test_the_next_start_finds_the_disc_and_plays_it(self):
        CONFIG.write_bytes(b"[QUORVEX]\nLastDevice=3\n")
        drive("insert", make_disc(self.remote.folder, [60, 60]))
        self.remote.start()
        self.remote.sees(lambda picture: picture.number(9) == "2")
        wait_for(lambda: drive("status")["mode"] == "playing")
        # A disc that is exchanged while the player runs is taken over at once, and so is one that is gone.
        drive("insert", make_disc(self.remote.folder, [30, 30, 31], "other"))
        self.remote.sees(lambda picture: picture.number(9) == "3")
        drive("eject")
        self.remote.sees_text("No disc loaded")
        drive("close")
        self.remote.sees(lambda picture: picture.number(9) == "3")

        # Killed, the player leaves the drive to the next one.
        self.remote.process.kill()
        self.remote.process.wait()
        wait_for(lambda: drive("status")["mode"] == "stopped")
        self.remote.start()
        self.remote.sees(lambda picture: picture.number(9) == "3")
        self.remote.click(MEDIA_SELECT)
        time.sleep(1)
        xdotool("key", "Up", "Return")  # the last item: Close Device
        self.sees_lamps("IDLE")
        self.remote.sees(lambda picture: picture.time() and picture.lamps() & {"AM", "PM"})
        xdotool("key", "alt+F4")
        self.assertEqual(self.remote.ended(), 0)
        self.assertIn(b"LastDevice=0\n", CONFIG.read_bytes())

    def test_qvdrive_refuses_what_is_no_disc_and_leaves_the_drive_as_it_was(self):
        disc = make_disc(self.remote.folder, [20])
        drive("insert", disc)
        (self.remote.folder / "note.txt").write_text("no disc")
        (self.remote.folder / "broken.cue").write_text('FILE "gone.bin" BINARY\n')
        for bad, why in (("note.txt", "it is no disc image"), ("broken.cue", "line 1: the file gone.bin cannot be read"),
                         ("missing.cue", "there is no such file")):
            with self.assertRaisesRegex(AssertionError, why):
                drive("insert", self.remote.folder / bad)
        self.assertTrue(drive("status")["image"].endswith("disc.cue"))
        self.assertEqual(drive("status")["disc"], "audio")


if __name__ == "__main__":
    unittest.main(verbosity=2)
