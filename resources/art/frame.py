"""The video window's frame: eight pieces of the panel's metal. Edges do not change along their stretch."""

from metal import Brushing, Canvas, mix, smooth, steel

SIDE, BAR = 15, 12
EDGE_SAMPLE = 16

# Brightness of the metal by where the light finds it.
_FACING = {"top": 1.0, "left": 0.78, "right": 0.62, "bottom": 0.52}
_BRUSHING = {
    name: Brushing(1, SIDE, seed) for seed, name in enumerate(_FACING, start=31)
}


def _profile(name, depth, thickness):
    """The colour `depth` pixels (0-based) in from the outer rim of one edge."""
    facing = _FACING[name]
    from_inside = thickness - 1 - depth
    if depth == 0:
        return steel(0.04)
    if depth == 1:
        return steel(0.62 * facing * facing)
    if from_inside == 0:
        return steel(0.015)
    if from_inside == 1:
        # The inner step faces the other way: lit where the rim is in shade.
        return steel(0.04 + 0.32 * (1.0 - facing))
    fall = 0.36 - 0.16 * smooth((depth - 2) / (thickness - 4))
    return steel(fall * (0.45 + 0.55 * facing) + _BRUSHING[name].tone(0, depth))


def _corner(vertical, horizontal):
    """Two edges meeting in a mitre from the outer corner to the picture's."""
    canvas = Canvas((SIDE, BAR))
    for y in range(BAR):
        for x in range(SIDE):
            across = x if vertical == "left" else SIDE - 1 - x
            down = y if horizontal == "top" else BAR - 1 - y
            lean = (down + 0.5) / BAR - (across + 0.5) / SIDE
            along_bar = _profile(horizontal, down, BAR)
            along_side = _profile(vertical, across, SIDE)
            canvas.blend(x, y, mix(along_bar, along_side, min(1.0, max(0.0, 0.5 + lean * BAR))))
    return canvas.image()


def _bar(name):
    canvas = Canvas((EDGE_SAMPLE, BAR))
    for y in range(BAR):
        colour = _profile(name, y if name == "top" else BAR - 1 - y, BAR)
        for x in range(EDGE_SAMPLE):
            canvas.blend(x, y, colour)
    return canvas.image()


def _side(name):
    canvas = Canvas((SIDE, EDGE_SAMPLE))
    for x in range(SIDE):
        colour = _profile(name, x if name == "left" else SIDE - 1 - x, SIDE)
        for y in range(EDGE_SAMPLE):
            canvas.blend(x, y, colour)
    return canvas.image()


def draw():
    """Bitmap number: picture."""
    return {
        138: _corner("left", "top"),
        139: _corner("right", "top"),
        140: _corner("left", "bottom"),
        141: _corner("right", "bottom"),
        142: _bar("top"),
        143: _bar("bottom"),
        144: _side("left"),
        145: _side("right"),
    }
