"""Damaged discs, from a small sound one. The data files are hard links wherever they are not changed.

A variant is DAMAGED/NAME/VIDEO_TS, or DAMAGED/NAME.iso."""
import os
import shutil
import subprocess


def resize(name, keep):
    def act(folder):
        path = folder / name
        data = path.read_bytes()
        path.unlink()
        path.write_bytes(data[:int(len(data) * keep)])
    return act


def zero(name, start=0.0, end=1.0):
    def act(folder):
        path = folder / name
        data = bytearray(path.read_bytes())
        first, last = int(len(data) * start), int(len(data) * end)
        data[first:last] = bytes(last - first)
        path.unlink()
        path.write_bytes(data)
    return act


def swap(one, other):
    def act(folder):
        (folder / one).rename(folder / "swapped")
        (folder / other).rename(folder / one)
        (folder / "swapped").rename(folder / other)
    return act


def remove(pattern):
    def act(folder):
        for path in folder.glob(pattern):
            path.unlink()
    return act


def count_streams(*counts):
    """Writes the numbers of sounds and subtitles, of menus and titles, into the table of all sets' streams."""
    def act(folder):
        for name in ("VIDEO_TS.IFO", "VIDEO_TS.BUP"):
            path = folder / name
            data = bytearray(path.read_bytes())
            table = int.from_bytes(data[0xD0:0xD4], "big") * 2048
            for index in range(int.from_bytes(data[table:table + 2], "big")):
                streams = table + int.from_bytes(data[table + 8 + 4 * index:table + 12 + 4 * index], "big") + 8
                for place, count in zip((0x02, 0x54, 0x102, 0x154), counts):
                    data[streams + place:streams + place + 2] = count.to_bytes(2, "big")
            path.unlink()
            path.write_bytes(data)
    return act


# A disc whose IFO alone is damaged has its copy (BUP) to be read instead.
VARIANTS = {
    "ifo_cut": [resize("VTS_01_0.IFO", 0.3)],
    "ifo_and_copy_cut": [resize("VTS_01_0.IFO", 0.3), resize("VTS_01_0.BUP", 0.3)],
    "ifo_zeroed": [zero("VTS_01_0.IFO"), zero("VTS_01_0.BUP")],
    "ifo_tables_zeroed": [zero("VTS_01_0.IFO", 0.4), zero("VTS_01_0.BUP", 0.4)],
    "manager_cut": [resize("VIDEO_TS.IFO", 0.1), resize("VIDEO_TS.BUP", 0.1)],
    "manager_zeroed": [zero("VIDEO_TS.IFO"), zero("VIDEO_TS.BUP")],
    "manager_tables_zeroed": [zero("VIDEO_TS.IFO", 0.15), zero("VIDEO_TS.BUP", 0.15)],
    "ifo_swapped": [swap("VIDEO_TS.IFO", "VTS_01_0.IFO"), swap("VIDEO_TS.BUP", "VTS_01_0.BUP")],
    "copies_only": [remove("*.IFO")],
    "no_copies": [remove("*.BUP")],
    "vob_cut": [resize("VTS_01_1.VOB", 0.4)],
    "vob_empty": [resize("VTS_01_1.VOB", 0)],
    "vob_missing": [remove("VTS_01_1.VOB")],
    "vob_zeroed": [zero("VTS_01_1.VOB", 0.2, 0.4)],
    "too_many_streams": [count_streams(0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF)],
    "no_streams": [count_streams(0, 0, 0, 0)],
    "set_missing": [remove("VTS_02*")],
    "empty": [remove("*")],
}


def make(sound, folder):
    for name, acts in VARIANTS.items():
        target = folder / name / "VIDEO_TS"
        shutil.copytree(sound / "VIDEO_TS", target, copy_function=os.link)
        for act in acts:
            act(target)
    data = folder / "data"
    data.mkdir()
    (data / "readme.txt").write_text("There is no film on this disc.\n")
    make_image(data, folder / "data.iso")
    make_image(sound, folder / "cut.iso")
    os.truncate(folder / "cut.iso", (folder / "cut.iso").stat().st_size // 2)
    (folder / "empty.iso").write_bytes(b"")
    (folder / "text.iso").write_text("This is no disc image.\n" * 1000)


def make_image(source, path):
    subprocess.run(["genisoimage", "-quiet", "-udf", "-V", "QUORVEX", "-o", path, source], check=True, stderr=subprocess.DEVNULL)
