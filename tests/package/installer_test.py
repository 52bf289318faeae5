#!/usr/bin/python3
"""installer_test.py SETUP: the installer for Windows, in a Wine prefix of its own: installed, used, brought up to date while Quorvex runs,
given other parts, removed. What was there before is there again afterwards, and what the user has stays."""

import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from support import end_environment, environment, make_song, wait_for

from contents import PROGRAMS, version
from windows_package import stage_windows, write_installer

SETUP = Path(sys.argv.pop(1)).absolute()
DVD_CLASS = r"HKLM\Software\Classes\CLSID\{FCC152B7-F372-11D0-8E00-00C04FD7C08B}\InprocServer32"
MEDIA_CLASSES = r"Software\Classes\Media Type\{e436eb83-524f-11ce-9f53-0020af0ba770}\{f3b1a0c6-8d52-4a6e-9c07-2f6d1be4a95d}"
UNINSTALL = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Quorvex"
# What the platform leaves when the last filter of a kind goes: its list of sound renderers, empty.
PLATFORM_LEFT = r"[HKEY_LOCAL_MACHINE\Software\Classes\CLSID\{E0F158E1-CB04-11D0-BD4E-00A0C911CE86}\Instance]"
STORES = {"quorvex.ini": "[QUORVEX]\r\nAutoStartDevice=0\r\n[MINE]\r\nKept=yes\r\n", "cd.abm": "[CD List]\r\nNumber of CDs=0\r\n",
          "mfiles.abm": "[Album List]\r\nNumber of albums=0\r\n"}


