#include "platform/sound/renderer_clock.h"

#include <algorithm>

#include "platform/common/counter_time.h"

namespace quorvex {
namespace {

constexpr MediaTime kLargestStep = kMillisecond / 5;
constexpr int kSmoothing =
    32;  // a correction is this part of the error, for one look at the device is coarse

void Signal(HANDLE handle, bool isSemaphore) {
  if (isSemaphore) {
    ::ReleaseSemaphore(handle, 1, nullptr);
  } else {
    ::SetEvent(handle);
  }
}

}  // namespace

RendererClock::~RendererClock() {
  if (!thread.joinable()) return;
  {
    const std::scoped_lock guard(lock);
    closing = true;
  }
  ::SetEvent(changed.Get());
  thread.join();
}

MediaTime RendererClock::Now() {
  const MediaTime now = CounterTime() + offset;
  MediaTime told = latest;
  while (told < now && !latest.compare_exchange_weak(told, now)) {
  }
  return std::max(told, now);
}

void RendererClock::Correct(MediaTime earliness) {
  offset += std::clamp(earliness / kSmoothing, -kLargestStep, kLargestStep);
}

HRESULT RendererClock::GetTime(REFERENCE_TIME* time) {
  if (time == nullptr) return E_POINTER;
  *time = Now();
  return S_OK;
}

HRESULT RendererClock::AdviseTime(REFERENCE_TIME base, REFERENCE_TIME stream, HEVENT event,
                                  DWORD_PTR* cookie) {
  return Add(base + stream, 0, reinterpret_cast<HANDLE>(event), cookie);
}

HRESULT RendererClock::AdvisePeriodic(REFERENCE_TIME start, REFERENCE_TIME period, HSEMAPHORE semaphore,
                                      DWORD_PTR* cookie) {
  return period > 0 ? Add(start, period, reinterpret_cast<HANDLE>(semaphore), cookie) : E_INVALIDARG;
}

HRESULT RendererClock::Add(MediaTime due, MediaTime period, HANDLE handle, DWORD_PTR* cookie) {
  if (cookie == nullptr) return E_POINTER;
  if (due <= 0 || handle == nullptr) return E_INVALIDARG;
  const std::scoped_lock guard(lock);
  *cookie = ++lastCookie;
  advises.push_back({*cookie, due, period, handle});
  if (!thread.joinable()) thread = std::thread([this] { Work(); });
  ::SetEvent(changed.Get());
  return S_OK;
}

HRESULT RendererClock::Unadvise(DWORD_PTR cookie) {
  const std::scoped_lock guard(lock);
  return std::erase_if(advises, [cookie](const Advise& advise) { return advise.cookie == cookie; }) > 0
             ? S_OK
             : S_FALSE;
}

void RendererClock::Work() {
  for (;;) {
    DWORD waitMs = 0;
    {
      const std::scoped_lock guard(lock);
      if (closing) return;
      waitMs = SignalDue();
    }
    ::WaitForSingleObject(changed.Get(), waitMs);
  }
}

// Signals those whose time has come; answers for how long nobody else's comes.
DWORD RendererClock::SignalDue() {
  const MediaTime now = Now();
  for (Advise& advise : advises) {
    if (advise.due > now) continue;
    Signal(advise.handle, advise.period > 0);
    advise.due = advise.period > 0 ? advise.due + advise.period : kForever;
  }
  std::erase_if(advises, [](const Advise& advise) { return advise.due == kForever; });
  const auto first = std::min_element(advises.begin(), advises.end(),
                                      [](const Advise& a, const Advise& b) { return a.due < b.due; });
  if (first == advises.end()) return INFINITE;
  constexpr MediaTime kLongest = 1000 * kMillisecond;  // for the clock may be put right meanwhile
  const MediaTime left = std::clamp<MediaTime>(first->due - now, 0, kLongest);
  return static_cast<DWORD>((left + kMillisecond - 1) / kMillisecond);
}

}  // namespace quorvex
