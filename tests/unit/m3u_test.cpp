#include "devices/media/m3u.h"

#include <gtest/gtest.h>

#include <chrono>

namespace quorvex {
namespace {

using Texts = std::vector<std::string>;

TEST(M3U, IsToldByItsExtension) {
  for (const char* path : {"C:\\a.m3u", "a.b.M3U", ".m3U", "C:a.m3u"}) EXPECT_TRUE(IsM3U(path)) << path;
  for (const char* path : {"", "a", "C:\\x.m3u\\a", "C:/x.m3u/a.mp3", "a.m3u8", "a.m3u.mp3", "m3u"})
    EXPECT_FALSE(IsM3U(path)) << path;
}

TEST(M3U, LinesAreEntriesButForEmptyOnesAndRemarks) {
  for (const std::string end : {"\n", "\r\n"}) {
    const std::string text = "; mine" + end + end + "C:\\a.mp3" + end + " ;b" + end + "#EXTM3U" + end + "x" +
                             end + "..\\d e.avi" + end;
    const Texts entries{"C:\\a.mp3", " ;b", "#EXTM3U", "x", "..\\d e.avi"};
    EXPECT_EQ(AlbumEntriesOfM3U(text), entries);
    EXPECT_EQ(PreviewEntriesOfM3U(text), entries);
  }
}

TEST(M3U, TheTwoListsDifferInALastCharacterWithoutLineEnd) {
  EXPECT_EQ(AlbumEntriesOfM3U("ab\nc"), (Texts{"ab", "c"}));
  EXPECT_EQ(PreviewEntriesOfM3U("ab\nc"), Texts{"ab"});
  EXPECT_EQ(PreviewEntriesOfM3U("ab\n\xC3\xA9"), Texts{"ab"}) << "one character, if two bytes";
  EXPECT_EQ(PreviewEntriesOfM3U("ab\ncd"), (Texts{"ab", "cd"}));
  EXPECT_EQ(PreviewEntriesOfM3U("c\n"), Texts{"c"});
}

TEST(M3U, LongLinesComeInPieces) {
  const std::string piece(259, 'p');
  for (const std::string end : {"\n", "\r\n"}) {
    EXPECT_EQ(AlbumEntriesOfM3U(piece + end + "q" + end), (Texts{piece, "q"}));
    EXPECT_EQ(PreviewEntriesOfM3U(piece + "q" + end + "r" + end), (Texts{piece, "q", "r"}));
    EXPECT_EQ(AlbumEntriesOfM3U(piece + ";q" + end), Texts{piece}) << "a piece is read as a line";
  }
  EXPECT_EQ(AlbumEntriesOfM3U(piece + piece), (Texts{piece, piece}));
  std::string wide;
  for (int i = 0; i < 259; ++i) wide += "\xF0\x9F\x8E\xB5";
  EXPECT_EQ(AlbumEntriesOfM3U(wide + "\nq"), (Texts{wide, "q"})) << "counted in characters";
}

TEST(M3U, TenMegabytesInOneLineTakeTheirTimeOnce) {
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(AlbumEntriesOfM3U(std::string(10 << 20, 'x')).size(), ((10U << 20U) + 258) / 259);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
}

TEST(M3U, TextBecomesUtf8WithoutMark) {
  EXPECT_EQ(M3UText("\xEF\xBB\xBF"
                    "C:\\\xC3\xA9.mp3\n"),
            "C:\\\xC3\xA9.mp3\n");
  EXPECT_EQ(M3UText("C:\\\xE9\x92 \x80.mp3\n"), "C:\\\xC3\xA9\xE2\x80\x99 \xE2\x82\xAC.mp3\n");
  EXPECT_EQ(M3UText(""), "");
}

}  // namespace
}  // namespace quorvex
