#include "mixer/mixer.h"

#include <vector>

#include "devices/audio_adjustment.h"
#include "tests/support/panel.h"
#include "tests/support/recording_device.h"
#include "tests/support/scripted_mixer.h"

namespace quorvex {
namespace {

using enum AudioOperation;
using Values = std::vector<DWORD>;

class MixerTest : public PanelTest {
 protected:
  MixerTest() {
    mixer.lines = {{MIXERLINE_COMPONENTTYPE_DST_HEADPHONES, {{ScriptedMixer::kVolume, {7, 7}}}},
                   {ScriptedMixer::kSpeakers,
                    {{ScriptedMixer::kVolume, {40000, 40000}},
                     {ScriptedMixer::kMute, {1}},
                     {ScriptedMixer::kBass, {30000}},
                     {ScriptedMixer::kTreble, {2000}}}}};
  }
  ~MixerTest() override {
    currentDevice.reset();
    mixer.devices = 0;
    OpenMixer(ScriptedMixer::Functions());
    EXPECT_EQ(mixer.open, 0) << "a handle was left open";
    mixerAvailable = false;
    muted = false;
    adjustmentInfo = {};
  }

  void Open() { mixerAvailable = OpenMixer(ScriptedMixer::Functions()); }
  void UseDevice() { currentDevice = std::make_unique<RecordingDevice>(DeviceType::kCd, log); }
  Values& Speakers(std::size_t control) { return mixer.lines.at(1).controls.at(control).values; }

  // The bar as it is on the desktop, there being no picture; "" when there is none.
  static std::string Bar() {
    std::string bar;
    for (HWND next = nullptr; (next = ::FindWindowExA(nullptr, next, "myOSCtl", nullptr)) != nullptr;) {
      char title[32] = "";
      ::GetWindowTextA(next, title, sizeof title);
      if (title[0] != 0) bar += title;
    }
    if (bar.empty() != !IsOsdLevelShown()) ADD_FAILURE() << "bar " << bar << " against IsOsdLevelShown";
    return bar;
  }
  static int Reached() {
    int large = 0;
    for (HWND next = nullptr; (next = ::FindWindowExA(nullptr, next, "myOSCtl", "")) != nullptr;) {
      RECT rect{};
      ::GetWindowRect(next, &rect);
      large += rect.right - rect.left == 16 ? 1 : 0;  // 1280 / 39 = 32, and half of that
    }
    return large;
  }

