#!/usr/bin/python3
"""Draws Quorvex's bitmaps, in two sizes, and its icon: make_art.py OUTDIR [--preview FOLDER]."""

import argparse
import os
import sys

sys.dont_write_bytecode = True

import bmp
import frame
import icon
import panel
import segments
from metal import steel_palette


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("outdir")
    parser.add_argument("--preview", metavar="FOLDER", help="also compose pictures of the panel in use")
    arguments = parser.parse_args()
    os.makedirs(arguments.outdir, exist_ok=True)

    def target(name):
        return os.path.join(arguments.outdir, name)

    greys = steel_palette()
    for scale, mark in ((1, ""), (2, "_2x")):
        bmp.write_indexed(target(f"panel{mark}.bmp"), panel.draw(scale), greys)
        bmp.write_mono(target(f"segments{mark}.bmp"), *segments.draw(scale))
        for number, picture in frame.draw(scale).items():
            bmp.write_indexed(target(f"frame_{number}{mark}.bmp"), picture, greys)
    icon.write(target("quorvex.ico"))

    if arguments.preview:
        import preview
        preview.write(arguments.outdir, arguments.preview)


if __name__ == "__main__":
    main()
