#include "setup/capture_entries.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "base/text.h"

namespace quorvex {
namespace {

constexpr std::size_t kLongestFrameRate = 31;

// The text behind blanks and a plus sign, which numbers may have before them.
std::string_view Digits(std::string_view text) {
  text = Trimmed(text);
  if (text.starts_with('+')) text.remove_prefix(1);
  return text;
}

bool BeginsNumber(std::string_view digits) {
  if (digits.starts_with('-')) digits.remove_prefix(1);
  return digits.find_first_of("0123456789.") == 0;
}

}  // namespace

bool TakeCaptureEntries(const CaptureEntries& entries, CaptureSettings& settings) {
  settings.promptToSave = entries.promptToSave;
  settings.audio = entries.audio;
  const double frameRate = NumberOfFrameRate(entries.frameRate);
  if (!(frameRate > 0)) return false;
  settings.frameRate = frameRate;
  settings.useFrameRate = entries.useFrameRate;
  settings.timeLimitSeconds = NumberOfTimeLimit(entries.timeLimit);
  settings.timeLimitOn = entries.timeLimitOn && settings.timeLimitSeconds != 0;
  settings.masterStream = entries.masterStream;
  return true;
}

double NumberOfFrameRate(std::string_view text) {
  const std::string_view digits = Digits(FirstCharacters(text, kLongestFrameRate));
  if (!BeginsNumber(digits)) return 0;  // "inf" is no frame rate
  double number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::fixed);
  return number;
}

std::uint32_t NumberOfTimeLimit(std::string_view text) {
  const std::string_view digits = Digits(text);
  std::uint32_t number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return number;
}

std::string FrameRateText(double framesPerSecond) {
  std::array<char, 400> text{};  // the largest number has 309 digits before its point
  const auto end =
      std::to_chars(text.data(), text.data() + text.size(), framesPerSecond, std::chars_format::fixed, 6);
  return {text.data(), end.ptr};
}

std::string SteppedFrameRate(std::string_view text, int steps) {
  return FrameRateText(std::max(NumberOfFrameRate(text) + steps, 1.0));
}

std::string SteppedTimeLimit(std::string_view text, int steps) {
  constexpr std::int64_t kMost = std::numeric_limits<std::uint32_t>::max();
  return std::to_string(std::clamp(std::int64_t{NumberOfTimeLimit(text)} + steps, std::int64_t{0}, kMost));
}

}  // namespace quorvex
