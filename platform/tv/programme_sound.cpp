#include "platform/tv/programme_sound.h"

#include <cmath>
#include <numbers>

namespace quorvex {
namespace {

constexpr double kLoudness = 4000;
constexpr double kNoise = 2000;

// A generator's bits for a sample's number.
double NoiseAt(std::int64_t at) {
  auto bits = static_cast<std::uint32_t>(at) * 2654435761U;
  bits = (bits ^ bits >> 15) * 2246822519U;
  return static_cast<double>(bits >> 16) / 32768.0 - 1.0;
}

}  // namespace

int ToneOf(const Scene& scene) { return scene.input == 0 ? 200 + 20 * scene.channel : 100 + 25 * scene.input; }

void FillProgrammeSound(const Scene& scene, std::int64_t at, std::span<std::int16_t> samples) {
  const std::int64_t tone = ToneOf(scene);
  for (std::size_t i = 0; i + 1 < samples.size(); i += 2, ++at) {
    // A whole number of waves in a second: the phase needs the place in the second only.
    const double phase = static_cast<double>(tone * (at % kProgrammeRate) % kProgrammeRate) / kProgrammeRate;
    const double value =
        scene.signal ? kLoudness * std::sin(2 * std::numbers::pi * phase) : kNoise * NoiseAt(at);
    samples[i] = samples[i + 1] = static_cast<std::int16_t>(std::lround(value));
  }
}

}  // namespace quorvex
