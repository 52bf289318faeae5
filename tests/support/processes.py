"""What processes use, seen from outside; a process is its folder in /proc."""

import os
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]


def cpu_seconds(process):
    fields = (process / "stat").read_text().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def wine_server(environment):
    """The server of an environment: the one whose folder belongs to its prefix."""
    prefix = os.stat(ROOT / "build" / environment)
    folder = f"server-{prefix.st_dev:x}-{prefix.st_ino:x}"
    for process in Path("/proc").glob("[0-9]*"):
        try:
            if (process / "comm").read_text().startswith("wineserver") and (process / "cwd").readlink().name == folder:
                return process
        except OSError:
            continue
    sys.exit("no Wine server runs")


def display_server(environment):
    """The virtual screen of an environment."""
    return Path("/proc") / (ROOT / "build" / "env" / environment / "xvfb.pid").read_text().strip()


def private_megabytes(process):
    """Memory that nobody shares: written pages and private file pages."""
    sizes = dict(line.split(":") for line in (process / "smaps_rollup").read_text().splitlines()[1:])
    return sum(int(sizes[name].split()[0]) for name in ("Private_Dirty", "Private_Clean")) / 1024


def wakes(process):
    """How often its first thread has begun to wait so far."""
    return int((process / "status").read_text().split("\nvoluntary_ctxt_switches:")[1].split()[0])


class Waiting:
    """How long the threads of these processes were ready to run while others had the cores."""

    def __init__(self, processes):
        self.processes, self.before = processes, {}
        self.seconds()

    def seconds(self):
        """Since it was asked last."""
        now = {}
        for thread in (thread for process in self.processes for thread in (process / "task").glob("*")):
            try:
                now[thread] = int((thread / "schedstat").read_text().split()[1])
            except OSError:
                continue  # it has just ended
        more = sum(waited - self.before.get(thread, 0) for thread, waited in now.items())
        self.before = now
        return more / 1e9
