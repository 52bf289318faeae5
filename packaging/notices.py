"""The notices of what the programs contain that others wrote: packaging/third-party.txt with the versions that were built, and the
licences' own texts."""

import hashlib
import tarfile
from pathlib import Path

from contents import ROOT

ARCHIVES = ROOT / "build" / "deps" / "src"
# Of each library: its licence's place in the archive.
LIBRARIES = {"ffmpeg": "COPYING.LGPLv2.1", "libdvdread": "COPYING", "libdvdnav": "COPYING"}
RUNTIMES = {"mingw-w64": "mingw-w64-x86-64-dev", "GCC": "gcc-mingw-w64-base"}


def archive(library):
    """The source archive that tools/deps/build-deps built a library from."""
    found = sorted(ARCHIVES.glob(f"{library}_*.orig.tar.*"))
    if len(found) != 1:
        raise SystemExit(f"{ARCHIVES} holds {len(found)} source archives of {library}; one is needed")
    return found[0]


def licence(library):
    """The text of a library's licence, from its archive."""
    with tarfile.open(archive(library)) as source:
        member = next(member for member in source if "/".join(Path(member.name).parts[1:]) == LIBRARIES[library])
        return source.extractfile(member).read().decode()


def source_line(library):
    path = archive(library)
    return f"{library}: Debian's source archive {path.name}, SHA-256 {hashlib.sha256(path.read_bytes()).hexdigest()}"


def notices():
    """The whole text."""
    parts = [(ROOT / "packaging" / "third-party.txt").read_text() + "\n".join(source_line(library) for library in LIBRARIES) + "\n"]
    texts = {licence(library): [] for library in LIBRARIES}
    for library in LIBRARIES:
        texts[licence(library)].append(library)
    parts += [headed(f"Licence of {' and '.join(names)}", text) for text, names in texts.items()]
    for name, package in RUNTIMES.items():
        parts.append(headed(f"Notices of {name}'s runtime", Path(f"/usr/share/doc/{package}/copyright").read_text()))
    return "\n".join(parts)


def headed(title, text):
    return f"\n{'=' * 78}\n{title}\n{'=' * 78}\n\n{text}"
