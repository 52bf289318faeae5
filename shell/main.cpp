// The entry point. The command line is not used.
#include <windows.h>

#include "shell/startup.h"

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) {
  const int code = quorvex::StartUp(instance) ? quorvex::RunMessageLoop() : 0;
  // At once: a disc may be left playing, and libraries must not be taken down under its threads.
  ::TerminateProcess(::GetCurrentProcess(), static_cast<UINT>(code));
  return code;
}
