// The control panel with a capture card: the machine's, or one that does as its test says.
#pragma once

#include <string>
#include <vector>

#include "devices/tv/tv_device.h"
#include "shell/device_switch.h"
#include "tests/support/fake_tv.h"
#include "tests/support/panel.h"
#include "video/video_window.h"

namespace quorvex {

class TvPanelTest : public PanelTest {
 protected:
  static CTVDevice& Device() { return dynamic_cast<CTVDevice&>(*currentDevice); }

  // To be done before the card goes.
  static void CloseDevice() {
    currentDevice.reset();
    DeleteVideoWindow();
    fullScreen = false;
    currentCaptureDevice = -1;
  }

  static constexpr int kFirstCard = kFirstCaptureDeviceCommand;

  static std::vector<int> Channels() {
    return {currentDevice->playOrder.begin(), currentDevice->playOrder.begin() + currentDevice->orderLength};
  }
  // The value of a key of the stored settings.
  std::string Stored(const std::string& key) const {
    const std::string text = stores.Read("quorvex.ini");
    const std::size_t at = text.find('\n' + key + '=');
    if (at == std::string::npos) return "missing";
    const std::size_t begin = at + key.size() + 2;
    return text.substr(begin, text.find('\r', begin) - begin);
  }
  // The text over the picture; empty when there is none.
  static std::string OnScreen() {
    const HWND element = ::FindWindowExA(theVideoWindow->GetRendererWindow(), nullptr, "myOSCtl", nullptr);
    char text[50] = "";
    ::GetWindowTextA(element, text, sizeof text);
    return text;
  }
};

class TvTest : public TvPanelTest {
 protected:
  ~TvTest() override { CloseDevice(); }

  // Opens the card, with these lines of the settings' section TV and what follows.
  void Open(const std::string& config = "") {
    stores.Write("quorvex.ini", "[TV]\r\n" + config);
    Press(kFirstCard);
    ASSERT_NE(currentDevice, nullptr);
    ASSERT_EQ(currentDevice->kind, DeviceType::kTv);
    tv.Take();
  }
  // What the card and its graph were asked by one command.
  std::string LogOf(int command) {
    tv.Take();
    Press(command);
    return tv.Take();
  }
  // Types digits; answers what the card was asked.
  std::string Type(const std::string& digits) {
    tv.Take();
    for (const char digit : digits) Press(kCommandDigit0 + digit - '0');
    return tv.Take();
  }

  FakeTv tv;
};

}  // namespace quorvex
