// Measures the media-file device from within, in milliseconds:
// file_bench next DARK LIGHT   from the command for the next file, while a dark film plays, until the first
// picture of a light one is on the
//                              screen; and the same of a bare graph that is built for the light one
// file_bench list FILE COUNT   the start of a play list of so many files
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "base/ini_file.h"
#include "devices/current_device.h"
#include "devices/shared_state.h"
#include "panel/main_window.h"
#include "shell/device_switch.h"
#include "shell/lifecycle.h"
#include "shell/startup.h"
#include "tests/bench/bench.h"
#include "tests/support/media_graph.h"
#include "video/video_window.h"

namespace quorvex {
namespace {

constexpr POINT kPlace{240, 200};  // of the bare graph's window

bool Load(const std::string& name, const std::vector<std::string>& paths) {
  mediaAlbumPath = std::filesystem::temp_directory_path().string() + "file_bench.abm";
  IniFile(mediaAlbumPath).Update([&](IniDocument& store) {
    store.RemoveSection(name);
    store.Set(name, "Tracks", std::to_string(paths.size()));
    for (std::size_t i = 0; i < paths.size(); ++i) store.Set(name, std::to_string(i + 1), paths[i]);
  });
  currentPlaylist = name;
  return SwitchToFile();
}

bool MeasureNext(const std::string& dark, const std::string& light) {
  if (!Load("Bench", {dark, light})) return false;
  PumpFor(1000);
  const POINT middle = MiddleOf(currentDevice->videoWindowHandle);
  double begin = Milliseconds();
  if (!currentDevice->NextItem() || !BecomesLight(middle)) return false;
  const double device = Milliseconds() - begin;
  currentDevice.reset();
  DeleteVideoWindow();
  PumpFor(300);
  begin = Milliseconds();
  MediaGraph graph;
  if (graph.Render(std::filesystem::path(light).wstring()) != S_OK) return false;
  ComPtr<IVideoWindow> window;
  graph.graph->QueryInterface(IID_IVideoWindow, window.ReceiveVoid());
  window->SetWindowPosition(kPlace.x, kPlace.y, 400, 300);
  graph.control->Run();
  if (!BecomesLight({kPlace.x + 200, kPlace.y + 150})) return false;
  std::printf("device %.1f\nbare %.1f\n", device, Milliseconds() - begin);
  return true;
}

bool MeasureList(const std::string& path, int count) {
  const bool loaded = Load("Bench", std::vector<std::string>(static_cast<std::size_t>(count), path));
  const double made = Milliseconds();
  const bool again = loaded && SwitchToFile();
  std::printf("start %.1f\n", Milliseconds() - made);
  currentDevice.reset();
  return again;
}

bool Measure(const std::vector<std::string>& words) {
  if (words.size() == 3 && words[0] == "next") return MeasureNext(words[1], words[2]);
  if (words.size() == 3 && words[0] == "list") return MeasureList(words[1], std::atoi(words[2].c_str()));
  return false;
}

}  // namespace
}  // namespace quorvex

int main(int count, char** arguments) {
  if (!quorvex::StartUp(::GetModuleHandleA(nullptr))) return 1;
  ::KillTimer(quorvex::mainWindow, quorvex::kLampTestTimer);
  return quorvex::Measure({arguments + 1, arguments + count}) ? 0 : 1;
}
