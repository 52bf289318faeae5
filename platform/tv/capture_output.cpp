// What the capture graph builder does with files: the filters that write one, its space, copies of it, and
// what was cut off in it.
#include <windows.h>

#include <uuids.h>

#include "platform/tv/avi_mux.h"
#include "platform/tv/capture_copy.h"
#include "platform/tv/capture_graph_builder.h"
#include "platform/tv/capture_recovery.h"
#include "platform/tv/capture_space.h"
#include "platform/tv/file_writer.h"
#include "platform/tv/graph_walk.h"

namespace quorvex {
namespace {

HRESULT Connect(IFilterGraph& graph, IBaseFilter& multiplexer, IBaseFilter& writer) {
  const ComPtr<IPin> from = FindPin(multiplexer, PINDIR_OUTPUT, nullptr);
  const ComPtr<IPin> to = FindPin(writer, PINDIR_INPUT, nullptr);
  return from && to ? graph.ConnectDirect(from.Get(), to.Get(), nullptr) : E_FAIL;
}

}  // namespace

HRESULT CaptureGraphBuilder::AddFileWriter(LPCOLESTR file, ComPtr<IBaseFilter>& multiplexer,
                                           ComPtr<IBaseFilter>& writer) {
  HRESULT result = AddNew(kFileWriterClass, L"File Writer", writer);
  const auto sink = writer.As<IFileSinkFilter>();
  if (SUCCEEDED(result)) result = sink->SetFileName(file, nullptr);
  if (SUCCEEDED(result)) result = AddNew(kAviMuxClass, L"AVI Mux", multiplexer);
  return SUCCEEDED(result) ? Connect(*graph.Get(), *multiplexer.Get(), *writer.Get()) : result;
}

HRESULT CaptureGraphBuilder::SetOutputFileName(const GUID* type, LPCOLESTR file, IBaseFilter** multiplexer,
                                               IFileSinkFilter** sink) {
  if (type == nullptr || file == nullptr || multiplexer == nullptr) return E_POINTER;
  *multiplexer = nullptr;
  if (sink != nullptr) *sink = nullptr;
  if (*type != MEDIASUBTYPE_Avi) return E_INVALIDARG;
  if (!graph) return E_UNEXPECTED;
  ComPtr<IBaseFilter> made;
  ComPtr<IBaseFilter> writer;
  const HRESULT result = AddFileWriter(file, made, writer);
  if (FAILED(result)) {
    if (made) graph->RemoveFilter(made.Get());
    if (writer) graph->RemoveFilter(writer.Get());
    return result;
  }
  if (sink != nullptr) *sink = writer.As<IFileSinkFilter>().Detach();
  *multiplexer = made.Detach();
  return S_OK;
}

HRESULT CaptureGraphBuilder::AllocCapFile(LPCOLESTR file, DWORDLONG size) {
  return file != nullptr ? AllocateFile(file, size) : E_POINTER;
}

HRESULT CaptureGraphBuilder::CopyCaptureFile(LPOLESTR from, LPOLESTR to, int allowEscape,
                                             IAMCopyCaptureFileProgress* progress) {
  if (from == nullptr || to == nullptr) return E_POINTER;
  return CopyMovie(from, to, allowEscape != 0, progress);
}

HRESULT CaptureGraphBuilder::Recover(LPCOLESTR file, LONGLONG* length) {
  return file != nullptr && length != nullptr ? RecoverRecording(file, *length) : E_POINTER;
}

}  // namespace quorvex
