// The Setup sheet over devices that write down what they are asked: which page is shown, what each page loads
// and stores.
#include "setup/setup_sheet.h"
#include "shell/device_switch.h"

#include "devices/config_store.h"
#include "resources/ids.h"
#include "tests/support/file_drop.h"
#include "tests/support/panel.h"
#include "tests/support/recording_device.h"
#include "tests/support/setup_user.h"

namespace quorvex {
namespace {

class SetupSheetTest : public PanelTest {
 protected:
  void Use(DeviceType type) {
    currentDevice = std::make_unique<RecordingDevice>(type, log);
    currentDeviceType = type;
    log.clear();
  }
  // Opens the sheet with the Setup key for the script.
  static void With(const SetupUser::Script& script) {
    SetupUser user(script);
    Press(kCommandSetup);
  }
  std::string Config() const { return stores.Read("quorvex.ini"); }
};

TEST_F(SetupSheetTest, LiesOverThePanel) {
  ::SetWindowPos(mainWindow, nullptr, 300, 400, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  With([](SetupUser& user) {
    RECT sheet{};
    RECT panel{};
    ::GetWindowRect(user.Dialog(), &sheet);
    ::GetWindowRect(mainWindow, &panel);
    EXPECT_NEAR(sheet.left + sheet.right, panel.left + panel.right, 1);
    EXPECT_NEAR(sheet.top + sheet.bottom, panel.top + panel.bottom, 1);
    EXPECT_EQ(::GetWindow(user.Dialog(), GW_OWNER), mainWindow);
    EXPECT_FALSE(::IsWindowEnabled(mainWindow));
  });
}

TEST_F(SetupSheetTest, TheScreenSaverFollowsAtOnce) {
  const auto active = [] {
    BOOL on = FALSE;
    ::SystemParametersInfoA(SPI_GETSCREENSAVEACTIVE, 0, &on, 0);
    return on != FALSE;
  };
  const bool before = active();
  settings.screenSaverWasActive = true;
  for (const bool expected : {false, true}) {
    With([](SetupUser& user) {
      user.Press(IDC_NO_SCREEN_SAVER);
      user.Ok();
    });
    EXPECT_EQ(active(), expected);
  }
  ::SystemParametersInfoA(SPI_SETSCREENSAVEACTIVE, before ? TRUE : FALSE, nullptr, 0);
}

TEST_F(SetupSheetTest, PagesThatWereNeverShownStoreNothing) {
  Use(DeviceType::kCd);
  stores.Write("quorvex.ini", "[CD]\r\nUsePlayList=7\r\n");
  With([](SetupUser& user) {
    user.Show(SetupPageKind::kDvd);
    EXPECT_TRUE(user.IsChecked(IDC_DVD_TRANSPARENT));
    user.Press(IDC_CAPTIONS_ON);
    user.Press(IDC_DVD_OPAQUE);
    user.Show(SetupPageKind::kCd);
    EXPECT_FALSE(user.IsChecked(IDC_ENTIRE_CD) || user.IsChecked(IDC_USE_PLAYLIST)) << "7 means neither";
    user.Cancel();
  });
  EXPECT_EQ(Config(), "[CD]\r\nUsePlayList=7\r\n");
  EXPECT_EQ(log, "");
  Use(DeviceType::kNone);
  With([](SetupUser& user) {
    user.Show(SetupPageKind::kDvd);
    user.Press(IDC_DVD_OPAQUE);
    user.Ok();
  });
  EXPECT_EQ(Config(), "[CD]\r\nUsePlayList=7\r\n[DVD]\r\nClosedCaption=0\r\nCCOpaque=1\r\n");
}

TEST_F(SetupSheetTest, APageHandsItsChangesToADeviceOfItsKindOnly) {
  Use(DeviceType::kCd);
  With([this](SetupUser& user) {
    user.Press(IDC_USE_PLAYLIST);
    user.Press(IDC_STOP_ON_EXIT);
    user.Press(IDC_CD_AUTO_PLAY);
    user.Apply();
    EXPECT_EQ(log, "LoadSettings\nBuildPlayOrder\nApplyPlayOrder\n");
    EXPECT_EQ(Config(), "[CD]\r\nAutoPlay=0\r\nStopOnExit=1\r\nUsePlayList=1\r\n");
    log.clear();
    user.Show(SetupPageKind::kDvd);
    user.Press(IDC_DVD_OPAQUE);
    user.Ok();
    EXPECT_EQ(log, "LoadSettings\nBuildPlayOrder\nApplyPlayOrder\n") << "nothing from the DVD page";
  });
  Use(DeviceType::kDvd);
  With([this](SetupUser& user) {
    user.Press(IDC_CAPTIONS_ON);
    user.Show(SetupPageKind::kCd);
    EXPECT_TRUE(user.IsChecked(IDC_USE_PLAYLIST) && user.IsChecked(IDC_STOP_ON_EXIT));
    EXPECT_FALSE(user.IsChecked(IDC_ENTIRE_CD) || user.IsChecked(IDC_CD_AUTO_PLAY));
    EXPECT_FALSE(user.IsEnabled(IDC_EDIT_PLAYLIST));
    user.Apply();
    EXPECT_EQ(log, "LoadSettings\n") << "the DVD page's";
    user.Cancel();
  });
}

TEST_F(SetupSheetTest, ADeviceThatIsGoneIsAskedNothing) {
  for (const DeviceType type : {DeviceType::kCd, DeviceType::kDvd, DeviceType::kFile}) {
    Use(type);
    With([this](SetupUser& user) {
      for (int page = 0; page < kSetupPageCount; ++page) user.Show(static_cast<SetupPageKind>(page));
      SwitchToNone();  // as when a card is pulled out
      EXPECT_EQ(log, "deleted\n");
      if (user.IsEnabled(IDC_EDIT_PLAYLIST)) user.Press(IDC_EDIT_PLAYLIST);
      user.Ok();
    });
    EXPECT_EQ(log, "deleted\n");
  }
}

TEST_F(SetupSheetTest, FilesThatFallOnThePanelMeanwhileLeaveTheDevice) {
  Use(DeviceType::kCd);
  With([this](SetupUser& user) {
    ::SendMessageA(mainWindow, WM_DROPFILES, reinterpret_cast<WPARAM>(DropOf({"C:\\a.mp3"})), 0);
    EXPECT_EQ(log, "");
    user.Cancel();
  });
  EXPECT_EQ(currentDeviceType, DeviceType::kCd);
}

}  // namespace
}  // namespace quorvex
