#!/usr/bin/python3
"""killed_store_test.py [--kills N] [--seed N]  A store that is changed holds the old or the new content, never less: whoever looks meanwhile, and
whenever the program is killed. With --kills only the whole program is killed, so many times."""

import argparse
import random
import subprocess
import sys
import time
import unittest

from killed_session import STORES, Session, held, is_whole, large_store
from remote import ROOT, TESTS, WINDOWS, Remote, drive, empty_drive

ROUNDS = 20
KILLS, SEED = 4, 1
FIRST = 1500  # discs: large enough that writing the store takes a while


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


class KilledProgram(unittest.TestCase):
    def test_what_it_was_doing_is_done_or_not_and_it_starts_again(self):
        chance = random.Random(SEED)
        session = Session()
        self.addCleanup(drive, "card", "off")
        self.addCleanup(empty_drive)
        self.addCleanup(session.close)
        session.rehearse()
        session.start()
        changed = 0
        for kill in range(KILLS):
            number = chance.randrange(len(session.operations))
            name = session.operations[number].__name__
            with self.subTest(seed=SEED, kill=kill, operation=name):
                session.begin()
                session.kill_in(number, chance)
                left = held()
                session.start()
                self.assertEqual(held(), left, "starting changes nothing")
                for store, content in left.items():
                    self.assertTrue(is_whole(content, session.moments[number][1][store]), f"{store}: {content[-300:]}")
                changed += left != session.first
                files = {path.name for path in WINDOWS.iterdir() if path.name.startswith(STORES)}
                self.assertLessEqual(files, {*STORES, *(f"{store}.new" for store in STORES)})
                print(f"kill {kill + 1}: {name}; {changed} left a store that had changed", flush=True)


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--kills", type=int)
    parser.add_argument("--seed", type=int, default=SEED)
    options = parser.parse_args()
    KILLS, SEED = options.kills or KILLS, options.seed
    unittest.main(verbosity=2, argv=[sys.argv[0], *(["KilledProgram"] if options.kills else [])])
