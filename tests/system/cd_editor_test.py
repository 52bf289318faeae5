#!/usr/bin/python3
"""The CD play-list editor as a user has it: opened from the Setup sheet while a disc plays, worked with keys and mouse, its names and play list
found in cd.abm and on the panel."""

import unittest

from remote import NEXT, WINDOWS, Remote, click_in, control, drive, empty_drive, make_disc, remote_control, wait_for, windows, xdotool

CONFIG, STORE = WINDOWS / "quorvex.ini", WINDOWS / "cd.abm"
SHEET, EDITOR = "Setup Options", "CD Playlist"
SETUP, EDIT_PLAYLIST, USE_PLAYLIST, APPLY, OK = 1071, 1087, 1107, 0x3021, 1
PLAYLIST_COUNT, PLAYLIST, CONTENT, PLAYLIST_TIME, ADD, REMOVE, DELETE, NAMING_LABEL = 1060, 1061, 1065, 1090, 1093, 1095, 1096, 1175
LIST_ROW = 13  # height in pixels of a line of a list
SECTION = b"[CD List]\r\nNumber of CDs=1\r\n1=00000500\r\n[00000500]\r\n"


def press(number):
    click_in(control(EDITOR, number))


def click_item(listing, row, *keys):
    x, y = 20, LIST_ROW * row + LIST_ROW // 2
    for key in keys:
        xdotool("keydown", key)
    click_in(control(EDITOR, listing, "ListBox"), x, y)
    for key in keys:
        xdotool("keyup", key)


def is_open(caption):
    return any(window.depth == 0 and window.text == caption for window in windows())


class CdEditor(unittest.TestCase):
    def setUp(self):
        STORE.unlink(missing_ok=True)
        CONFIG.write_bytes(b"[QUORVEX]\r\nLastDevice=3\r\n")
        empty_drive()
        self.remote = Remote()
        self.addCleanup(self.remote.stop)
        drive("insert", make_disc(self.remote.folder, [200, 180, 240]))
        self.remote.start()
        wait_for(lambda: drive("status")["mode"] == "playing")
        self.before = STORE.read_bytes()

    def open_editor(self):
        if not is_open(SHEET):
            self.remote.click(SETUP)
        click_in(control(SHEET, EDIT_PLAYLIST))
        control(EDITOR, OK)

    def leave_editor(self, *keys):
        xdotool("key", *keys)
        wait_for(lambda: not is_open(EDITOR))

    @staticmethod
    def seconds():
        minutes, seconds = map(int, drive("status")["time"].split(":"))
        return minutes * 60 + seconds

    def sees(self, number, text):
        wait_for(lambda: control(EDITOR, number, "Static").text == text)

    def name_tracks(self, *names):
        xdotool("key", "alt+k")
        for name in names:
            xdotool("key", "ctrl+a")
            xdotool("type", name)
            xdotool("key", "Return")

    def test_a_disc_is_named_and_its_play_list_made(self):
        self.open_editor()
        xdotool("type", "Evening music")
        self.name_tracks("Lost")
        press(DELETE)
        self.leave_editor("Escape")
        self.assertEqual(STORE.read_bytes(), self.before, "Cancel stores nothing")

        # The first Cancel has left the second track to be named.
        self.open_editor()
        xdotool("type", "Evening music")
        xdotool("key", "Tab")
        xdotool("type", "The Band")
        self.sees(NAMING_LABEL, "Trac&k 02:")
        self.name_tracks("Second", "Third", "First")
        self.sees(NAMING_LABEL, "Trac&k 02:")

        press(DELETE)
        self.sees(PLAYLIST_COUNT, "0")
        click_item(CONTENT, 2)
        click_item(CONTENT, 0, "ctrl")
        press(ADD)
        press(ADD)
        self.sees(PLAYLIST_COUNT, "4")
        self.sees(PLAYLIST_TIME, "14:40 (min:sec)")
        click_item(PLAYLIST, 0)
        click_item(PLAYLIST, 1, "shift")
        press(ADD)
        self.sees(PLAYLIST_COUNT, "4")  # the other list lost its selection
        press(REMOVE)
        self.sees(PLAYLIST_COUNT, "2")
        xdotool("key", "alt+t")
        self.leave_editor("Return")
        self.assertEqual(STORE.read_bytes(), SECTION + b"Title=Evening music\r\nArtist=The Band\r\n"
                                                       b"1=First\r\n2=Second\r\n3=Third\r\nPlaylist=1 3 \r\n")

        # The play list takes effect; the track that plays is in it and goes on.
        played = self.seconds()
        click_in(control(SHEET, USE_PLAYLIST))
        click_in(control(SHEET, APPLY))
        wait_for(lambda: b"UsePlayList=1" in CONFIG.read_bytes())
        wait_for(lambda: remote_control("state")["title"] == "First")
        self.assertGreaterEqual(self.seconds(), played)
        click_in(control(SHEET, OK))
        wait_for(lambda: not is_open(SHEET))
        self.remote.click(NEXT)
        self.remote.sees_text("Third")
        wait_for(lambda: remote_control("state")["item"] == "3")


if __name__ == "__main__":
    unittest.main(verbosity=2)
