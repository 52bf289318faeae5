// The real control panel within a test: its windows, its stores in a folder of the test's own, no device.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "devices/current_device.h"
#include "devices/shared_state.h"
#include "panel/control_panel.h"
#include "panel/main_window.h"
#include "panel/skin.h"
#include "panel/status_display.h"
#include "shell/lifecycle.h"
#include "shell/settings.h"
#include "shell/startup.h"
#include "tests/support/pump.h"
#include "tests/support/temp_folder.h"

namespace quorvex {

class PanelTest : public testing::Test {
 protected:
  PanelTest() {
    if (!StartUp(::GetModuleHandleA(nullptr))) ADD_FAILURE() << "the panel does not start";
    ::KillTimer(mainWindow, kLampTestTimer);
    configPath = stores.Path("quorvex.ini");
    cdAlbumPath = stores.Path("cd.abm");
    mediaAlbumPath = stores.Path("mfiles.abm");
    currentPlaylist.clear();
    settings = {};
    currentDeviceType = DeviceType::kNone;
    SetAllDisplayElements(false);
  }

  ~PanelTest() override {
    if (::IsWindow(mainWindow)) ::DestroyWindow(mainWindow);
    MSG message{};
    while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
    }
    for (const char* name : {"PControl", "PVideo", "myOSCtl"}) ::UnregisterClassA(name, instance);
    ::CoUninitialize();
  }

  // Something to draw on, as the screen is.
  static BitmapDc Canvas(int width, int height) {
    const HDC screen = ::GetDC(nullptr);
    BitmapDc canvas{UniqueBitmap(::CreateCompatibleBitmap(screen, width, height))};
    ::ReleaseDC(nullptr, screen);
    return canvas;
  }
  static int Shown(int element) { return ShownContent().values[static_cast<std::size_t>(element)]; }
  // The number of three digits that begins at an element; blank digits count for nothing.
  static int Number(int element) {
    int number = 0;
    for (int i = element; i < element + 3; ++i)
      number = Shown(i) == kBlankDigit ? number : number * 10 + Shown(i);
    return number;
  }
  static const std::string& ShownText() { return ShownContent().text; }
  static void Press(int command) { ::SendMessageA(mainWindow, WM_COMMAND, static_cast<WPARAM>(command), 0); }
  static HWND Button(int command) { return ButtonWindow(ButtonIndex(command)); }
  static bool IsLit(int command) { return LookOf(ButtonIndex(command)) == ButtonLook::kLit; }

  TempFolder stores;
  std::string log;  // for devices that write down what is asked of them; it outlives them
};

}  // namespace quorvex
