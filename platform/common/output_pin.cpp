#include "platform/common/output_pin.h"

#include <uuids.h>
#include <vfwmsgs.h>
#include <windows.h>

#include <algorithm>

#include "platform/common/enumerators.h"

namespace quorvex {

HRESULT OutputPin::QueryInterface(REFIID iid, void** object) {
  return HandOut(static_cast<IPin*>(this), Find(iid), object);
}

OutputPin::Connection OutputPin::Current() {
  const std::scoped_lock guard(lock);
  return connection;
}

HRESULT OutputPin::Connect(IPin* receiver, const AM_MEDIA_TYPE* wanted) {
  if (receiver == nullptr) return E_POINTER;
  if (IsConnected()) return VFW_E_ALREADY_CONNECTED;
  if (filter.State() != State_Stopped) return VFW_E_NOT_STOPPED;
  if (wanted != nullptr && IsComplete(*wanted)) {
    return QueryAccept(wanted) == S_OK ? TryType(receiver, MediaType(*wanted)) : VFW_E_TYPE_NOT_ACCEPTED;
  }
  HRESULT result = VFW_E_NO_ACCEPTABLE_TYPES;
  for (const MediaType& type : Types()) {
    if (wanted != nullptr && !type.Matches(*wanted)) continue;
    result = TryType(receiver, type);
    if (SUCCEEDED(result)) break;
  }
  return result;
}

HRESULT OutputPin::TryType(IPin* receiver, const MediaType& type) {
  HRESULT result = receiver->ReceiveConnection(this, &type.Get());
  if (FAILED(result)) return result;
  Connection made{ComPtr<IPin>::Share(receiver), {}, {}, type};
  made.input = made.peer.As<IMemInputPin>();
  result = made.input ? AgreeOnAllocator(made) : VFW_E_NO_TRANSPORT;
  if (FAILED(result)) {
    receiver->Disconnect();
    return result;
  }
  const std::scoped_lock guard(lock);
  connection = std::move(made);
  return S_OK;
}

HRESULT OutputPin::AgreeOnAllocator(Connection& made) {
  ALLOCATOR_PROPERTIES wishes{};
  made.input->GetAllocatorRequirements(&wishes);
  ALLOCATOR_PROPERTIES needs = BufferNeeds(made.type);
  needs.cBuffers = std::max(needs.cBuffers, wishes.cBuffers);
  needs.cbBuffer = std::max(needs.cbBuffer, wishes.cbBuffer);
  needs.cbAlign = std::max({needs.cbAlign, wishes.cbAlign, 1L});
  needs.cbPrefix = wishes.cbPrefix;
  if (SUCCEEDED(made.input->GetAllocator(made.allocator.Receive())) && SUCCEEDED(UseAllocator(made, needs)))
    return S_OK;
  const HRESULT result = ::CoCreateInstance(CLSID_MemoryAllocator, nullptr, CLSCTX_INPROC_SERVER,
                                            __uuidof(IMemAllocator), made.allocator.ReceiveVoid());
  return SUCCEEDED(result) ? UseAllocator(made, needs) : result;
}

HRESULT OutputPin::UseAllocator(Connection& made, ALLOCATOR_PROPERTIES needs) {
  ALLOCATOR_PROPERTIES actual{};
  HRESULT result = made.allocator->SetProperties(&needs, &actual);
  if (FAILED(result)) return result;
  if (actual.cbBuffer < needs.cbBuffer) return VFW_E_SIZENOTSET;
  return made.input->NotifyAllocator(made.allocator.Get(), FALSE);
}

HRESULT OutputPin::ReceiveConnection(IPin*, const AM_MEDIA_TYPE*) { return E_UNEXPECTED; }

HRESULT OutputPin::Disconnect() {
  if (filter.State() != State_Stopped) return VFW_E_NOT_STOPPED;
  Connection ended;
  const std::scoped_lock guard(lock);
  std::swap(ended, connection);
  return ended.peer ? S_OK : S_FALSE;
}

HRESULT OutputPin::ConnectedTo(IPin** pin) {
  if (pin == nullptr) return E_POINTER;
  *pin = Current().peer.Detach();
  return *pin != nullptr ? S_OK : VFW_E_NOT_CONNECTED;
}

HRESULT OutputPin::ConnectionMediaType(AM_MEDIA_TYPE* type) {
  if (type == nullptr) return E_POINTER;
  const Connection current = Current();
  current.type.CopyTo(*type);
  return current.peer ? S_OK : VFW_E_NOT_CONNECTED;
}

HRESULT OutputPin::QueryPinInfo(PIN_INFO* info) {
  if (info == nullptr) return E_POINTER;
  info->pFilter = ComPtr<IBaseFilter>::Share(&filter).Detach();
  info->dir = PINDIR_OUTPUT;
  ::lstrcpynW(info->achName, name.c_str(), MAX_PIN_NAME);
  return S_OK;
}

HRESULT OutputPin::QueryDirection(PIN_DIRECTION* direction) {
  if (direction == nullptr) return E_POINTER;
  *direction = PINDIR_OUTPUT;
  return S_OK;
}

HRESULT OutputPin::QueryId(LPWSTR* id) {
  if (id == nullptr) return E_POINTER;
  *id = static_cast<LPWSTR>(::CoTaskMemAlloc((name.size() + 1) * sizeof(wchar_t)));
  if (*id == nullptr) return E_OUTOFMEMORY;
  std::copy_n(name.c_str(), name.size() + 1, *id);
  return S_OK;
}

HRESULT OutputPin::QueryAccept(const AM_MEDIA_TYPE* type) {
  if (type == nullptr) return E_POINTER;
  const std::vector<MediaType> types = Types();
  const bool known = std::any_of(types.begin(), types.end(), [type](const MediaType& offered) {
    return offered.Matches(*type) && offered.Get().cbFormat <= type->cbFormat;
  });
  return known ? S_OK : S_FALSE;
}

HRESULT OutputPin::EnumMediaTypes(IEnumMediaTypes** types) {
  if (types == nullptr) return E_POINTER;
  *types = new MediaTypeEnumerator(Types());
  return S_OK;
}

HRESULT OutputPin::QueryInternalConnections(IPin**, ULONG*) { return E_NOTIMPL; }

bool OutputPin::IsConnected() { return static_cast<bool>(Current().peer); }

MediaType OutputPin::AgreedType() { return Current().type; }

HRESULT OutputPin::Start() {
  const Connection current = Current();
  return current.allocator ? current.allocator->Commit() : S_FALSE;
}

void OutputPin::Stop() {
  const Connection current = Current();
  if (current.allocator) current.allocator->Decommit();
}

ComPtr<IMediaSample> OutputPin::NextBuffer() {
  const Connection current = Current();
  ComPtr<IMediaSample> sample;
  if (current.allocator && FAILED(current.allocator->GetBuffer(sample.Receive(), nullptr, nullptr, 0)))
    sample.Reset();
  return sample;
}

HRESULT OutputPin::Deliver(IMediaSample* sample) {
  const Connection current = Current();
  return current.input ? current.input->Receive(sample) : VFW_E_NOT_CONNECTED;
}

void OutputPin::DeliverEndOfStream() {
  if (const Connection current = Current(); current.peer) current.peer->EndOfStream();
}

void OutputPin::DeliverBeginFlush() {
  if (const Connection current = Current(); current.peer) current.peer->BeginFlush();
}

void OutputPin::DeliverEndFlush() {
  if (const Connection current = Current(); current.peer) current.peer->EndFlush();
}

void OutputPin::DeliverNewSegment(REFERENCE_TIME start, REFERENCE_TIME stop) {
  if (const Connection current = Current(); current.peer) current.peer->NewSegment(start, stop, 1.0);
}

}  // namespace quorvex
