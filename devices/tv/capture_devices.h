// The video capture devices that the platform lists.
#pragma once

#include <string>
#include <vector>

namespace quorvex {

// Their names in the platform's order, which is what a capture device's index counts; empty when there are
// none or the platform cannot list them. A device without a name is called "Capture device" and its number.
std::vector<std::string> ListCaptureDevices();

}  // namespace quorvex
