"""Closed captions of the test discs: byte pairs of line 21, put into a film's GOPs as discs carry them.

SHOWN says what a viewer of a channel sees when a chapter (a second) ends: rows from 1, columns from 0. A screen begins with its chapter
and is whole a few pictures later, and stays until the next one named; before the first there is none.
"""
from discs.pictures import NTSC

NOTES = "\x07"  # the musical note of the special characters
ROWS = {1: (0x11, 0x40), 2: (0x11, 0x60), 3: (0x12, 0x40), 4: (0x12, 0x60), 5: (0x15, 0x40), 6: (0x15, 0x60), 7: (0x16, 0x40), 8: (0x16, 0x60), 9: (0x17, 0x40),
        10: (0x17, 0x60), 11: (0x10, 0x40), 12: (0x13, 0x40), 13: (0x13, 0x60), 14: (0x14, 0x40), 15: (0x14, 0x60)}
RCL, EDM, RU3, CR, ENM, EOC, RDC, TR = 0x20, 0x2C, 0x26, 0x2D, 0x2E, 0x2F, 0x29, 0x2A
GREEN, ITALIC = 1, 7

SHOWN = {
    "CC1": {3: {14: (4, "CAPTIONS THAT"), 15: (4, "POP ON")}, 5: {},
            7: {15: (0, "FIRST LINE")}, 8: {14: (0, "FIRST LINE"), 15: (0, "SECOND LINE")},
            9: {13: (0, "FIRST LINE"), 14: (0, "SECOND LINE"), 15: (0, "THIRD LINE")},
            10: {13: (0, "SECOND LINE"), 14: (0, "THIRD LINE"), 15: (0, "FOURTH LINE")},
            11: {2: (0, "PAINTED ON IN GREEN")}, 13: {},
            17: {15: (0, "♪ música ♪")}, 19: {}},
    "T1": {15: {1: (0, "TEXT SERVICE"), 2: (0, "ITS SECOND LINE")}},
    "CC2": {21: {15: (8, "SECOND CHANNEL")}},
    "CC3": {4: {15: (0, "SECOND FIELD")}},
}


def shown_text():
    """SHOWN for the tests: lines of channel, chapter and screen as ScreenText (tests/support/line21_script.h) writes it."""
    return "".join(f"{channel} {chapter} {'|'.join(f'{row}:{column} {words}' for row, (column, words) in screen.items())}\n"
                   for channel, screens in SHOWN.items() for chapter, screen in screens.items())


def control(code, channel=1):
    """A control pair, sent twice as it should be."""
    return [(0x14 if channel == 1 else 0x1C, code)] * 2


def place(row, column=0, style=0, channel=1):
    """To a row's column (a multiple of 4), or to its beginning in a colour or in italics."""
    first, second = ROWS[row]
    return [(first | (0 if channel == 1 else 8), second | (0x10 | column // 2 if column else style << 1))] * 2


def text(words):
    """Basic characters; a musical note is a special character, two bytes of its own."""
    pairs, waiting = [], []
    for character in words:
        if character == NOTES:
            pairs += [(*waiting, 0)] if waiting else []
            pairs += [(0x11, 0x37)] * 2
            waiting = []
        else:
            waiting.append(0x60 if character == "ú" else ord(character))
            if len(waiting) == 2:
                pairs.append(tuple(waiting))
                waiting = []
    return pairs + ([(waiting[0], 0)] if waiting else [])


def pop_on(lines, channel=1):
    load = control(RCL, channel) + control(ENM, channel)
    for row, (column, words, *style) in lines.items():
        load += place(row, column, *style, channel=channel) + text(words)
    return load


def chapter_starts(chapter):
    return (chapter - 1) * 2 * NTSC.group


def just_before(chapter, pairs):
    return chapter_starts(chapter) - len(pairs), pairs


def scripts():
    """For either field: (picture, pairs) in the order of time."""
    first = [
        just_before(3, pop_on({14: (4, "CAPTIONS THAT"), 15: (4, "POP ON")})), (chapter_starts(3), control(EOC)), (chapter_starts(5), control(EDM)),
        *((chapter_starts(7 + i), control(RU3) + control(CR) + place(15) + text(words)) for i, words in enumerate(("FIRST LINE", "SECOND LINE", "THIRD LINE", "FOURTH LINE"))),
        (chapter_starts(11), control(EDM) + control(RDC) + place(2, style=GREEN) + text("PAINTED ON IN GREEN")), (chapter_starts(13), control(EDM)),
        (chapter_starts(15), control(TR) + text("TEXT SERVICE") + control(CR)), (chapter_starts(15) + 14, text("ITS SECOND LINE")),
        just_before(17, pop_on({15: (0, f"{NOTES} música {NOTES}", ITALIC)})), (chapter_starts(17), control(EOC)), (chapter_starts(19), control(EDM)),
        just_before(21, pop_on({15: (8, "SECOND CHANNEL")}, channel=2)), (chapter_starts(21), control(EOC, channel=2)),
    ]
    title_of_programme = [(0x01, 0x03), *text("A TEST"), (0x0F, 0x1D)]  # extended data, not for viewers
    second = [(chapter_starts(2), title_of_programme), just_before(4, pop_on({15: (0, "SECOND FIELD")})), (chapter_starts(4), control(EOC))]
    return first, second


def with_parity(byte):
    return byte if byte.bit_count() % 2 else byte | 0x80


def laid_out(script, count):
    pairs = [(0, 0)] * count
    end = 0
    for picture, some in script:
        if picture < end:
            raise SystemExit(f"the captions at picture {picture} come before the last ones end ({end})")
        end = picture + len(some)
        pairs[picture:end] = some
    return pairs[:count]


def insert(stream, count):
    """The elementary stream with user data of captions after every GOP header."""
    fields = [laid_out(script, count) for script in scripts()]
    parts = stream.split(b"\0\0\1\xB8")
    if (len(parts) - 1) * NTSC.group != count:
        raise SystemExit(f"{len(parts) - 1} groups for {count} pictures")
    out = [parts[0]]
    for group, part in enumerate(parts[1:]):
        data = bytearray(b"\0\0\1\xB2CC\x01\xF8")
        data.append(0x80 | NTSC.group << 1)  # field 1 first, so many pictures
        for picture in range(group * NTSC.group, (group + 1) * NTSC.group):
            for mark, field in zip((0xFF, 0xFE), fields):
                data += bytes([mark, *map(with_parity, field[picture])])
        out += [b"\0\0\1\xB8", part[:4], bytes(data), part[4:]]
    return b"".join(out)
