"""A busy session of the program in which every store is written, rehearsed once and then killed anywhere in it.

The rehearsal notes what the stores hold after each operation, and what else they are seen to hold meanwhile. A killed session begins with the same
stores, so each store must hold what it held in the rehearsal at that operation: the old or the new content, byte for byte. An operation may change a
store in two steps of which nobody saw the first: then all that the old and the new content have in common is there, and no line of neither.
"""

import collections
import os
import signal
import threading
import time

from hand import BM_CLICK, Player
from remote import TESTS, WINDOWS, drive, empty_drive, make_disc, windows_path

STORES = ("quorvex.ini", "cd.abm", "mfiles.abm")
CD, TV, INPUT, UP, DELETE, SETUP, OPEN, CLOSE_DEVICE, POWER = 1017, 1500, 1049, 1058, 1053, 1071, 1002, 1526, 1016
OK, CANCEL, APPLY, TITLE, EDIT_PLAYLIST, AUTO_PLAY, STOP_ON_EXIT, NEW_ALBUM, DELETE_ALBUM, ALBUM_TITLE = 1, 2, 0x3021, 1059, 1087, 1190, 1201, 1087, 1088, 1080
PATIENCE = 20


class Killed(Exception):
    """The program is gone, as was wanted."""


def large_store(count):
    """Of discs, so that writing the store takes a while."""
    titles = "".join(f"{track}=Track {track:02}\r\n" for track in range(1, 21))
    playlist = "".join(f"{track} " for track in range(1, 21))
    discs = "".join(f"[A{disc:07}]\r\nTitle=\r\nArtist=\r\n{titles}Playlist={playlist}\r\n" for disc in range(1, count + 1))
    places = "".join(f"{disc}=A{disc:07}\r\n" for disc in range(1, count + 1))
    return f"[CD List]\r\nNumber of CDs={count}\r\n{places}{discs}"


def is_whole(content, seen):
    """`seen`: what the store held at this operation in the rehearsal."""
    if content in seen:
        return True
    versions = [collections.Counter(version.splitlines(True)) for version in seen]
    lines, kept = collections.Counter(content.splitlines(True)), versions[0].copy()
    for version in versions:
        kept &= version
    return not kept - lines and all(any(line in version for version in versions) for line in lines)


def held():
    """What the stores hold."""
    return {name: (WINDOWS / name).read_bytes() for name in STORES}


