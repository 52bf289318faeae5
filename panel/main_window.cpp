#include "panel/main_window.h"

#include <algorithm>
#include <string_view>

#include "base/geometry.h"
#include "panel/window_place.h"

namespace quorvex {

HINSTANCE instance = nullptr;
HWND mainWindow = nullptr;

std::string LoadText(int stringId) {
  // Asked for no copy, the call hands out the resource itself, in UTF-16.
  const wchar_t* wide = nullptr;
  const int length =
      ::LoadStringW(instance, static_cast<UINT>(stringId), reinterpret_cast<wchar_t*>(&wide), 0);
  std::string text(static_cast<std::size_t>(length) * 3, '\0');
  const int size = ::WideCharToMultiByte(CP_ACP, 0, wide, length, text.data(), length * 3, nullptr, nullptr);
  text.resize(static_cast<std::size_t>(size));
  return text;
}

namespace {

// Keeps the dialog that takes keys, if there is one.
BOOL CALLBACK FindDialog(HWND window, LPARAM found) {
  char name[8] = "";
  ::GetClassNameA(window, name, sizeof name);
  const bool isDialog = std::string_view(name) == "#32770";
  if (!isDialog || ::IsWindowVisible(window) == FALSE || ::IsWindowEnabled(window) == FALSE) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

}  // namespace

HWND OwnerOfBox() {
  if (::IsWindowEnabled(mainWindow) != FALSE) return mainWindow;
  HWND owner = mainWindow;
  ::EnumThreadWindows(::GetCurrentThreadId(), FindDialog, reinterpret_cast<LPARAM>(&owner));
  return owner;
}

int ReportError(const std::string& text) {
  return ::MessageBoxA(OwnerOfBox(), text.c_str(), "Quorvex", MB_ICONHAND | MB_TOPMOST);
}

bool ReportErrorIf(long failed, const std::string& text) {
  if (failed == 0) return false;
  ReportError(text);
  return true;
}

UINT Quietly() { return ::IsWindowEnabled(mainWindow) == FALSE ? SWP_NOACTIVATE : 0; }

void RaiseControlPanel() {
  ::SetWindowPos(mainWindow, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | Quietly());
}

void LowerControlPanel() {
  ::SetWindowPos(mainWindow, HWND_NOTOPMOST, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | Quietly());
}

void SetPointer(LPCSTR cursor) { ::SetCursor(::LoadCursorA(nullptr, cursor)); }

void CenterWindow(HWND window, HWND reference) {
  RECT moved{};
  ::GetWindowRect(window, &moved);
  const RECT fixed = PlaceOf(reference);
  const int left = fixed.left + Half((fixed.right - fixed.left) - (moved.right - moved.left));
  const int top = fixed.top + Half((fixed.bottom - fixed.top) - (moved.bottom - moved.top));
  ::SetWindowPos(window, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
}

void BringIntoView(HWND window) {
  RECT place{};
  ::GetWindowRect(window, &place);
  MONITORINFO screen{};
  screen.cbSize = sizeof screen;
  ::GetMonitorInfoA(::MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &screen);
  const RECT& area = screen.rcWork;
  const LONG left = std::max(std::min(place.left, area.right - (place.right - place.left)), area.left);
  const LONG top = std::max(std::min(place.top, area.bottom - (place.bottom - place.top)), area.top);
  ::SetWindowPos(window, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace quorvex
