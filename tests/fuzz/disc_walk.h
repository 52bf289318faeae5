// Damages a disc and plays it, as bytes say: what the fuzzer varies. Whatever they say, it comes back.
#pragma once

#include <cstdint>
#include <span>

#include "tests/fuzz/mutable_disc.h"

namespace quorvex {

struct WalkResult {
  bool opened = false;
  int sectors = 0;  // that were played
};

// The bytes are orders, first to the damage, then of what the user wishes: see ObeyOne and Do. The disc is
// whole again afterwards.
WalkResult WalkDisc(MutableDisc& disc, std::span<const std::uint8_t> orders);

}  // namespace quorvex
