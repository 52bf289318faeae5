#include "platform/cd/toc_sheet.h"

#include <gtest/gtest.h>

#include "tests/unit/sheet_support.h"

namespace quorvex {
namespace {

std::string Plan(std::string_view sheet) {
  return Described(PlanTocSheet(
      sheet, FilesOf({{"a.bin", 1000LL * 2352}, {"d.bin", 200LL * 2048}, {"b.wav", 300LL * 2352}})));
}

TEST(TocSheet, TracksOfOneFileWithAPause) {
  EXPECT_EQ(Plan("CD_DA\nCATALOG \"1234567890123\"\n\n// a remark FILE\n"
                 "CD_TEXT { LANGUAGE_MAP { 0 : EN } LANGUAGE 0 { TITLE \"Disc\" PERFORMER \"\" } }\n"
                 "TRACK AUDIO\nNO COPY\nNO PRE_EMPHASIS\nTWO_CHANNEL_AUDIO\nISRC \"ABCDE1234567\"\n"
                 "FILE \"a.bin\" 0 00:04:00\n"
                 "TRACK AUDIO\nFILE \"a.bin\" 00:04:00 00:06:00\nSTART 00:02:00\nINDEX 00:03:00\n"),
            "1a@0+450 2a@450+300 | 0:300<a.bin@0 300:450<a.bin@705600 | 750");
}

TEST(TocSheet, DataFirstThenSilenceAndSound) {
  EXPECT_EQ(Plan("CD_ROM\nTRACK MODE1\nDATAFILE \"d.bin\"\nZERO 00:02:00\n"
                 "TRACK AUDIO\nSILENCE 00:02:00\nSTART\nAUDIOFILE \"a.bin\" SWAP #2352 588 588\n"
                 "TRACK AUDIO\nPREGAP 00:01:00\nFILE \"b.wav\" 0\n"),
            "1d@0+500 2a@500+76 3a@576+300 | 0:200<d.bin@0 200:150<silence 350:150<silence 500:1<a.bin@4704 "
            "501:75<silence 576:300<b.wav@0 | 876");
}

TEST(TocSheet, RawSoundHasItsHighByteFirstUnlessSwapped) {
  const auto format = [](const char* file) {
    const auto result = PlanTocSheet(std::string("TRACK AUDIO FILE ") + file + " 0",
                                     FilesOf({{"a.bin", 2352}, {"b.WAV", 2352}}));
    return std::get<DiscPlan>(result).sources[0].format;
  };
  EXPECT_EQ(format("a.bin"), DiscSource::Format::kSwappedRaw);
  EXPECT_EQ(format("a.bin SWAP"), DiscSource::Format::kRaw);
  EXPECT_EQ(format("b.WAV"), DiscSource::Format::kWave);
}

TEST(TocSheet, SaysWhatIsWrong) {
  const std::pair<const char*, const char*> cases[] = {
      {"CD_DA\n", "it has no tracks"},
      {"CD_DA\nFILE \"a.bin\" 0\n", "line 2: a file comes before any TRACK"},
      {"TRACK CDXA\n", "line 1: unknown track mode \"CDXA\""},
      {"TRACK AUDIO\nFILE \"c.bin\" 0\n", "line 2: no c.bin"},
      {"TRACK AUDIO\nFILE \"a.bin\"\n", "line 3: a sound file needs a start"},
      {"TRACK AUDIO\nFILE \"a.bin\" 0 00:20:00\n", "line 2: the file a.bin is shorter than the sheet says"},
      {"TRACK AUDIO\nSILENCE\n", "line 3: silence needs a length"},
      {"TRACK AUDIO\nPREGAP soon\n", "line 2: PREGAP needs a time mm:ss:ff"},
      {"TRACK AUDIO\nFIFO \"f\" 00:01:00\n", "line 2: FIFO files cannot be read"},
      {"CD_TEXT { LANGUAGE 0 {\n", "line 2: a brace is not closed"},
      {"TRACK AUDIO\nFILE \"a.bin\" 0 00:01:00\nSTART 00:02:00\n", "a track begins behind the next"},
  };
  for (const auto& [sheet, error] : cases) EXPECT_EQ(Plan(sheet), error) << sheet;
}

}  // namespace
}  // namespace quorvex
