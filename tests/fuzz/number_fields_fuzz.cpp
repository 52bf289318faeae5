// What is typed into the fields of sizes, rates and limits, and rates and limits on their way through the
// settings.
#include <cmath>

#include "base/text.h"
#include "devices/tv/capture_size.h"
#include "devices/tv/frame_rate.h"
#include "setup/capture_entries.h"
#include "tests/fuzz/fuzz_target.h"

namespace quorvex {
namespace {

constexpr std::int64_t kMostFrameTime = 2147483647;
constexpr int kManySteps = 100000;

void CheckSize(std::string_view text, int largest) {
  const std::string corrected = CorrectedSize(text, largest);
  Require(!corrected.empty() && corrected.find_first_not_of("0123456789") == std::string::npos,
          "a size is a number");
  Require(corrected.find_first_not_of('0') != std::string::npos, "a size is not 0");
  if (largest >= 1)
    Require(LeadingNumber(corrected) >= 1 && LeadingNumber(corrected) <= largest, "a size is possible");
  Require(CorrectedSize(corrected, largest) == corrected, "what is right stays");
}

void CheckRate(std::string_view text) {
  const double rate = NumberOfFrameRate(text);
  Require(std::isfinite(rate), "a rate is a number");
  if (rate > 0) {
    const std::int64_t time = FrameTimeOf(rate);
    Require(time >= 1 && time <= kMostFrameTime, "a frame has a time that can be stored");
    Require(FrameRateOf(static_cast<std::int32_t>(time)) > 0, "a stored time is a rate");
  }
  for (const int steps : {1, -1, kManySteps, -kManySteps}) {
    const double stepped = NumberOfFrameRate(SteppedFrameRate(text, steps));
    Require(std::isfinite(stepped) && stepped >= 1, "steps lead to a rate");
  }
}

void CheckLimit(std::string_view text) {
  const std::uint32_t limit = NumberOfTimeLimit(text);
  for (const int steps : {1, -1, kManySteps, -kManySteps}) {
    const std::int64_t stepped = NumberOfTimeLimit(SteppedTimeLimit(text, steps));
    const std::int64_t wished = std::int64_t{limit} + steps;
    Require(stepped == std::clamp(wished, std::int64_t{0}, std::int64_t{0xFFFFFFFF}), "a step is a second");
  }
}

void CheckSettings(std::string_view text) {
  CaptureSettings settings;
  const CaptureEntries entries{
      .frameRate = std::string(text), .timeLimit = std::string(text), .timeLimitOn = true};
  if (!TakeCaptureEntries(entries, settings)) return;
  IniDocument store("");
  WriteCaptureSettings(store, settings);
  const CaptureSettings read = ReadCaptureSettings(IniDocument(store.Text()));
  Require(read.timeLimitSeconds == settings.timeLimitSeconds && read.timeLimitOn == settings.timeLimitOn,
          "a stored limit is read again");
  // Stored with the time of a frame, shown with two decimals.
  const auto time = static_cast<std::int32_t>(FrameTimeOf(settings.frameRate));
  Require(read.frameRate == FrameRateOf(time), "a stored rate is read again");
}

void Try(std::string_view text) {
  for (const int largest : {0, 1, 700, kLargestCaptureMegabytes}) CheckSize(text, largest);
  CheckRate(text);
  CheckLimit(text);
  CheckSettings(text);
}

}  // namespace
}  // namespace quorvex

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  quorvex::Try(quorvex::TextOf(bytes, size));
  return 0;
}
