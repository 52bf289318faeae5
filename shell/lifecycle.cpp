#include "shell/lifecycle.h"

#include "devices/current_device.h"
#include "devices/shared_state.h"
#include "mixer/mixer.h"
#include "panel/main_window.h"
#include "panel/skin.h"
#include "panel/status_display.h"
#include "shell/device_switch.h"
#include "shell/open_files.h"
#include "shell/remote_control.h"
#include "shell/settings.h"
#include "video/video_window.h"

namespace quorvex {
namespace {

constexpr UINT kLampTestDelayMs = 250;
constexpr UINT kLampTestMs = 500;
constexpr UINT kClockPeriodMs = 300;
constexpr char kVersionText[] = "ver 04.09.1999";

bool started = false;  // the lamp test is over

void StartLastDevice() {
  switch (currentDeviceType) {
    case DeviceType::kTv: SwitchToTv(startCaptureDevice); break;
    case DeviceType::kDvd: SwitchToDvd(); break;
    case DeviceType::kCd: SwitchToCd(); break;
    default: break;
  }
}

}  // namespace

void StartSequence() { ::SetTimer(mainWindow, kLampTestTimer, kLampTestDelayMs, nullptr); }

void BeginLampTest() {
  ::KillTimer(mainWindow, kLampTestTimer);
  // The platform's sound wakes for it, which takes longer than the rest of the start: so the panel is there
  // first.
  mixerAvailable = OpenMixer();
  SetAllDisplayElements(true);
  ::SetTimer(mainWindow, kVersionTimer, kLampTestMs, nullptr);
}

void EndLampTest() {
  if (::IsWindowEnabled(mainWindow) == FALSE)
    return;  // no device begins under a dialog; the timer comes again
  ::KillTimer(mainWindow, kVersionTimer);
  SetAllDisplayElements(false);
  SetDisplayElement(kIdleLamp, 1);
  SetDisplayText(settings.unreadable ? "Cannot read quorvex.ini" : kVersionText);
  started = true;
  // Files that were handed over meanwhile go before the last device.
  if (HasHandedOver()) {
    PlayHandedOver();
    if (!currentDevice) currentDeviceType = DeviceType::kNone;  // no longer the last session's
  } else if (settings.autoStartDevice != 0) {
    StartLastDevice();
  }
  HoldKeys(false);
  ::SetTimer(mainWindow, kClockTimer, kClockPeriodMs, nullptr);
}

void OnHandedOver() {
  if (started && ::IsWindowEnabled(mainWindow) != FALSE) PlayHandedOver();
}

void TickClock() {
  if (!currentDevice || (currentDeviceType == DeviceType::kTv && !currentDevice->recording)) ShowClock();
}

void ShutDown() {
  ::KillTimer(mainWindow, kClockTimer);
  started = false;
  HoldKeys(true);
  SaveSettings();
  skin.background.Reset();
  skin.segments.Reset();
  DeleteVideoWindow();
  currentDevice.reset();
  skin.displayFont.Reset();
  ::PostQuitMessage(0);
}

}  // namespace quorvex
