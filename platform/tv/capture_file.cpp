// Capture files: made of their full size beforehand, and copied without what is left over.
#include "platform/tv/capture_graph_builder.h"

namespace quorvex {

HRESULT CaptureGraphBuilder::SetOutputFileName(const GUID*, LPCOLESTR, IBaseFilter**, IFileSinkFilter**) {
  return E_NOTIMPL;
}
HRESULT CaptureGraphBuilder::AllocCapFile(LPCOLESTR, DWORDLONG) { return E_NOTIMPL; }
HRESULT CaptureGraphBuilder::CopyCaptureFile(LPOLESTR, LPOLESTR, int, IAMCopyCaptureFileProgress*) {
  return E_NOTIMPL;
}

}  // namespace quorvex
