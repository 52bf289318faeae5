#!/usr/bin/python3
"""make_discs.py FOLDER [little]  Makes the tests' DVD-Video discs, with ffmpeg, spumux, dvdauthor and genisoimage: all, or that one.

A disc NAME is FOLDER/NAME/VIDEO_TS, and FOLDER/NAME.iso where ISOS names it. A chapter lasts a "second" of two GOPs (NTSC 30 pictures,
1.001 s; PAL 24 pictures, 0.96 s). What pictures look like: discs/pictures.py; what subtitles and buttons look like: discs/subpictures.py.
Sound: a tone (its pitch tells the track), loud in the first 0.2 s of every chapter, low between.

chapters   NTSC 4:3, one title of 25 chapters (film 1), AC-3 440 Hz; no menu, begins at once
captions   the same with closed captions (discs/captions.py); captions.txt says what is to be seen when
streams    the same with four sounds: AC-3 en 440 Hz, MPEG layer 2 without a language 880 Hz, LPCM fr 1320 Hz, DTS de 1760 Hz; four subtitles,
           shown in the second half of every chapter: en (white), none (cyan), fr (magenta), de (green)
menus      begins with an intro of the VMGM (film 100), then its title menu (film 101; buttons: root menu of set 1, title 2). Set 1: root menu (film 102)
           of twelve buttons (1 to 10 play that chapter of title 1, 11 opens the sub-menu, 12 the title menu); sub-menu (film 103) of audio and
           subtitles, seen at rest (1: second sound, 2: subtitles on, 3: back). Title 1: film 1, 25 chapters, then the root menu; two sounds, a subtitle.
           Set 2: title 2: film 2, 3 chapters, then the title menu; a forced subtitle (cyan)
wide       PAL 16:9, one title of 6 chapters (film 3), a subtitle en in two streams: for wide sets (0, white) and for letter-boxed ones (1, magenta)
jumps      three titles (films 4, 5, 6 of 2 chapters). Begins with title 1; after it title 3 when register 1 is 7, which the first play sets, else
           title 2; title 3 holds its last picture of chapter 1 for 2 s and its end for ever
endless    its two menus jump to each other for ever (libdvdnav left alone does not come back)
damaged/*  variants of `jumps` (discs/damage.py)
little     something of everything, for what tries damage by the thousand (tests/fuzz): first play and menus of the disc and of set 1, with buttons
           and registers; set 1: title 1 (film 1, 3 chapters, AC-3 and LPCM, a subtitle, captions), title 2 (film 7, a still); set 2: title 3 (film 8)
"""
import shutil
import subprocess
import sys
from pathlib import Path

from discs import captions, damage, subpictures
from discs.pictures import NTSC, PAL, encode, ffmpeg, finish

ISOS = ("chapters", "menus", "little")
CHAPTERS = 25
SOUNDS = {"ac3": "-c:a:{0} ac3 -b:a:{0} 192k", "pcm": "-c:a:{0} pcm_dvd -sample_fmt:a:{0} s16", "mp2": "-c:a:{0} mp2 -b:a:{0} 192k", "dts": "-c:a:{0} dca -b:a:{0} 768k -strict -2"}
WHITE, CYAN, MAGENTA, GREEN = (255, 255, 255, 255), (0, 255, 255, 255), (255, 0, 255, 255), (0, 255, 0, 255)


class Workshop:
    """What the discs are made of, in a folder of its own."""

    def __init__(self, folder):
        self.folder = folder
        self.parts = folder / "parts"
        self.parts.mkdir(parents=True)

    def film(self, number, chapters, system=NTSC, words=None, **options):
        words = words or rf"chapter %{{eif\:trunc(n/{2 * system.group})+1\:d}}  picture %{{n}}"
        return encode(self.parts / f"film{number}.m2v", system, number, chapters, words, **options)

    def programme(self, name, video, chapters, sounds=("ac3",), system=NTSC):
        """A film with its sounds as a programme stream."""
        loudness = rf"(0.1+0.6*lt(mod(t\,{system.second})\,0.2))"
        inputs, outputs = ["-fflags", "+genpts", "-i", video], ["-map", 0, "-c:v", "copy"]
        for track, coding in enumerate(sounds):
            tone = f"{loudness}*sin(2*PI*{440 * (track + 1)}*t)"
            inputs += ["-f", "lavfi", "-t", (chapters or 0.5) * system.second, "-i", f"aevalsrc='{tone}|{tone}':s=48000"]
            outputs += ["-map", track + 1, *SOUNDS[coding].format(track).split()]
        path = self.parts / f"{name}.vob"
        finish(ffmpeg(*inputs, *outputs, "-f", "dvd", path))
        return path

    def menu(self, number, words, count, columns, seen_at_rest=False):
        boxes = [subpictures.button_box(index, columns) for index in range(count)]
        video = self.film(number, 0, words=words, more_filters=[f"drawbox=x={box[0]}:y={box[1]}:w=120:h=48:color=0x303060:t=fill" for box in boxes])
        return subpictures.add_buttons(self.programme(f"menu{number}", video, 0), self.parts, count, columns, seen_at_rest)

    def author(self, name, body, system="ntsc"):
        script = self.parts / f"{name}.xml"
        script.write_text(f'<dvdauthor format="{system}">{body}</dvdauthor>')
        disc = self.folder / name
        subprocess.run(["dvdauthor", "-o", disc, "-x", script], check=True, capture_output=True)
        shutil.rmtree(disc / "AUDIO_TS", ignore_errors=True)
        if name in ISOS:
            make_iso(disc, disc.with_suffix(".iso"), "-dvd-video")


