#include "devices/tv/caption_chain.h"

#include <uuids.h>

#include "devices/tv/device_category.h"
#include "devices/tv/pins.h"
#include "panel/main_window.h"

namespace quorvex {
namespace {

constexpr char kNoCaptions[] = "This graph cannot CC!";

void BindListed(const char* category, const char* name, ComPtr<IBaseFilter>& filter) {
  FindFilterByName(FindFilterByName(CLSID_ActiveMovieCategories, category, nullptr), name, &filter);
}

void Create(REFCLSID id, ComPtr<IBaseFilter>& filter) {
  ::CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IBaseFilter, filter.ReceiveVoid());
}

bool AddFilter(IGraphBuilder& graph, const ComPtr<IBaseFilter>& filter) {
  return filter && SUCCEEDED(graph.AddFilter(filter.Get(), nullptr));
}

}  // namespace

ComPtr<IAMLine21Decoder> CaptionChain::AddTo(IGraphBuilder& graph) {
  Release();
  ComPtr<IAMLine21Decoder> decoder;
  BindListed("WDM Streaming Tee/Splitter Devices", "Tee/Sink-to-Sink Converter", tee);
  if (!AddFilter(graph, tee)) return decoder;
  BindListed("WDM Streaming VBI Codecs", "CC Decoder", dataDecoder);
  if (!AddFilter(graph, dataDecoder)) return decoder;
  Create(kClsidLine21Decoder, lineDecoder);
  if (!AddFilter(graph, lineDecoder)) return decoder;
  Create(CLSID_VBISurfaces, surfaces);
  if (!AddFilter(graph, surfaces)) return decoder;
  lineDecoder->QueryInterface(kIidLine21Decoder, decoder.ReceiveVoid());
  return decoder;
}

void CaptionChain::Connect(IGraphBuilder& graph, IBaseFilter& card) const {
  const auto input = [](const ComPtr<IBaseFilter>& filter) {
    return FindPinByName(filter.Get(), PINDIR_INPUT);
  };
  const auto output = [](const ComPtr<IBaseFilter>& filter) {
    return FindPinByName(filter.Get(), PINDIR_OUTPUT);
  };
  // A link that does not come about is seen in the end, where there is nothing to render.
  ConnectPins(graph, FindPinByName(&card, PINDIR_OUTPUT, "VBI"), input(tee));
  ConnectPins(graph, output(tee), input(dataDecoder));
  ConnectPins(graph, output(dataDecoder), input(lineDecoder));
  const ComPtr<IPin> captions = output(lineDecoder);
  const bool shown =
      captions && SUCCEEDED(graph.Render(captions.Get())) &&
      SUCCEEDED(ConnectPins(graph, FindPinByName(&card, PINDIR_OUTPUT, "VPVBI"), input(surfaces)));
  if (!shown) ReportError(kNoCaptions);
}

void CaptionChain::Release() {
  lineDecoder.Reset();
  dataDecoder.Reset();
  tee.Reset();
  surfaces.Reset();
}

}  // namespace quorvex
