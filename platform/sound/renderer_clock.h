// The sound renderer's reference clock: the performance counter, put right little by little by what is heard.
// It never jumps and never goes back.
#pragma once

#include <windows.h>

#include <strmif.h>

#include <atomic>
#include <mutex>
#include <thread>
#include <vector>

#include "base/handles.h"
#include "platform/common/filter_part.h"
#include "platform/common/media_time.h"

namespace quorvex {

class RendererClock final : public FilterPart<IReferenceClock> {
 public:
  explicit RendererClock(FilterBase& owner)
      : FilterPart(owner), changed(::CreateEventW(nullptr, FALSE, FALSE, nullptr)) {}
  // Ends the thread, which must not be the caller's.
  ~RendererClock();

  HRESULT STDMETHODCALLTYPE GetTime(REFERENCE_TIME* time) override;
  HRESULT STDMETHODCALLTYPE AdviseTime(REFERENCE_TIME base, REFERENCE_TIME stream, HEVENT event,
                                       DWORD_PTR* cookie) override;
  HRESULT STDMETHODCALLTYPE AdvisePeriodic(REFERENCE_TIME start, REFERENCE_TIME period, HSEMAPHORE semaphore,
                                           DWORD_PTR* cookie) override;
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD_PTR cookie) override;

  // What is heard now is this much before its time (negative: behind): the clock goes a little faster or
  // slower. To be told some fifty times a second; it then moves by at most a hundredth.
  void Correct(MediaTime earliness);

 private:
  // Somebody who waits for a time.
  struct Advise {
    DWORD_PTR cookie;
    MediaTime due;
    MediaTime period;  // 0: once, and `handle` is an event; else a semaphore
    HANDLE handle;
  };

  MediaTime Now();
  HRESULT Add(MediaTime due, MediaTime period, HANDLE handle, DWORD_PTR* cookie);
  void Work();
  DWORD SignalDue();

  std::atomic<MediaTime> offset{0};  // to the performance counter
  std::atomic<MediaTime> latest{0};  // what was told
  UniqueHandle changed;
  std::mutex lock;  // guards what follows
  std::vector<Advise> advises;
  DWORD_PTR lastCookie = 0;
  bool closing = false;
  std::thread thread;
};

}  // namespace quorvex
