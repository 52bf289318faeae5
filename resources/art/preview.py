"""Pictures of the finished panel in use, for judging the artwork.

They are composed from the written bitmaps as the player does it.
"""

import os

from PIL import Image, ImageDraw, ImageFont

import icon
from layout import DIGITS, KEYS, LAMPS, RED_LAMPS, TEXT_LINE

GREEN, TEAL = (0, 255, 0), (0, 64, 64)
RED, DARK_RED = (255, 0, 0), (128, 0, 0)
CYAN = (0, 255, 255)
FONT = "/usr/share/fonts/truetype/liberation/LiberationSans-Bold.ttf"
HOURS_TO_SECONDS = range(0, 6)
DEVICE_LAMPS = {"idle": 33, "tv": 34, "dvd": 35, "cd": 36}


class Panel:
    def __init__(self, folder):
        self._skin = Image.open(os.path.join(folder, "panel.bmp")).convert("RGB")
        self._mask = Image.open(os.path.join(folder, "segments.bmp")).convert("1")
        self.picture = self._skin.copy()

    def _glyph(self, rect):
        x, y, width, height = rect
        mask = Image.new("1", (width, height), 1)
        mask.paste(self._mask.crop((x, y, x + width, min(y + height, self._mask.height))))
        return mask.point(lambda white: 255 * (not white), "1").convert("L")

    def show_display(self, digits, lit_lamps, text=""):
        """digits: element number to value, the others blank; lit_lamps: element numbers."""
        for element, rect in DIGITS.items():
            self.picture.paste((0, 0, 0), _box(rect))
            self.picture.paste(TEAL, _box(rect), self._glyph(DIGITS[8]))
            if element in digits:
                self.picture.paste(GREEN, _box(rect), self._glyph(DIGITS[digits[element]]))
        for element, rect in LAMPS.items():
            lit, unlit = (RED, DARK_RED) if element in RED_LAMPS else (GREEN, TEAL)
            self.picture.paste((0, 0, 0), _box(rect))
            self.picture.paste(lit if element in lit_lamps else unlit, _box(rect), self._glyph(rect))
        self._show_text(text)

    def _show_text(self, text):
        x, y, width, height = TEXT_LINE
        line = Image.new("RGB", (width, height))
        draw = ImageDraw.Draw(line)
        draw.fontmode = "1"
        font = ImageFont.truetype(FONT, 10)
        draw.text(((width - font.getlength(text)) // 2, 1), text, CYAN, font)
        self.picture.paste(line, (x, y))

    def light(self, command):
        x, y, width, height, _ = KEYS[command]
        ImageDraw.Draw(self.picture).rectangle((x, y, x + width - 1, y + height - 1), outline=(0, 255, 0))

    def press(self, command):
        x, y, width, height, _ = KEYS[command]
        self.picture.paste((0, 0, 0), (x, y, x + width, y + height))
        self.picture.paste(self._skin.crop((x + 2, y + 2, x + width - 2, y + height - 2)), (x + 2, y + 3))


def _box(rect):
    x, y, width, height = rect
    return (x, y, x + width, y + height)


def _time(figures):
    return {element: int(figure) for element, figure in zip(HOURS_TO_SECONDS, figures)}


def _video_window(folder, panel, width, height):
    """The frame about a dark picture, as it stands above the panel."""
    pieces = {
        number: Image.open(os.path.join(folder, f"frame_{number}.bmp")).convert("RGB") for number in range(138, 146)
    }
    window = Image.new("RGB", (width, height), (16, 40, 72))
    right, bottom = width - 15, height - 12
    window.paste(pieces[144].resize((15, height), 0), (0, 0))
    window.paste(pieces[142].resize((width, 12), 0), (0, 0))
    window.paste(pieces[145].resize((15, height), 0), (right, 0))
    window.paste(pieces[143].resize((width, 12), 0), (0, bottom))
    for number, place in ((138, (0, 0)), (139, (right, 0)), (140, (0, bottom)), (141, (right, bottom))):
        window.paste(pieces[number], place)
    desk = Image.new("RGB", (panel.width + 40, height + panel.height + 44), (0, 96, 112))
    desk.paste(window, ((desk.width - width) // 2, 20))
    desk.paste(panel, (20, height + 24))
    return desk


def _icon_sheet():
    """Every size on a light and on a dark ground."""
    sheet = Image.new("RGB", (392, 544), (236, 240, 244))
    sheet.paste((0, 96, 112), (0, 272, 392, 544))
    for top in (8, 280):
        left = 8
        for image in icon.draw():
            sheet.paste(image, (left, top), image)
            left += image.width + 8
    return sheet


def write(art_folder, preview_folder):
    os.makedirs(preview_folder, exist_ok=True)
    pictures = {}

    panel = Panel(art_folder)
    pictures["skin"] = panel.picture.copy()
    panel.show_display(dict.fromkeys(DIGITS, 8), set(LAMPS), "ver 04.09.1999")
    pictures["lamp_test"] = panel.picture.copy()

    panel.show_display(_time("105307"), {15, 16, 17, DEVICE_LAMPS["idle"]})
    pictures["idle"] = panel.picture.copy()

    panel.show_display(_time("000217") | {8: 3, 11: 6}, {16, 17, 19, 22, 27, 29, DEVICE_LAMPS["cd"]},
                       "Harbour Lights - Evening Ferry")
    panel.light(1000)
    pictures["cd_playing"] = panel.picture.copy()
    pictures["video"] = _video_window(art_folder, panel.picture, 382, 200)

    for command in (1016, 1057, 1041, 1000, 1044, 1023, 1072, 1073, 1050, 1051, 1058, 1033, 1103, 1071):
        panel.press(command)
    pictures["pressed"] = panel.picture.copy()

    pictures["icon"] = _icon_sheet()
    for name, picture in pictures.items():
        picture.save(os.path.join(preview_folder, f"{name}.png"))
        enlarged = picture.resize((picture.width * 4, picture.height * 4), Image.Resampling.NEAREST)
        enlarged.save(os.path.join(preview_folder, f"{name}-4x.png"))
