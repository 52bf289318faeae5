// Sound to the machine's speakers, through waveOut. Where there is no device to play on, it is played to
// nobody, in the same time.
#pragma once

#include <windows.h>

#include <mmsystem.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "base/handles.h"
#include "platform/common/media_time.h"
#include "platform/common/wave_format.h"

namespace quorvex {

// A format in the platform's words.
WAVEFORMATEX PlatformFormat(const WaveFormat& format);

class WaveOutput {
 public:
  // Opens the device. Opening and closing are best done on a thread that the process waits for: one that ends
  // in the middle of it hangs in Wine's sound system.
  WaveOutput(const WaveFormat& played, std::size_t bufferBytes, std::size_t bufferCount);
  WaveOutput(const WaveOutput&) = delete;
  WaveOutput& operator=(const WaveOutput&) = delete;
  ~WaveOutput();

  // Whether there is a sound device to play on.
  [[nodiscard]] bool IsOpen() const { return device != nullptr; }

  [[nodiscard]] const WaveFormat& Format() const { return format; }

  // Fills every buffer that is free: `fill` puts whole frames into one and answers how many bytes (0 when
  // there is nothing to play now, negative on a failure, which is answered as false).
  bool Feed(const std::function<int(std::span<std::byte>)>& fill);

  // Waits until a buffer becomes free or somebody wakes it, at most so long.
  void Wait(DWORD milliseconds) { ::WaitForSingleObject(event.Get(), milliseconds); }
  void Wake() { ::SetEvent(event.Get()); }

  // Whether everything that was fed has been played.
  [[nodiscard]] bool IsDrained();

  // Throws away what was not played, and counts from 0 again.
  void Reset();

  // Frames fed and played since the start or the last Reset. A device that claims to have played what it was
  // never given (some do for a moment while they start) is not believed: the last credible answer stands.
  [[nodiscard]] std::int64_t FramesFed() const { return framesFed; }
  [[nodiscard]] std::int64_t FramesPlayed();

 private:
  struct Buffer {
    std::vector<std::byte> sound;
    WAVEHDR header{};
    std::int64_t end = 0;  // the frame behind it
  };

  [[nodiscard]] bool IsQueued(const Buffer& buffer);
  void FeedNobody(std::int64_t frames);
  [[nodiscard]] std::int64_t PlayedToNobody() const;

  const WaveFormat format;
  UniqueHandle event;
  HWAVEOUT device = nullptr;
  std::vector<Buffer> buffers;
  std::int64_t framesFed = 0;
  std::int64_t framesPlayed = 0;
  MediaTime silentSince = 0;  // without a device: the time at which frame 0 began
};

}  // namespace quorvex
