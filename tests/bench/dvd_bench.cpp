// Measures DVDs, in milliseconds where nothing else is said:
// dvd_bench open DISC               from the command for DVDs to the first light picture on the screen
// dvd_bench chapters DISC           from the command for the next chapter until it is on the screen; the disc
//                                   has dark and light chapters in turn and begins dark
// dvd_bench menu DISC               from an arrow key until the highlight has moved on the screen; the disc
//                                   begins with a menu of buttons in a row
// dvd_bench lost DISC SECONDS       a film as a graph plays it into a window: pictures shown, lost, and late
// dvd_bench scan DISC SPEED SECONDS a film with the platform's renderers in fast motion: plays on until it is
//                                   ended from outside, for its memory is measured
#include <windows.h>

#include <dvdevcod.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "devices/current_device.h"
#include "devices/shared_state.h"
#include "panel/commands.h"
#include "panel/main_window.h"
#include "shell/command_table.h"
#include "shell/device_switch.h"
#include "shell/lifecycle.h"
#include "shell/startup.h"
#include "tests/bench/bench.h"
#include "tests/support/dvd_graph.h"
#include "tests/support/temp_folder.h"
#include "tests/support/virtual_drive.h"
#include "video/video_window.h"

namespace quorvex {
namespace {

constexpr std::int64_t kPicture = 10'000'000LL * 1001 / 30000;

// The panel with a disc in its drive; it has no settings of its own.
class PanelWithDisc {
 public:
  explicit PanelWithDisc(const std::string& disc) {
    if (!StartUp(::GetModuleHandleA(nullptr))) std::exit(1);
    ::KillTimer(mainWindow, kLampTestTimer);
    configPath = stores.Path("quorvex.ini");
    drive.InsertImage(disc);
  }
  PanelWithDisc(const PanelWithDisc&) = delete;
  PanelWithDisc& operator=(const PanelWithDisc&) = delete;
  ~PanelWithDisc() {
    currentDevice.reset();
    DeleteVideoWindow();
  }

  static POINT Middle() { return MiddleOf(theVideoWindow->Frame()); }

 private:
  TempFolder stores;
  VirtualDrive drive;
};

bool MeasureOpening(const std::string& disc) {
  const PanelWithDisc panel(disc);
  const double begin = Milliseconds();
  if (!SwitchToDvd() || !BecomesLight(PanelWithDisc::Middle())) return false;
  std::printf("open %.1f\n", Milliseconds() - begin);
  return true;
}

bool MeasureChapters(const std::string& disc) {
  constexpr int kJumps = 9;
  const PanelWithDisc panel(disc);
  if (!SwitchToDvd()) return false;
  PumpFor(1000);
  for (int i = 0; i < kJumps; ++i) {
    const double begin = Milliseconds();
    RunCommand(kCommandNext);
    if (!BecomesLight(PanelWithDisc::Middle(), i % 2 == 0)) return false;
    std::printf("chapter %.1f\n", Milliseconds() - begin);
    PumpFor(700);
  }
  return true;
}

// What the screen shows of a window.
std::vector<std::uint32_t> LookOf(HWND window) {
  RECT area{};
  ::GetWindowRect(window, &area);
  const int width = area.right - area.left;
  const int height = area.bottom - area.top;
  BITMAPINFO layout{};
  layout.bmiHeader.biSize = sizeof layout.bmiHeader;
  layout.bmiHeader.biWidth = width;
  layout.bmiHeader.biHeight = height;
  layout.bmiHeader.biPlanes = 1;
  layout.bmiHeader.biBitCount = 32;
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  const HDC screen = ::GetDC(nullptr);
  const HDC memory = ::CreateCompatibleDC(screen);
  void* bits = nullptr;
  const HBITMAP bitmap = ::CreateDIBSection(memory, &layout, DIB_RGB_COLORS, &bits, nullptr, 0);
  const HGDIOBJ before = ::SelectObject(memory, bitmap);
  ::BitBlt(memory, 0, 0, width, height, screen, area.left, area.top, SRCCOPY);
  ::GdiFlush();
  std::memcpy(pixels.data(), bits, pixels.size() * sizeof pixels[0]);
  ::SelectObject(memory, before);
  ::DeleteObject(bitmap);
  ::DeleteDC(memory);
  ::ReleaseDC(nullptr, screen);
  return pixels;
}

bool MeasureMenu(const std::string& disc) {
  constexpr int kMoves = 20;
  const PanelWithDisc panel(disc);
  if (!SwitchToDvd()) return false;
  const HWND frame = theVideoWindow->Frame();
  for (std::vector<std::uint32_t> look; look != LookOf(frame);) {  // until the menu stands still
    look = LookOf(frame);
    PumpFor(700);
  }
  for (int i = 0; i < kMoves; ++i) {
    const std::vector<std::uint32_t> look = LookOf(frame);
    const double begin = Milliseconds();
    RunCommand(i % 2 == 0 ? kCommandIncrease : kCommandDecrease);
    if (!PumpUntil([&] { return LookOf(frame) != look; }, kBenchLimitMs)) return false;
    std::printf("menu %.1f\n", Milliseconds() - begin);
    PumpFor(200);
  }
  return true;
}

// Draws into a window of its own, as renderers do.
class Window {
 public:
  void Draw(IMediaSample& sample, const MediaType& type) {
    const BITMAPINFOHEADER& bitmap = type.Picture()->bmiHeader;
    BYTE* pixels = nullptr;
    sample.GetPointer(&pixels);
    const HDC dc = ::GetDC(window);
    ::StretchDIBits(dc, 0, 0, bitmap.biWidth, bitmap.biHeight, 0, 0, bitmap.biWidth, bitmap.biHeight, pixels,
                    reinterpret_cast<const BITMAPINFO*>(&bitmap), DIB_RGB_COLORS, SRCCOPY);
    ::GdiFlush();
    ::ReleaseDC(window, dc);
  }

