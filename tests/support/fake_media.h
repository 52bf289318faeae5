// The platform's filter graph of media files that does as its test says, with the plain renderer, both found
// by CoCreateInstance while this lives.
#pragma once

#include <windows.h>

#include <strmif.h>
#include <uuids.h>
#include <vfwmsgs.h>

#include "base/com_ptr.h"
#include "tests/support/fake_dvd_graph.h"
#include "tests/support/fake_filters.h"

namespace quorvex {

struct MediaScript : GraphScript {
  bool hasPicture = true;  // the next file
  LONGLONG duration = 100'000'000;
};

// A renderer that nobody has put into it, it makes itself.
class FakeFileGraph final : public FakeDvdGraph {
 public:
  explicit FakeFileGraph(MediaScript& itsScript) : FakeDvdGraph(itsScript), media(itsScript) {}

  STDMETHODIMP AddFilter(IBaseFilter* filter, LPCWSTR) override {
    const HRESULT result = media.Call("AddFilter");
    if (SUCCEEDED(result)) shown = ComPtr<FakeFilter>::Share(static_cast<FakeFilter*>(filter));
    return result;
  }
  STDMETHODIMP RemoveFilter(IBaseFilter* filter) override {
    EXPECT_EQ(filter, shown.Get()) << "nobody has put it in";
    const HRESULT result = media.Call("RemoveFilter");
    if (FAILED(result)) return result;
    shown->Pin("In").Part();
    shown.Reset();
    return result;
  }
  STDMETHODIMP RenderFile(LPCWSTR, LPCWSTR list) override {
    EXPECT_EQ(list, nullptr);
    const HRESULT result = media.Call("RenderFile");
    if (FAILED(result) || !media.hasPicture) return result;
    if (!shown)
      shown = ComPtr<FakeFilter>::Attach(new FakeFilter(media, "own renderer", {{"In", PINDIR_INPUT}}));
    source->Pin("Out").Join(shown->Pin("In"));
    return result;
  }

  STDMETHODIMP GetVideoSize(long* itsWidth, long* itsHeight) override {
    const HRESULT result = media.Answer("GetVideoSize");
    if (FAILED(result)) return result;
    if (!shown || shown->Pin("In").peer == nullptr) return VFW_E_NOT_CONNECTED;
    *itsWidth = media.width;
    *itsHeight = media.height;
    return result;
  }
  STDMETHODIMP SetTimeFormat(const GUID* format) override {
    EXPECT_EQ(*format, TIME_FORMAT_MEDIA_TIME);
    return media.Call("SetTimeFormat");
  }
  STDMETHODIMP GetDuration(LONGLONG* time) override {
    return media.Tell("GetDuration", time, media.duration);
  }
  STDMETHODIMP GetCurrentPosition(LONGLONG* time) override {
    return media.Tell("GetCurrentPosition", time, LONGLONG{0});
  }

 private:
  MediaScript& media;
  ComPtr<FakeFilter> source =
      ComPtr<FakeFilter>::Attach(new FakeFilter(media, "source", {{"Out", PINDIR_OUTPUT}}));
  ComPtr<FakeFilter> shown;
};

class FakeMedia final : public MediaScript {
  FakeClass graphs{CLSID_FilterGraph, [this](REFIID, void** object) {
                     const HRESULT result = Call("Create graph");
                     if (SUCCEEDED(result)) *object = static_cast<IGraphBuilder*>(new FakeFileGraph(*this));
                     return result;
                   }};
  FakeClass renderers{CLSID_VideoRenderer, [this](REFIID, void** object) {
                        const HRESULT result = Call("Create renderer");
                        if (SUCCEEDED(result))
                          *object = new FakeFilter(*this, "renderer", {{"In", PINDIR_INPUT}});
                        return result;
                      }};
};

}  // namespace quorvex
