"""The package for Debian: Quorvex in Wine, with a command, a menu entry and file associations."""

import hashlib
import io
import subprocess
from datetime import datetime, timezone

from PIL import IcoImagePlugin

from contents import ART, MANUAL, ROOT, fresh, packages, put, put_filled, put_programs, put_zipped, set_times, source_time, version
from notices import notices

HERE = ROOT / "packaging" / "debian"
NAMES = ("qvdrive", "qvremote")  # beside quorvex, the command's other names
CONTROL = """Package: quorvex
Version: {version}
Architecture: amd64
Maintainer: The Quorvex authors <quorvex@localhost>
Installed-Size: {size}
Depends: {depends}
Recommends: pulseaudio | pipewire-pulse
Section: video
Priority: optional
Description: one remote control for everything that plays
 A small remote control with a liquid crystal display that floats at the bottom
 of the screen. It plays audio CDs and DVDs from disc images, media files and
 lists, and shows television. It is a Windows program, which runs in Wine.
"""


def put_icons(folder):
    """Writes every size of the program's icon."""
    with open(ART / "quorvex.ico", "rb") as source:
        icon = IcoImagePlugin.IcoFile(source)
        for width, height in sorted(icon.sizes()):
            picture = io.BytesIO()
            icon.getimage((width, height)).save(picture, "PNG")
            put(folder / f"{width}x{height}" / "apps" / "quorvex.png", picture.getvalue())


def put_commands(root):
    put_filled(root / "usr/bin/quorvex", HERE / "quorvex", 0o755, VERSION=version())
    date = datetime.fromtimestamp(source_time(), timezone.utc).date().isoformat()
    page = (HERE / "quorvex.1").read_text().replace("@VERSION@", version()).replace("@DATE@", date)
    put_zipped(root / "usr/share/man/man1/quorvex.1.gz", page)
    for name in NAMES:
        (root / "usr/bin" / name).symlink_to("quorvex")
        (root / "usr/share/man/man1" / f"{name}.1.gz").symlink_to("quorvex.1.gz")


def put_wine_tools(folder):
    """The scripts of the checkout's Wine environment, with a layout of their own."""
    tools = ROOT / "tools" / "wine"
    for name in ("environment.sh", "player.sh", "settings.reg"):
        put(folder / name, (tools / name).read_bytes())
    put(folder / "prepare-prefix", (tools / "prepare-prefix").read_bytes(), 0o755)
    put(folder / "layout.sh", (HERE / "layout.sh").read_bytes())


def put_desktop(share):
    types = ";".join((HERE / "mime-types").read_text().split()) + ";"
    put_filled(share / "applications" / "quorvex.desktop", HERE / "quorvex.desktop", MIME_TYPES=types)
    put(share / "mime" / "packages" / "quorvex.xml", (HERE / "quorvex.xml").read_bytes())
    put_icons(share / "icons" / "hicolor")


def put_documents(folder):
    put(folder / "copyright", (HERE / "copyright").read_bytes())
    put(folder / "manual.html", MANUAL.read_bytes())
    put_zipped(folder / "changelog.gz", (ROOT / "CHANGELOG.md").read_bytes())
    put_zipped(folder / "THIRD-PARTY.txt.gz", notices())


def put_control(root):
    """Writes what dpkg reads: the package's description and the files' sums."""
    files = sorted(path for path in root.rglob("*") if path.is_file() and not path.is_symlink())
    sums = "".join(f"{hashlib.md5(path.read_bytes()).hexdigest()}  {path.relative_to(root)}\n" for path in files)
    size = sum(-(-path.stat().st_size // 1024) for path in files)
    depends = ", ".join(packages("packages_wine"))
    put(root / "DEBIAN" / "control", CONTROL.format(version=version(), size=size, depends=depends))
    put(root / "DEBIAN" / "md5sums", sums)


def stage_debian(root):
    """Lays out what the package puts into a system."""
    fresh(root)
    put_programs(root / "usr/lib/quorvex/bin")
    put_wine_tools(root / "usr/lib/quorvex/wine")
    put_commands(root)
    put_desktop(root / "usr/share")
    put_documents(root / "usr/share/doc/quorvex")
    put_control(root)
    for path in [root, *root.rglob("*")]:
        if path.is_dir():
            path.chmod(0o755)
    set_times(root)


def write_deb(root, target):
    """Packs a staged folder."""
    subprocess.run(["dpkg-deb", "--root-owner-group", "-Zxz", "--threads-max=1", "--build", root, target], check=True,
                   stdout=subprocess.DEVNULL)
