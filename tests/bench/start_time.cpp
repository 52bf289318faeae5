// start_time PROGRAM CLASS  Starts a program and prints the milliseconds from there until its window of that
// class is visible, painted and waiting for its user; closes it again.
#include <windows.h>

#include <cstdio>
#include <string>

#include "tests/bench/bench.h"

namespace {

constexpr DWORD kPatienceMs = 20000;

}  // namespace

using quorvex::Milliseconds;

int main(int count, char** arguments) {
  if (count != 3) return 2;
  std::string command = '"' + std::string(arguments[1]) + '"';
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  const double begin = Milliseconds();
  if (::CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                       &process) == FALSE) {
    std::fprintf(stderr, "%s does not start\n", arguments[1]);
    return 1;
  }
  // The first idle moment may come before the window does. Asked seldom: questions slow down what they wait
  // for.
  HWND window = nullptr;
  while (::WaitForInputIdle(process.hProcess, kPatienceMs) == 0 && Milliseconds() - begin < kPatienceMs) {
    window = ::FindWindowA(arguments[2], nullptr);
    if (::IsWindowVisible(window) != FALSE) break;
    ::Sleep(1);
  }
  const bool answers = ::SendMessageTimeoutA(window, WM_NULL, 0, 0, SMTO_NORMAL, kPatienceMs, nullptr) != 0;
  const double end = Milliseconds();
  if (!answers) {
    std::fprintf(stderr, "%s shows no window\n", arguments[1]);
    ::TerminateProcess(process.hProcess, 1);
    return 1;
  }
  std::printf("%.1f\n", end - begin);
  ::PostMessageA(window, WM_CLOSE, 0, 0);
  return ::WaitForSingleObject(process.hProcess, kPatienceMs) == WAIT_OBJECT_0 ? 0 : 1;
}
