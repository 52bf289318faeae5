// The ground of the platform layer's output pins: connecting, agreeing on type and allocator, and delivering
// to the pin at the other end. A pin lives and is counted with its filter.
#pragma once

#include <strmif.h>

#include <mutex>
#include <string>
#include <vector>

#include "base/com_ptr.h"
#include "platform/common/filter_base.h"
#include "platform/common/media_type.h"

namespace quorvex {

class OutputPin : public IPin {
 public:
  // `id` names the pin in its filter.
  OutputPin(FilterBase& owner, std::wstring id) : filter(owner), name(std::move(id)) {}
  OutputPin(const OutputPin&) = delete;
  OutputPin& operator=(const OutputPin&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return filter.AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return filter.Release(); }

  HRESULT STDMETHODCALLTYPE Connect(IPin* receiver, const AM_MEDIA_TYPE* wanted) override;
  HRESULT STDMETHODCALLTYPE ReceiveConnection(IPin* connector, const AM_MEDIA_TYPE* type) override;
  HRESULT STDMETHODCALLTYPE Disconnect() override;
  HRESULT STDMETHODCALLTYPE ConnectedTo(IPin** pin) override;
  HRESULT STDMETHODCALLTYPE ConnectionMediaType(AM_MEDIA_TYPE* type) override;
  HRESULT STDMETHODCALLTYPE QueryPinInfo(PIN_INFO* info) override;
  HRESULT STDMETHODCALLTYPE QueryDirection(PIN_DIRECTION* direction) override;
  HRESULT STDMETHODCALLTYPE QueryId(LPWSTR* id) override;
  HRESULT STDMETHODCALLTYPE QueryAccept(const AM_MEDIA_TYPE* type) override;
  HRESULT STDMETHODCALLTYPE EnumMediaTypes(IEnumMediaTypes** types) override;
  HRESULT STDMETHODCALLTYPE QueryInternalConnections(IPin** pins, ULONG* count) override;
  // These come to input pins only.
  HRESULT STDMETHODCALLTYPE EndOfStream() override { return E_UNEXPECTED; }
  HRESULT STDMETHODCALLTYPE BeginFlush() override { return E_UNEXPECTED; }
  HRESULT STDMETHODCALLTYPE EndFlush() override { return E_UNEXPECTED; }
  HRESULT STDMETHODCALLTYPE NewSegment(REFERENCE_TIME, REFERENCE_TIME, double) override { return S_OK; }

  [[nodiscard]] bool IsConnected();

  // The type agreed on.
  [[nodiscard]] MediaType AgreedType();

  // The allocator gives buffers from Start until Stop, which also releases who waits for one.
  HRESULT Start();
  void Stop();

  // A free buffer; waits for one. Null when the pin is stopped or not connected.
  ComPtr<IMediaSample> NextBuffer();

  // Hands a sample on; S_OK when more is wanted. May wait as long as the receiver likes.
  HRESULT Deliver(IMediaSample* sample);

  // The same call at the pin at the other end; nothing when there is none.
  void DeliverEndOfStream();
  void DeliverBeginFlush();
  void DeliverEndFlush();
  void DeliverNewSegment(REFERENCE_TIME start, REFERENCE_TIME stop);

 protected:
  ~OutputPin() = default;

  // An interface of the pin; null when it has none of this number.
  virtual void* Find(REFIID iid) { return FindInterface<IPin>(this, iid); }

  // What the pin offers, what it likes best first.
  virtual std::vector<MediaType> Types() = 0;

  // How many buffers of which size this type takes, at the least.
  virtual ALLOCATOR_PROPERTIES BufferNeeds(const MediaType& type) = 0;

 private:
  // The other end of a connection.
  struct Connection {
    ComPtr<IPin> peer;
    ComPtr<IMemInputPin> input;
    ComPtr<IMemAllocator> allocator;
    MediaType type;
  };

  HRESULT TryType(IPin* receiver, const MediaType& type);
  HRESULT AgreeOnAllocator(Connection& made);
  static HRESULT UseAllocator(Connection& made, ALLOCATOR_PROPERTIES needs);
  Connection Current();

  FilterBase& filter;
  const std::wstring name;
  std::mutex lock;  // guards connection; never held while the other end is called
  Connection connection;
};

}  // namespace quorvex
