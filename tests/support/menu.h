// Reads the pop-up menus that a test brings up, and closes them.
#pragma once

#include <windows.h>

#include <atomic>
#include <mutex>
#include <string>
#include <thread>

namespace quorvex {

class MenuReader {
 public:
  MenuReader() : thread([this] { Watch(); }) {}
  MenuReader(const MenuReader&) = delete;
  MenuReader& operator=(const MenuReader&) = delete;
  ~MenuReader() {
    stop = true;
    thread.join();
  }

  // The items of the last menu, a line each: text, state, command.
  [[nodiscard]] std::string Seen() {
    const std::scoped_lock lock(mutex);
    return seen;
  }

  // Its top-left corner on the screen.
  [[nodiscard]] POINT Place() {
    const std::scoped_lock lock(mutex);
    return place;
  }

  static std::string Describe(HMENU menu, UINT position) {
    char text[200] = "";
    MENUITEMINFOA item{};
    item.cbSize = sizeof item;
    item.fMask = MIIM_STRING | MIIM_STATE | MIIM_FTYPE | MIIM_ID;
    item.dwTypeData = text;
    item.cch = sizeof text;
    ::GetMenuItemInfoA(menu, position, TRUE, &item);
    std::string line = text;
    if ((item.fType & (MFT_MENUBARBREAK | MFT_MENUBREAK)) != 0) line += " column";
    if ((item.fState & MFS_GRAYED) != 0) line += " greyed";
    if ((item.fState & MFS_CHECKED) != 0) line += " checked";
    return line + ' ' + std::to_string(item.wID);
  }

 private:
  void Watch() {
    while (!stop) {
      const HWND window = ::FindWindowA("#32768", nullptr);
      if (window != nullptr && ::IsWindowVisible(window)) Read(window);
      ::Sleep(30);
    }
  }

  void Read(HWND window) {
    constexpr UINT kGetMenu = 0x01E1;  // MN_GETHMENU
    const auto menu = reinterpret_cast<HMENU>(::SendMessageA(window, kGetMenu, 0, 0));
    if (menu == nullptr) return;
    RECT rect{};
    ::GetWindowRect(window, &rect);
    std::string items;
    for (int i = 0; i < ::GetMenuItemCount(menu); ++i) items += Describe(menu, static_cast<UINT>(i)) + '\n';
    {
      const std::scoped_lock lock(mutex);
      seen = items;
      place = {rect.left, rect.top};
    }
    ::PostMessageA(window, WM_KEYDOWN, VK_ESCAPE, 0);
  }

  std::mutex mutex;
  std::string seen;
  POINT place{};
  std::atomic<bool> stop = false;
  std::thread thread;
};

}  // namespace quorvex
