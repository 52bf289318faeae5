// The imitation liquid-crystal display on the panel's left: one value per element, repainted at once when it
// changes.
#pragma once

#include <windows.h>

#include <array>
#include <string>
#include <string_view>

#include "panel/display_digits.h"
#include "panel/display_elements.h"

namespace quorvex {

// Stores an element's value (element 0..39; digits 0..9 or blank, lamps 0 or 1) and, when it is a new one or
// the element is the text line, repaints the element's rectangle.
void SetDisplayElement(int element, int value);

// Shows at most the first 99 characters of `text` on the text line.
void SetDisplayText(std::string_view text);
void ClearDisplayText();

// Shows `number` (0..999; 0 and what lies outside is blank) as the first or the second number; with
// `alsoOnScreen` over the picture as well.
void ShowDisplayNumber(int number, bool alsoOnScreen, bool second);
void ClearDisplayNumbers();

void ShowDisplayTime(PackedTime time);
void ShowDisplayTimeTenths(PackedTime time);
void ClearDisplayTime();

// Every digit an 8 and every lamp on, or all off and blank.
void SetAllDisplayElements(bool on);

// The time of day, in twelve hours.
void ShowClock();

// Draws the elements that `update` (panel client pixels) touches.
void PaintStatusDisplay(HDC dc, const RECT& update);

// What the display holds, for those who read it instead of looking.
struct DisplayContent {
  std::array<int, kDisplayElementCount> values;
  std::string text;
};
const DisplayContent& ShownContent();

// Who shows a number over the picture: handed in by whoever has a picture; none at first.
using OnScreenText = void (*)(const std::string& text);
void SetOnScreenText(OnScreenText show);

}  // namespace quorvex
