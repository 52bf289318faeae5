#include "panel/control_panel.h"

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <utility>

#include "panel/main_window.h"
#include "panel/scale.h"
#include "panel/shown_colours.h"
#include "panel/skin.h"

namespace quorvex {
namespace {

struct ControlButton {
  HWND window = nullptr;
  ButtonLook look = ButtonLook::kNormal;
};
std::array<ControlButton, kButtonCount> buttons;
bool focusShown = false;

void AddToolTip(HWND toolTips, HWND button, int text) {
  TOOLINFOA tool{};
  // Version 2 of the record, in this build's size (64 bytes; 44 in a 32-bit build): every tool-tip control
  // knows it.
  tool.cbSize = TTTOOLINFOA_V2_SIZE;
  tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
  tool.hwnd = mainWindow;
  tool.uId = reinterpret_cast<UINT_PTR>(button);
  tool.hinst = instance;
  tool.lpszText = MAKEINTRESOURCEA(text);
  ::SendMessageA(toolTips, TTM_ADDTOOLA, 0, reinterpret_cast<LPARAM>(&tool));
}

HWND CreateButton(const ButtonLayout& layout) {
  const DWORD group = layout.startsGroup ? WS_GROUP | WS_TABSTOP : 0;
  return ::CreateWindowExA(0, "BUTTON", "", WS_CHILD | WS_VISIBLE | BS_OWNERDRAW | group, ToPixels(layout.x),
                           ToPixels(layout.y), ToPixels(layout.width), ToPixels(layout.height), mainWindow,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(layout.command)), instance, nullptr);
}

// A frame of one unit, so many units inside the key's edge.
void DrawFrame(HDC dc, const ButtonLayout& layout, int inside, COLORREF colour) {
  const UniquePen pen(::CreatePen(PS_SOLID, 1, colour));
  const Selected selectedPen(dc, pen.Get());
  const Selected hollow(dc, ::GetStockObject(HOLLOW_BRUSH));
  for (int i = ToPixels(inside); i < ToPixels(inside + 1); ++i)
    ::Rectangle(dc, i, i, ToPixels(layout.width) - i, ToPixels(layout.height) - i);
}

// Copies `area` of the panel's skin (units) to (x, y) of a key.
void CopySkin(HDC dc, int x, int y, const Rect& area) {
  const Rect from = ToPixels(area);
  ::BitBlt(dc, ToPixels(x), ToPixels(y), from.Width(), from.Height(), skin.background.Get(), from.left,
           from.top, SRCCOPY);
}

}  // namespace

void CreatePanelButtons(HWND toolTips) {
  for (std::size_t row = 0; row < kButtonCount; ++row) {
    buttons[row] = {CreateButton(kButtons[row]), ButtonLook::kNormal};
    if (toolTips != nullptr && kButtons[row].toolTip != 0)
      AddToolTip(toolTips, buttons[row].window, kButtons[row].toolTip);
  }
}

void SetButtonState(int command, ButtonLook look) {
  const std::size_t row = ButtonIndex(command);
  if (row == kButtonCount || buttons[row].look == look) return;
  buttons[row].look = look;
  ::RedrawWindow(buttons[row].window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
  ::NotifyWinEvent(EVENT_OBJECT_STATECHANGE, buttons[row].window, OBJID_CLIENT, CHILDID_SELF);
}

void ShowKeyFocus(bool shown) {
  if (shown == std::exchange(focusShown, shown)) return;
  if (const HWND focused = ::GetFocus(); RowOf(focused) != kButtonCount)
    ::InvalidateRect(focused, nullptr, FALSE);
}

bool IsKeyFocusShown() { return focusShown; }

ButtonLook LookOf(std::size_t row) { return buttons[row].look; }

HWND ButtonWindow(std::size_t row) { return buttons[row].window; }

std::size_t RowOf(HWND window) {
  const auto found = std::find_if(buttons.begin(), buttons.end(),
                                  [window](const ControlButton& button) { return button.window == window; });
  return static_cast<std::size_t>(found - buttons.begin());
}

void PaintPanelBackground(HDC dc) { CopySkin(dc, 0, 0, {0, 0, kPanelWidth, kPanelHeight}); }

void DrawPanelButton(const DRAWITEMSTRUCT& item) {
  const std::size_t row = ButtonIndex(static_cast<int>(item.CtlID));
  if (row == kButtonCount) return;
  const ButtonLayout& layout = kButtons[row];
  const Rect key = layout.Rectangle();
  if ((item.itemState & ODS_SELECTED) != 0) {
    // The key's face one unit lower, inside a black border.
    ::PatBlt(item.hDC, 0, 0, ToPixels(layout.width), ToPixels(layout.height), BLACKNESS);
    CopySkin(item.hDC, 2, 3, {key.left + 2, key.top + 2, key.right - 2, key.bottom - 2});
  } else {
    CopySkin(item.hDC, 0, 0, key);
  }
  if (buttons[row].look == ButtonLook::kLit) DrawFrame(item.hDC, layout, 0, ShownColour(kGreen));
  if (focusShown && (item.itemState & ODS_FOCUS) != 0) DrawFrame(item.hDC, layout, 1, RGB(255, 255, 255));
}

}  // namespace quorvex
