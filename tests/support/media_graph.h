// A filter graph with a media file in it, as any program makes one.
#pragma once

#include <windows.h>

#include <dshow.h>

#include <string>
#include <vector>

#include "base/com_ptr.h"
#include "tests/support/recording_sink.h"

namespace quorvex {

// {A2C5C3E4-6E0B-4F5B-9D43-51D3E8B0A7F1}: the class that the platform is to find for media files.
constexpr CLSID kMediaSourceUnderTest = {
    0xa2c5c3e4, 0x6e0b, 0x4f5b, {0x9d, 0x43, 0x51, 0xd3, 0xe8, 0xb0, 0xa7, 0xf1}};

class MediaGraph {
 public:
  MediaGraph() {
    ::CoCreateInstance(CLSID_FilterGraph, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IGraphBuilder),
                       graph.ReceiveVoid());
    control = graph.As<IMediaControl>();
    seeking = graph.As<IMediaSeeking>();
    // The platform's headers give this interface no number for As.
    graph->QueryInterface(IID_IMediaEvent, events.ReceiveVoid());
  }
  MediaGraph(const MediaGraph&) = delete;
  MediaGraph& operator=(const MediaGraph&) = delete;
  ~MediaGraph() {
    if (graph) control->Stop();
  }

  // Puts sinks of our own into the graph, which RenderFile will use.
  void AddSinks() {
    pictures = ComPtr<RecordingSink>::Attach(new RecordingSink(MEDIATYPE_Video));
    sounds = ComPtr<RecordingSink>::Attach(new RecordingSink(MEDIATYPE_Audio));
    graph->AddFilter(pictures.Get(), L"pictures");
    graph->AddFilter(sounds.Get(), L"sounds");
  }

  HRESULT Render(const std::wstring& path) const { return graph->RenderFile(path.c_str(), nullptr); }

  // The first filter of this class; null when there is none.
  [[nodiscard]] ComPtr<IBaseFilter> FilterOf(const CLSID& wanted) const {
    ComPtr<IEnumFilters> filters;
    graph->EnumFilters(filters.Receive());
    ComPtr<IBaseFilter> filter;
    while (filters->Next(1, filter.Receive(), nullptr) == S_OK) {
      CLSID id{};
      if (SUCCEEDED(filter->GetClassID(&id)) && id == wanted) return filter;
    }
    return nullptr;
  }

  // Waits until the graph is in the state that was asked for.
  [[nodiscard]] bool Settles(DWORD limitMs = 5000) const {
    OAFilterState state = State_Stopped;
    return control->GetState(static_cast<LONG>(limitMs), &state) == S_OK;
  }

  [[nodiscard]] HRESULT Seek(LONGLONG to) const {
    return seeking->SetPositions(&to, AM_SEEKING_AbsolutePositioning, nullptr, AM_SEEKING_NoPositioning);
  }

  [[nodiscard]] LONGLONG Position() const {
    LONGLONG position = -1;
    seeking->GetCurrentPosition(&position);
    return position;
  }

  // Whether the graph tells of its end within the limit.
  [[nodiscard]] bool Completes(long limitMs) const {
    long code = 0;
    return events->WaitForCompletion(limitMs, &code) == S_OK && code == EC_COMPLETE;
  }

  // Lets everything go; the graph's last count.
  ULONG Release() {
    control->Stop();
    control.Reset();
    seeking.Reset();
    events.Reset();
    return graph.Detach()->Release();
  }

  ComPtr<IGraphBuilder> graph;
  ComPtr<IMediaControl> control;
  ComPtr<IMediaSeeking> seeking;
  ComPtr<IMediaEvent> events;
  ComPtr<RecordingSink> pictures;
  ComPtr<RecordingSink> sounds;
};

}  // namespace quorvex
