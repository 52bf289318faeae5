// tuner_run [CHANNEL]  Opens the first capture device as the player does, and auto-tunes its antenna's
// channels; when it has come to CHANNEL it stays there, until it is killed.
#include <windows.h>

#include <cstdlib>
#include <string>

#include "devices/current_device.h"
#include "panel/main_window.h"
#include "panel/status_display.h"
#include "shell/device_switch.h"
#include "shell/lifecycle.h"
#include "shell/startup.h"

namespace {

int lastChannel = 0;

void StayAtLast(const std::string& text) {
  if (std::atoi(text.c_str()) == lastChannel) ::Sleep(INFINITE);
}

}  // namespace

int main(int count, char** arguments) {
  if (!quorvex::StartUp(::GetModuleHandleA(nullptr))) return 1;
  ::KillTimer(quorvex::mainWindow, quorvex::kLampTestTimer);
  if (!quorvex::SwitchToTv(0)) return 1;
  if (count > 1) {
    lastChannel = std::atoi(arguments[1]);
    quorvex::SetOnScreenText(StayAtLast);
  }
  quorvex::currentDevice->AutoTuneChannels(quorvex::mainWindow, 1);
  quorvex::SwitchToNone();
  return 0;
}
