#include "platform/tv/scene_sound.h"

#include <algorithm>

#include "platform/tv/programme_sound.h"

namespace quorvex {

void SceneSound::Fill(const Scene& scene, std::int64_t at, MediaTime air, std::span<std::int16_t> samples) {
  if (!scene.file.empty()) {
    station.Fill(scene.file, air, samples);
    return;
  }
  for (; !samples.empty(); samples = samples.subspan(kSoundChannels), ++at)
    std::fill_n(samples.begin(), kSoundChannels, ProgrammeSample(scene, rate, at));
}

}  // namespace quorvex
