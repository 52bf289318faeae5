"""The packages for Windows: a zip, and an installer made by NSIS from the same files."""

import subprocess
import zipfile
from datetime import datetime, timezone

from contents import ART, MANUAL, ROOT, fresh, put, put_filled, put_programs, set_times, source_time, version
from notices import notices

HERE = ROOT / "packaging" / "windows"


def windows_text(text):
    return text.replace("\n", "\r\n")


def stage_windows(folder):
    """Lays out what a folder with Quorvex on Windows holds."""
    fresh(folder)
    put_programs(folder)
    put_filled(folder / "README.html", HERE / "readme.html", VERSION=version())
    put(folder / "manual.html", MANUAL.read_bytes())
    put(folder / "LICENSE.txt", windows_text((ROOT / "LICENSE").read_text()))
    put(folder / "THIRD-PARTY.txt", windows_text(notices()))
    set_times(folder)


def write_zip(folder, target):
    """Packs a staged folder into a zip whose entries lie in a folder with Quorvex's version."""
    moment = datetime.fromtimestamp(source_time(), timezone.utc).timetuple()[:6]
    with zipfile.ZipFile(target, "w") as packed:
        for path in sorted(folder.iterdir()):
            entry = zipfile.ZipInfo(f"Quorvex-{version()}/{path.name}", moment)
            entry.external_attr = 0o100644 << 16
            packed.writestr(entry, path.read_bytes(), zipfile.ZIP_DEFLATED, 9)


def write_installer(folder, target, *defines):
    """Makes the installer of a staged folder. `defines`: more of the script's names, as NAME=VALUE; the last VERSION counts."""
    values = {"VERSION": version(), "FILES": folder, "ICON": ART / "quorvex.ico", "TARGET": target}
    values |= dict(define.split("=", 1) for define in defines)
    made = subprocess.run(["makensis", "-V2", "-WX", "-NOCD", *(f"-D{name}={value}" for name, value in values.items()), HERE / "installer.nsi"],
                          capture_output=True, text=True)
    if made.returncode:
        raise SystemExit(f"makensis: {made.stdout}{made.stderr}")