class Installer(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = Path(tempfile.mkdtemp(prefix="quorvex-installer-"))
        cls.env = environment() | {"WINEPREFIX": str(cls.folder / "wine")}
        cls.addClassCleanup(cls.end)
        cls.windows = cls.folder / "wine/drive_c/windows"
        cls.wine("wineboot", "-i")
        cls.wine("reg", "add", r"HKCU\Software\Classes")  # Windows always has it
        user = next(path for path in (cls.folder / "wine/drive_c/users").iterdir() if path.name != "Public")
        cls.target = user / "AppData/Local/Programs/Quorvex"
        cls.menu = user / "AppData/Roaming/Microsoft/Windows/Start Menu/Programs/Quorvex"
        cls.older = cls.folder / "Quorvex-older.exe"
        stage_windows(cls.folder / "files")
        write_installer(cls.folder / "files", cls.older, "VERSION=0.9.0", "QUICK=1")

    @classmethod
    def end(cls):
        subprocess.run(["wineserver", "-k"], env=cls.env)
        subprocess.run(["wineserver", "-w"], env=cls.env)
        end_environment()
        shutil.rmtree(cls.folder)

    @classmethod
    def wine(cls, *command):
        """Runs a Windows program to its end; returns its exit code and what it said. A file takes its output: what it starts may hold on to it."""
        with tempfile.TemporaryFile("w+b") as said:
            code = subprocess.run(["wine", *map(str, command)], env=cls.env, stdin=subprocess.DEVNULL, stdout=said, stderr=subprocess.DEVNULL).returncode
            said.seek(0)
            return code, said.read().decode(errors="replace").replace("\r", "")

    def install(self, setup, *options):
        self.assertEqual(self.wine(setup, "/S", *options)[0], 0, setup)

    def registered(self, key, name=None):
        """A value of the registry, or None."""
        code, said = self.wine("reg", "query", key, *(["/v", name] if name else ["/ve"]))
        return said.split("REG_SZ", 1)[1].strip() if code == 0 else None

    def registry(self):
        """What installing may change, in blocks of a key and its values: all classes, and what is Quorvex's own."""
        found = set()
        for key in (r"HKEY_LOCAL_MACHINE\Software\Classes", r"HKEY_LOCAL_MACHINE\Software\Quorvex", r"HKEY_CURRENT_USER\Software\Classes",
                    r"HKEY_CURRENT_USER\Software\Quorvex", UNINSTALL.replace("HKCU", "HKEY_CURRENT_USER")):
            target = self.folder / "registry.reg"
            target.unlink(missing_ok=True)
            self.wine("regedit", "/E", f"Z:{target}", key)
            found |= set(target.read_text("utf-16").split("\n\n")) if target.exists() else {f"no {key}"}
        return found

    def drivers(self):
        return {line for line in (self.windows / "system.ini").read_text().splitlines() if "=" in line}

    def parts(self):
        return sorted(path.name for path in self.target.glob("qv*.dll"))

    def remote(self, *words):
        code, said = self.wine(self.target / "qvremote.exe", *words)
        return said if code == 0 else ""

    def test_a_whole_life(self):
        before, drivers = self.registry(), self.drivers()
        for name, text in STORES.items():
            (self.windows / name).write_bytes(text.encode())

        with self.subTest("installed"):
            self.install(self.older)
            self.assertEqual(sorted(path.name for path in self.target.iterdir()),
                             sorted([*PROGRAMS, "README.html", "manual.html", "LICENSE.txt", "THIRD-PARTY.txt", "uninstall.exe"]))
            self.assertEqual(self.registered(UNINSTALL, "DisplayVersion"), "0.9.0")
            self.assertTrue((self.menu / "Quorvex.lnk").exists())
            self.assertTrue(self.registered(DVD_CLASS).endswith(r"Programs\Quorvex\qvdvd.dll"))
            self.assertIn("qvcd.dll", (self.windows / "system.ini").read_text())

        with self.subTest("used"):
            song = make_song(self.folder / "song.wav")
            self.assertEqual(self.wine(self.target / "qvremote.exe", "open", song)[0], 0)
            wait_for(lambda: "state=playing" in self.remote("state"))

        with self.subTest("brought up to date while it runs, with other parts"):
            self.install(SETUP, "/PARTS=media,cd")
            self.assertEqual(self.remote("state"), "", "Quorvex was not closed")
            self.assertEqual(self.registered(UNINSTALL, "DisplayVersion"), version())
            self.assertEqual(self.parts(), ["qvcd.dll", "qvmedia.dll"])
            self.assertNotIn("Quorvex", self.registered(DVD_CLASS))

        with self.subTest("installed again: the parts stay"):
            self.install(SETUP)
            self.assertEqual(self.parts(), ["qvcd.dll", "qvmedia.dll"])
            self.assertIsNotNone(self.registered("HKLM\\" + MEDIA_CLASSES, "Source Filter"))

        with self.subTest("for the user only, in another folder"):
            elsewhere = self.folder / "wine/drive_c/My Quorvex"
            self.install(SETUP, "/PARTS=media", "/CLASSES=user", r"/D=C:\My", "Quorvex")  # the blank must not be quoted
            self.assertFalse(self.target.exists())
            self.assertTrue((elsewhere / "quorvex.exe").exists())
            self.assertIsNotNone(self.registered("HKCU\\" + MEDIA_CLASSES, "Source Filter"))
            self.assertIsNone(self.registered("HKLM\\" + MEDIA_CLASSES, "Source Filter"))

        with self.subTest("removed"):
            (elsewhere / "mine.txt").write_text("mine")
            self.assertEqual(self.wine(elsewhere / "uninstall.exe", "/S")[0], 0)
            wait_for(lambda: [path.name for path in elsewhere.iterdir()] == ["mine.txt"])
            wait_for(lambda: self.registered(UNINSTALL, "DisplayVersion") is None)
            self.assertFalse(self.menu.exists())
            after = self.registry()
            self.assertEqual(before - after, set())
            self.assertEqual(after - before - {PLATFORM_LEFT}, set())
            self.assertEqual(self.drivers(), drivers)
            self.assertIn("Kept=yes", (self.windows / "quorvex.ini").read_text())
            for name in ("cd.abm", "mfiles.abm"):  # what was played has come behind
                self.assertTrue((self.windows / name).read_bytes().startswith(STORES[name].encode()), name)


if __name__ == "__main__":
    unittest.TestCase.maxDiff = None
    unittest.main()
