#!/usr/bin/python3
"""Make the demo disc: OUTDIR/demo.bin (raw CD audio), OUTDIR/demo.cue, and OUTDIR/demo.abm, a CD information store with its titles.

Needs fluidsynth and the sound font of the package timgm6mb-soundfont.
"""

import argparse
import math
import operator
import os
import shutil
import subprocess
import sys
import tempfile
from array import array
from concurrent.futures import BrokenExecutor, ProcessPoolExecutor
from itertools import repeat
from pathlib import Path

sys.dont_write_bytecode = True  # leave no __pycache__ beside the sources

from midi import midi_file  # noqa: E402
from score import Piece, ScoreError  # noqa: E402
from tracks import disc  # noqa: E402

TITLE, PERFORMER = "Quorvex Demo Disc", "Various Composers"
SOUND_FONT = "/usr/share/sounds/sf2/TimGM6mb.sf2"
RATE, CHANNELS = 44100, 2
SECTOR, SECTORS_PER_SECOND = 2352, 75
RENDER_TIMEOUT = 120  # seconds

LOUDNESS = 10 ** (-21 / 20)  # RMS of the sounding part of each track, of full scale
PEAK = 10 ** (-1.5 / 20)
SILENCE = 10 ** (-66 / 20)  # relative to the loudest sample: the ring ends here
INAUDIBLE = 0.001  # the peak of a rendering without instruments
LEAD_IN, FADE_IN, BLOCK = 0.15, 0.002, 0.4  # seconds


class DiscError(Exception):
    """The disc cannot be made; the message says why."""


def frames(seconds: float) -> int:
    return round(seconds * RATE) * CHANNELS


def render(piece: Piece, sound_font: str, work: Path) -> array:
    """Play a piece into samples, as floats: its final level is not known yet."""
    score, sound = work / "score.mid", work / "sound.raw"
    score.write_bytes(midi_file(piece))
    command = ["fluidsynth", "-n", "-i", "-q", "-C", "0", "-g", "0.3", "-r", str(RATE), "-f", "/dev/null"]
    for setting in ("room-size=0.55", "damp=0.3", "width=0.8", "level=0.7"):
        command += ["-o", "synth.reverb." + setting]
    command += ["-T", "raw", "-O", "float", "-E", "cpu", "-F", str(sound), sound_font, str(score)]
    try:
        done = subprocess.run(command, capture_output=True, text=True, timeout=RENDER_TIMEOUT)
    except subprocess.TimeoutExpired:
        raise DiscError(f"fluidsynth took more than {RENDER_TIMEOUT} s for {piece.title}") from None
    samples = array("f")
    if sound.exists():
        samples.frombytes(sound.read_bytes())
    # A sound font it cannot read makes fluidsynth complain, take another one and report success.
    complaints = [line for line in done.stderr.splitlines() if "error" in line.lower()]
    if done.returncode and not complaints:
        complaints = [f"exit code {done.returncode}"]
    if not complaints and (not samples or peak(samples) < INAUDIBLE):
        complaints = ["no sound came out"]
    if complaints:
        raise DiscError(f"fluidsynth could not play {piece.title}: {complaints[0]}")
    return samples


def peak(samples: array) -> float:
    return max(max(samples), -min(samples))


def trim(samples: array, fade: float) -> array:
    """Cut the inaudible end off and fade what is left, so that no track ends in a click."""
    floor, step = SILENCE * peak(samples), frames(0.05)
    end = len(samples)
    while end > step and peak(samples[end - step : end]) < floor:
        end -= step
    samples = samples[:end]
    shape(samples, 0, frames(FADE_IN), rising=True)
    shape(samples, end - frames(fade), end, rising=False)
    return samples


def shape(samples: array, start: int, end: int, rising: bool) -> None:
    """Fade a range in place along half a cosine, both channels alike."""
    for place in range(start, end):
        way = (place - start) // CHANNELS * CHANNELS / (end - start)
        samples[place] *= 0.5 - 0.5 * math.cos(math.pi * (way if rising else 1 - way))


def loudness(samples: array) -> float:
    """RMS of the blocks that count for the ear: rests and the dying end would lower it."""
    step = frames(BLOCK)
    blocks = [samples[place : place + step] for place in range(0, len(samples), step)]
    powers = [sum(map(operator.mul, block, block)) / len(block) for block in blocks]
    heard = [power for power in powers if power > max(powers) / 100]
    return math.sqrt(sum(heard) / len(heard))


