// What the TV device shows: its inputs, and the adjustment of the picture.
#include "devices/audio_adjustment.h"
#include "mixer/mixer.h"
#include "tests/support/noted_boxes.h"
#include "tests/support/scripted_mixer.h"
#include "tests/support/tv_panel.h"

namespace quorvex {
namespace {

using TvPictureTest = TvTest;

TEST_F(TvPictureTest, InputsAreSelectedInTurn) {
  Open("LastChannel=5\r\n");
  EXPECT_EQ(LogOf(kCommandVideoInput), "Route 0 0\n");
  EXPECT_EQ(OnScreen(), "VIDEO 1");
  EXPECT_EQ(Shown(kChannelLabel), 0);
  EXPECT_EQ(Shown(kOfLabel), 0);
  EXPECT_EQ(Number(kFirstNumber), 0);
  EXPECT_EQ(Stored("VideoInputType"), "1");
  for (const int command :
       std::initializer_list<int>{kCommandUp, kCommandDown, kCommandAddChannel, kCommandDeleteChannel,
                                  kCommandLastChannel, int{kCommandDigit0} + 5, kCommandEnter})
    EXPECT_EQ(LogOf(command), "") << "channels are the tuner's";
  EXPECT_EQ(LogOf(kCommandVideoInput), "Route 0 2\n");
  EXPECT_EQ(OnScreen(), "VIDEO 2");
  EXPECT_EQ(LogOf(kCommandVideoInput), "Route 0 1\n") << "the tuner is where it was";
  EXPECT_EQ(OnScreen(), "ANTENNA 5");
  EXPECT_EQ(Number(kFirstNumber), 5);
  EXPECT_EQ(Number(kSecondNumber), 12);
  EXPECT_EQ(Shown(kChannelLabel), 1);
  EXPECT_EQ(Shown(kOfLabel), 1);
}

TEST_F(TvPictureTest, TheLastInputIsShownAgain) {
  Open("VideoInputType=2\r\n");
  EXPECT_EQ(OnScreen(), "VIDEO 2");
  EXPECT_EQ(Shown(kChannelLabel), 0);
  Press(kCommandCloseDevice);
  Open("VideoInputType=77\r\n");
  EXPECT_EQ(OnScreen(), "ANTENNA 2");
}

TEST_F(TvPictureTest, ANumberThatIsTypedEndsWithTheInput) {
  Open();
  Type("1");
  Press(kCommandVideoInput);
  EXPECT_FALSE(currentDevice->entryActive);
  EXPECT_EQ(::KillTimer(mainWindow, kEntryTimer), FALSE);
}

TEST_F(TvPictureTest, ARefusedSwitchIsSaid) {
  Open();
  tv.answers = {{"Route", E_INVALIDARG}};
  Press(kCommandVideoInput);
  EXPECT_EQ(ShownText(), "Cannot switch to VIDEO 1");
  tv.answers.clear();
  Press(kCommandVideoInput);
  EXPECT_EQ(ShownText(), "");
  Press(kCommandCloseDevice);
  tv.answers = {{"Find card IAMCrossbar", E_NOINTERFACE}};
  Open();
  EXPECT_EQ(LogOf(kCommandVideoInput), "");
  EXPECT_EQ(OnScreen(), "VIDEO 1");
}

TEST_F(TvPictureTest, TheAttributesAreARing) {
  tv.attributes[1] = {0, 31, 7};
  tv.attributes[2] = {-180, 180, 0};
  Open();
  EXPECT_FALSE(Device().HasVideoAdjustment());
  EXPECT_EQ(LogOf(kCommandVideoAdjustment), "Find card IAMVideoProcAmp any\n");
  EXPECT_TRUE(Device().HasVideoAdjustment());
  struct Case {
    int command;
    const char* title;
    int step;
    int value;
  };
  const Case cases[] = {{kCommandUp, "CONTRAST", 1, 7},  {kCommandUp, "HUE", 11, 0},
                        {kCommandUp, "COLOR", 8, 128},   {kCommandUp, "BRIGHTNESS", 8, 128},
                        {kCommandDown, "COLOR", 8, 128}, {kCommandDown, "HUE", 11, 0}};
  EXPECT_EQ(adjustmentInfo.title, "BRIGHTNESS");
  for (const Case& one : cases) {
    EXPECT_EQ(LogOf(one.command), "") << "the channel stays";
    EXPECT_TRUE(IsOsdLevelShown());
    EXPECT_EQ(adjustmentInfo.title, one.title);
    EXPECT_EQ(adjustmentInfo.step, one.step) << one.title;
    EXPECT_EQ(adjustmentInfo.value, one.value) << one.title;
    EXPECT_EQ(adjustmentInfo.barMode, 1);
    EXPECT_FALSE(IsAudioAdjustment());
  }
  Press(kCommandVideoAdjustment);
  EXPECT_FALSE(IsOsdLevelShown());
  EXPECT_EQ(LogOf(kCommandVideoAdjustment), "") << "the driver was asked once";
  EXPECT_EQ(adjustmentInfo.title, "BRIGHTNESS");
}

TEST_F(TvPictureTest, ValuesMoveByOneSegment) {
  tv.takesAnyValue = false;
  tv.attributes[0] = {0, 255, 240};
  tv.attributes[1] = {0, 30, 15};
  Open();
  EXPECT_EQ(LogOf(kCommandRight), "") << "no bar is shown";
  EXPECT_EQ(LogOf(kCommandIncrease), "") << "the driver was not asked for its controls";
  Press(kCommandVideoAdjustment);
  const std::pair<int, const char*> cases[] = {{kCommandRight, "Set 0 248\n"},
                                               {kCommandLeft, "Set 0 240\n"},
                                               {kCommandIncrease, "Set 0 248\n"},
                                               {kCommandIncrease, "Set 0 256\n"},
                                               {kCommandDecrease, "Set 0 240\n"}};
  for (const auto& [command, call] : cases) EXPECT_EQ(LogOf(command), call);
  EXPECT_EQ(tv.attributes[0].value, 240) << "what the driver refused counts from where it was";
  Press(kCommandUp);
  EXPECT_EQ(LogOf(kCommandRight), "Set 1 15\n") << "a range narrower than the bar has no steps";
  Device().OnOsdTimer();
  EXPECT_EQ(LogOf(kCommandLeft), "");
  EXPECT_EQ(LogOf(kCommandDecrease), "Set 1 15\n") << "the keypad works on the last one without its bar";
  EXPECT_FALSE(IsOsdLevelShown());
}

TEST_F(TvPictureTest, PictureAndSoundTakeTurnsOnTheBar) {
  ScriptedMixer mixer;
  mixer.lines = {{ScriptedMixer::kSpeakers, {{ScriptedMixer::kVolume, {30000, 30000}}}}};
  ASSERT_TRUE(OpenMixer(ScriptedMixer::Functions()));
  mixerAvailable = true;
  Open();
  Press(kCommandVideoAdjustment);
  Press(kCommandAudioAdjustment);
  EXPECT_EQ(adjustmentInfo.title, "VOLUME");
  EXPECT_TRUE(IsOsdLevelShown());
  EXPECT_EQ(LogOf(kCommandIncrease), "Set 0 136\n") << "by the picture's step, not by the sound's";
  EXPECT_EQ(adjustmentInfo.title, "BRIGHTNESS");
  EXPECT_TRUE(IsOsdLevelShown());
  Press(kCommandAudioAdjustment);
  EXPECT_EQ(LogOf(kCommandRight), "");
  Press(kCommandVideoAdjustment);
  EXPECT_EQ(adjustmentInfo.title, "BRIGHTNESS");
  Press(kCommandVideoAdjustment);
  EXPECT_FALSE(IsOsdLevelShown());
  mixerAvailable = false;
  mixer.devices = 0;
  OpenMixer(ScriptedMixer::Functions());
}

TEST_F(TvPictureTest, ACardWithoutControlsSaysSo) {
  NotedBoxes boxes;
  Open();
  tv.answers = {{"Find card IAMVideoProcAmp", E_NOINTERFACE}};
  Press(kCommandVideoAdjustment);
  EXPECT_EQ(boxes.Take(), std::vector<std::string>{"Quorvex: Video Adjustment not available"});
  EXPECT_FALSE(IsOsdLevelShown());
  tv.answers = {{"GetRange", E_FAIL}, {"Get", E_FAIL}, {"Set", E_FAIL}};
  for (const int command :
       std::initializer_list<int>{kCommandVideoAdjustment, kCommandUp, kCommandRight, kCommandLeft})
    Press(command);
  EXPECT_EQ(adjustmentInfo.title, "CONTRAST") << "it is asked for anew";
}

}  // namespace
}  // namespace quorvex