class Session(Player):
    def __init__(self):
        super().__init__()
        self.songs = [windows_path(TESTS / "media" / name) for name in ("sound.mp3", "ramp.wav", "sound.ogg")]
        self.discs = [make_disc(self.remote.folder, seconds, f"disc{len(seconds)}") for seconds in ([40, 50], [60, 70, 80])]
        many = "".join(f"Song{number}=Z:\\songs\\{number}.mp3\r\n" for number in range(4000))
        self.first = {"quorvex.ini": f"; kept\r\n[QUORVEX]\r\nAutoStartDevice=0\r\n[Others]\r\n{many}".encode(), "cd.abm": large_store(1000).encode(),
                      "mfiles.abm": f"[Others]\r\n{many}".encode()}
        self.moments = []  # of the rehearsal: how long each operation took and what each store may hold in it
        self.operations = (self.open_songs, self.open_another, self.insert_disc, self.apply_setup, self.name_disc, self.exchange_disc, self.open_dialog,
                           self.new_album, self.second_album, self.delete_album, self.leave_dialog, self.open_card, self.delete_channel, self.next_input,
                           self.close_device, self.end)

    # The operations: each is over when its effect is there

    def until(self, done):
        end = time.monotonic() + PATIENCE
        while not (answer := done()):
            if self.has_ended():
                raise Killed
            if time.monotonic() > end:
                raise AssertionError(f"nothing after {PATIENCE} s: {self.hand.look()} {self.hand.tops()}")
            time.sleep(0.01)
        return answer

    def shows(self, **wanted):
        self.until(lambda: wanted.items() <= self.hand.look().items())

    def dialog(self, caption):
        return self.until(lambda: self.dialogs(caption))[0]

    def button(self, dialog, number):
        self.hand.post(self.control(dialog, number), BM_CLICK)
        self.hand.settle()

    def control(self, dialog, number):
        return self.until(lambda: [control for control in self.hand.inner(dialog) if control.id == number and control.enabled])[0]

    def is_over(self, dialog):
        self.until(lambda: all(window.handle != dialog.handle for window in self.hand.tops()))
        self.hand.settle()  # what follows the dialog is done

    def ask(self, command, caption):
        self.until(lambda: self.hand.press(command)[0] == 1)
        return self.dialog(caption)

    def open_songs(self):
        self.hand("open", *self.songs)
        self.shows(device="file", items="3")

    def open_another(self):
        self.hand("open", self.songs[1])
        self.shows(device="file", items="1")

    def insert_disc(self):
        drive("insert", self.discs[0])
        self.hand.press(CD)
        self.shows(device="cd", items="2", state="playing")

    def apply_setup(self):
        sheet = self.ask(SETUP, "Setup Options")
        self.button(sheet, AUTO_PLAY)
        self.button(sheet, STOP_ON_EXIT)
        self.button(sheet, APPLY)
        self.hand.choose(sheet, OK)
        self.is_over(sheet)

    def name_disc(self):
        sheet = self.ask(SETUP, "Setup Options")
        self.button(sheet, EDIT_PLAYLIST)
        editor = self.dialog("CD Playlist")
        self.hand("type", self.control(editor, TITLE).handle, "Evening music")
        self.hand.choose(editor, OK)
        self.is_over(editor)
        self.hand.choose(sheet, CANCEL)
        self.is_over(sheet)

    def exchange_disc(self):
        drive("insert", self.discs[1])
        self.shows(device="cd", items="3")

    def open_dialog(self):
        self.picker = self.ask(OPEN, "Open")

    def new_album(self, title="Evening"):
        self.button(self.picker, NEW_ALBUM)
        asked = self.dialog("New Playlist")
        self.hand("type", self.control(asked, ALBUM_TITLE).handle, title)
        self.hand.choose(asked, OK)
        self.is_over(asked)

    def second_album(self):
        self.new_album("Party")

    def delete_album(self):
        self.button(self.picker, DELETE_ALBUM)

    def leave_dialog(self):
        self.hand.choose(self.picker, CANCEL)
        self.is_over(self.picker)

    def open_card(self):
        self.hand.press(TV)
        self.shows(device="tv", state="playing")

    def delete_channel(self):
        self.hand.press(UP)
        self.hand.press(DELETE)

    def next_input(self):
        self.hand.press(INPUT)

    def close_device(self):
        self.hand.press(CLOSE_DEVICE)
        self.shows(device="none")

    def end(self):
        self.hand.press(POWER)
        self.until(lambda: self.has_ended() or None)

    # The rehearsal and the killed sessions

    def begin(self):
        """The first stores; a program that runs reads them when it needs them."""
        for name, content in self.first.items():
            (WINDOWS / name).write_bytes(content)

    def rehearse(self):
        empty_drive()
        drive("card", "on")
        self.begin()
        self.start()
        for operation in self.operations:
            seen = {name: {content} for name, content in held().items()}
            over = threading.Event()
            watcher = threading.Thread(target=self.watch, args=(seen, over))
            watcher.start()
            begin = time.monotonic()
            try:
                operation()
            except Killed:
                assert operation == self.end
            finally:
                over.set()
                watcher.join()
            self.moments.append((time.monotonic() - begin, seen))

    @staticmethod
    def watch(seen, over):
        last = False
        while not last:
            last = over.is_set()
            for name, content in held().items():
                seen[name].add(content)

    def kill_in(self, number, chance):
        """Runs the session up to this operation, and kills the program somewhere in it: at a random moment, or while a store is being written."""
        for operation in self.operations[:number]:
            operation()
        took, _ = self.moments[number]
        moment = time.monotonic() + chance.uniform(0, took * 1.1) if chance.random() < 0.4 else None
        killer = threading.Thread(target=self.kill, args=(moment, chance.uniform(0, 0.002), time.monotonic() + took * 3))
        killer.start()
        try:
            self.operations[number]()
        except (Killed, StopIteration, KeyError, AssertionError):
            if not self.has_ended():
                raise
        killer.join()
        self.remote.process.wait(10)

    @staticmethod
    def fresh():
        """The files that stores are being written to, or were when an earlier program was killed: each with its time."""
        found = set()
        for name in STORES:
            try:
                found.add((name, (WINDOWS / f"{name}.new").stat().st_mtime_ns))
            except FileNotFoundError:
                continue
        return found

    def kill(self, moment, later, end):
        before = self.fresh()
        while time.monotonic() < (moment or end) and (moment or self.fresh() <= before):
            pass
        if moment is None:
            time.sleep(later)
        if not self.has_ended():
            os.kill(self.remote.process.pid, signal.SIGKILL)
