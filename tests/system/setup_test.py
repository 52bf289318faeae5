#!/usr/bin/python3
"""The Setup sheet as a user has it: every page with every device, left by OK, Apply and Cancel, with keys and mouse; quorvex.ini before and
after."""

import stat
import subprocess
import unittest

from remote import MEDIA_SELECT, POWER, TESTS, WINDOWS, Remote, click_in, drive, make_disc, remote_control, video_frame, wait_for, windows, xdotool

CONFIG = WINDOWS / "quorvex.ini"
SHEET = "Setup Options"
SETUP, OK, CANCEL, APPLY, HELP = 1071, 1, 2, 0x3021, 9
PAGES = ["General", "Media Files", "TV", "Capture", "DVD", "CD"]
TABS = 0x3020
START = b"[QUORVEX]\r\nAutoStartDevice=0\r\n"
# The controls that only some devices have: TV page, Capture page, CD page.
TUNER, CAPTIONS = {1108, 1109, 1087}, {1522, 1523}
CAPTURE = {1087, 1403, 1419, 1408, 1410, 1412, 1413, 1415, 1416, 1417, 1418}


def dialogs():
    return [window.text for window in windows() if window.depth == 0 and window.kind == "#32770"]


class Sheet:
    """The open sheet. Looking at it takes long: what was seen last is used until the next look."""

    def __init__(self, page):
        self.page, self.seen = page, []
        wait_for(lambda: self.look() and self.is_shown(page))

    def look(self):
        """Sees the sheet and all that it contains; nothing when it is not open."""
        self.seen, inside = [], False
        for window in windows():
            inside = window.text == SHEET if window.depth == 0 else inside
            if inside:
                self.seen.append(window)
        return self.seen

    def is_shown(self, page):
        return any((window.depth, window.kind, window.text) == (1, "#32770", page) for window in self.seen)

    def place(self, number):
        return next(window for window in self.seen if window.id == number and window.kind in ("Button", "Edit", "SysTabControl32"))

    def text(self, number):
        self.look()
        return self.place(number).text

    def press(self, *numbers):
        for number in numbers:
            click_in(self.place(number))

    def can_apply(self):
        self.look()
        return bool(self.place(APPLY).enabled)

    def apply(self):
        self.press(APPLY)
        wait_for(lambda: not self.can_apply())

    def leave(self, number):
        self.press(number)
        self.wait_until_gone()

    def wait_until_gone(self):
        wait_for(lambda: not self.look())

    def show(self, page):
        """Clicks the page's tab: two rows of three, the row of the page shown below."""
        row, column = divmod(PAGES.index(page), 3)
        below = row == PAGES.index(self.page) // 3
        click_in(self.place(TABS), (50, 160, 280)[column], 27 if below else 9)
        self.page = page
        wait_for(lambda: self.look() and self.is_shown(page))

    def usable(self):
        """The controls of the page shown that can be used, without frames and texts."""
        return {window.id for window in self.seen
                if window.depth == 2 and window.kind in ("Button", "Edit") and window.enabled and window.id > 0}

    def type_into(self, number, text):
        click_in(self.place(number), 8)
        xdotool("key", "End", "shift+Home")
        xdotool("type", text)
        wait_for(lambda: self.text(number) == text, 20)


def stored(section):
    """The keys of a section of quorvex.ini."""
    found, values = False, {}
    for line in CONFIG.read_text().splitlines():
        if line.startswith("["):
            found = line == f"[{section}]"
        elif found and "=" in line:
            key, value = line.split("=", 1)
            values[key] = value
    return values


