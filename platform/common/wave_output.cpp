#include "platform/common/wave_output.h"

#include <algorithm>

#include "platform/common/counter_time.h"

namespace quorvex {

WAVEFORMATEX PlatformFormat(const WaveFormat& format) {
  WAVEFORMATEX wave{};
  wave.wFormatTag = WAVE_FORMAT_PCM;
  wave.nChannels = static_cast<WORD>(format.channels);
  wave.nSamplesPerSec = static_cast<DWORD>(format.rate);
  wave.wBitsPerSample = static_cast<WORD>(format.bits);
  wave.nBlockAlign = static_cast<WORD>(format.FrameBytes());
  wave.nAvgBytesPerSec = wave.nSamplesPerSec * wave.nBlockAlign;
  return wave;
}

WaveOutput::WaveOutput(const WaveFormat& played, std::size_t bufferBytes, std::size_t bufferCount)
    : format(played), event(::CreateEventW(nullptr, FALSE, FALSE, nullptr)), buffers(bufferCount) {
  const WAVEFORMATEX wave = PlatformFormat(format);
  const auto wake = reinterpret_cast<DWORD_PTR>(event.Get());
  if (::waveOutOpen(&device, WAVE_MAPPER, &wave, wake, 0, CALLBACK_EVENT) != MMSYSERR_NOERROR)
    device = nullptr;
  for (Buffer& buffer : buffers) {
    buffer.sound.resize(bufferBytes);
    buffer.header.lpData = reinterpret_cast<LPSTR>(buffer.sound.data());
    buffer.header.dwBufferLength = static_cast<DWORD>(bufferBytes);
    if (IsOpen()) ::waveOutPrepareHeader(device, &buffer.header, sizeof buffer.header);
  }
}

WaveOutput::~WaveOutput() {
  if (!IsOpen()) return;
  ::waveOutReset(device);
  for (Buffer& buffer : buffers) ::waveOutUnprepareHeader(device, &buffer.header, sizeof buffer.header);
  ::waveOutClose(device);
}

bool WaveOutput::Feed(const std::function<int(std::span<std::byte>)>& fill) {
  for (Buffer& buffer : buffers) {
    if (IsQueued(buffer)) continue;
    const int bytes = fill(buffer.sound);
    if (bytes <= 0) return bytes == 0;
    const std::int64_t frames = bytes / format.FrameBytes();
    buffer.header.dwBufferLength = static_cast<DWORD>(bytes);
    if (!IsOpen()) {
      FeedNobody(frames);
    } else if (::waveOutWrite(device, &buffer.header, sizeof buffer.header) != MMSYSERR_NOERROR) {
      return false;
    }
    framesFed += frames;
    buffer.end = framesFed;
  }
  return true;
}

// What was played to its end does not go on by itself.
void WaveOutput::FeedNobody(std::int64_t frames) {
  if (frames > 0 && PlayedToNobody() == framesFed)
    silentSince = CounterTime() - framesFed * kSecond / format.rate;
}

std::int64_t WaveOutput::PlayedToNobody() const {
  return std::min(framesFed, (CounterTime() - silentSince) * format.rate / kSecond);
}

bool WaveOutput::IsQueued(const Buffer& buffer) {
  return IsOpen() ? (buffer.header.dwFlags & WHDR_INQUEUE) != 0 : buffer.end > PlayedToNobody();
}

bool WaveOutput::IsDrained() {
  return std::none_of(buffers.begin(), buffers.end(),
                      [this](const Buffer& buffer) { return IsQueued(buffer); });
}

void WaveOutput::Reset() {
  if (IsOpen()) ::waveOutReset(device);
  for (Buffer& buffer : buffers) buffer.end = 0;
  framesFed = framesPlayed = silentSince = 0;
}

std::int64_t WaveOutput::FramesPlayed() {
  if (!IsOpen()) return PlayedToNobody();
  MMTIME time{};
  time.wType = TIME_SAMPLES;
  if (::waveOutGetPosition(device, &time, sizeof time) != MMSYSERR_NOERROR || time.wType != TIME_SAMPLES)
    return framesPlayed;
  // The device counts in 32 bits.
  const std::int64_t waiting = static_cast<std::uint32_t>(framesFed) - time.u.sample;
  if (waiting <= framesFed - framesPlayed) framesPlayed = framesFed - waiting;
  return framesPlayed;
}

}  // namespace quorvex
