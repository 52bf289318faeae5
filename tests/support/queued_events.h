// A graph's events as a test queues them.
#pragma once

#include <windows.h>

#include <control.h>

#include <deque>

#include "panel/main_window.h"
#include "tests/support/com_fake.h"

namespace quorvex {

struct FakeEvent {
  long code;
  LONG_PTR first;
  LONG_PTR second = 0;
};

struct EventQueue {
  std::deque<FakeEvent> events;
  int unfreedEvents = 0;
};

class QueuedEvents : public NoDispatch<IMediaEventEx> {
 public:
  // Outlives the graph.
  virtual EventQueue& Queue() = 0;

  STDMETHODIMP GetEvent(long* code, LONG_PTR* first, LONG_PTR* second, long limit) override {
    EXPECT_EQ(limit, 0);
    EventQueue& queue = Queue();
    if (queue.events.empty()) return E_ABORT;
    *code = queue.events.front().code;
    *first = queue.events.front().first;
    *second = queue.events.front().second;
    queue.events.pop_front();
    ++queue.unfreedEvents;
    return S_OK;
  }
  STDMETHODIMP FreeEventParams(long, LONG_PTR, LONG_PTR) override {
    --Queue().unfreedEvents;
    return S_OK;
  }
  QUORVEX_UNEXPECTED(GetEventHandle, OAEVENT*)
  QUORVEX_UNEXPECTED(WaitForCompletion, long, long*)
  QUORVEX_UNEXPECTED(CancelDefaultHandling, long)
  QUORVEX_UNEXPECTED(RestoreDefaultHandling, long)
  QUORVEX_UNEXPECTED(SetNotifyFlags, long)
  QUORVEX_UNEXPECTED(GetNotifyFlags, long*)
};

}  // namespace quorvex
