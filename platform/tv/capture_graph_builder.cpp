#include "platform/tv/capture_graph_builder.h"

#include <uuids.h>
#include <vfwmsgs.h>
#include <algorithm>

#include "platform/common/pin_category.h"
#include "platform/tv/caption_mixer.h"
#include "platform/tv/graph_walk.h"

namespace quorvex {
namespace {

// Deeper than any chain of filters: a graph made wrongly must not be walked for ever.
constexpr int kDeepest = 32;

bool Offers(IUnknown* object, REFIID iid, void** found) {
  return object != nullptr && SUCCEEDED(object->QueryInterface(iid, found)) && *found != nullptr;
}

bool IsOf(IPin& pin, const GUID* category) { return category == nullptr || CategoryOf(pin) == *category; }

// Looks at the filters that pins of this direction lead to, at their near pins, and on.
bool FindBeyond(IBaseFilter& filter, PIN_DIRECTION direction, const GUID* category, REFIID iid, void** found,
                int depth = 0) {
  if (depth == kDeepest) return false;
  const auto leadsThere = [&](const ComPtr<IPin>& pin) {
    if (DirectionOf(*pin.Get()) != direction || !IsOf(*pin.Get(), category)) return false;
    const ComPtr<IPin> peer = PeerOf(*pin.Get());
    const ComPtr<IBaseFilter> next = peer ? FilterOf(*peer.Get()) : nullptr;
    return next && (Offers(peer.Get(), iid, found) || Offers(next.Get(), iid, found) ||
                    FindBeyond(*next.Get(), direction, nullptr, iid, found, depth + 1));
  };
  const auto pins = PinsOf(filter);
  return std::any_of(pins.begin(), pins.end(), leadsThere);
}

bool FindAtPins(IBaseFilter& filter, const GUID* category, REFIID iid, void** found) {
  const auto pins = PinsOf(filter);
  return std::any_of(pins.begin(), pins.end(), [&](const ComPtr<IPin>& pin) {
    return IsOf(*pin.Get(), category) && Offers(pin.Get(), iid, found);
  });
}

bool IsPictures(IPin& pin) {
  ComPtr<IEnumMediaTypes> types;
  AM_MEDIA_TYPE* type = nullptr;
  if (FAILED(pin.EnumMediaTypes(types.Receive())) || types->Next(1, &type, nullptr) != S_OK) return false;
  const bool pictures = type->majortype == MEDIATYPE_Video;
  ::CoTaskMemFree(type->pbFormat);
  ::CoTaskMemFree(type);
  return pictures;
}

// A filter's free output for a stream of this category, of any without one.
ComPtr<IPin> FreePin(IBaseFilter& filter, const GUID* category) {
  const ComPtr<IPin> pin = FindPin(filter, PINDIR_OUTPUT, category);
  return pin && !PeerOf(*pin.Get()) ? pin : nullptr;
}

HRESULT ControlPin(IPin& pin, const REFERENCE_TIME* start, const REFERENCE_TIME* stop, WORD startCookie,
                   WORD stopCookie) {
  const auto control = ComPtr<IPin>::Share(&pin).As<IAMStreamControl>();
  if (!control) return E_NOINTERFACE;
  const HRESULT result = control->StopAt(stop, FALSE, stopCookie);
  return SUCCEEDED(result) ? control->StartAt(start, startCookie) : result;
}

}  // namespace

HRESULT CaptureGraphBuilder::SetFiltergraph(IGraphBuilder* wanted) {
  if (wanted == nullptr) return E_POINTER;
  if (graph) return E_UNEXPECTED;
  graph = ComPtr<IGraphBuilder>::Share(wanted);
  return S_OK;
}

HRESULT CaptureGraphBuilder::GetFiltergraph(IGraphBuilder** wanted) {
  if (wanted == nullptr) return E_POINTER;
  *wanted = nullptr;
  if (!graph) {
    const HRESULT result = ::CoCreateInstance(CLSID_FilterGraph, nullptr, CLSCTX_INPROC_SERVER,
                                              __uuidof(IGraphBuilder), graph.ReceiveVoid());
    if (FAILED(result)) return result;
  }
  *wanted = ComPtr<IGraphBuilder>(graph).Detach();
  return S_OK;
}

HRESULT CaptureGraphBuilder::FindInterface(const GUID* category, IBaseFilter* filter, REFIID iid,
                                           void** found) {
  if (filter == nullptr || found == nullptr) return E_POINTER;
  *found = nullptr;
  const bool onlyUp = category != nullptr && *category == LOOK_UPSTREAM_ONLY;
  const bool onlyDown = category != nullptr && *category == LOOK_DOWNSTREAM_ONLY;
  if (onlyUp) return FindBeyond(*filter, PINDIR_INPUT, nullptr, iid, found) ? S_OK : E_FAIL;
  if (onlyDown) return FindBeyond(*filter, PINDIR_OUTPUT, nullptr, iid, found) ? S_OK : E_FAIL;
  const bool isThere = Offers(filter, iid, found) || FindAtPins(*filter, category, iid, found) ||
                       FindBeyond(*filter, PINDIR_OUTPUT, category, iid, found) ||
                       FindBeyond(*filter, PINDIR_INPUT, nullptr, iid, found);
  return isThere ? S_OK : E_FAIL;
}

HRESULT CaptureGraphBuilder::AddNew(const CLSID& id, const wchar_t* name, ComPtr<IBaseFilter>& made) {
  const HRESULT result =
      ::CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IBaseFilter), made.ReceiveVoid());
  return SUCCEEDED(result) ? graph->AddFilter(made.Get(), name) : result;
}