def to_cd(samples: array) -> bytes:
    """16-bit samples at the disc's level, in whole sectors."""
    gain = 32767 * min(LOUDNESS / loudness(samples), PEAK / peak(samples))
    cd = array("h", [round(sample * gain) for sample in samples])
    if sys.byteorder == "big":
        cd.byteswap()
    sound = bytes(2 * frames(LEAD_IN)) + cd.tobytes()
    return sound + bytes(-len(sound) % SECTOR)


def make_track(piece: Piece, sound_font: str, work: Path) -> Path:
    folder = Path(tempfile.mkdtemp(dir=work))
    track = folder / "track.bin"
    track.write_bytes(to_cd(trim(render(piece, sound_font, folder), piece.fade)))
    return track


def disc_time(sectors: int) -> str:
    seconds, rest = divmod(sectors, SECTORS_PER_SECOND)
    return f"{seconds // 60:02}:{seconds % 60:02}:{rest:02}"


def store(pieces: list[Piece], starts: list[int], end: int) -> str:
    """The CD information store that knows this disc and no other (docs/stores.md)."""
    lengths = [(after - start) // SECTORS_PER_SECOND for start, after in zip(starts, [*starts[1:], end])]
    identifier = f"{sum(number * length for number, length in enumerate(lengths, 1)):08X}"
    lines = ["[CD List]", "Number of CDs=1", f"1={identifier}", f"[{identifier}]", f"Title={TITLE}", f"Artist={PERFORMER}"]
    lines += [f"{number}={piece.title}" for number, piece in enumerate(pieces, 1)]
    lines.append("Playlist=" + "".join(f"{number} " for number in range(1, len(pieces) + 1)))
    return "\r\n".join(lines) + "\r\n"


def assemble(pieces: list[Piece], tracks: list[Path], image: Path) -> tuple[str, str]:
    """Put the tracks one after the other into the image; returns the CUE sheet and the store."""
    lines = [f'PERFORMER "{PERFORMER}"', f'TITLE "{TITLE}"', 'FILE "demo.bin" BINARY']
    sectors = 0
    starts = []
    with image.open("wb") as out:
        for number, (piece, track) in enumerate(zip(pieces, tracks), 1):
            lines.append(f"  TRACK {number:02} AUDIO")
            lines.append(f'    TITLE "{piece.title}"')
            lines.append(f'    PERFORMER "{piece.performer}"')
            pause = round(piece.pause * SECTORS_PER_SECOND)
            if pause:
                lines.append(f"    INDEX 00 {disc_time(sectors)}")
                sectors += out.write(bytes(pause * SECTOR)) // SECTOR
            lines.append(f"    INDEX 01 {disc_time(sectors)}")
            starts.append(sectors)
            sectors += out.write(track.read_bytes()) // SECTOR
    return "\n".join(lines) + "\n", store(pieces, starts, sectors)


def make_disc(target: Path, sound_font: str) -> None:
    if not shutil.which("fluidsynth"):
        raise DiscError("fluidsynth is not installed")
    if not os.access(sound_font, os.R_OK):
        raise DiscError(f"the sound font {sound_font} is missing (package timgm6mb-soundfont)")
    target.mkdir(parents=True, exist_ok=True)
    # Worked on inside the target, so that the finished files are only renamed.
    with tempfile.TemporaryDirectory(prefix=".demo-", dir=target) as name:
        work = Path(name)
        pieces = disc()
        with ProcessPoolExecutor() as pool:
            tracks = list(pool.map(make_track, pieces, repeat(sound_font), repeat(work)))
        sheet, titles = assemble(pieces, tracks, work / "demo.bin")
        (work / "demo.cue").write_text(sheet, encoding="ascii")
        (work / "demo.abm").write_text(titles, encoding="ascii", newline="")
        # The sheet goes first and comes last: it never describes another image.
        (target / "demo.cue").unlink(missing_ok=True)
        for file in ("demo.bin", "demo.abm", "demo.cue"):
            os.replace(work / file, target / file)


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("outdir", type=Path)
    parser.add_argument("--sound-font", default=SOUND_FONT)
    options = parser.parse_args()
    try:
        make_disc(options.outdir, options.sound_font)
    except (DiscError, ScoreError, OSError, BrokenExecutor) as problem:
        print(f"make_demo_disc: {problem}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
