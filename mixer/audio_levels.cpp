#include "mixer/audio_levels.h"

#include <algorithm>

namespace quorvex {
namespace {

// Balance keeps one step from its ends, so that neither channel is ever silent by it.
constexpr std::uint32_t kLeftmost = kLevelStep;
constexpr std::uint32_t kRightmost = kFullLevel - kLevelStep;

std::uint32_t Raised(std::uint32_t value, std::uint32_t highest) {
  return std::min(value + kLevelStep, highest);
}

std::uint32_t Lowered(std::uint32_t value, std::uint32_t lowest) {
  return std::max(value, lowest + kLevelStep) - kLevelStep;
}

}  // namespace

std::uint32_t Adjusted(AudioOperation operation, std::uint32_t value) {
  switch (operation) {
    case AudioOperation::kVolumeUp:
    case AudioOperation::kBassUp:
    case AudioOperation::kTrebleUp: return Raised(value, kFullLevel);
    case AudioOperation::kVolumeDown:
    case AudioOperation::kBassDown:
    case AudioOperation::kTrebleDown: return Lowered(value, 0);
    case AudioOperation::kBalanceLeft: return Lowered(value, kLeftmost);
    case AudioOperation::kBalanceRight: return Raised(value, kRightmost);
    default: return value;
  }
}

std::uint32_t BalanceOf(Channels channels, std::uint32_t remembered) {
  const auto [left, right] = channels;
  if (left < right) return kFullLevel - left * kCentredBalance / right;
  return left != 0 ? right * kCentredBalance / left : remembered;
}

Channels ChannelsOf(std::uint32_t volume, std::uint32_t balance) {
  if (balance < kCentredBalance) return {volume, volume * balance / (kCentredBalance - 1)};
  return {(kFullLevel - balance) * volume / kCentredBalance, volume};
}

}  // namespace quorvex
