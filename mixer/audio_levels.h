// What the sound keys do to the values of volume, balance and tone. All of them go from 0 to 65535; one step
// is a segment of the level bar, which has 31.
#pragma once

#include <cstdint>

namespace quorvex {

inline constexpr std::uint32_t kFullLevel = 65535;
inline constexpr std::uint32_t kLevelStep = 2114;
inline constexpr std::uint32_t kCentredBalance = 32768;

enum class AudioOperation {
  kVolumeUp,
  kVolumeDown,
  kBalanceLeft,
  kBalanceRight,
  kReadVolume,
  kReadBalance,
  kReadBass,
  kBassUp,
  kBassDown,
  kReadTreble,
  kTrebleUp,
  kTrebleDown,
};

// The volumes of the speakers.
struct Channels {
  std::uint32_t left = 0;
  std::uint32_t right = 0;
  friend bool operator==(const Channels&, const Channels&) = default;
};

// What an operation makes of the value that it is for, which stays within its range; reading changes nothing.
std::uint32_t Adjusted(AudioOperation operation, std::uint32_t value);

// Where the sound stands: below the centre the right channel is the weaker one, above it the left. Silence
// has no balance of its own and keeps the `remembered` one.
std::uint32_t BalanceOf(Channels channels, std::uint32_t remembered);

// The channels of a volume (that of the stronger one) and a balance.
Channels ChannelsOf(std::uint32_t volume, std::uint32_t balance);

}  // namespace quorvex
