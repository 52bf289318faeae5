#include "panel/status_display.h"

#include <algorithm>

#include "base/text.h"
#include "panel/main_window.h"
#include "panel/scale.h"
#include "panel/shown_colours.h"
#include "panel/skin.h"

namespace quorvex {
namespace {

constexpr std::size_t kLongestText = 99;

struct State {
  DisplayContent content;
  OnScreenText onScreenText = nullptr;
};

State& Display() {
  static State state = [] {
    State fresh;
    fresh.content.values.fill(1);
    for (int i = 0; i < kDisplayElementCount; ++i) {
      if (kDisplayElements[static_cast<std::size_t>(i)].kind == ElementKind::kDigit)
        fresh.content.values[static_cast<std::size_t>(i)] = 8;
    }
    return fresh;
  }();
  return state;
}

const ElementLayout& Layout(int element) { return kDisplayElements[static_cast<std::size_t>(element)]; }
int& Value(int element) { return Display().content.values[static_cast<std::size_t>(element)]; }

// In pixels of the panel.
RECT RectOf(int element) {
  const Rect rect = ToPixels(Layout(element).Rectangle());
  return {rect.left, rect.top, rect.right, rect.bottom};
}

void Repaint(int element) {
  const RECT rect = RectOf(element);
  ::RedrawWindow(mainWindow, &rect, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
}

// Copies the mask's glyph at `from` to an element of the same size, its pixels in `colour`, all others black.
void CopyGlyph(HDC dc, const ElementLayout& to, const ElementLayout& from, Colour colour, DWORD operation) {
  const Rect rect = ToPixels(to.Rectangle());
  ::SetTextColor(dc, ShownColour(colour));
  ::BitBlt(dc, rect.left, rect.top, rect.Width(), rect.Height(), skin.segments.Get(), ToPixels(from.x),
           ToPixels(from.y), operation);
}

// A lit digit lies over a faint 8; the glyph of digit d stands in the mask at element d.
void DrawDigit(HDC dc, const ElementLayout& element, int value) {
  CopyGlyph(dc, element, Layout(8), element.unlit, SRCCOPY);
  if (value < 0 || value >= kBlankDigit) return;
  CopyGlyph(dc, element, Layout(value), element.lit, SRCPAINT);
}

void DrawTextLine(HDC dc) {
  const Selected font(dc, skin.displayFont.Get());
  const std::string& text = Display().content.text;
  const int length = static_cast<int>(text.size());
  RECT rect = RectOf(kTextLine);
  SIZE size{};
  ::GetTextExtentPoint32A(dc, text.c_str(), length, &size);
  const bool fits = size.cx <= rect.right - rect.left;
  ::SetTextColor(dc, ShownColour(kTextCyan));
  ::SetTextAlign(dc, fits ? TA_CENTER : TA_LEFT);
  const int x = fits ? (rect.left + rect.right) / 2 : rect.left;
  ::ExtTextOutA(dc, x, rect.top, ETO_OPAQUE | ETO_CLIPPED, &rect, text.c_str(), static_cast<UINT>(length),
                nullptr);
}

void DrawElement(HDC dc, int element) {
  const ElementLayout& layout = Layout(element);
  switch (layout.kind) {
    case ElementKind::kDigit: DrawDigit(dc, layout, Value(element)); break;
    case ElementKind::kLamp:
      CopyGlyph(dc, layout, layout, Value(element) != 0 ? layout.lit : layout.unlit, SRCCOPY);
      break;
    case ElementKind::kText: DrawTextLine(dc); break;
    case ElementKind::kNeverDrawn: break;
  }
}

void ShowDigits(const std::array<int, 6>& digits) {
  for (int i = 0; i < 6; ++i) SetDisplayElement(kHoursTens + i, digits[static_cast<std::size_t>(i)]);
}

}  // namespace

void SetDisplayElement(int element, int value) {
  if (element < 0 || element > kReservedElement) return;
  const bool changed = Value(element) != value;
  Value(element) = value;
  if (changed || element == kTextLine) Repaint(element);
}

void SetDisplayText(std::string_view text) {
  Display().content.text = FirstCharacters(text, kLongestText);
  SetDisplayElement(kTextLine, 1);
  ::NotifyWinEvent(EVENT_OBJECT_VALUECHANGE, mainWindow, OBJID_CLIENT, 1);
}

void ClearDisplayText() { SetDisplayText(""); }

void ShowDisplayNumber(int number, bool alsoOnScreen, bool second) {
  const std::array<int, 3> digits = NumberDigits(number);
  const int first = second ? kSecondNumber : kFirstNumber;
  for (int i = 0; i < 3; ++i) SetDisplayElement(first + i, digits[static_cast<std::size_t>(i)]);
  if (alsoOnScreen && Display().onScreenText != nullptr) Display().onScreenText(' ' + std::to_string(number));
}

void ClearDisplayNumbers() {
  ShowDisplayNumber(0, false, false);
  SetDisplayElement(kChapterLabel, 0);
  ShowDisplayNumber(0, false, true);
  for (const int label : {kOfLabel, kFileLabel, kTrackLabel}) SetDisplayElement(label, 0);
}

void ShowDisplayTime(PackedTime time) {
  const TimeDigits shown = UnpackTime(time);
  ShowDigits(shown.digits);
  SetDisplayElement(kFirstColon, shown.colons ? 1 : 0);
  SetDisplayElement(kSecondColon, shown.colons ? 1 : 0);
}

void ShowDisplayTimeTenths(PackedTime time) {
  ShowDisplayTime(time);
  SetDisplayElement(kDecimalPoint, 1);
  SetDisplayElement(kTenths, UnpackTime(time).tenths);
}

void ClearDisplayTime() {
  ShowDisplayTime(kBlankTime);
  SetDisplayElement(kTenths, kBlankDigit);
  for (const int lamp : {kDecimalPoint, kAmLamp, kPmLamp}) SetDisplayElement(lamp, 0);
}

void SetAllDisplayElements(bool on) {
  for (int i = 0; i < kWholeDisplay; ++i) {
    const int off = Layout(i).kind == ElementKind::kDigit ? kBlankDigit : 0;
    const int lit = Layout(i).kind == ElementKind::kDigit ? 8 : 1;
    Value(i) = on ? lit : off;
  }
  Repaint(kWholeDisplay);
}

void ShowClock() {
  SYSTEMTIME now{};
  ::GetLocalTime(&now);
  const ClockDigits clock = ClockFor(now.wHour, now.wMinute, now.wSecond);
  SetDisplayElement(kAmLamp, clock.pm ? 0 : 1);
  SetDisplayElement(kPmLamp, clock.pm ? 1 : 0);
  ShowDigits(clock.digits);
  SetDisplayElement(kFirstColon, 1);
  SetDisplayElement(kSecondColon, 1);
  SetDisplayElement(kTenths, kBlankDigit);
  SetDisplayElement(kDecimalPoint, 0);
}

void PaintStatusDisplay(HDC dc, const RECT& update) {
  const Rect area{update.left, update.top, update.right, update.bottom};
  ::SetBkColor(dc, RGB(0, 0, 0));
  for (int i = 0; i < kWholeDisplay; ++i) {
    if (ToPixels(Layout(i).Rectangle()).Intersects(area)) DrawElement(dc, i);
  }
}

const DisplayContent& ShownContent() { return Display().content; }

void SetOnScreenText(OnScreenText show) { Display().onScreenText = show; }

}  // namespace quorvex
