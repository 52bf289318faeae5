// What one process does with the shared drive: commands, the sound of what it plays, and the notification of
// who asked for it.
#pragma once

#include <windows.h>

#include <mmsystem.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "platform/cd/disc_image.h"
#include "platform/cd/shared_drive.h"
#include "platform/cd/time_format.h"
#include "platform/common/wave_output.h"

namespace quorvex {

class CdEngine {
 public:
  // The process's one engine.
  static CdEngine& Instance();

  // Whom to tell when a play command ends; null for nobody.
  struct Notify {
    HWND window = nullptr;
    MCIDEVICEID device = 0;
  };

  // Whether the driver may be opened; a test may have ordered that it cannot.
  bool MayOpen();

  // The commands answer MCI's codes. Places are frames of the disc.
  MCIERROR Play(std::optional<int> from, std::optional<int> to, Notify whom);
  MCIERROR Pause();
  MCIERROR Resume();
  MCIERROR Stop();
  MCIERROR Seek(int to);
  void OpenTray();
  void CloseTray();

  // An open device goes: nobody is told any more of what it plays.
  void Forget(MCIDEVICEID device);

  // Waits until no sound device is being opened or closed, at most a second: a process that ended in the
  // middle of that would hang in its sound system.
  void AwaitSound() const;

  // A command of `device` that asks for a notification of its own takes the place of its play command's.
  void Supersede(MCIDEVICEID device);

  // How long the drive takes for an answer (ms), as a test may have ordered.
  std::uint32_t AnswerMs() { return SharedDrive::Turn(drive)->answerMs; }

  // What the drive is doing.
  struct Status {
    std::uint32_t mode;  // MCI_MODE_...
    bool mediaPresent;
    std::uint32_t mediaSerial;
    int position;
    std::uint32_t claimTracks;
  };
  Status Look();

  // The same for a program that asks for the mode: it uses up one of the "not ready" answers that a test may
  // have ordered.
  Status Poll();

  // The disc in the closed drive; null without one, or when its image cannot be opened any more.
  std::shared_ptr<DiscImage> Disc();

 private:
  // A stretch of playing, by this process or another.
  struct Stretch {
    std::uint32_t serial;
    std::string image;
    int from;
    bool ours;
  };
  enum class End { kReached, kInterrupted, kFailed };

  CdEngine() = default;

  static void StartThread(const Stretch& stretch);
  void Run(const Stretch& stretch);
  End PlaySound(const Stretch& stretch);
  End FeedSound(const Stretch& stretch, DiscImage* image, WaveOutput& output);
  End WaitSilently(const Stretch& stretch);
  std::optional<int> EndOfPaused();
  std::optional<int> HoldAgainst(const Stretch& stretch, int heard);
  End BreakOff(const Stretch& stretch);
  End ReachEnd(const Stretch& stretch);
  void Finish(const Stretch& stretch, End end);
  void Tell(WPARAM what);

  std::atomic<int> soundChanges = 0;  // sound devices being opened or closed
  SharedDrive drive;
  std::mutex mutex;  // guards what follows; taken before a turn with the drive
  Notify notify;
  std::uint32_t notifySerial = 0;  // the playing that notify waits for
  std::mutex discMutex;            // guards what follows
  std::shared_ptr<DiscImage> disc;
  std::uint32_t discSerial = 0;
};

}  // namespace quorvex
