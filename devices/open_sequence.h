// The open sequence: how the current device is opened, and what is left when that fails.
#pragma once

#include <string>

namespace quorvex {

// Takes the current device through Open, QueryControls and Activate. When a step fails the device is deleted
// with the video window, and no device is current: a device that calls this from an operation of its own must
// not be touched any more when the answer is false.
bool OpenCurrentDevice();

// Deletes the current device and the video window: lamps, keys and display are then as without a device.
// `text` is for the text line.
void EndCurrentDevice(const std::string& text);

}  // namespace quorvex
