// Calls that winmm offers to MCI drivers and mingw's headers leave out.
#pragma once

#include <windows.h>

#include <mmsystem.h>

extern "C" {
// NOLINTBEGIN(readability-identifier-naming)
// Posts MM_MCINOTIFY to a window: a device's command ended (MCI_NOTIFY_...).
__declspec(dllimport) BOOL WINAPI mciDriverNotify(HANDLE window, MCIDEVICEID device, UINT status);
// Lets the program run while a driver waits; not 0 when the program wants the wait to end.
__declspec(dllimport) UINT WINAPI mciDriverYield(MCIDEVICEID device);
// NOLINTEND(readability-identifier-naming)
}
