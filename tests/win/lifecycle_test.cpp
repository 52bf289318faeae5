#include "shell/lifecycle.h"

#include "base/handles.h"
#include "tests/support/dialog_user.h"
#include "tests/support/panel.h"
#include "tests/support/recording_device.h"

namespace quorvex {
namespace {

using LifecycleTest = PanelTest;

bool ScreenSaverActive() {
  BOOL active = FALSE;
  ::SystemParametersInfoA(SPI_GETSCREENSAVEACTIVE, 0, &active, 0);
  return active != FALSE;
}

void SetScreenSaver(bool active) {
  ::SystemParametersInfoA(SPI_SETSCREENSAVEACTIVE, active ? TRUE : FALSE, nullptr, 0);
}

// The current folder, for as long as this lives.
class CurrentFolder {
 public:
  explicit CurrentFolder(const std::string& folder) {
    ::GetCurrentDirectoryA(MAX_PATH, before);
    ::SetCurrentDirectoryA(folder.c_str());
  }
  CurrentFolder(const CurrentFolder&) = delete;
  CurrentFolder& operator=(const CurrentFolder&) = delete;
  ~CurrentFolder() { ::SetCurrentDirectoryA(before); }

 private:
  char before[MAX_PATH] = "";
};

TEST_F(LifecycleTest, TheClockRestsWhileADeviceShowsItsOwnTime) {
  for (const bool shown : {true, false}) {
    SetDisplayElement(kMinutesUnits, kBlankDigit);
    currentDevice = std::make_unique<RecordingDevice>(shown ? DeviceType::kTv : DeviceType::kCd, log);
    currentDeviceType = currentDevice->kind;
    TickClock();
    EXPECT_EQ(Shown(kMinutesUnits) != kBlankDigit, shown);
  }
  currentDevice = std::make_unique<RecordingDevice>(DeviceType::kTv, log);
  currentDeviceType = DeviceType::kTv;
  currentDevice->recording = true;
  SetDisplayElement(kMinutesUnits, kBlankDigit);
  TickClock();
  EXPECT_EQ(Shown(kMinutesUnits), kBlankDigit);
}

TEST_F(LifecycleTest, PathsNeedNoSecondBackslashAtADrivesRoot) {
  EXPECT_EQ(StorePath("C:\\windows", "quorvex.ini"), "C:\\windows\\quorvex.ini");
  EXPECT_EQ(StorePath("D:\\", "cd.abm"), "D:\\cd.abm");
  BuildPaths();
  char folder[MAX_PATH] = "";
  ::GetWindowsDirectoryA(folder, MAX_PATH);
  EXPECT_EQ(mediaAlbumPath, std::string(folder) + "\\mfiles.abm");
}

TEST_F(LifecycleTest, TheLastDeviceIsReadOnlyForAnAutomaticStart) {
  struct Case {
    const char* text;
    int automatic;
    DeviceType type;
    int capture;
  };
  const Case cases[] = {
      {"", 1, DeviceType::kNone, 0},
      {"[QUORVEX]\r\nLastDevice=3\r\n[TV]\r\nLastCapDevice=2\r\n", 1, DeviceType::kCd, 2},
      {"[QUORVEX]\r\nAutoStartDevice=0\r\nLastDevice=3\r\n[TV]\r\nLastCapDevice=2\r\n", 0, DeviceType::kNone,
       -1},
      {"[quorvex]\r\nlastdevice=4\r\n", 1, DeviceType::kNone, 0},
      {"[QUORVEX]\r\nLastDevice=-1\r\nAutoStartDevice=7\r\n", 7, DeviceType::kNone, 0},
      {"[QUORVEX]\r\nLastDevice=two\r\n", 1, DeviceType::kNone, 0},
      {"\x01\x02\xFF\xFE binary \r\n[[[=\r\n", 1, DeviceType::kNone, 0},
  };
  for (const Case& one : cases) {
    stores.Write("quorvex.ini", one.text);
    currentDeviceType = DeviceType::kNone;
    startCaptureDevice = -1;
    LoadSettings();
    EXPECT_EQ(settings.autoStartDevice, one.automatic) << one.text;
    EXPECT_EQ(currentDeviceType, one.type) << one.text;
    EXPECT_EQ(startCaptureDevice, one.capture) << one.text;
    EXPECT_FALSE(settings.unreadable);
  }
}

TEST_F(LifecycleTest, AnUnreadableConfigurationIsSaidAndNotWrittenOver) {
  stores.Write("quorvex.ini", "[QUORVEX]\r\nLastDevice=3\r\n");
  {
    const UniqueHandle held =
        OwnFile(::CreateFileA(configPath.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    LoadSettings();
    EXPECT_TRUE(settings.unreadable);
    EXPECT_EQ(currentDeviceType, DeviceType::kNone);
    EndLampTest();
    EXPECT_EQ(ShownText(), "Cannot read quorvex.ini");
    ::DestroyWindow(mainWindow);
  }
  EXPECT_EQ(stores.Read("quorvex.ini"), "[QUORVEX]\r\nLastDevice=3\r\n");
}

TEST_F(LifecycleTest, NoLibraryIsTakenFromTheCurrentFolder) {
  const std::string planted = stores.Path("planted.dll");
  ASSERT_TRUE(::CopyFileA(QUORVEX_BIN "/qvsound.dll", planted.c_str(), TRUE));
  const CurrentFolder inMedia(stores.Path(""));
  EXPECT_EQ(::LoadLibraryA("planted.dll"), nullptr);
  const HMODULE wanted = ::LoadLibraryA(planted.c_str());
  EXPECT_NE(wanted, nullptr) << "it could be loaded, by its path";
  if (wanted != nullptr) ::FreeLibrary(wanted);
}

TEST_F(LifecycleTest, TheScreenSaverIsOffWhileThePlayerRunsAndAsBeforeAfterwards) {
  const bool before = ScreenSaverActive();
  for (const bool active : {true, false}) {
    SetScreenSaver(active);
    stores.Write("quorvex.ini", "[QUORVEX]\r\nDisableScreenSaver=1\r\n");
    LoadSettings();
    EXPECT_FALSE(ScreenSaverActive());
    settings.disableScreenSaver = false;
    ApplyScreenSaverSetting();
    EXPECT_EQ(ScreenSaverActive(), active);
    settings.disableScreenSaver = true;
    ApplyScreenSaverSetting();
    EXPECT_FALSE(ScreenSaverActive());
    SaveSettings();
    EXPECT_EQ(ScreenSaverActive(), active);
  }
  SetScreenSaver(true);
  settings.screenSaverWasActive = false;
  ::SendMessageA(mainWindow, WM_SETTINGCHANGE, SPI_SETSCREENSAVEACTIVE, 0);
  EXPECT_TRUE(settings.screenSaverWasActive) << "a change made elsewhere is what is put back";
  SetScreenSaver(before);
  settings.screenSaverWasActive = false;
}

TEST_F(LifecycleTest, SuspendingIsRefusedOnlyWhenTheUserSaidSo) {
  const auto ask = [](WPARAM event) { return ::SendMessageA(mainWindow, WM_POWERBROADCAST, event, 0); };
  EXPECT_EQ(ask(PBT_APMQUERYSUSPEND), TRUE);
  settings.disableApm = true;
  EXPECT_EQ(ask(PBT_APMQUERYSUSPEND), BROADCAST_QUERY_DENY);
  EXPECT_EQ(ask(PBT_APMRESUMESUSPEND), TRUE);
}

TEST_F(LifecycleTest, ToldToCloseWhileADialogIsOpenThePanelClosesAfterIt) {
  bool stayed = false;
  {
    DialogScript user({{"Quorvex", [&](HWND box) {
                          ::SendMessageA(mainWindow, WM_CLOSE, 0, 0);
                          stayed = ::IsWindow(mainWindow) != FALSE;
                          ::PostMessageA(box, WM_COMMAND, IDOK, 0);
                        }}});
    ReportError("what an operation asks in its middle");
  }
  EXPECT_TRUE(stayed);
  EXPECT_TRUE(::IsWindow(mainWindow)) << "the operation goes on";
  EXPECT_TRUE(PumpUntil([] { return ::IsWindow(mainWindow) == FALSE; }));
}

// A device could go under its own operation there.
TEST_F(LifecycleTest, AnErrorHoldsUpThePanelAlsoWhereABoxWithoutAnOwnerIsOpen) {
  static bool held = false;
  const auto fail = [](HWND, UINT, UINT_PTR timer, DWORD) {
    ::KillTimer(nullptr, timer);
    ReportError("a file");
  };
  const auto answer = [](HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND error = ::FindWindowA("#32770", "Quorvex");
    if (error == nullptr) return;
    ::KillTimer(nullptr, timer);
    held = ::IsWindowEnabled(mainWindow) == FALSE;
    for (const HWND box : {error, ::FindWindowA("#32770", "MCI Error")})
      ::PostMessageA(box, WM_COMMAND, IDOK, 0);
  };
  ::SetTimer(nullptr, 0, 10, fail);
  ::SetTimer(nullptr, 0, 50, answer);
  ::MessageBoxA(nullptr, "a drive", "MCI Error", MB_OK);
  EXPECT_TRUE(held);
}

TEST_F(LifecycleTest, TheLoopEndsAlsoWhenSomebodyElseTakesTheMessageToQuit) {
  const auto endAndTake = [](HWND, UINT, UINT_PTR timer, DWORD) {
    ::KillTimer(nullptr, timer);
    ::DestroyWindow(mainWindow);
    MSG message{};
    ::PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
  };
  ::SetTimer(nullptr, 0, 10, endAndTake);
  ::SetTimer(nullptr, 0, 3000, [](HWND, UINT, UINT_PTR, DWORD) { ::PostQuitMessage(1); });
  ::CoInitialize(nullptr);  // which the loop's end ends
  EXPECT_EQ(RunMessageLoop(), 0);
}

}  // namespace
}  // namespace quorvex
