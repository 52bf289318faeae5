// The ground of the platform layer's filters: state, clock, graph, name and pins. A filter says which pins it
// has and what it does when its state changes.
#pragma once

#include <strmif.h>

#include <atomic>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "base/com_ptr.h"
#include "platform/common/com_object.h"

namespace quorvex {

class FilterBase : public ComObject<IBaseFilter> {
 public:
  HRESULT STDMETHODCALLTYPE GetClassID(CLSID* id) override;

  HRESULT STDMETHODCALLTYPE Stop() override;
  HRESULT STDMETHODCALLTYPE Pause() override;
  HRESULT STDMETHODCALLTYPE Run(REFERENCE_TIME start) override;
  HRESULT STDMETHODCALLTYPE GetState(DWORD timeoutMs, FILTER_STATE* current) override;
  HRESULT STDMETHODCALLTYPE SetSyncSource(IReferenceClock* source) override;
  HRESULT STDMETHODCALLTYPE GetSyncSource(IReferenceClock** source) override;

  HRESULT STDMETHODCALLTYPE EnumPins(IEnumPins** pins) override;
  HRESULT STDMETHODCALLTYPE FindPin(LPCWSTR id, IPin** pin) override;
  HRESULT STDMETHODCALLTYPE QueryFilterInfo(FILTER_INFO* info) override;
  HRESULT STDMETHODCALLTYPE JoinFilterGraph(IFilterGraph* joined, LPCWSTR givenName) override;
  HRESULT STDMETHODCALLTYPE QueryVendorInfo(LPWSTR* vendor) override;

  // The graph that the filter is in; null outside of one.
  ComPtr<IFilterGraph> Graph();

  // Tells the graph of an event, if the filter is in one. To be called only while the graph cannot be taken
  // down, for no reference to it is held: whoever gave up its last one would take it down, and the filter
  // with it.
  void Tell(long code, LONG_PTR first, LONG_PTR second);

  // The stream's time now: since the graph runs, in units of 100 ns. Nothing unless it runs by a clock.
  std::optional<REFERENCE_TIME> StreamTime();

  // The stream's time now, or where it stands while the graph does not run; 0 when it is stopped. In a graph
  // without a clock it goes by the filter's own.
  REFERENCE_TIME Now();

  [[nodiscard]] FILTER_STATE State() const { return state; }

 protected:
  explicit FilterBase(const CLSID& ownClass) : classId(ownClass) {}

  // The pins as they are now; the filter owns them.
  virtual std::vector<IPin*> Pins() = 0;

  // What a change of state takes beyond noting it. They are called one at a time, with stateLock held:
  // from stopped to any other state, when the stream runs, from any other to stopped, and before the running
  // stream stands still.
  virtual HRESULT OnStart() { return S_OK; }
  virtual void OnRun() {}
  virtual void OnStop() {}
  virtual void OnHalt() {}

  // Guards changes of state, and what must not happen beside one.
  std::mutex stateLock;

 private:
  HRESULT StartWhenStopped();

  const CLSID classId;
  std::atomic<FILTER_STATE> state{State_Stopped};
  std::atomic<REFERENCE_TIME> restTime{0};
  std::atomic<REFERENCE_TIME> ranSince{0};  // of CounterTime
  std::mutex membersLock;                   // guards what follows
  ComPtr<IReferenceClock> clock;
  REFERENCE_TIME runStart = 0;
  IFilterGraph* graph = nullptr;         // it owns its filters, so they do not own it
  IMediaEventSink* eventSink = nullptr;  // the graph's
  std::wstring name;
};

}  // namespace quorvex
