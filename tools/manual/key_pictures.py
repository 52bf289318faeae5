#!/usr/bin/python3
"""key_pictures.py: cuts the picture of every key out of the panel's artwork, for the manual (docs/keys/SIGN.png).

To be run when the artwork has changed; the pictures are kept with the sources, for whoever reads the manual there.
"""
import sys
from pathlib import Path

sys.dont_write_bytecode = True
ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "resources/art"))

import panel  # noqa: E402
from layout import KEYS, scaled  # noqa: E402

SCALE = 2  # the large artwork: a key is too small for reading at the size it has on the panel


def main():
    folder = ROOT / "docs/keys"
    folder.mkdir(exist_ok=True)
    skin = panel.draw(SCALE)
    for x, y, width, height, sign in KEYS.values():
        key = skin.crop(scaled((x, y, x + width, y + height), SCALE))
        key.quantize(64).save(folder / f"{sign}.png", optimize=True)


main()
