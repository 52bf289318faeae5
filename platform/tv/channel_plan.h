// Which channels a country has on its antenna and cable, and the frequencies they are on.
#pragma once

#include <optional>

namespace quorvex {

enum class TunerInput { kCable = 0, kAntenna = 1 };  // the platform's numbers

struct ChannelRange {
  int lowest = 0;
  int highest = 0;
  friend bool operator==(const ChannelRange&, const ChannelRange&) = default;
};

constexpr int kUnitedStates = 1;  // countries have the numbers that one dials for them

// Whether a country's channels are known.
bool HasChannelPlan(int country);

// The numbers that a tuner takes there; not every number between them is a channel. The United States' for a
// country that is not known.
ChannelRange ChannelsOf(int country, TunerInput input);

struct Carriers {
  long video = 0;  // Hz
  long audio = 0;
};

// None for a number that is no channel there.
std::optional<Carriers> CarriersOf(int country, TunerInput input, int channel);

}  // namespace quorvex
