// What screen readers are told in place of what the eye sees.
#pragma once

#include <string>
#include <string_view>

#include "panel/display_digits.h"
#include "panel/display_elements.h"

#include <array>

namespace quorvex {

// A key's name and its shortcut from a tool tip such as "Power (Alt+F4)"; no shortcut when it names none.
struct KeyText {
  std::string name;
  std::string shortcut;
};
KeyText SplitToolTip(std::string_view toolTip);

// The time that is shown, "00:02:17.4" or "11:59:59 PM"; one that is not shown; and the lamps that are lit,
// "REP, ALL, CD".
std::string TimeAsText(const std::array<int, kDisplayElementCount>& values);
std::string TimeAsText(PackedTime time);  // "01:31:00"
std::string LampsAsText(const std::array<int, kDisplayElementCount>& values);

// The display's lit content in words: "00:02:17, TRACK 3 OF 6, REP, ALL, CD, Title". Blank parts are left
// out.
std::string DisplayAsText(const std::array<int, kDisplayElementCount>& values, std::string_view textLine);

}  // namespace quorvex
