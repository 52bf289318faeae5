#include "platform/tv/live_pin.h"

#include <algorithm>

#include "platform/common/com_thread.h"
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
    const bool runs = filter.State() == State_Running;
    const MediaTime time = filter.Now();
    if (runs && time >= due) {
      now = time;
      return true;
    }
    Idle(runs ? std::min(microseconds((due - time) / 10), kLongestWait) : kGlance);
  }
}

MediaTime LivePin::AirTimeOf(MediaTime streamTime) { return AirTime() + streamTime - filter.Now(); }

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
