#include "platform/common/output_pin.h"

#include <uuids.h>
#include <vfwmsgs.h>
#include <windows.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <utility>

namespace quorvex {
namespace {

// What a picture of a type takes, when it is one of plain video.
long PictureBytes(const MediaType& type) {
  const VIDEOINFOHEADER* picture = type.Picture();
  if (picture == nullptr) return 0;
  const BITMAPINFOHEADER& bitmap = picture->bmiHeader;
  const std::int64_t bits = std::int64_t{bitmap.biWidth} * std::abs(std::int64_t{bitmap.biHeight});
  return static_cast<long>(
      std::clamp<std::int64_t>(bits / 8 * bitmap.biBitCount, 0, std::numeric_limits<long>::max()));
}

// Whether pictures lie in memory as others do.
bool IsSameLayout(const BITMAPINFOHEADER& first, const BITMAPINFOHEADER& second) {
  return first.biWidth == second.biWidth && first.biHeight == second.biHeight &&
         first.biBitCount == second.biBitCount && first.biCompression == second.biCompression;
}

}  // namespace

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
  Replace(std::move(made));
  return S_OK;
}

HRESULT OutputPin::AgreeOnAllocator(Connection& made) {
  ALLOCATOR_PROPERTIES wishes{};
  made.input->GetAllocatorRequirements(&wishes);
  ALLOCATOR_PROPERTIES needs = BufferNeeds(made.type);
  needs.cBuffers = std::max(needs.cBuffers, wishes.cBuffers);
  needs.cbBuffer = std::max({needs.cbBuffer, wishes.cbBuffer, PictureBytes(made.type)});
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

bool OutputPin::Serves(const MediaType& offered, const AM_MEDIA_TYPE& type) const {
  const AM_MEDIA_TYPE& own = offered.Get();
  if (!offered.Matches(type) || own.cbFormat > type.cbFormat) return false;
  if (own.cbFormat == 0) return true;
  if (type.pbFormat == nullptr) return false;
  if (const VIDEOINFOHEADER* picture = offered.Picture()) {
    const auto* asked = reinterpret_cast<const VIDEOINFOHEADER*>(type.pbFormat);
    return LaysOut() || IsSameLayout(picture->bmiHeader, asked->bmiHeader);
  }
  return std::memcmp(own.pbFormat, type.pbFormat, own.cbFormat) == 0;
}

HRESULT OutputPin::QueryAccept(const AM_MEDIA_TYPE* type) {
  if (type == nullptr) return E_POINTER;
  const std::vector<MediaType> types = Types();
  const bool known = std::any_of(types.begin(), types.end(),
                                 [=, this](const MediaType& offered) { return Serves(offered, *type); });
  return known ? S_OK : S_FALSE;
}

void OutputPin::Adopt(const MediaType& type) {
  Connection changed = Current();
  changed.type = type;
  if (changed.peer) Replace(std::move(changed));
}

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
