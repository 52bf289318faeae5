"""Uncompressed Windows bitmaps, written byte by byte so that the same picture always gives the same file."""

import struct

from PIL import Image

_FILE_HEADER = struct.Struct("<2sIHHI")
# Channels further apart than this are a colour, not a tint of the metal.
GREY_SPREAD = 40

_INFO_HEADER = struct.Struct("<IiiHHIIiiII")


def _write(path, size, bits, palette, rows):
    """rows: packed pixel rows, top first; palette: (red, green, blue) entries."""
    width, height = size
    pitch = (width * bits + 31) // 32 * 4
    colours = b"".join(struct.pack("<4B", blue, green, red, 0) for red, green, blue in palette)
    offset = _FILE_HEADER.size + _INFO_HEADER.size + len(colours)
    image_bytes = pitch * height
    with open(path, "wb") as file:
        file.write(_FILE_HEADER.pack(b"BM", offset + image_bytes, 0, 0, offset))
        file.write(_INFO_HEADER.pack(40, width, height, 1, bits, 0, image_bytes, 2835, 2835, len(palette), 0))
        file.write(colours)
        for row in reversed(rows):
            file.write(row.ljust(pitch, b"\0"))


def write_mono(path, size, black_pixels):
    """1 bit per pixel: the given (x, y) are black, all others white."""
    width, height = size
    rows = [bytearray(b"\xff" * ((width + 7) // 8)) for _ in range(height)]
    for x, y in black_pixels:
        rows[y][x // 8] &= ~(0x80 >> x % 8)
    _write(path, size, 1, [(0, 0, 0), (255, 255, 255)], [bytes(row) for row in rows])


def write_indexed(path, image, greys):
    """8 bits per pixel from an RGB picture.

    Entry 0 is black. Then come the given greys, so that shaded metal keeps one hue; the rest is fitted to
    what is not grey.
    """
    palette = _fit_palette(image, greys)
    index_of = {}
    width, height = image.size
    pixels = image.load()
    rows = []
    for y in range(height):
        row = bytearray(width)
        for x in range(width):
            colour = pixels[x, y]
            if colour not in index_of:
                index_of[colour] = _nearest(palette, colour)
            row[x] = index_of[colour]
        rows.append(bytes(row))
    palette += [(0, 0, 0)] * (256 - len(palette))
    _write(path, image.size, 8, palette, rows)


def _fit_palette(image, greys):
    palette = [(0, 0, 0), *greys]
    coloured = [pixel for pixel in image.getdata() if max(pixel) - min(pixel) > GREY_SPREAD]
    if coloured:
        room = 256 - len(palette)
        strip = Image.new("RGB", (len(coloured), 1))
        strip.putdata(coloured)
        table = strip.quantize(room, method=Image.Quantize.MEDIANCUT, kmeans=3).getpalette()[:room * 3]
        palette += sorted({tuple(table[i:i + 3]) for i in range(0, len(table), 3)})
    return palette


def _nearest(palette, colour):
    red, green, blue = colour
    return min(
        range(len(palette)),
        key=lambda i: (palette[i][0] - red) ** 2 + (palette[i][1] - green) ** 2 + (palette[i][2] - blue) ** 2,
    )
