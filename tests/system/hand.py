"""Works the running player through player_hand.exe, many times a second: its keys, mouse, windows and dialogs, and what it tells of itself."""

import subprocess
import threading
from collections import namedtuple
from pathlib import Path

from remote import BIN, ROOT, TESTS, Remote, wait_for

Seen = namedtuple("Seen", "handle owner visible enabled id left top right bottom kind text")
MOVE, DOWN, UP, RIGHT_DOWN, RIGHT_UP = 0x1, 0x2, 0x4, 0x8, 0x10
SHIFT, CONTROL, ALT = 0x10, 0x11, 0x12
WM_CLOSE, WM_KEYDOWN, WM_COMMAND, BM_CLICK = 0x10, 0x100, 0x111, 0xF5
LONGEST_ANSWER = 60  # seconds, of a player that hangs
PANEL, DIALOG, MENU = "PControl", "#32770", "#32768"


def listed(lines):
    found = []
    for line in lines:
        *numbers, kind, text = line.split("\t", 10)
        found.append(Seen(*map(int, numbers), kind, text))
    return found


def values(lines):
    return dict(line.split("=", 1) for line in lines if "=" in line)


class Hand:
    def __init__(self):
        self.process = subprocess.Popen([ROOT / "tools" / "in-wine", TESTS / "player_hand.exe"], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        stderr=subprocess.DEVNULL, text=True, encoding="utf-8", errors="replace")

    def __call__(self, *words):
        """Gives an order; returns the lines of the answer."""
        patience = threading.Timer(LONGEST_ANSWER, self.process.kill)
        patience.start()
        try:
            return self.answer(words)
        finally:
            patience.cancel()

    def answer(self, words):
        self.process.stdin.write("\t".join(map(str, words)) + "\n")
        self.process.stdin.flush()
        lines = []
        while (line := self.process.stdout.readline().rstrip("\r\n")) != ".":
            if not line and self.process.poll() is not None:
                raise AssertionError(f"player_hand ended, or was not answered, at {words}")
            lines.append(line)
        return lines

    def press(self, command):
        """A key of the panel: 1 done, 2 busy, 0 refused, -1 no answer; and the milliseconds until it was acted on."""
        told = values(self("press", command))
        return int(told["answer"]), int(told["ms"])

    def settle(self):
        """Waits until the player has taken what was posted to it; returns the milliseconds."""
        return int(values(self("settle"))["ms"])

    def look(self):
        """The state that the panel tells; empty without a panel."""
        return values(self("look"))

    def tops(self):
        return listed(self("tops"))

    def inner(self, window):
        return [child for child in listed(self("inner", window.handle)) if child.visible]

    def click(self, x, y, down=DOWN, up=UP):
        self("mouse", x, y, down, up)

    def post(self, window, message, first=0, second=0):
        self("post", window.handle, message, first, second)

    def choose(self, dialog, control):
        """Presses a key of a dialog, as the dialog's own key does it."""
        self.post(dialog, WM_COMMAND, control)

    def counts(self):
        return {name: int(value) for name, value in values(self("counts")).items()}

    def close(self):
        self.process.communicate(timeout=10)


class Player:
    """The running program and the hand at it."""

    def __init__(self):
        self.hand, self.remote = Hand(), Remote()
        self.errors = self.remote.folder / "stderr"

    def start(self):
        """Starts the program and waits for the end of its lamp test."""
        with open(self.errors, "wb") as errors:
            self.remote.process = subprocess.Popen([ROOT / "tools" / "in-wine", BIN / "quorvex.exe"], stdin=subprocess.DEVNULL,
                                                   stdout=subprocess.DEVNULL, stderr=errors)
        wait_for(self.has_started, 30)

    def has_started(self):
        """The lamp test lights AM and PM at once."""
        state = self.hand.look()
        return state.get("lamps") and not ("AM" in state["time"] and "PM" in state["time"])

    @property
    def process(self):
        return Path("/proc") / str(self.remote.process.pid)

    def has_ended(self):
        return self.remote.process.poll() is not None

    def crash(self):
        """What the runtime and Wine say of a crash; other lines there are the platform's own."""
        lines = self.errors.read_text(errors="replace").splitlines()
        return "\n".join(line for line in lines if any(word in line.lower() for word in ("unhandled", "exception", "assert", "terminate")))

    def panel(self):
        return next(window for window in self.hand.tops() if window.kind == PANEL)

    def dialogs(self, caption=None):
        """Those that take keys."""
        return [window for window in self.hand.tops()
                if window.kind == DIALOG and window.visible and window.enabled and caption in (None, window.text)]

    def menu(self):
        return next((window for window in self.hand.tops() if window.kind == MENU and window.visible), None)

    def close(self):
        self.remote.stop()
        self.hand.close()
