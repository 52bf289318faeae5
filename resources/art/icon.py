"""The program's icon: a small remote control with a lit green display. Every size is its own drawing."""

import io
import struct
import subprocess

from PIL import Image

_SMALLEST_COLOURS = {
    ".": (0, 0, 0, 0),
    "o": (0x12, 0x15, 0x19, 255),
    "L": (0x97, 0xA2, 0xAF, 255),
    "m": (0x5C, 0x65, 0x71, 255),
    "n": (0x3B, 0x41, 0x4A, 255),
    "k": (0x05, 0x08, 0x07, 255),
    "g": (0x0A, 0x4A, 0x20, 255),
    "G": (0x6C, 0xFF, 0x85, 255),
    "W": (0xE4, 0xEA, 0xF0, 255),
    "w": (0xA3, 0xAD, 0xB8, 255),
    "R": (0xF2, 0x4A, 0x3C, 255),
    "r": (0xB8, 0x25, 0x1C, 255),
}

_SMALLEST = """
...oooooooooo...
..oLLLLLLLLLLo..
..omkkkkkkkkno..
..omkgGggggkno..
..omkgGGgggkno..
..omkgGGGggkno..
..omkgGGgggkno..
..omkgGggggkno..
..omkkkkkkkkno..
..ommmmmmmmnno..
..omRRmWWmWWno..
..omrrmwwmwwno..
..ommmmmmnnnno..
..omWWmWWmWWno..
..onnnnnnnnnno..
...oooooooooo...
"""

_GRADIENTS = """
<linearGradient id="body" x1="0" y1="0" x2="1" y2="0"><stop offset="0" stop-color="#6d7682"/>
<stop offset=".3" stop-color="#525a65"/><stop offset="1" stop-color="#2b3037"/></linearGradient>
<linearGradient id="glass" x1="0" y1="0" x2="0" y2="1"><stop offset="0" stop-color="#0f6b30"/>
<stop offset="1" stop-color="#063216"/></linearGradient>
<linearGradient id="key" x1="0" y1="0" x2="0" y2="1"><stop offset="0" stop-color="#f1f5f8"/>
<stop offset="1" stop-color="#9aa5b1"/></linearGradient>
<linearGradient id="red" x1="0" y1="0" x2="0" y2="1"><stop offset="0" stop-color="#ff6a5a"/>
<stop offset="1" stop-color="#b0201a"/></linearGradient>
<linearGradient id="dark" x1="0" y1="0" x2="0" y2="1"><stop offset="0" stop-color="#5f6873"/>
<stop offset="1" stop-color="#363c44"/></linearGradient>
"""

_EDGE = "#0e1013"
_GREEN = "#6cff85"


def _rect(x, y, width, height, radius, fill):
    return f'<rect x="{x}" y="{y}" width="{width}" height="{height}" rx="{radius}" fill="{fill}"/>'


def _svg_image(size, shapes):
    svg = (f'<svg xmlns="http://www.w3.org/2000/svg" width="{size}" height="{size}">'
           f'<defs>{_GRADIENTS}</defs>{"".join(shapes)}</svg>')
    png = subprocess.run(["rsvg-convert"], input=svg.encode(), capture_output=True, check=True).stdout
    return Image.open(io.BytesIO(png)).convert("RGBA")


def _draw_16():
    image = Image.new("RGBA", (16, 16))
    rows = _SMALLEST.split()
    image.putdata([_SMALLEST_COLOURS[mark] for row in rows for mark in row])
    return image


def _key_row(lefts, top, width, height, radius, first="url(#key)"):
    """Keys side by side, each with a shaded lower edge."""
    shapes = []
    for number, left in enumerate(lefts):
        shapes.append(_rect(left, top + 1, width, height, radius, _EDGE))
        shapes.append(_rect(left, top, width, height, radius, "url(#key)" if number else first))
    return shapes


def _arrow_pad(x, y, radius, arrow):
    """A round dark pad with an arrow of the given length near each end, and a key in the middle."""
    reach = radius - 1.5
    mark = f'<path d="M{-arrow} {arrow - reach}l{arrow} {-arrow}l{arrow} {arrow}z" fill="#f1f5f8"/>'
    return [
        f'<circle cx="{x}" cy="{y}" r="{radius}" fill="{_EDGE}"/>',
        f'<circle cx="{x}" cy="{y}" r="{radius - 1}" fill="url(#dark)"/>',
        *(f'<g transform="translate({x} {y}) rotate({angle})">{mark}</g>' for angle in (0, 90, 180, 270)),
        _rect(x - arrow + 1, y - arrow + 1, 2 * arrow - 2, 2 * arrow - 2, arrow - 1, "url(#key)"),
    ]


def _draw_32():
    return _svg_image(32, [
        _rect(6, 0, 20, 32, 4, _EDGE),
        _rect(7, 1, 18, 30, 3, "#9aa5b2"),
        _rect(7, 2, 18, 29, 3, "url(#body)"),
        _rect(9, 3, 14, 11, 1, "#050807"),
        _rect(10, 4, 12, 9, 0, "url(#glass)"),
        f'<path d="M12 4.5v8l5-4z" fill="{_GREEN}"/>',
        _rect(18, 6, 3, 1, 0, "#36c763"), _rect(18, 8, 3, 1, 0, "#36c763"), _rect(18, 10, 2, 1, 0, "#1f7a3e"),
        *_key_row((9, 14, 19), 15, 4, 2, 0, "url(#red)"),
        f'<circle cx="16" cy="23" r="5" fill="{_EDGE}"/><circle cx="16" cy="23" r="4" fill="url(#dark)"/>',
        *(_rect(x, y, 2, 2, 0, "#f1f5f8") for x, y in ((15, 19), (12, 22), (18, 22), (15, 25))),
        *_key_row((9, 14, 19), 28, 4, 1, 0),
    ])


