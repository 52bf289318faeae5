// A DVD in a filter graph, as any program plays one: built by the platform's DVD graph builder, worked by its
// interfaces, its events noted.
#pragma once

#include <windows.h>

#include <dshow.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/com_ptr.h"
#include "base/line21_interface.h"
#include "platform/dvd/dvd_interfaces.h"
#include "tests/support/disc_marks.h"
#include "tests/support/recording_sink.h"

namespace quorvex {

inline std::wstring DiscPath(const std::string& name) {
  return (std::filesystem::path(QUORVEX_TEST_DISCS) / name).wstring();
}

class DvdGraph {
 public:
  struct Event {
    long code;
    LONG_PTR first;
    LONG_PTR second;
  };

  // With renderers that only note what arrives, or with the platform's own.
  explicit DvdGraph(bool withSinks = true) {
    ::CoCreateInstance(CLSID_DvdGraphBuilder, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IDvdGraphBuilder),
                       builder.ReceiveVoid());
    builder->GetFiltergraph(graph.Receive());
    mediaControl = graph.As<IMediaControl>();
    graph->QueryInterface(IID_IMediaEvent, mediaEvents.ReceiveVoid());
    if (!withSinks) return;
    pictures = ComPtr<RecordingSink>::Attach(new RecordingSink(MEDIATYPE_Video));
    sounds = ComPtr<RecordingSink>::Attach(new RecordingSink(MEDIATYPE_Audio));
    graph->AddFilter(pictures.Get(), L"pictures");
    graph->AddFilter(sounds.Get(), L"sounds");
  }
  DvdGraph(const DvdGraph&) = delete;
  DvdGraph& operator=(const DvdGraph&) = delete;
  ~DvdGraph() {
    if (mediaControl) mediaControl->Stop();
  }

  // Renders a disc of the tests; empty: the disc in the drive.
  HRESULT Open(const std::string& name) {
    const std::wstring path = DiscPath(name);
    const HRESULT result = builder->RenderDvdVideoVolume(name.empty() ? nullptr : path.c_str(), 1, &status);
    if (FAILED(result)) return result;
    builder->GetDvdInterface(__uuidof(IDvdControl), control.ReceiveVoid());
    builder->GetDvdInterface(__uuidof(IDvdInfo), info.ReceiveVoid());
    builder->GetDvdInterface(kIidLine21Decoder, captions.ReceiveVoid());
    return result;
  }

  HRESULT Run() const { return mediaControl->Run(); }

  // Waits until `done`, noting the events that come.
  bool Until(const std::function<bool()>& done, int limitMs = 4000) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(limitMs);
    for (;;) {
      Drain();
      if (done()) return true;
      if (std::chrono::steady_clock::now() > end) return false;
      ::Sleep(5);
    }
  }
  void Wait(int milliseconds) {
    Until([] { return false; }, milliseconds);
  }

  // Whether such an event has come since Forget.
  [[nodiscard]] bool Has(long code, std::optional<LONG_PTR> first = std::nullopt) const {
    return std::any_of(events.begin(), events.end(), [&](const Event& event) {
      return event.code == code && (!first || event.first == *first);
    });
  }
  bool Tells(long code, std::optional<LONG_PTR> first = std::nullopt, int limitMs = 4000) {
    return Until([&] { return Has(code, first); }, limitMs);
  }
  void Forget() {
    Drain();
    events.clear();
  }

  // The picture that was delivered last.
  [[nodiscard]] std::optional<DiscMarks> Shown() const { return pictures->LastMarks(); }

  // Whether a picture of that film and chapter comes.
  bool Shows(int film, int chapter, int limitMs = 4000) {
    return Until(
        [&] {
          const std::optional<DiscMarks> marks = Shown();
          return marks && marks->film == film && marks->chapter == chapter;
        },
        limitMs);
  }

  // Lets everything go; the last count of the builder.
  ULONG Release() {
    mediaControl->Stop();
    mediaControl.Reset();
    mediaEvents.Reset();
    graph.Reset();
    info.Reset();
    control.Reset();
    captions.Reset();
    return builder.Detach()->Release();
  }

  ComPtr<IDvdGraphBuilder> builder;
  ComPtr<IGraphBuilder> graph;
  ComPtr<IMediaControl> mediaControl;
  ComPtr<IMediaEvent> mediaEvents;
  ComPtr<IDvdControl> control;
  ComPtr<IDvdInfo> info;
  ComPtr<IAMLine21Decoder> captions;
  ComPtr<RecordingSink> pictures;
  ComPtr<RecordingSink> sounds;
  AM_DVD_RENDERSTATUS status{};
  std::vector<Event> events;

 private:
  void Drain() {
    Event event{};
    while (mediaEvents->GetEvent(&event.code, &event.first, &event.second, 0) == S_OK) {
      events.push_back(event);
      mediaEvents->FreeEventParams(event.code, event.first, event.second);
    }
  }
};

}  // namespace quorvex
