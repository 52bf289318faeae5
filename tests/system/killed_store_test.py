#!/usr/bin/python3
"""A store that is changed holds the old or the new content, never less: whoever looks meanwhile, and whenever the program is killed."""

import random
import subprocess
import time
import unittest

from remote import ROOT, TESTS, Remote

ROUNDS = 20
FIRST = 1500  # discs: large enough that writing the store takes a while


def large_store(count):
    titles = "".join(f"{track}=Track {track:02}\r\n" for track in range(1, 21))
    playlist = "".join(f"{track} " for track in range(1, 21))
    discs = "".join(f"[A{disc:07}]\r\nTitle=\r\nArtist=\r\n{titles}Playlist={playlist}\r\n" for disc in range(1, count + 1))
    places = "".join(f"{disc}=A{disc:07}\r\n" for disc in range(1, count + 1))
    return f"[CD List]\r\nNumber of CDs={count}\r\n{places}{discs}"


class KilledStore(unittest.TestCase):
    def test_every_registered_disc_is_whole(self):
        store = Remote().folder / "cd.abm"
        store.write_bytes(large_store(FIRST).encode())
        chance = random.Random()
        discs, looks = FIRST, 0
        for _ in range(ROUNDS):
            writer = self.start_writer(store)
            while (changed := self.check(store.read_bytes().decode(), discs)) == discs:
                pass
            end = time.monotonic() + chance.uniform(0, 0.4)
            while time.monotonic() < end:
                changed = self.check(store.read_bytes().decode(), changed)
                looks += 1
            writer.kill()
            writer.wait()
            discs = self.check(store.read_bytes().decode(), changed)
        self.assertGreater(discs, FIRST + ROUNDS)
        self.assertGreater(looks, ROUNDS)

    def test_two_programs_at_once_take_turns(self):
        store = Remote().folder / "cd.abm"
        store.write_bytes(large_store(20).encode())
        writers = [self.start_writer(store), self.start_writer(store)]
        discs = 20
        deadline = time.monotonic() + 60
        while (discs := self.check(store.read_bytes().decode(), discs)) < 120:
            self.assertLess(time.monotonic(), deadline)
            self.assertEqual([writer.poll() for writer in writers], [None, None])
        for writer in writers:
            writer.kill()
            writer.wait()
        self.check(store.read_bytes().decode(), discs)

    def start_writer(self, store):
        writer = subprocess.Popen([ROOT / "tools" / "in-wine", TESTS / "store_writer.exe", store], stdin=subprocess.DEVNULL,
                                  stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(writer.kill)
        return writer

    def check(self, text, before):
        """Every disc of the list has its whole section; answers how many there are."""
        lines = text.split("\r\n")
        self.assertEqual(lines.pop(), "", "the last line is whole")
        count = int(lines[1].removeprefix("Number of CDs="))
        self.assertGreaterEqual(count, before)
        listed = [line.split("=")[1] for line in lines[2 : 2 + count]]
        self.assertEqual(lines[2 + count :: 24], [f"[{disc}]" for disc in listed])
        self.assertEqual(text.count("\r\nPlaylist=1 2 3 "), count)
        return count


if __name__ == "__main__":
    unittest.main(verbosity=2)
