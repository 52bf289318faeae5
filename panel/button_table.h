// The 47 keys of the remote control: the command each sends, its place on the panel, its texts.
#pragma once

#include <array>
#include <cstddef>

#include "base/geometry.h"
#include "panel/commands.h"

namespace quorvex {

struct ButtonLayout {
  int command;  // also the button's child-window id
  int x;        // this and the next three in units (panel/scale.h)
  int y;
  int width;
  int height;
  bool startsGroup;
  int toolTip;  // string resource, 0 for none
  int name;     // string resource that names the key for screen readers when it has no tool tip

  [[nodiscard]] constexpr Rect Rectangle() const { return {x, y, x + width, y + height}; }
};

inline constexpr std::size_t kButtonCount = 47;
inline constexpr int kDigitNameString = 17;  // the name of digit 0; the other digits follow

namespace layout {
constexpr ButtonLayout Key(int command, int x, int y, int width, int height, int toolTip) {
  return {command, x, y, width, height, false, toolTip, toolTip};
}
constexpr ButtonLayout GroupStart(ButtonLayout button) {
  button.startsGroup = true;
  return button;
}
constexpr ButtonLayout TransportKey(int command, int x, int toolTip) {
  return Key(command, x, 86, 24, 18, toolTip);
}
constexpr ButtonLayout PadKey(int command, int x, int y, int toolTip) {
  return Key(command, x, y, 22, 16, toolTip);
}
constexpr ButtonLayout DigitKey(int digit, int x, int y) {
  return {kCommandDigit0 + digit, x, y, 22, 16, false, 0, kDigitNameString + digit};
}
constexpr ButtonLayout ScreenKey(int command, int x, int toolTip) {
  return Key(command, x, 86, 22, 18, toolTip);
}
}  // namespace layout

// In the order of their creation.
inline constexpr std::array<ButtonLayout, kButtonCount> kButtons{{
    layout::GroupStart(layout::Key(kCommandPower, 8, 12, 26, 22, 1)),
    layout::Key(kCommandTimer, 8, 34, 26, 20, 2),
    layout::Key(kCommandHidePlayer, 8, 54, 26, 22, 3),
    layout::GroupStart(layout::Key(kCommandMediaSelect, 8, 86, 26, 18, 4)),
    layout::GroupStart(layout::TransportKey(kCommandOpenMediaFile, 44, 5)),
    layout::TransportKey(kCommandRepeat, 68, 6),
    layout::TransportKey(kCommandRandom, 92, 65),
    layout::TransportKey(kCommandEject, 116, 7),
    layout::TransportKey(kCommandStop, 140, 8),
    layout::TransportKey(kCommandPause, 164, 9),
    layout::TransportKey(kCommandPlay, 188, 10),
    layout::TransportKey(kCommandPrevious, 212, 11),
    layout::TransportKey(kCommandRewind, 236, 12),
    layout::TransportKey(kCommandFastForward, 260, 13),
    layout::TransportKey(kCommandNext, 284, 14),
    layout::TransportKey(kCommandRecord, 308, 15),
    layout::GroupStart(layout::DigitKey(1, 342, 12)),
    layout::DigitKey(2, 364, 12),
    layout::DigitKey(3, 386, 12),
    layout::DigitKey(4, 342, 28),
    layout::DigitKey(5, 364, 28),
    layout::DigitKey(6, 386, 28),
    layout::DigitKey(7, 342, 44),
    layout::DigitKey(8, 364, 44),
    layout::DigitKey(9, 386, 44),
    layout::DigitKey(0, 364, 60),
    layout::PadKey(kCommandVideoInput, 342, 60, 46),
    layout::Key(kCommandEnter, 386, 60, 44, 16, 28),
    layout::PadKey(kCommandDeleteChannel, 408, 12, 29),
    layout::PadKey(kCommandAddChannel, 408, 28, 30),
    layout::PadKey(kCommandLastChannel, 408, 44, 31),
    layout::PadKey(kCommandScanMode, 430, 12, 32),
    layout::GroupStart(layout::PadKey(kCommandMute, 430, 28, 56)),
    layout::PadKey(kCommandAudioMode, 430, 44, 57),
    layout::PadKey(kCommandHelp, 430, 60, 47),
    layout::GroupStart(layout::ScreenKey(kCommandFullScreen, 342, 35)),
    layout::ScreenKey(kCommandWideScreen, 364, 36),
    layout::ScreenKey(kCommandClosedCaption, 386, 37),
    layout::ScreenKey(kCommandMenu, 408, 38),
    layout::ScreenKey(kCommandStreamMenu, 430, 39),
    layout::Key(kCommandUp, 475, 12, 32, 16, 33),
    layout::Key(kCommandDown, 475, 60, 32, 16, 34),
    layout::Key(kCommandRight, 507, 28, 16, 32, 52),
    layout::Key(kCommandLeft, 459, 28, 16, 32, 53),
    layout::Key(kCommandVideoAdjustment, 475, 28, 32, 16, 67),
    layout::Key(kCommandAudioAdjustment, 475, 44, 32, 16, 66),
    layout::Key(kCommandSetup, 472, 82, 39, 26, 58),
}};

// The row of a command; kButtonCount when no button sends it.
constexpr std::size_t ButtonIndex(int command) {
  std::size_t index = 0;
  while (index < kButtonCount && kButtons[index].command != command) ++index;
  return index;
}

namespace layout {
constexpr bool CommandsAreUnique() {
  for (std::size_t i = 0; i < kButtonCount; ++i) {
    if (ButtonIndex(kButtons[i].command) != i) return false;
  }
  return true;
}
}  // namespace layout
static_assert(layout::CommandsAreUnique());

}  // namespace quorvex
