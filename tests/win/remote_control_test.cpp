#include "shell/remote_control.h"

#include <dvdevcod.h>

#include "remote/remote_protocol.h"
#include "shell/open_files.h"
#include "tests/support/fake_dvd.h"
#include "tests/support/noted_boxes.h"
#include "tests/support/panel.h"
#include "tests/support/recording_device.h"

namespace quorvex {
namespace {

class RemoteControlTest : public PanelTest {
 protected:
  RemoteControlTest() {
    WNDCLASSA asker{};
    asker.lpfnWndProc = [](HWND target, UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
      if (message != WM_COPYDATA) return ::DefWindowProcA(target, message, wParam, lParam);
      const auto& data = *reinterpret_cast<const COPYDATASTRUCT*>(lParam);
      answer.assign(static_cast<const char*>(data.lpData), data.cbData);
      return data.dwData == kRemoteState ? 1 : 0;
    };
    asker.lpszClassName = "QuorvexRemoteTest";
    ::RegisterClassA(&asker);
    window = ::CreateWindowA("QuorvexRemoteTest", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    EndLampTest();
    SetAllDisplayElements(false);
    currentDevice = std::make_unique<RecordingDevice>(DeviceType::kCd, log);
    currentDeviceType = DeviceType::kCd;
    log.clear();
  }
  ~RemoteControlTest() override {
    ::DestroyWindow(window);
    currentDevice.reset();
  }

  RemoteAnswer Send(ULONG_PTR kind, const std::string& bytes) const {
    COPYDATASTRUCT data{kind, static_cast<DWORD>(bytes.size()), const_cast<char*>(bytes.data())};
    return static_cast<RemoteAnswer>(::SendMessageA(mainWindow, WM_COPYDATA, reinterpret_cast<WPARAM>(window),
                                                    reinterpret_cast<LPARAM>(&data)));
  }
  RemoteAnswer SendKey(int command) const {
    return Send(kRemotePressKey, std::string(reinterpret_cast<const char*>(&command), sizeof command));
  }

  // The lines of the state before one of them.
  [[nodiscard]] std::string StateUntil(const char* line) const {
    Send(kRemoteAskState, "");
    return answer.substr(0, answer.find(line));
  }

  static inline std::string answer;
  HWND window = nullptr;
};

TEST_F(RemoteControlTest, KeysReachTheDevice) {
  for (const int command : {kCommandEject, kCommandNext, kCommandFastForward, kCommandRewind})
    EXPECT_EQ(SendKey(command), RemoteAnswer::kDone);
  EXPECT_EQ(Send(kRemoteAskReady, ""), RemoteAnswer::kBusy);
  PumpFor(50);
  EXPECT_EQ(Send(kRemoteAskReady, ""), RemoteAnswer::kDone);
  EXPECT_EQ(log, "Eject\nNextItem\nFastForward\nEndScan\nRewind\nEndScan\n")
      << "keys are posted, as a click is";
}

TEST_F(RemoteControlTest, AKeyOfBeforeTheStartsEndIsPressedAfterIt) {
  currentDevice.reset();
  ::DestroyWindow(mainWindow);
  for (const char* name : {"PControl", "PVideo", "myOSCtl"}) ::UnregisterClassA(name, instance);
  MSG quit{};
  ::PeekMessageA(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
  ASSERT_TRUE(StartUp(::GetModuleHandleA(nullptr)));
  EXPECT_EQ(SendKey(kCommandNext), RemoteAnswer::kDone);
  currentDevice = std::make_unique<RecordingDevice>(DeviceType::kCd, log);
  log.clear();
  EXPECT_FALSE(PumpUntil([&] { return !log.empty(); }, 100));
  EXPECT_EQ(Send(kRemoteAskReady, ""), RemoteAnswer::kBusy);
  EndLampTest();
  EXPECT_TRUE(PumpUntil([&] { return log == "NextItem\n"; })) << log;
}

TEST_F(RemoteControlTest, TheStateIsToldInLines) {
  currentDevice->playState = PlayState::kPaused;
  currentDevice->repeatMode = RepeatMode::kAll;
  currentDevice->itemCount = 12;
  currentDevice->SetPlainOrder();
  currentDevice->orderIndex = 4;
  currentDevice->UpdateStateLamps();
  ShowDisplayTime(0x00130200);
  SetDisplayText("A title = with signs");
  EXPECT_EQ(Send(kRemoteAskState, ""), RemoteAnswer::kDone);
  EXPECT_EQ(answer,
            "device=cd\nstate=paused\nitem=5\nitems=12\nrepeat=all\nrandom=off\ntime=00:02:13\n"
            "title=A title = with signs\nmute=off\nlamps=PAUSE, REP, ALL, CD\n");
}

TEST_F(RemoteControlTest, OfADvdFilmChapterAndLengthAreTold) {
  FakeDvd dvd;
  stores.Write("quorvex.ini", "");
  Press(kCommandDvd);
  EXPECT_EQ(StateUntil("time="),
            "device=dvd\nstate=playing\nitem=0\nitems=0\nfilm=0\nlength=00:00:00\nrepeat=off\nrandom=off\n");
  dvd.events = {{EC_DVD_TITLE_CHANGE, 3}, {EC_DVD_CHAPTER_START, 12}, {EC_DVD_CURRENT_TIME, 0x00592301}};
  currentDevice->OnGraphEvent();
  EXPECT_EQ(
      StateUntil("time="),
      "device=dvd\nstate=playing\nitem=12\nitems=25\nfilm=3\nlength=01:31:00\nrepeat=off\nrandom=off\n");
  EXPECT_NE(answer.find("time=01:23:59\n"), std::string::npos) << answer;
  Press(kCommandCloseDevice);
}

TEST_F(RemoteControlTest, WhatIsNotInOrderIsRefused) {
  EXPECT_EQ(Send(kRemotePressKey, "abc"), RemoteAnswer::kRefused);
  EXPECT_EQ(Send(kRemotePressKey, ""), RemoteAnswer::kRefused);
  EXPECT_EQ(Send(kRemoteOpenFiles, ""), RemoteAnswer::kRefused);
  EXPECT_EQ(Send(kRemoteOpenFiles, "C:\\no end"), RemoteAnswer::kRefused);
  EXPECT_EQ(Send(kRemoteState, "device=none\n"), RemoteAnswer::kRefused);
  EXPECT_EQ(Send(7, "x"), RemoteAnswer::kRefused);
  COPYDATASTRUCT data{kRemoteAskState, 0, nullptr};
  EXPECT_EQ(OnCopyData(nullptr, data), static_cast<LRESULT>(RemoteAnswer::kRefused)) << "nobody's window";
  EXPECT_EQ(log, "");
}

TEST_F(RemoteControlTest, WhileADialogWaitsNoKeyIsTaken) {
  ::EnableWindow(mainWindow, FALSE);
  EXPECT_EQ(SendKey(kCommandNext), RemoteAnswer::kBusy);
  EXPECT_EQ(Send(kRemoteOpenFiles, std::string("C:\\a\0", 5)), RemoteAnswer::kBusy);
  EXPECT_EQ(Send(kRemoteAskState, ""), RemoteAnswer::kDone) << "but the state is told";
  ::EnableWindow(mainWindow, TRUE);
}

// What is posted before a dialog comes arrives in its loop: no device may go under its own operation.
TEST_F(RemoteControlTest, WhatWasOnItsWayWhenADialogCameDoesNothingInIt) {
  for (const int command : {kCommandNext, kCommandRewind}) SendKey(command);
  HandOver({stores.Path("none.avi")});
  ::EnableWindow(mainWindow, FALSE);
  ::PostMessageA(Button(kCommandEject), BM_CLICK, 0, 0);
  PumpFor(100);
  EXPECT_EQ(log, "");
  EXPECT_EQ(currentDevice->kind, DeviceType::kCd);
  EXPECT_EQ(Send(kRemoteAskReady, ""), RemoteAnswer::kDone);
  NotedBoxes boxes;  // the file cannot be played
  ::EnableWindow(mainWindow, TRUE);
  EXPECT_TRUE(PumpUntil([] { return currentDeviceType != DeviceType::kCd; })) << "files wait for its end";
}

}  // namespace
}  // namespace quorvex
