#include "platform/common/filter_base.h"

#include <vfwmsgs.h>
#include <windows.h>

#include <memory>

#include "platform/common/counter_time.h"
#include "platform/common/enumerators.h"

namespace quorvex {

struct FreeTaskMemory {
  void operator()(void* memory) const { ::CoTaskMemFree(memory); }
};

HRESULT FilterBase::GetClassID(CLSID* id) {
  if (id == nullptr) return E_POINTER;
  *id = classId;
  return S_OK;
}

HRESULT FilterBase::Stop() {
  const std::scoped_lock lock(stateLock);
  if (state == State_Running) OnHalt();
  if (state.exchange(State_Stopped) != State_Stopped) OnStop();
  restTime = 0;
  return S_OK;
}

HRESULT FilterBase::StartWhenStopped() { return state == State_Stopped ? OnStart() : S_OK; }

HRESULT FilterBase::Pause() {
  const std::scoped_lock lock(stateLock);
  if (state == State_Running) {
    restTime = Now();
    OnHalt();
  }
  const HRESULT result = StartWhenStopped();
  if (SUCCEEDED(result)) state = State_Paused;
  return result;
}

HRESULT FilterBase::Run(REFERENCE_TIME start) {
  const std::scoped_lock lock(stateLock);
  const HRESULT result = StartWhenStopped();
  if (FAILED(result)) return result;
  {
    const std::scoped_lock members(membersLock);
    runStart = start;
  }
  ranSince = CounterTime();
  state = State_Running;
  OnRun();
  return S_OK;
}

HRESULT FilterBase::GetState(DWORD, FILTER_STATE* current) {
  if (current == nullptr) return E_POINTER;
  *current = state;
  return S_OK;
}

HRESULT FilterBase::SetSyncSource(IReferenceClock* source) {
  const std::scoped_lock members(membersLock);
  clock = ComPtr<IReferenceClock>::Share(source);
  return S_OK;
}

HRESULT FilterBase::GetSyncSource(IReferenceClock** source) {
  if (source == nullptr) return E_POINTER;
  const std::scoped_lock members(membersLock);
  *source = ComPtr<IReferenceClock>(clock).Detach();
  return S_OK;
}

HRESULT FilterBase::EnumPins(IEnumPins** pins) {
  if (pins == nullptr) return E_POINTER;
  std::vector<ComPtr<IPin>> listed;
  for (IPin* pin : Pins()) listed.push_back(ComPtr<IPin>::Share(pin));
  *pins = new PinEnumerator(std::move(listed));
  return S_OK;
}

HRESULT FilterBase::FindPin(LPCWSTR id, IPin** pin) {
  if (id == nullptr || pin == nullptr) return E_POINTER;
  *pin = nullptr;
  for (IPin* candidate : Pins()) {
    LPWSTR text = nullptr;
    if (FAILED(candidate->QueryId(&text))) continue;
    const std::unique_ptr<wchar_t, FreeTaskMemory> owned(text);
    if (std::wstring_view(text) != id) continue;
    *pin = ComPtr<IPin>::Share(candidate).Detach();
    return S_OK;
  }
  return VFW_E_NOT_FOUND;
}

HRESULT FilterBase::QueryFilterInfo(FILTER_INFO* info) {
  if (info == nullptr) return E_POINTER;
  const std::scoped_lock members(membersLock);
  ::lstrcpynW(info->achName, name.c_str(), MAX_FILTER_NAME);
  info->pGraph = ComPtr<IFilterGraph>::Share(graph).Detach();
  return S_OK;
}

HRESULT FilterBase::JoinFilterGraph(IFilterGraph* joined, LPCWSTR givenName) {
  const auto sink = ComPtr<IFilterGraph>::Share(joined).As<IMediaEventSink>();
  const std::scoped_lock members(membersLock);
  graph = joined;
  eventSink = sink.Get();
  name = givenName != nullptr ? givenName : L"";
  return S_OK;
}

HRESULT FilterBase::QueryVendorInfo(LPWSTR*) { return E_NOTIMPL; }

ComPtr<IFilterGraph> FilterBase::Graph() {
  const std::scoped_lock members(membersLock);
  return ComPtr<IFilterGraph>::Share(graph);
}

void FilterBase::Tell(long code, LONG_PTR first, LONG_PTR second) {
  IMediaEventSink* told = nullptr;
  {
    const std::scoped_lock members(membersLock);
    told = eventSink;
  }
  if (told != nullptr) told->Notify(code, first, second);
}

REFERENCE_TIME FilterBase::Now() {
  if (const std::optional<REFERENCE_TIME> time = StreamTime()) return *time;
  return restTime + (state == State_Running ? CounterTime() - ranSince : 0);
}

std::optional<REFERENCE_TIME> FilterBase::StreamTime() {
  if (state != State_Running) return std::nullopt;
  ComPtr<IReferenceClock> current;
  REFERENCE_TIME start = 0;
  {
    const std::scoped_lock members(membersLock);
    current = clock;
    start = runStart;
  }
  REFERENCE_TIME now = 0;
  if (!current || FAILED(current->GetTime(&now))) return std::nullopt;
  return now - start;
}

}  // namespace quorvex
