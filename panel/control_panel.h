// The remote control's face: 47 owner-drawn buttons over one skin.
#pragma once

#include <windows.h>

#include "panel/button_table.h"

namespace quorvex {

enum class ButtonLook { kNormal = 1, kLit = 2 };

// Makes the buttons on the control panel, each with its tool tip where `toolTips` (a tool-tip control, or
// null) exists.
void CreatePanelButtons(HWND toolTips);

// Gives a command's button another look and repaints it; nothing when no button sends that command.
void SetButtonState(int command, ButtonLook look);

// Whether the button that has the keyboard shows it, by a frame.
void ShowKeyFocus(bool shown);
bool IsKeyFocusShown();

// What the button of a row shows at the moment, and its window.
ButtonLook LookOf(std::size_t row);
HWND ButtonWindow(std::size_t row);

// The row of a button's window; kButtonCount when it is none of the buttons.
std::size_t RowOf(HWND window);

// Paints the whole skin.
void PaintPanelBackground(HDC dc);

// Draws a button as WM_DRAWITEM asks.
void DrawPanelButton(const DRAWITEMSTRUCT& item);

}  // namespace quorvex
