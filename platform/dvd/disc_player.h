// Plays a disc into two pins: one thread asks the disc's virtual machine what comes next, reads it and takes
// the user's wishes in between; one worker shows pictures, one plays sound. Every start makes these threads,
// halting ends them.
#pragma once

#include <windows.h>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <thread>

#include "platform/dvd/disc_commands.h"
#include "platform/dvd/navigator.h"
#include "platform/dvd/picture_worker.h"
#include "platform/dvd/place_board.h"
#include "platform/dvd/sound_worker.h"
#include "platform/dvd/unit_clock.h"

namespace quorvex {

class DiscPlayer {
 public:
  // All that is named outlives the player.
  struct Surroundings {
    FilterBase& filter;
    OutputPin& picturePin;
    OutputPin& soundPin;
    DiscEvents& events;
    const CaptionWishes& captions;
    const DiscTables& tables;
    Canvas canvas;
    std::function<bool()> isDiscThere;
    std::function<Size()> shownSize;
  };

  DiscPlayer(Navigator& opened, Surroundings given);
  DiscPlayer(const DiscPlayer&) = delete;
  DiscPlayer& operator=(const DiscPlayer&) = delete;
  ~DiscPlayer() { Halt(); }

  // Plays from what the disc plays first, until halted.
  void Start();
  // Ends it: the pins' other ends are flushed, and nothing is delivered any more when this returns.
  void Halt();
  // The graph was paused.
  void Cue();

  [[nodiscard]] std::shared_ptr<const Place> Shown() { return board.Shown(); }

  // What a wish of the user works with, on the reading thread.
  struct Hand {
    Navigator& navigator;
    const Place& shown;
  };
  using Wish = std::function<HRESULT(Hand&)>;
  // Does it between two sectors. What leads elsewhere drops what has been read ahead. Answers what the wish
  // does; S_OK when the disc is too slow to wait for it; VFW_E_DVD_GRAPHNOTREADY when nothing is played.
  HRESULT Do(Wish wish);

  // For wishes, on the reading thread.
  // Plays forwards or backwards at a speed, by key pictures; 1 forwards plays normally.
  void Scan(double wanted, bool goBack);
  // Stops, and keeps the place for TakeUp, which answers whether there is one.
  void Suspend();
  bool TakeUp();
  // Ends a still picture. False when there is none.
  bool EndStill();
  // The jump that was just wished plays a title: stops when that chapter of it is over.
  void StopAfter(int title, int lastChapter);
  // Marks the selected button as activated.
  void ShowActivated(int button) { pictures.Select({button, true}); }

 private:
  enum class Mode {
    kPlaying,
    kDraining,  // until all that was read is played
    kStill,
    kSuspended,  // StopForResume
    kEnded
  };

  void Read();
  void ReadOn();
  void Step();
  void TakePlace();
  void TakeSector(std::span<const std::uint8_t> sector);
  void TakePiece(const PackPiece& piece);
  void TakeJump();
  void TakeStreams();
  void TakeStill(int seconds);
  void TakeDamage();
  void Progress() { emptySteps = badSteps = 0; }

  void Push(PlayQueue& queue, PlayItem item);
  void PushToBoth(PlayItem::Kind kind);
  void NextStretch();
  void Flush();
  void EndStillNow();
  void WatchStill();
  void End(DVD_PB_STOPPED reason);
  void EndByItself();
  void CheckDisc();
  void WatchSize();
  void RunCommand();
  void AfterWish();
  void RefreshIfPaused();
  [[nodiscard]] bool HasRoom();
  [[nodiscard]] bool IsDrained() { return pictures.queue.IsIdle() && sounds.queue.IsIdle(); }
  void StepScan();
  void SetSpeed(double wanted, bool goBack);
  void EndScanAt(const Place& place);
  [[nodiscard]] bool Scans() const { return speed != 1.0 || backwards; }

  Navigator& navigator;
  const Surroundings around;
  PlaceBoard board;
  Timeline timeline;
  CommandDesk desk;
  PictureWorker pictures;
  SoundWorker sounds;
  std::thread reader;
  std::thread pictureThread;
  std::thread soundThread;
  bool started = false;

  // The reading thread's own.
  UnitClock units;
  Mode mode = Mode::kPlaying;
  int stretch = 0;
  int audioStream = -1;
  std::optional<DvdStreamKind> audioKind;  // any when it is not known
  Navigator::SubpictureStream subpicture;
  std::shared_ptr<const Place> read;  // the last place that was read
  bool awaitsPlace = true;            // what comes before one is not played
  int wishCount = 0;
  bool wished = false;                // the user's wish was done just now
  std::optional<MediaTime> stillEnd;  // none: for ever
  bool stillReached = false;
  DVD_PB_STOPPED endReason = DVD_PB_STOPPED_Other;
  std::uint64_t lastLookAtDisc = 0;
  std::uint64_t lastLookAtSize = 0;
  Size shownSize;
  int emptySteps = 0;  // without anything to play
  int badSteps = 0;    // in a row that could not be read
  double speed = 1.0;
  bool backwards = false;
  bool scanWished = false;    // the jump that comes is part of a scan
  bool stopWished = false;    // it leads to what stops by itself
  bool autoStopTold = false;  // of the end of what was wished
  int scannedTitle = 0;
  std::uint32_t sectorsOfUnit = 0;
  std::uint32_t keyPictureSectors = 0;  // of the unit, while scanning
  int stopTitle = 0;                    // 0: none
  int stopChapter = 0;
};

}  // namespace quorvex
