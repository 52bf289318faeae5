// The capture file on its disk: which one, how large, how much room there is.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>

namespace quorvex {

// Asks for an AVI file, which need not be there; the dialog starts at `path`, which becomes the one chosen,
// with an extension. False when the user cancels, or when the file is in use or its path too long: the text
// line says so.
bool ChooseCaptureFileName(HWND owner, std::string& path);

// Whether there is a file.
bool IsThere(const std::string& path);

// A file's size in bytes; 0 when it cannot be read.
std::int64_t GetFileSize64(const std::string& path);

// The free room of the disk or share that a path lies on, in KB; that of C: for no path. None when it does
// not tell.
std::optional<std::int64_t> GetFreeDiskSpaceKB(const std::string& path);

}  // namespace quorvex