  ScriptedMixer mixer;
};

TEST_F(MixerTest, VolumeAndBalanceWriteBothChannels) {
  Open();
  EXPECT_EQ(VolumeBalance(kReadVolume), 40000U);
  EXPECT_EQ(VolumeBalance(kReadBalance), 32768U);
  EXPECT_EQ(mixer.writes, 0) << "reading writes nothing";
  EXPECT_EQ(VolumeBalance(kBalanceLeft), 30654U);
  EXPECT_EQ(Speakers(0), (Values{40000, 37420}));
  EXPECT_EQ(VolumeBalance(kVolumeDown), 37886U);
  EXPECT_EQ(Speakers(0), (Values{37886, 35442}));
  Speakers(0) = {0, 30000};
  EXPECT_EQ(VolumeBalance(kReadBalance), 65535U);
  EXPECT_EQ(VolumeBalance(kBalanceRight), 63421U);
  EXPECT_EQ(Speakers(0), (Values{1935, 30000}));
}

TEST_F(MixerTest, OfSeveralControlsOfATypeTheLastOneCounts) {
  mixer.lines.at(1).controls.push_back({ScriptedMixer::kVolume, {100, 100}});
  Open();
  EXPECT_EQ(VolumeBalance(kReadVolume), 100U);
}

TEST_F(MixerTest, AMixerThatCannotBeReadIsNone) {
  const auto opens = [&] { return OpenMixer(ScriptedMixer::Functions()); };
  mixer.refusesControls = true;
  EXPECT_FALSE(opens());
  EXPECT_EQ(mixer.open, 0);
  mixer.refusesControls = false;
  mixer.refusesOpen = true;
  EXPECT_FALSE(opens());
  mixer.devices = 0;
  EXPECT_FALSE(opens());
  EXPECT_EQ(VolumeBalance(kVolumeUp) + ToneControl(kBassUp), 0U);
  EXPECT_FALSE(ToggleMute());
  UseDevice();
  SetDisplayText("as before");
  Press(kCommandMute);
  Press(kCommandAudioAdjustment);
  EXPECT_EQ(Bar(), "");
  EXPECT_FALSE(muted);
  EXPECT_EQ(ShownText(), "as before") << "without a mixer the keys do nothing";
}

TEST_F(MixerTest, WhatIsMissingIsPassedOverAndNotTouched) {
  UseDevice();
  mixer.lines.at(1).controls = {{ScriptedMixer::kVolume, {40000, 40000}}, {ScriptedMixer::kTreble, {2000}}};
  Open();
  Press(kCommandAudioAdjustment);
  std::string bars = Bar();
  for (const int key : {kCommandUp, kCommandUp, kCommandUp, kCommandDown, kCommandDown}) {
    Press(key);
    bars += ' ' + Bar();
  }
  EXPECT_EQ(bars, "VOLUME BALANCE TREBLE VOLUME TREBLE BALANCE");
  mixer.lines.at(1).controls.pop_back();
  Open();
  Press(kCommandDown);
  Press(kCommandDown);
  EXPECT_EQ(Bar(), "BALANCE");
  Press(kCommandAudioAdjustment);
  Press(kCommandMute);
  EXPECT_EQ(ShownText(), "No mute control");
  EXPECT_FALSE(muted);
  EXPECT_FALSE(IsLit(kCommandMute));

  mixer.lines.at(1).componentType = MIXERLINE_COMPONENTTYPE_DST_WAVEIN;
  Open();
  mixer.reads = 0;
  Press(kCommandAudioAdjustment);
  EXPECT_EQ(ShownText(), "No volume control");
  EXPECT_EQ(Bar(), "");
  EXPECT_EQ(VolumeBalance(kVolumeUp) + ToneControl(kBassUp), 0U);
  EXPECT_EQ(mixer.reads + mixer.writes, 0);
}

TEST_F(MixerTest, OneVolumeForAllChannelsHasNoBalance) {
  mixer.lines.at(1).controls.at(0) = {ScriptedMixer::kVolume, {40000}, true};
  UseDevice();
  Open();
  EXPECT_EQ(VolumeBalance(kVolumeDown), 37886U);
  EXPECT_EQ(Speakers(0), Values{37886});
  Press(kCommandAudioAdjustment);
  Press(kCommandUp);
  EXPECT_EQ(Bar(), "BALANCE");
  EXPECT_EQ(adjustmentInfo.value, 32768);
  mixer.writes = 0;
  Press(kCommandRight);
  EXPECT_EQ(adjustmentInfo.value, 32768);
  EXPECT_EQ(mixer.writes, 0);
  EXPECT_EQ(ShownText(), "No balance control");
}

TEST_F(MixerTest, ARefusedWriteIsSeenAtTheNextReading) {
  UseDevice();
  Open();
  mixer.refusesWrites = true;
  Press(kCommandAudioAdjustment);
  Press(kCommandRight);
  EXPECT_EQ(adjustmentInfo.value, 42114) << "as it is meant to be";
  EXPECT_EQ(VolumeBalance(kReadVolume), 40000U);
}

TEST_F(MixerTest, TheKeysGoThroughTheAdjustments) {
  UseDevice();
  Open();
  Press(kCommandRight);
  Press(kCommandUp);
  EXPECT_EQ(log, "Up\n") << "without a bar the device has the key";
  Press(kCommandAudioAdjustment);
  EXPECT_EQ(Bar(), "VOLUME");
  EXPECT_EQ(Reached(), 19);
  log.clear();
  Press(kCommandLeft);
  EXPECT_EQ(Reached(), 18);
  EXPECT_EQ(Speakers(0).at(1), 37886U);
  const struct {
    int command;
    const char* title;
    int value;
  } round[] = {{kCommandUp, "BALANCE", 32769},   {kCommandUp, "BASS", 30000},
               {kCommandUp, "TREBLE", 2000},     {kCommandUp, "VOLUME", 37886},
               {kCommandDown, "TREBLE", 2000},   {kCommandRight, "TREBLE", 4114},
               {kCommandDown, "BASS", 30000},    {kCommandLeft, "BASS", 27886},
               {kCommandDown, "BALANCE", 32769}, {kCommandRight, "BALANCE", 34883}};
  for (const auto& [command, title, value] : round) {
    Press(command);
    EXPECT_EQ(Bar(), title);
    EXPECT_EQ(adjustmentInfo.value, value) << title;
  }
  EXPECT_EQ(log, "") << "the device hears none of it";
  Press(kCommandAudioAdjustment);
  EXPECT_EQ(Bar(), "");
  Press(kCommandAudioAdjustment);
  EXPECT_EQ(Bar(), "VOLUME") << "every showing starts there";
}

TEST_F(MixerTest, WithoutADeviceTheSoundStillObeys) {
  Open();
  Press(kCommandAudioAdjustment);
  for (const int arrow : {kCommandUp, kCommandDown, kCommandLeft, kCommandRight}) Press(arrow);
  EXPECT_EQ(Bar(), "");
  EXPECT_EQ(mixer.writes, 0) << "the arrow keys belong to a bar";
  Press(kCommandMute);
  EXPECT_EQ(Speakers(1), Values{1});
  EXPECT_TRUE(IsLit(kCommandMute));
  EXPECT_EQ(Shown(kMuteLamp), 1);
  Press(kCommandMute);
  EXPECT_EQ(Speakers(1), Values{0});
  EXPECT_FALSE(IsLit(kCommandMute));
}

TEST_F(MixerTest, TheBarOfADeviceThatGoesGoesWithIt) {
  UseDevice();
  Open();
  Press(kCommandAudioAdjustment);
  EXPECT_EQ(Bar(), "VOLUME");
  currentDevice.reset();
  EXPECT_EQ(Bar(), "");
}

}  // namespace
}  // namespace quorvex
