// media_bench own|platform FILE  Plays a file in a window through the filter graph, with the media source or
// with the platform's own source and decoders, and prints the CPU seconds (user and kernel) of this process
// meanwhile and the seconds it took.
#include <windows.h>

#include <cstdio>
#include <filesystem>
#include <string_view>

#include "tests/bench/bench.h"
#include "tests/support/media_graph.h"

namespace quorvex {
namespace {

// Renders the file from the platform's own reader, as if nobody else were registered.
HRESULT RenderByPlatform(const MediaGraph& graph, const std::filesystem::path& path) {
  ComPtr<IBaseFilter> reader;
  const HRESULT made = ::CoCreateInstance(CLSID_AsyncReader, nullptr, CLSCTX_INPROC_SERVER,
                                          __uuidof(IBaseFilter), reader.ReceiveVoid());
  if (FAILED(made)) return made;
  graph.graph->AddFilter(reader.Get(), L"reader");
  const HRESULT loaded = reader.As<IFileSourceFilter>()->Load(path.c_str(), nullptr);
  if (FAILED(loaded)) return loaded;
  ComPtr<IEnumPins> pins;
  ComPtr<IPin> output;
  reader->EnumPins(pins.Receive());
  pins->Next(1, output.Receive(), nullptr);
  return graph.graph->Render(output.Get());
}

int Play(bool own, const std::filesystem::path& path) {
  MediaGraph graph;
  const HRESULT rendered = own ? graph.Render(path.wstring()) : RenderByPlatform(graph, path);
  if (rendered != S_OK || (own && !graph.FilterOf(kMediaSourceUnderTest))) {
    std::fprintf(stderr, "cannot be rendered: %lx\n", rendered);
    return 1;
  }
  const double cpuBefore = CpuMs();
  const ULONGLONG begin = ::GetTickCount64();
  graph.control->Run();
  const bool complete = PumpUntil([&] { return graph.Completes(0); }, 60000);
  std::printf("%.2f %.2f\n", (CpuMs() - cpuBefore) / 1000,
              static_cast<double>(::GetTickCount64() - begin) / 1000);
  return complete && graph.Release() == 0 ? 0 : 1;
}

}  // namespace
}  // namespace quorvex

int main(int count, char** arguments) {
  if (count != 3) return 2;
  ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  const int result = quorvex::Play(std::string_view(arguments[1]) == "own", arguments[2]);
  ::CoUninitialize();
  return result;
}
