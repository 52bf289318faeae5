// Measures television on the first capture device, the virtual TV card:
// tv_bench graph   shows its preview with captions in the plain window of a bare graph, until it is ended
// tv_bench keys    in the player: milliseconds from a channel key, and from the input key, until the screen
//                  shows the other picture; seconds of an auto-tune of the cable's channels
#include <windows.h>

#include <uuids.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <string_view>
#include <vector>

#include "devices/current_device.h"
#include "devices/shared_state.h"
#include "devices/tv/caption_chain.h"
#include "devices/tv/device_category.h"
#include "panel/commands.h"
#include "panel/main_window.h"
#include "shell/command_table.h"
#include "shell/device_switch.h"
#include "shell/lifecycle.h"
#include "shell/startup.h"
#include "tests/bench/bench.h"
#include "tests/support/pump.h"
#include "tests/support/screen_marks.h"
#include "video/video_window.h"

namespace quorvex {
namespace {

// The card's filter in a graph that a builder works.
struct BareGraph {
  BareGraph() {
    ComPtr<ICreateDevEnum> devices;
    CreateDeviceEnumerator(devices);
    BindFilterAt(*devices.Get(), CLSID_VideoInputDeviceCategory, 0, card);
    ::CoCreateInstance(CLSID_FilterGraph, nullptr, CLSCTX_INPROC_SERVER, IID_IGraphBuilder,
                       graph.ReceiveVoid());
    ::CoCreateInstance(CLSID_CaptureGraphBuilder, nullptr, CLSCTX_INPROC_SERVER, IID_ICaptureGraphBuilder,
                       builder.ReceiveVoid());
  }

  // With captions on, as far as they go.
  bool Show() {
    if (!card || !graph || !builder) return false;
    builder->SetFiltergraph(graph.Get());
    graph->AddFilter(card.Get(), nullptr);
    if (FAILED(builder->RenderStream(&PIN_CATEGORY_PREVIEW, card.Get(), nullptr, nullptr))) return false;
    if (captions.AddTo(*graph.Get())) captions.Connect(*graph.Get(), *card.Get());
    ComPtr<IMediaControl> control;
    graph->QueryInterface(IID_IMediaControl, control.ReceiveVoid());
    return control && SUCCEEDED(control->Run());
  }

  ComPtr<IBaseFilter> card;
  ComPtr<IGraphBuilder> graph;
  ComPtr<ICaptureGraphBuilder> builder;
  CaptionChain captions;
};

bool ShowGraph() {
  ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  BareGraph bare;
  if (!bare.Show()) return false;
  return PumpUntil([] { return false; }, INFINITE);
}

// From a key until the picture agrees; negative when it never does.
double UntilShown(int command, const std::function<bool(const ScreenMarks&)>& agrees) {
  const double begin = Milliseconds();
  RunCommand(command);
  const HWND picture = theVideoWindow->GetRendererWindow();
  const bool shown = PumpUntil([&] { return agrees(ReadScreenMarks(picture)); });
  return shown ? Milliseconds() - begin : -1;
}

bool Report(const char* name, std::vector<double> times) {
  std::sort(times.begin(), times.end());
  std::printf("%s %.1f\n%s_most %.1f\n", name, times[times.size() / 2], name, times.back());
  return times.front() >= 0;
}

bool MeasureKeys() {
  if (!StartUp(::GetModuleHandleA(nullptr))) return false;
  ::KillTimer(mainWindow, kLampTestTimer);
  if (!SwitchToTv(0)) return false;
  PumpFor(5000);  // the first text over the picture is gone
  std::vector<double> channels;
  for (int i = 0; i < 20; ++i) {
    channels.push_back(UntilShown(kCommandUp, [](const ScreenMarks& marks) {
      return marks.channel == (currentDevice->currentNumber & 0x3F);
    }));
    PumpFor(200 + static_cast<DWORD>(i) * 7);
  }
  std::vector<double> inputs;
  for (int i = 1; i <= 21; ++i) {
    inputs.push_back(
        UntilShown(kCommandVideoInput, [=](const ScreenMarks& marks) { return marks.input == i % 3; }));
    PumpFor(200 + static_cast<DWORD>(i) * 7);
  }
  const double begin = Milliseconds();
  currentDevice->AutoTuneChannels(mainWindow, 0);
  std::printf("autotune %.2f\n", (Milliseconds() - begin) / 1000);
  SwitchToNone();
  return Report("channel", channels) && Report("input", inputs);
}

}  // namespace
}  // namespace quorvex

int main(int count, char** arguments) {
  const std::string_view what = count == 2 ? arguments[1] : "";
  if (what == "graph") return quorvex::ShowGraph() ? 0 : 1;
  if (what == "keys") return quorvex::MeasureKeys() ? 0 : 1;
  std::fprintf(stderr, "tv_bench graph | keys\n");
  return 2;
}
