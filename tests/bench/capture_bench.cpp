// Records the virtual card as a capture application does, and works capture files. For tests/bench/all and
// the tests of whole recordings.
//
// capture_bench record FILE SECONDS WIDTH HEIGHT [MASTER]
//   prints frames, dropped, length and CPU, in ms
// capture_bench bare FILE SECONDS WIDTH HEIGHT
//   the same samples, written to a file by plain sinks
// capture_bench allocate FILE MEGABYTES
// capture_bench copy FROM TO
//   prints how long it took, in ms
// capture_bench recover FILE
//   prints the length in ms; nothing when there was none
#include <windows.h>

#include <dshow.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "base/capture_recovery_interface.h"
#include "base/com_ptr.h"
#include "platform/tv/capture_file.h"
#include "platform/tv/capture_type.h"
#include "platform/tv/graph_walk.h"
#include "tests/bench/bench.h"
#include "tests/support/card_graph.h"

namespace quorvex {
namespace {

std::wstring Wide(const char* text) {
  std::wstring wide(::MultiByteToWideChar(CP_UTF8, 0, text, -1, nullptr, 0), L'\0');
  ::MultiByteToWideChar(CP_UTF8, 0, text, -1, wide.data(), static_cast<int>(wide.size()));
  wide.pop_back();
  return wide;
}

class Graph {
 public:
  Graph() {
    ::CoCreateInstance(CLSID_CaptureGraphBuilder, nullptr, CLSCTX_INPROC_SERVER,
                       __uuidof(ICaptureGraphBuilder), builder.ReceiveVoid());
    builder->GetFiltergraph(graph.Receive());
    graph->QueryInterface(IID_IMediaControl, control.ReceiveVoid());
    card = FilterNamed(CLSID_VideoInputDeviceCategory, kCards[0].name);
    line = FilterNamed(CLSID_AudioInputDeviceCategory, kLineInputName);
    graph->AddFilter(card.Get(), L"card");
    graph->AddFilter(line.Get(), L"line");
  }

  void SetFormats(Size size) const {
    const MediaType pictures = TypeOf({PixelLayout::kYuy2, size, kSecond * 1001 / 30000});
    Set(*card.Get(), pictures);
    Set(*line.Get(), MediaType::Pcm16(2, 48000));
  }

  void RunFor(int seconds) const {
    control->Run();
    const double before = CpuMs();
    ::Sleep(static_cast<DWORD>(seconds) * 1000);
    cpu = CpuMs() - before;
    control->Stop();
  }

  HRESULT Render(IBaseFilter* pictures, IBaseFilter* sounds) const {
    const HRESULT video = builder->RenderStream(&PIN_CATEGORY_CAPTURE, card.Get(), nullptr, pictures);
    const HRESULT audio = builder->RenderStream(&PIN_CATEGORY_CAPTURE, line.Get(), nullptr, sounds);
    return FAILED(video) ? video : audio;
  }

  ComPtr<ICaptureGraphBuilder> builder;
  ComPtr<IGraphBuilder> graph;
  ComPtr<IMediaControl> control;
  ComPtr<IBaseFilter> card;
  ComPtr<IBaseFilter> line;
  mutable double cpu = 0;

