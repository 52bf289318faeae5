#include "platform/tv/graph_walk.h"

#include "platform/common/pin_category.h"

namespace quorvex {
namespace {

// Everything that an enumerator of Interface hands out.
template <typename Item, typename Enumerator>
std::vector<ComPtr<Item>> All(const ComPtr<Enumerator>& enumerator) {
  std::vector<ComPtr<Item>> items;
  ComPtr<Item> item;
  while (enumerator && enumerator->Next(1, item.Receive(), nullptr) == S_OK) items.push_back(item);
  return items;
}

}  // namespace

std::vector<ComPtr<IPin>> PinsOf(IBaseFilter& filter) {
  ComPtr<IEnumPins> pins;
  filter.EnumPins(pins.Receive());
  return All<IPin>(pins);
}

std::vector<ComPtr<IBaseFilter>> FiltersOf(IFilterGraph& graph) {
  ComPtr<IEnumFilters> filters;
  graph.EnumFilters(filters.Receive());
  return All<IBaseFilter>(filters);
}

PIN_DIRECTION DirectionOf(IPin& pin) {
  PIN_DIRECTION direction = PINDIR_INPUT;
  pin.QueryDirection(&direction);
  return direction;
}

ComPtr<IPin> PeerOf(IPin& pin) {
  ComPtr<IPin> peer;
  return SUCCEEDED(pin.ConnectedTo(peer.Receive())) ? peer : nullptr;
}

ComPtr<IBaseFilter> FilterOf(IPin& pin) {
  PIN_INFO info{};
  return SUCCEEDED(pin.QueryPinInfo(&info)) ? ComPtr<IBaseFilter>::Attach(info.pFilter) : nullptr;
}

ComPtr<IPin> FindPin(IBaseFilter& filter, PIN_DIRECTION direction, const GUID* category) {
  ComPtr<IPin> taken;
  for (const ComPtr<IPin>& pin : PinsOf(filter)) {
    if (DirectionOf(*pin.Get()) != direction) continue;
    if (category != nullptr && CategoryOf(*pin.Get()) != *category) continue;
    if (!PeerOf(*pin.Get())) return pin;
    if (!taken) taken = pin;
  }
  return taken;
}

}  // namespace quorvex
