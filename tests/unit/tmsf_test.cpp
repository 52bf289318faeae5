#include "devices/cd/tmsf.h"

#include <gtest/gtest.h>

namespace quorvex {
namespace {

TEST(Tmsf, PacksAByteEach) {
  EXPECT_EQ((Tmsf{3, 4, 5, 74}.Pack()), 0x4A050403U);
  EXPECT_EQ(Tmsf::Unpack(0x4A050403), (Tmsf{3, 4, 5, 74}));
  EXPECT_EQ((Tmsf{300, 0, 0, 0}.Pack()), 44U) << "a track number that no byte holds must not become minutes";
  EXPECT_EQ(LengthInSeconds(0x4A0504), 4 * 60 + 5) << "frames are dropped";
}

TEST(Tmsf, ScanningForwardGoesFromATracksEndToItsStart) {
  EXPECT_EQ(StepForward({2, 0, 58, 40}, 245), (Tmsf{2, 0, 59, 0}));
  EXPECT_EQ(StepForward({2, 0, 59, 0}, 245), (Tmsf{2, 1, 0, 0}));
  EXPECT_EQ(StepForward({2, 4, 4, 0}, 245), (Tmsf{2, 0, 0, 0}));
  EXPECT_EQ(StepForward({2, 0, 0, 0}, 0), (Tmsf{2, 0, 0, 0}));
}

TEST(Tmsf, ScanningBackGoesFromATracksStartToItsEnd) {
  EXPECT_EQ(StepBack({2, 1, 0, 12}, 245), (Tmsf{2, 0, 59, 0}));
  EXPECT_EQ(StepBack({2, 0, 0, 70}, 245), (Tmsf{2, 4, 5, 0}));
  EXPECT_EQ(StepBack({2, 0, 0, 0}, 0), (Tmsf{2, 0, 0, 0}));
}

}  // namespace
}  // namespace quorvex
