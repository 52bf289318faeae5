#include "platform/cd/sound_output.h"

#include <algorithm>

namespace quorvex {

SoundOutput::SoundOutput() : event(::CreateEventW(nullptr, FALSE, FALSE, nullptr)) {
  WAVEFORMATEX format{};
  format.wFormatTag = WAVE_FORMAT_PCM;
  format.nChannels = 2;
  format.nSamplesPerSec = 44100;
  format.wBitsPerSample = 16;
  format.nBlockAlign = 4;
  format.nAvgBytesPerSec = format.nSamplesPerSec * format.nBlockAlign;
  const auto wake = reinterpret_cast<DWORD_PTR>(event.Get());
  if (::waveOutOpen(&device, WAVE_MAPPER, &format, wake, 0, CALLBACK_EVENT) != MMSYSERR_NOERROR)
    device = nullptr;
  for (Buffer& buffer : buffers) {
    buffer.header.lpData = reinterpret_cast<LPSTR>(buffer.sound.data());
    buffer.header.dwBufferLength = kBufferBytes;
    if (IsOpen()) ::waveOutPrepareHeader(device, &buffer.header, sizeof buffer.header);
  }
}

SoundOutput::~SoundOutput() {
  if (!IsOpen()) return;
  ::waveOutReset(device);
  for (Buffer& buffer : buffers) ::waveOutUnprepareHeader(device, &buffer.header, sizeof buffer.header);
  ::waveOutClose(device);
}

bool SoundOutput::Feed(const std::function<int(std::span<std::byte>)>& fill) {
  for (Buffer& buffer : buffers) {
    if ((buffer.header.dwFlags & WHDR_INQUEUE) != 0) continue;
    const int bytes = fill(buffer.sound);
    if (bytes <= 0) return bytes == 0;
    buffer.header.dwBufferLength = static_cast<DWORD>(bytes);
    if (::waveOutWrite(device, &buffer.header, sizeof buffer.header) != MMSYSERR_NOERROR) return false;
    bytesFed += buffer.header.dwBufferLength;
  }
  return true;
}

bool SoundOutput::IsDrained() const {
  return std::none_of(buffers.begin(), buffers.end(),
                      [](const Buffer& buffer) { return (buffer.header.dwFlags & WHDR_INQUEUE) != 0; });
}

int SoundOutput::FramesHeard() {
  MMTIME time{};
  time.wType = TIME_BYTES;
  const bool told =
      ::waveOutGetPosition(device, &time, sizeof time) == MMSYSERR_NOERROR && time.wType == TIME_BYTES;
  if (told && time.u.cb <= bytesFed) framesHeard = static_cast<int>(time.u.cb / kAudioSectorBytes);
  return framesHeard;
}

}  // namespace quorvex