 private:
  static void Set(IBaseFilter& filter, const MediaType& type) {
    const auto config = FindPin(filter, PINDIR_OUTPUT, &PIN_CATEGORY_CAPTURE).As<IAMStreamConfig>();
    AM_MEDIA_TYPE* wanted = type.Clone();
    config->SetFormat(wanted);
    FreeMediaType(*wanted);
    ::CoTaskMemFree(wanted);
  }
};

int Record(const char* file, int seconds, Size size, LONG master) {
  const Graph graph;
  graph.SetFormats(size);
  ComPtr<IBaseFilter> mux;
  HRESULT result =
      graph.builder->SetOutputFileName(&MEDIASUBTYPE_Avi, Wide(file).c_str(), mux.Receive(), nullptr);
  if (SUCCEEDED(result)) result = mux.As<IConfigAviMux>()->SetMasterStream(master);
  if (SUCCEEDED(result)) result = graph.Render(mux.Get(), mux.Get());
  if (FAILED(result)) return std::printf("%08lx\n", result), 1;
  graph.RunFor(seconds);
  LONG frames = 0;
  LONG dropped = 0;
  LONGLONG length = 0;
  mux.As<IAMDroppedFrames>()->GetNumNotDropped(&frames);
  mux.As<IAMDroppedFrames>()->GetNumDropped(&dropped);
  mux.As<IMediaSeeking>()->GetCurrentPosition(&length);
  std::printf("frames %ld\ndropped %ld\nlength %lld\ncpu %.0f\n", frames, dropped, length / kMillisecond,
              graph.cpu);
  return 0;
}

// The least that writes what is captured: each sample as it is, behind the one before.
int RecordBare(const char* file, int seconds, Size size) {
  const Graph graph;
  graph.SetFormats(size);
  CaptureFile target;
  if (FAILED(target.Open(Wide(file), CaptureFile::Mode::kRecord))) return 1;
  std::mutex lock;
  std::uint64_t end = 0;
  int frames = 0;
  const auto write = [&](IMediaSample& sample, const MediaType& type) {
    const std::scoped_lock guard(lock);
    BYTE* data = nullptr;
    sample.GetPointer(&data);
    std::size_t written = 0;
    target.Write(end, {data, static_cast<std::size_t>(sample.GetActualDataLength())}, written);
    end += written;
    frames += type.Get().majortype == MEDIATYPE_Video ? 1 : 0;
  };
  const auto pictures = ComPtr<RecordingSink>::Attach(new RecordingSink(MEDIATYPE_Video));
  const auto sounds = ComPtr<RecordingSink>::Attach(new RecordingSink(MEDIATYPE_Audio));
  for (const auto& sink : {pictures, sounds}) {
    sink->atSample = write;
    graph.graph->AddFilter(sink.Get(), nullptr);
  }
  if (FAILED(graph.Render(pictures.Get(), sounds.Get()))) return 1;
  graph.RunFor(seconds);
  std::printf("frames %d\ncpu %.0f\n", frames, graph.cpu);
  return 0;
}

int Copy(const char* from, const char* to) {
  std::wstring source = Wide(from);
  std::wstring target = Wide(to);
  const Graph graph;
  const ULONGLONG begin = ::GetTickCount64();
  const HRESULT result = graph.builder->CopyCaptureFile(source.data(), target.data(), FALSE, nullptr);
  std::printf("%llu\n", ::GetTickCount64() - begin);
  return result == S_OK ? 0 : 1;
}

int Recover(const char* file) {
  LONGLONG length = 0;
  const auto recovery = Graph().builder.As<ICaptureRecovery>();
  const HRESULT result = recovery ? recovery->Recover(Wide(file).c_str(), &length) : E_NOINTERFACE;
  if (result == S_OK) std::printf("%lld\n", length / kMillisecond);
  return FAILED(result) ? 1 : 0;
}

int Work(const std::vector<const char*>& words) {
  const std::string what = words.size() > 2 ? words[1] : "";
  const auto number = [&](std::size_t at) { return std::atoi(words.at(at)); };
  if (what == "record")
    return Record(words[2], number(3), {number(4), number(5)}, words.size() > 6 ? number(6) : -1);
  if (what == "bare") return RecordBare(words[2], number(3), {number(4), number(5)});
  if (what == "allocate")
    return Graph().builder->AllocCapFile(Wide(words[2]).c_str(), static_cast<DWORDLONG>(number(3)) << 20) ==
                   S_OK
               ? 0
               : 1;
  if (what == "copy") return Copy(words[2], words.at(3));
  if (what == "recover") return Recover(words[2]);
  return 2;
}

}  // namespace
}  // namespace quorvex

int main(int count, char** words) {
  ::CoInitializeEx(nullptr, COINIT_MULTITHREADED);
  return quorvex::Work({words, words + count});
}
