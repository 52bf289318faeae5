// Finishes the recording in a capture file that was cut off.
#pragma once

#include <windows.h>

#include <string>

namespace quorvex {

// As ICaptureRecovery::Recover.
HRESULT RecoverRecording(const std::wstring& path, LONGLONG& length);

}  // namespace quorvex
