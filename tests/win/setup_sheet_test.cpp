// The Setup sheet over devices that write down what they are asked: which page is shown, what each page loads
// and stores.
#include "setup/setup_sheet.h"

#include "devices/config_store.h"
#include "resources/ids.h"
#include "tests/support/cd_panel.h"
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

TEST_F(SetupSheetTest, OpensAtThePageOfTheCurrentDevice) {
  const std::pair<DeviceType, SetupPageKind> cases[] = {{DeviceType::kDvd, SetupPageKind::kDvd},
                                                        {DeviceType::kCd, SetupPageKind::kCd},
                                                        {DeviceType::kFile, SetupPageKind::kMediaFiles}};
  With([](SetupUser& user) { EXPECT_EQ(user.Shown(), SetupPageKind::kGeneral); });
  for (const auto& [type, page] : cases) {
    Use(type);
    With([page](SetupUser& user) { EXPECT_EQ(user.Shown(), page); });
  }
}

TEST_F(SetupSheetTest, LiesOverThePanelAndOnTheScreen) {
  const auto place = [](HWND window) {
    RECT rect{};
    ::GetWindowRect(window, &rect);
    return rect;
  };
  With([&](SetupUser& user) {
    EXPECT_LE(place(user.Dialog()).bottom, ::GetSystemMetrics(SM_CYSCREEN)) << "its keys can be reached";
    EXPECT_EQ(::GetWindow(user.Dialog(), GW_OWNER), mainWindow);
    EXPECT_FALSE(::IsWindowEnabled(mainWindow));
  });
  ::SetWindowPos(mainWindow, nullptr, 300, 400, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  With([&](SetupUser& user) {
    const RECT sheet = place(user.Dialog());
    const RECT panel = place(mainWindow);
    EXPECT_NEAR(sheet.left + sheet.right, panel.left + panel.right, 1);
    EXPECT_NEAR(sheet.top + sheet.bottom, panel.top + panel.bottom, 1);
  });
}

TEST_F(SetupSheetTest, WithoutADeviceNothingOfADeviceCanBeUsed) {
  stores.Write("quorvex.ini", "");
  With([](SetupUser& user) {
    for (const SetupPageKind page :
         {SetupPageKind::kTv, SetupPageKind::kCapture, SetupPageKind::kMediaFiles}) {
      user.Show(page);
      HWND child = nullptr;
      while ((child = ::FindWindowExA(user.Page(), child, "Button", nullptr)) != nullptr) {
        const bool frame = (::GetWindowLongA(child, GWL_STYLE) & BS_TYPEMASK) == BS_GROUPBOX;
        EXPECT_TRUE(frame || ::IsWindowEnabled(child) == FALSE) << user.TextOf(child);
      }
    }
    EXPECT_TRUE(user.IsChecked(IDC_FILE_AUTO_PLAY)) << "shown, but not to be changed";
    user.Show(SetupPageKind::kCd);
    EXPECT_FALSE(user.IsEnabled(IDC_EDIT_PLAYLIST));
    user.Ok();
  });
  EXPECT_EQ(Config(),
            "[MEDIA FILE]\r\nAutoPlay=1\r\n[CD]\r\nAutoPlay=1\r\nStopOnExit=0\r\nUsePlayList=0\r\n");
}

TEST_F(SetupSheetTest, TheGeneralPageChangesTheShellsOptions) {
  settings = {.autoStartDevice = 7, .disableApm = false, .disableScreenSaver = true};
  With([](SetupUser& user) {
    EXPECT_TRUE(user.IsChecked(IDC_AUTO_START));
    EXPECT_FALSE(user.IsChecked(IDC_NO_POWER_SAVING));
    EXPECT_TRUE(user.IsChecked(IDC_NO_SCREEN_SAVER));
    EXPECT_FALSE(user.CanApply()) << "nothing is changed yet";
    user.Press(IDC_NO_POWER_SAVING);
    EXPECT_TRUE(user.CanApply());
    user.Cancel();
  });
  EXPECT_EQ(settings.autoStartDevice, 7);
  EXPECT_FALSE(settings.disableApm);
  With([](SetupUser& user) {
    user.Press(IDC_NO_POWER_SAVING);
    user.Apply();
    EXPECT_FALSE(user.CanApply());
    EXPECT_TRUE(settings.disableApm);
    EXPECT_EQ(settings.autoStartDevice, 1);
    user.Press(IDC_AUTO_START);
    user.Ok();
  });
  EXPECT_EQ(settings.autoStartDevice, 0);
  EXPECT_EQ(Config(), "") << "they are written at the end";
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
    user.Cancel();
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
      ::SendMessageA(mainWindow, WM_COMMAND, kCommandCloseDevice, 0);
      EXPECT_EQ(log, "deleted\n");
      if (user.IsEnabled(IDC_EDIT_PLAYLIST)) user.Press(IDC_EDIT_PLAYLIST);
      user.Ok();
    });
    EXPECT_EQ(log, "deleted\n");
  }
}

