#!/usr/bin/python3
"""manual.py ROOT: holds docs/manual.md against the program.

- Every text that the programs may show (shown_texts.py) is in a table of the chapter MESSAGES, and nothing else is.
- Every key of the panel has a row with its picture, its name as on its tool tip and its shortcut as in the command table; the picture
  has the key's shape.
- Every shortcut without a key is there, and every word that qvremote and qvdrive know.
- Every file and every heading that the documents point to exists.
"""
import re
import sys
from pathlib import Path

from PIL import Image

sys.dont_write_bytecode = True
from shown_texts import NOT_MESSAGES, VARIABLE, normal, read_buttons, read_strings, shown_texts  # noqa: E402

MESSAGES = "Messages"
PICTURE_SCALE = 2
NO_SHORTCUT = "–"
VIRTUAL_KEYS = {
    "ADD": "Num +", "DELETE": "Del", "DOWN": "Down Arrow", "ESCAPE": "Esc", "INSERT": "Ins", "LEFT": "Left Arrow", "NEXT": "Page Down",
    "PRIOR": "Page Up", "RETURN": "Enter", "RIGHT": "Right Arrow", "SUBTRACT": "Num −", "UP": "Up Arrow",
}
DOCUMENTS = ("*.md", "docs/*.md")


def cells_of(row):
    return [cell.strip() for cell in row.strip().strip("|").split(" | ")]


def rows_of(text):
    """The rows of a text's tables, without their heads."""
    lines = text.splitlines()
    for at, line in enumerate(lines):
        is_head = at + 1 < len(lines) and lines[at + 1].startswith("|-")
        if line.startswith("|") and not line.startswith("|-") and not is_head:
            yield cells_of(line)


def chapter(manual, heading):
    found = re.search(rf"^## {heading}$(.*?)(?=^## |\Z)", manual, re.MULTILINE | re.DOTALL)
    if not found:
        raise SystemExit(f"docs/manual.md has no chapter {heading}")
    return found[1]


# Messages


def messages_in(manual):
    """The messages of the tables' first columns; a variable part is in *italics*, several in one cell have <br> between them."""
    for row in rows_of(chapter(manual, MESSAGES)):
        for text in row[0].split("<br>"):
            yield normal(re.sub(r"\*[^*]+\*", VARIABLE, text))


def check_messages(root, manual):
    shown = shown_texts(root)
    listed = set(messages_in(manual))
    for text in sorted(shown.keys() - NOT_MESSAGES - listed):
        where = ", ".join(sorted(shown[text]))
        yield f'the manual\'s {MESSAGES} do not tell of "{text}" ({where}); when it is no message, name it in tools/lint/shown_texts.py'
    yield from (f'the manual tells of "{text}", which no program shows' for text in sorted(listed - shown.keys()))
    yield from (f'tools/lint/shown_texts.py names "{text}", which is nowhere' for text in sorted(NOT_MESSAGES - shown.keys()))


# Keys


def command_numbers(root):
    """The commands by their names; those of the digits by the digit, too."""
    numbers = {name: int(number) for name, number in re.findall(r"(kCommand\w+) = (\d+)", (root / "panel/commands.h").read_text())}
    return numbers | {str(digit): numbers["kCommandDigit0"] + digit for digit in range(10)}


def shortcuts(root):
    """Command number to shortcut, for the commands that do something at a key of the keyboard."""
    numbers = command_numbers(root)
    table = (root / "shell/command_table.cpp").read_text()
    found = {numbers[digit]: digit for digit in re.findall(r"DigitRow<(\d)>\(\),", table)}
    row = r"\{(kCommand\w+)(?: \+ (\d+))?, (Plain|Control|Alt|Character)\('?(\w+|.)'?\), (.*)\},"
    for name, more, kind, key, action in re.findall(row, table):
        plain = key.removeprefix("VK_")
        if action != "Nothing":
            found[numbers[name] + int(more or 0)] = {"Control": "Ctrl+", "Alt": "Alt+"}.get(kind, "") + VIRTUAL_KEYS.get(plain, plain)
    return found


def key_rows(manual):
    """(picture, name, shortcut) of every key; several keys in one row have as many words in each cell."""
    for picture, name, shortcut, *_ in (row for row in rows_of(manual) if len(row) > 3):
        if picture.count("![") > 1:
            yield from zip(picture.split(), name.split(), shortcut.split())
        else:
            yield picture, name, shortcut


def check_keys(root, manual):
    sys.path.insert(0, str(root / "resources/art"))
    from layout import KEYS

    numbers, names, keys = command_numbers(root), dict(read_strings(root)), shortcuts(root)
    rows = set(key_rows(manual))
    buttons = {numbers[command]: string for command, string in read_buttons(root)}
    for command, string in buttons.items():
        name = re.sub(r" \([^)]*\)$", "", " ".join(names[str(string)].split()))
        _, _, width, height, sign = KEYS[command]
        row = (f"![{name}](keys/{sign}.png)", name, keys.get(command, NO_SHORTCUT))
        if row not in rows:
            yield f"the manual has no row | {' | '.join(row)} | ..."
        picture = root / f"docs/keys/{sign}.png"
        if not picture.exists() or Image.open(picture).size != (width * PICTURE_SCALE, height * PICTURE_SCALE):
            yield f"docs/keys/{sign}.png is not the picture of the key: run tools/manual/key_pictures.py"
    for command in keys.keys() - buttons.keys():
        if not any(row[0] == keys[command] for row in rows_of(manual)):
            yield f"the manual has no row for the keyboard's {keys[command]}"


# Words and links


def check_words(root, manual):
    remote = re.findall(r'\{"([^"]+)", kCommand', (root / "remote/key_names.h").read_text())
    usage = (root / "platform/drive/main.cpp").read_text() + (root / "platform/drive/card_commands.h").read_text()
    drive = re.findall(r'"(qvdrive (?:card )?[a-z-]+)', usage)
    yield from (f"the manual does not tell of qvremote's key {word}" for word in remote if f"`{word}`" not in manual)
    yield from (f"the manual does not tell of {words}" for words in drive if f"`{words}" not in manual)


def anchors(document):
    text = re.sub(r"```.*?```", "", document.read_text(), flags=re.DOTALL)
    for heading in re.findall(r"^#+ (.*)$", text, re.MULTILINE):
        yield re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")


def check_links(root):
    for document in sorted(path for pattern in DOCUMENTS for path in root.glob(pattern)):
        for target in re.findall(r"\]\(([^)\s]+)\)", document.read_text()):
            if re.match(r"\w+:", target):
                continue
            name, _, anchor = target.partition("#")
            there = document.parent / name if name else document
            if not there.exists() or (anchor and anchor not in anchors(there)):
                yield f"{document.relative_to(root)} points to {target}, which is not there"


def main():
    root = Path(sys.argv[1])
    manual = (root / "docs/manual.md").read_text()
    complaints = [*check_messages(root, manual), *check_keys(root, manual), *check_words(root, manual), *check_links(root)]
    print("\n".join(complaints) or "the manual tells of every message, key and word")
    sys.exit(1 if complaints else 0)


main()
