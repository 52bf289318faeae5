"""What the user of the model has at hand: files and disc images, good and bad ones, and the drive."""

from remote import TESTS, drive, make_disc, windows_path

FAULTS = (("fail-open", 2), ("fail-play",), ("not-ready", 3), ("speed", 100), ("speed", 800), ("speed", 5000))
CARD_FAULTS = ("refuse-input", "refuse-route", "refuse-format", "slow")


class World:
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
        self.tracks = None  # of the disc that was put in last; none of one without sound

    def work_drive(self, *words):
        if words[0] == "insert":
            self.tracks = self.discs[words[1]]
        drive(*words)

    @staticmethod
    def mend():
        """Takes the faults of drive and cards away again."""
        for knob in ("fail-open", "fail-play", "not-ready"):
            drive(knob, 0)
        for fault in CARD_FAULTS:
            drive("card", "fault", fault, 0)

    def tracks_unlike(self, items):
        """How many tracks the audio disc in the closed drive has when a CD player tells another number; none when it is right."""
        if items == self.tracks:
            return None
        told = drive("status")
        return int(told["tracks"]) if told["tray"] == "closed" and told["disc"] == "audio" and int(told["tracks"]) != items else None
