#include "platform/tv/live_pin.h"

#include <algorithm>

#include "platform/common/com_thread.h"
#include "platform/common/wave_output.h"
#include "platform/tv/station_file.h"

namespace quorvex {
namespace {

using std::chrono::microseconds;

// How long a pin that does not run waits before it looks again.
constexpr microseconds kGlance{3000};
// The longest wait for a frame, so that a clock that jumps is seen.
constexpr microseconds kLongestWait{100000};

}  // namespace

void* LivePin::Find(REFIID iid) {
  if (iid == __uuidof(IKsPropertySet)) return static_cast<IKsPropertySet*>(&pinCategory);
  return OutputPin::Find(iid);
}

HRESULT LivePin::Begin() {
  if (!IsConnected()) return S_OK;
  const HRESULT result = Start();
  if (FAILED(result)) return result;
  ending = false;
  thread = std::thread([this] { Work(); });
  return S_OK;
}

void LivePin::End() {
  if (!thread.joinable()) return;
  Stop();
  {
    const std::scoped_lock guard(waitLock);
    ending = true;
  }
  waiting.notify_all();
  thread.join();
}

void LivePin::Idle(microseconds time) {
  std::unique_lock guard(waitLock);
  waiting.wait_for(guard, time, [this] { return ending; });
}

bool LivePin::WaitUntil(MediaTime due, MediaTime& now) {
  for (;;) {
    {
      const std::scoped_lock guard(waitLock);
      if (ending) return false;
    }
    const std::optional<MediaTime> time = TimeOfStream(due);
    if (time && *time >= due) {
      now = *time;
      return true;
    }
    Idle(time ? std::min(microseconds((due - *time) / 10), kLongestWait) : kGlance);
  }
}

std::optional<MediaTime> LivePin::TimeOfStream(MediaTime due) {
  std::optional<MediaTime> time = filter.StreamTime();
  if (time || filter.State() != State_Running) {
    clockless.reset();
  } else {
    if (!clockless) clockless = CounterTime() - due;
    time = CounterTime() - *clockless;
  }
  return time;
}

MediaTime LivePin::AirTimeOf(MediaTime streamTime) {
  return AirTime() + streamTime - filter.StreamTime().value_or(streamTime);
}

void LivePin::Work() {
  const ComThread inCom;
  FramePacer pacer;
  OnBegin();
  DeliverNewSegment(0, kForever);
  for (MediaTime now = 0; WaitUntil(pacer.Due(), now);) {
    const FramePacer::Frame frame = pacer.Take(MayLose() ? now : pacer.Due(), FrameTime());
    if (!device.IsThere()) continue;
    if (const std::uint32_t slowness = device.Slowness(); slowness > 0)
      Idle(std::chrono::milliseconds(slowness));
    Send(frame);
  }
}

}  // namespace quorvex
