// The memory of the virtual capture cards: which are plugged in, what the TV card is tuned to, and what tests
// order to go wrong. All processes share one such record; its values do not depend on each other, so nobody
// takes turns.
#pragma once

#include <atomic>
#include <cstdint>

#include "platform/tv/channel_plan.h"

namespace quorvex {

// The cards there are; a bit of `plugged` for each.
enum class CardKind : std::uint32_t {
  kTv = 1,       // a tuner and two video inputs
  kCamera = 2,   // no tuner
  kCapture = 4,  // no tuner, no preview pin
};

// What became of a stream's pictures since it began.
struct StreamCounts {
  std::atomic<std::uint32_t> delivered = 0;
  std::atomic<std::uint32_t> lost = 0;
};

struct CardState {
  static constexpr std::uint32_t kVersion = 3;
  using Value = std::atomic<std::uint32_t>;

  Value version = kVersion;
  Value plugged = 0;

  // The TV card's tuner and crossbar.
  Value country = kUnitedStates;
  Value antenna = 1;
  Value channel = 4;
  Value routed = 1;  // the crossbar's input that goes to the picture

  // Of the streams that began last.
  StreamCounts preview;
  StreamCounts capture;

  // For tests.
  Value refuseFormat = 0;  // SetFormat fails
  Value formatFault = 0;   // what GetFormat does: 1 fails, 2 tells another kind of format, 3 tells 0 x 0
  Value refuseInput = 0;   // put_InputType fails
  Value refuseRoute = 0;   // Route fails
  Value noCrossbar = 0;    // of cards that are made from now on
  Value noCaptions = 0;    // no VBI pins, of cards that are made from now on
  Value slowFrames = 0;    // milliseconds that every picture takes longer
  Value slowTuner = 0;     // milliseconds that a change of channel takes

  [[nodiscard]] bool IsPlugged(CardKind card) const {
    return (plugged & static_cast<std::uint32_t>(card)) != 0;
  }
  [[nodiscard]] TunerInput Input() const { return antenna != 0 ? TunerInput::kAntenna : TunerInput::kCable; }
};
static_assert(CardState::Value::is_always_lock_free);

}  // namespace quorvex
