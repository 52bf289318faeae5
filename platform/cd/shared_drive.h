// The drive that all processes of the user share: its state lies in a file that each of them maps,
// %LOCALAPPDATA%\Quorvex\drive.state, so the disc is still in the drive when the last of them has ended.
#pragma once

#include <windows.h>

#include "base/handles.h"
#include "platform/cd/drive_state.h"
#include "platform/common/shared_file.h"

namespace quorvex {

class SharedDrive {
 public:
  SharedDrive();

  // Whether the state could be mapped; without that nobody can use the drive.
  [[nodiscard]] bool IsAvailable() const { return mutex && file.Memory() != nullptr; }

  // One process's turn with the state; it begins with what has come about by itself since the last one: a
  // playing that reached its end, or whose process died.
  class Turn {
   public:
    explicit Turn(SharedDrive& drive);
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;
    ~Turn();
    DriveState& operator*() const { return state; }
    DriveState* operator->() const { return &state; }

   private:
    HANDLE mutex;
    DriveState& state;
  };

 private:
  UniqueHandle mutex;
  SharedFile file;
};

// Milliseconds of the clock that the state's times are on.
inline std::uint64_t DriveClock() { return ::GetTickCount64(); }

}  // namespace quorvex
