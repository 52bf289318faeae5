// What the user has entered on the Capture page, and what it means for the options of recording.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "devices/tv/tv_settings.h"

namespace quorvex {

struct CaptureEntries {
  bool promptToSave = false;
  bool audio = false;
  std::string frameRate;
  bool useFrameRate = false;
  std::string timeLimit;
  bool timeLimitOn = false;
  int masterStream = -1;  // -1 none, 0 video, 1 sound
};

// Takes the entries over into the options, in their order. False when the frame rate is none: those before it
// are taken, it and those after it are not.
bool TakeCaptureEntries(const CaptureEntries& entries, CaptureSettings& settings);

// The decimal number that a text begins with, of its first 31 characters; 0 when it begins with none.
double NumberOfFrameRate(std::string_view text);

// The whole number that a text begins with; 0 when it begins with none, or with one of more than 32 bits.
std::uint32_t NumberOfTimeLimit(std::string_view text);

// A rate with six decimals, as the page shows it.
std::string FrameRateText(double framesPerSecond);

// The texts after some steps of one up (below 0: down); at the least a rate of 1, a limit of 0.
std::string SteppedFrameRate(std::string_view text, int steps);
std::string SteppedTimeLimit(std::string_view text, int steps);

}  // namespace quorvex
