// The TV device's channels: keys, entry, lists, auto-tune, and what of them is stored.
#include "devices/null_device.h"
#include "mixer/mixer.h"
#include "tests/support/noted_boxes.h"
#include "tests/support/scripted_mixer.h"
#include "tests/support/tv_panel.h"

namespace quorvex {
namespace {

using TvChannelsTest = TvTest;

TEST_F(TvChannelsTest, TheStoredListOfTheInputIsUsed) {
  Open("TunerInputType=0\r\nAntennaChannelList=3 \r\nCableChannelList=2 4 x 7 0 11 \r\nLastChannel=7\r\n");
  EXPECT_EQ(Channels(), (std::vector{2, 4, 7, 11}));
  EXPECT_EQ(currentDevice->currentNumber, 7);
  EXPECT_EQ(OnScreen(), "CABLE 7");
  EXPECT_EQ(LogOf(kCommandUp), "put_Channel 11\n");
  EXPECT_EQ(LogOf(kCommandUp), "put_Channel 2\n");
  EXPECT_EQ(LogOf(kCommandLastChannel), "put_Channel 11\n");
  EXPECT_EQ(LogOf(kCommandLastChannel), "put_Channel 2\n");
  Press(kCommandCloseDevice);
  EXPECT_EQ(Stored("AntennaChannelList"), "3 ");
  EXPECT_EQ(Stored("CableChannelList"), "2 4 7 11 ");
  EXPECT_EQ(Stored("LastChannel"), "2");
}

struct Entry {
  LONG highest;
  const char* digits;
  std::string calls;
  int shown;
  bool waits;  // for more
};

TEST_F(TvChannelsTest, ATypedNumberIsTunedWhenItIsComplete) {
  const Entry entries[] = {
      {125, "125", "put_Channel 125\n", 125, false},
      {125, "20", "put_Channel 20\n", 20, false},
      {125, "12", "", 12, true},
      {125, "7", "", 7, true},
      {69, "12", "put_Channel 12\n", 12, false},
      {69, "70", "", 5, false},
      {69, "01", "", 1, true},
      {125, "130", "put_Channel 13\n", 0, true},
  };
  for (const Entry& one : entries) {
    tv.highestChannel = one.highest;
    Open("LastChannel=5\r\n");
    EXPECT_EQ(Type(one.digits), one.calls) << one.digits;
    EXPECT_EQ(Number(kFirstNumber), one.shown) << one.digits;
    EXPECT_EQ(currentDevice->entryActive, one.waits) << one.digits;
    Press(kCommandCloseDevice);
    EXPECT_EQ(::KillTimer(mainWindow, kEntryTimer), FALSE) << "the entry's time ends with the device";
  }
}

TEST_F(TvChannelsTest, DigitsAreForTelevisionOnly) {
  CNullDevice device;
  device.EnterDigit(7);
  EXPECT_FALSE(device.entryActive);
}

TEST_F(TvChannelsTest, AnEntryIsConfirmedOrDropped) {
  tv.highestChannel = 125;
  Open("LastChannel=5\r\nAntennaChannelList=2 5 9 \r\n");
  Type("7");
  EXPECT_EQ(LogOf(kCommandEnter), "put_Channel 7\n");
  EXPECT_EQ(LogOf(kCommandEnter), "") << "nothing is typed";
  EXPECT_EQ(OnScreen(), "7");
  EXPECT_EQ(LogOf(kCommandUp), "put_Channel 5\n") << "a channel outside the list goes on from its first";
  EXPECT_EQ(LogOf(kCommandLastChannel), "put_Channel 2\n");
  Type("12");
  EXPECT_EQ(LogOf(kCommandUp), "put_Channel 5\n") << "the keys act while a number is typed";
  ::SendMessageA(mainWindow, WM_TIMER, kEntryTimer, 0);
  EXPECT_EQ(Number(kFirstNumber), 5);
  EXPECT_EQ(LogOf(kCommandEnter), "");
  Type("1");
  EXPECT_EQ(LogOf(kCommandEnter), "") << "below the range";
  EXPECT_EQ(Number(kFirstNumber), 5);
  EXPECT_EQ(OnScreen(), " 5");
}

TEST_F(TvChannelsTest, ChannelsAreAddedAndDeleted) {
  tv.highestChannel = 99;
  Open("AntennaChannelList=2 9 \r\nLastChannel=9\r\n");
  Press(kCommandAddChannel);
  EXPECT_EQ(Channels(), (std::vector{2, 9})) << "it is there";
  Type("7");
  Press(kCommandEnter);
  Type("1");
  Press(kCommandAddChannel);
  Press(kCommandDeleteChannel);
  EXPECT_EQ(Channels(), (std::vector{2, 9})) << "not while a number is typed";
  ::SendMessageA(mainWindow, WM_TIMER, kEntryTimer, 0);
  EXPECT_EQ(LogOf(kCommandDeleteChannel), "") << "it is not in the list";
  EXPECT_EQ(LogOf(kCommandAddChannel), "");
  EXPECT_EQ(Channels(), (std::vector{2, 7, 9}));
  EXPECT_EQ(LogOf(kCommandUp), "put_Channel 9\n") << "it is current";
  EXPECT_EQ(LogOf(kCommandDeleteChannel), "put_Channel 2\n") << "the last one: on to the first";
  EXPECT_EQ(LogOf(kCommandDeleteChannel), "put_Channel 7\n");
  EXPECT_EQ(LogOf(kCommandDeleteChannel), "") << "one is left";
  EXPECT_EQ(LogOf(kCommandUp), "put_Channel 7\n");
  Press(kCommandCloseDevice);
  EXPECT_EQ(Stored("AntennaChannelList"), "7 ");
}

TEST_F(TvChannelsTest, ARangeUpsideDownHasNoChannels) {
  tv.lowestChannel = 12;
  tv.highestChannel = 2;
  Open();
  EXPECT_EQ(Channels().size(), 0U);
  EXPECT_EQ(OnScreen(), "ANTENNA");
  for (const int command :
       std::initializer_list<int>{kCommandUp, kCommandDown, kCommandLastChannel, kCommandDeleteChannel})
    EXPECT_EQ(LogOf(command), "") << command;
  EXPECT_EQ(Type("5"), "");
  EXPECT_EQ(LogOf(kCommandEnter), "");
  Device().AutoTuneChannels(nullptr, 1);
  EXPECT_EQ(tv.Take(), "Route 0 1\nput_InputType 1\nStoreAutoTune\n");
  Press(kCommandCloseDevice);
  EXPECT_EQ(Stored("LastChannel"), "missing");
}

TEST_F(TvChannelsTest, AnInputThatTheTunerRefusesKeepsTheStoredList) {
  NotedBoxes boxes;
  tv.answers = {{"put_InputType", E_INVALIDARG}};
  Open("AntennaChannelList=4 8 \r\nLastChannel=8\r\n");
  EXPECT_EQ(boxes.Take(), std::vector<std::string>{"Quorvex: put_InputType"});
  EXPECT_EQ(LogOf(kCommandUp), "");
  Press(kCommandCloseDevice);
  EXPECT_EQ(Stored("AntennaChannelList"), "4 8 ");
  EXPECT_EQ(Stored("LastChannel"), "8");
}

TEST_F(TvChannelsTest, WhatTheTunerRefusesIsSaidUntilItObeys) {
  Open();
  tv.answers = {{"put_Channel", E_FAIL}};
  Press(kCommandUp);
  EXPECT_EQ(ShownText(), "Cannot tune to channel 3");
  EXPECT_EQ(Number(kFirstNumber), 3);
  SetDisplayText("of somebody else");
  tv.answers.clear();
  Press(kCommandUp);
  EXPECT_EQ(ShownText(), "of somebody else");
  tv.answers = {{"put_Channel", E_FAIL}};
  Press(kCommandUp);
  tv.answers.clear();
  Press(kCommandUp);
  EXPECT_EQ(ShownText(), "");
}

TEST_F(TvChannelsTest, TheSoundIsOffWhileTheTunerMoves) {
  ScriptedMixer mixer;
  mixer.lines = {{ScriptedMixer::kSpeakers, {{ScriptedMixer::kMute, {0}}}}};
  ASSERT_TRUE(OpenMixer(ScriptedMixer::Functions()));
  muted = false;
  Open();
  mixer.writes = 0;
  Press(kCommandUp);
  EXPECT_EQ(mixer.writes, 2);
  EXPECT_FALSE(muted);
  EXPECT_EQ(Shown(kMuteLamp), 0);
  ToggleMute();
  Press(kCommandUp);
  EXPECT_EQ(mixer.writes, 3) << "it was off, and stays so";
  EXPECT_TRUE(muted);
  ToggleMute();
  mixer.devices = 0;
  OpenMixer(ScriptedMixer::Functions());
}

TEST_F(TvChannelsTest, AutoTuneKeepsTheChannelsWithASignal) {
  Open("AntennaChannelList=2 3 \r\nCableChannelList=8 \r\nVideoInputType=1\r\n");
  tv.withSignal = {4, 7, 12};
  Device().AutoTuneChannels(mainWindow, 0);
  std::string run = "Route 0 1\nput_InputType 0\n";
  for (int channel = 2; channel <= 12; ++channel) run += "AutoTune " + std::to_string(channel) + '\n';
  EXPECT_EQ(tv.Take(), run + "StoreAutoTune\nput_Channel 4\n");
  EXPECT_EQ(Channels(), (std::vector{4, 7, 12}));
  EXPECT_EQ(Stored("CableChannelList"), "4 7 12 ");
  EXPECT_EQ(Stored("AntennaChannelList"), "2 3 ");
  EXPECT_EQ(LogOf(kCommandUp), "put_Channel 7\n") << "the tuner is shown";
  EXPECT_EQ(Shown(kChannelLabel), 1);
  Press(kCommandCloseDevice);
  EXPECT_EQ(Stored("TunerInputType"), "0");
  EXPECT_EQ(Stored("LastChannel"), "7");
}

TEST_F(TvChannelsTest, AnAutoTuneThatFindsNothingLeavesTheListInMemory) {
  Open("AntennaChannelList=5 6 \r\nLastChannel=6\r\nCableChannelList=8 \r\n");
  Device().AutoTuneChannels(mainWindow, 1);
  EXPECT_EQ(Channels(), (std::vector{5, 6}));
  EXPECT_TRUE(tv.Take().ends_with("StoreAutoTune\nput_Channel 6\n"));
  EXPECT_EQ(Stored("AntennaChannelList"), "");
  Device().AutoTuneChannels(mainWindow, 0);
  EXPECT_EQ(Stored("CableChannelList"), "");
  Press(kCommandCloseDevice);
  EXPECT_EQ(Stored("CableChannelList"), "") << "the antenna's channels are not the cable's";
}

TEST_F(TvChannelsTest, ACardWithoutATunerHasNoChannels) {
  tv.answers = {{"Find card IAMTVTuner", E_NOINTERFACE}};
  stores.Write("quorvex.ini", "[TV]\r\nClosedCaption=1\r\nAntennaChannelList=3 \r\nVideoInputType=2\r\n");
  const std::string before = stores.Read("quorvex.ini");
  Press(kFirstCard);
  EXPECT_EQ(tv.Take().find("Add tee"), std::string::npos);
  ASSERT_NE(currentDevice, nullptr);
  EXPECT_FALSE(currentDevice->captionsOn);
  EXPECT_EQ(Shown(kCaptionLamp), 0);
  Device().AutoTuneChannels(mainWindow, 1);
  EXPECT_EQ(tv.Take(), "");
  for (const int command : std::initializer_list<int>{
           kCommandUp, kCommandDown, kCommandVideoInput, kCommandClosedCaption, kCommandAddChannel,
           kCommandDeleteChannel, kCommandLastChannel, int{kCommandDigit0} + 5, kCommandEnter})
    EXPECT_EQ(LogOf(command), "") << command;
  EXPECT_FALSE(currentDevice->entryActive);
  Press(kCommandCloseDevice);
  EXPECT_EQ(stores.Read("quorvex.ini").substr(0, before.size()), before) << "the section TV stays as it was";
  EXPECT_EQ(Stored("FrameRate"), "666666");
}

}  // namespace
}  // namespace quorvex
