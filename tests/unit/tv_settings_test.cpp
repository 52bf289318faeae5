// What the TV device stores, and its numbers: frame rates, steps of the picture's attributes.
#include "devices/tv/tv_settings.h"

#include <gtest/gtest.h>

#include "devices/tv/adjustment_step.h"

namespace quorvex {
namespace {

TEST(TvSettings, AnEmptyStoreGivesTheDefaults) {
  const IniDocument store("");
  const TvSettings tv = ReadTvSettings(store);
  EXPECT_EQ(tv.tunerInput, TunerFeed::kAntenna);
  EXPECT_EQ(tv.videoInput, VideoInput::kTuner);
  EXPECT_FALSE(tv.captionsOn);
  EXPECT_TRUE(tv.captionOpaque);
  EXPECT_EQ(ReadLastChannel(store), -1);
  EXPECT_EQ(ReadChannelText(store, TunerFeed::kCable), "");
  const CaptureSettings capture = ReadCaptureSettings(store);
  EXPECT_TRUE(capture.audio && capture.useFrameRate);
  EXPECT_FALSE(capture.timeLimitOn || capture.promptToSave);
  EXPECT_EQ(capture.file, "");
  EXPECT_EQ(capture.frameRate, 15.0);
  EXPECT_EQ(capture.timeLimitSeconds, 10U);
  EXPECT_EQ(capture.masterStream, -1);
}

TEST(TvSettings, WhatIsWrittenIsReadBack) {
  IniDocument store("[TV]\r\n; mine\r\nLastCapDevice=3\r\nAntennaChannelList=1 2 \r\n");
  PlayOrder channels;
  channels.SetOrder(std::vector{2, 4, 7});
  channels.orderIndex = 1;
  WriteTvSettings(store, {TunerFeed::kCable, VideoInput::kVideo2, true, false});
  WriteChannelList(store, TunerFeed::kCable, channels);
  WriteChannelList(store, TunerFeed::kAntenna, PlayOrder());
  WriteCaptureSettings(store, {false, "C:\\a b.avi", true, false, 29.97, true, 4294967295U, 1});
  EXPECT_EQ(
      store.Text(),
      "[TV]\r\n; mine\r\nLastCapDevice=3\r\nAntennaChannelList=1 2 \r\nTunerInputType=0\r\n"
      "VideoInputType=2\r\nClosedCaption=1\r\nCCOpaque=0\r\nLastChannel=4\r\nCableChannelList=2 4 7 \r\n"
      "[CAPTURE]\r\nCaptureAudio=0\r\nCaptureFile=C:\\a b.avi\r\nPromptToSave=1\r\nFrameRate=333667\r\n"
      "UseFrameRate=0\r\nEnableTimeLimit=1\r\nTimeLimit=-1\r\nMasterStream=1\r\n");
  const TvSettings tv = ReadTvSettings(store);
  EXPECT_EQ(tv.tunerInput, TunerFeed::kCable);
  EXPECT_EQ(tv.videoInput, VideoInput::kVideo2);
  EXPECT_TRUE(tv.captionsOn && !tv.captionOpaque);
  EXPECT_EQ(ReadLastChannel(store), 4);
  const CaptureSettings capture = ReadCaptureSettings(store);
  EXPECT_EQ(capture.file, "C:\\a b.avi");
  EXPECT_EQ(capture.frameRate, 29.97);
  EXPECT_EQ(capture.timeLimitSeconds, 4294967295U);
  EXPECT_TRUE(capture.timeLimitOn && capture.promptToSave);
  EXPECT_EQ(capture.masterStream, 1);
}

TEST(TvSettings, ValuesThatMeanNothingCountAsTheirDefaults) {
  for (const char* const value : {"3", "-1", "99999", "x"}) {
    const TvSettings tv =
        ReadTvSettings(IniDocument(std::string("[TV]\nVideoInputType=") + value + "\nTunerInputType=7\n"));
    EXPECT_EQ(tv.videoInput, VideoInput::kTuner) << value;
    EXPECT_EQ(tv.tunerInput, TunerFeed::kAntenna);
  }
  const CaptureSettings capture = ReadCaptureSettings(
      IniDocument("[CAPTURE]\nTimeLimit=0\nEnableTimeLimit=1\nCaptureFile=" + std::string(400, 'x') + "\n"));
  EXPECT_FALSE(capture.timeLimitOn) << "a limit of no time";
  EXPECT_EQ(capture.file.size(), 259U);
}

TEST(FrameRates, KeepTwoDecimals) {
  const std::pair<int, double> stored[] = {{666666, 15.0},  {333611, 29.97},    {333667, 29.97},
                                           {333666, 29.97}, {400000, 25.0},     {0, 15.0},
                                           {-5, 15.0},      {2147483647, 15.0}, {1, 10000000.0}};
  for (const auto& [time, rate] : stored) EXPECT_EQ(FrameRateOf(time), rate) << time;
  const std::pair<double, std::int64_t> rates[] = {
      {15.0, 666666}, {29.975, 333611}, {25.0, 400000}, {0.01, 1000000000}};
  for (const auto& [rate, time] : rates) EXPECT_EQ(FrameTimeOf(rate), time) << rate;
}

TEST(AdjustmentSteps, DivideARangeAndNeverOverflow) {
  constexpr std::int32_t kMost = 2147483647;
  constexpr std::int32_t kLeast = -kMost - 1;
  EXPECT_EQ(AdjustmentStep(-128, 127), 8);
  EXPECT_EQ(AdjustmentStep(0, 30), 0);
  EXPECT_EQ(AdjustmentStep(100, 0), -3);
  EXPECT_EQ(AdjustmentStep(kLeast, kMost), 138547332);
  EXPECT_EQ(AdjustedValue(250, 8, 1), 258) << "the driver says what is possible";
  EXPECT_EQ(AdjustedValue(3, 8, -1), -5);
  EXPECT_EQ(AdjustedValue(kMost, 138547332, 1), kMost);
  EXPECT_EQ(AdjustedValue(kLeast, 138547332, -1), kLeast);
}

}  // namespace
}  // namespace quorvex
