#include <gtest/gtest.h>

#include <array>
#include <random>

#include "platform/cd/cue_sheet.h"
#include "platform/cd/nrg_trailer.h"
#include "platform/cd/toc_sheet.h"
#include "tests/unit/sheet_support.h"

namespace quorvex {
namespace {

constexpr std::array<std::string_view, 34> kWords{"FILE",
                                                  "\"a.bin\"",
                                                  "a.bin",
                                                  "BINARY",
                                                  "WAVE",
                                                  "MOTOROLA",
                                                  "TRACK",
                                                  "01",
                                                  "02",
                                                  "99",
                                                  "AUDIO",
                                                  "MODE1/2048",
                                                  "INDEX",
                                                  "00",
                                                  "PREGAP",
                                                  "POSTGAP",
                                                  "00:00:00",
                                                  "00:02:00",
                                                  "99:59:74",
                                                  "AUDIOFILE",
                                                  "DATAFILE",
                                                  "SWAP",
                                                  "#100",
                                                  "SILENCE",
                                                  "ZERO",
                                                  "START",
                                                  "{",
                                                  "}",
                                                  "MODE1",
                                                  "2147483648",
                                                  "99999999999999999999",
                                                  "-1",
                                                  "\"",
                                                  "//"};

// What every plan promises, so that whoever plays it need not look.
void Check(const std::variant<DiscPlan, DiscError>& result, const std::string& sheet) {
  const auto* plan = std::get_if<DiscPlan>(&result);
  if (plan == nullptr) {
    ASSERT_FALSE(std::get<DiscError>(result).text.empty()) << sheet;
    return;
  }
  int at = 0;
  for (const DiscExtent& extent : plan->extents) {
    ASSERT_EQ(extent.start, at) << sheet;
    ASSERT_GT(extent.length, 0) << sheet;
    ASSERT_GE(extent.offset, 0) << sheet;
    ASSERT_LT(extent.source, static_cast<int>(plan->sources.size())) << sheet;
    if (extent.source >= 0) {
      const std::int64_t lastSector = extent.offset + std::int64_t{extent.length - 1} * extent.sectorBytes;
      ASSERT_LT(lastSector, plan->sources[static_cast<std::size_t>(extent.source)].dataBytes) << sheet;
    }
    at += extent.length;
  }
  ASSERT_EQ(at, plan->leadOut) << sheet;
  ASSERT_LE(plan->leadOut, kMostFrames) << sheet;
  ASSERT_TRUE(!plan->tracks.empty() && plan->tracks.size() <= 99) << sheet;
  for (std::size_t i = 0; i < plan->tracks.size(); ++i) {
    const DiscTrack& track = plan->tracks[i];
    const int end = i + 1 < plan->tracks.size() ? plan->tracks[i + 1].start : plan->leadOut;
    ASSERT_TRUE(track.start >= 0 && track.length >= 0 && track.start + track.length == end) << sheet;
  }
}

TEST(SheetFuzz, AnySheetGivesASoundPlanOrAnError) {
  std::mt19937 random(11);
  int plans = 0;
  for (int round = 0; round < 40000; ++round) {
    // Half of the sheets begin well, so that what comes after is reached.
    std::string sheet = round % 4 == 0   ? "FILE a.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\n"
                        : round % 4 == 2 ? "TRACK AUDIO\nFILE a.bin 0 00:02:00\n"
                                         : "";
    for (std::size_t count = random() % 30; count > 0; --count) {
      sheet += kWords[random() % kWords.size()];
      sheet += random() % 3 == 0 ? '\n' : ' ';
    }
    const SourceOpener open = FilesOf({{"a.bin", static_cast<std::int64_t>(random() % 3'000'000)}});
    const auto cue = PlanCueSheet(sheet, open);
    const auto toc = PlanTocSheet(sheet, open);
    plans += static_cast<int>(cue.index() == 0) + static_cast<int>(toc.index() == 0);
    ASSERT_NO_FATAL_FAILURE(Check(cue, sheet));
    ASSERT_NO_FATAL_FAILURE(Check(toc, sheet));
  }
  EXPECT_GT(plans, 1000) << "the sheets must not all be refused";
}

TEST(SheetFuzz, AnyNrgTrailerGivesASoundPlanOrAnError) {
  std::mt19937 random(12);
  int plans = 0;
  for (int round = 0; round < 40000; ++round) {
    std::string table(22, '\0');
    for (std::uint64_t track = 0, at = 0; track < 1 + random() % 3; ++track) {
      const std::uint64_t start = at + random() % 200;
      const int mode = random() % 2 == 0 ? 7 : static_cast<int>(random() % 20);
      table += NrgRow(mode, 2352, at, start, start + random() % 300);
      at = start;
    }
    std::string trailer = NrgChunk(random() % 8 == 0 ? "ETN2" : "DAOX", table);
    for (std::size_t count = random() % 4; count > 0; --count) {
      trailer[random() % trailer.size()] = static_cast<char>(random());
      if (random() % 4 == 0) trailer.resize(1 + random() % trailer.size());
    }
    const auto file = static_cast<std::int64_t>(random() % 3'000'000);
    const auto plan = PlanNrgTrailer(trailer, "a.nrg", FilesOf({{"a.nrg", file}}));
    plans += static_cast<int>(plan.index() == 0);
    ASSERT_NO_FATAL_FAILURE(Check(plan, std::to_string(round)));
  }
  EXPECT_GT(plans, 1000) << "the trailers must not all be refused";
}

}  // namespace
}  // namespace quorvex
