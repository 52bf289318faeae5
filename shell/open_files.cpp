#include "shell/open_files.h"

#include <utility>

#include "devices/current_device.h"
#include "devices/media/open_file_dialog.h"
#include "devices/media/preview_playlist.h"
#include "devices/shared_state.h"
#include "panel/main_window.h"
#include "panel/status_display.h"
#include "shell/device_switch.h"

namespace quorvex {
namespace {

std::vector<std::string> handedOver;

// The folder of a file that came from outside becomes the current one, as the file dialog's does: relative
// paths in play lists are found from there.
void EnterFolderOf(const std::string& path) {
  const std::size_t end = path.rfind('\\');
  if (end != std::string::npos) ::SetCurrentDirectoryA(path.substr(0, end + 1).c_str());
}

// Plays a new temporary play list. One that yields nothing leaves the panel without a kind; without the new
// list what plays goes on.
void PlayFiles(const std::vector<std::string>& paths) {
  EnterFolderOf(paths.front());
  if (BuildPreviewPlaylist(paths).empty() || SwitchToFile()) return;
  SetDisplayElement(kIdleLamp + static_cast<int>(currentDeviceType), 0);
  currentDeviceType = DeviceType::kNone;
  SetDisplayElement(kIdleLamp, 1);
}

std::string DroppedPath(HDROP drop, UINT index) {
  std::string path(::DragQueryFileA(drop, index, nullptr, 0), '\0');
  ::DragQueryFileA(drop, index, path.data(), static_cast<UINT>(path.size() + 1));
  return path;
}

}  // namespace

void OpenMediaFile() {
  const OpenFileResult result = RunOpenFileDialog();
  if (result.outcome == OpenFileOutcome::kCancelled) return;
  if (result.outcome == OpenFileOutcome::kFilesPicked && BuildPreviewPlaylist(result.selection).empty())
    return;
  ::RedrawWindow(mainWindow, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
  if (currentDevice && currentDevice->videoWindowHandle != nullptr)
    ::RedrawWindow(currentDevice->videoWindowHandle, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
  SwitchToFile();
}

void OnDropFiles(HDROP drop) {
  const std::string path = DroppedPath(drop, 0);
  ::DragFinish(drop);
  // Under Wine files fall on a disabled window too. While a dialog is open the device stays, which may have
  // opened it.
  if (!path.empty() && ::IsWindowEnabled(mainWindow) != FALSE) PlayFiles({path});
}

void HandOver(std::vector<std::string> paths) {
  handedOver = std::move(paths);
  ::PostMessageA(mainWindow, kHandedOverMessage, 0, 0);
}

bool HasHandedOver() { return !handedOver.empty(); }

void PlayHandedOver() {
  const std::vector<std::string> paths = std::exchange(handedOver, {});
  if (!paths.empty()) PlayFiles(paths);
}

}  // namespace quorvex
