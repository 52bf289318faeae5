#include "shell/key_focus.h"

#include "panel/control_panel.h"
#include "panel/main_window.h"

namespace quorvex {
namespace {

bool IsDown(int key) { return ::GetKeyState(key) < 0; }

std::size_t Neighbour(std::size_t row, bool back) {
  if (row == kButtonCount) return back ? kButtonCount - 1 : 0;
  return (row + (back ? kButtonCount - 1 : 1)) % kButtonCount;
}

}  // namespace

bool MoveKeyFocus(const MSG& message) {
  if (message.message == WM_LBUTTONDOWN) ShowKeyFocus(false);
  const bool ours = message.hwnd == mainWindow || ::IsChild(mainWindow, message.hwnd) != FALSE;
  const bool tab = message.wParam == VK_TAB;
  if (message.message != WM_KEYDOWN || !ours || (!tab && message.wParam != VK_SPACE)) return false;
  if (IsKeyFocusShown() && !tab) return false;
  std::size_t row = RowOf(::GetFocus());
  if (IsKeyFocusShown() || row == kButtonCount) {
    const bool back = IsDown(VK_SHIFT);
    row = Neighbour(row, back);
    while (IsDown(VK_CONTROL) && !kButtons[row].startsGroup) row = Neighbour(row, back);
  }
  ShowKeyFocus(true);
  ::SetFocus(ButtonWindow(row));
  return true;
}

}  // namespace quorvex
