// Reads the pop-up menus that a test brings up, and closes them or chooses from them.
#pragma once

#include <windows.h>

#include <atomic>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace quorvex {

class MenuReader {
 public:
  // `keys`: pressed in every menu; as they are, they close it.
  explicit MenuReader(std::vector<WPARAM> keys = {VK_ESCAPE})
      : pressed(std::move(keys)), thread([this] { Watch(); }) {}
  MenuReader(const MenuReader&) = delete;
  MenuReader& operator=(const MenuReader&) = delete;
  ~MenuReader() {
    stop = true;
    thread.join();
  }

  // The items of the last menu, a line each: text, state, command; those of a sub-menu indented below its
  // text.
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
    item.fMask = MIIM_STRING | MIIM_STATE | MIIM_FTYPE | MIIM_ID | MIIM_SUBMENU;
    item.dwTypeData = text;
    item.cch = sizeof text;
    ::GetMenuItemInfoA(menu, position, TRUE, &item);
    std::string line = text;
    if ((item.fType & (MFT_MENUBARBREAK | MFT_MENUBREAK)) != 0) line += " column";
    if ((item.fState & MFS_GRAYED) != 0) line += " greyed";
    if ((item.fState & MFS_CHECKED) != 0) line += " checked";
    if (item.hSubMenu != nullptr) return line + ":\n" + DescribeAll(item.hSubMenu, "  ");
    return line + ' ' + std::to_string(item.wID) + '\n';
  }

 private:
  static std::string DescribeAll(HMENU menu, const std::string& indent) {
    std::string items;
    for (int i = 0; i < ::GetMenuItemCount(menu); ++i) items += indent + Describe(menu, static_cast<UINT>(i));
    return items;
  }

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
    const std::string items = DescribeAll(menu, "");
    {
      const std::scoped_lock lock(mutex);
      seen = items;
      place = {rect.left, rect.top};
    }
    for (const WPARAM key : pressed) ::PostMessageA(window, WM_KEYDOWN, key, 0);
    while (!stop && ::IsWindow(window)) ::Sleep(10);
  }

  const std::vector<WPARAM> pressed;

  std::mutex mutex;
  std::string seen;
  POINT place{};
  std::atomic<bool> stop = false;
  std::thread thread;
};

}  // namespace quorvex
