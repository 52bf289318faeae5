#include "devices/tv/name_guard.h"

#include <commctrl.h>
#include <commdlg.h>
#include <dlgs.h>

#include "devices/tv/capture_size.h"
#include "panel/status_display.h"

namespace quorvex {
namespace {

constexpr int kLongestName = 2000;

HWND NameField(HWND dialog) {
  const HWND combo = ::GetDlgItem(dialog, cmb13);
  return combo != nullptr ? combo : ::GetDlgItem(dialog, edt1);
}

bool IsTooLong(HWND dialog) {
  const int name = ::GetWindowTextLengthA(NameField(dialog));
  char text[kLongestName] = "";
  ::GetWindowTextA(NameField(dialog), text, kLongestName);
  const bool full = text[0] == '\\' || (text[0] != '\0' && text[1] == ':');
  const LRESULT folder = full ? 0 : ::SendMessageA(dialog, CDM_GETFOLDERPATH, 0, 0);
  return static_cast<std::size_t>(name) + static_cast<std::size_t>(folder) > kLongestCapturePath;
}

}  // namespace

NameGuard::NameGuard() : hook(::SetWindowsHookExA(WH_CBT, OnWindow, nullptr, ::GetCurrentThreadId())) {}

NameGuard::~NameGuard() { ::UnhookWindowsHookEx(hook); }

LRESULT CALLBACK NameGuard::OnWindow(int code, WPARAM wParam, LPARAM lParam) {
  const HWND window = reinterpret_cast<HWND>(wParam);
  if (code == HCBT_ACTIVATE && NameField(window) != nullptr) ::SetWindowSubclass(window, OnMessage, 0, 0);
  return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

LRESULT CALLBACK NameGuard::OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                      DWORD_PTR /*data*/) {
  if (message == WM_NCDESTROY) ::RemoveWindowSubclass(window, OnMessage, id);
  if (message == WM_COMMAND && LOWORD(wParam) == IDOK && IsTooLong(window)) {
    SetDisplayText("The path is too long");
    return 0;
  }
  return ::DefSubclassProc(window, message, wParam, lParam);
}

}  // namespace quorvex
