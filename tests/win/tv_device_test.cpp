// The TV device's graph: how it is built, what is told when a part is missing, and how it is taken down.
#include "tests/support/menu.h"
#include "tests/support/noted_boxes.h"
#include "tests/support/tv_panel.h"

namespace quorvex {
namespace {

using TvDeviceTest = TvTest;

TEST_F(TvDeviceTest, BuildsItsGraphAndTakesItDown) {
  stores.Write("quorvex.ini", "");
  Press(kFirstCard);
  EXPECT_EQ(tv.Take(),
            "SetFiltergraph\nAdd card\nFind card IAMStreamConfig capture\n"
            "Find card IAMVfwCaptureDialogs capture\nFind card IAMTVTuner any\nAdd line\n"
            "Find line IAMStreamConfig capture\nRenderStream preview\nFind card IVideoWindow preview\n"
            "SetFormat 666666\nAdd tee\nAdd codec\nAdd line21\nAdd surfaces\nConnect card.VBI tee.In\n"
            "Connect tee.Last codec.In\nConnect codec.Out line21.In\nRender line21.Out\n"
            "Connect card.VPVBI surfaces.In\nFind card IAMCrossbar any\nSetDrawBackgroundMode 0\n"
            "SetServiceState 0\nput_InputType 1\nput_Channel 2\nRoute 0 1\nRun\n");
  ASSERT_NE(currentDevice, nullptr);
  EXPECT_EQ(currentCaptureDevice, 0);
  EXPECT_EQ(Shown(kTvLamp), 1);
  EXPECT_EQ(Shown(kIdleLamp), 0);
  EXPECT_EQ(ShownText(), "");
  ASSERT_NE(theVideoWindow, nullptr);
  EXPECT_EQ(tv.renderer.place.Extent(), (Size{320, 240}));
  EXPECT_EQ(currentDevice->videoWindowHandle, theVideoWindow->Frame());

  Press(kCommandCloseDevice);
  EXPECT_EQ(tv.Take(),
            "gone builder\ngone audio stream\ngone video stream\ngone dialogs\ngone captions\ngone graph\n"
            "gone card\ngone line\ngone renderer\ngone tee\ngone codec\ngone line21\ngone surfaces\n"
            "gone overlay\ngone tuner\ngone crossbar\n");
  EXPECT_EQ(theVideoWindow, nullptr);
  EXPECT_EQ(tv.renderer.references, 1U);
  for (const int element : {static_cast<int>(kChannelLabel), static_cast<int>(kOfLabel)})
    EXPECT_EQ(Shown(element), 0);
  EXPECT_EQ(Number(kFirstNumber), 0);
}

TEST_F(TvDeviceTest, AnAnswerThatIsNoFailureIsLookedAtAllTheSame) {
  const struct {
    const char* step;
    std::vector<std::string> boxes;
    bool opens;
    const char* text;
  } cases[] = {
      {"List video", {"Quorvex: No video capture hardware was found"}, false, ""},
      {"List audio", {}, true, ""},
      {"RenderStream", {"Quorvex: This graph cannot preview!"}, true, ""},
      {"GetFormat", {}, false, "The capture device has no picture"},
  };
  NotedBoxes boxes;
  for (const auto& [step, told, opens, text] : cases) {
    SCOPED_TRACE(step);
    stores.Write("quorvex.ini", "");
    tv.answers = {{step, S_FALSE}};
    Press(kFirstCard);
    EXPECT_EQ(boxes.Take(), told);
    EXPECT_EQ(currentDevice != nullptr, opens);
    EXPECT_EQ(ShownText(), text);
    Press(kCommandCloseDevice);
    EXPECT_EQ(theVideoWindow, nullptr);
    EXPECT_EQ(tv.alive, 0);
    EXPECT_EQ(tv.renderer.references, 1U);
  }
}

TEST_F(TvDeviceTest, ADeviceThatIsNotThereIsNotDetected) {
  NotedBoxes boxes;
  for (const int index : {-1, 1, 19, 1000}) {
    EXPECT_FALSE(SwitchToTv(index));
    EXPECT_EQ(currentDevice, nullptr);
    EXPECT_EQ(currentCaptureDevice, -1);
  }
  tv.VideoDevices().entries[0].make = nullptr;
  EXPECT_FALSE(SwitchToTv(0));
  EXPECT_EQ(boxes.Take(), std::vector<std::string>(5, "Quorvex: Capture device was not detected."));
  tv.VideoDevices().entries.clear();
  Press(kFirstCard);
  EXPECT_EQ(boxes.Take().back(), "Quorvex: No video capture hardware was found");
}

TEST_F(TvDeviceTest, APictureWithoutASizeIsNone) {
  struct Case {
    GUID format;
    LONG width;
    LONG height;
    bool opens;
  };
  const Case cases[] = {{FORMAT_VideoInfo, 0, 0, false},      {FORMAT_VideoInfo, 320, 0, false},
                        {FORMAT_VideoInfo, -320, 240, false}, {FORMAT_VideoInfo, 320, LONG_MIN, false},
                        {FORMAT_VideoInfo2, 320, 240, false}, {FORMAT_None, 320, 240, false},
                        {FORMAT_VideoInfo, 160, -120, true}};
  for (const Case& one : cases) {
    tv.formatType = one.format;
    tv.width = one.width;
    tv.height = one.height;
    Press(kFirstCard);
    EXPECT_EQ(currentDevice != nullptr, one.opens) << one.width << 'x' << one.height;
    EXPECT_EQ(theVideoWindow != nullptr, one.opens);
    EXPECT_EQ(ShownText(), one.opens ? "" : "The capture device has no picture");
  }
  EXPECT_EQ(tv.renderer.place.Extent(), (Size{160, 120}));
}

TEST_F(TvDeviceTest, ACardWithoutAPreviewPinShowsItsCapture) {
  tv.answers = {{"RenderStream", VFW_S_NOPREVIEWPIN}};
  stores.Write("quorvex.ini", "");
  Press(kFirstCard);
  EXPECT_NE(tv.Take().find("Find card IVideoWindow capture\n"), std::string::npos);
  ASSERT_NE(currentDevice, nullptr);
  // The driver's new format does not fit: the same after a rebuild, even when nobody says it again.
  tv.answers = {{"ShowDialog", VFW_E_CANNOT_CONNECT}};
  Device().ShowCaptureFormatDialog(mainWindow);
  EXPECT_NE(tv.Take().find("Find card IVideoWindow capture\n"), std::string::npos);
}

TEST_F(TvDeviceTest, SeveralFiltersOfOneNameGiveTheLast) {
  FakeCategory& tees = tv.categories[3];
  tees.entries.push_back({L"Tee/Sink-to-Sink Converter", nullptr,
                          tv.Filter("other tee", {{"In", PINDIR_INPUT}, {"Out", PINDIR_OUTPUT}})});
  tees.entries.push_back({L"tee/sink-to-sink converter", nullptr, tv.Filter("wrong tee", {})});
  stores.Write("quorvex.ini", "");
  Press(kFirstCard);
  const std::string calls = tv.Take();
  EXPECT_NE(calls.find("Add other tee\n"), std::string::npos);
  EXPECT_NE(calls.find("Connect other tee.Out codec.In\n"), std::string::npos);
}

TEST_F(TvDeviceTest, AFormatThatDoesNotFitRebuildsThePreview) {
  Open("ClosedCaption=1\r\n");
  Press(kCommandVideoAdjustment);
  tv.Take();
  tv.answers = {{"ShowDialog", VFW_E_CANNOT_CONNECT}};
  const int placed = tv.renderer.placed;
  Device().ShowCaptureFormatDialog(mainWindow);
  EXPECT_EQ(tv.Take(),
            "Stop\nShowDialog 2\n"
            "Disconnect renderer.In\nDisconnect card.Preview\nRemove renderer\ngone renderer\n"
            "Disconnect overlay.In\nDisconnect line21.Out\nRemove overlay\ngone overlay\n"
            "Disconnect line21.In\nDisconnect codec.Out\nRemove line21\n"
            "Disconnect codec.In\nDisconnect tee.Last\nRemove codec\n"
            "Disconnect tee.In\nDisconnect card.VBI\nRemove tee\n"
            "Disconnect surfaces.In\nDisconnect card.VPVBI\nRemove surfaces\n"
            "RenderStream preview\nFind card IVideoWindow preview\nSetFormat 666666\n"
            "gone captions\ngone line21\ngone codec\ngone tee\ngone surfaces\n"
            "Add tee\nAdd codec\nAdd line21\nAdd surfaces\nConnect card.VBI tee.In\n"
            "Connect tee.Last codec.In\nConnect codec.Out line21.In\nRender line21.Out\n"
            "Connect card.VPVBI surfaces.In\nSetDrawBackgroundMode 0\nSetServiceState 1\nRun\n");
  EXPECT_GT(tv.renderer.placed, placed) << "the new renderer is in the window";
  EXPECT_EQ(tv.renderer.references, 2U);
  // One that cannot be shown leaves a device that takes its keys.
  NotedBoxes boxes;
  tv.answers["Find card IVideoWindow"] = E_FAIL;
  Device().ShowCaptureFormatDialog(mainWindow);
  EXPECT_EQ(boxes.Take(), std::vector<std::string>{"Quorvex: This graph cannot preview properly"});
  for (const int command :
       std::initializer_list<int>{kCommandUp, kCommandVideoInput, kCommandClosedCaption, kCommandPlay,
                                  kCommandFullScreen, kCommandVideoAdjustment, kCommandIncrease})
    Press(command);
  Device().ShowCaptureFormatDialog(mainWindow);
}

TEST_F(TvDeviceTest, APictureThatCannotRunIsStopped) {
  Open();
  tv.answers = {{"Run", E_FAIL}};
  EXPECT_EQ(LogOf(kCommandPlay), "Run\nStop\n");
  EXPECT_FALSE(Device().Play(0, 0));
}

TEST_F(TvDeviceTest, AnotherCardReplacesTheFirst) {
  tv.VideoDevices().entries.push_back(tv.VideoDevices().entries[0]);
  Open();
  EXPECT_EQ(LogOf(kFirstCard), "") << "it is open";
  const std::string calls = LogOf(kFirstCard + 1);
  EXPECT_NE(calls.find("gone graph\n"), std::string::npos);
  EXPECT_LT(calls.find("gone graph\n"), calls.find("SetFiltergraph\n"));
  EXPECT_EQ(currentCaptureDevice, 1);
  ASSERT_NE(theVideoWindow, nullptr);
  EXPECT_EQ(tv.renderer.references, 2U);
}

TEST_F(TvDeviceTest, TheLastCardIsStartedAgain) {
  stores.Write("quorvex.ini", "[QUORVEX]\r\nLastDevice=1\r\n[TV]\r\nLastCapDevice=0\r\nLastChannel=7\r\n");
  LoadSettings();
  EndLampTest();
  ASSERT_NE(currentDevice, nullptr);
  EXPECT_EQ(currentDevice->currentNumber, 7);
  SaveSettings();
  EXPECT_EQ(Stored("LastDevice"), "1");
  EXPECT_EQ(Stored("LastCapDevice"), "0");
}

TEST_F(TvDeviceTest, MediaSelectListsTheCards) {
  const auto make = tv.VideoDevices().entries[0].make;
  tv.VideoDevices().entries = {{L"Salt & Pepper", nullptr, make}, {nullptr, nullptr, make}};
  SwitchToTv(1);
  dvdAvailable = false;
  MenuReader menus;
  Press(kCommandMediaSelect);
  EXPECT_EQ(menus.Seen(),
            "TV/CAP:\n  Salt && Pepper 1500\n  Capture device 2 checked 1501\nDVD greyed 1005\nCD 1017\n"
            "Media File... 1002\nClose Device 1526\n");
}

}  // namespace
}  // namespace quorvex
