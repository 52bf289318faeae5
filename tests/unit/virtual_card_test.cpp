// The arithmetic of the virtual capture cards: channels, stations, pictures, their times, sound and captions.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "platform/tv/block_font.h"
#include "platform/tv/capture_format.h"
#include "platform/tv/channel_plan.h"
#include "platform/tv/color_adjustment.h"
#include "platform/tv/frame_pacer.h"
#include "platform/tv/programme_captions.h"
#include "platform/tv/programme_sound.h"
#include "platform/tv/stations.h"
#include "platform/tv/stream_gate.h"
#include "platform/tv/test_picture.h"
#include "tests/support/disc_marks.h"
#include "tests/support/line21_script.h"

namespace quorvex {
namespace {

constexpr auto kAntenna = TunerInput::kAntenna;
constexpr auto kCable = TunerInput::kCable;

TEST(ChannelPlanTest, ChannelsAreOnTheFrequenciesOfTheirCountry) {
  const struct {
    int country;
    TunerInput input;
    int channel;
    long video, audio;  // kHz; 0: no channel
  } cases[] = {{1, kAntenna, 2, 55250, 59750},
               {1, kAntenna, 5, 77250, 81750},
               {1, kAntenna, 69, 801250, 805750},
               {1, kAntenna, 70, 0, 0},
               {1, kCable, 22, 169250, 173750},
               {1, kCable, 95, 91250, 95750},
               {49, kAntenna, 12, 224250, 229750},
               {49, kAntenna, 13, 0, 0},
               {44, kAntenna, 2, 0, 0},
               {44, kAntenna, 21, 471250, 477250},
               {81, kAntenna, 62, 765250, 769750}};
  for (const auto& [country, input, channel, video, audio] : cases) {
    const Carriers carriers = CarriersOf(country, input, channel).value_or(Carriers{});
    EXPECT_EQ(carriers.video, video * 1000) << country << ' ' << channel;
    EXPECT_EQ(carriers.audio, audio * 1000) << country << ' ' << channel;
  }
  EXPECT_EQ(ChannelsOf(1, kCable), (ChannelRange{1, 125}));
  EXPECT_FALSE(HasChannelPlan(999));
  EXPECT_EQ(ChannelsOf(999, kAntenna), ChannelsOf(kUnitedStates, kAntenna));
}

TEST(StationsTest, WhatIsNoStationIsPassedOver) {
  const std::vector<Station> stations = ReadStations(
      "# remark\r\nantenna 5 CITY NEWS\r\n\r\ncable 12\nantenna x Y\nantenna -3 Y\nradio 7 Y\ncable "
      "99999999999 Y\n"
      "antenna 5 SECOND\n   antenna   7   SPORTS");
  ASSERT_EQ(stations.size(), 4U);
  EXPECT_EQ(stations[0], (Station{kAntenna, 5, "CITY NEWS", ""}));
  EXPECT_EQ(stations[1], (Station{kCable, 12, "", ""}));
  EXPECT_EQ(stations[3], (Station{kAntenna, 7, "SPORTS", ""}));
  EXPECT_EQ(FindStation(stations, kAntenna, 5), &stations[0]);
  EXPECT_EQ(FindStation(stations, kCable, 5), nullptr);
  EXPECT_EQ(ReadStations(kFirstStations).size(), 17U);
  EXPECT_EQ(ReadStations("cable 9 A FILM |  C:\\my films\\one.mpg \r\n"),
            (std::vector{Station{kCable, 9, "A FILM", "C:\\my films\\one.mpg"}}));
  EXPECT_EQ(ReadStations("cable 9 |x"), (std::vector{Station{kCable, 9, "", "x"}}));
  EXPECT_EQ(ReadStations("cable 9 A FILM |"), (std::vector{Station{kCable, 9, "A FILM", ""}}));
}

TEST(FramePacerTest, LateFramesAreLostAndCounted) {
  FramePacer pacer;
  const auto expect = [&](MediaTime now, std::int64_t number, MediaTime begin, std::int64_t lost) {
    const FramePacer::Frame frame = pacer.Take(now, 100);
    EXPECT_EQ(frame.number, number) << now;
    EXPECT_EQ(frame.begin, begin) << now;
    EXPECT_EQ(frame.lost, lost) << now;
  };
  expect(0, 0, 0, 0);
  expect(100, 1, 100, 0);
  expect(299, 2, 200, 0);  // late, but still its time
  expect(750, 7, 700, 4);
  expect(800, 8, 800, 0);
  EXPECT_EQ(pacer.Take(900, 50).end, 950) << "another rate";
  EXPECT_EQ(pacer.Due(), 950);
}

TEST(StreamGateTest, OpensAndClosesAsOrdered) {
  StreamGate gate;
  EXPECT_FALSE(gate.Pass(0));
  EXPECT_TRUE(gate.IsOpen());
  gate.StopAt(StreamGate::kNow, 4);
  gate.StartAt(StreamGate::kNever, 0);
  EXPECT_EQ(gate.Pass(1)->cookie, 4U);
  EXPECT_FALSE(gate.IsOpen());
  gate.StopAt(StreamGate::kNever, 0);
  gate.StartAt(StreamGate::kNow, 5);
  EXPECT_TRUE(gate.Pass(2)->open);
  EXPECT_TRUE(gate.IsOpen());
  gate.StartAt(10, 6);
  gate.StopAt(20, 7);
  EXPECT_FALSE(gate.Pass(9));
  EXPECT_FALSE(gate.IsOpen()) << "it is to start later";
  EXPECT_EQ(gate.Pass(10)->cookie, 6U);
  EXPECT_FALSE(gate.Pass(19));
  EXPECT_EQ(gate.Pass(25)->cookie, 7U);
  EXPECT_FALSE(gate.IsOpen());
  gate.StartAt(StreamGate::kNow, 0);
  gate.Pass(26);
  gate.StopAt(30, 8);
  gate.StartAt(50, 9);
  EXPECT_FALSE(gate.Pass(27));
  EXPECT_TRUE(gate.IsOpen()) << "a gap is still to come";
  EXPECT_EQ(gate.Pass(31)->cookie, 8U);
  EXPECT_FALSE(gate.Pass(49));
  EXPECT_EQ(gate.Pass(51)->cookie, 9U);
  EXPECT_FALSE(gate.Pass(52));
  EXPECT_TRUE(gate.IsOpen());
}

struct Drawn {
  explicit Drawn(Size size)
      : bytes(static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height) * 4) {
    view = {bytes.data(), static_cast<std::ptrdiff_t>(size.width) * 4, size.width, size.height};
  }
  std::vector<std::uint8_t> bytes;
  PictureView view;
};

TEST(TestPictureTest, TellsItsNumberAndChannelInEverySize) {
  TestPicture picture;
  ColorAdjustment dark;
  dark.values[0] = 0;
  std::vector<Size> sizes(kCaptureSizes.begin(), kCaptureSizes.end());
  sizes.push_back({40, 32});
  for (const Size size : sizes) {
    Drawn drawn(size);
    for (const ColorAdjustment& adjustment : {ColorAdjustment{}, dark}) {
      picture.Draw(drawn.view, {0, 125, true, "A NAME THAT IS LONGER THAN WHAT FITS", ""}, adjustment, 70000,
                   8640000 - 1);
      EXPECT_EQ(ReadDiscMarks(drawn.view), (DiscMarks{70000 - 65536, 0, 125})) << size.width;
    }
    picture.Draw(drawn.view, {0, 7, false, "", ""}, {}, 3, 0);
    EXPECT_EQ(ReadDiscMarks(drawn.view), (DiscMarks{3, 255, 7})) << size.width;
    picture.Draw(drawn.view, {2, 7, true, "VIDEO 2", ""}, {}, 4, 0);
    EXPECT_EQ(ReadDiscMarks(drawn.view), (DiscMarks{4, 2, 0})) << size.width;
  }
}

TEST(ColorAdjustmentTest, EachControlDoesItsPart) {
  const Rgb orange{200, 120, 40};
  const auto with = [&](std::size_t control, int value) {
    ColorAdjustment adjustment;
    adjustment.values[control] = value;
    return adjustment.Apply(orange);
  };
  EXPECT_EQ(with(0, 128), orange);
  EXPECT_NEAR(with(0, 158).green, orange.green + 30, 1);
  EXPECT_EQ(with(1, 0), (Rgb{128, 128, 128}));
  EXPECT_LT(with(2, 0).red, with(2, 0).blue) << "half a turn of the hue";
  EXPECT_EQ(with(3, 0).red, with(3, 0).blue);
  EXPECT_GT(with(3, 255).red, orange.red);
}

TEST(ColorAdjustmentTest, APicturesPixelsAreAdjusted) {
  Drawn drawn({3, 2});
  std::fill(drawn.bytes.begin(), drawn.bytes.end(), std::uint8_t{100});
  ColorAdjustment adjustment;
  adjustment.Apply(drawn.view);
  EXPECT_EQ(drawn.bytes[4], 100);
  adjustment.values = {60, 200, 10, 250};
  const std::vector<std::uint8_t> colors{40, 120, 200, 7, 250, 0, 128, 7};
  std::copy(colors.begin(), colors.end(), drawn.bytes.begin() + 12);
  adjustment.Apply({drawn.bytes.data() + 12, -12, 2, 2});  // the bottom line first
  for (const std::size_t at : {12U, 16U}) {
    const Rgb wanted = adjustment.Apply({colors[at - 10], colors[at - 11], colors[at - 12]});
    EXPECT_EQ((Rgb{drawn.bytes[at + 2], drawn.bytes[at + 1], drawn.bytes[at]}), wanted);
  }
  EXPECT_EQ(drawn.bytes[15], 7);
  EXPECT_EQ(drawn.bytes[20], 100) << "beyond the picture's width";
}

TEST(CaptureFormatTest, PicturesAreLaidOut) {
  Drawn drawn({2, 2});
  const std::vector<std::uint8_t> pixels{1, 2, 3, 0, 4, 5, 6, 0, 255, 255, 255, 0, 0, 0, 255, 0};
  std::copy(pixels.begin(), pixels.end(), drawn.bytes.begin());
  std::vector<std::uint8_t> rgb(PictureBytes(PixelLayout::kRgb24, {2, 2}));
  LayOut(drawn.view, PixelLayout::kRgb24, rgb);
  EXPECT_EQ(rgb, (std::vector<std::uint8_t>{255, 255, 255, 0, 0, 255, 0, 0, 1, 2, 3, 4, 5, 6, 0, 0}));
  std::vector<std::uint8_t> yuy(PictureBytes(PixelLayout::kYuy2, {2, 2}));
  LayOut(drawn.view, PixelLayout::kYuy2, yuy);
  EXPECT_EQ(yuy[4], 235) << "white";
  EXPECT_EQ(yuy[5], 128);
  EXPECT_EQ(yuy[6], 82) << "red";
  EXPECT_EQ(yuy[7], 240);
  EXPECT_FALSE(IsPossible({.size = {641, 480}}));
  for (const MediaTime time : {MediaTime{0}, kShortestFrame - 1, kLongestFrame + 1})
    EXPECT_FALSE(IsPossible({.frameTime = time})) << time;
  for (const MediaTime time : {kShortestFrame, kLongestFrame})
    EXPECT_TRUE(IsPossible({.frameTime = time})) << time;
}

TEST(ProgrammeSoundTest, AToneGoesOnWithoutABreak) {
  const Scene scene{0, 5, true, "", ""};
  EXPECT_EQ(ToneOf(scene), 300);
  for (const int rate : {11025, 44100, 48000}) {
    const std::int64_t at = std::int64_t{rate} * 100000;
    for (std::int64_t i = -50; i < 50; ++i) {
      const int step =
          std::abs(ProgrammeSample(scene, rate, at + i + 1) - ProgrammeSample(scene, rate, at + i));
      EXPECT_LT(step, 4000 * 2 * 3.2 * 300 / rate) << rate;
    }
  }
  EXPECT_EQ(ToneOf({2, 5, true, "", ""}), 150) << "a line input's own";
  const Scene noise{0, 5, false, "", ""};
  EXPECT_NE(ProgrammeSample(noise, 48000, 1000), ProgrammeSample(scene, 48000, 1000));
}

TEST(ProgrammeCaptionsTest, AreReadByADecoder) {
  ProgrammeCaptions captions;
  Line21Decoder decoder;
  decoder.SetChannel(Line21Channel::kCaption1);
  const auto after = [&](int pictures, const Scene& scene) {
    for (int i = 0; i < pictures; ++i) {
      const CaptionPair pair = captions.Next(scene);
      decoder.Feed(1, pair.first, pair.second);
    }
    return ScreenText(decoder.Shown());
  };
  const Scene five{0, 5, true, "CITY NEWS", ""};
  EXPECT_EQ(after(80, five), "15:0 CHANNEL 5 CITY NEWS");
  EXPECT_EQ(after(90, five), "14:0 CHANNEL 5 CITY NEWS|15:0 THIS IS CAPTION 1");
  EXPECT_EQ(after(10, {0, 6, false, "", ""}), "") << "the old caption goes";
  EXPECT_EQ(after(300, {0, 6, false, "", ""}), "");
  EXPECT_EQ(after(80, {0, 7, true, "", ""}), "15:0 CHANNEL 7 ");
}

}  // namespace
}  // namespace quorvex
