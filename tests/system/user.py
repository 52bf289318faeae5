"""The hands of a user who may do anything: every kind of command to the running player, drawn by chance, and what is done in its menus and dialogs."""

import collections
import os
import time

import invariants
import processes
from hand import BM_CLICK, CONTROL, DOWN, MOVE, PANEL, RIGHT_DOWN, RIGHT_UP, UP, WM_CLOSE, WM_KEYDOWN, Player
from invariants import VIDEO
from layout import KEYS
from remote import drive, empty_drive, windows_path
from world import CARD_FAULTS, FAULTS, World

POWER, DECIMAL_POINT, FULL_SCREEN, CLOSE_DEVICE = 1016, 1046, 1012, 1526
TRANSPORT = (1000, 1000, 1001, 1009, 1014, 1015, 1007, 1008, 1041, 1043, 1098, 1010)
OTHERS = (*range(1018, 1028), 1032, 1033, 1047, 1049, 1051, 1053, 1055, 1058, 1059, 1061, 1061, 1069, 1072, 1073, 1074, 1075, 1102, 1102, 1103)
ASKING = (1002, 1071, 1071, 1057, 1070, 1044)
DEVICES = (1005, 1017, 1017, 1500, 1500, 1501, 1502, CLOSE_DEVICE)
ACCELERATORS = ((0x22,), (0x21,), (0x1B,), *((0x30 + digit,) for digit in range(10)), (0x27,), (0x25,), (0x26,), (0x28,), (0x2D,), (0x2E,), (0x0D,),
                (0x6B,), (0x6D,), (0x74,), *((CONTROL, ord(letter)) for letter in "VCHSMLRF"))
HELD = (1007, 1008, 1032, 1033, 1058, 1059)
WM_SYSCOMMAND, WM_SETTINGCHANGE, WM_DISPLAYCHANGE, WM_POWERBROADCAST, SC_RESTORE = 0x112, 0x1A, 0x7E, 0x218, 0xF120
PSM_SETCURSEL, LB_SETSEL, LB_SETCURSEL = 0x400 + 101, 0x185, 0x186
OK, CANCEL, YES, NO, HELP = 1, 2, 6, 7, 9
FILE_NAME, CAPTURE_SIZE, AUTO_TUNE = 1148, 401, "Channel Autotune"
TUNING_MS = 20000


class Broken(AssertionError):
    """Something that must hold does not."""


