// The sound of the virtual card's programmes: each channel and input has a tone of its own, noise without a
// signal.
#pragma once

#include <cstdint>
#include <span>

#include "platform/tv/scene.h"

namespace quorvex {

constexpr int kProgrammeRate = 44100;  // samples a second, two channels

// Hz
int ToneOf(const Scene& scene);

// Fills interleaved samples of both channels; the first is sample number `at` of the programme.
void FillProgrammeSound(const Scene& scene, std::int64_t at, std::span<std::int16_t> samples);

}  // namespace quorvex
