// The platform's capture graph builder (CLSID_CaptureGraphBuilder): it renders a capture filter's streams and
// finds interfaces in a capture graph, whoever made the filters.
#pragma once

#include <windows.h>

#include <strmif.h>

#include "base/capture_recovery_interface.h"
#include "base/com_ptr.h"
#include "platform/common/com_object.h"

namespace quorvex {

class CaptureGraphBuilder final : public ComObject<ICaptureGraphBuilder, ICaptureRecovery> {
 public:
  // E_UNEXPECTED when there is a graph already.
  HRESULT STDMETHODCALLTYPE SetFiltergraph(IGraphBuilder* wanted) override;
  // Makes a graph when there is none.
  HRESULT STDMETHODCALLTYPE GetFiltergraph(IGraphBuilder** wanted) override;
  // Adds a multiplexer and a file writer for an AVI file (E_INVALIDARG for other types). Fails when the file
  // cannot be written.
  HRESULT STDMETHODCALLTYPE SetOutputFileName(const GUID* type, LPCOLESTR file, IBaseFilter** multiplexer,
                                              IFileSinkFilter** sink) override;
  // Looks at the filter, its pins of the category, then at what lies downstream of these and upstream of the
  // filter; LOOK_UPSTREAM_ONLY and LOOK_DOWNSTREAM_ONLY take the place of a category.
  HRESULT STDMETHODCALLTYPE FindInterface(const GUID* category, IBaseFilter* filter, REFIID iid,
                                          void** found) override;
  // Without a renderer pictures go to the plain renderer, sound to the system's. VFW_S_NOPREVIEWPIN when the
  // capture pin was split for the preview.
  HRESULT STDMETHODCALLTYPE RenderStream(const GUID* category, IUnknown* source, IBaseFilter* compressor,
                                         IBaseFilter* renderer) override;
  // For all filters of the graph when none is named. E_FAIL when no pin of the category can be controlled.
  HRESULT STDMETHODCALLTYPE ControlStream(const GUID* category, IBaseFilter* filter, REFERENCE_TIME* start,
                                          REFERENCE_TIME* stop, WORD startCookie, WORD stopCookie) override;
  // capture_space.h, capture_copy.h and ICaptureRecovery tell what these do.
  HRESULT STDMETHODCALLTYPE AllocCapFile(LPCOLESTR file, DWORDLONG size) override;
  HRESULT STDMETHODCALLTYPE CopyCaptureFile(LPOLESTR from, LPOLESTR to, int allowEscape,
                                            IAMCopyCaptureFileProgress* progress) override;
  HRESULT STDMETHODCALLTYPE Recover(LPCOLESTR file, LONGLONG* length) override;

 protected:
  ~CaptureGraphBuilder() override = default;

 private:
  HRESULT AddNew(const CLSID& id, const wchar_t* name, ComPtr<IBaseFilter>& made);
  HRESULT AddFileWriter(LPCOLESTR file, ComPtr<IBaseFilter>& multiplexer, ComPtr<IBaseFilter>& writer);
  HRESULT SplitCapturePin(IBaseFilter& filter, const GUID& category, ComPtr<IPin>& pin);
  HRESULT RenderPin(IPin& pin, IBaseFilter* compressor, IBaseFilter* renderer);
  HRESULT ConnectTo(IPin& pin, IBaseFilter& filter);
  HRESULT ShowPictures(IPin& pin);
  ComPtr<IPin> MixCaptionsInto(IPin& pin);

  ComPtr<IGraphBuilder> graph;
};

}  // namespace quorvex