 private:
  HWND window = ::CreateWindowA("Static", "", WS_POPUP | WS_VISIBLE, 100, 50, 720, 480, nullptr, nullptr,
                                nullptr, nullptr);
};

bool CountLost(const std::string& disc, int seconds) {
  ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  Window window;
  DvdGraph dvd;
  int late = 0;
  if (FAILED(dvd.Open(disc))) return false;
  dvd.pictures->atSample = [&](IMediaSample& sample, const MediaType& type) {
    REFERENCE_TIME start = 0;
    REFERENCE_TIME end = 0;
    sample.GetTime(&start, &end);
    if (dvd.pictures->StreamTime().value_or(0) > start + kPicture) ++late;
    window.Draw(sample, type);
  };
  if (FAILED(dvd.Run())) return false;
  PumpFor(static_cast<DWORD>(seconds) * 1000);
  dvd.mediaControl->Stop();
  long lost = 0;
  const auto shown = dvd.pictures->Segments().back().samples;
  for (std::size_t i = 1; i < shown.size(); ++i)
    lost += static_cast<long>((shown[i].start - shown[i - 1].start + kPicture / 2) / kPicture) - 1;
  std::printf("shown %zu\nlost %ld\nlate %d\n", shown.size(), lost, late);
  return true;
}

bool Scan(const std::string& disc, double speed, int seconds) {
  ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  DvdGraph dvd(false);
  if (FAILED(dvd.Open(disc)) || FAILED(dvd.Run())) return false;
  if (!dvd.Tells(EC_DVD_CHAPTER_START, std::nullopt, kBenchLimitMs)) return false;
  if (dvd.control->ForwardScan(speed) != S_OK) return false;
  dvd.Wait(seconds * 1000);
  return true;
}

bool Measure(const std::vector<std::string>& words) {
  if (words.size() == 2 && words[0] == "open") return MeasureOpening(words[1]);
  if (words.size() == 2 && words[0] == "chapters") return MeasureChapters(words[1]);
  if (words.size() == 2 && words[0] == "menu") return MeasureMenu(words[1]);
  if (words.size() == 3 && words[0] == "lost") return CountLost(words[1], std::atoi(words[2].c_str()));
  if (words.size() == 4 && words[0] == "scan")
    return Scan(words[1], std::atof(words[2].c_str()), std::atoi(words[3].c_str()));
  return false;
}

}  // namespace
}  // namespace quorvex

int main(int count, char** arguments) { return quorvex::Measure({arguments + 1, arguments + count}) ? 0 : 1; }
