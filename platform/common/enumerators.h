// The enumerators that filters and pins hand out: of pins, and of media types.
#pragma once

#include <strmif.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "base/com_ptr.h"
#include "platform/common/com_object.h"
#include "platform/common/media_type.h"

namespace quorvex {

inline IPin* HandOutItem(const ComPtr<IPin>& pin) { return ComPtr<IPin>(pin).Detach(); }
inline AM_MEDIA_TYPE* HandOutItem(const MediaType& type) { return type.Clone(); }

// Enumerates a list as it was when it was asked for. Handed is what Interface::Next hands out for an Item.
template <typename Interface, typename Item, typename Handed>
class Enumerator final : public ComObject<Interface> {
 public:
  explicit Enumerator(std::vector<Item> listed, std::size_t at = 0) : items(std::move(listed)), next(at) {}

  HRESULT STDMETHODCALLTYPE Next(ULONG count, Handed** handed, ULONG* fetched) override {
    if (handed == nullptr || (fetched == nullptr && count > 1)) return E_POINTER;
    ULONG done = 0;
    while (done < count && next < items.size()) handed[done++] = HandOutItem(items[next++]);
    if (fetched != nullptr) *fetched = done;
    return done == count ? S_OK : S_FALSE;
  }

  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
    const bool enough = count <= items.size() - next;
    next = enough ? next + count : items.size();
    return enough ? S_OK : S_FALSE;
  }

  HRESULT STDMETHODCALLTYPE Reset() override {
    next = 0;
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE Clone(Interface** clone) override {
    if (clone == nullptr) return E_POINTER;
    *clone = new Enumerator(items, next);
    return S_OK;
  }

 private:
  std::vector<Item> items;
  std::size_t next;
};

using PinEnumerator = Enumerator<IEnumPins, ComPtr<IPin>, IPin>;
using MediaTypeEnumerator = Enumerator<IEnumMediaTypes, MediaType, AM_MEDIA_TYPE>;

}  // namespace quorvex
