#include "devices/tv/capture_devices.h"

#include <windows.h>

#include <uuids.h>

#include "devices/tv/device_category.h"

namespace quorvex {

std::vector<std::string> ListCaptureDevices() {
  std::vector<std::string> names;
  ComPtr<ICreateDevEnum> devices;
  if (FAILED(CreateDeviceEnumerator(devices))) return names;
  VisitCategory(*devices.Get(), CLSID_VideoInputDeviceCategory, [&](IMoniker& entry) {
    const std::string name = EntryText(entry, L"FriendlyName");
    names.push_back(name.empty() ? "Capture device " + std::to_string(names.size() + 1) : name);
    return true;
  });
  return names;
}

}  // namespace quorvex
