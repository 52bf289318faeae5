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

int ToneOf(const Scene& scene) {
  return scene.input == 0 ? 200 + 20 * scene.channel : 100 + 25 * scene.input;
}

// A tone is a whole number of waves in a second: its phase needs the place in the second only.
std::int16_t ProgrammeSample(const Scene& scene, int rate, std::int64_t at) {
  if (!scene.signal) return static_cast<std::int16_t>(std::lround(kNoise * NoiseAt(at)));
  const double phase = static_cast<double>(std::int64_t{ToneOf(scene)} * (at % rate) % rate) / rate;
  return static_cast<std::int16_t>(std::lround(kLoudness * std::sin(2 * std::numbers::pi * phase)));
}

}  // namespace quorvex
