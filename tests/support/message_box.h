// Answers the message boxes that a test brings up, and remembers what they said.
#pragma once

#include <windows.h>

#include <atomic>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace quorvex {

class MessageBoxAnswerer {
 public:
  MessageBoxAnswerer() : thread([this] { Watch(); }) {}
  MessageBoxAnswerer(const MessageBoxAnswerer&) = delete;
  MessageBoxAnswerer& operator=(const MessageBoxAnswerer&) = delete;
  ~MessageBoxAnswerer() {
    stop = true;
    thread.join();
  }

  // "caption: text" of every box answered so far.
  [[nodiscard]] std::vector<std::string> Answered() {
    const std::scoped_lock lock(mutex);
    return answered;
  }

 private:
  static BOOL CALLBACK Collect(HWND window, LPARAM boxes) {
    char name[16] = "";
    DWORD process = 0;
    ::GetClassNameA(window, name, sizeof name);
    ::GetWindowThreadProcessId(window, &process);
    const bool box =
        std::string(name) == "#32770" && process == ::GetCurrentProcessId() && ::IsWindowVisible(window);
    if (box) reinterpret_cast<std::vector<HWND>*>(boxes)->push_back(window);
    return TRUE;
  }

  void Watch() {
    while (!stop) {
      std::vector<HWND> boxes;
      ::EnumWindows(Collect, reinterpret_cast<LPARAM>(&boxes));
      for (const HWND box : boxes) Answer(box);
      ::Sleep(30);
    }
  }

  void Answer(HWND box) {
    char caption[200] = "";
    char text[1000] = "";
    ::GetWindowTextA(box, caption, sizeof caption);
    ::GetDlgItemTextA(box, 0xFFFF, text, sizeof text);
    {
      const std::scoped_lock lock(mutex);
      answered.push_back(std::string(caption) + ": " + text);
    }
    ::SendMessageA(box, WM_COMMAND, IDOK, 0);
  }

  std::mutex mutex;
  std::vector<std::string> answered;
  std::atomic<bool> stop = false;
  std::thread thread;
};

}  // namespace quorvex
