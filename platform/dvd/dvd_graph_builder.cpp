#include "platform/dvd/dvd_graph_builder.h"

#include <control.h>
#include <uuids.h>
#include <vfwmsgs.h>

#include <utility>

#include "base/line21_interface.h"
#include "platform/dvd/disc_in_drive.h"
#include "platform/dvd/dvd_source.h"
#include "platform/dvd/render_status.h"

namespace quorvex {
namespace {

bool IsEmpty(IGraphBuilder& graph) {
  ComPtr<IEnumFilters> filters;
  ComPtr<IBaseFilter> filter;
  return SUCCEEDED(graph.EnumFilters(filters.Receive())) &&
         filters->Next(1, filter.Receive(), nullptr) != S_OK;
}

}  // namespace

DvdGraphBuilder::~DvdGraphBuilder() { TakeDown(); }

void DvdGraphBuilder::TakeDown() {
  if (const auto control = graph.As<IMediaControl>()) control->Stop();
  if (source) graph->RemoveFilter(source.Get());
  source.Reset();
}

HRESULT DvdGraphBuilder::MakeGraph() {
  if (graph) return S_OK;
  return ::CoCreateInstance(CLSID_FilterGraph, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IGraphBuilder),
                            graph.ReceiveVoid());
}

HRESULT DvdGraphBuilder::GetFiltergraph(IGraphBuilder** wanted) {
  if (wanted == nullptr) return E_POINTER;
  const HRESULT result = MakeGraph();
  *wanted = ComPtr<IGraphBuilder>(graph).Detach();
  return result;
}

HRESULT DvdGraphBuilder::GetDvdInterface(REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  const bool ofDisc = iid == __uuidof(IDvdControl) || iid == __uuidof(IDvdInfo) || iid == kIidLine21Decoder;
  const bool ofGraph = iid == IID_IVideoWindow || iid == IID_IBasicVideo || iid == IID_IBasicAudio;
  if (!ofDisc && !ofGraph) return E_NOINTERFACE;
  if (!source) return VFW_E_DVD_GRAPHNOTREADY;
  return ofDisc ? source->QueryInterface(iid, object) : graph->QueryInterface(iid, object);
}

HRESULT DvdGraphBuilder::RenderDvdVideoVolume(LPCWSTR path, DWORD, AM_DVD_RENDERSTATUS* status) {
  AM_DVD_RENDERSTATUS told{};
  if (status == nullptr) status = &told;
  *status = {};
  TakeDown();
  OpenedDisc disc;
  const bool named = path != nullptr && *path != L'\0';
  const DiscFault fault = named ? OpenDisc(path, disc) : OpenDiscInDrive(disc);
  if (fault != DiscFault::kNone) return TellFault(fault, named, *status);
  const HRESULT made = MakeGraph();
  return FAILED(made) ? made : Render(std::move(disc), *status);
}

// Into a renderer that the application has put there, or else the plain one: left to itself Wine tries others
// first, which takes half as long as all the rest.
HRESULT DvdGraphBuilder::RenderPictures(IPin& pin, bool intoPlainRenderer) {
  ComPtr<IBaseFilter> renderer;
  if (intoPlainRenderer) {
    ::CoCreateInstance(CLSID_VideoRenderer, nullptr, CLSCTX_INPROC_SERVER, IID_IBaseFilter,
                       renderer.ReceiveVoid());
  }
  if (renderer) graph->AddFilter(renderer.Get(), L"Video Renderer");
  const HRESULT result = graph->Render(&pin);
  if (renderer && FAILED(result)) graph->RemoveFilter(renderer.Get());
  return result;
}

HRESULT DvdGraphBuilder::Render(OpenedDisc disc, AM_DVD_RENDERSTATUS& status) {
  const auto made = ComPtr<DvdSource>::Attach(new DvdSource(std::move(disc)));
  source = ComPtr<IBaseFilter>::Share(made.Get());
  const bool wasEmpty = IsEmpty(*graph.Get());
  const HRESULT added = graph->AddFilter(made.Get(), L"DVD");
  if (FAILED(added)) return added;
  status.iNumStreams = kDvdStreams;
  if (FAILED(RenderPictures(made->PicturePin(), wasEmpty))) {
    FailStreams(status, AM_DVD_STREAM_VIDEO | AM_DVD_STREAM_SUBPIC);
  }
  if (FAILED(graph->Render(&made->SoundPin()))) FailStreams(status, AM_DVD_STREAM_AUDIO);
  if (status.iNumStreamsFailed == kDvdStreams) return VFW_E_DVD_DECNOTENOUGH;
  return status.iNumStreamsFailed > 0 ? S_FALSE : S_OK;
}

}  // namespace quorvex
