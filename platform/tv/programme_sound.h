// The sound of the virtual card's programmes: each channel and input has a tone of its own, noise without a
// signal.
#pragma once

#include <cstdint>

#include "platform/tv/scene.h"

namespace quorvex {

// Hz
int ToneOf(const Scene& scene);

// Sample number `at` of the programme, at this many samples a second; the same for both ears.
std::int16_t ProgrammeSample(const Scene& scene, int rate, std::int64_t at);

}  // namespace quorvex
