"""A user who does anything: random commands to the running player, the same for the same seed, and what must hold after each of them.

What the user does at command I depends on seed, I and what is on the screen only, so a run may begin at any I.
"""

import collections
import random
import subprocess
import time

import invariants
import processes
from hand import DIALOG, MENU
from invariants import OSD, VIDEO
from remote import ROOT, WINDOWS, drive, empty_drive, windows_path
from user import CALM, CLOSE_DEVICE, WILD, Broken, User


class Model(User):
    def __init__(self, seed, limit_ms=500, calm=False):
        super().__init__(limit_ms)
        self.seed = seed
        self.commands = CALM if calm else WILD
        if calm:  # a file that cannot be played leaves a thread of Wine's own file source behind
            self.world.files = self.world.playable
        self.seen = collections.Counter()  # states and dialogs

    def prepare(self):
        for name in ("quorvex.ini", "cd.abm", "mfiles.abm"):
            (WINDOWS / name).unlink(missing_ok=True)
        (WINDOWS / "quorvex.ini").write_text("[QUORVEX]\nAutoStartDevice=0\n[CAPTURE]\nFrameRate=333667\nEnableTimeLimit=1\nTimeLimit=2\n"
                                             f"CaptureFile={windows_path(self.world.capture_file)}\n")
        empty_drive()
        drive("card", "off")
        self.start()

    def run(self, first, count):
        for self.number in range(first, first + count):
            try:
                self.step(random.Random(f"{self.seed} {self.number}"))
                self.check()
            except Exception as error:
                raise Broken(self.story(error)) from error

    def story(self, error):
        picture = ROOT / "build" / f"model-{self.seed}-{self.number}.png"
        subprocess.run(["import", "-window", "root", picture], check=False)
        lines = "\n".join(f"  {number} {text}" for number, text in self.last)
        return f"seed {self.seed}, command {self.number}: {error}\nthe screen: {picture}\nthe last commands:\n{lines}"

    def step(self, chance):
        self.patience_ms = self.limit_ms
        tops, menu, dialogs = self.hand.tops(), self.menu(), self.dialogs()
        self.in_dialog = self.in_dialog + 1 if dialogs or menu else 0
        if menu and chance.random() < 0.6:
            self.note("menu", self.use_menu(chance, menu))
        elif dialogs and chance.random() < 0.8:
            self.seen[dialogs[0].text] += 1
            self.note("dialog", self.use_dialog(chance, dialogs[0]))
        else:
            weights = [weight for weight, _ in self.commands]
            act = chance.choices([act for _, act in self.commands], weights)[0]
            self.note(act.__name__, "...")
            self.last[-1] = (self.number, f"{act.__name__} {act(self, chance, tops)}")

    def check(self, limit=6.0):
        """Asks until all holds; what holds only later than that does not."""
        end = time.monotonic() + limit
        while True:
            broken = self.broken()
            if not broken:
                return
            if time.monotonic() > end:
                raise Broken("; ".join(broken))
            time.sleep(0.03)

    def broken(self):
        if self.has_ended():
            raise Broken(f"the program has ended with code {self.remote.process.returncode}: {self.crash()}")
        self.waiting.seconds()
        self.answered(self.hand.settle())
        state = self.hand.look()
        if not state:
            return ["no answer"]
        tops = self.hand.tops()
        self.seen[state["device"], state.get("state"), state.get("recording")] += 1
        asks = any(window.kind == DIALOG and window.visible for window in tops)
        broken = [*invariants.of_lamps(state, asks), *invariants.of_items(state, self.world.tracks_unlike), *invariants.of_windows(state, tops)]
        panel = invariants.panel_to_look_at(tops) if self.number % 5 == 0 and not broken else None
        return [*broken, *(invariants.of_painting(state, panel) if panel else ())]

    def rest(self):
        """Leaves dialogs and device, as a user who is done; returns what the program holds then."""
        for _ in range(60):
            self.leave_dialogs()
            if self.hand.press(CLOSE_DEVICE)[0] == 1 and self.hand.look().get("device") == "none":
                break
        time.sleep(1)  # a sound device is closed on threads of its own
        wakes = min(self.wakes_of_a_second() for _ in range(3))
        state, tops = self.hand.look(), self.hand.tops()
        left = [window for window in tops if window.kind in (VIDEO, OSD, DIALOG, MENU)]
        if left or state.get("device") != "none":
            raise Broken(f"at rest there is still {left}, {state}")
        counts = self.hand.counts()
        counts["handles"] -= counts["handles of kind 19"]  # keys of the registry: the platform loses some forty with each file
        return {"private MB": round(processes.private_megabytes(self.process), 2), "handles": counts["handles"], "drawing objects": counts["drawing"],
                "windows": len(tops), "wakes a second": wakes, "threads": len(list((self.process / "task").iterdir())), "files": len(list((self.process / "fd").iterdir()))}

    def wakes_of_a_second(self):
        before = processes.wakes(self.process)
        time.sleep(1)
        return processes.wakes(self.process) - before
