#include "platform/cd/shared_drive.h"

#include <new>

namespace quorvex {
namespace {

// A turn takes microseconds; a process that was stopped in the middle of its own must not hold up the others.
constexpr DWORD kLongestTurnMs = 500;

bool IsRunning(DWORD process) {
  if (process == ::GetCurrentProcessId()) return true;
  const UniqueHandle handle(::OpenProcess(SYNCHRONIZE, FALSE, process));
  return handle && ::WaitForSingleObject(handle.Get(), 0) == WAIT_TIMEOUT;
}

}  // namespace

SharedDrive::SharedDrive()
    : mutex(::CreateMutexW(nullptr, FALSE, L"Quorvex CD drive")), file(L"drive.state", sizeof(DriveState)) {
  if (IsAvailable()) Turn(*this);  // the first turn puts a new or damaged state right
}

// A process that was killed during its turn hands it on.
SharedDrive::Turn::Turn(SharedDrive& drive)
    : mutex(drive.mutex.Get()), state(*static_cast<DriveState*>(drive.file.Memory())) {
  ::WaitForSingleObject(mutex, kLongestTurnMs);
  if (!state.IsValid()) new (&state) DriveState;
  state.Settle(DriveClock());
  if (state.player != 0 && !IsRunning(state.player)) state.Stop(DriveClock());
}

SharedDrive::Turn::~Turn() { ::ReleaseMutex(mutex); }

}  // namespace quorvex
