"""The notation of tracks.py, read into timed notes.

A voice is a line of tokens, bar by bar:

    C#5/8       a note: name, octave (C4 is middle C), length; the length
                (4 a quarter, 8. a dotted eighth) stays until changed
    E4+G4+C5    a chord
    C5/4~ C5/8  a tie
    r  R  R*4   a rest, a whole bar of rest, four bars of it
    {A5,B5}C6   grace notes, stolen from the time before the note
    E4+G4+C5%   a chord rolled from below
    !p  !mf<    dynamics; with < or > the loudness glides to the next mark
    |           a bar line; a bar of the wrong length is an error
"""

import random
import re
from bisect import bisect_right
from dataclasses import dataclass
from fractions import Fraction

TICKS = 480  # per quarter note
GRACE, ROLL = TICKS // 8, TICKS // 14
DYNAMICS = {"pp": 40, "p": 52, "mp": 64, "mf": 78, "f": 92, "ff": 106}
STEPS = {"C": 0, "D": 2, "E": 4, "F": 5, "G": 7, "A": 9, "B": 11}

PITCH = r"[A-G][#b]?\d"
NOTE = re.compile(
    rf"(?:\{{(?P<grace>{PITCH}(?:,{PITCH})*)\}})?(?P<chord>r|{PITCH}(?:\+{PITCH})*)"
    r"(?P<roll>%?)(?:/(?P<length>\d+\.?))?(?P<tie>~?)"
)
DYNAMIC = re.compile(rf"!(?P<name>{'|'.join(DYNAMICS)})(?P<glide>[<>]?)")
BARS_OF_REST = re.compile(r"R(?:\*(?P<count>\d+))?")


class ScoreError(Exception):
    """The notation of a track cannot be read."""


@dataclass
class Note:
    start: int  # ticks
    length: int
    pitch: int
    velocity: int = 0


@dataclass
class Part:
    """One instrument: its voices share a MIDI channel."""

    program: int  # General MIDI, counted from 0
    voices: list[str]
    volume: int = 100
    pan: int = 64
    reverb: int = 50
    pedal: str = ""  # how long the sustain pedal is held between changes: "2."


@dataclass
class Piece:
    title: str
    performer: str
    meter: str  # "6/8"
    beat: str  # the note value the tempo counts: "4", "4."
    tempo: str  # "1:60 20:60 22:48": bar and beats a minute, gliding between
    parts: list[Part]
    pickup: str = ""  # length of an incomplete first bar
    pause: float = 0.0  # seconds of silence on the disc before the track
    ring: float = 3.0  # seconds the last chord may sound on
    fade: float = 1.5  # seconds of fade at the very end

    def bar_length(self) -> int:
        count, unit = self.meter.split("/")
        return int(count) * ticks(unit)

    def bar_start(self, number: int) -> int:
        """The tick at which a bar begins; a pickup is bar 0."""
        first = ticks(self.pickup) if self.pickup else 0
        return 0 if number < 1 else first + (number - 1) * self.bar_length()


def ticks(length: str) -> int:
    value = Fraction(4 * TICKS, int(length.rstrip(".")))
    return int(value * 3 / 2 if length.endswith(".") else value)


def pitch_number(name: str) -> int:
    return 12 * (int(name[-1]) + 1) + STEPS[name[0]] + name.count("#") - name.count("b")