HRESULT CaptureGraphBuilder::ConnectTo(IPin& pin, IBaseFilter& filter) {
  HRESULT result = VFW_E_CANNOT_CONNECT;
  for (const ComPtr<IPin>& input : PinsOf(filter)) {
    if (DirectionOf(*input.Get()) != PINDIR_INPUT || PeerOf(*input.Get())) continue;
    result = graph->Connect(&pin, input.Get());
    if (SUCCEEDED(result)) break;
  }
  return result;
}

// Captions of a card that has them need a way into the picture: a mixer goes between. Answers the pin to go
// on from, which is the same one for other filters and for pictures that the mixer does not take.
ComPtr<IPin> CaptureGraphBuilder::MixCaptionsInto(IPin& pin) {
  ComPtr<IPin> last = ComPtr<IPin>::Share(&pin);
  const ComPtr<IBaseFilter> source = FilterOf(pin);
  if (!source || !FindPin(*source.Get(), PINDIR_OUTPUT, &PIN_CATEGORY_VBI)) return last;
  ComPtr<IBaseFilter> mixer;
  if (FAILED(AddNew(kCaptionMixerClass, L"Captions", mixer))) return last;
  const ComPtr<IPin> pictures = PinsOf(*mixer.Get()).front();
  if (SUCCEEDED(graph->ConnectDirect(&pin, pictures.Get(), nullptr))) return FreePin(*mixer.Get(), nullptr);
  graph->RemoveFilter(mixer.Get());
  return last;
}

// The plain renderer, made here: its window then belongs to the thread of the application.
HRESULT CaptureGraphBuilder::ShowPictures(IPin& pin) {
  ComPtr<IBaseFilter> renderer;
  HRESULT result = AddNew(CLSID_VideoRenderer, L"Video Renderer", renderer);
  if (FAILED(result)) return result;
  const ComPtr<IPin> last = MixCaptionsInto(pin);
  result = ConnectTo(*last.Get(), *renderer.Get());
  if (SUCCEEDED(result)) return result;
  graph->RemoveFilter(renderer.Get());
  if (last.Get() != &pin) graph->RemoveFilter(FilterOf(*last.Get()).Get());  // the mixer
  return result;
}

HRESULT CaptureGraphBuilder::RenderPin(IPin& pin, IBaseFilter* compressor, IBaseFilter* renderer) {
  ComPtr<IPin> last = ComPtr<IPin>::Share(&pin);
  if (compressor != nullptr) {
    if (const HRESULT result = ConnectTo(pin, *compressor); FAILED(result)) return result;
    last = FreePin(*compressor, nullptr);
    if (!last) return VFW_E_NOT_FOUND;
  }
  if (renderer != nullptr) return ConnectTo(*last.Get(), *renderer);
  return IsPictures(*last.Get()) ? ShowPictures(*last.Get()) : graph->Render(last.Get());
}

