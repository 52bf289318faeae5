// The ground of the platform layer's pins, of either direction: their name, their filter and their
// connection. A pin lives and is counted with its filter.
#pragma once

#include <strmif.h>

#include <mutex>
#include <string>
#include <vector>

#include "base/com_ptr.h"
#include "platform/common/filter_base.h"
#include "platform/common/media_type.h"

namespace quorvex {

class PinBase : public IPin {
 public:
  PinBase(const PinBase&) = delete;
  PinBase& operator=(const PinBase&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return filter.AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return filter.Release(); }

  HRESULT STDMETHODCALLTYPE Disconnect() override;
  HRESULT STDMETHODCALLTYPE ConnectedTo(IPin** pin) override;
  HRESULT STDMETHODCALLTYPE ConnectionMediaType(AM_MEDIA_TYPE* type) override;
  HRESULT STDMETHODCALLTYPE QueryPinInfo(PIN_INFO* info) override;
  HRESULT STDMETHODCALLTYPE QueryDirection(PIN_DIRECTION* told) override;
  HRESULT STDMETHODCALLTYPE QueryId(LPWSTR* id) override;
  HRESULT STDMETHODCALLTYPE EnumMediaTypes(IEnumMediaTypes** types) override;
  HRESULT STDMETHODCALLTYPE QueryInternalConnections(IPin** pins, ULONG* count) override;

  [[nodiscard]] bool IsConnected();

  // The type agreed on.
  [[nodiscard]] MediaType AgreedType();

 protected:
  // The other end of a connection; an input pin has no `input` at its other end.
  struct Connection {
    ComPtr<IPin> peer;
    ComPtr<IMemInputPin> input;
    ComPtr<IMemAllocator> allocator;
    MediaType type;
  };

  // `id` names the pin in its filter.
  PinBase(FilterBase& owner, std::wstring id, PIN_DIRECTION way)
      : filter(owner), name(std::move(id)), direction(way) {}
  ~PinBase() = default;

  // An interface of the pin; null when it has none of this number.
  virtual void* Find(REFIID iid) { return FindInterface<IPin>(this, iid); }

  // The connection has ended.
  virtual void OnDisconnected() {}

  // What the pin offers or takes, what it likes best first.
  virtual std::vector<MediaType> Types() = 0;

  Connection Current();
  void Replace(Connection made);

  FilterBase& filter;

 private:
  const std::wstring name;
  const PIN_DIRECTION direction;
  std::mutex lock;  // guards connection; never held while the other end is called
  Connection connection;
};

}  // namespace quorvex
