// What is heard of a scene: the test programmes' tones, or the sound of the file that a station sends.
#pragma once

#include "platform/tv/scene.h"
#include "platform/tv/station_sound.h"

namespace quorvex {

class SceneSound {
 public:
  explicit SceneSound(int samplesPerSecond) : rate(samplesPerSecond), station(samplesPerSecond) {}

  // Fills whole samples (both channels); the first is number `at` of all that are asked for, and sounds at a
  // time of day (AirTime).
  void Fill(const Scene& scene, std::int64_t at, MediaTime air, std::span<std::int16_t> samples);

 private:
  const int rate;
  StationSound station;
};

}  // namespace quorvex