// A filter without a preview pin: a tee goes behind its capture pin. Answers the tee's pin of the category.
HRESULT CaptureGraphBuilder::SplitCapturePin(IBaseFilter& filter, const GUID& category, ComPtr<IPin>& pin) {
  const ComPtr<IPin> capture = FindPin(filter, PINDIR_OUTPUT, &PIN_CATEGORY_CAPTURE);
  if (!capture) return VFW_E_NOT_FOUND;
  ComPtr<IBaseFilter> tee;
  if (const ComPtr<IPin> peer = PeerOf(*capture.Get())) {
    tee = FilterOf(*peer.Get());
    CLSID id{};
    if (!tee || FAILED(tee->GetClassID(&id)) || id != CLSID_SmartTee) return E_INVALIDARG;
  } else {
    HRESULT result = AddNew(CLSID_SmartTee, L"Smart Tee", tee);
    if (FAILED(result)) return result;
    result = ConnectTo(*capture.Get(), *tee.Get());
    if (FAILED(result)) {
      graph->RemoveFilter(tee.Get());
      return result;
    }
  }
  ComPtr<IPin> found;
  const HRESULT result =
      tee->FindPin(category == PIN_CATEGORY_PREVIEW ? L"Preview" : L"Capture", found.Receive());
  if (FAILED(result)) return result;
  if (PeerOf(*found.Get())) return E_INVALIDARG;
  pin = found;
  return S_OK;
}

HRESULT CaptureGraphBuilder::RenderStream(const GUID* category, IUnknown* source, IBaseFilter* compressor,
                                          IBaseFilter* renderer) {
  if (source == nullptr) return E_POINTER;
  if (!graph) return E_UNEXPECTED;
  const auto given = ComPtr<IUnknown>::Share(source);
  if (const auto pin = given.As<IPin>()) return RenderPin(*pin.Get(), compressor, renderer);
  const auto filter = given.As<IBaseFilter>();
  if (!filter) return E_NOINTERFACE;
  if (const ComPtr<IPin> pin = FreePin(*filter.Get(), category))
    return RenderPin(*pin.Get(), compressor, renderer);
  const bool preview = category != nullptr && *category == PIN_CATEGORY_PREVIEW;
  const bool capture = category != nullptr && *category == PIN_CATEGORY_CAPTURE;
  const bool hasPreviewPin = static_cast<bool>(FindPin(*filter.Get(), PINDIR_OUTPUT, &PIN_CATEGORY_PREVIEW));
  if ((!preview && !capture) || hasPreviewPin) return E_INVALIDARG;
  ComPtr<IPin> pin;
  HRESULT result = SplitCapturePin(*filter.Get(), *category, pin);
  if (SUCCEEDED(result)) result = RenderPin(*pin.Get(), compressor, renderer);
  return result == S_OK && preview ? VFW_S_NOPREVIEWPIN : result;
}

HRESULT CaptureGraphBuilder::ControlStream(const GUID* category, IBaseFilter* filter, REFERENCE_TIME* start,
                                           REFERENCE_TIME* stop, WORD startCookie, WORD stopCookie) {
  if (!graph) return E_UNEXPECTED;
  std::vector<ComPtr<IBaseFilter>> filters;
  if (filter != nullptr) {
    filters.push_back(ComPtr<IBaseFilter>::Share(filter));
  } else {
    filters = FiltersOf(*graph.Get());
  }
  HRESULT result = E_FAIL;
  for (const ComPtr<IBaseFilter>& each : filters) {
    for (const ComPtr<IPin>& pin : PinsOf(*each.Get())) {
      if (DirectionOf(*pin.Get()) != PINDIR_OUTPUT) continue;
      if (category != nullptr && CategoryOf(*pin.Get()) != *category) continue;
      const HRESULT told = ControlPin(*pin.Get(), start, stop, startCookie, stopCookie);
      if (SUCCEEDED(told)) result = S_OK;
    }
  }
  return result;
}

}  // namespace quorvex
