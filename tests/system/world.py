"""What the user of the model has at hand: files, disc images and cards, good and bad ones; and what is known of the drive."""

import time

from remote import TESTS, drive, make_disc

FAULTS = (("fail-open", 2), ("fail-play", 0), ("not-ready", 3), ("speed", 100), ("speed", 800), ("speed", 5000))
CARD_FAULTS = ("refuse-input", "refuse-route", "refuse-format", "slow")


def windows_path(path):
    return "Z:" + str(path).replace("/", "\\")


class World:
    """What the user has at hand: files, discs, cards; and what lies in the drive."""

    def __init__(self, folder):
        media = [TESTS / "media" / name for name in ("mpeg1_mp2.mpg", "mpeg4_mp3.avi", "h264_aac.mp4", "sound.mp3", "ramp.wav", "picture_only.avi")]
        damaged, nothing = folder / "damaged.avi", folder / "nothing.m3u"
        damaged.write_bytes(b"RIFF" + bytes(2000))
        nothing.write_bytes(b"; nothing\r\n")
        songs = folder / "songs.m3u"
        songs.write_text("\r\n".join(windows_path(path) for path in media * 3))
        self.playable = [windows_path(path) for path in (*media, songs)]
        self.files = [*self.playable * 2, *(windows_path(path) for path in (damaged, nothing, folder / "missing.mpg"))]
        self.capture_file = folder / "tape.avi"
        data = folder / "data.cue"
        make_disc(folder, [5], "data")
        data.write_text(data.read_text().replace("AUDIO", "MODE1/2352"))
        lengths = {"short": [4, 3, 5], "one": [6], "long": [40, 200, 180, 7], "many": [4] * 30}
        self.discs = {make_disc(folder, seconds, name): len(seconds) for name, seconds in lengths.items()}
        self.discs.update({data: None, TESTS / "discs" / "chapters.iso": None, TESTS / "discs" / "menus": None, TESTS / "discs" / "jumps": None})
        self.tracks = None  # of the audio disc in the closed drive
        self.changed = 0.0  # when the drive was last worked
        self.damaged = False  # the drive misbehaves

    def tracks_for_sure(self):
        return None if self.damaged or time.monotonic() < self.changed + 4 else self.tracks

    def work_drive(self, *words):
        if words[0] == "insert":
            self.tracks = self.discs[words[1]]
        elif words[0] in ("eject", "close"):
            self.tracks = None  # the tray may be worked by the panel too: what is in it is not followed
        elif words[0] != "speed":
            self.damaged = True
        self.changed = time.monotonic()
        drive(*words)
