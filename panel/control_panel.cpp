#include "panel/control_panel.h"

#include <commctrl.h>

#include <algorithm>
#include <array>

#include "panel/main_window.h"
#include "panel/skin.h"

namespace quorvex {
namespace {

struct ControlButton {
  HWND window = nullptr;
  ButtonLook look = ButtonLook::kNormal;
};
std::array<ControlButton, kButtonCount> buttons;

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
  return ::CreateWindowExA(0, "BUTTON", "", WS_CHILD | WS_VISIBLE | BS_OWNERDRAW | group, layout.x, layout.y,
                           layout.width, layout.height, mainWindow,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(layout.command)), instance, nullptr);
}

void DrawLitFrame(HDC dc, const ButtonLayout& layout) {
  const UniquePen pen(::CreatePen(PS_SOLID, 1, RGB(0, 255, 0)));
  const Selected selectedPen(dc, pen.Get());
  const Selected hollow(dc, ::GetStockObject(HOLLOW_BRUSH));
  ::Rectangle(dc, 0, 0, layout.width, layout.height);
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

ButtonLook LookOf(std::size_t row) { return buttons[row].look; }

HWND ButtonWindow(std::size_t row) { return buttons[row].window; }

std::size_t RowOf(HWND window) {
  const auto found = std::find_if(buttons.begin(), buttons.end(),
                                  [window](const ControlButton& button) { return button.window == window; });
  return static_cast<std::size_t>(found - buttons.begin());
}

void PaintPanelBackground(HDC dc) {
  ::BitBlt(dc, 0, 0, kPanelWidth, kPanelHeight, skin.background.Get(), 0, 0, SRCCOPY);
}

void DrawPanelButton(const DRAWITEMSTRUCT& item) {
  const std::size_t row = ButtonIndex(static_cast<int>(item.CtlID));
  if (row == kButtonCount) return;
  const ButtonLayout& layout = kButtons[row];
  const HDC source = skin.background.Get();
  if ((item.itemState & ODS_SELECTED) != 0) {
    // The key's face one pixel lower, inside a black border.
    ::PatBlt(item.hDC, 0, 0, layout.width, layout.height, BLACKNESS);
    ::BitBlt(item.hDC, 2, 3, layout.width - 4, layout.height - 4, source, layout.x + 2, layout.y + 2,
             SRCCOPY);
  } else {
    ::BitBlt(item.hDC, 0, 0, layout.width, layout.height, source, layout.x, layout.y, SRCCOPY);
  }
  if (buttons[row].look == ButtonLook::kLit) DrawLitFrame(item.hDC, layout);
}

}  // namespace quorvex
