"""What always holds of the running player, whatever was pressed: between what it tells, what its panel shows and what windows it has.

Each claim is a function from what was seen to the texts of what does not hold. A device may need a moment to follow its medium, so whoever asks
asks again before he believes.
"""

import os

from PIL import ImageGrab

from hand import DIALOG, MENU, PANEL
from remote import HalfPainted, LAMP_NAMES, Picture

DEVICE_LAMPS = {"none": {"IDLE"}, "tv": {"TV/CAP"}, "dvd": {"DVD"}, "cd": {"CD"}, "file": set()}
STATE_KEYS = {1000: "play", 1009: "PAUSE", 1043: "REP", 1044: "REC", 1051: "CC", 1061: "MUTE", 1069: "MENU", 1098: "RND"}
PICTURE_DEVICES = ("tv", "dvd", "file")
VIDEO, OSD = "PVideo", "myOSCtl"
FREE_BOX = "MCI Error"  # has no owner: the panel can be used while it is open
# Windows without a parent that the platform makes: tool tips, a thread's input method, drop-down lists, OLE's window of a thread, DDE of the file
# dialog, a renderer before it gets its owner.
PLATFORM_WINDOWS = {"tooltips_class32", "IME", "ComboLBox", "OleMainThreadWndClass", "OleMainThreadWndName", "wine_quartz_window", "FilterGraphWindow",
                    "Auto-Suggest Dropdown", "SysShadow"}


def plays(state):
    return state.get("state") == "playing" and state["device"] in ("cd", "dvd", "file")


def has_no_entry(state):
    """A list of files without a file: the dialog leaves a device that plays nothing."""
    return state["device"] == "file" and state.get("items") == "0"


def lamps_wanted(state):
    """The lamps that follow from what the program tells; of the others (MENU, CC) only who may light them is known."""
    device = state["device"]
    wanted = DEVICE_LAMPS[device]
    conditions = {"PAUSE": state.get("state") == "paused", "MUTE": state["mute"] == "on", "REC": state.get("recording") == "on",
                  "RND": state.get("random") == "on", "REP": state.get("repeat", "off") != "off", "1": state.get("repeat") == "one",
                  "ALL": state.get("repeat") == "all"}
    return wanted | {lamp for lamp, lit in conditions.items() if lit}


def lamps_of(state):
    return set(filter(None, state["lamps"].split(", ")))


def of_lamps(state, asks):
    """`asks`: a dialog or box is open; a device that asks while it is being opened has not lit its lamp yet."""
    lit, wanted, device = lamps_of(state), lamps_wanted(state), state["device"]
    if asks and "IDLE" in lit:
        wanted = wanted - DEVICE_LAMPS[device] | {"IDLE"}
    may = {"dvd": {"MENU", "CC"}, "tv": {"CC"}, "file": {"IDLE"} if has_no_entry(state) else set()}.get(device, set())
    if not wanted <= lit <= wanted | may:
        yield f"lamps {sorted(lit)}, not {sorted(wanted)}"


def of_items(state, tracks_unlike):
    """`tracks_unlike`: answers how many tracks there are when there are not so many as a CD player tells."""
    device, item, items = state["device"], int(state.get("item", 0)), int(state.get("items", 0))
    if items and not (1 if device in ("cd", "file") else 0) <= item <= items:
        yield f"item {item} of {items}"
    if items > 1000:
        yield f"{items} items"
    if device == "cd" and (tracks := tracks_unlike(items)):
        yield f"{items} tracks of a disc of {tracks}"
    if device == "tv" and "channel" in state and not 0 <= int(state["channel"]) <= 125:
        yield f"channel {state['channel']}"


def of_windows(state, tops):
    """`tops`: all windows without a parent, seen or not."""
    alive = {window.handle for window in tops}
    kinds = [window.kind for window in tops]
    known = PLATFORM_WINDOWS | {DIALOG, MENU, PANEL, VIDEO, OSD}
    for window in tops:
        if window.kind not in known:
            yield f"a window of class {window.kind}: {window}"
        if window.kind in (VIDEO, OSD) and state["device"] not in PICTURE_DEVICES + (("cd",) if window.kind == OSD else ()):
            yield f"a {window.kind} with device {state['device']}"
        if window.kind == DIALOG and window.visible and window.owner not in alive and window.text != FREE_BOX:
            yield f"a dialog whose owner is gone: {window}"
    if kinds.count(PANEL) != 1 or kinds.count(VIDEO) > 1:
        yield f"{kinds.count(PANEL)} panels, {kinds.count(VIDEO)} video windows"
    dialogs = [window for window in tops if window.kind == DIALOG and window.visible and window.text != FREE_BOX]
    panel = next((window for window in tops if window.kind == PANEL), None)
    if panel and bool(panel.enabled) == bool(dialogs):
        yield f"the panel takes {'' if panel.enabled else 'no '}keys with {len(dialogs)} dialogs"
    if dialogs and sum(window.enabled for window in dialogs) != 1:
        yield f"{sum(window.enabled for window in dialogs)} of {len(dialogs)} dialogs take keys"


def overlap(a, b):
    return a.left < b.right and b.left < a.right and a.top < b.bottom and b.top < a.bottom


def panel_to_look_at(tops):
    """The panel, when all of it is to be seen on the screen."""
    panel = next((window for window in tops if window.kind == PANEL), None)
    if not panel or not panel.visible or not (0 <= panel.left and panel.right <= 1280 and 0 <= panel.top and panel.bottom <= 1024):
        return None
    others = [window for window in tops if window.visible and window.handle != panel.handle and overlap(window, panel)]
    return None if others or panel.right - panel.left < 500 else panel


def of_painting(state, panel):
    """What the panel shows on the screen against what the program tells."""
    picture = Picture(ImageGrab.grab((panel.left, panel.top, panel.right, panel.bottom), xdisplay=os.environ["DISPLAY"]).convert("RGB"))
    try:
        shown = picture.lamps() & (set(LAMP_NAMES.values()) - {"AM", "PM", "CHANNEL", "TRACK", "FILE", "CHAPTER", "OF"})
        told = {"TIMER" if lamp == "timer" else lamp for lamp in lamps_of(state)}
        if shown != told:
            yield f"lamps painted {sorted(shown)}, told {sorted(told)}"
        for key, lamp in STATE_KEYS.items():
            lit = plays(state) if lamp == "play" else lamp in told
            if picture.pressed_or_lit_frame(key) != lit:
                yield f"key {key} {'not ' if lit else ''}lit, {state}"
        if state["device"] in ("cd", "file") and picture.number(9) and "items" in state and picture.number(9) != state["items"]:
            yield f"OF {picture.number(9)} shown of {state['items']}"
    except HalfPainted as half:
        yield str(half)
