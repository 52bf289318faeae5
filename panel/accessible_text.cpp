#include "panel/accessible_text.h"

#include <algorithm>

namespace quorvex {
namespace {

using Values = std::array<int, kDisplayElementCount>;

struct Word {
  int element;
  const char* text;
};

constexpr Word kLampWords[] = {
    {kPauseLamp, "PAUSE"}, {kMuteLamp, "MUTE"},   {kRecordLamp, "REC"},    {kRandomLamp, "RND"},
    {kRepeatLamp, "REP"},  {kRepeatOneLamp, "1"}, {kRepeatAllLamp, "ALL"}, {kMenuLamp, "MENU"},
    {kCaptionLamp, "CC"},  {kTimerLamp, "timer"}, {kIdleLamp, "IDLE"},     {kTvLamp, "TV/CAP"},
    {kDvdLamp, "DVD"},     {kCdLamp, "CD"},
};
constexpr Word kLabelWords[] = {
    {kChannelLabel, "CHANNEL"}, {kTrackLabel, "TRACK"}, {kFileLabel, "FILE"}, {kChapterLabel, "CHAPTER"}};

int At(const Values& values, int element) { return values[static_cast<std::size_t>(element)]; }

std::string Digits(const Values& values, int first, int count) {
  std::string text;
  for (int i = first; i < first + count; ++i) {
    if (const int digit = At(values, i); digit >= 0 && digit < kBlankDigit)
      text += static_cast<char>('0' + digit);
  }
  return text;
}

void Append(std::string& list, const std::string& part, const char* separator) {
  if (part.empty()) return;
  if (!list.empty()) list += separator;
  list += part;
}

}  // namespace

std::string TimeAsText(const std::array<int, kDisplayElementCount>& values) {
  std::string time;
  for (const int pair : {kHoursTens, kMinutesTens, kSecondsTens}) Append(time, Digits(values, pair, 2), ":");
  if (At(values, kDecimalPoint) != 0) Append(time, Digits(values, kTenths, 1), ".");
  if (At(values, kAmLamp) != 0) Append(time, "AM", " ");
  if (At(values, kPmLamp) != 0) Append(time, "PM", " ");
  return time;
}

std::string TimeAsText(PackedTime time) {
  Values values{};
  std::ranges::copy(UnpackTime(time).digits, values.begin() + kHoursTens);
  return TimeAsText(values);
}

std::string LampsAsText(const std::array<int, kDisplayElementCount>& values) {
  std::string lamps;
  for (const Word& lamp : kLampWords) {
    if (At(values, lamp.element) != 0) Append(lamps, lamp.text, ", ");
  }
  return lamps;
}

namespace {

std::string NumbersText(const Values& values) {
  std::string numbers;
  for (const Word& label : kLabelWords) {
    if (At(values, label.element) != 0) Append(numbers, label.text, " ");
  }
  Append(numbers, Digits(values, kFirstNumber, 3), " ");
  if (At(values, kOfLabel) != 0) Append(numbers, "OF", " ");
  Append(numbers, Digits(values, kSecondNumber, 3), " ");
  return numbers;
}

}  // namespace

KeyText SplitToolTip(std::string_view toolTip) {
  const std::size_t open = toolTip.rfind(" (");
  if (open == std::string_view::npos || !toolTip.ends_with(')')) return {std::string(toolTip), ""};
  return {std::string(toolTip.substr(0, open)),
          std::string(toolTip.substr(open + 2, toolTip.size() - open - 3))};
}

std::string DisplayAsText(const Values& values, std::string_view textLine) {
  std::string text = TimeAsText(values);
  Append(text, NumbersText(values), ", ");
  Append(text, LampsAsText(values), ", ");
  Append(text, std::string(textLine), ", ");
  return text;
}

}  // namespace quorvex
