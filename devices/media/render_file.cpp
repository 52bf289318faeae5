#include "devices/media/render_file.h"

#include <uuids.h>
#include <vfwmsgs.h>

#include "base/com_ptr.h"

namespace quorvex {
namespace {

// A renderer that does not tell may have a picture to show.
bool IsUnused(IBaseFilter* renderer) {
  ComPtr<IEnumPins> pins;
  ComPtr<IPin> pin;
  ComPtr<IPin> other;
  return SUCCEEDED(renderer->EnumPins(pins.Receive())) && pins->Next(1, pin.Receive(), nullptr) == S_OK &&
         pin->ConnectedTo(other.Receive()) == VFW_E_NOT_CONNECTED;
}

}  // namespace

HRESULT RenderMediaFile(IGraphBuilder* graph, const wchar_t* path) {
  // The plain renderer. Left to itself Wine takes one that loses memory with every graph.
  ComPtr<IBaseFilter> renderer;
  ::CoCreateInstance(CLSID_VideoRenderer, nullptr, CLSCTX_INPROC_SERVER, IID_IBaseFilter,
                     renderer.ReceiveVoid());
  const bool added = renderer && SUCCEEDED(graph->AddFilter(renderer.Get(), L"Video Renderer"));
  const HRESULT result = graph->RenderFile(path, nullptr);
  // A file of sound only does not need it.
  if (added && IsUnused(renderer.Get())) graph->RemoveFilter(renderer.Get());
  return result;
}

}  // namespace quorvex
