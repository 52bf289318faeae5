// What list boxes do not do by themselves.
#pragma once

#include <windows.h>

#include <span>
#include <string>

namespace quorvex {

// Lets a list scroll sideways as far as the longest of its texts needs; not at all when that fits.
void FitWidth(HWND list, std::span<const std::string> texts);

}  // namespace quorvex
