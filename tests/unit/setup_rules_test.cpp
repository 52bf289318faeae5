// What the Setup sheet decides: the page shown first, what can be used, what entered texts mean.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "devices/tv/frame_rate.h"
#include "resources/ids.h"
#include "setup/capture_entries.h"
#include "setup/enabling.h"

namespace quorvex {
namespace {

constexpr SetupSubject kNothing;
constexpr SetupSubject kCard{.device = DeviceType::kTv};
constexpr SetupSubject kTuner{.device = DeviceType::kTv, .hasTuner = true};
constexpr SetupSubject kRecording{.device = DeviceType::kTv, .hasTuner = true, .recording = true};

std::set<int> SetOf(const std::vector<int>& controls) { return {controls.begin(), controls.end()}; }

TEST(SetupRules, TheCurrentDevicesPageComesFirst) {
  const std::pair<SetupSubject, SetupPageKind> cases[] = {
      {kNothing, SetupPageKind::kGeneral},
      {kTuner, SetupPageKind::kTv},
      {kCard, SetupPageKind::kCapture},
      {kRecording, SetupPageKind::kTv},
      {{.device = DeviceType::kDvd}, SetupPageKind::kDvd},
      {{.device = DeviceType::kCd}, SetupPageKind::kCd},
      {{.device = DeviceType::kFile}, SetupPageKind::kMediaFiles},
  };
  for (const auto& [subject, page] : cases) EXPECT_EQ(FirstPage(subject), page);
}

TEST(SetupRules, WhatCanBeUsedIsWhatTheDeviceHas) {
  const std::set<int> captions = {IDC_OPAQUE_CAPTIONS, IDC_TRANSPARENT_CAPTIONS};
  std::set<int> all = captions;
  all.insert({IDC_ANTENNA, IDC_CABLE, IDC_AUTO_TUNE});
  EXPECT_EQ(SetOf(EnabledTvControls(kRecording)), all);
  EXPECT_EQ(SetOf(EnabledTvControls(kCard)), captions);
  EXPECT_TRUE(EnabledTvControls({.device = DeviceType::kDvd}).empty());
  EXPECT_EQ(EnabledCdControls({.device = DeviceType::kCd}), std::vector{IDC_EDIT_PLAYLIST});
  EXPECT_TRUE(EnabledCdControls({.device = DeviceType::kFile}).empty());
  for (const SetupSubject& subject : {kNothing, kRecording, SetupSubject{.device = DeviceType::kCd}}) {
    EXPECT_FALSE(IsCapturePageFilled(subject));
    EXPECT_TRUE(EnabledCaptureControls(subject).empty());
  }
  EXPECT_EQ(EnabledCaptureControls(kCard).size(), 11U);
  const std::pair<bool SetupSubject::*, int> more[] = {{&SetupSubject::recordsSound, IDC_AUDIO_FORMAT},
                                                       {&SetupSubject::hasSourceDialog, IDC_VIDEO_SOURCE},
                                                       {&SetupSubject::hasFormatDialog, IDC_VIDEO_FORMAT},
                                                       {&SetupSubject::hasDisplayDialog, IDC_VIDEO_DISPLAY}};
  for (const auto& [fact, control] : more) {
    SetupSubject subject = kTuner;
    subject.*fact = true;
    std::set<int> expected = SetOf(EnabledCaptureControls(kCard));
    expected.insert(control);
    EXPECT_EQ(SetOf(EnabledCaptureControls(subject)), expected) << control;
  }
}

TEST(SetupRules, TextsBecomeTheNumberThatTheyBeginWith) {
  const std::pair<const char*, double> rates[] = {{"29.97", 29.97},
                                                  {" 25 ", 25},
                                                  {"+12.5", 12.5},
                                                  {".5", 0.5},
                                                  {"12abc", 12},
                                                  {"1e9", 1},
                                                  {"30\r\n40", 30},
                                                  {"-5", -5},
                                                  {"", 0},
                                                  {"inf", 0},
                                                  {"9999999999999999999999999999999123", 1e31}};
  for (const auto& [text, number] : rates) EXPECT_DOUBLE_EQ(NumberOfFrameRate(text), number) << text;
  const std::pair<const char*, std::uint32_t> limits[] = {
      {" 7\r\n", 7},     {"+3", 3}, {"10s", 10}, {"4294967295", 4294967295U},
      {"4294967296", 0}, {"-1", 0}, {"0x10", 0}};
  for (const auto& [text, number] : limits) EXPECT_EQ(NumberOfTimeLimit(text), number) << text;
}

// What stands behind an invalid rate keeps its value.
TEST(SetupRules, EntriesBecomeOptionsUpToAnInvalidFrameRate) {
  const CaptureSettings before{true, "C:\\a.avi", false, true, 15.0, false, 10, -1};
  for (const char* const rate : {"24.5", "0", "-5", "letters", ""}) {
    SCOPED_TRACE(rate);
    const bool isValid = *rate == '2';
    CaptureSettings settings = before;
    EXPECT_EQ(TakeCaptureEntries({.promptToSave = true,
                                  .audio = false,
                                  .frameRate = rate,
                                  .useFrameRate = false,
                                  .timeLimit = "90",
                                  .timeLimitOn = true,
                                  .masterStream = 1},
                                 settings),
              isValid);
    EXPECT_EQ(settings.file, "C:\\a.avi") << "that is no entry";
    EXPECT_TRUE(settings.promptToSave && !settings.audio);
    EXPECT_EQ(settings.frameRate, isValid ? 24.5 : 15.0);
    EXPECT_EQ(settings.useFrameRate, !isValid);
    EXPECT_EQ(settings.timeLimitSeconds, isValid ? 90U : 10U);
    EXPECT_EQ(settings.timeLimitOn, isValid);
    EXPECT_EQ(settings.masterStream, isValid ? 1 : -1);
  }
  CaptureSettings settings;
  EXPECT_TRUE(TakeCaptureEntries({.frameRate = "1", .timeLimit = "0", .timeLimitOn = true}, settings));
  EXPECT_FALSE(settings.timeLimitOn) << "a limit of no time";
}

TEST(SetupRules, SpinningStaysWithinWhatIsTaken) {
  EXPECT_EQ(FrameRateText(29.97), "29.970000");
  EXPECT_EQ(SteppedFrameRate("15.000000", 1), "16.000000");
  EXPECT_EQ(SteppedFrameRate("1.5", -1), "1.000000");
  EXPECT_EQ(SteppedFrameRate("letters", -3), "1.000000");
  EXPECT_EQ(SteppedTimeLimit("10", -1), "9");
  EXPECT_EQ(SteppedTimeLimit("0", -1), "0");
  EXPECT_EQ(SteppedTimeLimit("4294967295", 1), "4294967295");
}

}  // namespace
}  // namespace quorvex
