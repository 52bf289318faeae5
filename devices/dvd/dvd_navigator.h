// The two interfaces of the platform's DVD navigator: what works it and what it tells. Both are there while a
// graph is open.
#pragma once

#include <windows.h>

#include <strmif.h>

#include "base/com_ptr.h"

namespace quorvex {

struct DvdNavigator {
  ComPtr<IDvdControl> control;
  ComPtr<IDvdInfo> info;
};

}  // namespace quorvex
