#!/usr/bin/python3
"""model_test.py [--seed N] [--commands K] [--from I] [--soak HOURS]  Random use of the running player (model.py); without arguments some short
streams. --soak: ordinary use in fast motion, after every hour of which, from the ninth on, the program may hold no
more than in the first eight and what MAY_GROW allows."""

import argparse
import sys
import time
import unittest

from model import Model
from user import HOUR, Broken

# Seed, first command, how many: a stream, and where longer ones have found faults.
SHORT = ((1, 0, 165), (1, 310, 25), (2, 545, 20), (2, 1205, 20), (4, 3970, 15), (7, 3695, 15), (8, 1050, 15))


def play(streams, limit_ms=500):
    model = Model(streams[0][0], limit_ms)
    try:
        model.prepare()
        for model.seed, first, commands in streams:
            model.run(first, commands)
    finally:
        model.close()
    return model


WARM_UP_HOURS = 8
MAY_GROW = {"private MB": 8, "handles": 40, "drawing objects": 30, "windows": 4, "wakes a second": 30, "threads": 6, "files": 25}
HANDLES_AN_HOUR = 20  # the platform loses one with each file


def soak(seed, hours):
    model = Model(seed, calm=True)
    held = []
    try:
        model.prepare()
        for hour in range(hours):
            model.run(hour * HOUR, HOUR)
            held.append(model.rest())
            print(f"hour {hour + 1}: {held[-1]}", flush=True)
            if hour >= WARM_UP_HOURS:
                grown = {name: held[-1][name] - max(hour[name] for hour in held[:WARM_UP_HOURS]) for name in MAY_GROW}
                grown["handles"] -= HANDLES_AN_HOUR * (hour + 1 - WARM_UP_HOURS)
                if any(grown[name] > MAY_GROW[name] for name in MAY_GROW):
                    raise Broken(f"seed {seed}, hour {hour + 1}: grown by {grown}")
    finally:
        model.close()
    return model


class RandomUse(unittest.TestCase):
    def test_what_must_hold_holds_after_every_command(self):
        play(SHORT, limit_ms=5000)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--commands", type=int, default=10000)
    parser.add_argument("--from", type=int, default=0, dest="first")
    parser.add_argument("--soak", type=int, metavar="HOURS")
    options = parser.parse_args()
    begin = time.monotonic()
    model = soak(options.seed, options.soak) if options.soak else play([(options.seed, options.first, options.commands)])
    print(f"seed {options.seed}: {sum(model.done.values())} commands in {time.monotonic() - begin:.0f} s, slowest answer {model.slowest:.0f} ms\n"
          f"{dict(model.done)}\n{dict(model.seen)}")


if __name__ == "__main__":
    main() if len(sys.argv) > 1 else unittest.main(verbosity=2)
