#include "devices/media/render_file.h"

#include <uuids.h>

#include "base/com_ptr.h"

namespace quorvex {
namespace {

template <typename Interface>
ComPtr<Interface> Create(const CLSID& id, REFIID iid) {
  ComPtr<Interface> object;
  ::CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, iid, object.ReceiveVoid());
  return object;
}

bool IsConnected(IBaseFilter* renderer) {
  ComPtr<IEnumPins> pins;
  ComPtr<IPin> pin;
  ComPtr<IPin> other;
  return SUCCEEDED(renderer->EnumPins(pins.Receive())) && pins->Next(1, pin.Receive(), nullptr) == S_OK &&
         SUCCEEDED(pin->ConnectedTo(other.Receive()));
}

}  // namespace

HRESULT RenderMediaFile(IGraphBuilder* graph, const wchar_t* path) {
  // The plain renderer and the system's clock, which a graph may have anyhow. Left to itself Wine takes a
  // renderer that loses memory with every graph, and the sound renderer's clock, which then leaves a thread
  // behind.
  const auto renderer = Create<IBaseFilter>(CLSID_VideoRenderer, IID_IBaseFilter);
  if (renderer) graph->AddFilter(renderer.Get(), L"Video Renderer");
  const HRESULT result = graph->RenderFile(path, nullptr);
  if (!renderer) return result;
  if (!IsConnected(renderer.Get())) {
    graph->RemoveFilter(renderer.Get());  // a file of sound only
    return result;
  }
  ComPtr<IMediaFilter> whole;
  const auto clock = Create<IReferenceClock>(CLSID_SystemClock, IID_IReferenceClock);
  if (clock && SUCCEEDED(graph->QueryInterface(IID_IMediaFilter, whole.ReceiveVoid())))
    whole->SetSyncSource(clock.Get());
  return result;
}

}  // namespace quorvex
