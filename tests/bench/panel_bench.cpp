// Measures the panel from within and prints one "name microseconds" a line:
//
// panel_bench display
//   one digit changed and repainted, and a bare BitBlt of its size to the same window
// panel_bench insert STORE TRACKS
//   a disc of so many tracks found in the drive by a CD device with this store
// panel_bench level FILM
//   the level bar over a film: shown, and one step up or down until it is painted, while the film runs and
//   while it is paused
// panel_bench album ENTRIES
//   from the choice of an album in the Open File dialog until its entries are painted, and from the key that
//   deletes one of them until the store is written and the others are painted
// panel_bench setup
//   from the Setup key until the sheet is painted, while the first capture card is shown
// panel_bench record
//   from the Record key until "Ready to Record" is painted and the first card's graph is armed
#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "devices/audio_adjustment.h"
#include "devices/cd/cd_device.h"
#include "devices/current_device.h"
#include "devices/media/open_file_dialog.h"
#include "devices/media/preview_playlist.h"
#include "devices/shared_state.h"
#include "mixer/mixer.h"
#include "panel/commands.h"
#include "panel/display_elements.h"
#include "panel/main_window.h"
#include "panel/skin.h"
#include "panel/status_display.h"
#include "shell/command_table.h"
#include "shell/device_switch.h"
#include "shell/lifecycle.h"
#include "shell/startup.h"
#include "tests/bench/bench.h"
#include "tests/support/file_dialog.h"
#include "tests/support/pump.h"
#include "tests/support/temp_folder.h"
#include "tests/support/virtual_drive.h"
#include "video/video_window.h"

namespace quorvex {
namespace {

double Microseconds() { return Milliseconds() * 1000; }

double MicrosecondsOf(const std::function<void()>& work) {
  const double begin = Microseconds();
  work();
  return Microseconds() - begin;
}

double Median(std::vector<double> values) {
  std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2),
                   values.end());
  return values[values.size() / 2];
}

constexpr int kDigit = 5;  // the clock's last
constexpr Rect kPlace = kDisplayElements[kDigit].Rectangle();

void BareBlit(HDC dc) {
  ::BitBlt(dc, kPlace.left, kPlace.top, kPlace.Width(), kPlace.Height(), skin.background.Get(), kPlace.left,
           kPlace.top, SRCCOPY);
}

// A window that paints nothing but a BitBlt.
LRESULT CALLBACK PaintBarely(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
  if (message != WM_PAINT) return ::DefSubclassProc(window, message, wParam, lParam);
  PAINTSTRUCT paint{};
  BareBlit(::BeginPaint(window, &paint));
  ::EndPaint(window, &paint);
  return 0;
}

void MeasureDisplay() {
  constexpr int kRounds = 30;
  constexpr int kTimes = 250;
  const RECT rect{kPlace.left, kPlace.top, kPlace.right, kPlace.bottom};
  std::map<std::string, std::vector<double>> times;
  const auto measure = [&](const std::string& name, const std::function<void(int)>& work) {
    const double all = MicrosecondsOf([&] {
      for (int i = 0; i < kTimes; ++i) work(i);
    });
    times[name].push_back(all / kTimes);
  };
  for (int round = 0; round < kRounds; ++round) {
    measure("digit", [](int i) { SetDisplayElement(kDigit, i % 10); });
    measure("equal", [](int) { SetDisplayElement(kDigit, 9); });
    ::SetWindowSubclass(mainWindow, PaintBarely, 1, 0);
    measure("repaint",
            [&](int) { ::RedrawWindow(mainWindow, &rect, nullptr, RDW_INVALIDATE | RDW_UPDATENOW); });
    ::RemoveWindowSubclass(mainWindow, PaintBarely, 1);
    const HDC dc = ::GetDC(mainWindow);
    measure("drawing", [&](int) { PaintStatusDisplay(dc, rect); });
    measure("blit", [&](int) { BareBlit(dc); });
    ::ReleaseDC(mainWindow, dc);
  }
  for (const auto& [name, values] : times) std::printf("%s %.3f\n", name.c_str(), Median(values));
}

bool MeasureInsert(const std::string& store, int tracks) {
  VirtualDrive drive;
  cdAlbumPath = store;
  configPath = store + ".ini";  // there is none: every setting has its default
  CCDDevice device;
  device.OnTick();
  drive.Insert(std::vector<int>(static_cast<std::size_t>(tracks), 10));
  double spent = 0;
  const bool found = PumpUntil([&] {
    spent = MicrosecondsOf([&] { device.OnTick(); });
    return device.itemCount == tracks;
  });
  device.Stop();
  std::printf("insert %.0f\n", spent);
  return found;
}

// Lets the elements of the level bar paint themselves.
void PaintLevelBar() {
  for (HWND element = nullptr; (element = ::FindWindowExA(theVideoWindow->GetRendererWindow(), element,
                                                          "myOSCtl", nullptr)) != nullptr;)
    ::UpdateWindow(element);
  ::GdiFlush();
}

double PaintedAfter(int command) {
  return MicrosecondsOf([command] {
    RunCommand(command);
    PaintLevelBar();
  });
}

