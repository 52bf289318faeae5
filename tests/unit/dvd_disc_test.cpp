// The arithmetic of the DVD player: time codes, sectors, tables, times and places.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "platform/dvd/canvas.h"
#include "platform/dvd/disc_tables.h"
#include "platform/dvd/dvd_time.h"
#include "platform/dvd/pack_demuxer.h"
#include "platform/dvd/picture_scaler.h"
#include "platform/dvd/stream_kinds.h"
#include "platform/dvd/timeline.h"
#include "platform/dvd/unit_clock.h"

namespace quorvex {
namespace {

TEST(DvdTimeTest, PackedCodesHoldDecimalDigits) {
  const struct {
    DvdTicks ticks;
    FrameCount count;
    std::uint32_t packed;
  } codes[] = {
      {0, FrameCount::k30, 0xC0000000},
      {18 * 3000, FrameCount::k30, 0xD8000000},
      {24 * 3600, FrameCount::k25, 0x64000000},
      {(DvdTicks{1} * 3600 + 23 * 60 + 45) * kTicksPerSecond, FrameCount::k25, 0x40452301},
      {DvdTicks{400} * 3600 * kTicksPerSecond, FrameCount::k30, 0xC0595999},
      {-5, FrameCount::k30, 0xC0000000},
  };
  for (const auto& code : codes)
    EXPECT_EQ(EncodeTimeCode(code.ticks, code.count), code.packed) << std::hex << code.packed;
  EXPECT_EQ(DecodeTimeCode(0x40452301), (3600 + 23 * 60 + 45) * kTicksPerSecond);
  EXPECT_EQ(DecodeTimeCode(0xD8000000), 18 * 3000);
  EXPECT_EQ(DecodeTimeCode(0x00150000), 15 * kTicksPerSecond) << "without a frame rate frames do not count";
  EXPECT_EQ(DecodeTimeCode(0x000A0000), std::nullopt);
}

using Bytes = std::vector<std::uint8_t>;

// A sector with one packet.
Bytes Sector(std::uint8_t id, const Bytes& header, const Bytes& payload) {
  Bytes sector{0, 0, 1, 0xBA, 0x44, 0, 4, 0, 4, 1, 1, 0x89, 0xC3, 0xF8};
  const std::size_t length = 3 + header.size() + payload.size() - 2;
  sector.insert(sector.end(),
                {0, 0, 1, id, static_cast<std::uint8_t>(length >> 8), static_cast<std::uint8_t>(length)});
  sector.insert(sector.end(), header.begin(), header.end());
  sector.insert(sector.end(), payload.begin(), payload.end());
  sector.resize(kDvdSectorBytes, 0xFF);
  return sector;
}

const Bytes kPlain{0x81, 0x00, 0x00};
const Bytes kTimed{0x81, 0x80, 0x05, 0x21, 0x00, 0x05, 0xBF, 0x21};  // 90 kHz ticks: 90000

TEST(PackDemuxerTest, EveryKindOfStreamIsTold) {
  const struct {
    std::uint8_t id;
    Bytes payload;
    DvdStreamKind kind;
    int number;
    std::size_t left;
  } streams[] = {
      {0xE0, {1, 2, 3}, DvdStreamKind::kVideo, 0, 3},
      {0xC2, {1, 2, 3}, DvdStreamKind::kMpegAudio, 2, 3},
      {0xBD, {0x81, 1, 0, 1, 9, 9}, DvdStreamKind::kAc3, 1, 2},
      {0xBD, {0x8B, 1, 0, 1, 9}, DvdStreamKind::kDts, 3, 1},
      {0xBD, {0xA4, 1, 0, 1, 7, 7, 7, 5}, DvdStreamKind::kLpcm, 4, 4},
      {0xBD, {0x3F, 5, 6}, DvdStreamKind::kSubpicture, 31, 2},
  };
  for (const auto& stream : streams) {
    Bytes payload = stream.payload;
    const Bytes sector = Sector(stream.id, kTimed, payload);
    const auto pieces = SplitPack(sector);
    ASSERT_EQ(pieces.size(), 1U);
    EXPECT_EQ(pieces[0].kind, stream.kind);
    EXPECT_EQ(pieces[0].number, stream.number);
    EXPECT_EQ(pieces[0].pts, 90000);
    EXPECT_FALSE(pieces[0].scrambled);
  }
  Bytes scrambled = kPlain;
  scrambled[0] |= 0x10;
  const Bytes sector = Sector(0xE0, scrambled, {1, 2});
  EXPECT_TRUE(SplitPack(sector).at(0).scrambled);
  EXPECT_FALSE(SplitPack(sector)[0].pts);
}

void Put(Bytes& file, std::size_t at, std::initializer_list<int> bytes) {
  std::transform(bytes.begin(), bytes.end(), file.begin() + static_cast<std::ptrdiff_t>(at),
                 [](int byte) { return static_cast<std::uint8_t>(byte); });
}

// A disc of two titles and one title set.
Bytes Manager() {
  Bytes file(3 * kDvdSectorBytes);
  std::memcpy(file.data(), "DVDVIDEO-VMG", 12);
  Put(file, 0x26, {0, 1, 0, 1, 2});
  Put(file, 0xC4, {0, 0, 0, 1});  // titles in sector 1
  Put(file, 0xD0, {0, 0, 0, 2});  // attributes in sector 2
  Put(file, 2048,
      {0, 2, 0, 0, 0, 0, 0, 31, 0x3C, 1, 0, 25, 0x80, 0, 1, 1, 0, 0, 0, 0, 0x3C, 3, 0, 4, 0, 0, 1, 2});
  Put(file, 4096, {0, 1, 0, 0, 0, 0, 3, 20, 0, 0, 0, 12, 0, 0, 3, 7, 0, 0, 0, 5});
  const std::size_t title = 4096 + 12 + 8 + 0x100;
  Put(file, title, {0x4C, 0, 0, 2, 0x04, 0, 'e', 'n', 0, 0, 0, 0, 0x80});
  Put(file, title + 0x54, {0, 1, 0x01, 0, 'd', 'e'});
  return file;
}

TEST(DiscTablesTest, TitlesAndStreamsAreRead) {
  const auto tables = DiscTables::Read(Manager());
  ASSERT_TRUE(tables);
  EXPECT_EQ(tables->side, 2);
  ASSERT_EQ(tables->titles.size(), 2U);
  EXPECT_EQ(tables->titles[0].chapters, 25);
  EXPECT_EQ(tables->titles[0].parentalLevels, 0x8000);
  EXPECT_EQ(tables->titles[1].angles, 3);
  const StreamAttributes& set = tables->Of(1);
  constexpr auto kTitle = StreamAttributes::Part::kTitle;
  EXPECT_EQ(set.category, 5U);
  EXPECT_TRUE(set.IsWide(kTitle));
  EXPECT_FALSE(set.IsPal(kTitle));
  ASSERT_EQ(set.AudioCount(kTitle), 2);
  EXPECT_EQ(LanguageOf(set.AudioOf(kTitle, 0)), "en");
  EXPECT_EQ(LanguageOf(set.AudioOf(kTitle, 1)), "");
  ASSERT_EQ(set.SubpictureCount(kTitle), 1);
  EXPECT_EQ(LanguageOf(set.SubpictureOf(kTitle, 0)), "de");
  EXPECT_EQ(&tables->Of(7), &tables->manager);
  EXPECT_FALSE(DiscTables::Read(Bytes(4096)));
}

TEST(DiscTablesTest, ASoundsCodingIsTheDiscs) {
  const struct {
    std::uint8_t coding;
    std::optional<DvdStreamKind> kind;
  } codings[] = {{0x04, DvdStreamKind::kAc3},       {0x40, DvdStreamKind::kMpegAudio},
                 {0x60, DvdStreamKind::kMpegAudio}, {0x80, DvdStreamKind::kLpcm},
                 {0xC0, DvdStreamKind::kDts},       {0xE0, std::nullopt}};
  for (const auto& [coding, kind] : codings) {
    Bytes file = Manager();
    file[4096 + 12 + 8 + 0x100 + 4] = coding;
    const auto tables = DiscTables::Read(file);
    ASSERT_TRUE(tables);
    Place place{.domain = DiscDomain::kTitle, .titleSet = 1, .audio = 0};
    EXPECT_EQ(SoundKindAt(*tables, place), kind) << int{coding};
    for (const int audio : {-1, 2}) {
      place.audio = audio;
      EXPECT_EQ(SoundKindAt(*tables, place), std::nullopt) << "a stream that the disc has not";
    }
  }
}

TEST(UnitClockTest, UnitsFollowEachOtherWhateverTimesTheyCarry) {
  UnitClock clock;
  clock.Begin(1000, 46000);
  EXPECT_EQ(clock.Start(), 0);
  EXPECT_EQ(clock.Time(1000 + 9000), 9000);
  clock.Begin(46000, 91000);
  EXPECT_EQ(clock.Start(), 45000);
  clock.Begin(500, 45500);  // another programme
  EXPECT_EQ(clock.Start(), 90000);
  EXPECT_EQ(clock.Time(500), 90000);
  EXPECT_EQ(clock.Time(90000), 90000 + 89500) << "sound that is a little ahead";
  clock.Begin(900'000'000, 900'045'000);
  EXPECT_EQ(clock.Time(44500), 135000 - 1000) << "sound of the unit before";
  EXPECT_EQ(clock.Time(500'000'000), std::nullopt);
  clock.Begin(900'045'000, 10, 2.0);  // no end that makes sense
  EXPECT_EQ(clock.Start(), 180000);
  clock.Begin(900'090'000, 900'135'000, 2.0);
  EXPECT_EQ(clock.Start(), 180000 + 22500);
  clock.Restart();
  EXPECT_EQ(clock.Time(900'090'000), std::nullopt);
  clock.Begin(1000, 46000);
  clock.Begin(46000 + 4500, 91000 + 4500);
  EXPECT_EQ(clock.Start(), 45000 + 4500) << "a short gap stays";
  clock.Begin(91000 + 4500 + 45000, 91000 + 4500 + 90000);
  EXPECT_EQ(clock.Start(), 90000 + 4500) << "a long one does not";
}

TEST(TimelineTest, StretchesBeginWhenTheyAreReadyAndNeverOverlap) {
  Timeline timeline;
  const MediaTime first = timeline.Stamp(1, kSecond, 0, false);
  EXPECT_EQ(first, Timeline::kLead);
  EXPECT_EQ(timeline.Stamp(1, 2 * kSecond, 0, true), Timeline::kLead + kSecond) << "the other stream";
  timeline.Reach(5 * kSecond);
  EXPECT_EQ(timeline.Stamp(2, 0, kSecond, false), 5 * kSecond);
  EXPECT_EQ(timeline.Find(1, kSecond), Timeline::kLead) << "still known";
  EXPECT_EQ(timeline.Find(3, 0), std::nullopt);
  timeline.Cut(2 * kSecond);
  EXPECT_EQ(timeline.Stamp(3, 0, 2 * kSecond, false), 2 * kSecond + Timeline::kLead);
  // Lost is who is late by more than a second, and only the leading stream counts.
  EXPECT_EQ(timeline.Stamp(3, kSecond, 9 * kSecond, false), 3 * kSecond + Timeline::kLead);
  EXPECT_EQ(timeline.Stamp(3, kSecond, 9 * kSecond, true), 9 * kSecond + Timeline::kLead);
}

TEST(CanvasTest, ShapesAndPoints) {
  constexpr Canvas kNarrow(false, false);
  constexpr Canvas kWide(true, true);
  EXPECT_EQ(kNarrow.Extent(), (Size{720, 540}));
  EXPECT_EQ(kNarrow.VideoArea(false), (Rect{0, 0, 720, 540}));
  EXPECT_EQ(kNarrow.VideoArea(true).Extent(), (Size{720, 404}));
  EXPECT_EQ(kWide.VideoArea(true), (Rect{0, 0, 1024, 576}));
  EXPECT_EQ(kWide.VideoArea(false), (Rect{128, 0, 896, 576}));
  EXPECT_EQ(Canvas(true, false).VideoArea(true), (Rect{0, 0, 854, 480}));
  EXPECT_EQ(kWide.ToVideo({512, 288}, {1024, 576}, false, VideoSize(true)), (Point{360, 288}));
  EXPECT_EQ(kWide.ToVideo({256, 144}, {512, 288}, true, VideoSize(true)), (Point{360, 288}));
  EXPECT_LT(kWide.ToVideo({10, 10}, {1024, 576}, false, VideoSize(true)).x, 0) << "beside the picture";
}

TEST(PictureScalerTest, FlatStaysFlatAndEdgesStayInPlace) {
  PictureScaler scaler;  // one for all sizes: it keeps what it found out of the last
  for (const Size size : {Size{720, 540}, Size{720, 540}, Size{854, 480}, Size{854, 360}, Size{2, 2}}) {
    Bytes source(720U * 480 * 4, 77);
    for (int y = 0; y < 480; ++y)
      std::fill_n(source.begin() + (y * 720 + 360) * 4, 360 * 4, std::uint8_t{200});
    Bytes target(static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height) * 4);
    scaler.Scale({source.data(), 720 * 4, 720, 480},
                 {target.data(), size.width * 4, size.width, size.height});
    const auto at = [&](int x, int y) { return target[static_cast<std::size_t>((y * size.width + x) * 4)]; };
    EXPECT_EQ(at(0, 0), 77);
    EXPECT_EQ(at(size.width - 1, size.height - 1), 200);
    if (size.width == 2) continue;
    EXPECT_EQ(at(size.width / 2 - 2, size.height / 2), 77);
    EXPECT_EQ(at(size.width / 2 + 2, size.height / 2), 200);
  }
}

}  // namespace
}  // namespace quorvex
