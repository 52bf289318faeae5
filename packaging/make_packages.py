#!/usr/bin/python3
"""make_packages.py FOLDER: makes the packages of what is built in build/win. Called by tools/package."""

import os
import sys
import tempfile
from pathlib import Path

sys.dont_write_bytecode = True

from contents import version  # noqa: E402
from debian_package import stage_debian, write_deb  # noqa: E402
from windows_package import stage_windows, write_installer, write_zip  # noqa: E402


def make_packages(target):
    """Makes every package in a folder; returns their paths."""
    target.mkdir(parents=True, exist_ok=True)
    made = [target / f"Quorvex-{version()}-win64.zip", target / f"Quorvex-{version()}-setup.exe", target / f"quorvex_{version()}_amd64.deb"]
    with tempfile.TemporaryDirectory(prefix="quorvex-package-") as folder:
        windows, debian = Path(folder) / "windows", Path(folder) / "debian"
        stage_windows(windows)
        write_zip(windows, made[0])
        write_installer(windows, made[1])
        stage_debian(debian)
        write_deb(debian, made[2])
    return made


if __name__ == "__main__":
    os.umask(0o022)
    for package in make_packages(Path(sys.argv[1]).absolute()):
        print(package)
