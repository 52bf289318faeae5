"""Subtitles and menu buttons of the test discs: images and what spumux is told of them."""
import subprocess

from PIL import Image, ImageDraw, ImageFont

from discs.pictures import FONT, NTSC, WIDTH

LIT, PRESSED, RESTING = (255, 255, 0, 255), (255, 0, 0, 255), (0, 255, 0, 255)  # a button selected, activated, and drawn at rest


def spumux(source, target, xml, folder, stream=0, system=NTSC):
    script = folder / "spumux.xml"
    script.write_text(f"<subpictures><stream>{xml}</stream></subpictures>")
    with open(source, "rb") as video, open(target, "wb") as out:
        subprocess.run(["spumux", "-v", "0", "-s", str(stream), script], stdin=video, stdout=out, stderr=subprocess.DEVNULL, check=True,
                       env={"VIDEO_FORMAT": system.name, "PATH": "/usr/bin:/bin"})


def add_subtitles(video, folder, stream, words, colour, chapters, system=NTSC, forced=False):
    """A bar in `colour` with `words` in black on it, in the second half of every chapter; 30 lines further up for every stream."""
    top = system.height - 60 - 30 * stream
    image = Image.new("RGBA", (WIDTH, system.height))
    draw = ImageDraw.Draw(image)
    draw.fontmode = "1"
    draw.rectangle((120, top, WIDTH - 121, top + 23), fill=colour)
    draw.text((140, top + 1), words, fill=(0, 0, 0, 255), font=ImageFont.truetype(FONT, 20))
    name = folder / f"subtitle{stream}.png"
    image.save(name)
    times = ((clock((chapter + 0.5) * system.second), clock((chapter + 0.9) * system.second)) for chapter in range(chapters))
    xml = "".join(f'<spu start="{start}" end="{end}" image="{name}" {"force=%syes%s" % (chr(34), chr(34)) if forced else ""}/>' for start, end in times)
    target = video.with_suffix(f".s{stream}.vob")
    spumux(video, target, xml, folder, stream, system)
    return target


def clock(seconds):
    return f"00:00:{seconds:05.2f}"


def button_box(index, columns):
    """Left, top, right, bottom (the last two outside)."""
    left, top = 60 + 160 * (index % columns), 180 + 80 * (index // columns)
    return left, top, left + 120, top + 48


def button_frames(folder, name, colour, count, columns):
    image = Image.new("RGBA", (WIDTH, NTSC.height))
    draw = ImageDraw.Draw(image)
    for index in range(count):
        left, top, right, bottom = button_box(index, columns)
        draw.rectangle((left, top, right - 1, bottom - 1), outline=colour, width=8)
    path = folder / f"{name}.png"
    image.save(path)
    return path


def add_buttons(video, folder, count, columns, seen_at_rest):
    """Frames around `count` buttons; at rest they are not to be seen unless `seen_at_rest`."""
    def frames(name, colour):
        return button_frames(folder, name, colour, count, columns)

    rest = f'image="{frames("rest", RESTING)}"' if seen_at_rest else ""
    buttons = "".join('<button name="b{}" x0="{}" y0="{}" x1="{}" y1="{}"/>'.format(index + 1, *button_box(index, columns)) for index in range(count))
    target = video.with_suffix(".menu.vob")
    spumux(video, target, f'<spu start="00:00:00.00" force="yes" {rest} highlight="{frames("lit", LIT)}" select="{frames("pressed", PRESSED)}">{buttons}</spu>', folder)
    return target
