"""The signs on the keys: drawings on the pixel grid, and hand-set figures and words."""

import io
import subprocess

from PIL import Image

from layout import KEYS, PANEL_SIZE, scaled
from lettering import CAPTION_LETTER, CROSS, KEY_FIGURE, KEY_LETTER, SUN, coverage, set_word

INK = "#f1f5f8"
PLAY_GREEN = "#74f58a"

_LINE = 'fill="none" stroke-width="{}"'.format
_SPEAKER = '<path d="M0 3h2l4-3v10l-4-3h-2z"/>'

# Each drawing is centred on its key's middle; straight edges keep to whole pixels.
_DRAWINGS = {
    "power": f'<path d="M-3.6 -3a5 5 0 1 0 7.2 0" {_LINE(2)}/><rect x="-1" y="-7" width="2" height="7"/>',
    "timer": f'<g transform="translate(-.5 -.5)"><circle r="5.5" {_LINE(2)}/>'
             '<path d="M-.5 -4.5h1v4h3v1h-4z"/></g>',
    "hide": '<path d="M-1 -6h2v3h4l-5 5l-5-5h4z"/><rect x="-6" y="4" width="12" height="2"/>',
    "media": '<path fill-rule="evenodd" d="M-9 0a6 6 0 1 0 12 0a6 6 0 1 0 -12 0M-6 0a3 3 0 1 1 6 0a3 3 0 1 1 -6 0'
             'M-5 0a2 2 0 1 0 4 0a2 2 0 1 0 -4 0M-4 0a1 1 0 1 1 2 0a1 1 0 1 1 -2 0"/><path d="M4 -1h6l-3 3z"/>',
    "open": '<path d="M-8 4v-9h5l1 2h6v2h-8l-3 6z"/><path d="M-6 5l3-5h11l-3 5z"/>',
    "repeat": '<path d="M-6 0v-4h8v-2l4 3l-4 3v-2h-6v2z"/><path d="M6 0v4h-8v2l-4-3l4-3v2h6v-2z"/>',
    "shuffle": f'<path d="M-8 -3h4l6 6h2" {_LINE(2)}/><path d="M-8 3h4l2-2M0 -1l2-2h2" {_LINE(2)}/>'
               '<path d="M4 -6l4 3l-4 3z"/><path d="M4 0l4 3l-4 3z"/>',
    "eject": '<path d="M-6 1l6-6l6 6z"/><rect x="-6" y="3" width="12" height="2"/>',
    "stop": '<rect x="-4" y="-4" width="8" height="8"/>',
    "pause": '<rect x="-4" y="-4" width="3" height="8"/><rect x="1" y="-4" width="3" height="8"/>',
    "play": f'<path d="M-4 -5l9 5l-9 5z" fill="{PLAY_GREEN}"/>',
    "previous": '<rect x="-7" y="-4" width="2" height="8"/><path d="M1 -4v8l-6-4z"/><path d="M7 -4v8l-6-4z"/>',
    "rewind": '<path d="M0 -4v8l-6-4z"/><path d="M6 -4v8l-6-4z"/>',
    "forward": '<path d="M0 -4v8l6-4z"/><path d="M-6 -4v8l6-4z"/>',
    "next": '<rect x="5" y="-4" width="2" height="8"/><path d="M-1 -4v8l6-4z"/><path d="M-7 -4v8l6-4z"/>',
    "record": '<circle r="5" fill="#f5392f"/><circle cx="-1" cy="-1.5" r="2" fill="#ff8d80" fill-opacity=".55"/>',
    "input": '<path d="M-3 -5h10v10h-10v-3h1v2h8v-8h-8v2h-1z"/><path d="M-8 -1h5v-3l4 4l-4 4v-3h-5z"/>',
    "recall": f'<path d="M-3 -2h4.5a3.5 3 0 0 1 0 6h-5.5" {_LINE(2)}/><path d="M-7 -2l4-4v8z"/>',
    "scan": '<path d="M-7 0h1v5h-1zM-5 2h1v3h-1zM-3 2h1v3h-1zM-1 0h1v5h-1zM1 2h1v3h-1zM3 2h1v3h-1zM5 0h1v5h-1z"/>'
            '<path d="M-4 -5h7l-3.5 4z"/>',
    "mute": f'<g transform="translate(-8 -5)">{_SPEAKER}</g>',
    "stereo": f'<circle cx="-2.75" r="3.5" {_LINE(1.5)}/><circle cx="2.75" r="3.5" {_LINE(1.5)}/>',
    "full_screen": '<path d="M-8 -1v-5h5v2h-3v3zM3 -6h5v5h-2v-3h-3zM8 1v5h-5v-2h3v-3zM-3 6h-5v-5h2v3h3z"/>'
                   '<rect x="-3" y="-2" width="6" height="4"/>',
    "wide": '<path fill-rule="evenodd" d="M-8 -5h16v10h-16zM-7 -4v8h14v-8z"/>'
            '<path d="M-6 0l3-3v2h6v-2l3 3l-3 3v-2h-6v2z"/>',
    "captions": '<path fill-rule="evenodd" d="M-7 -6h14l1 1v10l-1 1h-14l-1-1v-10zM-7 -5v10h14v-10z"/>',
    "menu": "".join(f'<path d="M-7 {y}h2v2h-2zM-3 {y}h10v2h-10z"/>' for y in (-5, -1, 3)),
    "subtitles": '<path fill-rule="evenodd" d="M-7 -6h14l1 1v7l-1 1h-7l-4 4v-4h-3l-1-1v-7z'
                 'M-5 -4v1h10v-1zM-5 -1v1h6v-1z"/>',
    "up": '<path d="M-6 3l6-6l6 6z"/>',
    "down": '<path d="M-6 -3l6 6l6-6z"/>',
    "right": '<path d="M-3 -6l6 6l-6 6z"/>',
    "left": '<path d="M3 -6l-6 6l6 6z"/>',
    "sound": f'<g transform="translate(-8 -5)">{_SPEAKER}</g>'
             f'<path d="M1 -2.4a3.4 3.4 0 0 1 0 4.8M3.6 -4.6a6.6 6.6 0 0 1 0 9.2" {_LINE(1.5)}/>',
    "setup": '<path d="M-12 -7h4v2h-4zM-7 -8h3v4h-3zM-3 -7h15v2h-15z"/>'
             '<path d="M-12 -2h14v2h-14zM3 -3h3v4h-3zM7 -2h5v2h-5z"/>',
}

