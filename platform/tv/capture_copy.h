// Copies the movie of a capture file, without the space behind it.
#pragma once

#include <windows.h>

#include <strmif.h>

#include <string>

namespace quorvex {

// `progress`, which may be null, is told each percent. Esc ends the copying when it is allowed to: S_FALSE.
// E_INVALIDARG: a file could not be opened, or both are the same; E_FAIL: there is no finished movie in it.
// The target is there only when all was copied; what had its name before stays otherwise.
HRESULT CopyMovie(const std::wstring& from, const std::wstring& to, bool allowEscape,
                  IAMCopyCaptureFileProgress* progress);

}  // namespace quorvex