class Setup(unittest.TestCase):
    def setUp(self):
        CONFIG.write_bytes(START)
        self.addCleanup(CONFIG.chmod, stat.S_IREAD | stat.S_IWRITE)
        drive("card", "off")
        self.remote = Remote()
        self.addCleanup(drive, "card", "off")
        self.addCleanup(self.remote.stop)

    def start(self):
        self.remote.start()
        self.remote.sees_text("ver 04.09.1999")

    def open_sheet(self, page):
        self.remote.click(SETUP)
        sheet = Sheet(page)
        self.assertFalse(sheet.place(APPLY).enabled)
        return sheet

    def open_card(self):
        drive("card", "on")
        self.remote.click(MEDIA_SELECT)
        wait_for(lambda: any(window.kind == "#32768" for window in windows()))
        xdotool("key", "--delay", 200, "Down", "Right", "Return")
        wait_for(video_frame, 20)
        wait_for(lambda: remote_control("state")["device"] == "tv")

    def walk(self, sheet, tv=(), capture=(), cd=False):
        """Every page, and what can be used on it."""
        usable = {"General": {1419, 1524, 1525}, "Media Files": set(), "TV": set(tv), "Capture": set(capture),
                  "DVD": {1400, 1401, 1402}, "CD": {1190, 1201, 1106, 1107} | ({1087} if cd else set())}
        for page in PAGES:
            sheet.show(page)
            self.assertEqual(sheet.usable(), usable[page], page)
        self.assertFalse(sheet.place(APPLY).enabled, "looking changes nothing")

    def test_without_a_device(self):
        self.start()
        before = CONFIG.read_bytes()
        sheet = self.open_sheet("General")
        self.assertLessEqual(sheet.seen[0].bottom, 1024)
        self.walk(sheet)
        sheet.show("DVD")
        sheet.press(1400, 1402)
        self.assertTrue(sheet.can_apply())
        sheet.leave(CANCEL)
        self.assertEqual(CONFIG.read_bytes(), before)

        sheet = self.open_sheet("General")
        xdotool("key", "space", "Tab", "space")  # the first box has the focus
        wait_for(sheet.can_apply)
        sheet.press(HELP)
        sheet.show("DVD")
        sheet.press(1400, 1402)
        sheet.apply()
        self.assertEqual(stored("DVD"), {"ClosedCaption": "1", "CCOpaque": "1"})
        self.assertEqual(stored("QUORVEX"), {"AutoStartDevice": "0"}, "the shell's options are written at the end")
        sheet.press(1401)
        xdotool("key", "Return")
        sheet.wait_until_gone()
        self.assertEqual(stored("DVD"), {"ClosedCaption": "1", "CCOpaque": "0"})
        self.remote.click(POWER)
        self.assertEqual(self.remote.ended(20), 0)
        self.assertEqual(stored("QUORVEX"), {"AutoStartDevice": "1", "LastDevice": "0", "DisableAPM": "1", "DisableScreenSaver": "0"})
        self.assertNotIn("[CD]", CONFIG.read_text(), "that page was not shown again")

        # They hold after a restart.
        before = CONFIG.read_bytes()
        self.start()
        sheet = self.open_sheet("General")
        sheet.show("DVD")
        sheet.leave(OK)
        self.remote.click(POWER)
        self.assertEqual(self.remote.ended(20), 0)
        self.assertEqual(CONFIG.read_bytes(), before)

    def test_with_a_card_with_a_tuner(self):
        self.start()
        self.open_card()
        before = CONFIG.read_bytes()
        sheet = self.open_sheet("TV")
        self.walk(sheet, TUNER | CAPTIONS, CAPTURE | {1404, 1405, 1406, 1090})
        sheet.leave(CANCEL)
        self.assertEqual(CONFIG.read_bytes(), before)

        sheet = self.open_sheet("TV")
        sheet.press(1109, 1523)
        sheet.show("Capture")
        sheet.press(1408, 1419, 1413, 1417)
        wait_for(lambda: sheet.look() and 1090 not in sheet.usable())
        sheet.type_into(1412, "25")
        sheet.type_into(1415, "90")
        xdotool("key", "Up")
        wait_for(lambda: sheet.text(1415) == "91")
        sheet.apply()
        sheet.type_into(1415, "7")
        sheet.type_into(1412, "letters")
        sheet.press(APPLY)
        wait_for(lambda: "Error" in dialogs())
        xdotool("key", "Return")
        wait_for(lambda: "Error" not in dialogs())
        sheet.type_into(1412, "9" * 32)
        sheet.leave(CANCEL)
        remote_control("key", "close")
        wait_for(lambda: remote_control("state")["device"] == "none")
        self.assertEqual(stored("TV")["TunerInputType"] + stored("TV")["CCOpaque"], "00")
        wanted = {"CaptureAudio": "0", "PromptToSave": "1", "FrameRate": "400000", "UseFrameRate": "1", "EnableTimeLimit": "1",
                  "TimeLimit": "91", "MasterStream": "1"}
        self.assertEqual(stored("CAPTURE"), stored("CAPTURE") | wanted)

    def test_with_a_disc_that_plays(self):
        drive("eject")
        drive("close")
        drive("insert", make_disc(self.remote.folder, [900, 900, 900]))
        self.start()
        remote_control("key", "cd")
        wait_for(lambda: drive("status")["mode"] == "playing")
        sheet = self.open_sheet("CD")
        self.walk(sheet, cd=True)
        xdotool("key", "alt+t")
        wait_for(sheet.can_apply)
        sheet.apply()
        self.assertEqual(stored("CD"), {"AutoPlay": "1", "StopOnExit": "1", "UsePlayList": "0"})

        # A store that becomes read-only: the choice holds for this run.
        CONFIG.chmod(stat.S_IREAD)
        sheet.press(1107)
        sheet.apply()
        self.remote_says("Cannot write quorvex.ini")
        sheet.leave(OK)
        self.assertEqual(stored("CD")["UsePlayList"], "0")
        sheet = self.open_sheet("CD")
        CONFIG.chmod(stat.S_IREAD | stat.S_IWRITE)
        sheet.leave(OK)
        self.assertEqual(stored("CD")["UsePlayList"], "1")
        drive("eject")

    @staticmethod
    def remote_says(text):
        wait_for(lambda: remote_control("state")["title"] == text)

    def test_with_files_and_a_dvd(self):
        song = self.remote.folder / "song.mp3"
        subprocess.run(["ffmpeg", "-v", "error", "-f", "lavfi", "-i", "sine=440:duration=300", song], check=True)
        self.start()
        remote_control("open", song)
        wait_for(lambda: remote_control("state")["device"] == "file")
        sheet = self.open_sheet("Media Files")
        self.walk(sheet)
        sheet.show("Media Files")
        sheet.leave(OK)
        self.assertEqual(stored("MEDIA FILE"), {"AutoPlay": "1"})
        drive("insert", TESTS / "discs" / "captions")
        remote_control("key", "dvd")
        wait_for(lambda: remote_control("state")["device"] == "dvd", 20)
        sheet = self.open_sheet("DVD")
        self.walk(sheet)
        sheet.show("DVD")
        sheet.press(1402)
        sheet.leave(OK)
        self.assertEqual(stored("DVD"), {"ClosedCaption": "0", "CCOpaque": "1"})
        remote_control("key", "close")
        drive("eject")


if __name__ == "__main__":
    unittest.main(verbosity=2)
