// The current device as the Setup sheet sees it.
#pragma once

#include "devices/tv/tv_device.h"
#include "setup/enabling.h"

namespace quorvex {

SetupSubject CurrentSubject();

// The current device, when it is a TV device; null otherwise.
CTVDevice* CurrentTvDevice();

}  // namespace quorvex
