#!/usr/bin/python3
"""What is in the packages, looked at quickly, without packing or starting anything: the programs' headers, and the laid-out folders."""

import os
import re
import struct
import subprocess
import tempfile
import unittest
from pathlib import Path

from support import ROOT

os.environ.setdefault("SOURCE_DATE_EPOCH", "1700000000")

from contents import BIN, PROGRAMS, packages, source_time, version  # noqa: E402
from debian_package import stage_debian  # noqa: E402
from windows_package import stage_windows  # noqa: E402

HIGH_ENTROPY, DYNAMIC_BASE, NX_COMPAT = 0x20, 0x40, 0x100
IMPORTS, RELOCATIONS = 1, 5  # of the header's directories


class Program:
    """The header of a Windows program."""

    def __init__(self, path):
        self.bytes = path.read_bytes()
        header = struct.unpack_from("<I", self.bytes, 0x3C)[0]
        self.optional = header + 24
        _, sections, self.time, self.symbols, self.symbol_count, size, _ = struct.unpack_from("<HHIIIHH", self.bytes, header + 4)
        self.flags = struct.unpack_from("<H", self.bytes, self.optional + 70)[0]
        table = self.optional + size
        self.sections = [struct.unpack_from("<8sIIII", self.bytes, table + 40 * number) for number in range(sections)]

    def directory(self, number):
        """Address and size of a directory."""
        return struct.unpack_from("<II", self.bytes, self.optional + 112 + 8 * number)

    def place(self, address):
        """Where in the file an address is."""
        for _, size, start, _, raw in self.sections:
            if start <= address < start + size:
                return raw + address - start
        raise AssertionError(f"no section holds {address:#x}")

    def text(self, address):
        start = self.place(address)
        return self.bytes[start:self.bytes.index(b"\0", start)].decode()

    def imports(self):
        place, found = self.place(self.directory(IMPORTS)[0]), []
        while name := struct.unpack_from("<5I", self.bytes, place)[3]:
            found.append(self.text(name).lower())
            place += 20
        return found

    def address(self, symbol):
        """The address of a function, from the symbols."""
        names = self.symbols + 18 * self.symbol_count
        for number in range(self.symbol_count):
            raw, value, section = struct.unpack_from("<8sIh", self.bytes, self.symbols + 18 * number)
            start = names + struct.unpack("<I", raw[4:])[0] if raw[:4] == bytes(4) else None
            name = self.bytes[start:self.bytes.index(b"\0", start)] if start else raw.rstrip(b"\0")
            if name == symbol and section > 0:
                return self.sections[section - 1][2] + value
        raise AssertionError(f"no function {symbol}")

    def calls(self, function):
        """How many calls of a function there are."""
        name, size, start, _, raw = self.sections[0]
        code, target = self.bytes[raw:raw + size], self.address(function)
        return sum(1 for call in re.finditer(rb"\xe8(?=(....))", code, re.DOTALL)
                   if start + call.start() + 5 + struct.unpack("<i", call[1])[0] == target)


class Programs(unittest.TestCase):
    def test_all_that_is_built_is_packaged(self):
        self.assertEqual({path.name for path in BIN.iterdir() if path.suffix in (".exe", ".dll")}, set(PROGRAMS))

    def test_each_is_hardened_and_says_its_version(self):
        numbers = tuple(map(int, version().split(".")))
        for name in PROGRAMS:
            with self.subTest(name):
                program = Program(BIN / name)
                self.assertEqual(program.flags & (wanted := HIGH_ENTROPY | DYNAMIC_BASE | NX_COMPAT), wanted)
                self.assertGreater(program.directory(RELOCATIONS)[1], 0, "not movable without relocations")
                self.assertGreater(program.calls(b"__stack_chk_fail"), 0)
                self.assertEqual(program.time, 0, "the time of linking is in it")
                self.assertNotIn(str(ROOT).encode(), program.bytes)
                self.assertEqual([wanted for wanted in program.imports() if wanted.startswith("lib")], [])
                fixed = program.bytes.index(struct.pack("<I", 0xFEEF04BD))
                high, low = struct.unpack_from("<II", program.bytes, fixed + 8)
                self.assertEqual((high >> 16, high & 0xFFFF, low >> 16), numbers)

    def test_the_player_keeps_its_manifest_beside_the_version(self):
        self.assertIn(b"asInvoker", (BIN / "quorvex.exe").read_bytes())


class Folders(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="quorvex-files-")
        cls.addClassCleanup(folder.cleanup)
        cls.windows, cls.debian = Path(folder.name) / "windows", Path(folder.name) / "debian"
        stage_windows(cls.windows)
        stage_debian(cls.debian)

    def test_the_installer_installs_and_removes_what_there_is(self):
        script = (ROOT / "packaging/windows/installer.nsi").read_text()
        parts = re.findall(r'SERVER_SECTION "[^"]+" (\w+)', script)
        installed = set(re.findall(r'File "\$\{FILES\}\\([^"$]+)"', script)) | {f"qv{part}.dll" for part in parts}
        removed = set(re.findall(r'Delete "\$INSTDIR\\([^"$]+)"', script))
        removed |= {f"qv{part}.dll" for part in re.findall(r"insertmacro REMOVE_SERVER (\w+)", script)}
        self.assertEqual(installed, {path.name for path in self.windows.iterdir()})
        self.assertEqual(removed, installed | {"uninstall.exe"})
        self.assertEqual(set(re.findall(r"insertmacro CHOOSE (\w+)", script)), set(parts) | {"cd"})

    def test_every_library_has_its_notice_and_licence(self):
        notices = (self.windows / "THIRD-PARTY.txt").read_text()
        for words in ("ffmpeg_", "libdvdread_", "libdvdnav_", "GNU LESSER GENERAL PUBLIC LICENSE", "winpthreads", "GCC RUNTIME LIBRARY EXCEPTION"):
            self.assertIn(words, notices)

    def test_debian_depends_on_what_wine_needs(self):
        control = (self.debian / "DEBIAN/control").read_text()
        depends = re.search(r"^Depends: (.*)$", control, re.MULTILINE)[1].split(", ")
        self.assertEqual(depends, packages("packages_wine"))
        self.assertIn("wine64", depends)

    def test_debian_files_are_whole_and_of_the_sources_time(self):
        sums = subprocess.run(["md5sum", "--check", "--quiet", "DEBIAN/md5sums"], cwd=self.debian, capture_output=True, text=True)
        self.assertEqual((sums.returncode, sums.stdout), (0, ""))
        for path in self.debian.rglob("*"):
            self.assertEqual(int(path.lstat().st_mtime), source_time(), path)
            self.assertTrue(path.exists(), f"{path} leads nowhere")
            if not path.is_symlink():
                runs = path.is_dir() or path.name in ("quorvex", "prepare-prefix")
                self.assertEqual(path.stat().st_mode & 0o7777, 0o755 if runs else 0o644, path)

    def test_the_scripts_find_each_other_where_they_are_installed(self):
        for path in [self.debian / "usr/bin/quorvex", *(self.debian / "usr/lib/quorvex/wine").iterdir()]:
            if path.suffix == ".reg":
                continue
            self.assertEqual(subprocess.run(["bash", "-n", path]).returncode, 0, path)
            for wanted in re.findall(r"/usr/lib/quorvex[\w/.-]*", path.read_text()):
                self.assertTrue((self.debian / wanted[1:]).exists(), f"{path.name} wants {wanted}")


if __name__ == "__main__":
    unittest.main()
