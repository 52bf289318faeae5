#!/usr/bin/python3
"""Albums as a user keeps them: made, filled, renamed, emptied, deleted and played in the Open File dialog, with keys and mouse."""

import subprocess
import time
import unittest

from remote import WINDOWS, Remote, click_in, control, remote_control, wait_for, windows, xdotool

ALBUMS, CONFIG = WINDOWS / "mfiles.abm", WINDOWS / "quorvex.ini"
EXPAND, OPEN_PLAYLIST, NEW, EDIT, DELETE_ALBUM, DELETE_ENTRY = 1090, 1095, 1087, 1091, 1088, 1089
ALBUM_LIST, CONTENT_LIST = 1085, 1086
FILE_ROW, LIST_ROW = 17, 13  # heights in pixels of a line of the files and of the lists


def press(number):
    click_in(control("Open", number))


def type_title(caption, title):
    """The field has the focus and its text is selected."""
    control(caption, 1080, "Edit")
    xdotool("type", title)
    xdotool("key", "Return")
    wait_for(lambda: all(window.text != caption for window in windows()))


class Albums(unittest.TestCase):
    def setUp(self):
        self.remote = Remote()
        self.addCleanup(self.remote.stop)
        self.songs = self.remote.folder / "songs"
        self.songs.mkdir()
        for name in ("a.mp3", "b.mp3", "c.mp3"):
            subprocess.run(["ffmpeg", "-v", "error", "-f", "lavfi", "-i", "sine=440:duration=20", self.songs / name], check=True)
        self.dir = "Z:" + str(self.songs).replace("/", "\\")
        ALBUMS.write_text(f"[Last Visit]\nDir={self.dir}\n")
        CONFIG.write_bytes(b"[QUORVEX]\r\nAutoStartDevice=0\r\n")

    def album(self, title):
        """The entries that the store has of an album; none when it has no such album."""
        sections = ALBUMS.read_text(encoding="utf-8").replace("\r", "").split("\n[")
        lines = next((section.split("\n")[1:] for section in sections if section.lstrip("[").startswith(f"{title}]\n")), None)
        if lines is None:
            return None
        values = dict(line.split("=", 1) for line in lines if "=" in line)
        return [values[str(number)].rsplit("\\", 1)[1] for number in range(1, int(values["Tracks"]) + 1)]

    def titles(self):
        head = ALBUMS.read_text(encoding="utf-8").split("[List of Albums]")[1].split("[")[0]
        return [line.split("=", 1)[1] for line in head.split() if line.split("=")[0].isdigit()]

    def drag_songs(self, first, last):
        files, target = control("Open", 1, "SysListView32"), control("Open", CONTENT_LIST, "ListBox")
        x, y = files.left + 22, [files.top + FILE_ROW * (row + 1) for row in (first, last)]
        # Slowly enough that a click and the pressing for the drag are no double click.
        xdotool("mousemove", x, y[0], "click", 1, "sleep", 0.8, "mousemove", x, y[1], "keydown", "shift", "click", 1, "keyup", "shift", "sleep", 0.8,
                "mousedown", 1, "sleep", 0.3, "mousemove", x + 20, y[1] + 10, "sleep", 0.2, "mousemove", x + 60, target.top - 40, "sleep", 0.2,
                "mousemove", target.left + 60, target.top + 80, "sleep", 0.3, "mouseup", 1)

    def test_an_albums_life(self):
        self.remote.start()
        time.sleep(1.5)
        xdotool("key", "ctrl+f")
        press(EXPAND)
        self.drag_songs(0, 0)
        wait_for(lambda: any(window.text == "You must create a new album first." for window in windows()))
        xdotool("key", "Return")

        for title in ("Evening", "Party"):
            press(NEW)
            type_title("New Playlist", title)
        wait_for(lambda: self.titles() == ["Evening", "Party"])
        click_in(control("Open", ALBUM_LIST, "ListBox"), 20, LIST_ROW // 2)
        wait_for(lambda: control("Open", 1096, "Static").text == "Evening")
        self.drag_songs(0, 2)
        wait_for(lambda: self.album("Evening") == ["a.mp3", "b.mp3", "c.mp3"])
        self.assertEqual(self.album("Party"), [])

        press(EDIT)
        type_title("Edit Playlist Title", "Night=1")
        wait_for(lambda: self.titles() == ["Night=1", "Party"])
        self.assertEqual(self.album("Night=1"), ["a.mp3", "b.mp3", "c.mp3"])
        self.assertIsNone(self.album("Evening"))
        click_in(control("Open", CONTENT_LIST, "ListBox"), 20, LIST_ROW + LIST_ROW // 2)
        press(DELETE_ENTRY)
        wait_for(lambda: self.album("Night=1") == ["a.mp3", "c.mp3"])

        click_in(control("Open", ALBUM_LIST, "ListBox"), 20, LIST_ROW + LIST_ROW // 2)
        wait_for(lambda: control("Open", 1096, "Static").text == "Party")
        press(DELETE_ALBUM)
        wait_for(lambda: self.titles() == ["Night=1"])
        self.assertIsNone(self.album("Party"))

        press(OPEN_PLAYLIST)
        self.remote.sees(lambda picture: (picture.number(6), picture.number(9)) == ("1", "2"))
        self.remote.sees_text("a.mp3")
        xdotool("key", "Next")
        self.remote.sees_text("c.mp3")
        self.assertEqual(remote_control("state")["state"], "playing")


if __name__ == "__main__":
    unittest.main(verbosity=2)