def make_iso(folder, path, *options):
    subprocess.run(["genisoimage", "-quiet", *options, "-udf", "-V", folder.name.upper(), "-o", path, folder], check=True, stderr=subprocess.DEVNULL)


def vob(path, chapters=0, system=NTSC, more=""):
    marks = ",".join(f"{chapter * system.second:.3f}" for chapter in range(chapters))
    return f'<vob file="{path}" chapters="{marks}" {more}/>' if chapters else f'<vob file="{path}" {more}/>'


def title(content, post="exit;", pre=""):
    return f"<pgc><pre>{pre}</pre>{content}<post>{post}</post></pgc>"


def menu(content, buttons, entry=""):
    rows = "".join(f'<button name="b{number}">{command}</button>' for number, command in enumerate(buttons, 1))
    return f'<pgc {f"entry={chr(34)}{entry}{chr(34)}" if entry else ""} pause="inf">{rows}{content}</pgc>'


def titleset(titles, menus="", languages=""):
    return f"<titleset>{f'<menus>{menus}</menus>' if menus else ''}<titles>{languages}{''.join(titles)}</titles></titleset>"


def sound_languages(*codes):
    return "".join(f'<audio lang="{code}"/>' if code else "<audio/>" for code in codes)


def subtitle_languages(*codes):
    return "".join(f'<subpicture lang="{code}"/>' if code else "<subpicture/>" for code in codes)


def make_plain_discs(shop, film):
    plain = shop.programme("plain", film, CHAPTERS)
    shop.author("chapters", f"<vmgm/>{titleset([title(vob(plain, CHAPTERS))], languages=sound_languages('en'))}")
    captioned = shop.parts / "captioned.m2v"
    (shop.folder / "captions.txt").write_text(captions.shown_text())
    captioned.write_bytes(captions.insert(film.read_bytes(), CHAPTERS * 2 * NTSC.group))
    video = '<video caption="field1"/>'
    shop.author("captions", f"<vmgm/>{titleset([title(vob(shop.programme('captioned', captioned, CHAPTERS), CHAPTERS))], languages=video)}")


def make_wide(shop):
    video = shop.programme("wide", shop.film(3, 6, PAL, aspect="16:9"), 6, system=PAL)
    for stream, (words, colour) in enumerate((("wide", WHITE), ("letter-box", MAGENTA))):
        video = subpictures.add_subtitles(video, shop.parts, stream, words, colour, 6, PAL)
    streams = """<video aspect="16:9"/><subpicture lang="en"><stream id="0" mode="widescreen"/><stream id="1" mode="letterbox"/></subpicture>"""
    shop.author("wide", f"<vmgm/>{titleset([title(vob(video, 6, PAL))], languages=streams)}", "pal")


def make_endless(shop):
    menus = "".join(f"<pgc><pre>jump menu {other};</pre></pgc>" for other in (2, 1))
    shop.author("endless", f"<vmgm><fpc>jump menu 1;</fpc><menus>{menus}</menus></vmgm>{titleset([title(vob(shop.parts / 'jump4.vob', 2))])}")


def make_streams(shop, film):
    video = shop.programme("streams", film, CHAPTERS, ("ac3", "mp2", "pcm", "dts"))
    for stream, (words, colour) in enumerate((("English subtitle", WHITE), ("subtitle without a language", CYAN), ("sous-titre", MAGENTA), ("Untertitel", GREEN))):
        video = subpictures.add_subtitles(video, shop.parts, stream, words, colour, CHAPTERS)
    languages = sound_languages("en", None, "fr", "de") + subtitle_languages("en", None, "fr", "de")
    shop.author("streams", f"<vmgm/>{titleset([title(vob(video, CHAPTERS))], languages=languages)}")