TEST_F(SetupSheetTest, WhatCannotBeWrittenHoldsUntilItCan) {
  Use(DeviceType::kCd);
  stores.Write("quorvex.ini", "[CD]\r\nUsePlayList=0\r\n");
  With([this](SetupUser& user) {
    ::SetFileAttributesA(configPath.c_str(), FILE_ATTRIBUTE_READONLY);
    user.Press(IDC_USE_PLAYLIST);
    user.Apply();
    EXPECT_EQ(ShownText(), "Cannot write quorvex.ini");
    EXPECT_EQ(ReadConfig().Integer("CD", "UsePlayList", 0), 1) << "for this run";
    user.Ok();
  });
  EXPECT_EQ(Config(), "[CD]\r\nUsePlayList=0\r\n");
  With([](SetupUser& user) {
    EXPECT_TRUE(user.IsChecked(IDC_USE_PLAYLIST));
    user.Show(SetupPageKind::kDvd);
    ::SetFileAttributesA(configPath.c_str(), FILE_ATTRIBUTE_NORMAL);
    user.Press(IDC_DVD_OPAQUE);
    user.Ok();
  });
  EXPECT_EQ(
      Config(),
      "[CD]\r\nUsePlayList=1\r\nAutoPlay=1\r\nStopOnExit=0\r\n[DVD]\r\nClosedCaption=0\r\nCCOpaque=1\r\n");
}

using SetupCdTest = CdPanelTest;

TEST_F(SetupCdTest, ThePlayListIsEditedFromThePageAndTakesEffectOnApply) {
  const std::vector<int> disc = {30, 31, 32};
  StorePlaylist(disc, "3 2 ");
  OpenWith(disc);
  SetupUser user([](SetupUser& sheet) {
    EXPECT_EQ(sheet.Shown(), SetupPageKind::kCd);
    sheet.Close(sheet.PressFor(IDC_EDIT_PLAYLIST, "CD Playlist"), IDCANCEL);
    EXPECT_FALSE(sheet.CanApply());
    sheet.Close(sheet.PressFor(IDC_EDIT_PLAYLIST, "CD Playlist"), IDOK);
    EXPECT_TRUE(sheet.CanApply());
    sheet.Press(IDC_USE_PLAYLIST);
    sheet.Apply();
    EXPECT_EQ(First(), 3) << "track 1 is not in the list";
    EXPECT_EQ(currentDevice->orderLength, 2);
    sheet.Press(IDC_ENTIRE_CD);
    sheet.Ok();
  });
  Press(kCommandSetup);
  EXPECT_EQ(currentDevice->orderLength, 3);
  EXPECT_EQ(currentDevice->orderIndex, 2) << "track 3 plays on";
}

TEST_F(SetupCdTest, AnEmptyDriveStaysAsItIs) {
  stores.Write("quorvex.ini", "");
  drive.Eject();
  Press(kCommandCd);
  ASSERT_TRUE(Until([] { return ShownText() == "No disc loaded"; }));
  SetupUser user([](SetupUser& sheet) {
    sheet.Press(IDC_STOP_ON_EXIT);
    sheet.Ok();
  });
  Press(kCommandSetup);
  EXPECT_EQ(ShownText(), "No disc loaded");
  EXPECT_EQ(Shown(kFirstNumber + 2), kBlankDigit);
  EXPECT_TRUE(drive.State().trayOpen);
}

}  // namespace
}  // namespace quorvex
