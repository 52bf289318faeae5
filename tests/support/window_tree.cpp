// window_tree  Prints the visible windows of the player and what they contain, one a line: depth, control
// number, class, place on the screen (left top right bottom), whether it is enabled, text; parted by tabs.
// Windows inside a program's window are no windows of the X display, so the tests of the whole program find
// the keys of its dialogs by this.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <string>

namespace {

constexpr UINT kPatienceMs = 1000;

DWORD player = 0;
DWORD heldUp = 0;  // a thread that does not answer

// Empty when the window's thread does not answer.
std::string TextOf(HWND window) {
  const DWORD thread = ::GetWindowThreadProcessId(window, nullptr);
  std::string text(1000, '\0');
  DWORD_PTR length = 0;
  if (thread != heldUp &&
      ::SendMessageTimeoutA(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()),
                            SMTO_NORMAL, kPatienceMs, &length) == 0) {
    heldUp = thread;
  }
  text.resize(length);
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
  return text;
}

void Print(HWND window, int depth);

BOOL CALLBACK PrintChild(HWND window, LPARAM parentAndDepth) {
  const auto& [parent, depth] = *reinterpret_cast<const std::pair<HWND, int>*>(parentAndDepth);
  if (::GetParent(window) == parent && ::IsWindowVisible(window) != FALSE) Print(window, depth);
  return TRUE;
}

void Print(HWND window, int depth) {
  char className[100] = "";
  ::GetClassNameA(window, className, sizeof className);
  RECT place{};
  ::GetWindowRect(window, &place);
  std::printf("%d\t%ld\t%s\t%ld\t%ld\t%ld\t%ld\t%d\t%s\n", depth, ::GetWindowLongA(window, GWL_ID), className,
              place.left, place.top, place.right, place.bottom, ::IsWindowEnabled(window),
              TextOf(window).c_str());
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
