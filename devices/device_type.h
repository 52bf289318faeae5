// What the panel knows about the kinds and states of devices, as numbers that settings and lamps share.
#pragma once

#include <cstdint>

namespace quorvex {

enum class DeviceType : std::int32_t { kNone = 0, kTv = 1, kDvd = 2, kCd = 3, kFile = 4 };
// A DVD that has never played has none of the states that are shown.
enum class PlayState : std::uint32_t { kNone = 0, kStopped = 1, kPaused = 2, kPlaying = 3 };
enum class RepeatMode : std::uint32_t { kOff = 0, kOne = 1, kAll = 2 };

// Off, one, all, off.
constexpr RepeatMode NextRepeatMode(RepeatMode mode) {
  return mode == RepeatMode::kAll ? RepeatMode::kOff
                                  : static_cast<RepeatMode>(static_cast<std::uint32_t>(mode) + 1);
}

}  // namespace quorvex
