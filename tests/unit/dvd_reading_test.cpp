// Discs with damage that is known: read by the platform layer's navigator over libdvdnav.
#include <gtest/gtest.h>

#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <set>

#include "platform/dvd/opened_disc.h"
#include "tests/fuzz/disc_walk.h"
#include "tests/fuzz/library_leaks.h"

namespace quorvex {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kPatience{5};
constexpr int kChapters = 3;  // of title 1

MutableDisc& Disc() {
  static MutableDisc disc(QUORVEX_LITTLE_DISC);
  return disc;
}

class DvdReadingTest : public testing::Test {
 protected:
  DvdReadingTest() { Disc(); }  // its file is open from now on
  ~DvdReadingTest() override { Disc().Restore(); }

  static void Fill(const std::string& file, std::size_t sector, std::size_t count, std::uint8_t value) {
    const MutableDisc::Region& region = Disc().RegionOf(file);
    const std::vector<std::uint8_t> bytes(count * MutableDisc::kSector, value);
    Disc().Write(region.first + sector, 0, bytes);
  }
};

// The chapters of title 1 that are come to while it plays; what cannot be read is skipped as the player does.
std::set<int> ChaptersOf(Navigator& navigator) {
  constexpr int kMostSteps = 4000;
  constexpr int kMostBadSteps = 60;
  std::set<int> chapters;
  int badSteps = 0;
  for (int i = 0; i < kMostSteps; ++i) {
    const DiscStep step = navigator.Next();
    if (step.kind == DiscStep::Kind::kEnd) break;
    if (step.kind == DiscStep::Kind::kDrain) navigator.EndDrain();
    if (step.kind == DiscStep::Kind::kStill) break;
    if (step.kind == DiscStep::Kind::kUnreadable) {
      if (++badSteps > kMostBadSteps || !navigator.SkipDamage(badSteps)) break;
    }
    if (step.kind != DiscStep::Kind::kPlace) continue;
    badSteps = 0;
    const Place place = navigator.Look();
    if (place.domain != DiscDomain::kTitle) break;
    chapters.insert(place.chapter);
  }
  return chapters;
}

std::set<int> PlayedChapters(DiscFault* fault = nullptr) {
  OpenedDisc disc;
  const DiscFault found = OpenDisc(Disc().Path(), disc);
  if (fault != nullptr) *fault = found;
  if (found != DiscFault::kNone) return {};
  EXPECT_EQ(disc.tables.titles.size(), 3U);
  disc.navigator->Next();
  return disc.navigator->PlayTitle(1) ? ChaptersOf(*disc.navigator) : std::set<int>();
}

TEST_F(DvdReadingTest, WhatIsDamagedInATableIsReadFromItsCopy) {
  for (const char* file : {"VIDEO_TS.IFO", "VTS_01_0.IFO", "VTS_02_0.IFO"}) {
    const std::size_t count = Disc().RegionOf(file).count;
    for (std::size_t sector = 0; sector < count; ++sector) {
      for (const std::uint8_t value : {std::uint8_t{0}, std::uint8_t{0xFF}}) {
        Fill(file, sector, 1, value);
        DiscFault fault = DiscFault::kNoDisc;
        const std::set<int> chapters = PlayedChapters(&fault);
        // Where what is damaged looks as if the disc was made so, it is played as it is.
        EXPECT_EQ(fault, DiscFault::kNone) << file << ' ' << sector << ' ' << int{value};
        if (sector == 0) {
          EXPECT_EQ(chapters.size(), kChapters) << file << ' ' << int{value};
        }
        Disc().Restore();
      }
      Disc().Spoil(Disc().RegionOf(file).first + sector);
      EXPECT_EQ(PlayedChapters().size(), kChapters) << file << ' ' << sector << " cannot be read";
      Disc().Restore();
    }
    Fill(file, 0, count, 0);
    EXPECT_EQ(PlayedChapters().size(), kChapters) << file;
    Disc().Restore();
  }
}

TEST_F(DvdReadingTest, WhatADiscPlaysWithoutMayBeDamagedInBoth) {
  constexpr std::size_t kAttributeTable = 0xD0;
  const std::size_t first = Disc().RegionOf("VIDEO_TS.IFO").first;
  for (const bool copyThere : {true, false}) {
    for (const char* file : {"VIDEO_TS.IFO", "VIDEO_TS.BUP"})
      Fill(file, Disc().Sector(first)[kAttributeTable + 3], 1, 0);
    if (!copyThere) Fill("VIDEO_TS.BUP", 0, 1, 0);
    EXPECT_EQ(PlayedChapters().size(), kChapters) << copyThere;
    Disc().Restore();
  }
}

TEST_F(DvdReadingTest, SectorsThatCannotBeReadAreSkipped) {
  const MutableDisc::Region& film = Disc().RegionOf("VTS_01_1.VOB");
  constexpr std::size_t kUnits = kChapters * 2;  // another title follows
  ASSERT_GT(film.units.size(), kUnits);
  struct Hole {
    const char* where;
    std::size_t first;
    std::size_t count;
    std::set<int> chapters;
  };
  const auto unit = [&](std::size_t number) { return film.units[number]; };
  const Hole kHoles[] = {
      {"in a unit", unit(2) + 5, 3, {1, 2, 3}},
      {"a unit's first sector", unit(3), 1, {1, 2, 3}},
      {"a unit's end and the next one's beginning", unit(3) - 4, 8, {1, 2, 3}},
      {"the film's first sector", unit(0), 1, {1, 2, 3}},
      {"a whole chapter", unit(2), unit(4) - unit(2), {1, 3}},
      {"all but the last chapter", unit(0), unit(4) - unit(0), {3}},
      {"from the second chapter on", unit(2), unit(kUnits) - unit(2), {1}},
      {"everything", unit(0), unit(kUnits) - unit(0), {}},
  };
  for (const Hole& hole : kHoles) {
    for (std::size_t i = 0; i < hole.count; ++i) Disc().Spoil(hole.first + i);
    const Clock::time_point begin = Clock::now();
    EXPECT_EQ(PlayedChapters(), hole.chapters) << hole.where;
    EXPECT_LT(Clock::now() - begin, kPatience) << hole.where;
    Disc().Restore();
  }
}

using Bytes = std::span<const std::uint8_t>;

std::size_t Number(Bytes sector, std::size_t at) {
  return std::size_t{sector[at]} << 24 | std::size_t{sector[at + 1]} << 16 |
         std::size_t{sector[at + 2]} << 8 | sector[at + 3];
}

void ForbidIn(std::size_t sector, std::size_t at, std::uint32_t operations) {
  const std::uint8_t bytes[] = {
      static_cast<std::uint8_t>(operations >> 24), static_cast<std::uint8_t>(operations >> 16),
      static_cast<std::uint8_t>(operations >> 8), static_cast<std::uint8_t>(operations)};
  Disc().Write(sector, at, bytes);
}

// The sector of title 1's programme chain, and where in it that begins.
std::pair<std::size_t, std::size_t> FirstChain() {
  constexpr std::size_t kChainTable = 0xCC;
  constexpr std::size_t kFirstChain = 12;
  const std::size_t tables = Disc().RegionOf("VTS_01_0.IFO").first;
  const std::size_t chains = tables + Number(Disc().Sector(tables), kChainTable);
  return {chains, Number(Disc().Sector(chains), kFirstChain)};
}

// Title 1 forbids some operations itself, and others in every unit.
void Forbid(std::uint32_t byTitle, std::uint32_t byUnit) {
  constexpr std::size_t kOperationsOfChain = 8;
  constexpr std::size_t kOperationsOfUnit = 0x35;
  const auto [sector, chain] = FirstChain();
  ForbidIn(sector, chain + kOperationsOfChain, byTitle);
  for (const std::size_t unit : Disc().RegionOf("VTS_01_1.VOB").units)
    ForbidIn(unit, kOperationsOfUnit, byUnit);
}

// Reads on to a place of that chapter.
Place ReadOnTo(Navigator& navigator, int chapter) {
  constexpr int kMostSteps = 4000;
  for (int i = 0; i < kMostSteps; ++i) {
    if (navigator.Next().kind != DiscStep::Kind::kPlace) continue;
    if (Place place = navigator.Look(); place.chapter == chapter) return place;
  }
  ADD_FAILURE() << "no chapter " << chapter;
  return {};
}

TEST_F(DvdReadingTest, ARefusedWishLeavesTheMachineWhereItIs) {
  OpenedDisc disc;
  ASSERT_EQ(OpenDisc(Disc().Path(), disc), DiscFault::kNone);
  Navigator& navigator = *disc.navigator;
  EXPECT_FALSE(navigator.PlayTime(1, 100 * kTicksPerSecond)) << "before it has begun";
  navigator.Next();
  ASSERT_TRUE(navigator.PlayTitle(3));
  ReadOnTo(navigator, 1);
  for (const int title : {0, 1, 4}) {
    EXPECT_FALSE(navigator.PlayTime(title, 100 * kTicksPerSecond)) << title;
    EXPECT_FALSE(navigator.HasJumped()) << title;
  }
  EXPECT_EQ(navigator.Look().title, 3);
  ASSERT_TRUE(navigator.PlayTime(1, kTicksPerSecond / 2));
  const Place shown = ReadOnTo(navigator, 1);
  const Place read = ReadOnTo(navigator, 2);
  ASSERT_NE(read.cell, shown.cell);
  EXPECT_FALSE(navigator.CallMenu(DiscMenu::kAngle, shown));
  EXPECT_FALSE(navigator.HasJumped());
  while (navigator.Next().kind != DiscStep::Kind::kPlace) {
  }
  EXPECT_EQ(navigator.Look().cell, read.cell) << "not back to what is shown";
}

std::ptrdiff_t OpenFiles() {
  const std::filesystem::directory_iterator all("/proc/self/fd");
  return std::distance(begin(all), end(all));
}

// A disc in a folder, for each file that is opened shows; its table names no unit within the cells.
TEST_F(DvdReadingTest, ASearchThatFindsNoUnitLeavesNoFileOpen) {
  constexpr std::size_t kUnitTable = 0xE4;
  const std::filesystem::path little(QUORVEX_LITTLE_DISC);
  const std::filesystem::path copy =
      std::filesystem::temp_directory_path() / ("quorvex-" + std::to_string(::getpid()));
  std::filesystem::copy(little.parent_path() / little.stem(), copy, std::filesystem::copy_options::recursive);
  const std::size_t tables = Disc().RegionOf("VTS_01_0.IFO").first;
  const std::size_t units = Number(Disc().Sector(tables), kUnitTable);
  const std::string far(Number(Disc().Sector(tables + units), 0) + 1 - 4, '\x7F');
  std::fstream(copy / "VIDEO_TS" / "VTS_01_0.IFO", std::ios::in | std::ios::out | std::ios::binary)
          .seekp(static_cast<std::streamoff>(units * MutableDisc::kSector + 4))
      << far;
  {
    OpenedDisc disc;
    ASSERT_EQ(OpenDisc(copy, disc), DiscFault::kNone);
    disc.navigator->Next();
    ASSERT_TRUE(disc.navigator->PlayTitle(1));
    const std::ptrdiff_t before = OpenFiles();
    EXPECT_FALSE(disc.navigator->SearchTime(kTicksPerSecond));
    EXPECT_EQ(OpenFiles(), before);
  }
  std::filesystem::remove_all(copy);
}

TEST_F(DvdReadingTest, GoingUpIsAJump) {
  constexpr std::size_t kChainAbove = 0xA0;
  const auto [sector, chain] = FirstChain();
  Disc().Write(sector, chain + kChainAbove, std::vector<std::uint8_t>{0, 1});  // itself
  OpenedDisc disc;
  ASSERT_EQ(OpenDisc(Disc().Path(), disc), DiscFault::kNone);
  disc.navigator->Next();
  ASSERT_TRUE(disc.navigator->PlayTitle(1));
  ReadOnTo(*disc.navigator, 2);
  ASSERT_FALSE(disc.navigator->HasJumped());
  ASSERT_TRUE(disc.navigator->GoUp());
  EXPECT_TRUE(disc.navigator->HasJumped());
  ReadOnTo(*disc.navigator, 1);
}

TEST_F(DvdReadingTest, WhatADiscForbidsIsToldByTheBitsThatApplicationsKnow) {
  constexpr std::uint32_t kStop = 1U << 3;
  constexpr std::uint32_t kAngleMenu = 1U << 14;
  constexpr std::uint32_t kButtons = 1U << 17;
  constexpr std::uint32_t kAudio = 1U << 20;
  constexpr std::uint32_t kVideoMode = 1U << 24;
  for (const auto& [byTitle, byUnit] : {std::pair{0U, 0U}, std::pair{kStop, kAngleMenu},
                                        std::pair{kAudio, kAudio | kVideoMode}, std::pair{kButtons, 1U}}) {
    Forbid(byTitle, byUnit);
    OpenedDisc disc;
    ASSERT_EQ(OpenDisc(Disc().Path(), disc), DiscFault::kNone);
    disc.navigator->Next();
    ASSERT_TRUE(disc.navigator->PlayTitle(1));
    while (disc.navigator->Next().kind != DiscStep::Kind::kPlace) {
    }
    EXPECT_EQ(disc.navigator->Look().prohibited, byTitle | byUnit);
  }
}

}  // namespace
}  // namespace quorvex
