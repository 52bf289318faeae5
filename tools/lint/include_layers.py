#!/usr/bin/python3
"""include_layers.py ROOT: holds the lines between the rooms of the house.

- A file includes only from its own room and from lower ones; the concrete devices do not know each other; the platform layer uses
  nothing of the player but base/, and the player nothing of the platform layer.
- No include circles between units, counting a source and its header as one.
- What is built natively too (the libraries of NATIVE in CMakeLists.txt) reaches no header of Windows.
"""
import re
import sys
from pathlib import Path

# The rooms from the lowest up; a folder belongs to the longest prefix that names it.
LAYERS = {
    "base": 0,
    "resources": 0,
    "panel": 1,
    "remote": 2,
    "video": 2,
    "mixer": 2,
    "devices": 3,
    "devices/cd": 4,
    "devices/dvd": 4,
    "devices/tv": 4,
    "devices/media": 4,
    "setup": 5,
    "shell": 6,
}
NATIVE = ("quorvex_arithmetic", "quorvex_avi", "quorvex_disc", "quorvex_navigator", "quorvex_overlays", "quorvex_pictures",
          "quorvex_sound")
WINDOWS_HEADERS = {"windows.h", "windowsx.h", "mmsystem.h", "commctrl.h", "shlobj.h", "shellapi.h", "unknwn.h", "strmif.h", "oleacc.h"}

INCLUDE = re.compile(r'^\s*#include\s+(?:"([^"]+)"|<([^>]+)>)', re.MULTILINE)


def room(path):
    """The room of a file, by its path from the root."""
    parts = path.parent.as_posix()
    while parts not in LAYERS and "/" in parts:
        parts = parts.rsplit("/", 1)[0]
    return parts


def read_includes(root):
    """For every source of the player and the platform layer: its own headers and those of the system."""
    includes = {}
    for folder in sorted({name.split("/")[0] for name in LAYERS} | {"platform"}):
        for path in sorted((root / folder).rglob("*")):
            if path.suffix in (".h", ".cpp"):
                found = INCLUDE.findall(path.read_text())
                includes[path.relative_to(root)] = ([Path(own) for own, _ in found if own], [system for _, system in found if system])
    return includes


def check_layers(includes):
    for path, (own, _) in includes.items():
        for other in own:
            if complaint := layer_complaint(path, other):
                yield f"{path} includes {other}: {complaint}"


def layer_complaint(path, other):
    here, there = room(path), room(other)
    if path.parts[0] == "platform":
        allowed = other.parts[0] in ("platform", "base")
        return None if allowed else "the platform layer uses nothing of the player but base/"
    if there not in LAYERS:
        return "the player knows its own rooms only"
    if here == there or LAYERS[there] < LAYERS[here]:
        return None
    return f"{there}/ is no lower room than {here}/"


def unit(path):
    return path.with_suffix("")


def check_circles(includes):
    graph = {}
    for path, (own, _) in includes.items():
        graph.setdefault(unit(path), set()).update(unit(other) for other in own if unit(other) != unit(path))
    done = set()

    def visit(node, trail):
        if node in trail:
            yield "include circle: " + " -> ".join(str(step) for step in trail[trail.index(node):] + [node])
        elif node not in done:
            for following in sorted(graph.get(node, ())):
                yield from visit(following, trail + [node])
            done.add(node)

    for node in sorted(graph):
        yield from visit(node, [])


def native_sources(root):
    text = (root / "CMakeLists.txt").read_text()
    for library in NATIVE:
        match = re.search(r"add_library\(\s*" + library + r"\s+STATIC\s+([^)]*)\)", text)
        if not match:
            raise SystemExit(f"CMakeLists.txt has no library {library}")
        yield from (Path(name) for name in match.group(1).split())


def check_native(root, includes):
    waiting = list(native_sources(root))
    seen = set()
    while waiting:
        path = waiting.pop()
        if path in seen:
            continue
        seen.add(path)
        own, system = includes[path]
        for header in set(system) & WINDOWS_HEADERS:
            yield f"{path} is built natively and includes <{header}>"
        waiting += own


def main():
    root = Path(sys.argv[1])
    includes = read_includes(root)
    complaints = [*check_layers(includes), *check_circles(includes), *check_native(root, includes)]
    print("\n".join(complaints) or f"{len(includes)} files keep to their rooms")
    sys.exit(1 if complaints else 0)


main()
