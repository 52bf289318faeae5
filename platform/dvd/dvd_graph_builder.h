// IDvdGraphBuilder: builds the filter graph that plays a DVD-Video disc, and hands out what it is worked by.
#pragma once

#include <windows.h>

#include "platform/dvd/dvd_interfaces.h"

#include "base/com_ptr.h"
#include "platform/common/com_object.h"
#include "platform/dvd/opened_disc.h"

namespace quorvex {

class DvdSource;

class DvdGraphBuilder final : public ComObject<IDvdGraphBuilder> {
 public:
  DvdGraphBuilder() = default;

  // The graph, also before a disc is rendered.
  HRESULT STDMETHODCALLTYPE GetFiltergraph(IGraphBuilder** wanted) override;

  // Of the disc: IDvdControl, IDvdInfo, IAMLine21Decoder; of the graph: IVideoWindow, IBasicVideo,
  // IBasicAudio.
  HRESULT STDMETHODCALLTYPE GetDvdInterface(REFIID iid, void** object) override;

  // `path`: an image or a folder; null for the disc in the drive. S_FALSE when not all of it could be
  // rendered; the status tells what is wrong.
  HRESULT STDMETHODCALLTYPE RenderDvdVideoVolume(LPCWSTR path, DWORD flags,
                                                 AM_DVD_RENDERSTATUS* status) override;

 protected:
  ~DvdGraphBuilder() override;

 private:
  HRESULT MakeGraph();
  HRESULT Render(OpenedDisc disc, AM_DVD_RENDERSTATUS& status);
  HRESULT RenderPictures(IPin& pin, bool intoPlainRenderer);
  void TakeDown();

  ComPtr<IGraphBuilder> graph;
  ComPtr<IBaseFilter> source;
};

}  // namespace quorvex