def make_menus(shop, film):
    intro = vob(shop.programme("intro", shop.film(100, 1, words="intro"), 1))
    title_menu = menu(vob(shop.menu(101, "title menu", 2, 2)), ["jump titleset 1 menu entry root;", "jump title 2;"], "title")
    first = f'<vmgm><fpc>jump menu 1;</fpc><menus>{title(intro, "jump menu 2;")}{title_menu}</menus></vmgm>'
    root = [f"jump title 1 chapter {number};" for number in range(1, 11)] + ["jump menu 2;", "jump vmgm menu entry title;"]
    sub = ["audio=1; jump title 1;", "subtitle=64; jump title 1;", "jump menu entry root;"]
    menus = menu(vob(shop.menu(102, "root menu", 12, 4)), root, "root,ptt") + menu(vob(shop.menu(103, "sub-menu", 3, 1, True)), sub, "audio,subtitle")
    main = subpictures.add_subtitles(shop.programme("main", film, CHAPTERS, ("ac3", "mp2")), shop.parts, 0, "English subtitle", WHITE, CHAPTERS)
    languages = sound_languages("en", "fr") + subtitle_languages("en")
    one = titleset([title(vob(main, CHAPTERS), "call menu entry root;")], menus, languages)
    second = subpictures.add_subtitles(shop.programme("second", shop.film(2, 3), 3), shop.parts, 0, "forced", CYAN, 3, forced=True)
    two = titleset([title(vob(second, 3), "call vmgm menu entry title;")], languages=subtitle_languages("en"))
    shop.author("menus", first + one + two)


def make_jumps(shop):
    films = [shop.programme(f"jump{number}", shop.film(number, 2), 2) for number in (4, 5, 6)]
    second = NTSC.second
    held = (f'<vob file="{films[2]}"><cell start="0" end="{second:.3f}" chapter="1" pause="2"/>'
            f'<cell start="{second:.3f}" end="-1" chapter="1" pause="inf"/></vob>')
    branches = '<menus><pgc entry="title"><pre>if (g2 eq 1) { if (g1 eq 7) jump title 3; else jump title 2; } jump title 1;</pre></pgc></menus>'
    first = f"<vmgm><fpc>g1=7; g2=0; jump title 1;</fpc>{branches}</vmgm>"
    one = titleset([title(vob(films[0], 2), "g2=1; call vmgm menu entry title;"), title(vob(films[1], 2))])
    shop.author("jumps", first + one + titleset([title(held)]))


def make_little(shop):
    video = shop.parts / "little.m2v"
    video.write_bytes(captions.insert(shop.film(1, 3).read_bytes(), 3 * 2 * NTSC.group))
    main = subpictures.add_subtitles(shop.programme("little", video, 3, ("ac3", "pcm")), shop.parts, 0, "English subtitle", WHITE, 3)
    short = [shop.programme(f"short{number}", shop.film(number, 1), 1) for number in (7, 8)]
    title_menu = menu(vob(shop.menu(105, "title menu", 3, 3)), ["jump titleset 1 menu entry root;", "g1=g1+1; jump title 2;", "jump title 3;"], "title")
    intro = "<pgc><pre>g2=random(3); if (g1 gt 2) jump menu entry title;</pre><post>jump menu entry title;</post></pgc>"
    root = ["jump title 1 chapter 2;", "audio=1; subtitle=64; jump title 1;", "jump menu 2;", "jump vmgm menu entry title;"]
    menus = menu(vob(shop.menu(106, "root menu", 4, 2)), root, "root,ptt") + menu(vob(shop.menu(107, "sub-menu", 1, 1, True)), ["jump menu entry root;"])
    still = f'<vob file="{short[0]}"><cell start="0" end="-1" chapter="1" pause="2"/></vob>'
    streams = '<video caption="field1"/>' + sound_languages("en", "fr") + subtitle_languages("en")
    titles = [title(vob(main, 3), "call menu entry root;", "g3=1; if (g3 eq 0) jump title 2;"), title(still, "jump title 1;")]
    sets = titleset(titles, menus, streams) + titleset([title(vob(short[1], 1), "call vmgm menu entry title;")])
    shop.author("little", f"<vmgm><fpc>g1=0; jump menu 1;</fpc><menus>{intro}{title_menu}</menus></vmgm>{sets}")


def main():
    folder = Path(sys.argv[1])
    shutil.rmtree(folder, ignore_errors=True)
    shop = Workshop(folder)
    if sys.argv[2:] == ["little"]:
        make_little(shop)
    else:
        make_all(shop)
    shutil.rmtree(shop.parts)


def make_all(shop):
    film = shop.film(1, CHAPTERS)
    make_plain_discs(shop, film)
    make_streams(shop, film)
    make_menus(shop, film)
    make_wide(shop)
    make_jumps(shop)
    make_endless(shop)
    damage.make(shop.folder / "jumps", shop.folder / "damaged")


main()
