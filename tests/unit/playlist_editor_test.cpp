#include "devices/cd/playlist_editor.h"

#include <gtest/gtest.h>

#include <numeric>

#include "base/text.h"

namespace quorvex {
namespace {

constexpr char kStore[] =
    "[D]\r\nTitle=Old\r\nArtist=Band\r\n1=One\r\n2=\" Two \"\r\n02=not a track\r\n2=second\r\n"
    "mine=kept\r\nPlaylist=9 1 \r\n";

// A disc of 3:20, 100:05 and 0:00, which has names for two of its tracks.
class PlaylistEditorTest : public testing::Test {
 protected:
  [[nodiscard]] std::string Saved(const DiscNames& entered) {
    editor.Save(store, entered);
    return store.Text();
  }
  [[nodiscard]] std::string Stored(const std::string& key) const {
    return std::string(store.Find("D", key).value_or("(none)"));
  }

  IniDocument store{kStore};
  PlaylistEditor editor{store, "D", {"Old", "Band"}, std::vector{200, 6005, 0}, "Track"};
};

TEST(FormatTotalTime, MinutesUpToNinetyNineThenHours) {
  const std::pair<int, const char*> cases[] = {{0, "0:00 (min:sec)"},
                                               {59, "0:59 (min:sec)"},
                                               {605, "10:05 (min:sec)"},
                                               {98 * 60 + 59, "98:59 (min:sec)"},
                                               {99 * 60, "1:39:00 (hr:min:sec)"},
                                               {36605, "10:10:05 (hr:min:sec)"}};
  for (const auto& [seconds, text] : cases)
    EXPECT_EQ(FormatTotalTime(seconds, "min:sec", "hr:min:sec"), text);
}

TEST_F(PlaylistEditorTest, TracksAreShownWithLengthAndName) {
  const std::pair<int, const char*> cases[] = {{1, "(03:20) One"},      {2, "(100:05)  Two "},
                                               {3, "(00:00) "},         {4, "(--:--) Track 04"},
                                               {0, "(--:--) Track 00"}, {123, "(--:--) Track 123"}};
  for (const auto& [track, text] : cases) EXPECT_EQ(editor.TrackText(track), text);
  EXPECT_EQ(editor.DiscTime(), 6205);
}

TEST_F(PlaylistEditorTest, ThePlayListTakesTracksInTheGivenOrderAndAgain) {
  for (const int track : {3, 1, 1, 7, 2}) EXPECT_TRUE(editor.AddEntry(track));
  EXPECT_EQ(editor.PlaylistTime(), 2 * 200 + 6005) << "what the disc does not have takes no time";
  editor.RemoveEntries(std::vector{0, 2, 4});
  EXPECT_EQ(editor.Entries(), (std::vector{1, 7}));
  editor.RemoveEntries({});
  EXPECT_EQ(editor.Entries().size(), 2U);
  EXPECT_EQ(PlaylistEditor(store, "D", {}, {}, "Track").PlaylistTime(), 0);
}

TEST_F(PlaylistEditorTest, ThePlayListHoldsNinetyNineEntries) {
  for (int i = 0; i < 99; ++i) EXPECT_TRUE(editor.AddEntry(1));
  EXPECT_FALSE(editor.AddEntry(2));
  EXPECT_EQ(editor.Entries(), std::vector<int>(99, 1));
}

TEST_F(PlaylistEditorTest, NamingGoesThroughTheDiscAndRoundAgain) {
  EXPECT_EQ(editor.TrackAfter(1), 2);
  EXPECT_EQ(editor.TrackAfter(3), 1);
  EXPECT_EQ(PlaylistEditor().TrackAfter(1), 1);
  editor.Rename(2, "New");
  EXPECT_EQ(editor.TrackText(2), "(100:05) New");
}

TEST_F(PlaylistEditorTest, SavingWritesWhatWasChangedAndWhatIsMissing) {
  editor.AddEntry(9);
  editor.AddEntry(3);
  EXPECT_EQ(Saved({"Old", "Band"}),
            "[D]\r\nTitle=Old\r\nArtist=Band\r\n1=One\r\n2=\" Two \"\r\n02=not a track\r\n2=second\r\n"
            "mine=kept\r\nPlaylist=9 3 \r\n3=\r\n");
  editor.Rename(1, "Uno");
  editor.RemoveAllEntries();
  EXPECT_EQ(Saved({"", "Duo"}),
            "[D]\r\nTitle=\r\nArtist=Duo\r\n1=Uno\r\n2=\" Two \"\r\n02=not a track\r\n2=second\r\n"
            "mine=kept\r\nPlaylist=\r\n3=\r\n");
}

// The store may have changed since the editor was opened, or be gone.
TEST_F(PlaylistEditorTest, SavingGoesToTheStoreAsItIsThen) {
  store.Set("D", "1", "by another program");
  store.Set("D", "Title", "of another program");
  editor.Rename(2, "Mine");
  editor.Save(store, {"Old", "My band"});
  EXPECT_EQ(Stored("1") + "|" + Stored("2") + "|" + Stored("Title") + "|" + Stored("Artist"),
            "by another program|Mine|of another program|My band");
  store = IniDocument("");
  EXPECT_EQ(Saved({"Old", "Band"}),
            "[D]\r\nTitle=Old\r\nArtist=Band\r\n1=One\r\n2=Mine\r\n3=\r\nPlaylist=\r\n");
}

TEST_F(PlaylistEditorTest, NamesAreStoredWithSixtyThreeWholeCharacters) {
  std::string longest;
  for (int i = 0; i < 63; ++i) longest += "\xE6\x97\xA5";
  const std::string tooLong = longest + "\xE6\x97\xA5";
  editor.Rename(1, tooLong);
  EXPECT_EQ(editor.TrackName(1), longest);
  editor.Save(store, {tooLong, tooLong + "x"});
  for (const char* key : {"Title", "Artist", "1"}) EXPECT_EQ(Stored(key), longest);
  store.Set("D", "1", tooLong + "x");
  EXPECT_EQ(PlaylistEditor(store, "D", {}, std::vector{60}, "Track").TrackName(1), tooLong)
      << "of a longer name in the store 64 characters are shown";
}

}  // namespace
}  // namespace quorvex
