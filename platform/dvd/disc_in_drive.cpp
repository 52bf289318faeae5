#include "platform/dvd/disc_in_drive.h"

#include <windows.h>

#include <string>

#include "platform/cd/shared_drive.h"
#include "platform/cd/utf8_path.h"

namespace quorvex {
namespace {

namespace fs = std::filesystem;

// What the shared drive holds, and the number by which a change shows.
struct DriveContent {
  std::string image;  // UTF-8; empty without a disc
  std::uint32_t serial = 0;
};

DriveContent LookIntoDrive() {
  SharedDrive drive;
  if (!drive.IsAvailable()) return {};
  const SharedDrive::Turn state(drive);
  return {state->MediaPresent() ? std::string(static_cast<const char*>(state->image)) : std::string(),
          state->mediaSerial};
}

bool IsVideoDrive(const std::wstring& root) {
  if (::GetDriveTypeW(root.c_str()) != DRIVE_CDROM) return false;
  std::error_code error;
  return fs::is_directory(fs::path(root) / "VIDEO_TS", error);
}

}  // namespace

DiscFault OpenDiscInDrive(OpenedDisc& disc) {
  if (const DriveContent content = LookIntoDrive(); !content.image.empty()) {
    const DiscFault fault = OpenDisc(PathFromUtf8(content.image), disc);
    disc.isThere = [serial = content.serial] { return LookIntoDrive().serial == serial; };
    return fault;
  }
  for (wchar_t letter = L'A'; letter <= L'Z'; ++letter) {
    const std::wstring root = std::wstring(1, letter) + L":\\";
    if (!IsVideoDrive(root)) continue;
    const DiscFault fault = OpenDisc(root, disc);
    disc.isThere = [root] { return IsVideoDrive(root); };
    return fault;
  }
  return DiscFault::kNoDisc;
}

}  // namespace quorvex
