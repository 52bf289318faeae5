// The entry point. The command line is not used.
#include <windows.h>

#include "shell/startup.h"

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) {
  return quorvex::StartUp(instance) ? quorvex::RunMessageLoop() : 0;
}
