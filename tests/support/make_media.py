#!/usr/bin/python3
"""make_media.py FOLDER  Makes the tests' media files with Debian's ffmpeg.

Pictures: 25 a second, 192x144, 100 of them; the lower half of picture n shows n in binary: stripe i (16 pixels wide, from the left) is
bright when bit i is set. The upper half is noise, so that coded pictures have a usual size.
Sound: a tone of 0.2 s at the beginning of every second, silence between.
"ramp" files: lossless sound whose left sample number k is k modulo 20000, minus 10000.
"""
import array
import math
import random
import subprocess
import sys
from pathlib import Path

FRAMES, WIDTH, HEIGHT, PER_SECOND, RATE = 100, 192, 144, 25, 44100

# name: what ffmpeg is told of the streams and the container. MPEG-1 and -2 and MPEG-4 have B pictures and a key picture every 2 s.
X264 = "-c:v libx264 -preset veryfast -g 50 -bf 2 -pix_fmt yuv420p"
FILES = {
    "mpeg4_mp3.avi": "-c:v mpeg4 -g 50 -q:v 8 -c:a libmp3lame -avoid_negative_ts disabled",
    "mpeg1_mp2.mpg": "-c:v mpeg1video -g 12 -bf 2 -q:v 8 -c:a mp2 -f mpeg",
    "mpeg2_ac3.vob": "-c:v mpeg2video -g 50 -bf 2 -q:v 8 -c:a ac3 -f vob",
    "mpeg2_mp2.ts": "-c:v mpeg2video -g 50 -bf 2 -q:v 8 -c:a mp2 -f mpegts",
    "h264_aac.ts": f"{X264} -c:a aac -f mpegts",
    "h264_aac.mp4": f"{X264} -c:a aac",
    "mjpeg_pcm.mov": "-c:v mjpeg -pix_fmt yuvj420p -c:a pcm_s16be",
    "h264_vorbis.mkv": f"{X264} -c:a libvorbis",
    "theora_vorbis.ogv": "-c:v libtheora -g 50 -q:v 6 -c:a libvorbis",
    "picture_only.avi": "-c:v mpeg4 -g 50 -q:v 8 -an",
    "sound.mp3": "-vn -c:a libmp3lame",
    "sound.ogg": "-vn -c:a libvorbis",
}


def pictures(frames):
    noise = random.Random(1)
    for n in range(frames):
        line = b"".join(bytes([230 if n >> stripe & 1 else 20]) * 16 for stripe in range(WIDTH // 16))
        yield noise.randbytes(WIDTH * HEIGHT // 2) + line * (HEIGHT // 2)


def beeps(samples):
    """Both channels, 16 bits."""
    sound = array.array("h")
    for k in range(samples):
        value = int(20000 * math.sin(2 * math.pi * 1000 * k / RATE)) if k % RATE < RATE // 5 else 0
        sound.extend((value, value))
    return sound.tobytes()


def ramp(samples):
    sound = array.array("h")
    for k in range(samples):
        sound.extend((k % 20000 - 10000, 0))
    return sound.tobytes()


def ffmpeg(*arguments):
    subprocess.run(["ffmpeg", "-nostdin", "-loglevel", "error", "-y", *map(str, arguments)], check=True)


def main():
    folder = Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    raw = {"pictures": b"".join(pictures(FRAMES)), "beeps": beeps(FRAMES * RATE // PER_SECOND), "ramp": ramp(4 * RATE)}
    for name, data in raw.items():
        (folder / f"{name}.raw").write_bytes(data)
    picture = ["-f", "rawvideo", "-pix_fmt", "gray", "-s", f"{WIDTH}x{HEIGHT}", "-r", PER_SECOND, "-i", folder / "pictures.raw"]
    sound = ["-f", "s16le", "-ar", RATE, "-ac", 2, "-i"]
    for name, how in FILES.items():
        ffmpeg(*picture, *sound, folder / "beeps.raw", *how.split(), folder / name)
    # The same with time stamps ten minutes later.
    ffmpeg("-i", folder / "mpeg2_mp2.ts", "-c", "copy", "-output_ts_offset", 600, folder / "later.ts")
    # Four pictures of a second each.
    ffmpeg("-f", "rawvideo", "-pix_fmt", "gray", "-s", f"{WIDTH}x{HEIGHT}", "-r", 1, "-t", 4, "-i", folder / "pictures.raw",
           *"-c:v libx264 -preset veryfast -bf 0 -pix_fmt yuv420p".split(), folder / "slides.mkv")
    for name in ("ramp.wav", "ramp.flac"):
        ffmpeg(*sound, folder / "ramp.raw", folder / name)
    for name in raw:
        (folder / f"{name}.raw").unlink()


main()
