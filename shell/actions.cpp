#include "shell/actions.h"

#include <windows.h>

#include "devices/current_device.h"
#include "panel/main_window.h"

namespace quorvex {

void PlayAtRate(double rate) {
  if (!currentDevice) return;
  currentDevice->playRate = rate;
  currentDevice->Play(0, 0);
}

void PressUp() {
  if (currentDevice) currentDevice->Up();
}

void PressDown() {
  if (currentDevice) currentDevice->Down();
}

void HidePlayer() {
  ::SetWindowPos(mainWindow, HWND_NOTOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
  // The system menu no longer lists the command, but the default procedure still knows it.
  ::DefDlgProcA(mainWindow, WM_SYSCOMMAND, SC_MINIMIZE, 0);
}

void Power() { ::DestroyWindow(mainWindow); }

}  // namespace quorvex
