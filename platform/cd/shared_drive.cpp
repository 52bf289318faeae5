#include "platform/cd/shared_drive.h"

#include <shlobj.h>

#include <new>
#include <string>

namespace quorvex {
namespace {

// The folder is the user's own, and so are its rights.
std::wstring StatePath() {
  wchar_t folder[MAX_PATH] = L"";
  if (FAILED(::SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA | CSIDL_FLAG_CREATE, nullptr, 0, folder)))
    return {};
  const std::wstring ours = std::wstring(folder) + L"\\Quorvex";
  ::CreateDirectoryW(ours.c_str(), nullptr);
  return ours + L"\\drive.state";
}

// A turn takes microseconds; a process that was stopped in the middle of its own must not hold up the others.
constexpr DWORD kLongestTurnMs = 500;

UniqueHandle MapStateFile() {
  const DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE;
  const UniqueHandle file = OwnFile(::CreateFileW(StatePath().c_str(), GENERIC_READ | GENERIC_WRITE, share,
                                                  nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return {};
  return UniqueHandle(
      ::CreateFileMappingW(file.Get(), nullptr, PAGE_READWRITE, 0, sizeof(DriveState), nullptr));
}

bool IsRunning(DWORD process) {
  if (process == ::GetCurrentProcessId()) return true;
  const UniqueHandle handle(::OpenProcess(SYNCHRONIZE, FALSE, process));
  return handle && ::WaitForSingleObject(handle.Get(), 0) == WAIT_TIMEOUT;
}

}  // namespace

SharedDrive::SharedDrive()
    : mutex(::CreateMutexW(nullptr, FALSE, L"Quorvex CD drive")), mapping(MapStateFile()) {
  if (!mutex || !mapping) return;
  view =
      Unique<void*, EndView>(::MapViewOfFile(mapping.Get(), FILE_MAP_ALL_ACCESS, 0, 0, sizeof(DriveState)));
  if (view) Turn(*this);  // the first turn puts a new or damaged state right
}

// A process that was killed during its turn hands it on.
SharedDrive::Turn::Turn(SharedDrive& drive)
    : mutex(drive.mutex.Get()), state(*static_cast<DriveState*>(drive.view.Get())) {
  ::WaitForSingleObject(mutex, kLongestTurnMs);
  if (!state.IsValid()) new (&state) DriveState;
  state.Settle(DriveClock());
  if (state.player != 0 && !IsRunning(state.player)) state.Stop(DriveClock());
}

SharedDrive::Turn::~Turn() { ::ReleaseMutex(mutex); }

}  // namespace quorvex
