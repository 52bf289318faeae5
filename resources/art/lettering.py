"""Hand-set pixel letters, kept as pictures of themselves. A letter is a tuple of equally long rows of '#' and '.'."""


def _alphabet(names, picture):
    """Cut a picture of letters standing side by side, blanks between them, into a dictionary."""
    rows = [line.split() for line in picture.strip().splitlines()]
    letters = {name: tuple(row[i] for row in rows) for i, name in enumerate(names)}
    for name, letter in letters.items():
        if len({len(row) for row in letter}) != 1:
            raise ValueError(f"ragged letter {name!r}")
    return letters


def set_word(alphabet, word, gaps=1):
    """Join letters into one glyph; gaps is one width for all, or a list with a width after each letter but the last."""
    letters = [alphabet[name] for name in word]
    if isinstance(gaps, int):
        gaps = [gaps] * (len(letters) - 1)
    rows = []
    for y in range(len(letters[0])):
        row = letters[0][y]
        for gap, letter in zip(gaps, letters[1:], strict=True):
            row += "." * gap + letter[y]
        rows.append(row)
    return tuple(rows)


def pixels(glyph):
    """The (x, y) of every set pixel."""
    return [(x, y) for y, row in enumerate(glyph) for x, mark in enumerate(row) if mark == "#"]


def enlarged(glyph, scale):
    """A glyph for a scale of 1 or 2."""
    return glyph if scale == 1 else _doubled(glyph)


