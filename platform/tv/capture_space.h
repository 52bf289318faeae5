// Disk space for a recording, taken beforehand.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace quorvex {

// Makes a file of exactly this size (not 0), whose space is taken on the disk; one that is there becomes
// longer or shorter. When that cannot be done (kDiskFull, somebody has it open, it may not be written)
// everything is as it was.
HRESULT AllocateFile(const std::wstring& path, std::uint64_t bytes);

}  // namespace quorvex
