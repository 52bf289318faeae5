"""The material everything is made of: a canvas for shaded shapes, the steel tones and the brushed finish."""

import random

from PIL import Image

from layout import scaled

BLACK = (0.0, 0.0, 0.0)
_STEEL = (0.90, 0.985, 1.10)


def mix(first, second, share):
    """The colour `share` of the way from first to second."""
    return tuple(a + (b - a) * share for a, b in zip(first, second))


def steel(tone):
    """A cool grey of the given brightness, 0 to 1; it turns neutral towards white."""
    tint_share = max(0.0, (tone - 0.5) * 2.4)
    return tuple(min(255.0, 255 * tone * (tint + (1 - tint) * min(1.0, tint_share))) for tint in _STEEL)


def steel_palette():
    """Greys close enough for the eye to see no steps; finer in the dark, where the metal is."""
    tones = [0.5 * i / 150 for i in range(1, 151)] + [0.5 + 0.5 * i / 45 for i in range(1, 46)]
    return [tuple(round(channel) for channel in steel(tone)) for tone in tones]


def smooth(share):
    """An S-curve from 0 to 1."""
    share = min(1.0, max(0.0, share))
    return share * share * (3 - 2 * share)


class Canvas:
    """Colours are red, green, blue floats of 0..255.

    Shapes, rectangles and shading functions count in units of `scale` pixels; blend and lay count in pixels.
    """

    def __init__(self, size, scale=1):
        self.scale = scale
        self.width, self.height = scaled(size, scale)
        self._rows = [[BLACK] * self.width for _ in range(self.height)]

    def blend(self, x, y, colour, share=1.0):
        if 0 <= x < self.width and 0 <= y < self.height:
            self._rows[y][x] = mix(self._rows[y][x], colour, share)

    def fill(self, rect, colour_at):
        """Set every pixel of the rectangle to colour_at(x, y)."""
        left, top, width, height = scaled(rect, self.scale)
        for y in range(top, top + height):
            for x in range(left, left + width):
                self._rows[y][x] = colour_at(*self._centre(x, y))

    def paint(self, shape, colour_at, opacity=1.0):
        """Lay a colour over a shape; its rim is smoothed by how much of each pixel it covers."""
        left, top, right, bottom = scaled(shape.bounds, self.scale)
        for y in range(max(0, top), min(self.height, bottom)):
            for x in range(max(0, left), min(self.width, right)):
                centre = self._centre(x, y)
                cover = min(1.0, max(0.0, 0.5 - shape.distance(*centre) * self.scale))
                if cover:
                    self.blend(x, y, colour_at(*centre), cover * opacity)

    def _centre(self, x, y):
        """The middle of a pixel, in units."""
        return (x + 0.5) / self.scale, (y + 0.5) / self.scale

    def lay(self, layer):
        """Lay an RGBA picture of the canvas's size over it."""
        pixels = layer.load()
        for y in range(self.height):
            for x in range(self.width):
                red, green, blue, alpha = pixels[x, y]
                if alpha:
                    self.blend(x, y, (red, green, blue), alpha / 255)

    def image(self):
        picture = Image.new("RGB", (self.width, self.height))
        picture.putdata([tuple(round(channel) for channel in pixel) for row in self._rows for pixel in row])
        return picture


class RoundedRect:
    def __init__(self, x, y, width, height, radius=0.0):
        self.bounds = (x, y, x + width, y + height)
        self._centre = (x + width / 2, y + height / 2)
        self._half = (width / 2 - radius, height / 2 - radius)
        self._radius = radius

    def distance(self, x, y):
        """Units from the outline, negative inside."""
        across = abs(x - self._centre[0]) - self._half[0]
        down = abs(y - self._centre[1]) - self._half[1]
        outside = (max(across, 0.0) ** 2 + max(down, 0.0) ** 2) ** 0.5
        return outside + min(max(across, down), 0.0) - self._radius


class Both:
    """The part two shapes share."""

    def __init__(self, first, second):
        self.bounds = first.bounds
        self._shapes = (first, second)

    def distance(self, x, y):
        return max(shape.distance(x, y) for shape in self._shapes)


def flat(colour):
    return lambda x, y: colour


def fade(top, bottom, first, last):
    """Steel tones from first at row `top` to last at row `bottom`."""
    return lambda x, y: steel(first + (last - first) * smooth((y - top) / (bottom - top)))


class Brushing:
    """Fine scratches along one direction: a tone to add at each place."""

    def __init__(self, length, lines, seed, depth=0.011, streak=24):
        source = random.Random(seed)
        self._lines = [self._line(source, length, depth, streak) for _ in range(lines)]

    @staticmethod
    def _line(source, length, depth, streak):
        base = source.uniform(-depth, depth)
        noise = [source.uniform(-1, 1) for _ in range(length + streak)]
        total = sum(noise[:streak])
        tones = []
        for i in range(length):
            tones.append(base + 1.6 * depth * total / streak ** 0.5)
            total += noise[i + streak] - noise[i]
        return tones

    def tone(self, along, line):
        return self._lines[line][along]
