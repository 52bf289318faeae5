#include "platform/cd/time_format.h"

#include <gtest/gtest.h>

#include <vector>

#include "platform/cd/play_range.h"

namespace quorvex {
namespace {

// Three tracks: a pause of one second before the first, which counts for no track's length.
const std::vector<DiscTrack> kTracks{{true, 75, 425}, {true, 500, 1000}, {false, 1500, 500}};
const DiscTimes kDisc{kTracks, 2000};

constexpr std::uint32_t Tmsf(std::uint32_t track, std::uint32_t m, std::uint32_t s, std::uint32_t f) {
  return track | m << 8 | s << 16 | f << 24;
}
constexpr std::uint32_t Msf(std::uint32_t m, std::uint32_t s, std::uint32_t f) {
  return m | s << 8 | f << 16;
}

TEST(TimeFormat, PlacesInEveryFormat) {
  EXPECT_EQ(PackPlace(kDisc, TimeFormat::kTmsf, 0), Tmsf(1, 0, 0, 0))
      << "the pause before the first track counts as its start";
  EXPECT_EQ(PackPlace(kDisc, TimeFormat::kTmsf, 500), Tmsf(2, 0, 0, 0));
  EXPECT_EQ(PackPlace(kDisc, TimeFormat::kTmsf, 1499), Tmsf(2, 0, 13, 24));
  EXPECT_EQ(PackPlace(kDisc, TimeFormat::kMsf, 0), Msf(0, 2, 0));
  EXPECT_EQ(PackPlace(kDisc, TimeFormat::kMsf, 4500), Msf(1, 2, 0));
  EXPECT_EQ(PackPlace(kDisc, TimeFormat::kMilliseconds, 75), 3000U);
  EXPECT_EQ(PackLength(TimeFormat::kTmsf, 4576), Msf(1, 1, 1));
  EXPECT_EQ(PackLength(TimeFormat::kMilliseconds, 75), 1000U);
}

TEST(TimeFormat, EveryPlaceComesBackFromEveryFormat) {
  for (const TimeFormat format : {TimeFormat::kMsf, TimeFormat::kMilliseconds, TimeFormat::kTmsf}) {
    for (int frame = format == TimeFormat::kTmsf ? 75 : 0; frame <= 2000; ++frame) {
      ASSERT_EQ(UnpackPlace(kDisc, format, PackPlace(kDisc, format, frame)), frame);
    }
  }
}

TEST(TimeFormat, RefusesPlacesThatTheDiscDoesNotHave) {
  EXPECT_EQ(UnpackPlace(kDisc, TimeFormat::kTmsf, Tmsf(2, 0, 0, 0)), 500);
  EXPECT_EQ(UnpackPlace(kDisc, TimeFormat::kTmsf, 2), 500) << "a track alone is its start";
  for (const std::uint32_t bad :
       {Tmsf(0, 0, 0, 0), Tmsf(4, 0, 0, 0), Tmsf(2, 0, 13, 26), Tmsf(255, 255, 255, 255)}) {
    EXPECT_EQ(UnpackPlace(kDisc, TimeFormat::kTmsf, bad), std::nullopt) << bad;
  }
  for (const std::uint32_t bad : {Msf(0, 1, 74), Msf(0, 28, 51), Msf(255, 255, 255)}) {
    EXPECT_EQ(UnpackPlace(kDisc, TimeFormat::kMsf, bad), std::nullopt) << bad;
  }
  EXPECT_EQ(UnpackPlace(kDisc, TimeFormat::kMilliseconds, 0xFFFFFFFF), std::nullopt);
  EXPECT_EQ(UnpackPlace({{}, 0}, TimeFormat::kMsf, Msf(0, 2, 0)), std::nullopt);
}

TEST(PlayRange, EndsBeforeWhatIsNoSound) {
  const auto end = [](int from, int to, int unreadable) { return EndOfPlay(kDisc, from, to, unreadable); };
  EXPECT_EQ(end(0, 2000, 0)->frame, 1500);
  EXPECT_FALSE(end(0, 2000, 0)->badly);
  EXPECT_EQ(end(0, 300, 0)->frame, 300);
  EXPECT_EQ(end(1500, 2000, 0), std::nullopt);
  EXPECT_EQ(end(100, 2000, 2)->frame, 500);
  EXPECT_TRUE(end(100, 2000, 2)->badly);
  EXPECT_FALSE(end(100, 400, 2)->badly);
  EXPECT_EQ(end(600, 2000, 2), std::nullopt);
}

}  // namespace
}  // namespace quorvex
