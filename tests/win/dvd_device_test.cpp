// The DVD device over a navigator that does as it is told: what a real disc does not show at will.
#include "devices/dvd/dvd_device.h"

#include <evcode.h>
#include <vfwmsgs.h>

#include "tests/support/dvd_panel.h"
#include "tests/support/noted_boxes.h"

namespace quorvex {
namespace {

constexpr LONG_PTR kNoTitle = 0xFFFFFFFF;

using DvdDeviceTest = DvdTest;

TEST_F(DvdDeviceTest, OpensCuesAndPlaysAndLeavesNothingBehind) {
  stores.Write("quorvex.ini", "");
  Press(kCommandDvd);
  EXPECT_EQ(dvd.Take(),
            "Create\nRender 1\nGetFiltergraph\nSetNotifyWindow panel 1037 0\nPause\nSetServiceState 0\n"
            "Run\nForwardScan 1\n");
  EXPECT_EQ(Device().playState, PlayState::kPlaying);
  EXPECT_TRUE(IsLit(kCommandPlay));
  EXPECT_EQ(Shown(kDvdLamp), 1);
  EXPECT_EQ(Shown(kIdleLamp), 0);
  EXPECT_EQ(ShownText(), "");
  ASSERT_NE(theVideoWindow, nullptr);
  EXPECT_EQ(Device().videoWindowHandle, theVideoWindow->Frame());
  EXPECT_EQ(dvd.renderer.place.Extent(), (Size{720, 480}));
  Press(kCommandCloseDevice);
  EXPECT_EQ(
      dvd.Take(),
      "SetNotifyWindow none 1037 0\ngone graph\ngone info\ngone control\ngone captions\ngone builder\n");
  EXPECT_EQ(theVideoWindow, nullptr);
}

TEST_F(DvdDeviceTest, AReportedSuccessEndsItsStepOnly) {
  // The control answers S_FALSE: a box, and then there is no picture to ask for.
  NotedBoxes boxes;
  dvd.answers = {{"IID_IDvdControl", S_FALSE}};
  Press(kCommandDvd);
  EXPECT_EQ(boxes.Take(), std::vector<std::string>{"Quorvex: IID_IDvdControl"});
  EXPECT_EQ(ShownText(), "The DVD has no picture");
  dvd.answers = {{"IID_IVideoWindow", S_FALSE}};
  Press(kCommandDvd);
  EXPECT_EQ(boxes.Take().size(), 1U);
  ASSERT_NE(currentDevice, nullptr);
  EXPECT_EQ(Device().playState, PlayState::kPlaying);
}

TEST_F(DvdDeviceTest, APictureWithoutASizeIsNone) {
  const std::pair<long, long> sizes[] = {{0, 480}, {720, 0}, {0, 0}};
  for (const auto& [width, height] : sizes) {
    dvd.width = width;
    dvd.height = height;
    SetDisplayText("before");
    Press(kCommandDvd);
    EXPECT_EQ(currentDevice, nullptr);
    EXPECT_EQ(ShownText(), "The DVD has no picture");
    EXPECT_EQ(theVideoWindow, nullptr);
  }
}

TEST_F(DvdDeviceTest, APartlyRenderedDiscIsReportedAndNotPlayed) {
  NotedBoxes boxes;
  dvd.answers["Render"] = S_FALSE;
  dvd.status.iNumStreams = 5;
  dvd.status.iNumStreamsFailed = 2;
  dvd.status.dwFailedStreamsFlag = AM_DVD_STREAM_AUDIO | AM_DVD_STREAM_SUBPIC;
  dvd.status.bDvdVolInvalid = TRUE;
  dvd.status.bDvdVolUnknown = TRUE;
  Press(kCommandDvd);
  EXPECT_EQ(boxes.Take(),
            (std::vector<std::string>{"Quorvex: Error initializing DVD device.",
                                      "Quorvex: * 2 out of 5 DVD-Video streams failed to render properly\n"
                                      "    - audio stream\n    - subpicture stream\n"
                                      "* Specified DVD-Video volume was invalid"}));
  EXPECT_EQ(currentDevice, nullptr);

  dvd.answers["Render"] = VFW_S_AUDIO_NOT_RENDERED;
  Press(kCommandDvd);
  EXPECT_TRUE(boxes.Take().empty()) << "any other success is one";
  EXPECT_NE(currentDevice, nullptr);
}

TEST_F(DvdDeviceTest, TheTransportKeys) {
  Open();
  const std::pair<int, const char*> cases[] = {
      {kCommandNext, "Run\nNextPGSearch\n"},
      {kCommandPrevious, "Run\nPrevPGSearch\n"},
      {kCommandPause, "Pause\n"},
      {kCommandPause, "Run\nForwardScan 1\n"},
      {kCommandPause, "Pause\n"},
      {kCommandPlay, "Run\nForwardScan 1\n"},
      {kCommandStop, "Pause\nSetPositions 0 1 0\nGetState -1\nStop\n"},
  };
  for (const auto& [command, calls] : cases) {
    EXPECT_EQ(LogOf(command), calls) << command;
    EXPECT_EQ(IsLit(kCommandPause), calls == std::string("Pause\n")) << command;
    EXPECT_EQ(IsLit(kCommandPlay), calls[0] == 'R') << command;
  }
  Device().FastForward();
  EXPECT_EQ(Device().playState, PlayState::kPlaying);
  Device().EndScan();
  Device().Rewind();
  EXPECT_EQ(dvd.Take(), "Run\nForwardScan 2\nRun\nBackwardScan 2\n");
  dvd.answers = {{"Run", E_FAIL}, {"NextPGSearch", E_FAIL}};
  Press(kCommandStop);
  EXPECT_FALSE(Device().Play(0, 0));
  EXPECT_EQ(Device().playState, PlayState::kPlaying);
  EXPECT_FALSE(Device().NextItem());
}

TEST_F(DvdDeviceTest, ChaptersArePlayedFromAMenuAndSearchedWithinATitle) {
  Open();
  EXPECT_EQ(LogOf(2), "Run\nChapterSearch 3\n");
  Happens(EC_DVD_TITLE_CHANGE, 4);
  EXPECT_EQ(LogOf(2), "Run\nChapterSearch 3\n");
  EnterMenu();
  Press(kCommandStop);
  EXPECT_EQ(LogOf(2), "ChapterPlay 4 3\n");
  EXPECT_EQ(Device().playState, PlayState::kPlaying);
  EXPECT_TRUE(IsLit(kCommandPlay));
  for (const LONG_PTR unknown : {kNoTitle, static_cast<LONG_PTR>(-1)}) {
    Happens(EC_DVD_TITLE_CHANGE, 4);
    Happens(EC_DVD_TITLE_CHANGE, unknown);
    EXPECT_EQ(Device().itemCount, 0);
    EXPECT_EQ(LogOf(2), "Run\nChapterSearch 3\n");
  }
}

TEST_F(DvdDeviceTest, MenuButtonsWorkInMenusOnly) {
  Open();
  const std::pair<int, const char*> cases[] = {{kCommandUp, "UpperButtonSelect\n"},
                                               {kCommandDown, "LowerButtonSelect\n"},
                                               {kCommandIncrease, "RightButtonSelect\n"},
                                               {kCommandDecrease, "LeftButtonSelect\n"},
                                               {kCommandEnter, "ButtonActivate\n"}};
  for (const auto& [command, call] : cases) EXPECT_EQ(LogOf(command), "") << command;
  EXPECT_FALSE(Device().Up() || Device().Down() || Device().ConfirmEntry());
  EnterMenu();
  for (const auto& [command, call] : cases) EXPECT_EQ(LogOf(command), call) << command;
  EXPECT_TRUE(Device().ConfirmEntry());
  dvd.answers = {{"ButtonActivate", VFW_E_DVD_OPERATION_INHIBITED}};
  EXPECT_FALSE(Device().ConfirmEntry());
}

TEST_F(DvdDeviceTest, TheMenuKeyCallsTheMenuOrLeavesItFirst) {
  Open();
  struct Case {
    DVD_DOMAIN domain;
    bool flagBefore;
    HRESULT answer;
    const char* calls;
    bool flagAfter;
  };
  const Case cases[] = {
      {DVD_DOMAIN_Title, true, S_OK, "MenuCall 3\n", true},
      {DVD_DOMAIN_Title, false, E_FAIL, "MenuCall 3\n", false},
      {DVD_DOMAIN_VideoTitleSetMenu, false, S_OK, "Resume\nMenuCall 3\n", true},
      {DVD_DOMAIN_VideoManagerMenu, true, E_FAIL, "Resume\nMenuCall 3\n", false},
      {DVD_DOMAIN_Stop, true, S_OK, "Resume\nMenuCall 3\n", true},
      {DVD_DOMAIN_FirstPlay, false, S_OK, "MenuCall 3\n", true},
  };
  for (const Case& one : cases) {
    dvd.domain = one.domain;
    Device().menuShown = one.flagBefore;
    dvd.answers = {{"MenuCall", one.answer}};
    EXPECT_EQ(LogOf(kCommandMenu), one.calls) << one.domain;
    EXPECT_EQ(Device().IsMenuActive(), one.flagAfter) << one.domain;
    EXPECT_EQ(Shown(kMenuLamp), 0) << "the lamp waits for the event";
  }
}

TEST_F(DvdDeviceTest, EventsAreFollowedOnTheDisplay) {
  Open();
  EnterMenu();
  EXPECT_EQ(Shown(kMenuLamp), 1);
  EXPECT_TRUE(IsLit(kCommandMenu));
  Happens(EC_DVD_DOMAIN_CHANGE, DVD_DOMAIN_Stop);
  EXPECT_EQ(Shown(kMenuLamp), 1);
  Happens(EC_DVD_DOMAIN_CHANGE, DVD_DOMAIN_Title);
  EXPECT_EQ(Shown(kMenuLamp), 0);
  EXPECT_FALSE(IsLit(kCommandMenu));
  Happens(EC_DVD_DOMAIN_CHANGE, DVD_DOMAIN_VideoTitleSetMenu);
  EXPECT_TRUE(Device().IsMenuActive());

  // Several at once: the queue is drained with one message.
  dvd.events = {{EC_DVD_TITLE_CHANGE, 3}, {EC_DVD_CHAPTER_START, 12}, {EC_DVD_BUTTON_CHANGE, 7}};
  Happens(EC_DVD_CURRENT_TIME, static_cast<LONG_PTR>(0xC5592301));
  EXPECT_EQ(Number(kFirstNumber), 12);
  EXPECT_EQ(Number(kSecondNumber), 25);
  EXPECT_EQ(Shown(kChapterLabel), 1);
  EXPECT_EQ(Shown(kOfLabel), 1);
  EXPECT_EQ(Device().currentNumber, 12);
  EXPECT_EQ(Device().itemCount, 25);
  const int time[] = {0, 1, 2, 3, 5, 9};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(Shown(kHoursTens + i), time[i]) << i;
  EXPECT_EQ(dvd.unfreedEvents, 0);

  const std::pair<long, const char*> texts[] = {{EC_USERABORT, "EC_USERABORT"},
                                                {EC_ERRORABORT, "EC_ERRORABORT"},
                                                {EC_FULLSCREEN_LOST, "EC_FULLSCREEN_LOST"},
                                                {EC_COMPLETE, "EC_COMPLETE"}};
  for (const auto& [code, text] : texts) {
    EXPECT_EQ(Device().playState, PlayState::kPlaying);
    Happens(code);
    EXPECT_EQ(ShownText(), text);
  }
  EXPECT_EQ(Device().playState, PlayState::kStopped);
  dvd.answers = {{"GetNumberOfChapters", E_FAIL}};
  Happens(EC_DVD_TITLE_CHANGE, 5);
  EXPECT_EQ(Device().itemCount, 0) << "not that of another title";
}

TEST_F(DvdDeviceTest, InAMenuNoChapterIsMarked) {
  Open();
  dvd.chapters = 3;
  Happens(EC_DVD_TITLE_CHANGE, 1);
  Happens(EC_DVD_CHAPTER_START, 2);
  EnterMenu();
  MenuReader menus;
  ::SendMessageA(Button(kCommandPrevious), WM_RBUTTONUP, 0, 0);
  EXPECT_EQ(menus.Seen(), "Chapters greyed 0\n1 0\n2 1\n3 2\n");
}

TEST_F(DvdDeviceTest, ADiscThatIsClosedTakesNoKeys) {
  Open();
  EnterMenu();
  Device().Close();
  dvd.Take();
  CDevice& device = Device();
  EXPECT_FALSE(device.FastForward() || device.Rewind() || device.NextItem() || device.PreviousItem());
  EXPECT_FALSE(device.PlayChapter(1) || device.ShowMenu(3) || device.ToggleClosedCaption());
  EXPECT_FALSE(device.Up() || device.ConfirmEntry() || device.MenuClick(1, 1) || device.MenuPoint(1, 1));
  EXPECT_FALSE(device.SelectSubtitle(1300) || device.SelectAudioTrack(1350));
  EXPECT_FALSE(device.Pause() || device.Stop());
  device.OnGraphEvent();
  EXPECT_EQ(dvd.log, "");
  EXPECT_TRUE(device.IsMenuActive());
  EXPECT_EQ(StreamMenu(), "&Audio Tracks:\n&Subtitles:\n  No Subtitles greyed 1300\n");
}

TEST_F(DvdDeviceTest, APausedDiscIsNotSoughtInForItsPicture) {
  Open();
  Press(kCommandPause);
  dvd.Take();
  Press(kCommandFullScreen);
  Press(kCommandFullScreen);
  EXPECT_EQ(dvd.Take(), "");
}

TEST_F(DvdDeviceTest, TheLastDeviceIsStartedAgain) {
  stores.Write("quorvex.ini", "[QUORVEX]\r\nLastDevice=2\r\n");
  LoadSettings();
  EndLampTest();
  ASSERT_NE(currentDevice, nullptr);
  EXPECT_EQ(Device().playState, PlayState::kPlaying);
  stores.Write("quorvex.ini", "");
  SaveSettings();
  EXPECT_NE(stores.Read("quorvex.ini").find("LastDevice=2\r\n"), std::string::npos);
}

}  // namespace
}  // namespace quorvex
