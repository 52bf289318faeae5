"""The video window's frame: eight pieces of the panel's metal. Edges do not change along their stretch."""

from metal import Brushing, Canvas, mix, smooth, steel

SIDE, BAR = 15, 12
EDGE_SAMPLE = 16

# Brightness of the metal by where the light finds it.
_FACING = {"top": 1.0, "left": 0.78, "right": 0.62, "bottom": 0.52}
_SEEDS = {name: seed for seed, name in enumerate(_FACING, start=31)}


def _profiles(scale):
    """For each edge: the colours from the outer rim in, a pixel each."""
    profiles = {}
    for name in _FACING:
        thickness = BAR if name in ("top", "bottom") else SIDE
        brushing = Brushing(1, SIDE * scale, _SEEDS[name])
        profiles[name] = [
            _colour(name, pixel // scale, (pixel + 0.5) / scale - 0.5, thickness, brushing.tone(0, pixel))
            for pixel in range(thickness * scale)
        ]
    return profiles


def _colour(name, depth, exact, thickness, brushed):
    """The colour `depth` units (0-based; `exact` at the pixel's middle) in from the outer rim of one edge."""
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
    fall = 0.36 - 0.16 * smooth((exact - 2) / (thickness - 4))
    return steel(fall * (0.45 + 0.55 * facing) + brushed)


def _corner(profiles, vertical, horizontal, scale):
    """Two edges meeting in a mitre from the outer corner to the picture's."""
    canvas = Canvas((SIDE, BAR), scale)
    width, height = canvas.width, canvas.height
    for y in range(height):
        for x in range(width):
            across = x if vertical == "left" else width - 1 - x
            down = y if horizontal == "top" else height - 1 - y
            lean = (down + 0.5) / height - (across + 0.5) / width
            along_bar = profiles[horizontal][down]
            along_side = profiles[vertical][across]
            canvas.blend(x, y, mix(along_bar, along_side, min(1.0, max(0.0, 0.5 + lean * height))))
    return canvas.image()


def _bar(colours, name, scale):
    canvas = Canvas((EDGE_SAMPLE, BAR), scale)
    for y in range(canvas.height):
        for x in range(canvas.width):
            canvas.blend(x, y, colours[y if name == "top" else canvas.height - 1 - y])
    return canvas.image()


def _side(colours, name, scale):
    canvas = Canvas((SIDE, EDGE_SAMPLE), scale)
    for x in range(canvas.width):
        for y in range(canvas.height):
            canvas.blend(x, y, colours[x if name == "left" else canvas.width - 1 - x])
    return canvas.image()


def draw(scale):
    """Bitmap number: picture."""
    profiles = _profiles(scale)
    corners = {138: ("left", "top"), 139: ("right", "top"), 140: ("left", "bottom"), 141: ("right", "bottom")}
    bars = {142: "top", 143: "bottom"}
    sides = {144: "left", 145: "right"}
    return {
        **{number: _corner(profiles, *edges, scale) for number, edges in corners.items()},
        **{number: _bar(profiles[name], name, scale) for number, name in bars.items()},
        **{number: _side(profiles[name], name, scale) for number, name in sides.items()},
    }
