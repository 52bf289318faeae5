#!/usr/bin/python3
"""An evening with the virtual TV card, as a user has it: opened from the menu, its channels worked with keys, its picture read off the screen."""

import subprocess
import unittest

from remote import POWER, ROOT, TESTS, drive, remote_control, wait_for, xdotool
from television import CONFIG, Television, brightness, colours, is_snow, osd, stored, write_stations


class TvSession(Television):
    def press(self, keys, number, text=None):
        """Presses keys; then the picture shows a number or another text, and the display the number."""
        xdotool("key", *keys.split())
        wait_for(lambda: osd() == [text or number], 4)
        self.remote.sees(lambda panel: panel.number(6) == number)

    def test_channels_inputs_and_the_picture(self):
        self.start()
        self.open_card()
        self.assertFalse(is_snow(), "channel 2 has a programme")
        self.assertEqual(self.remote.look().number(6), "2")
        self.assertEqual(self.remote.look().number(9), "69")

        self.press("Up", "3")
        wait_for(is_snow)
        self.press("Down Down", "69")
        self.press("2", "2", " 2")
        self.press("Return", "2")
        wait_for(lambda: not is_snow())
        self.press("ctrl+r", "69")
        self.press("Delete", "2")
        self.assertEqual(remote_control("state")["channels"], "67")
        self.press("6 9", "69")
        self.assertEqual(remote_control("state")["channels"], "67", "it can be watched without being in the list")
        xdotool("key", "Insert")
        wait_for(lambda: remote_control("state")["channels"] == "68")
        self.press("Delete", "2")
        self.press("1", "1", " 1")
        self.remote.sees(lambda panel: panel.number(6) == "2", 6)  # nothing more was typed

        normal = brightness()
        remote_control("key", "picture", *["right"] * 6)
        wait_for(lambda: brightness() > normal * 1.1)
        remote_control("key", *["left"] * 6)
        wait_for(lambda: abs(brightness() - normal) < normal * 0.05)

        tuner = colours()
        xdotool("key", "ctrl+v")
        wait_for(lambda: colours() != tuner and "CHANNEL" not in self.remote.look().lamps())
        wait_for(lambda: osd() == ["VIDEO 1"], 4)
        self.assertEqual(remote_control("state")["input"], "VIDEO 1")
        self.assertEqual(drive("card", "status")["input"], "0")
        self.assertEqual(stored("VideoInputType"), "1")
        self.press("ctrl+v ctrl+v", "2", "ANTENNA 2")
        self.remote.click(POWER)
        self.assertEqual(self.remote.ended(), 0)
        self.assertEqual(stored("LastDevice"), "1")
        self.assertEqual(stored("LastChannel"), "2")
        self.assertEqual(stored("VideoInputType"), "0")
        self.assertEqual(stored("AntennaChannelList"), "".join(f"{channel} " for channel in range(2, 69)))

    def test_an_auto_tune_that_is_killed_leaves_the_old_list(self):
        write_stations("antenna 3 THREE\nantenna 11 ELEVEN\nantenna 60 SIXTY")
        self.addCleanup(write_stations, "")
        CONFIG.write_bytes(b"[TV]\r\nAntennaChannelList=2 4 5 \r\n")
        before = CONFIG.read_bytes()
        run = subprocess.Popen([ROOT / "tools" / "in-wine", TESTS / "tuner_run.exe", "60"], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL)
        self.addCleanup(run.kill)
        wait_for(lambda: drive("card", "status")["channel"] == "60", 30)
        run.kill()
        run.wait()
        self.assertIn(b"AntennaChannelList=2 4 5 \r\n", CONFIG.read_bytes())
        CONFIG.write_bytes(before)
        subprocess.run([ROOT / "tools" / "in-wine", TESTS / "tuner_run.exe"], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL, check=True, timeout=60)
        self.assertEqual(stored("AntennaChannelList"), "3 11 60 ")
        self.assertEqual(stored("LastChannel"), "3")


if __name__ == "__main__":
    unittest.main(verbosity=2)
