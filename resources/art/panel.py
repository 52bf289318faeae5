"""The panel's skin: brushed body, recessed display, and the face of every key at its own rectangle."""

import pictograms
from layout import DIGITS, DISPLAY_WINDOW, KEYS, LAMPS, PANEL_SIZE, TEXT_LINE, scaled
from lettering import ENGRAVED, coverage, set_word
from metal import BLACK, Both, Brushing, Canvas, RoundedRect, fade, flat, mix, smooth, steel

WHITE = (255.0, 255.0, 255.0)
# Middle and half width of the arrow keys' rounded pad. Its corners are just full enough for the square
# black ground of a pressed arrow key to stay inside.
ARROW_PAD = (491, 44, 34)
PAD_CORNER = 28
ARROWS = ("up", "down", "left", "right")

# Recesses of the key groups: the rectangle their keys fill.
WELLS = (
    (8, 12, 26, 64),
    (8, 86, 26, 18),
    (44, 86, 288, 18),
    (342, 12, 110, 64),
    (342, 86, 110, 18),
    (472, 82, 39, 26),
)

FIGURES = set("0123456789")
RED_RAMP = ((0xF2, 0x5B, 0x4C), (0xA3, 0x1C, 0x16), (0xFF, 0xA8, 0x98), (0x4E, 0x0B, 0x09))


def _body(canvas):
    width, height = PANEL_SIZE
    scale = canvas.scale
    brushing = Brushing(canvas.width, canvas.height, seed=11, streak=24 * scale)

    def tone_at(x, y):
        fall = 0.315 - 0.165 * smooth(y / height)
        lip = 0.10 * max(0.0, 1 - (y - 1) / 5)
        # Brushed metal throws its light back in broad soft bands.
        band = 0.022 * smooth(1 - abs(x - 350) / 260)
        return steel(fall + lip + band + brushing.tone(int(x * scale), int(y * scale)))

    canvas.fill((0, 0, width, height), tone_at)
    for pixel in range(scale):
        _outline(canvas, pixel, steel(0.045), steel(0.03))
        _outline(canvas, scale + pixel, steel(0.60), steel(0.10))


def _outline(canvas, inset, light, dark):
    """One pixel around: light above, dark below, the sides fading from one to the other."""
    right, bottom = canvas.width - 1 - inset, canvas.height - 1 - inset
    for x in range(inset, right + 1):
        canvas.blend(x, inset, light)
        canvas.blend(x, bottom, dark)
    for y in range(inset + 1, bottom):
        side = mix(light, dark, 0.35 + 0.65 * y / bottom)
        canvas.blend(inset, y, side, 0.8)
        canvas.blend(right, y, side, 0.8)


def _recess(canvas, shape_at):
    """Press a shape into the body: dark above it, a lit lip below. shape_at(grow, down) gives the shape."""
    canvas.paint(shape_at(2, 1), flat(WHITE), 0.24)
    canvas.paint(shape_at(2, -1), flat(BLACK), 0.35)
    canvas.paint(shape_at(2, 0), flat(steel(0.035)))


def _well(canvas, rect):
    x, y, width, height = rect
    _recess(canvas, lambda grow, down: RoundedRect(
        x - grow, y - grow + down, width + 2 * grow, height + 2 * grow, 4))


def _display(canvas):
    x, y, width, height = DISPLAY_WINDOW
    _well(canvas, DISPLAY_WINDOW)
    canvas.paint(RoundedRect(x - 1, y - 1, width + 2, height + 2, 3), fade(y, y + height, 0.03, 0.20))
    canvas.paint(RoundedRect(x, y, width, height, 2), flat(BLACK))


def _face_tones(sign):
    """Brightness of a key's face above and below, and of its lit and shaded rim."""
    if sign in FIGURES:
        return 0.47, 0.33, 0.72, 0.20
    if sign in ARROWS:
        return 0.44, 0.28, 0.66, 0.16
    if sign in ("mute", "stereo", "help"):
        return 0.30, 0.19, 0.50, 0.11
    return 0.37, 0.24, 0.58, 0.13


def _key(canvas, rect, sign):
    """A pixel of gap, a pixel of rim, and the face: what a pressed key shows of itself begins inside the rim."""
    x, y, width, height = rect
    rim = RoundedRect(x + 1, y + 1, width - 2, height - 2, 2)
    face = RoundedRect(x + 2, y + 2, width - 4, height - 4, 1.2)
    if sign in ARROWS:
        rim = Both(rim, _pad(3))
        face = Both(face, _pad(4))
    if sign == "power":
        face_top, face_bottom, lit, shaded = RED_RAMP
        canvas.paint(rim, lambda px, py: mix(lit, shaded, smooth((py - y) / height)))
        canvas.paint(face, lambda px, py: mix(face_top, face_bottom, smooth((py - y) / height)))
        return
    upper, lower, lit, shaded = _face_tones(sign)
    canvas.paint(rim, fade(y + 1, y + height - 1, lit, shaded))
    canvas.paint(face, fade(y + 2, y + height - 2, upper, lower))


def _pad(inset, down=0):
    """The arrow pad's outline, drawn in by some pixels."""
    x, y, half = ARROW_PAD
    left, top, side = x - half + inset, y - half + inset + down, 2 * (half - inset)
    return RoundedRect(left, top, side, side, PAD_CORNER - inset)


def _arrow_pad(canvas):
    y = ARROW_PAD[1]
    _recess(canvas, lambda grow, down: _pad(2 - grow, down))
    # Quiet plates between the arms, a gap away from the keys.
    for left in (457, 508):
        for top in (10, 61):
            plate = Both(RoundedRect(left, top, 17, 17, 1), _pad(3))
            canvas.paint(plate, fade(y - 30, y + 30, 0.30, 0.17))
            canvas.paint(Both(RoundedRect(left + 1, top + 1, 15, 15, 1), _pad(4)), fade(y - 30, y + 30, 0.19, 0.12))


def _signs(canvas):
    layer = pictograms.layer(canvas.scale)
    shadow = layer.copy()
    shadow.paste((0, 0, 0), (0, 0, *layer.size))
    shadow.putalpha(layer.getchannel("A").point(lambda alpha: alpha * 45 // 100))
    lowered = shadow.transform(shadow.size, 0, (1, 0, 0, 0, 1, -canvas.scale))
    canvas.lay(lowered)
    canvas.lay(layer)


def _engraving(canvas, left, top):
    left, top = left * canvas.scale, top * canvas.scale
    word = coverage(set_word(ENGRAVED, "QUORVEX", 3), canvas.scale)
    for x, y, share in word:
        canvas.blend(left + x, top + y + canvas.scale, BLACK, 0.45 * share)
    for x, y, share in word:
        canvas.blend(left + x, top + y, steel(0.64), share)


def draw(scale):
    """The whole skin as an RGB picture."""
    canvas = Canvas(PANEL_SIZE, scale)
    _body(canvas)
    for rect in WELLS:
        _well(canvas, rect)
    _display(canvas)
    _arrow_pad(canvas)
    for x, y, width, height, sign in KEYS.values():
        _key(canvas, (x, y, width, height), sign)
    _signs(canvas)
    _engraving(canvas, 42, 3)
    picture = canvas.image()
    _check_display_black(picture, scale)
    return picture


def _check_display_black(picture, scale):
    """The player paints every display element's rectangle black; the ground about it must not differ."""
    for rect in (*DIGITS.values(), *LAMPS.values(), TEXT_LINE):
        x, y, width, height = scaled(rect, scale)
        if picture.crop((x, y, x + width, y + height)).getbbox():
            raise ValueError(f"the display is not black at {(x, y, width, height)}")
