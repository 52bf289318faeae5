#include "platform/tv/sound_cable.h"

#include <cstring>
#include <vector>

#include "platform/common/wave_output.h"
#include "platform/tv/scene_sound.h"

namespace quorvex {
namespace {

constexpr WaveFormat kFormat{};
// Short, so that another channel is heard at once: a tenth of a second in all.
constexpr std::size_t kBufferFrames = 1100;
constexpr std::size_t kBuffers = 4;
// What lies before a buffer when it is filled.
constexpr MediaTime kUntilHeard = Rescale(kBufferFrames * (kBuffers - 1), kSecond, kFormat.rate);
constexpr DWORD kGlanceMs = 20;

}  // namespace

void SoundCable::Begin() {
  ending = false;
  thread = std::thread([this] { Work(); });
}

void SoundCable::End() {
  if (!thread.joinable()) return;
  ending = true;
  thread.join();
}

void SoundCable::Work() {
  WaveOutput output(kFormat, kBufferFrames * static_cast<std::size_t>(kFormat.FrameBytes()), kBuffers);
  SceneSound sound(kFormat.rate);
  std::vector<std::int16_t> samples;
  std::int64_t at = 0;
  const auto fill = [&](std::span<std::byte> buffer) {
    samples.resize(buffer.size() / sizeof(std::int16_t));
    sound.Fill(reception.Now(), at, AirTime() + kUntilHeard, samples);
    at += static_cast<std::int64_t>(samples.size()) / kSoundChannels;
    std::memcpy(buffer.data(), samples.data(), buffer.size());
    return static_cast<int>(buffer.size());
  };
  while (!ending) {
    if (filter.State() == State_Running && !output.Feed(fill)) return;
    output.Wait(kGlanceMs);
  }
}

}  // namespace quorvex
