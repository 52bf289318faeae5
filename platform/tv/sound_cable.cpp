#include "platform/tv/sound_cable.h"

#include <cstring>

#include "platform/common/wave_output.h"
#include "platform/tv/programme_sound.h"

namespace quorvex {
namespace {

constexpr WaveFormat kFormat{};
// Short, so that another channel is heard at once: a tenth of a second in all.
constexpr std::size_t kBufferFrames = 1100;
constexpr std::size_t kBuffers = 4;
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
  std::int64_t at = 0;
  const auto fill = [&](std::span<std::byte> buffer) {
    const Scene scene = reception.Now();
    for (std::size_t byte = 0; byte < buffer.size(); byte += 4, ++at) {
      const std::int16_t sample = ProgrammeSample(scene, kFormat.rate, at);
      for (std::size_t ear = 0; ear < 2; ++ear) std::memcpy(&buffer[byte + 2 * ear], &sample, sizeof sample);
    }
    return static_cast<int>(buffer.size());
  };
  while (!ending) {
    if (filter.StreamTime() && !output.Feed(fill)) return;
    output.Wait(kGlanceMs);
  }
}

}  // namespace quorvex
