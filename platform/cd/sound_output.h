// CD sound to the machine's speakers.
#pragma once

#include <windows.h>

#include <mmsystem.h>

#include <array>
#include <cstddef>
#include <functional>
#include <span>
#include <vector>

#include "base/handles.h"
#include "platform/cd/disc_plan.h"

namespace quorvex {

class SoundOutput {
 public:
  SoundOutput();
  SoundOutput(const SoundOutput&) = delete;
  SoundOutput& operator=(const SoundOutput&) = delete;
  ~SoundOutput();

  // Whether there is a sound device to play on.
  [[nodiscard]] bool IsOpen() const { return device != nullptr; }

  // Fills every buffer that is free: `fill` puts sectors into one and answers how many bytes (0 at the end of
  // what there is to play, negative on a failure, which is answered as false).
  bool Feed(const std::function<int(std::span<std::byte>)>& fill);

  // Waits until a buffer becomes free, at most so long.
  void Wait(DWORD milliseconds) { ::WaitForSingleObject(event.Get(), milliseconds); }

  // Whether everything that was fed has been played.
  [[nodiscard]] bool IsDrained() const;

  // Frames (sectors) heard since the start. A device that claims to have played what it was never given (some
  // do for a moment while they start) is not believed: the last credible answer stands.
  [[nodiscard]] int FramesHeard();

 private:
  // A tenth of a second a buffer: a stalled machine has most of a second before the sound breaks, and a pause
  // is still prompt, for it discards what is waiting.
  static constexpr std::size_t kBufferBytes = std::size_t{8} * kAudioSectorBytes;
  struct Buffer {
    std::vector<std::byte> sound = std::vector<std::byte>(kBufferBytes);
    WAVEHDR header{};
  };

  UniqueHandle event;
  HWAVEOUT device = nullptr;
  std::array<Buffer, 8> buffers;
  DWORD bytesFed = 0;
  int framesHeard = 0;
};

}  // namespace quorvex
