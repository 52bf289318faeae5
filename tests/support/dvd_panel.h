// The control panel with a DVD navigator that does as its test says.
#pragma once

#include <dvdevcod.h>

#include <string>

#include "tests/support/fake_dvd.h"
#include "tests/support/menu.h"
#include "tests/support/panel.h"
#include "video/video_window.h"

namespace quorvex {

class DvdTest : public PanelTest {
 protected:
  ~DvdTest() override {
    currentDevice.reset();
    DeleteVideoWindow();
    fullScreen = false;
  }

  static CDevice& Device() { return *currentDevice; }

  void Open(const std::string& config = "") {
    stores.Write("quorvex.ini", "[DVD]\r\n" + config);
    Press(kCommandDvd);
    ASSERT_NE(currentDevice, nullptr);
    ASSERT_EQ(Device().kind, DeviceType::kDvd);
    dvd.Take();
  }
  // What the navigator and its graph were asked by one command.
  std::string LogOf(int command) {
    dvd.Take();
    Press(command);
    return dvd.Take();
  }
  void Happens(long code, LONG_PTR first = 0) {
    dvd.events.push_back({code, first});
    ::SendMessageA(mainWindow, WM_USER + 13, 0, 0);
  }
  void EnterMenu() { Happens(EC_DVD_DOMAIN_CHANGE, DVD_DOMAIN_VideoManagerMenu); }
  // What the stream menu shows; it is left again.
  static std::string StreamMenu() {
    MenuReader menus;
    Press(kCommandStreamMenu);
    return menus.Seen();
  }

  FakeDvd dvd;
};

}  // namespace quorvex
