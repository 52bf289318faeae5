"""What the packages hold, and the ways of writing it that come out the same every time."""

import gzip
import os
import re
import shutil
import subprocess
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
BIN = ROOT / "build" / "win" / "bin"
ART = ROOT / "build" / "win" / "art"
MANUAL = ROOT / "build" / "win" / "manual.html"
STRIP = "x86_64-w64-mingw32-strip"

PROGRAMS = ("quorvex.exe", "qvremote.exe", "qvdrive.exe", "qvcd.dll", "qvmedia.dll", "qvdvd.dll", "qvsound.dll", "qvtv.dll")


def version():
    """The version that CMakeLists.txt names."""
    return re.search(r"^project\(Quorvex VERSION ([0-9.]+)", (ROOT / "CMakeLists.txt").read_text(), re.MULTILINE)[1]


def source_time():
    """Seconds since 1970: the time that everything in a package carries."""
    return int(os.environ["SOURCE_DATE_EPOCH"])


def packages(*lists):
    """The names in these lists of tools/packages.sh, each once."""
    words = " ".join(f'"${{{name}[@]}}"' for name in lists)
    script = f'set -eu; source "{ROOT}/tools/packages.sh"; printf "%s\\n" {words}'
    return sorted(set(subprocess.run(["bash", "-c", script], check=True, capture_output=True, text=True).stdout.split()))


def put(target, content, mode=0o644):
    """Writes a file of a package; `content` is text or bytes."""
    target.parent.mkdir(parents=True, exist_ok=True)
    target.write_bytes(content.encode() if isinstance(content, str) else content)
    target.chmod(mode)


def put_filled(target, source, mode=0o644, **values):
    """Writes a file made from one that has @NAME@ where a value belongs."""
    text = source.read_text()
    for name, value in values.items():
        text = text.replace(f"@{name}@", value)
    put(target, text, mode)


def put_zipped(target, content):
    """Writes a file packed by gzip, without name and time in it."""
    put(target, gzip.compress(content if isinstance(content, bytes) else content.encode(), 9, mtime=0))


def put_programs(folder):
    """Copies the programs, without symbols."""
    folder.mkdir(parents=True, exist_ok=True)
    for name in PROGRAMS:
        subprocess.run([STRIP, "-p", "--strip-all", "--remove-section=.gnu_debuglink", "-o", folder / name, BIN / name], check=True)
        (folder / name).chmod(0o644)


def fresh(folder):
    """An empty folder in the place of what was there."""
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    return folder


def set_times(folder):
    """Gives a folder and all that it holds the time of the source."""
    for path in [folder, *folder.rglob("*")]:
        os.utime(path, (source_time(), source_time()), follow_symlinks=False)
