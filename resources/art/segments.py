"""The display's mask: every digit, label and lamp at its place, black on white, coloured by the player as it copies."""

from layout import DIGIT_CELL, DIGITS, LAMPS, MASK_SIZE, scaled
from lettering import HALF_DAY, LABEL, LAMP, MEDIA, TIMER_LAMP, enlarged, pixels, set_word

EIGHT = (
    ".aaaaaaa.",
    "f.aaaaa.b",
    "ff.....bb",
    "ff.....bb",
    "ff.....bb",
    "ff.....bb",
    "ff.....bb",
    "ff.....bb",
    "ff.....bb",
    "ff.....bb",
    "ff.....bb",
    "f.......b",
    "..ggggg..",
    "..ggggg..",
    "e.......c",
    "ee.....cc",
    "ee.....cc",
    "ee.....cc",
    "ee.....cc",
    "ee.....cc",
    "ee.....cc",
    "ee.....cc",
    "ee.....cc",
    "ee.....cc",
    "e.ddddd.c",
    ".ddddddd.",
)

SEGMENTS_OF = ("abcdef", "bc", "abged", "abgcd", "fgbc", "afgcd", "afgedc", "abc", "abcdefg", "abcdfg")

DOT = ("##", "##")


def _digit(value):
    """A digit's segments, each a glyph of its own: enlarged, the gaps between them stay."""
    return [tuple("".join("#" if mark == segment else "." for mark in row) for row in EIGHT) for segment in SEGMENTS_OF[value]]


def _lamp_glyphs():
    """Element number: (offset from the element's corner, glyph)."""
    # The colons' cells begin below the digits' top; these rows lie evenly about the digits' middle.
    colon = DOT + ("..",) * 6 + DOT
    return {
        13: ((0, 0), DOT),
        14: ((0, 0), set_word(HALF_DAY, "AM")),
        15: ((0, 0), set_word(HALF_DAY, "PM")),
        16: ((0, 0), colon),
        17: ((0, 0), colon),
        18: ((0, 0), set_word(LABEL, "CHANNEL", 2)),
        19: ((0, 0), set_word(LABEL, "TRACK", 2)),
        20: ((0, 0), set_word(LABEL, "FILE", 2)),
        21: ((0, 0), set_word(LABEL, "CHAPTER", 2)),
        22: ((0, 0), set_word(LABEL, "OF", 2)),
        23: ((0, 0), set_word(LAMP, "PAUSE")),
        24: ((0, 0), set_word(LAMP, "MUTE")),
        25: ((0, 0), set_word(LAMP, "REC", [2, 2])),
        26: ((0, 0), set_word(LAMP, "RND", [1, 2])),
        27: ((0, 0), set_word(LAMP, "REP", [2, 2])),
        28: ((0, 0), set_word(LAMP, "1")),
        29: ((0, 0), set_word(LAMP, "ALL", 2)),
        30: ((0, 0), set_word(LAMP, "MENU")),
        31: ((0, 0), set_word(LAMP, "CC", 2)),
        32: ((0, 0), TIMER_LAMP),
        33: ((0, 0), set_word(LAMP, "IDLE")),
        34: ((0, 0), set_word(MEDIA, "TV/CAP")),
        35: ((0, 0), set_word(MEDIA, "DVD")),
        # Clear of DVD on its left, and of the text line on its right.
        36: ((2, 0), set_word(MEDIA, "cD", 2)),
    }


def _check_inside(element, rect, mask_size, pixel):
    x, y, width, height = rect
    inside_rect = x <= pixel[0] < x + width and y <= pixel[1] < y + height
    inside_mask = pixel[0] < mask_size[0] and pixel[1] < mask_size[1]
    if not (inside_rect and inside_mask):
        raise ValueError(f"display element {element}: glyph pixel {pixel} lies outside")


def draw(scale):
    """The mask's size, and all its black pixels, in pixels of the panel."""
    placed = {element: (LAMPS[element], offset, [glyph]) for element, (offset, glyph) in _lamp_glyphs().items()}
    if placed.keys() != LAMPS.keys():
        raise ValueError("a lamp has no glyph, or a glyph no lamp")
    if (len(EIGHT[0]), len(EIGHT)) != DIGIT_CELL:
        raise ValueError("the eight does not fill its cell")
    for value in range(10):
        placed[value] = (DIGITS[value], (0, 0), _digit(value))

    black = set()
    size = scaled(MASK_SIZE, scale)
    for element, (rect, (left, top), glyphs) in placed.items():
        corner = scaled((rect[0] + left, rect[1] + top), scale)
        for x, y in [pixel for glyph in glyphs for pixel in pixels(enlarged(glyph, scale))]:
            pixel = (corner[0] + x, corner[1] + y)
            _check_inside(element, scaled(rect, scale), size, pixel)
            if pixel in black:
                raise ValueError(f"display element {element}: glyph overlaps another at {pixel}")
            black.add(pixel)
    return size, black
