#include "shell/media_select_menu.h"

#include <windows.h>

#include <algorithm>
#include <string>
#include <vector>

#include "base/handles.h"
#include "devices/shared_state.h"
#include "devices/tv/capture_devices.h"
#include "panel/commands.h"
#include "panel/popup_menu.h"

namespace quorvex {
namespace {

UINT State(bool checked, bool enabled = true) {
  return (checked ? MF_CHECKED : MF_UNCHECKED) | (enabled ? MF_ENABLED : MF_GRAYED);
}

// An ampersand in a device's name is a letter, not the mark of an access key.
std::string MenuText(const std::string& name) {
  std::string text;
  for (const char c : name) text.append(c == '&' ? 2 : 1, c);
  return text;
}

// The TV/CAP item: one entry a capture device, or greyed when there is none.
void AppendCaptureDevices(HMENU menu) {
  const std::vector<std::string> names = ListCaptureDevices();
  if (names.empty()) {
    ::AppendMenuA(menu, MF_STRING | MF_GRAYED, kFirstCaptureDeviceCommand, "TV/CAP");
    return;
  }
  const HMENU devices = ::CreatePopupMenu();
  const int count =
      std::min(static_cast<int>(names.size()), kLastCaptureDeviceCommand - kFirstCaptureDeviceCommand + 1);
  for (int i = 0; i < count; ++i) {
    const bool open = currentDeviceType == DeviceType::kTv && currentCaptureDevice == i;
    ::AppendMenuA(devices, MF_STRING | State(open),
                  static_cast<UINT_PTR>(kFirstCaptureDeviceCommand) + static_cast<UINT_PTR>(i),
                  MenuText(names[static_cast<std::size_t>(i)]).c_str());
  }
  ::AppendMenuA(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(devices), "TV/CAP");
}

}  // namespace

void ShowMediaSelectMenu() {
  const UniqueMenu menu(::CreatePopupMenu());
  AppendCaptureDevices(menu.Get());
  ::AppendMenuA(menu.Get(), State(currentDeviceType == DeviceType::kDvd, dvdAvailable), kCommandDvd, "DVD");
  ::AppendMenuA(menu.Get(), State(currentDeviceType == DeviceType::kCd), kCommandCd, "CD");
  ::AppendMenuA(menu.Get(), State(currentDeviceType == DeviceType::kFile), kCommandOpenMediaFile,
                "Media File...");
  if (currentDeviceType != DeviceType::kNone)
    ::AppendMenuA(menu.Get(), MF_STRING, kCommandCloseDevice, "Close Device");
  ShowAtButton(menu.Get(), kCommandMediaSelect);
}

}  // namespace quorvex
