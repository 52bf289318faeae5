#!/usr/bin/python3
"""shown_texts.py ROOT: the texts that the programs may show to their user, as found in the sources.

A text is a string literal, joined with what is added to it; a part that is known only when the program runs is VARIABLE. It counts when

- it goes straight to what shows texts (SINKS), be it one word only;
- or it reads like words (more than one of them), whatever way it takes: all such texts of the programs' rooms count, so that a new
  way of showing a text needs no mention here. The few that are no messages are named in NOT_MESSAGES.
- Of the resources count the strings that name no key, and the sentences in dialogs.
- Of the scripts that users start counts what they echo, of the installer what its boxes say.
"""
import re
import sys
from pathlib import Path

VARIABLE = "…"
ROOMS = ("base", "devices", "mixer", "panel", "remote", "setup", "shell", "video", "platform/cd", "platform/drive")
SCRIPTS = (
    *("run", "packaging/debian/quorvex", "packaging/windows/*.nsi", "tools/build", "tools/deps/build-deps", "tools/install-packages"),
    "tools/wine/*",
)
SINKS = (
    *("Complain", "Fails", "MessageBoxA", "MessageBoxW", "Query", "ReportError", "ReportErrorIf", "SetDisplayText", "Take"),
    *("TellRefusal", "TellUser"),
)

NOT_MESSAGES = {
    # Labels of buttons, menus and windows, and names.
    *("Quorvex", "MCI Error", "Open File", "Edit Playlist Title", "No Subtitles", "&Audio Tracks", "QUORVEX Video"),
    "Close Device",
    *("Media File...", "VIDEO 1", "VIDEO 2", "Track", "Trac&k", "Capture device …", "Set Capture File", "Setup Options", "Error"),
    *("Merrow", "hr:min:sec", "min:sec"),
    # Sections and keys of the stores.
    *("List of Albums", "Last Visit", "MEDIA FILE", "CD List", "Number of CDs"),
    # What the platform's lists, objects and classes are called.
    *("WDM Streaming Tee/Splitter Devices", "Tee/Sink-to-Sink Converter", "WDM Streaming VBI Codecs", "CC Decoder", "Video Renderer"),
    *("Quorvex store …", "Quorvex CD drive"),
}

TOKEN = re.compile(
    r'(?://[^\n]*|/\*.*?\*/)|^[ \t]*#[^\n]*|(?:u8|[LuU])?"(?P<string>(?:\\.|[^"\\\n])*)"'
    r"|(?<!\w)L?'(?P<character>(?:\\.|[^'\\\n])+)'",
    re.MULTILINE | re.DOTALL)
STRING_OBJECT = re.compile(r'\bstd::string\(("(?:\\.|[^"\\\n])*")\)')
ESCAPE = re.compile(r"\\(x[0-9A-Fa-f]+|.)")
PLAIN_ESCAPES = {"n": "\n", "r": "\r", "t": "\t", "0": "\0", '"': '"', "'": "'", "\\": "\\"}
FORMAT = re.compile(r"%[-+0#]*\d*(?:\.\d+)?(?:ll|l|z)?[diuxXfsc]")
SHELL_VARIABLE = re.compile(r"\$\{[^}]*\}|\$\w+|@\w+@")
# What the compiler says, and the help texts of the command-line programs: the manual has these in words of its own.
ASIDE = re.compile(r"\bstatic_assert\s*\(|\bk\w*Usage\[\]\s*=")


def unescape(text):
    return ESCAPE.sub(lambda found: PLAIN_ESCAPES.get(found[1], ""), text)


def split_source(source):
    """The literals of a C++ source, as matches of TOKEN, and its code: the rest, with blanks in their places."""
    literals = []
    code = source
    for token in TOKEN.finditer(source):
        if token["string"] is not None or token["character"] is not None:
            literals.append(token)
        code = code[:token.start()] + " " * len(token[0]) + code[token.end():]
    return literals, code


def is_balanced(code):
    depth = 0
    for character in code:
        depth += (character in "([{") - (character in ")]}")
        if depth < 0:
            return False
    return depth == 0


def join_of(between):
    """What stands between two literals of one text: nothing or a variable part; None when they are two texts."""
    between = between.strip()
    if between in ("", "+"):
        return ""
    outside = re.sub(r"\([^()]*\)", "", between)
    is_sum = between.startswith("+") and between.endswith("+") and is_balanced(between) and not re.search(r"[;,?{}]", outside)
    return VARIABLE if is_sum else None


def join_literals(literals, code):
    """(start, text) of every text that the literals make."""
    texts = []
    for at, literal in enumerate(literals):
        before = code[literals[at - 1].end() if at else 0:literal.start()]
        join = join_of(before) if at else None
        if join is None:
            join = VARIABLE if before.rstrip().endswith("+") else ""
            texts.append([literal.start(), ""])
        texts[-1][1] += join + unescape(literal["string"] or literal["character"] or "")
        following = code[literal.end():literals[at + 1].start() if at + 1 < len(literals) else len(code)]
        if re.match(r"\s*\+(?![+=])", following) and (at + 1 == len(literals) or join_of(following) is None):
            texts[-1][1] += VARIABLE
    return texts


