// window_tree  Prints the visible windows of the player and what they contain, one a line: depth, control
// number, class, place on the screen (left top right bottom), whether it is enabled, text; parted by tabs.
// Windows inside a program's window are no windows of the X display, so the tests of the whole program find
// the keys of its dialogs by this.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <string>

namespace {

DWORD player = 0;

void Print(HWND window, int depth);

BOOL CALLBACK PrintChild(HWND window, LPARAM parentAndDepth) {
  const auto& [parent, depth] = *reinterpret_cast<const std::pair<HWND, int>*>(parentAndDepth);
  if (::GetParent(window) == parent && ::IsWindowVisible(window) != FALSE) Print(window, depth);
  return TRUE;
}

void Print(HWND window, int depth) {
  char className[100] = "";
  ::GetClassNameA(window, className, sizeof className);
  std::string text(1000, '\0');
  text.resize(static_cast<std::size_t>(
      ::SendMessageA(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
  RECT place{};
  ::GetWindowRect(window, &place);
  std::printf("%d\t%ld\t%s\t%ld\t%ld\t%ld\t%ld\t%d\t%s\n", depth, ::GetWindowLongA(window, GWL_ID), className,
              place.left, place.top, place.right, place.bottom, ::IsWindowEnabled(window), text.c_str());
  std::pair<HWND, int> next{window, depth + 1};
  ::EnumChildWindows(window, PrintChild, reinterpret_cast<LPARAM>(&next));
}

BOOL CALLBACK PrintOfPlayer(HWND window, LPARAM) {
  DWORD process = 0;
  ::GetWindowThreadProcessId(window, &process);
  if (process == player && ::IsWindowVisible(window) != FALSE) Print(window, 0);
  return TRUE;
}

}  // namespace

int main() {
  const HWND panel = ::FindWindowA("PControl", nullptr);
  if (panel == nullptr) return 1;
  ::GetWindowThreadProcessId(panel, &player);
  ::EnumWindows(PrintOfPlayer, 0);
  return 0;
}
