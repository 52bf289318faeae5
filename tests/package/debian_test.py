#!/usr/bin/python3
"""debian_test.py PACKAGE: the Debian package in a fresh Debian 12, made by debootstrap: installed with what it depends on, used by a user who
has nothing yet, brought up to date, removed. Must run as root. What is downloaded stays in build/package-test."""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

from support import ROOT, end_environment, environment, make_song, wait_for

CACHE = ROOT / "build" / "package-test"
PACKAGE = Path(sys.argv.pop(1)).absolute()
# The chroot has a mount table of its own, which goes with the command.
ENTER = """mount -t proc proc "$0/proc" && mount --rbind /dev "$0/dev" && mount --bind "$1" "$0/var/cache/apt/archives" &&
mkdir -p "$0/tmp/.X11-unix" && mount --bind /tmp/.X11-unix "$0/tmp/.X11-unix" && new=$0 && shift && exec chroot "$new" "$@" """
USER = ["setpriv", "--reuid=1000", "--regid=1000", "--clear-groups", "env", "-i", "HOME=/home/tester", "PATH=/usr/bin:/bin", "PULSE_SERVER=unix:/tmp/sound"]
EXTENSIONS = re.compile(r'L"(\.\w+)"')
OTHER_EXTENSIONS = [".cue", ".iso", ".nrg", ".toc", ".m3u", ".m3u8", ".mid"]


