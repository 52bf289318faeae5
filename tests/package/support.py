"""What the tests of the packages share."""

import os
import subprocess
import sys
import time
import wave
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "packaging"))
sys.dont_write_bytecode = True

# Their virtual screen and sound have a name of their own.
ENVIRONMENT = os.environ | {"QUORVEX_ENV": "package", "QUORVEX_VIRTUAL": "1"}


def wait_for(what, limit=300):
    """Waits until what() answers something true and returns that."""
    end = time.monotonic() + limit
    while not (answer := what()):
        if time.monotonic() > end:
            raise AssertionError(f"not within {limit} s")
        time.sleep(0.5)
    return answer


def environment():
    """The virtual screen and sound, started; the variables that lead there."""
    script = f"source {ROOT}/tools/wine/environment.sh; choose_display_and_sound; env -0"
    run = subprocess.run(["bash", "-c", script], capture_output=True, check=True, env=ENVIRONMENT)
    return dict(line.split("=", 1) for line in run.stdout.decode().split("\0") if line)


def end_environment():
    subprocess.run([ROOT / "tools" / "in-wine", "--stop"], env=ENVIRONMENT)


def make_song(path):
    """Writes ten minutes of silence."""
    with wave.open(str(path), "wb") as sound:
        sound.setparams((1, 2, 8000, 0, "NONE", ""))
        sound.writeframes(bytes(2 * 8000 * 600))
    return path
