// Which page of the Setup sheet comes first and which controls can be used, by the device that is current.
#pragma once

#include <span>
#include <vector>

#include "devices/device_type.h"

namespace quorvex {

// The pages in the order of their tabs.
enum class SetupPageKind : int { kGeneral, kMediaFiles, kTv, kCapture, kDvd, kCd };
inline constexpr int kSetupPageCount = 6;

// What the sheet needs to know of the current device; the rest of it is a capture device's.
struct SetupSubject {
  DeviceType device = DeviceType::kNone;
  bool hasTuner = false;
  bool recording = false;
  bool recordsSound = false;
  bool hasSourceDialog = false;
  bool hasFormatDialog = false;
  bool hasDisplayDialog = false;
};

SetupPageKind FirstPage(const SetupSubject& subject);

// The Capture page shows and stores the options of a capture device that does not record; else it is empty.
bool IsCapturePageFilled(const SetupSubject& subject);

// Of the controls that a page's template disables, those that can be used; numbers of resources/ids.h.
std::vector<int> EnabledTvControls(const SetupSubject& subject);
std::vector<int> EnabledCaptureControls(const SetupSubject& subject);
std::vector<int> EnabledCdControls(const SetupSubject& subject);

// The keys and boxes of the Capture page that do not enable Apply.
bool EnablesApplyOnCapturePage(int control);

}  // namespace quorvex
