// tuner_run  Opens the first capture device as the player does, and auto-tunes its antenna's channels.
#include <windows.h>

#include "devices/current_device.h"
#include "panel/main_window.h"
#include "shell/device_switch.h"
#include "shell/lifecycle.h"
#include "shell/startup.h"

int main() {
  if (!quorvex::StartUp(::GetModuleHandleA(nullptr))) return 1;
  ::KillTimer(quorvex::mainWindow, quorvex::kLampTestTimer);
  if (!quorvex::SwitchToTv(0)) return 1;
  quorvex::currentDevice->AutoTuneChannels(quorvex::mainWindow, 1);
  quorvex::SwitchToNone();
  return 0;
}
