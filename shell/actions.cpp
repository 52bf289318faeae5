#include "shell/actions.h"

#include <windows.h>

#include "devices/current_device.h"
#include "panel/main_window.h"
#include "video/video_window.h"

namespace quorvex {

void PlayAtRate(double rate) {
  if (!currentDevice) return;
  currentDevice->playRate = rate;
  currentDevice->Play(0, 0);
}

void PressUp() {
  if (currentDevice) IsOsdLevelShown() ? currentDevice->AdjustUp() : currentDevice->Up();
}

void PressDown() {
  if (currentDevice) IsOsdLevelShown() ? currentDevice->AdjustDown() : currentDevice->Down();
}

void PressRight() {
  if (currentDevice && IsOsdLevelShown()) currentDevice->Increase();
}

void PressLeft() {
  if (currentDevice && IsOsdLevelShown()) currentDevice->Decrease();
}

void ToggleFullScreen() {
  if (theVideoWindow) theVideoWindow->ToggleFullScreen();
}

void HidePlayer() {
  LowerControlPanel();
  if (fullScreen) return;
  // The system menu no longer lists the command, but the default procedure still knows it.
  ::DefDlgProcA(mainWindow, WM_SYSCOMMAND, SC_MINIMIZE, 0);
}

void Power() { ::DestroyWindow(mainWindow); }

}  // namespace quorvex
