// The DVD device's choice of streams and its captions.
#include "tests/support/dvd_panel.h"

namespace quorvex {
namespace {

using DvdStreamsTest = DvdTest;

TEST_F(DvdStreamsTest, StreamsAreListedByTheirLanguages) {
  dvd.tracks = {{0x0409, "xx"}, {0, "DE"}, {0, "IT"}};
  dvd.track = 2;
  dvd.subtitles = {{0x0409, "xx"}, {0x040C, "xx"}};
  Open();
  EXPECT_EQ(StreamMenu(),
            "&Audio Tracks:\n  English 1350\n  German 1351\n  Unknown checked 1352\n"
            "&Subtitles:\n  No Subtitles checked 1300\n  English 1301\n  French 1302\n");
  EXPECT_EQ(dvd.Take(),
            "SubpictureStreamChange 0 0\nAudioStreamChange 1\nAudioStreamChange 2\nAudioStreamChange 2\n")
      << "only nameless streams are switched to, and the current ones come back";
  dvd.subtitles = {};
  EXPECT_EQ(StreamMenu(),
            "&Audio Tracks:\n  English 1350\n  German 1351\n  Unknown checked 1352\n"
            "&Subtitles:\n  No Subtitles greyed 1300\n");
}

TEST_F(DvdStreamsTest, StreamsWithoutAnAnswerAreUnknownOrLeftOut) {
  dvd.tracks = {{0x0409, "xx"}, {0, "fr"}};
  dvd.subtitles = {{0x0413, "sv"}, {0x7C00, "es"}};
  Open();
  dvd.answers = {{"AudioStreamChange", E_FAIL}, {"GetSubpictureLanguage", E_FAIL}};
  EXPECT_EQ(StreamMenu(),
            "&Audio Tracks:\n  English checked 1350\n  Unknown 1351\n"
            "&Subtitles:\n  No Subtitles checked 1300\n  Swedish 1301\n  Spanish 1302\n");
  dvd.answers = {{"GetCurrentSubpictureAttributes", E_FAIL}};
  EXPECT_NE(StreamMenu().find("  Dutch 1301\n  Unknown 1302\n"), std::string::npos)
      << "a locale that the platform does not know";
  dvd.answers = {{"GetCurrentAudio", E_FAIL}, {"GetCurrentSubpicture", E_FAIL}};
  EXPECT_EQ(StreamMenu(), "&Audio Tracks:\n&Subtitles:\n  No Subtitles greyed 1300\n");
  dvd.answers.clear();
  dvd.subtitles.assign(200, {0x0409, "en"});
  EXPECT_EQ(StreamMenu().find("1350\n", 60), std::string::npos) << "no more than there are commands for";
}

TEST_F(DvdStreamsTest, ChoicesStayUntilTheNavigatorTakesOthers) {
  dvd.tracks = {{0x0409, "xx"}, {0x0407, "xx"}};
  dvd.subtitles = {{0x0409, "xx"}, {0x040C, "xx"}};
  Open();
  {
    MenuReader menus({VK_DOWN, VK_DOWN, VK_RIGHT, VK_DOWN, VK_DOWN, VK_RETURN});
    Press(kCommandStreamMenu);
    dvd.Take();
    EXPECT_TRUE(PumpUntil([&] { return !dvd.log.empty(); }));
    EXPECT_EQ(dvd.Take(), "SubpictureStreamChange 1 1\n") << "French, chosen from the menu";
  }
  EXPECT_EQ(LogOf(1351), "AudioStreamChange 1\n");
  EXPECT_EQ(StreamMenu(),
            "&Audio Tracks:\n  English 1350\n  German checked 1351\n"
            "&Subtitles:\n  No Subtitles 1300\n  English 1301\n  French checked 1302\n");
  EXPECT_EQ(dvd.Take(), "SubpictureStreamChange 1 1\nAudioStreamChange 1\n");
  dvd.answers = {{"SubpictureStreamChange", E_FAIL}, {"AudioStreamChange", E_FAIL}};
  EXPECT_FALSE(Device().SelectSubtitle(1300));
  EXPECT_FALSE(Device().SelectSubtitle(1301));
  EXPECT_FALSE(Device().SelectAudioTrack(1350));
  dvd.answers.clear();
  EXPECT_NE(StreamMenu().find("French checked"), std::string::npos);
  EXPECT_EQ(LogOf(1300), "SubpictureStreamChange 1 0\n") << "the stream stays";
  EXPECT_NE(StreamMenu().find("No Subtitles checked 1300\n  English 1301\n  French 1302\n"),
            std::string::npos);
}

TEST_F(DvdStreamsTest, NewSettingsChangeTheBackgroundOnly) {
  Open("ClosedCaption=1\r\n");
  stores.Write("quorvex.ini", "[DVD]\r\nClosedCaption=0\r\nCCOpaque=1\r\n");
  Device().LoadSettings();
  EXPECT_EQ(dvd.Take(), "SetServiceState 1\nSetDrawBackgroundMode 0\n");
}

TEST_F(DvdStreamsTest, WithoutADecoderThereAreNoCaptions) {
  dvd.hasCaptions = false;
  Open("ClosedCaption=1\r\n");
  Press(kCommandClosedCaption);
  EXPECT_FALSE(Device().captionsOn);
  EXPECT_EQ(Shown(kCaptionLamp), 0);
  EXPECT_FALSE(IsLit(kCommandClosedCaption));
}

}  // namespace
}  // namespace quorvex
