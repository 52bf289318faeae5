// The filter graph of a DVD, as far as a device looks at it.
#pragma once

#include <windows.h>

#include <strmif.h>

#include <control.h>

#include "tests/support/com_fake.h"
#include "tests/support/fake_renderer.h"
#include "tests/support/graph_parts.h"
#include "tests/support/queued_events.h"

namespace quorvex {

// What the graph has: it outlives the graph.
struct GraphScript : ComScript, EventQueue {
  FakeRenderer renderer{"SomeRenderer", this};
  long width = 720;
  long height = 480;

  GraphScript() = default;
  GraphScript(const GraphScript&) = delete;
  GraphScript& operator=(const GraphScript&) = delete;
  ~GraphScript() {
    EXPECT_EQ(alive, 0) << "somebody still holds a part of the graph";
    EXPECT_EQ(renderer.references, 1U);
    EXPECT_EQ(unfreedEvents, 0);
  }
};

class FakeDvdGraph : public ComFake<GraphScript, NoGraphBuilder, NoMediaControl, QueuedEvents, NoMediaSeeking,
                                    NoBasicAudio, NoDispatch<IBasicVideo>> {
 public:
  explicit FakeDvdGraph(GraphScript& itsScript)
      : ComFake(itsScript, "graph",
                {{{IID_IGraphBuilder, "IID_IGraphBuilder"},
                  {IID_IMediaControl, "IID_IMediaControl"},
                  {IID_IMediaEventEx, "IID_IMediaEventEx"},
                  {IID_IMediaSeeking, "IID_IMediaSeeking"},
                  {IID_IBasicAudio, "IID_IBasicAudio"},
                  {IID_IBasicVideo, "IID_IBasicVideo"}}}) {}

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (iid != IID_IVideoWindow) return ComFake::QueryInterface(iid, object);
    *object = nullptr;
    const HRESULT result = script.Answer("IID_IVideoWindow");
    if (FAILED(result)) return result;
    script.renderer.AddRef();
    *object = &script.renderer;
    return result;
  }

  // IMediaControl
  STDMETHODIMP Run() override { return script.Call("Run"); }
  STDMETHODIMP Pause() override { return script.Call("Pause"); }
  STDMETHODIMP Stop() override { return script.Call("Stop"); }
  STDMETHODIMP GetState(LONG limit, OAFilterState*) override {
    return script.Call("GetState", std::to_string(limit));
  }
  // IMediaEventEx
  STDMETHODIMP SetNotifyWindow(OAHWND window, long message, LONG_PTR data) override {
    const char* to = window == 0 ? "none" : window == reinterpret_cast<OAHWND>(mainWindow) ? "panel" : "?";
    return script.Call("SetNotifyWindow",
                       to + (' ' + std::to_string(message)) + ' ' + std::to_string(static_cast<int>(data)));
  }
  EventQueue& Queue() override { return script; }

  // IMediaSeeking
  STDMETHODIMP SetPositions(LONGLONG* start, DWORD startFlags, LONGLONG*, DWORD stopFlags) override {
    return script.Call("SetPositions", std::to_string(*start) + ' ' + std::to_string(startFlags) + ' ' +
                                           std::to_string(stopFlags));
  }

  // IBasicVideo
  STDMETHODIMP get_VideoWidth(long* width) override {
    return script.Tell("get_VideoWidth", width, script.width);
  }
  STDMETHODIMP get_VideoHeight(long* height) override {
    return script.Tell("get_VideoHeight", height, script.height);
  }
  QUORVEX_UNEXPECTED(get_AvgTimePerFrame, REFTIME*)
  QUORVEX_UNEXPECTED(get_BitRate, long*)
  QUORVEX_UNEXPECTED(get_BitErrorRate, long*)
  QUORVEX_UNEXPECTED_PROPERTY(SourceLeft, long)
  QUORVEX_UNEXPECTED_PROPERTY(SourceWidth, long)
  QUORVEX_UNEXPECTED_PROPERTY(SourceTop, long)
  QUORVEX_UNEXPECTED_PROPERTY(SourceHeight, long)
  QUORVEX_UNEXPECTED_PROPERTY(DestinationLeft, long)
  QUORVEX_UNEXPECTED_PROPERTY(DestinationWidth, long)
  QUORVEX_UNEXPECTED_PROPERTY(DestinationTop, long)
  QUORVEX_UNEXPECTED_PROPERTY(DestinationHeight, long)
  QUORVEX_UNEXPECTED(SetSourcePosition, long, long, long, long)
  QUORVEX_UNEXPECTED(GetSourcePosition, long*, long*, long*, long*)
  QUORVEX_UNEXPECTED(SetDefaultSourcePosition)
  QUORVEX_UNEXPECTED(SetDestinationPosition, long, long, long, long)
  QUORVEX_UNEXPECTED(GetDestinationPosition, long*, long*, long*, long*)
  QUORVEX_UNEXPECTED(SetDefaultDestinationPosition)
  QUORVEX_UNEXPECTED(GetVideoSize, long*, long*)
  QUORVEX_UNEXPECTED(GetVideoPaletteEntries, long, long, long*, long*)
  QUORVEX_UNEXPECTED(GetCurrentImage, long*, long*)
  QUORVEX_UNEXPECTED(IsUsingDefaultSource)
  QUORVEX_UNEXPECTED(IsUsingDefaultDestination)
};

}  // namespace quorvex