def _draw_48():
    return _svg_image(48, [
        _rect(10, 0, 28, 48, 6, _EDGE),
        _rect(11, 1, 26, 46, 5, "#a3adb9"),
        _rect(11, 2, 26, 45, 5, "url(#body)"),
        _rect(13, 4, 22, 16, 2, "#050807"),
        _rect(14, 5, 20, 14, 1, "url(#glass)"),
        f'<path d="M16 7v10l7-5z" fill="{_GREEN}"/>',
        _rect(26, 7, 6, 2, 0, "#36c763"), _rect(26, 11, 6, 2, 0, "#36c763"), _rect(26, 15, 4, 2, 0, "#1f7a3e"),
        *_key_row((13, 21, 29), 22, 6, 3, 1, "url(#red)"),
        *_arrow_pad(24, 34, 7.5, 3),
        *_key_row((13, 21, 29), 42, 6, 2, 0),
    ])


def _draw_256():
    return _svg_image(256, [
        '<rect x="60" y="9" width="140" height="245" rx="30" fill-opacity=".28"/>',
        _rect(58, 3, 140, 246, 30, _EDGE),
        _rect(61, 6, 134, 240, 27, "#aab4c0"),
        _rect(62, 9, 132, 236, 26, "url(#body)"),
        "".join(f'<rect x="64" y="{y}" width="128" height="1" fill="#fff" fill-opacity=".03"/>'
                for y in range(30, 228, 3)),
        '<rect x="72" y="23" width="112" height="80" rx="11" fill="#8f9aa6" fill-opacity=".55"/>',
        _rect(72, 21, 112, 80, 11, "#07090a"),
        _rect(78, 27, 100, 68, 6, "url(#glass)"),
        f'<path d="M87 39v44l34-22z" fill="{_GREEN}"/>',
        *_large_figures(),
        *_large_keys((74, 112, 150), 113, "url(#red)"),
        *_large_arrow_pad(),
        *_large_keys((74, 112, 150), 217),
    ])


def _large_figures():
    """Two seven-segment figures beside the play sign, over their unlit eights."""
    shapes = []
    segments = {
        "a": "M3 0h18l-5 5h-8z", "g": "M4 22l3-2.5h10l3 2.5l-3 2.5h-10z", "d": "M3 44h18l-5-5h-8z",
        "f": "M0 3v17l2 1l3-3v-10z", "e": "M0 41v-17l2-1l3 3v10z",
        "b": "M24 3v17l-2 1l-3-3v-10z", "c": "M24 41v-17l-2-1l-3 3v10z",
    }
    for left, lit in ((128, "abcdef"), (153, "abc")):
        for name, path in segments.items():
            colour = _GREEN if name in lit else "#15803c"
            shapes.append(f'<path transform="translate({left} 39) scale(.8 1)" d="{path}" fill="{colour}"/>')
    return shapes


def _large_keys(lefts, top, first="url(#key)"):
    shapes = []
    for number, left in enumerate(lefts):
        shapes.append(_rect(left - 2, top - 2, 36, 21, 8, _EDGE))
        shapes.append(_rect(left, top, 32, 16, 6, "url(#key)" if number else first))
        shapes.append(f'<rect x="{left + 4}" y="{top + 1}" width="24" height="2" rx="1" fill="#fff" '
                      'fill-opacity=".6"/>')
    return shapes


def _large_arrow_pad():
    arrow = '<path d="M-9 -18l9-9l9 9z" fill="#f1f5f8"/>'
    return [
        f'<circle cx="128" cy="173" r="35" fill="{_EDGE}"/>',
        '<circle cx="128" cy="172.5" r="33" fill="#8f9aa6"/>',
        '<circle cx="128" cy="173.5" r="32.5" fill="url(#dark)"/>',
        *(f'<g transform="translate(128 173) rotate({angle})">{arrow}</g>' for angle in (0, 90, 180, 270)),
        f'<circle cx="128" cy="173" r="13" fill="{_EDGE}"/>',
        '<circle cx="128" cy="173" r="11" fill="url(#key)"/>',
    ]


def _dib(image):
    """An icon picture in the old form: colours with alpha, then a one-bit mask for systems that know no alpha."""
    size = image.width
    header = struct.pack("<IiiHHIIiiII", 40, size, size * 2, 1, 32, 0, 0, 0, 0, 0, 0)
    colours, mask = bytearray(), bytearray()
    pitch = (size + 31) // 32 * 4
    for y in reversed(range(size)):
        row = bytearray(pitch)
        for x in range(size):
            red, green, blue, alpha = image.getpixel((x, y))
            colours += bytes((blue, green, red, alpha))
            if alpha < 128:
                row[x // 8] |= 0x80 >> x % 8
        mask += row
    return header + bytes(colours) + bytes(mask)


def _png(image):
    buffer = io.BytesIO()
    image.save(buffer, "PNG", optimize=True)
    return buffer.getvalue()


def draw():
    """The icon's pictures, smallest first."""
    return [_draw_16(), _draw_32(), _draw_48(), _draw_256()]


def write(path):
    pictures = draw()
    bodies = [_png(image) if image.width == 256 else _dib(image) for image in pictures]
    offset = 6 + 16 * len(pictures)
    with open(path, "wb") as file:
        file.write(struct.pack("<HHH", 0, 1, len(pictures)))
        for image, body in zip(pictures, bodies):
            file.write(struct.pack("<BBBBHHII", image.width % 256, image.height % 256, 0, 0, 1, 32, len(body), offset))
            offset += len(body)
        for body in bodies:
            file.write(body)
