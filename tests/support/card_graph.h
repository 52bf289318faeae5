// The virtual capture cards as any program meets them: plugged in for a test, found by the platform's device
// enumerator, in a filter graph with a sink that looks at their pictures.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <dshow.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "base/com_ptr.h"
#include "base/geometry.h"
#include "platform/tv/card_table.h"
#include "platform/tv/graph_walk.h"
#include "platform/tv/shared_card.h"
#include "platform/tv/stations.h"
#include "tests/support/disc_marks.h"
#include "tests/support/media_graph.h"

namespace quorvex {

// Plugs cards in; afterwards none is, and nothing is ordered to go wrong.
class PluggedCards {
 public:
  explicit PluggedCards(std::vector<CardKind> kinds = {CardKind::kTv}) {
    Reset();
    for (const CardTraits& traits : kCards) {
      if (std::find(kinds.begin(), kinds.end(), traits.kind) != kinds.end()) PlugIn(*card, traits);
    }
  }
  PluggedCards(const PluggedCards&) = delete;
  PluggedCards& operator=(const PluggedCards&) = delete;
  ~PluggedCards() { Reset(); }

  CardState* operator->() const { return &*card; }

  void PullOut(const CardTraits& traits) const { PlugOut(*card, traits); }

 private:
  void Reset() const {
    for (const CardTraits& traits : kCards) PlugOut(*card, traits);
    new (&*card) CardState;
  }

  SharedCard card;
};

// The user's list of stations, as a test wants it; afterwards it is as it is when nobody has edited it.
class StationList {
 public:
  explicit StationList(std::string_view text) { Write(text); }
  StationList(const StationList&) = delete;
  StationList& operator=(const StationList&) = delete;
  ~StationList() { Write(kFirstStations); }

 private:
  static void Write(std::string_view text) {
    std::ofstream(std::filesystem::path(SharedFilePath(L"channels.txt")), std::ios::binary) << text;
  }
};

// The names that the platform lists in a category.
inline std::vector<std::wstring> NamesIn(const GUID& category, const std::wstring& wanted = {},
                                         ComPtr<IBaseFilter>* bound = nullptr) {
  std::vector<std::wstring> names;
  ComPtr<ICreateDevEnum> devices;
  ComPtr<IEnumMoniker> monikers;
  ::CoCreateInstance(CLSID_SystemDeviceEnum, nullptr, CLSCTX_INPROC_SERVER, IID_ICreateDevEnum,
                     devices.ReceiveVoid());
  if (devices->CreateClassEnumerator(category, monikers.Receive(), 0) != S_OK) return names;
  ComPtr<IMoniker> moniker;
  while (monikers->Next(1, moniker.Receive(), nullptr) == S_OK) {
    ComPtr<IPropertyBag> properties;
    VARIANT name;
    ::VariantInit(&name);
    moniker->BindToStorage(nullptr, nullptr, IID_IPropertyBag, properties.ReceiveVoid());
    if (properties && properties->Read(L"FriendlyName", &name, nullptr) == S_OK)
      names.emplace_back(name.bstrVal);
    ::VariantClear(&name);
    if (bound != nullptr && !names.empty() && names.back() == wanted)
      moniker->BindToObject(nullptr, nullptr, __uuidof(IBaseFilter), bound->ReceiveVoid());
  }
  return names;
}

inline ComPtr<IBaseFilter> FilterNamed(const GUID& category, const std::wstring& name) {
  ComPtr<IBaseFilter> filter;
  NamesIn(category, name, &filter);
  return filter;
}

// A picture that came, as a reader of its marks sees it.
struct SeenPicture {
  std::optional<DiscMarks> marks;  // picture: its number; film: the channel; chapter: the input
  std::int64_t begin = 0;
  std::int64_t end = 0;
  double red = 0;  // means of the first two colour bars
  double green = 0;
  double blue = 0;
};

inline SeenPicture LookAt(const PictureView& view) {
  SeenPicture seen{.marks = ReadDiscMarks(view)};
  int pixels = 0;
  for (int y = view.height / 8; y < view.height * 3 / 4; y += 2) {
    for (int x = 0; x < view.width * 2 / 7; x += 2, ++pixels) {
      const std::uint8_t* pixel = view.top + y * view.stride + x * 4;
      seen.blue += pixel[0];
      seen.green += pixel[1];
      seen.red += pixel[2];
    }
  }
  for (double* sum : {&seen.red, &seen.green, &seen.blue}) *sum /= pixels;
  return seen;
}

// A sample's pixels, 32 bits each with the top line first, whatever its layout (of YUY2 only the luminance).
inline std::vector<std::uint8_t> Pixels(IMediaSample& sample, const MediaType& type, Size& size) {
  const BITMAPINFOHEADER& bitmap = type.Picture()->bmiHeader;
  size = {static_cast<int>(bitmap.biWidth), static_cast<int>(bitmap.biHeight)};
  const int bytes = bitmap.biBitCount / 8;
  const bool luminance = type.Get().subtype == MEDIASUBTYPE_YUY2;
  BYTE* data = nullptr;
  sample.GetPointer(&data);
  std::vector<std::uint8_t> pixels;
  for (int y = 0; y < size.height; ++y) {
    const BYTE* line = data + static_cast<std::ptrdiff_t>(luminance ? y : size.height - 1 - y) *
                                  ((size.width * bytes + 3) / 4 * 4);
    for (int x = 0; x < size.width; ++x) {
      for (int i = 0; i < 3; ++i) pixels.push_back(line[x * bytes + (luminance ? 0 : i)]);
      pixels.push_back(0);
    }
  }
  return pixels;
}

class CardGraph : public MediaGraph {
 public:
  explicit CardGraph(const CardTraits& traits = kCards[0])
      : card(FilterNamed(CLSID_VideoInputDeviceCategory, traits.name)) {
    if (card) graph->AddFilter(card.Get(), L"card");
  }

