// The elements of the panel's imitation liquid-crystal display: where each lies, what kind it is, its
// colours.
#pragma once

#include <array>
#include <cstdint>

#include "base/geometry.h"

namespace quorvex {

// The elements' numbers are what the devices say to light them; a number within a run (digits, lamps) is the
// first of the run plus an offset.
enum DisplayElement : int {
  kHoursTens = 0,
  kHoursUnits,
  kMinutesTens,
  kMinutesUnits,
  kSecondsTens,
  kSecondsUnits,
  kFirstNumber = 6,  // hundreds; tens and units follow
  kSecondNumber = 9,
  kTenths = 12,
  kDecimalPoint,
  kAmLamp,
  kPmLamp,
  kFirstColon,
  kSecondColon,
  kChannelLabel,
  kTrackLabel,
  kFileLabel,
  kChapterLabel,
  kOfLabel,
  kPauseLamp,
  kMuteLamp,
  kRecordLamp,
  kRandomLamp,
  kRepeatLamp,
  kRepeatOneLamp,
  kRepeatAllLamp,
  kMenuLamp,
  kCaptionLamp,
  kTimerLamp,
  kIdleLamp,  // the lamp of device type 0; those of types 1 to 4 follow
  kTvLamp,
  kDvdLamp,
  kCdLamp,
  kFileLamp,
  kTextLine,
  kReservedElement,
  kWholeDisplay,
};

inline constexpr int kDisplayElementCount = 41;
inline constexpr int kBlankDigit = 10;

enum class ElementKind { kDigit, kLamp, kText, kNeverDrawn };

// Red, green, blue.
struct Colour {
  std::uint8_t red;
  std::uint8_t green;
  std::uint8_t blue;
  friend constexpr bool operator==(const Colour&, const Colour&) = default;
};

inline constexpr Colour kGreen{0, 255, 0};
inline constexpr Colour kTeal{0, 64, 64};
inline constexpr Colour kPaletteTeal{0, 128, 0};  // in place of kTeal where colours come from a palette
inline constexpr Colour kRed{255, 0, 0};
inline constexpr Colour kDarkRed{128, 0, 0};
inline constexpr Colour kTextCyan{0, 255, 255};

// What takes a colour's place while the user wants high contrast: what is lit is bright, the rest is not
// seen.
constexpr Colour InHighContrast(Colour colour) {
  if (colour == kTeal || colour == kDarkRed) return {0, 0, 0};
  return colour == kRed ? Colour{255, 255, 0} : Colour{255, 255, 255};
}

struct ElementLayout {
  int x;  // this and the next three in units (panel/scale.h)
  int y;
  int width;
  int height;
  ElementKind kind;
  Colour lit;
  Colour unlit;

  [[nodiscard]] constexpr Rect Rectangle() const { return {x, y, x + width, y + height}; }
};

namespace layout {
constexpr ElementLayout Digit(int x) { return {x, 17, 9, 26, ElementKind::kDigit, kGreen, kTeal}; }
constexpr ElementLayout Label(int x, int y, int width, int height) {
  return {x, y, width, height, ElementKind::kLamp, kGreen, kTeal};
}
constexpr ElementLayout Lamp(int x, int width) {
  return {x, 48, width, 10, ElementKind::kLamp, kRed, kDarkRed};
}
constexpr ElementLayout Area(int x, int y, int width, int height, ElementKind kind) {
  return {x, y, width, height, kind, kTextCyan, {0, 0, 0}};
}
}  // namespace layout

inline constexpr std::array<ElementLayout, kDisplayElementCount> kDisplayElements{{
    layout::Digit(66),
    layout::Digit(78),
    layout::Digit(95),
    layout::Digit(107),
    layout::Digit(124),
    layout::Digit(136),
    layout::Digit(234),
    layout::Digit(246),
    layout::Digit(258),
    layout::Digit(291),
    layout::Digit(303),
    layout::Digit(315),
    layout::Digit(153),
    layout::Label(148, 41, 2, 2),   // decimal point
    layout::Label(46, 20, 15, 8),   // AM
    layout::Label(46, 33, 15, 8),   // PM
    layout::Label(90, 25, 2, 26),   // first colon
    layout::Label(119, 25, 2, 26),  // second colon
    layout::Label(171, 18, 45, 7),  // CHANNEL
    layout::Label(171, 27, 33, 7),  // TRACK
    layout::Label(209, 27, 19, 7),  // FILE
    layout::Label(171, 36, 46, 7),  // CHAPTER
    layout::Label(274, 36, 12, 7),  // OF
    layout::Lamp(46, 34),           // PAUSE
    layout::Lamp(85, 30),           // MUTE
    layout::Lamp(119, 23),          // REC
    layout::Lamp(147, 22),          // RND
    layout::Lamp(174, 23),          // REP
    layout::Lamp(201, 3),           // 1
    layout::Lamp(209, 20),          // ALL
    layout::Lamp(233, 30),          // MENU
    layout::Lamp(268, 14),          // CC
    layout::Lamp(313, 12),          // timer symbol
    layout::Lamp(286, 22),          // IDLE
    layout::Label(46, 63, 36, 8),   // TV/CAP
    layout::Label(86, 63, 20, 8),   // DVD
    layout::Label(109, 63, 18, 8),  // CD
    layout::Label(126, 63, 30, 8),  // media file: the mask has no glyph there, the text line covers it
    layout::Area(126, 59, 202, 16, ElementKind::kText),
    layout::Area(312, 17, 13, 29, ElementKind::kNeverDrawn),
    layout::Area(46, 17, 279, 53, ElementKind::kNeverDrawn),
}};

static_assert(kWholeDisplay == kDisplayElementCount - 1);
static_assert(kDisplayElements[kSecondNumber].x == 291 && kDisplayElements[kTenths].x == 153);
static_assert(kDisplayElements[kIdleLamp].x == 286 && kDisplayElements[kFileLamp].x == 126);

}  // namespace quorvex
