#include "platform/common/input_pin.h"

#include <uuids.h>
#include <vfwmsgs.h>
#include <windows.h>

namespace quorvex {

HRESULT InputPin::ReceiveConnection(IPin* connector, const AM_MEDIA_TYPE* type) {
  if (connector == nullptr || type == nullptr) return E_POINTER;
  if (IsConnected()) return VFW_E_ALREADY_CONNECTED;
  if (filter.State() != State_Stopped) return VFW_E_NOT_STOPPED;
  if (!Takes(*type)) return VFW_E_TYPE_NOT_ACCEPTED;
  if (flushing.exchange(false)) OnEndFlush();  // of the one before, which went in the midst of it
  Replace({ComPtr<IPin>::Share(connector), {}, {}, MediaType(*type)});
  return S_OK;
}

HRESULT InputPin::QueryAccept(const AM_MEDIA_TYPE* type) {
  if (type == nullptr) return E_POINTER;
  const bool fixed = IsConnected() && filter.State() != State_Stopped;
  return Takes(*type) && (!fixed || AgreedType().Equals(*type)) ? S_OK : S_FALSE;
}

HRESULT InputPin::State() {
  if (filter.State() == State_Stopped) return VFW_E_WRONG_STATE;
  return flushing ? S_FALSE : S_OK;
}

HRESULT InputPin::EndOfStream() {
  const HRESULT state = State();
  if (state == S_OK) OnEnd();
  return state;
}

HRESULT InputPin::BeginFlush() {
  flushing = true;
  OnBeginFlush();
  return S_OK;
}

HRESULT InputPin::EndFlush() {
  OnEndFlush();
  flushing = false;
  return S_OK;
}

HRESULT InputPin::GetAllocator(IMemAllocator** allocator) {
  if (allocator == nullptr) return E_POINTER;
  if (const Connection current = Current(); current.allocator) {
    *allocator = ComPtr<IMemAllocator>(current.allocator).Detach();
    return S_OK;
  }
  return ::CoCreateInstance(CLSID_MemoryAllocator, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IMemAllocator),
                            reinterpret_cast<void**>(allocator));
}

HRESULT InputPin::NotifyAllocator(IMemAllocator* allocator, BOOL) {
  Connection current = Current();
  if (!current.peer) return VFW_E_NOT_CONNECTED;
  current.allocator = ComPtr<IMemAllocator>::Share(allocator);
  Replace(std::move(current));
  return S_OK;
}

HRESULT InputPin::Receive(IMediaSample* sample) {
  if (sample == nullptr) return E_POINTER;
  const HRESULT state = State();
  if (state != S_OK) return state;
  return HasOtherType(*sample) ? VFW_E_INVALIDMEDIATYPE : OnSample(*sample);
}

bool InputPin::HasOtherType(IMediaSample& sample) {
  AM_MEDIA_TYPE* type = nullptr;
  if (sample.GetMediaType(&type) != S_OK) return false;
  const bool other = !AgreedType().Equals(*type);
  FreeMediaType(*type);
  ::CoTaskMemFree(type);
  return other;
}

HRESULT InputPin::ReceiveMultiple(IMediaSample** samples, LONG count, LONG* processed) {
  if (samples == nullptr || processed == nullptr) return E_POINTER;
  HRESULT result = S_OK;
  for (*processed = 0; *processed < count && result == S_OK; *processed += result == S_OK ? 1 : 0)
    result = Receive(samples[*processed]);
  return result;
}

}  // namespace quorvex