class User(Player):
    """`limit_ms`: how long a user waits for an answer."""

    def __init__(self, limit_ms):
        super().__init__()
        self.world = World(self.remote.folder)
        self.limit_ms = self.patience_ms = limit_ms
        self.slowest = 0
        self.number = 0  # of the command
        self.in_dialog = 0  # commands that the dialogs which are open have lasted
        self.last = collections.deque(maxlen=30)
        self.done = collections.Counter()

    def start(self):
        super().start()
        environment = os.environ["QUORVEX_ENV"]
        self.waiting = processes.Waiting([self.process, processes.wine_server(environment), processes.display_server(environment)])
        self.in_dialog = 0

    def restart(self):
        """After the program was told to end."""
        code, said = self.remote.process.wait(20), self.crash()
        if code or said:
            raise Broken(f"ended with code {code}: {said}")
        self.start()

    def close(self):
        super().close()
        self.world.mend()
        empty_drive()
        drive("card", "off")

    def answered(self, milliseconds):
        """The time that others had the cores does not count."""
        milliseconds -= self.waiting.seconds() * 1000
        self.slowest = max(self.slowest, milliseconds) if self.patience_ms == self.limit_ms else self.slowest
        if milliseconds > self.patience_ms:
            raise Broken(f"{milliseconds} ms until it answered")

    def note(self, what, detail):
        self.done[what] += 1
        self.last.append((self.number, f"{what} {detail}"))

    def press(self, command):
        self.last[-1] = (self.number, f"key {command}")
        self.waiting.seconds()
        answer, milliseconds = self.hand.press(command)
        if answer == 1:
            self.answered(milliseconds)
        elif answer not in (0, 2) and not self.has_ended():
            raise Broken(f"key {command}: no answer")
        return command

    def transport(self, chance, _):
        return self.press(chance.choice(TRANSPORT))

    def other_key(self, chance, _):
        return self.press(chance.choice(OTHERS))

    def asking_key(self, chance, _):
        return self.press(chance.choice(ASKING))

    def any_number(self, chance, _):
        number = chance.choice((chance.randrange(1030), chance.randrange(1000, 1104), chance.randrange(1300, 1400), chance.randrange(2000)))
        return self.press(DECIMAL_POINT if number == POWER else number)

    def choose_device(self, chance, _):
        return self.press(chance.choice(DEVICES))

    def open_files(self, chance, _):
        files = chance.sample(self.world.files, chance.choice((1, 1, 2, 5)))
        self.hand("open", *files)
        return files

    def drop_files(self, chance, _):
        files = chance.sample(self.world.files, chance.choice((1, 1, 3)))
        self.hand("drop", *files)
        return files

    def type_keys(self, chance, tops):
        keys = chance.choice(ACCELERATORS)
        front = [window for window in tops if window.kind in (PANEL, VIDEO) and window.visible]
        if front:
            self.hand("front", chance.choice(front).handle)
        self.hand("keys", *keys)
        return keys

    def click_key(self, chance, tops):
        return self.work_key(tops, chance.choice([key for key in KEYS if key != POWER]), 0)

    def hold_key(self, chance, tops):
        return self.work_key(tops, chance.choice(HELD), chance.uniform(0.55, 1.0))

    def work_key(self, tops, key, seconds, down=DOWN, up=UP):
        panel = invariants.panel_to_look_at(tops)
        if not panel:
            return "nothing"
        x, y, width, height, _ = KEYS[key]
        place = panel.left + x + width // 2, panel.top + y + height // 2
        self.hand("mouse", *place, down)
        time.sleep(seconds)
        self.hand("mouse", *place, up)
        return key

    def chapters_menu(self, chance, tops):
        return self.work_key(tops, chance.choice((1014, 1015)), 0, RIGHT_DOWN, RIGHT_UP)

    def work_picture(self, chance, tops):
        video = next((window for window in tops if window.kind == VIDEO and window.visible), None)
        if not video:
            return "nothing"
        what = chance.choice(("click", "click", "double", "drag", "point", "size", "move", "close"))
        x, y = chance.randrange(video.left, video.right + 1), chance.randrange(video.top, video.bottom + 1)
        if what in ("click", "double"):
            self.hand("mouse", x, y, *(DOWN, UP) * (2 if what == "double" else 1))
        elif what == "drag":
            self.hand("mouse", x, y, DOWN)
            self.hand("mouse", max(x + chance.randrange(-200, 200), 0), max(y + chance.randrange(-200, 200), 0), MOVE, UP)
        elif what == "point":
            self.hand("mouse", x, y)
        elif what == "close":
            self.hand.post(video, WM_CLOSE)
        else:
            width, height = chance.randrange(1, 1400), chance.randrange(1, 1100)
            if what == "move":
                width, height = video.right - video.left, video.bottom - video.top
            self.hand("place", video.handle, chance.randrange(-100, 900), chance.randrange(-100, 700), width, height)
        return what

    def full_screen(self, _, __):
        return self.press(FULL_SCREEN)

    def move_panel(self, chance, _):
        panel = self.panel()
        self.hand.post(panel, WM_SYSCOMMAND, SC_RESTORE)
        x, y = chance.choice(((373, 829), (chance.randrange(0, 740), chance.randrange(0, 900))))
        self.hand("place", panel.handle, x, y, 534, 115)
        return x, y

    def tell_system(self, chance, tops):
        window = chance.choice([window for window in tops if window.kind in (PANEL, VIDEO)])
        message, first = chance.choice(((WM_DISPLAYCHANGE, 32), (WM_SETTINGCHANGE, 17), (WM_SETTINGCHANGE, 67), (WM_POWERBROADCAST, 0),
                                        (WM_POWERBROADCAST, 7)))
        self.hand("send", window.handle, message, first, 0)
        return hex(message), first

    def change_disc(self, chance, _):
        what = chance.choice(("insert", "insert", "insert", "eject", "close", "fault"))
        words = {"insert": ("insert", chance.choice(list(self.world.discs))), "fault": chance.choice(FAULTS)}.get(what, (what,))
        self.world.work_drive(*words)
        return words

    def change_card(self, chance, _):
        card = chance.choice(("tv", "tv", "camera", "capture"))
        words = chance.choice((("on", card), ("on", card), ("off", card), ("off",), ("fault", chance.choice(CARD_FAULTS), chance.choice((0, 0, 1)))))
        drive("card", *words)
        return words

    def wait(self, chance, _):
        seconds = chance.choice((0.05, 0.3, 0.7, 1.5))
        time.sleep(seconds)
        return seconds

    def end_and_start(self, chance, _):
        """Power, or the system's wish, which comes also while a dialog is open."""
        if chance.random() < 0.3:
            self.hand.post(self.panel(), WM_CLOSE)
            self.leave_dialogs()  # the panel closes after them
            how = "closed"
        else:
            how = "power"
            if self.hand.press(POWER)[0] != 1:
                return "refused"
        self.restart()
        return how

    # Menus and dialogs

    def leave_dialogs(self):
        for _ in range(60):
            if menu := self.menu():
                self.hand.post(menu, WM_KEYDOWN, 0x1B)
            elif dialogs := self.dialogs():
                self.leave(dialogs[0])
            else:
                return
            self.hand.settle()

    def leave(self, dialog):
        keys = {control.id for control in self.hand.inner(dialog) if control.kind == "Button" and control.enabled}
        self.hand.choose(dialog, next((key for key in (CANCEL, NO, OK) if key in keys), CANCEL))

    def use_menu(self, chance, menu):
        keys = chance.choice(((0x1B,), (0x28,), (0x26,), (0x28, 0x0D), (0x28, 0x28, 0x0D), (0x28, 0x27, 0x28, 0x0D)))
        for key in keys if self.in_dialog < 5 else (0x1B, 0x1B):
            self.hand.post(menu, WM_KEYDOWN, key)
            time.sleep(0.02)
        return keys

    def use_dialog(self, chance, dialog):
        inner = [control for control in self.hand.inner(dialog) if control.enabled]
        leave = [control.id for control in inner if control.kind == "Button" and control.id in (OK, CANCEL, YES, NO)]
        if dialog.text == AUTO_TUNE:
            self.patience_ms = TUNING_MS
        if any(control.id == FILE_NAME for control in inner):
            self.name_file(chance, dialog, inner)
        if self.in_dialog > 8 or chance.random() < 0.3 or not inner:
            choice = chance.choice(leave or [CANCEL]) if self.in_dialog < 12 else (CANCEL if CANCEL in leave else (leave or [OK])[0])
            self.hand.choose(dialog, choice)
            return dialog.text, choice
        return dialog.text, self.use_control(chance, dialog, chance.choice(inner))

    def name_file(self, chance, dialog, inner):
        field = next((control for control in inner if control.kind == "Edit"), None)
        name = chance.choice(self.world.files) if dialog.text == "Open" else windows_path(self.world.capture_file.with_name("copy.avi"))
        if field:
            self.hand("type", field.handle, name)

    def use_control(self, chance, dialog, control):
        if control.kind == "Button" and control.id not in (OK, CANCEL, HELP):
            self.hand.post(control, BM_CLICK)
        elif control.kind == "Edit" and control.id == CAPTURE_SIZE:
            self.hand("type", control.handle, chance.randrange(1, 9))
        elif control.kind == "Edit":
            self.hand("type", control.handle, chance.choice(("", "7", "29.97", "Zwölf Töne", "x" * 40, "[a]=b", str(chance.randrange(2000)))))
        elif control.kind == "ListBox":
            self.hand.post(control, chance.choice((LB_SETSEL, LB_SETCURSEL)), 1, chance.randrange(3))
        elif control.kind == "SysTabControl32":
            self.hand.post(dialog, PSM_SETCURSEL, chance.randrange(6))
        return control.kind, control.id


# How often what is done, of the whole.
WILD = ((22, User.transport), (18, User.other_key), (5, User.any_number), (5, User.asking_key), (8, User.choose_device), (5, User.open_files),
        (4, User.drop_files), (5, User.type_keys), (5, User.click_key), (1, User.hold_key), (1, User.chapters_menu), (4, User.work_picture),
        (3, User.full_screen), (2, User.move_panel), (2, User.tell_system), (4, User.change_disc), (3, User.change_card), (4, User.wait),
        (0.4, User.end_and_start))
# What an ordinary hour holds; its times are short.
CALM = ((32, User.transport), (18, User.other_key), (2, User.asking_key), (6, User.choose_device), (6, User.open_files), (2, User.drop_files),
        (4, User.full_screen), (4, User.work_picture), (4, User.change_disc), (2, User.change_card), (20, User.wait))
HOUR = sum(count for count, _ in CALM)
