#include "platform/cd/cue_sheet.h"

#include <gtest/gtest.h>

#include "tests/unit/sheet_support.h"

namespace quorvex {
namespace {

std::string Plan(std::string_view sheet,
                 std::map<std::string, std::int64_t> files = {{"a.bin", 1000LL * 2352},
                                                              {"b.bin", 500LL * 2352},
                                                              {"d.bin", 300LL * 2048 + 100LL * 2352 + 7}}) {
  return Described(PlanCueSheet(sheet, FilesOf(std::move(files))));
}

TEST(CueSheet, EverySectorOfADiscHasItsPlace) {
  const struct {
    const char* what;
    const char* sheet;
    const char* plan;
  } discs[] = {
      {"a pause within the file, and words that say nothing of places",
       "\xEF\xBB\xBFREM made by hand\r\nTITLE \"Disc\"\r\nFILE \"a.bin\" BINARY\r\n"
       "  TRACK 01 AUDIO\r\n    TITLE \"One\"\r\n    INDEX 01 00:00:00\r\n"
       "  TRACK 02 AUDIO\r\n    INDEX 00 00:04:00\r\n    INDEX 01 00:06:00\r\n    INDEX 02 00:08:00\r\n",
       "1a@0+450 2a@450+550 | 0:300<a.bin@0 300:150<a.bin@705600 450:550<a.bin@1058400 | 1000"},
      {"a pause that ends the file before",
       "file a.bin binary\ntrack 01 audio\nindex 01 00:00:00\ntrack 02 audio\nindex 00 00:12:00\n"
       "file b.bin binary\nindex 01 00:00:00\n",
       "1a@0+1000 2a@1000+500 | 0:900<a.bin@0 900:100<a.bin@2116800 1000:500<b.bin@0 | 1500"},
      {"gaps that no file holds",
       "FILE a.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\nPOSTGAP 00:01:00\n"
       "TRACK 02 AUDIO\nPREGAP 00:02:00\nINDEX 01 00:04:00\n",
       "1a@0+525 2a@525+700 | 0:300<a.bin@0 300:75<silence 375:150<silence 525:700<a.bin@705600 | 1225"},
      {"a gap behind the last track",
       "FILE a.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\nPOSTGAP 00:01:00\n",
       "1a@0+1075 | 0:1000<a.bin@0 1000:75<silence | 1075"},
      {"what stands before the first track", "FILE a.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:02:00\n",
       "1a@150+850 | 0:150<a.bin@0 150:850<a.bin@352800 | 1000"},
      {"data, and a last sector that is not complete",
       "FILE d.bin BINARY\nTRACK 01 MODE1/2048\nINDEX 01 00:00:00\nTRACK 02 AUDIO\nINDEX 01 00:04:00\n",
       "1d@0+300 2a@300+101 | 0:300<d.bin@0 300:101<d.bin@614400 | 401"},
      {"a track without a length",
       "FILE b.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\nTRACK 02 AUDIO\nINDEX 01 00:00:00\n",
       "1a@0+0 2a@0+500 | 0:500<b.bin@0 | 500"},
  };
  for (const auto& [what, sheet, plan] : discs) EXPECT_EQ(Plan(sheet), plan) << what;
}

TEST(CueSheet, SaysWhatIsWrong) {
  const std::pair<const char*, const char*> cases[] = {
      {"", "it has no tracks"},
      {"hello\nworld\n", "it has no tracks"},
      {"TRACK 01 AUDIO\n", "line 1: TRACK comes before any FILE"},
      {"FILE c.bin BINARY\n", "line 1: no c.bin"},
      {"FILE a.bin\n", "line 1: FILE needs a name and a format"},
      {"FILE a.mp3 MP3\n", "line 1: files of the format MP3 cannot be read; BINARY, MOTOROLA and WAVE can"},
      {"FILE a.bin BINARY\nTRACK 01 VIDEO\n", "line 2: unknown track mode \"VIDEO\""},
      {"FILE a.bin BINARY\nTRACK 01 AUDIO\n", "line 3: the track before has no INDEX 01"},
      {"FILE a.bin BINARY\nTRACK 01 AUDIO\nINDEX 00 00:00:00\nTRACK 02 AUDIO\n",
       "line 4: the track before has no INDEX 01"},
      {"FILE a.bin BINARY\nINDEX 01 00:00:00\n", "line 2: INDEX comes before any TRACK"},
      {"FILE a.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:61:00\n",
       "line 3: INDEX needs a number and a time mm:ss:ff"},
      {"FILE a.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:75\n",
       "line 3: INDEX needs a number and a time mm:ss:ff"},
      {"FILE a.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:20:00\n", "track 1 does not lie within its file"},
      {"FILE a.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:02:00\nTRACK 02 AUDIO\nINDEX 01 00:01:00\n",
       "track 1 does not lie within its file"},
      {"FILE a.bin BINARY\nPREGAP 00:02:00\n", "line 2: a gap comes before any TRACK"},
  };
  for (const auto& [sheet, error] : cases) EXPECT_EQ(Plan(sheet), error) << sheet;
}

TEST(CueSheet, ADiscHasAtMost99TracksAnd99Minutes) {
  std::string sheet = "FILE a.bin BINARY\n";
  for (int i = 1; i <= 100; ++i) {
    if (i == 100) {
      EXPECT_EQ(Plan(sheet).substr(0, 8), "1a@0+1 2");
    }
    sheet +=
        "TRACK " + std::to_string(i) + " AUDIO\nINDEX 01 00:00:" + std::to_string(std::min(i - 1, 74)) + "\n";
  }
  EXPECT_EQ(Plan(sheet), "a disc has at most 99 tracks");
  EXPECT_EQ(Plan("FILE a.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\n", {{"a.bin", 1LL << 60}}),
            "a disc holds at most 99 minutes");
}

}  // namespace
}  // namespace quorvex