# Hand-set glyphs: (glyph, how far right of and below the key's middle its own middle lies).
_GLYPHS = {
    **{figure: (KEY_FIGURE[figure], 0, 0) for figure in "0123456789"},
    "help": (KEY_FIGURE["?"], 0, 0),
    "mute": (CROSS, 4, 0),
    "picture": (SUN, 0, 0),
    "delete": (set_word(KEY_LETTER, "DEL"), 0, 0),
    "add": (set_word(KEY_LETTER, "ADD"), 0, 0),
    "enter": (set_word(KEY_LETTER, "ENTER"), 0, 0),
    "captions": (set_word(CAPTION_LETTER, "CC"), 0, 0),
    "setup": (set_word(KEY_LETTER, "SETUP"), 0, 6),
}


def _drawing_layer(scale):
    width, height = scaled(PANEL_SIZE, scale)
    parts = []
    for x, y, key_width, key_height, sign in KEYS.values():
        if sign in _DRAWINGS:
            middle = (x + key_width // 2, y + key_height // 2)
            parts.append(f'<g transform="translate({middle[0]} {middle[1]})">'
                         f'{_ink_strokes(_DRAWINGS[sign])}</g>')
    svg = (f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" fill="{INK}">'
           f'<g transform="scale({scale})">{"".join(parts)}</g></svg>')
    png = subprocess.run(["rsvg-convert"], input=svg.encode(), capture_output=True, check=True).stdout
    return Image.open(io.BytesIO(png)).convert("RGBA")


def _ink_strokes(drawing):
    return drawing.replace("stroke-width", f'stroke="{INK}" stroke-width')


def layer(scale):
    """All signs as one transparent RGBA picture of the panel."""
    picture = _drawing_layer(scale)
    ink = tuple(int(INK[i:i + 2], 16) for i in (1, 3, 5))
    for x, y, width, height, sign in KEYS.values():
        if sign in _GLYPHS:
            glyph, right, below = _GLYPHS[sign]
            left = x + (width - len(glyph[0])) // 2 + right
            top = y + (height - len(glyph)) // 2 + below
            for column, row, share in coverage(glyph, scale):
                _set_ink(picture, (left * scale + column, top * scale + row), ink, round(255 * share))
    _check_on_faces(picture, scale)
    return picture


def _set_ink(picture, place, ink, opacity):
    """A glyph's pixel; where a drawing lies already, the stronger of both stays."""
    picture.putpixel(place, (*ink, max(opacity, picture.getpixel(place)[3])))


def _check_on_faces(picture, scale):
    """A pressed key shows only what lies two pixels inside its rectangle; nothing of a sign may lie beyond."""
    alpha = picture.getchannel("A")
    for x, y, width, height, _ in KEYS.values():
        alpha.paste(0, scaled((x + 2, y + 2, x + width - 2, y + height - 2), scale))
    if alpha.getbbox():
        raise ValueError(f"a sign leaves its key's face, within {alpha.getbbox()}")