class Voice:
    """Reads one voice; bar lines are checked as they come."""

    def __init__(self, piece: Piece, text: str):
        self.piece, self.text = piece, text
        self.now, self.length, self.bar = 0, TICKS, 0 if piece.pickup else 1
        self.notes: list[Note] = []
        self.tied: list[Note] = []
        self.marks: list[tuple[int, int, bool]] = []  # tick, loudness, glides

    def read(self) -> list[Note]:
        for token in self.text.split():
            self.read_token(token)
        self.end_bar()
        self.end_ties()
        for note in self.notes:
            note.velocity = self.loudness(note)
        return self.notes

    def read_token(self, token: str) -> None:
        if token == "|":
            self.end_bar()
        elif found := BARS_OF_REST.fullmatch(token):
            self.end_ties()
            self.bar += int(found["count"] or 1) - 1
            self.now = self.piece.bar_start(self.bar + 1)
        elif found := DYNAMIC.fullmatch(token):
            self.marks.append((self.now, DYNAMICS[found["name"]], bool(found["glide"])))
        elif found := NOTE.fullmatch(token):
            self.read_note(found)
        else:
            self.fail(f"cannot read {token!r}")

    def read_note(self, found: re.Match) -> None:
        if found["length"]:
            self.length = ticks(found["length"])
        if found["chord"] == "r":
            self.end_ties()
        else:
            self.add_grace(found["grace"].split(",") if found["grace"] else [])
            self.add_chord(found["chord"].split("+"), bool(found["roll"]), bool(found["tie"]))
        self.now += self.length

    def add_grace(self, names: list[str]) -> None:
        start = max(0, self.now - len(names) * GRACE)
        for place, name in enumerate(names):
            self.notes.append(Note(start + place * GRACE, GRACE, pitch_number(name)))

    def add_chord(self, names: list[str], rolled: bool, ties_on: bool) -> None:
        held = {note.pitch: note for note in self.tied}
        if held and held.keys() != {pitch_number(name) for name in names}:
            self.fail("a tie leads to another pitch")
        chord = []
        for place, name in enumerate(names):
            if note := held.get(pitch_number(name)):
                note.length += self.length
            else:
                delay = place * ROLL if rolled else 0
                note = Note(self.now + delay, self.length - delay, pitch_number(name))
                self.notes.append(note)
            chord.append(note)
        self.tied = chord if ties_on else []

    def end_ties(self) -> None:
        if self.tied:
            self.fail("a tie leads nowhere")

    def end_bar(self) -> None:
        if self.now != self.piece.bar_start(self.bar + 1):
            self.fail("the bar has the wrong length")
        self.bar += 1

    def loudness(self, note: Note) -> int:
        level = self.dynamic_at(note.start)
        into_bar = (note.start - self.piece.bar_start(1)) % self.piece.bar_length()
        if into_bar == 0:
            return level + 5  # lean a little on the first beat, less on the others
        return level - 3 if into_bar % ticks(self.piece.beat) else level

    def dynamic_at(self, tick: int) -> int:
        place = bisect_right(self.marks, tick, key=lambda mark: mark[0])
        before, after = self.marks[:place], self.marks[place:]
        start, level, glides = before[-1] if before else (0, DYNAMICS["mf"], False)
        if not (glides and after):
            return level
        end, target, _ = after[0]
        return level + (target - level) * (tick - start) // (end - start)

    def fail(self, what: str) -> None:
        raise ScoreError(f"{self.piece.title}, bar {self.bar}: {what}: {self.text.strip()[:40]}...")


def notes_of(piece: Piece, part: Part) -> list[Note]:
    """All notes of a part, played with a light, repeatable unevenness."""
    chance = random.Random(f"{piece.title} {part.program} {part.pan}")
    notes = [note for text in part.voices for note in Voice(piece, text).read()]
    for note in notes:
        note.start = max(0, note.start + chance.randint(-4, 4))
        note.velocity = max(1, min(127, note.velocity + chance.randint(-3, 3)))
    notes.sort(key=lambda note: (note.start, note.pitch))
    # A key struck again ends its earlier note, or that one's end would cut the new one.
    last: dict[int, Note] = {}
    for note in notes:
        if before := last.get(note.pitch):
            before.length = max(1, min(before.length, note.start - before.start - 2))
        last[note.pitch] = note
    return notes


def tempo_map(piece: Piece) -> list[tuple[int, float]]:
    """(tick, quarter notes a minute), one entry per eighth where the tempo glides."""
    quarters = ticks(piece.beat) / TICKS
    pairs = [point.split(":") for point in piece.tempo.split()]
    points = [(piece.bar_start(int(bar)), float(rate) * quarters) for bar, rate in pairs]
    changes = [(0, points[0][1])]
    for (start, first), (end, last) in zip(points, points[1:]):
        for tick in range(start, end, TICKS // 2):
            changes.append((tick, first + (last - first) * (tick - start) / (end - start)))
    return changes + [points[-1]]