class DebianPackage(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.root = Path(tempfile.mkdtemp(prefix="quorvex-debian-"))
        cls.root.chmod(0o755)
        cls.addClassCleanup(shutil.rmtree, cls.root)
        (CACHE / "archives" / "partial").mkdir(parents=True, exist_ok=True)
        tarball = CACHE / "debian.tgz"
        bootstrap = ["debootstrap", "--variant=minbase"]
        if not tarball.exists():
            subprocess.run([*bootstrap, f"--make-tarball={tarball}", "bookworm", cls.root / "download"], check=True, stdout=subprocess.DEVNULL)
        subprocess.run([*bootstrap, f"--unpack-tarball={tarball}", "bookworm", cls.root], check=True, stdout=subprocess.DEVNULL)
        shutil.copy("/etc/resolv.conf", cls.root / "etc/resolv.conf")
        (cls.root / "etc/apt/apt.conf.d/90test").write_text('APT::Install-Recommends "no";\nAPT::Sandbox::User "root";\n'
                                                            'Binary::apt-get::APT::Keep-Downloaded-Packages "true";\n')
        cls.apt("update")
        cls.apt("install", "-y", "desktop-file-utils", "shared-mime-info", "man-db", "pulseaudio")
        cls.inside("useradd", "--uid", "1000", "--create-home", "tester")
        cls.home = cls.root / "home" / "tester"
        cls.data = cls.home / ".local/share/quorvex"
        cls.started = []
        cls.addClassCleanup(cls.end)
        cls.display = environment()["DISPLAY"]
        cls.start("pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--load=module-native-protocol-unix socket=/tmp/sound auth-anonymous=1",
                  "--load=module-null-sink sink_name=sink rate=44100 norewinds=1")

    @classmethod
    def end(cls):
        cls.as_user("wineserver", "-k")
        for process in cls.started:
            process.terminate()
            process.wait()
        end_environment()

    @classmethod
    def command(cls, *words):
        return ["unshare", "--mount", "sh", "-c", ENTER, cls.root, CACHE / "archives", *words]

    @classmethod
    def inside(cls, *words):
        """Runs a command in the fresh Debian; returns what it said. A file takes its output: what it starts may hold on to it."""
        with tempfile.TemporaryFile("w+b") as said:
            done = subprocess.run(cls.command("env", "DEBIAN_FRONTEND=noninteractive", "LC_ALL=C.UTF-8", *words), stdin=subprocess.DEVNULL, stdout=said,
                                  stderr=subprocess.STDOUT)
            said.seek(0)
            text = said.read().decode(errors="replace")
        if done.returncode:
            raise AssertionError(f"{' '.join(words)}: {done.returncode}\n{text[-3000:]}")
        return text

    @classmethod
    def apt(cls, *words):
        return cls.inside("apt-get", "-q", *words)

    @classmethod
    def user_words(cls, words):
        return cls.command(*USER, f"DISPLAY={cls.display}", *words)

    @classmethod
    def as_user(cls, *words):
        """Runs a user's command to its end; returns its exit code and what it wrote on standard output."""
        with tempfile.TemporaryFile("w+b") as said:
            code = subprocess.run(cls.user_words(words), stdin=subprocess.DEVNULL, stdout=said, stderr=subprocess.DEVNULL, timeout=300).returncode
            said.seek(0)
            return code, said.read().decode(errors="replace").replace("\r", "")

    @classmethod
    def start(cls, *words):
        """Starts a user's command that goes on."""
        process = subprocess.Popen(cls.user_words(words), stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        cls.started.append(process)
        return process

    def screen(self, *words):
        """Works the screen with xdotool; returns what that said."""
        return subprocess.run(["xdotool", *words], env=os.environ | {"DISPLAY": self.display}, capture_output=True, text=True).stdout

    def state(self):
        code, said = self.as_user("qvremote", "state")
        return dict(line.split("=", 1) for line in said.splitlines()) if code == 0 else {}

    def plays(self, title):
        wait_for(lambda: (state := self.state()).get("state") == "playing" and title in state.get("title", ""))

    def song(self, name):
        make_song(self.home / name)
        return f"/home/tester/{name}"

    def disc(self):
        with open(self.home / "disc.bin", "wb") as image:
            image.truncate(75 * 60 * 2352)
        (self.home / "disc.cue").write_text('FILE "disc.bin" BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\n')
        return "/home/tester/disc.cue"

    def install(self, package):
        shutil.copy(package, self.root / "tmp" / "quorvex.deb")
        self.apt("install", "-y", "--allow-downgrades", "/tmp/quorvex.deb")

    def newer(self):
        """The package as of a later version, with programs of a later time."""
        tree = self.root / "newer"
        subprocess.run(["dpkg-deb", "--raw-extract", PACKAGE, tree], check=True)
        control = tree / "DEBIAN/control"
        control.write_text(re.sub(r"^Version: .*$", "Version: 99", control.read_text(), flags=re.MULTILINE))
        for program in (tree / "usr/lib/quorvex/bin").iterdir():
            os.utime(program, (program.stat().st_mtime + 60,) * 2)
        made = self.root / "newer.deb"
        subprocess.run(["dpkg-deb", "-Znone", "--root-owner-group", "--build", tree, made], check=True, stdout=subprocess.DEVNULL)
        return made

    def close(self, player):
        self.assertEqual(self.as_user("qvremote", "key", "power")[0], 0)
        self.assertEqual(player.wait(60), 0)

    def check_menu_and_files(self):
        entry = "/usr/share/applications/quorvex.desktop"
        self.inside("desktop-file-validate", entry)
        types = re.search(r"^MimeType=(.*)$", (self.root / entry[1:]).read_text(), re.MULTILINE)[1].split(";")
        known = [line.split(":")[1:3] for line in (self.root / "usr/share/mime/globs2").read_text().splitlines() if not line.startswith("#")]
        table = (ROOT / "platform/media/file_types.cpp").read_text()
        for extension in EXTENSIONS.findall(table) + OTHER_EXTENSIONS:
            kinds = {kind for kind, pattern in known if pattern == f"*{extension}"}
            if extension != ".dat":  # anybody's
                self.assertTrue(kinds & set(types), f"{extension}: {kinds}")
        self.assertIn("quorvex.desktop", (self.root / "usr/share/applications/mimeinfo.cache").read_text())
        self.assertEqual(self.inside("env", "MANWIDTH=80", "man", "--warnings", "-P", "cat", "qvdrive").count("warning"), 0)

    def test_a_whole_life(self):
        with self.subTest("installed"):
            self.install(PACKAGE)
            self.check_menu_and_files()
        with self.subTest("first start, with a file"):
            begun = time.monotonic()
            player = self.start("quorvex", self.song("one.wav"))
            self.plays("one")
            print(f"from the command to the sound, first start: {time.monotonic() - begun:.0f} s")
        with self.subTest("files for the one that runs"):
            self.assertEqual(self.as_user("quorvex", self.song("two.wav"), self.song("three.wav"))[0], 0)
            self.plays("two")
            self.assertEqual(self.as_user("quorvex", self.disc())[0], 0)
            wait_for(lambda: self.state().get("device") == "cd")
        with self.subTest("a file that does not exist, from a menu"):
            failed = self.start("quorvex", "/home/tester/nothing.wav")
            box = wait_for(lambda: self.screen("search", "--onlyvisible", "--class", "xmessage").split())[0]
            height = int(re.search(r"HEIGHT=(\d+)", self.screen("getwindowgeometry", "--shell", box))[1])
            click = ("mousemove", "--window", box, "20", str(height - 14), "sleep", "0.5", "click", "1")
            wait_for(lambda: self.screen(*click) is None or failed.poll() is not None)
            self.assertEqual(failed.wait(), 2)
        with self.subTest("closed"):
            self.close(player)
            store = self.data / "wine/drive_c/windows/quorvex.ini"
            store.write_bytes(store.read_bytes() + b"[MINE]\r\nKept=yes\r\n")
        with self.subTest("brought up to date"):
            self.install(self.newer())
            player = self.start("quorvex", "/home/tester/one.wav")
            self.plays("one")
            self.close(player)
            self.assertIn(b"Kept=yes", store.read_bytes())
        with self.subTest("removed"):
            self.apt("purge", "-y", "quorvex")
            left = self.inside("find", "/usr", "/etc", "-iname", "*quorvex*", "-o", "-name", "qvdrive*")
            self.assertEqual(left, "")
            self.assertIn(b"Kept=yes", store.read_bytes())


if __name__ == "__main__":
    unittest.main()
