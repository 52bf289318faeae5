#!/usr/bin/python3
"""What lies over television and what changes it: captions, the sound keys, the controls of the picture."""

import unittest

from PIL import ImageStat

from remote import MUTE, SOUND, remote_control, video_frame, wait_for, wait_until_equal, xdotool
from sound_keys_test import Area, bar_of, loudness, screen, steady_loudness
from television import CONFIG, MARGIN, Television, brightness, caption_row, colours, is_grey, osd, picture, stored


class TvPicture(Television):
    SETTINGS = b"[TV]\r\nLastChannel=5\r\n"

    def bar(self):
        x, y, width, height = video_frame()
        return Area(x + MARGIN[0], y + MARGIN[1], width - 30, height - 24).bar(screen())

    def sees_bar(self, title, level):
        """Waits for the bar of a control, which goes by itself after a while; other texts may be up still."""
        wait_until_equal(lambda: ({title} & set(osd()), self.bar()), ({title}, bar_of(level)), 3)

    def test_captions_are_opaque_or_transparent(self):
        self.start()
        self.open_card()
        wait_for(lambda: caption_row()[0] < 0.02, 8)
        xdotool("key", "ctrl+c")
        self.remote.sees(lambda panel: "CC" in panel.lamps())
        wait_for(lambda: caption_row()[0] > 0.4 and caption_row()[1] > 0.01, 15)
        xdotool("key", "ctrl+c")
        self.remote.sees(lambda panel: "CC" not in panel.lamps())
        wait_for(lambda: caption_row()[0] < 0.02)
        xdotool("key", "ctrl+c")
        remote_control("key", "close")
        self.assertEqual((stored("ClosedCaption"), stored("CCOpaque")), ("1", "1"))

        CONFIG.write_text(CONFIG.read_text().replace("CCOpaque=1", "CCOpaque=0"))
        self.open_card()
        self.remote.sees(lambda panel: "CC" in panel.lamps())
        # Letters with an outline.
        wait_for(lambda: 0.02 < caption_row()[0] < 0.4 and caption_row()[1] > 0.01, 15)
        remote_control("key", "close")
        self.assertEqual((stored("ClosedCaption"), stored("CCOpaque")), ("1", "0"))

    def test_the_sound_keys_work_on_television(self):
        self.start()
        self.open_card()
        full = steady_loudness(1500)
        self.remote.click(SOUND)
        self.sees_bar("VOLUME", 31)
        xdotool("key", "--delay", 30, *["Left"] * 16)
        self.sees_bar("VOLUME", 16)
        wait_for(lambda: full * 0.2 < loudness() < full * 0.7)
        wait_for(lambda: osd() == [], 8)  # the bar goes by itself
        remote_control("key", "sound", *["right"] * 16)
        wait_for(lambda: loudness() > full * 0.9)
        wait_for(lambda: osd() == [], 8)  # the arrow keys are the channels' again
        self.remote.click(MUTE)
        self.remote.sees(lambda panel: "MUTE" in panel.lamps())
        wait_for(lambda: loudness() == 0)
        xdotool("key", "Up")
        self.remote.sees(lambda panel: panel.number(6) == "6")
        self.assertIn("MUTE", self.remote.look().lamps(), "a change of channel leaves the sound off")
        self.remote.click(MUTE)
        wait_for(lambda: loudness() > 0)

    def test_the_controls_change_the_picture(self):
        """Each of the four, by twelve steps of its bar and back."""
        self.start()
        self.open_card()
        wait_for(lambda: osd() == [], 8)
        normal = colours()

        def difference():
            return max(abs(one - other) for now, usual in zip(colours(), normal) for one, other in zip(now, usual))

        def spread():
            return sum(ImageStat.Stat(picture()).stddev)

        usual_spread, usual_brightness = spread(), brightness()
        changes = {"BRIGHTNESS": lambda: brightness() < usual_brightness * 0.6, "CONTRAST": lambda: spread() < usual_spread * 0.6,
                   "HUE": lambda: difference() > 60 and abs(brightness() - usual_brightness) < usual_brightness * 0.25,
                   "COLOR": lambda: difference() > 40 and not is_grey(colours())}
        for step, (title, has_changed) in enumerate(changes.items()):
            show = ["picture", *["up"] * step]
            remote_control("key", *show, *["left"] * 12)
            self.sees_bar(title, 4)
            wait_for(has_changed)
            wait_for(lambda: osd() == [], 8)  # the bar goes by itself
            remote_control("key", *show, *["right"] * 12)
            self.sees_bar(title, 16)
            wait_for(lambda: osd() == [], 8)
            wait_for(lambda: difference() < 12)
        remote_control("key", "picture", *["up"] * 3, *["left"] * 16)
        wait_for(lambda: is_grey(colours()))


if __name__ == "__main__":
    unittest.main(verbosity=2)
