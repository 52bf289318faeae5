#!/usr/bin/python3
"""tools/manual/state_pictures.py FOLDER [--large] [audio_cd|files|dvd|television]...  Brings Quorvex into the states that users see and takes a
picture of each; --large: on a display set to 200 %. Needs what ./check has built, its Wine environment (QUORVEX_ENV=check QUORVEX_VIRTUAL=1), and ffmpeg.
"""

import os
import subprocess
import sys
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests" / "system"))
sys.dont_write_bytecode = True

from PIL import ImageGrab  # noqa: E402

from remote import Remote, TESTS, WINDOWS, drive, empty_drive, make_disc, remote_control, video_frame, wait_for, windows, xdotool  # noqa: E402
from scale_test import set_density  # noqa: E402

FOLDER = Path(sys.argv[1])
LARGE = "--large" in sys.argv
DISCS = TESTS / "discs"
CONFIG, TITLES, ALBUMS = (WINDOWS / name for name in ("quorvex.ini", "cd.abm", "mfiles.abm"))
SHEET_PAGES = ("general", "media-files", "tv", "capture", "dvd", "cd")
MARGIN = 8
AT_REST = 0.7  # seconds until what was pressed is shown


def take(name, size=1.0):
    """A picture of all windows that Quorvex shows, as they lie on the screen, in so much of their size."""
    time.sleep(AT_REST)
    tops = [window for window in windows() if window.depth == 0 and window.right > window.left]
    area = (min(w.left for w in tops) - MARGIN, min(w.top for w in tops) - MARGIN, max(w.right for w in tops) + MARGIN, max(w.bottom for w in tops) + MARGIN)
    screen = ImageGrab.grab(xdisplay=os.environ["DISPLAY"]).convert("RGB")
    shown = screen.crop((max(area[0], 0), max(area[1], 0), min(area[2], screen.width), min(area[3], screen.height)))
    shown = shown.resize((round(shown.width * size), round(shown.height * size)))
    shown.quantize(256).save(FOLDER / f"{name}.png", optimize=True)
    print(name, shown.size, flush=True)


class Session:
    """Quorvex with stores of its own, ended and forgotten afterwards."""

    def __init__(self, settings="AutoStartDevice=0", more=""):
        CONFIG.write_text(f"[QUORVEX]\n{settings}\n{more}")
        self.remote = Remote()

    def __enter__(self):
        self.remote.process = subprocess.Popen([ROOT / "tools" / "in-wine", ROOT / "build/win/bin/quorvex.exe"], stdin=subprocess.DEVNULL,
                                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        wait_for(self.remote.is_visible)
        xdotool("mousemove", 2, 2)
        time.sleep(4)  # the lamp test and the version are over
        return self.remote.folder

    def __exit__(self, *_):
        self.remote.stop()
        for store in (CONFIG, TITLES, ALBUMS):
            store.unlink(missing_ok=True)


def keys(*names):
    remote_control("key", *names)


def film(folder, source, seconds=30):
    path = folder / "A walk into the set.mpg"
    subprocess.run(["ffmpeg", "-v", "error", "-f", "lavfi", "-i", source, "-f", "lavfi", "-i", "sine=330", "-t", str(seconds), "-shortest", "-c:v",
                    "mpeg1video", "-q:v", "3", "-c:a", "mp2", path], check=True)
    return path


def audio_cd():
    disc_titles = ("[CD List]\nNumber of CDs=1\n1=00000500\n[00000500]\nTitle=Preludes\nArtist=Anna\n1=Prelude in C major\n2=Prelude in C minor\n"
                   "3=Prelude in D major\nPlaylist=1 2 3 \n")
    empty_drive()
    TITLES.write_text(disc_titles)
    with Session("LastDevice=3") as folder:
        take("cd-no-disc")
        drive("insert", make_disc(folder, [200, 180, 240]))
        time.sleep(3)
        take("cd-playing")
        keys("random", "repeat")
        take("cd-random-repeat")
        keys("pause")
        take("cd-paused")
        keys("mute", "sound")
        take("volume-muted")
        keys("close")
        for _ in range(7):
            xdotool("key", "Tab")
        take("keyboard")
        xdotool("key", "ctrl+s")
        take("media-select")
        xdotool("key", "Escape")
        drive("eject")


def files():
    with Session() as folder:
        take("idle")
        remote_control("open", film(folder, "mandelbrot=size=640x360:rate=25:start_scale=1.5:end_scale=0.05"))
        time.sleep(4)
        take("film-playing")
        keys("sound", "right", "right")
        take("film-volume")
        time.sleep(5)
        keys("pause")
        take("film-paused")
        keys("full-screen")
        take("film-full-screen")
        keys("full-screen", "close")
        (folder / "broken.avi").write_bytes(b"no film")
        subprocess.Popen([ROOT / "tools" / "in-wine", ROOT / "build/win/bin/qvremote.exe", "open", folder / "broken.avi"], stdin=subprocess.DEVNULL,
                         stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        wait_for(lambda: any(window.kind == "#32770" for window in windows()))
        take("file-error")
        xdotool("key", "Return")
    with Session() as folder:
        for name in ("First song.mp3", "Second song.mp3"):
            (folder / name).write_bytes((TESTS / "media" / "sound.mp3").read_bytes())
        where = "Z:" + str(folder).replace("/", "\\")
        ALBUMS.write_text(f"[Last Visit]\nDir={where}\n[List of Albums]\nAlbums=2\nSelection=1\n1=Sunday\n2=Songs for the car\n"
                          f"[Sunday]\nTracks=2\n1={where}\\First song.mp3\n2={where}\\Second song.mp3\n[Songs for the car]\nTracks=0\n")
        keys("open")
        wait_for(lambda: any(window.text == "Open" for window in windows()))
        take("open-file")
        expand = next(window for window in windows() if window.text == "Playlist >>")
        xdotool("mousemove", expand.left + 20, expand.top + 10, "click", 1, "mousemove", 2, 2)
        take("open-file-albums")
        xdotool("key", "Escape")


def dvd():
    drive("insert", DISCS / "menus.iso")
    with Session():
        keys("dvd")
        wait_for(video_frame)
        time.sleep(3)
        take("dvd-menu")
        keys("enter")
        time.sleep(2)
        take("dvd-film")
    drive("eject")


def television():
    drive("card", "on")
    with Session(more="[CAPTURE]\nFrameRate=333667\n"):
        keys("media-select")
        xdotool("key", "--delay", 300, "Down", "Right", "Return")
        wait_for(video_frame, 20)
        time.sleep(3)
        take("television")
        keys("captions")
        time.sleep(4)
        take("television-captions")
        keys("up")
        take("television-no-station", 0.25)
        keys("down", "picture", "right")
        take("television-brightness")
        keys("setup")
        tabs = wait_for(lambda: next((window for window in windows() if window.kind == "SysTabControl32"), None))
        xdotool("mousemove", tabs.left + 20, tabs.top + 10, "click", 1, "mousemove", 2, 2, "key", *["Left"] * len(SHEET_PAGES))
        for page in SHEET_PAGES:
            take(f"setup-{page}")
            xdotool("key", "Right")
        xdotool("key", "Escape")
        keys("record")
        take("record-no-file")
        xdotool("key", "Escape")
    drive("card", "off")


def main():
    FOLDER.mkdir(parents=True, exist_ok=True)
    if LARGE:
        set_density(192)
    try:
        parts = (audio_cd, files, dvd, television)
        for part in [part for part in parts if part.__name__ in sys.argv] or parts:
            part()
    finally:
        if LARGE:
            set_density(96)


main()