bool MeasureLevel(const std::string& film) {
  constexpr int kSteps = 200;
  const TempFolder stores;
  configPath = stores.Path("quorvex.ini");
  mediaAlbumPath = stores.Path("mfiles.abm");
  BuildPreviewPlaylist(std::vector{film});
  mixerAvailable = OpenMixer();
  if (!mixerAvailable || !SwitchToFile() || !theVideoWindow) return false;
  PumpFor(1000);
  std::map<std::string, std::vector<double>> times;
  for (const char* const state : {"running", "paused"}) {
    for (int i = 0; i < 5; ++i) {
      times[std::string("show_") + state].push_back(PaintedAfter(kCommandAudioAdjustment));
      PumpFor(100);
      RunCommand(kCommandAudioAdjustment);
      PumpFor(100);
    }
    RunCommand(kCommandAudioAdjustment);
    for (int i = 0; i < kSteps; ++i) {
      const bool down = i % 2 == 0;
      times[std::string(down ? "down_" : "up_") + state].push_back(
          PaintedAfter(down ? kCommandLeft : kCommandRight));
      PumpFor(20);
    }
    RunCommand(kCommandAudioAdjustment);
    RunCommand(kCommandPause);
  }
  for (const auto& [name, values] : times) std::printf("%s %.0f\n", name.c_str(), Median(values));
  SwitchToNone();
  return true;
}

// In turn: an album of one entry is chosen, then the long one, of which an entry is deleted.
bool MeasureAlbum(int entries) {
  constexpr int kRounds = 11;
  const TempFolder stores;
  std::string store = "[List of Albums]\r\nAlbums=2\r\nSelection=1\r\n1=Short\r\n2=Long\r\n";
  store += "[Short]\r\nTracks=1\r\n1=C:\\a.mp3\r\n[Long]\r\nTracks=" + std::to_string(entries) + "\r\n";
  for (int i = 1; i <= entries; ++i) {
    const std::string number = std::to_string(i);
    store += number + "=C:\\music\\a folder of usual length\\a song of usual length " + number + ".mp3\r\n";
  }
  mediaAlbumPath = stores.Write("mfiles.abm", store);
  std::vector<double> opened;
  std::vector<double> saved;
  const FileDialogUser user([&](FileDialogUser& dialog) {
    dialog.Press(IDC_EXPAND);
    const HWND content = dialog.Control(IDC_CONTENT_LIST);
    const auto painted = [&](const std::function<void()>& work) {
      return MicrosecondsOf([&] {
        work();
        ::UpdateWindow(content);
        ::GdiFlush();
      });
    };
    for (int round = 0; round < kRounds; ++round) {
      dialog.SelectAlbum(0);
      opened.push_back(painted([&] { dialog.SelectAlbum(1); }));
      ::SendMessageA(content, LB_SETCURSEL, 0, 0);
      saved.push_back(painted([&] { dialog.Press(IDC_DELETE_ENTRY); }));
    }
  });
  RunOpenFileDialog();
  const int left = IniDocument(stores.Read("mfiles.abm")).Integer("Long", "Tracks", 0);
  std::printf("open %.0f\nsave %.0f\n", Median(opened), Median(saved));
  return left == entries - kRounds;
}

const char* awaitedDialog = "";  // its caption
double dialogShown = 0;          // when, in microseconds

// Timers come when everything is painted.
void CALLBACK OnDialogIdle(HWND, UINT, UINT_PTR, DWORD) {
  const HWND dialog = ::FindWindowA("#32770", awaitedDialog);
  if (::IsWindowVisible(dialog) == FALSE) return;
  if (dialogShown == 0) dialogShown = Microseconds();
  ::PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
}

// From a command until its dialog is painted, while the first capture card is shown with what is in
// `settings`.
bool MeasureDialog(const char* name, int command, const char* caption, const std::string& settings) {
  constexpr int kRounds = 11;
  const TempFolder stores;
  stores.Write("film.avi", "");
  configPath = stores.Write("quorvex.ini", settings + "CaptureFile=" + stores.Path("film.avi") + "\r\n");
  if (!SwitchToTv(0)) return false;
  awaitedDialog = caption;
  std::vector<double> times;
  for (int round = 0; round < kRounds; ++round) {
    PumpFor(500);
    dialogShown = 0;
    const UINT_PTR timer = ::SetTimer(nullptr, 0, USER_TIMER_MINIMUM, OnDialogIdle);
    const double begin = Microseconds();
    RunCommand(command);
    ::KillTimer(nullptr, timer);
    if (round > 0) times.push_back(dialogShown - begin);  // the first loads what dialogs need
  }
  std::printf("%s %.0f\n", name, Median(times));
  SwitchToNone();
  return true;
}

}  // namespace
}  // namespace quorvex

int main(int count, char** arguments) {
  if (!quorvex::StartUp(::GetModuleHandleA(nullptr))) return 1;
  ::KillTimer(quorvex::mainWindow, quorvex::kLampTestTimer);
  const std::string what = count > 1 ? arguments[1] : "";
  if (what == "display") {
    quorvex::MeasureDisplay();
    return 0;
  }
  if (what == "insert" && count == 4)
    return quorvex::MeasureInsert(arguments[2], std::atoi(arguments[3])) ? 0 : 1;
  if (what == "level" && count == 3) return quorvex::MeasureLevel(arguments[2]) ? 0 : 1;
  if (what == "album" && count == 3) return quorvex::MeasureAlbum(std::atoi(arguments[2])) ? 0 : 1;
  if (what == "setup") {
    return quorvex::MeasureDialog("setup", quorvex::kCommandSetup, "Setup Options", "[CAPTURE]\r\n") ? 0 : 1;
  }
  if (what == "record") {
    return quorvex::MeasureDialog("record", quorvex::kCommandRecord, "Ready to Record",
                                  "[CAPTURE]\r\nFrameRate=333667\r\n")
               ? 0
               : 1;
  }
  std::fprintf(stderr,
               "panel_bench display | insert STORE TRACKS | level FILM | album ENTRIES | setup | record\n");
  return 2;
}
