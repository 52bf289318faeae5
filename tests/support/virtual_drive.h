// The CD drive in a test's hand: discs made on the spot, the tray, the drive's faults. The drive is as new
// before and after.
#pragma once

#include <string>
#include <vector>

#include "platform/cd/shared_drive.h"
#include "tests/support/temp_folder.h"

namespace quorvex {

class VirtualDrive {
 public:
  VirtualDrive() { Reset(); }
  VirtualDrive(const VirtualDrive&) = delete;
  VirtualDrive& operator=(const VirtualDrive&) = delete;
  // What plays in this process sees the reset within 50 ms and closes its sound device; a process that ended
  // in the middle of that might crash in its sound system.
  ~VirtualDrive() {
    Reset();
    ::Sleep(kSoundCloseMs);
  }

  // A disc of silent tracks of so many seconds each; with `dataFirst` the first is a data track.
  std::string MakeDisc(const std::string& name, const std::vector<int>& seconds,
                       bool dataFirst = false) const {
    int frames = 0;
    std::string sheet = "FILE \"" + name + ".bin\" BINARY\n";
    for (std::size_t i = 0; i < seconds.size(); ++i) {
      char line[100];
      std::snprintf(line, sizeof line, "TRACK %02zu %s\nINDEX 01 %02d:%02d:%02d\n", i + 1,
                    dataFirst && i == 0 ? "MODE1/2352" : "AUDIO", frames / 75 / 60, frames / 75 % 60,
                    frames % 75);
      sheet += line;
      frames += seconds[i] * 75;
    }
    folder.Write(name + ".bin", "");
    std::filesystem::resize_file(folder.Path(name + ".bin"), static_cast<std::uintmax_t>(frames) * 2352);
    return folder.Write(name + ".cue", sheet);
  }

  void InsertImage(const std::string& image) { SharedDrive::Turn(drive)->Insert(image); }
  void Insert(const std::vector<int>& seconds) {
    InsertImage(MakeDisc("disc" + std::to_string(++discs), seconds));
  }
  void Eject() { SharedDrive::Turn(drive)->Eject(); }
  void CloseTray() { SharedDrive::Turn(drive)->CloseTray(); }
  void SetSpeed(std::uint32_t percent) { SharedDrive::Turn(drive)->SetSpeed(percent, DriveClock()); }
  void Set(std::uint32_t DriveState::*knob, std::uint32_t value) {
    (*SharedDrive::Turn(drive)).*knob = value;
  }

  [[nodiscard]] DriveState State() { return *SharedDrive::Turn(drive); }
  // Where the disc is, in frames.
  [[nodiscard]] int Position() { return State().PositionAt(DriveClock()); }

 private:
  void Reset() {
    const SharedDrive::Turn state(drive);
    const std::uint32_t media = state->mediaSerial;
    const std::uint32_t play = state->playSerial;
    *state = DriveState();
    state->mediaSerial = media + 1;
    state->playSerial = play + 1;
  }

  static constexpr DWORD kSoundCloseMs = 250;

  SharedDrive drive;
  TempFolder folder;
  int discs = 0;
};

}  // namespace quorvex