def coverage(glyph, scale):
    """(x, y, share): how much of every pixel a glyph covers at a scale, with smooth edges where it is enlarged."""
    if scale == 1:
        return [(x, y, 1.0) for x, y in pixels(glyph)]
    fine = _doubled(_doubled(glyph))
    covered = {}
    for x, y in pixels(fine):
        covered[x // 2, y // 2] = covered.get((x // 2, y // 2), 0.0) + 0.25
    return [(x, y, share) for (x, y), share in covered.items()]


def _doubled(glyph):
    """Twice as large, with steps of one pixel in its outline turned into slopes; square corners stay square."""
    ink = set(pixels(glyph))
    # Where a slanting line of one pixel ends: it would end in a thorn.
    tips = {(x, y) for x, y in ink if sum((x + i, y + j) in ink for i in (-1, 0, 1) for j in (-1, 0, 1)) == 2}
    # A hole of one pixel would be filled up.
    holes = {(x + 1, y) for x, y in ink if {(x + 2, y), (x + 1, y - 1), (x + 1, y + 1)} <= ink} - ink

    def quarter(x, y, right, down):
        """Whether the quarter of a pixel on the given side (-1 or 1 each way) is set."""
        own = (x, y) in ink
        if ((x + right, y) in ink) == own or ((x, y + down) in ink) == own:
            return own
        if ((x + right, y + down) in ink) == own:
            return (x, y) not in holes  # two pixels touch at a corner: they are joined there
        goes_on = ((x - right, y + down) in ink) == own or ((x + right, y - down) in ink) == own
        return own != (goes_on and (x, y) not in tips | holes)

    width, height = len(glyph[0]), len(glyph)
    return tuple(
        "".join("#" if quarter(x // 2, y // 2, 2 * (x % 2) - 1, 2 * (y % 2) - 1) else "." for x in range(2 * width))
        for y in range(2 * height))


# The small labels of the display, 7 high.
LABEL = _alphabet("CHANELTRKFIPO", """
.###. #...# .###. #...# #### #... ##### ####. #...# #### # ####. .####.
#...# #...# #...# ##..# #... #... ..#.. #...# #..#. #... # #...# #....#
#.... #...# #...# ##..# #... #... ..#.. #...# #.#.. #... # #...# #....#
#.... ##### ##### #.#.# ###. #... ..#.. ####. ##... ###. # ####. #....#
#.... #...# #...# #..## #... #... ..#.. #.#.. #.#.. #... # #.... #....#
#...# #...# #...# #..## #... #... ..#.. #..#. #..#. #... # #.... #....#
.###. #...# #...# #...# #### #### ..#.. #...# #...# #... # #.... .####.
""")

# The lamps of the display, 10 high and bold. The R's leg reaches out by a pixel.
LAMP = _alphabet("PAUSEMTRCNDLI1", """
#####. ..##.. ##..## .####. ###### ##.....## ###### #####.. .####. ##..## #####. ##... ## .##
###### .####. ##..## ###### ###### ###...### ###### ######. ###### ##..## ###### ##... ## ###
##..## ##..## ##..## ##..## ##.... ####.#### ..##.. ##..##. ##..## ###.## ##..## ##... ## ###
##..## ##..## ##..## ##.... ##.... ######### ..##.. ##..##. ##.... ###.## ##..## ##... ## .##
###### ##..## ##..## #####. #####. ##.###.## ..##.. ######. ##.... ###### ##..## ##... ## .##
#####. ###### ##..## .##### #####. ##..#..## ..##.. #####.. ##.... ###### ##..## ##... ## .##
##.... ###### ##..## ....## ##.... ##.....## ..##.. ##.##.. ##.... ##.### ##..## ##... ## .##
##.... ##..## ##..## ##..## ##.... ##.....## ..##.. ##.##.. ##..## ##.### ##..## ##... ## .##
##.... ##..## ###### ###### ###### ##.....## ..##.. ##..##. ###### ##..## ###### ##### ## .##
##.... ##..## .####. .####. ###### ##.....## ..##.. ##..### .####. ##..## #####. ##### ## .##
""")

# The kinds of media, 7 high and bold; "c" is the wide C, for CD alone.
MEDIA = _alphabet("TV/CAPDc", """
###### ##..## ..# .#### .####. ####. #####. .####.
..##.. ##..## ..# ##... ##..## ##.## ##..## ##..##
..##.. ##..## .#. ##... ##..## ##.## ##..## ##....
..##.. ##..## .#. ##... ###### ####. ##..## ##....
..##.. ##..## .#. ##... ##..## ##... ##..## ##....
..##.. .####. #.. ##... ##..## ##... ##..## ##..##
..##.. ..##.. #.. .#### ##..## ##... #####. .####.
""")

# The halves of the day, 8 high and bold.
HALF_DAY = _alphabet("APM", """
..##.. #####. ##....##
.####. ##..## ###..###
##..## ##..## ########
##..## ##..## ########
###### #####. ##.##.##
##..## ##.... ##....##
##..## ##.... ##....##
##..## ##.... ##....##
""")

TIMER_LAMP = (
    "##.######.##",
    "#.##....##.#",
    ".##..##..##.",
    "##...##...##",
    "##...##...##",
    "##...####.##",
    "##...####.##",
    ".##......##.",
    ".###....###.",
    "##.######.##",
)

# Figures and the question mark on the keys.
KEY_FIGURE = _alphabet("0123456789?", """
.####. ..##.. .####. .####. ...##. ###### .####. ###### .####. .####. .####.
##..## .###.. ##..## ##..## ..###. ##.... ##..## ....## ##..## ##..## ##..##
##..## ####.. ....## ....## .####. ##.... ##.... ....## ##..## ##..## ....##
##..## ..##.. ...##. ..###. ##.##. #####. #####. ...##. .####. ##..## ...##.
##..## ..##.. ..##.. ....## ##.##. ....## ##..## ...##. ##..## .##### ..##..
##..## ..##.. .##... ....## ###### ....## ##..## ..##.. ##..## ....## ..##..
##..## ..##.. ##.... ##..## ...##. ##..## ##..## ..##.. ##..## ##..## ......
.####. ###### ###### .####. ...##. .####. .####. ..##.. .####. .####. ..##..
""")

# Words on the keys.
KEY_LETTER = _alphabet("DELANTRSUP", """
###. #### #... .##. #...# ##### ###. .### #..# ###.
#..# #... #... #..# ##..# ..#.. #..# #... #..# #..#
#..# ###. #... #..# #.#.# ..#.. #..# .##. #..# #..#
#..# #... #... #### #..## ..#.. ###. ...# #..# ###.
#..# #... #... #..# #...# ..#.. #.#. ...# #..# #...
###. #### #### #..# #...# ..#.. #..# ###. .##. #...
""")

# The product's name, engraved in the metal.
ENGRAVED = _alphabet("QUORVEX", """
.###. #...# .###. ####. #...# ##### #...#
#...# #...# #...# #...# #...# #.... .#.#.
#.#.# #...# #...# ####. #...# ####. ..#..
#..#. #...# #...# #..#. .#.#. #.... .#.#.
.##.# .###. .###. #...# ..#.. ##### #...#
""")

CAPTION_LETTER = _alphabet("C", """
.####
##...
##...
##...
##...
.####
""")

CROSS = (
    "##..##",
    ".####.",
    "..##..",
    "..##..",
    ".####.",
    "##..##",
)

SUN = (
    ".....#.....",
    ".#...#...#.",
    "..#.....#..",
    "....###....",
    "...#####...",
    "##.#####.##",
    "...#####...",
    "....###....",
    "..#.....#..",
    ".#...#...#.",
    ".....#.....",
)
