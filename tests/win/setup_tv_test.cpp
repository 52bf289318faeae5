// The TV and Capture pages of the Setup sheet over a capture card that does as its test says.
#include "resources/ids.h"
#include "shell/device_switch.h"
#include "tests/support/setup_user.h"
#include "tests/support/tv_panel.h"

namespace quorvex {
namespace {

class SetupTvTest : public TvTest {
 protected:
  static void With(const SetupUser::Script& script) {
    SetupUser user(script);
    Press(kCommandSetup);
  }
};

constexpr int kRecordingOptions[] = {IDC_ALLOCATE_FILE,  IDC_SAVE_CAPTURE,   IDC_PROMPT_TO_SAVE,
                                     IDC_CAPTURE_AUDIO,  IDC_USE_FRAME_RATE, IDC_FRAME_RATE,
                                     IDC_USE_TIME_LIMIT, IDC_TIME_LIMIT,     IDC_MASTER_NONE,
                                     IDC_MASTER_AUDIO,   IDC_MASTER_VIDEO};

TEST_F(SetupTvTest, TheTunersInputAndTheBackgroundTakeEffectOnApply) {
  Open("AntennaChannelList=2 3 \r\nCableChannelList=7 8 \r\nLastChannel=3\r\n");
  With([this](SetupUser& user) {
    user.Press(IDC_CABLE);
    user.Press(IDC_TRANSPARENT_CAPTIONS);
    EXPECT_EQ(tv.Take(), "") << "not before Apply";
    user.Apply();
    EXPECT_EQ(tv.Take(), "put_InputType 0\nput_Channel 7\nSetDrawBackgroundMode 1\n");
    EXPECT_EQ(Channels(), (std::vector{7, 8}));
    user.Cancel();
  });
  Press(kCommandCloseDevice);
  EXPECT_EQ(Stored("TunerInputType"), "0");
  EXPECT_EQ(Stored("CCOpaque"), "0");
}

TEST_F(SetupTvTest, CancelLeavesTheCardAlone) {
  Open();
  const std::string before = stores.Read("quorvex.ini");
  With([](SetupUser& user) {
    user.Press(IDC_CABLE);
    user.Show(SetupPageKind::kCapture);
    user.Press(IDC_PROMPT_TO_SAVE);
    user.Cancel();
  });
  EXPECT_EQ(tv.Take(), "");
  EXPECT_EQ(Device().TunerInput(), TunerFeed::kAntenna);
  EXPECT_FALSE(Device().capture.promptToSave);
  EXPECT_EQ(stores.Read("quorvex.ini"), before);
}

// Else the sheet could be pressed again under its own box.
TEST_F(SetupTvTest, ABoxHoldsTheSheetThatBroughtItUp) {
  Open();
  tv.answers = {{"put_InputType", E_FAIL}};
  With([](SetupUser& user) {
    user.Press(IDC_CABLE);
    constexpr int kApplyNow = 0x3021;
    ::PostMessageA(::GetDlgItem(user.Dialog(), kApplyNow), BM_CLICK, 0, 0);
    const HWND box = user.WaitForWindow("Quorvex");
    EXPECT_FALSE(::IsWindowEnabled(user.Dialog()));
    user.Close(box, IDOK);
    user.Cancel();
  });
}

TEST_F(SetupTvTest, AutoTuneTunesTheInputThatIsChosen) {
  Open("CableChannelList=3 \r\n");
  tv.withSignal = {5};
  static HWND sheet = nullptr;
  // Looks at the sheet from within the run.
  SetOnScreenText([](const std::string&) { EXPECT_FALSE(::IsWindowVisible(sheet)); });
  With([this](SetupUser& user) {
    sheet = user.Dialog();
    user.Press(IDC_CABLE);
    const HWND question = user.PressFor(IDC_AUTO_TUNE, "Channel Autotune");
    EXPECT_EQ(::GetWindow(question, GW_OWNER), sheet);
    user.Close(question, IDOK);
    EXPECT_TRUE(SetupUser::WaitUntil([] { return ::IsWindowVisible(sheet) != FALSE; }));
    EXPECT_TRUE(tv.Take().starts_with("Route 0 1\nput_InputType 0\nAutoTune 2\n"));
    user.Cancel();
  });
  ConnectPicture();
  EXPECT_EQ(Stored("CableChannelList"), "5 ");
}

TEST_F(SetupTvTest, TheCapturePageShowsTheOptions) {
  tv.answers["HasDialog 1"] = S_FALSE;
  Open(
      "[CAPTURE]\r\nCaptureAudio=0\r\nUseFrameRate=0\r\nFrameRate=333667\r\nEnableTimeLimit=1\r\n"
      "TimeLimit=-1\r\nMasterStream=0\r\n");
  With([](SetupUser& user) {
    user.Show(SetupPageKind::kCapture);
    for (const int control : {IDC_VIDEO_SOURCE, IDC_AUDIO_FORMAT}) EXPECT_FALSE(user.IsEnabled(control));
    EXPECT_TRUE(user.IsEnabled(IDC_VIDEO_FORMAT) && user.IsChecked(IDC_USE_TIME_LIMIT));
    EXPECT_FALSE(user.IsChecked(IDC_CAPTURE_AUDIO) || user.IsChecked(IDC_USE_FRAME_RATE));
    EXPECT_EQ(user.Text(IDC_FRAME_RATE), "29.970000");
    EXPECT_EQ(user.Text(IDC_TIME_LIMIT), "4294967295");
    EXPECT_TRUE(user.IsChecked(IDC_MASTER_VIDEO));
    EXPECT_FALSE(user.CanApply()) << "filling the fields is no change";
    user.Press(IDC_CAPTURE_AUDIO);
    EXPECT_TRUE(user.IsEnabled(IDC_AUDIO_FORMAT));
    user.Press(IDC_CAPTURE_AUDIO);
    EXPECT_FALSE(user.IsEnabled(IDC_AUDIO_FORMAT));
  });
}

TEST_F(SetupTvTest, WhileItRecordsTheCapturePageIsEmptyAndStoresNothing) {
  Open();
  currentDevice->recording = true;
  With([](SetupUser& user) {
    user.Show(SetupPageKind::kCapture);
    for (const int control : kRecordingOptions) EXPECT_FALSE(user.IsEnabled(control)) << control;
    EXPECT_EQ(user.Text(IDC_FRAME_RATE), "");
    ::SendMessageA(user.Control(IDC_TIME_LIMIT_SPIN), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(4, 4));
    ::SendMessageA(user.Control(IDC_TIME_LIMIT_SPIN), WM_LBUTTONUP, 0, MAKELPARAM(4, 4));
    EXPECT_EQ(user.Text(IDC_TIME_LIMIT), "");
    user.Ok();
  });
  EXPECT_EQ(Device().capture.frameRate, 15.0);
  currentDevice->recording = false;
}

TEST_F(SetupTvTest, TheDriversDialogsAreOpenedFromThePage) {
  Open();
  With([this](SetupUser& user) {
    user.Show(SetupPageKind::kCapture);
    for (const auto& [key, dialog] : {std::pair{IDC_VIDEO_SOURCE, "1"}, std::pair{IDC_VIDEO_FORMAT, "2"},
                                      std::pair{IDC_VIDEO_DISPLAY, "4"}}) {
      tv.Take();
      user.Press(key);
      EXPECT_EQ(tv.Take(), std::string("Stop\nShowDialog ") + dialog + "\nRun\n");
    }
    user.Close(user.PressFor(IDC_ALLOCATE_FILE, "Allocate Capture File"), IDCANCEL);
    EXPECT_FALSE(user.CanApply());
  });
}

TEST_F(SetupTvTest, ACardThatIsGoneOrAnotherIsAskedNothing) {
  for (const bool another : {false, true}) {
    Open();
    With([&](SetupUser& user) {
      user.Show(SetupPageKind::kCapture);
      user.Show(SetupPageKind::kTv);
      user.Press(IDC_CABLE);
      SwitchToNone();
      if (another) SwitchToCd();
      tv.Take();
      user.Close(user.PressFor(IDC_AUTO_TUNE, "Channel Autotune"), IDOK);
      user.Show(SetupPageKind::kCapture);
      for (const int key : {IDC_ALLOCATE_FILE, IDC_SAVE_CAPTURE, IDC_AUDIO_FORMAT, IDC_VIDEO_SOURCE,
                            IDC_VIDEO_FORMAT, IDC_VIDEO_DISPLAY, IDC_CAPTURE_AUDIO, IDC_MASTER_AUDIO})
        user.Press(key);
      user.Ok();
    });
    EXPECT_EQ(tv.Take(), "");
    EXPECT_EQ(Stored("TunerInputType"), "1");
  }
}

}  // namespace
}  // namespace quorvex
