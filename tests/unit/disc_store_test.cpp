#include "devices/cd/disc_store.h"

#include <gtest/gtest.h>

namespace quorvex {
namespace {

TEST(DiscStore, IdentifiesADiscByItsTrackLengths) {
  EXPECT_EQ(DiscIdentifier(std::vector{200, 180, 240}), "00000500");
  EXPECT_EQ(DiscIdentifier({}), "00000000");
  EXPECT_EQ(DiscIdentifier(std::vector<int>(1000, 100000000)), "2C789400") << "the sum wraps at 2^32";
}

TEST(DiscStore, AddsADiscInTheGivenLines) {
  IniDocument store("");
  EXPECT_FALSE(IsDiscKnown(store, "00000500"));
  AddDisc(store, "00000500", 3, "Track");
  EXPECT_EQ(
      store.Text(),
      "[CD List]\r\nNumber of CDs=1\r\n1=00000500\r\n"
      "[00000500]\r\nTitle=\r\nArtist=\r\n1=Track 01\r\n2=Track 02\r\n3=Track 03\r\nPlaylist=1 2 3 \r\n");
  EXPECT_TRUE(IsDiscKnown(store, "00000500"));
  EXPECT_FALSE(IsDiscKnown(store, "0000050"));
  AddDisc(store, "0000ABCD", 1, "Track");
  EXPECT_EQ(store.Find("CD List", "Number of CDs"), "2");
  EXPECT_EQ(store.Find("CD List", "2"), "0000ABCD");
  EXPECT_FALSE(IsDiscKnown(store, "0000abcd")) << "identifiers are compared exactly";
}

TEST(DiscStore, OnlyTheCountedPlacesOfTheListAreKnownDiscs) {
  const IniDocument store("[CD List]\r\nNumber of CDs=1\r\n1=AAAAAAAA\r\n2=BBBBBBBB\r\n");
  EXPECT_TRUE(IsDiscKnown(store, "AAAAAAAA"));
  EXPECT_FALSE(IsDiscKnown(store, "BBBBBBBB"));
}

// A count that was lost, is no number or is far too large costs no disc its place and no time.
TEST(DiscStore, ADamagedListLosesNothing) {
  for (const std::string count :
       {"", "Number of CDs=\r\n", "Number of CDs=-7\r\n", "Number of CDs=none\r\n"}) {
    IniDocument store("[CD List]\r\n" + count +
                      "1=AAAAAAAA\r\n2=BBBBBBBB\r\n[CCCCCCCC]\r\nTitle=Mine\r\n2=My song\r\n");
    AddDisc(store, "CCCCCCCC", 2, "Track");
    EXPECT_EQ(store.Find("CD List", "1"), "AAAAAAAA");
    EXPECT_EQ(store.Find("CD List", "2"), "BBBBBBBB");
    EXPECT_EQ(store.Find("CD List", "3"), "CCCCCCCC");
    EXPECT_EQ(store.Find("CD List", "Number of CDs"), "3");
    EXPECT_EQ(store.Find("CCCCCCCC", "Title"), "Mine")
        << "titles of a disc that fell off the list are the user's still";
    EXPECT_EQ(store.Find("CCCCCCCC", "1"), "Track 01");
    EXPECT_EQ(store.Find("CCCCCCCC", "2"), "My song");
  }
  EXPECT_FALSE(IsDiscKnown(IniDocument("[CD List]\r\nNumber of CDs=2147483647\r\n"), "AAAAAAAA"));
}

TEST(DiscStore, AStoredPlaylistHasAThousandEntriesAtTheMost) {
  std::string longest = "[L]\r\nPlaylist=";
  for (int i = 0; i < 2000; ++i) longest += "12 ";
  EXPECT_EQ(StoredPlaylist(IniDocument(longest), "L").size(), 1000U);
}

}  // namespace
}  // namespace quorvex