def end_of_span(code, start):
    """Where the brackets close or the statement ends that `start` is in."""
    depth = 0
    for at in range(start, len(code)):
        depth += (code[at] in "([{") - (code[at] in ")]}")
        if depth < 0 or (depth == 0 and code[at] == ";"):
            return at
    return len(code)


def spans(code, opening):
    return [(found.end(), end_of_span(code, found.end())) for found in re.finditer(opening, code)]


def lies_in(start, places):
    return any(first <= start < last for first, last in places)


def normal(text):
    """A text as it is compared: formats are variable parts, blanks are single, a list's marks and a program's name are gone."""
    text = " ".join(FORMAT.sub(VARIABLE, text).split())
    text = re.sub(r"^(?:[*-] |qv(?:drive|remote): )(?=\S)", "", text)
    return re.sub(f"{VARIABLE}(?:\\s*{VARIABLE})+", VARIABLE, text)


def reads_like_words(text):
    """Not so: lists with zeros in them, and what is answered to scripts (name=value)."""
    words = normal(text)
    return "\0" not in text and re.match(r"\w+=", words) is None and re.search(r"[A-Za-z]{2,}\S* \S", words) is not None


def texts_of_source(source, is_room):
    literals, code = split_source(STRING_OBJECT.sub(r"\1", source))
    shown = spans(code, r"\b(?:" + "|".join(SINKS) + r")\s*\(") + spans(code, r"\brefusal\s*=")
    aside = spans(code, ASIDE)
    for start, text in join_literals(literals, code):
        counts = lies_in(start, shown) or (is_room and reads_like_words(text) and not lies_in(start, aside))
        if counts and re.search(r"[A-Za-z]{2}", normal(text)):
            yield normal(text)


def read_buttons(root):
    """(command, number of the string that names it) of the panel's keys; a digit's command is the digit."""
    table = (root / "panel/button_table.h").read_text()
    rows = table[table.index("kButtons{{"):]
    buttons = [(name, int(string)) for name, string in re.findall(r"Key\((kCommand\w+),[^)]*?(\d+)\)", rows)]
    first_digit = int(re.search(r"kDigitNameString = (\d+)", table)[1])
    buttons += [(digit, first_digit + int(digit)) for digit in re.findall(r"DigitKey\((\d),", rows)]
    if len(buttons) != int(re.search(r"kButtonCount = (\d+)", table)[1]):
        raise SystemExit(f"panel/button_table.h: {len(buttons)} of its keys are understood")
    return buttons


def read_strings(root):
    """(number or name, text) of every string in the resources."""
    for path in sorted((root / "resources").glob("*.rc")):
        for table in re.findall(r"STRINGTABLE\s+BEGIN(.*?)\bEND\b", path.read_text(), re.DOTALL):
            yield from re.findall(r'^\s*(\w+),?\s+"(.*)"\s*$', table, re.MULTILINE)


def texts_of_resources(root):
    keys = {str(string) for _, string in read_buttons(root)}
    yield from (normal(text) for name, text in read_strings(root) if name not in keys)
    for path in sorted((root / "resources").glob("*.rc")):
        yield from map(normal, re.findall(r'\b[LRC]TEXT\s+"([^"]*\.)"', path.read_text()))


def texts_of_script(source):
    for text in re.findall(r"""\b(?:echo|xmessage .*?|MessageBox \S+) (?:'([^']*\w[^']*)'|"([^"]*\w[^"]*)")""", source):
        text = "".join(text)
        if reads_like_words(SHELL_VARIABLE.sub(VARIABLE, text)):
            yield normal(SHELL_VARIABLE.sub(VARIABLE, text))


def shown_texts(root):
    """Every text that may be shown, with the files that it is in."""
    found = {}
    for room in {name.split("/")[0] for name in ROOMS}:
        for path in sorted((root / room).rglob("*.[ch]*")):
            place = path.relative_to(root).as_posix()
            for text in texts_of_source(path.read_text(), place.startswith(tuple(f"{name}/" for name in ROOMS))):
                found.setdefault(text, set()).add(place)
    for path in (path for pattern in SCRIPTS for path in sorted(root.glob(pattern)) if path.is_file()):
        for text in texts_of_script(path.read_text()):
            found.setdefault(text, set()).add(path.relative_to(root).as_posix())
    for text in texts_of_resources(root):
        found.setdefault(text, set()).add("resources")
    return found


def main():
    for text, places in sorted(shown_texts(Path(sys.argv[1])).items()):
        print(f"{'no message' if text in NOT_MESSAGES else 'message   '} {text}   ({', '.join(sorted(places))})")


if __name__ == "__main__":
    main()