  [[nodiscard]] ComPtr<IPin> Pin(const GUID& category) const {
    return FindPin(*card.Get(), PINDIR_OUTPUT, &category);
  }

  // Connects a pin to a sink that looks at every picture.
  HRESULT Watch(const GUID& category) {
    pictures = ComPtr<RecordingSink>::Attach(new RecordingSink(MEDIATYPE_Video));
    pictures->atSample = [this](IMediaSample& sample, const MediaType& type) { Note(sample, type); };
    graph->AddFilter(pictures.Get(), L"sink");
    return graph->ConnectDirect(Pin(category).Get(), PinsOf(*pictures.Get()).front().Get(), nullptr);
  }

  void Run() const { EXPECT_GE(control->Run(), 0); }

  std::vector<SeenPicture> Seen() {
    const std::scoped_lock guard(lock);
    return seen;
  }

  // Waits for a picture that agrees; how long that took in milliseconds, -1 when none comes within the limit.
  template <typename Agrees>
  int WaitFor(Agrees agrees, DWORD limitMs = 3000) {
    const ULONGLONG begin = ::GetTickCount64();
    while (::GetTickCount64() < begin + limitMs) {
      {
        const std::scoped_lock guard(lock);
        if (!seen.empty() && agrees(seen.back())) return static_cast<int>(::GetTickCount64() - begin);
      }
      ::Sleep(2);
    }
    return -1;
  }

  int WaitForChannel(int channel, DWORD limitMs = 3000) {
    return WaitFor([=](const SeenPicture& one) { return one.marks && one.marks->film == channel; }, limitMs);
  }

  ComPtr<IBaseFilter> card;
  Size size;  // of the last picture

 private:
  void Note(IMediaSample& sample, const MediaType& type) {
    Size shown;
    std::vector<std::uint8_t> pixels = Pixels(sample, type, shown);
    SeenPicture one =
        LookAt({pixels.data(), static_cast<std::ptrdiff_t>(shown.width) * 4, shown.width, shown.height});
    sample.GetTime(&one.begin, &one.end);
    const std::scoped_lock guard(lock);
    size = shown;
    seen.push_back(one);
  }

  std::mutex lock;  // guards seen and size
  std::vector<SeenPicture> seen;
};

}  // namespace quorvex
