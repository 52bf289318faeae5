#include "devices/tv/pins.h"

#include <array>
#include <vector>

namespace quorvex {
namespace {

constexpr int kLongestName = 80;

// What a pin tells of itself; it holds its filter.
struct PinFacts {
  explicit PinFacts(IPin& pin) {
    PIN_INFO info{};
    if (FAILED(pin.QueryPinInfo(&info))) return;
    filter = ComPtr<IBaseFilter>::Attach(info.pFilter);
    direction = info.dir;
    std::array<char, kLongestName> text{};
    ::WideCharToMultiByte(CP_ACP, 0, info.achName, -1, text.data(), kLongestName - 1, nullptr, nullptr);
    name = text.data();
  }

  ComPtr<IBaseFilter> filter;
  PIN_DIRECTION direction = PINDIR_OUTPUT;
  std::string name;
};

std::vector<ComPtr<IPin>> PinsOf(IBaseFilter* filter) {
  std::vector<ComPtr<IPin>> pins;
  ComPtr<IEnumPins> enumerator;
  if (filter == nullptr || FAILED(filter->EnumPins(enumerator.Receive()))) return pins;
  ComPtr<IPin> pin;
  while (enumerator->Next(1, pin.Receive(), nullptr) == S_OK) pins.push_back(pin);
  return pins;
}

}  // namespace

ComPtr<IPin> FindPinByName(IBaseFilter* filter, PIN_DIRECTION direction, const std::string& name) {
  ComPtr<IPin> found;
  for (const ComPtr<IPin>& pin : PinsOf(filter)) {
    const PinFacts facts(*pin.Get());
    if (facts.filter && facts.direction == direction && (name.empty() || facts.name == name)) found = pin;
  }
  return found;
}

HRESULT ConnectPins(IGraphBuilder& graph, const ComPtr<IPin>& output, const ComPtr<IPin>& input) {
  if (!output || !input) return E_POINTER;
  return graph.ConnectDirect(output.Get(), input.Get(), nullptr);
}

void RemoveDownstream(IGraphBuilder& graph, IBaseFilter* filter) {
  for (const ComPtr<IPin>& pin : PinsOf(filter)) {
    ComPtr<IPin> peer;
    if (FAILED(pin->ConnectedTo(peer.Receive())) || !peer) continue;
    const PinFacts facts(*peer.Get());
    if (!facts.filter || facts.direction != PINDIR_INPUT) continue;
    RemoveDownstream(graph, facts.filter.Get());
    graph.Disconnect(peer.Get());
    graph.Disconnect(pin.Get());
    graph.RemoveFilter(facts.filter.Get());
  }
}

}  // namespace quorvex
