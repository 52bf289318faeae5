#include "platform/dvd/disc_player.h"

#include <dvdevcod.h>

#include <algorithm>
#include <utility>

#include "platform/common/com_thread.h"
#include "platform/dvd/stream_kinds.h"

namespace quorvex {
namespace {

// What is read ahead: video units (half a second each), and bytes where none begin.
constexpr int kUnitsAhead = 3;
constexpr std::size_t kMostBytesAhead = std::size_t{4} << 20;
constexpr std::chrono::milliseconds kWait{20};
constexpr std::chrono::milliseconds kFlushLimit{1000};
constexpr std::uint64_t kLookAtSizeMs = 100;
constexpr std::uint64_t kLookAtDiscMs = 250;
// A disc that goes so long without anything to play goes in a circle.
constexpr int kMostEmptySteps = 3000;

}  // namespace

DiscPlayer::DiscPlayer(Navigator& opened, Surroundings given)
    : navigator(opened),
      around(std::move(given)),
      board(around.events),
      pictures(
          {around.filter, around.picturePin, timeline, board, around.captions, around.tables, around.canvas},
          [this] { desk.Ring(); }),
      sounds(around.filter, around.soundPin, timeline, [this] { desk.Ring(); }) {}

void DiscPlayer::Start() {
  if (started) return;
  started = true;
  pictures.queue.Reset();
  pictures.subpictures.Reset();
  sounds.queue.Reset();
  timeline.Cut(0);
  desk.Open();
  soundThread = std::thread([this] { sounds.Run(); });
  pictureThread = std::thread([this] { pictures.Run(); });
  reader = std::thread([this] { Read(); });
}

void DiscPlayer::Halt() {
  if (!started) return;
  started = false;
  desk.Close();
  pictures.queue.Halt();
  sounds.queue.Halt();
  around.picturePin.DeliverBeginFlush();
  around.soundPin.DeliverBeginFlush();
  for (std::thread* thread : {&reader, &pictureThread, &soundThread}) thread->join();
  around.picturePin.DeliverEndFlush();
  around.soundPin.DeliverEndFlush();
  navigator.Close();
  board.Stop(DVD_PB_STOPPED_StopCommand);
}

void DiscPlayer::Cue() {
  pictures.Cue();
  sounds.Cue();
}

// ---- The reading thread.

void DiscPlayer::Read() {
  const ComThread com;
  mode = Mode::kPlaying;
  units.Restart();
  ++stretch;
  awaitsPlace = true;
  wished = false;
  speed = 1.0;
  backwards = false;
  stopTitle = 0;
  Progress();
  if (!navigator.IsOpen() && !navigator.Open()) End(DVD_PB_STOPPED_DiscReadError);
  while (desk.IsOpen()) {
    RunCommand();
    CheckDisc();
    WatchSize();
    ReadOn();
  }
}

void DiscPlayer::ReadOn() {
  switch (mode) {
    case Mode::kPlaying:
      if (wished || HasRoom()) {
        Step();
      } else {
        desk.Await(kWait);
      }
      break;
    case Mode::kDraining:
      if (IsDrained()) {
        navigator.EndDrain();
        NextStretch();
        mode = Mode::kPlaying;
      } else {
        desk.Await(kWait);
      }
      break;
    case Mode::kStill: WatchStill(); break;
    case Mode::kSuspended:
    case Mode::kEnded: desk.Await(kWait * 5); break;
  }
}

bool DiscPlayer::HasRoom() {
  return pictures.queue.Places() < kUnitsAhead &&
         pictures.queue.Bytes() + sounds.queue.Bytes() < kMostBytesAhead;
}

void DiscPlayer::Step() {
  if (++emptySteps > kMostEmptySteps) {
    around.events.Tell(EC_DVD_ERROR, DVD_ERROR_Unexpected, 0);
    End(DVD_PB_STOPPED_NoBranch);
    return;
  }
  const bool justWished = std::exchange(wished, false);
  const DiscStep step = navigator.Next();
  switch (step.kind) {
    case DiscStep::Kind::kSector: TakeSector(step.sector); break;
    case DiscStep::Kind::kPlace: TakePlace(); break;
    case DiscStep::Kind::kJump:
      if (justWished) {
        Flush();
      } else {
        TakeJump();
      }
      break;
    case DiscStep::Kind::kPalette: {
      PlayItem item{.kind = PlayItem::Kind::kPalette};
      std::copy_n(step.palette.begin(), item.palette.size(), item.palette.begin());
      Push(pictures.queue, std::move(item));
      break;
    }
    case DiscStep::Kind::kStreams: TakeStreams(); break;
    case DiscStep::Kind::kHighlight: pictures.Select({navigator.Look().SelectedButton(), false}); break;
    case DiscStep::Kind::kStill: TakeStill(step.seconds); break;
    case DiscStep::Kind::kDrain:
      PushToBoth(PlayItem::Kind::kDrain);
      mode = Mode::kDraining;
      break;
    case DiscStep::Kind::kEnd: EndByItself(); break;
    case DiscStep::Kind::kUnreadable: TakeDamage(); break;
    case DiscStep::Kind::kNothing: break;
  }
}

void DiscPlayer::Push(PlayQueue& queue, PlayItem item) {
  item.stretch = stretch;
  queue.Push(std::move(item));
}

void DiscPlayer::PushToBoth(PlayItem::Kind kind) {
  Push(pictures.queue, {.kind = kind});
  Push(sounds.queue, {.kind = kind});
}

void DiscPlayer::TakePlace() {
  Progress();
  Place found = navigator.Look();
  found.wishes = wishCount;
  const auto place = std::make_shared<const Place>(found);
  read = place;
  EndScanAt(*place);
  const pci_gi_t& times = place->control.pci_gi;
  units.Begin(times.vobu_s_ptm, times.vobu_e_ptm, speed);
  awaitsPlace = false;
  sectorsOfUnit = 0;
  keyPictureSectors = Scans() ? navigator.KeyPictureSectors() : 0;
  if (stopTitle > 0 && (place->title != stopTitle || place->chapter > stopChapter)) {
    EndByItself();
    return;
  }
  pictures.SetSoundLeads(audioStream >= 0 && speed == 1.0);
  PlayItem item{.kind = PlayItem::Kind::kPlace, .time = units.Start(), .place = place};
  Push(pictures.queue, std::move(item));
  pictures.Select({place->SelectedButton(), false});
  if (Scans() && keyPictureSectors == 0) StepScan();  // the unit has no pictures
}

void DiscPlayer::TakeSector(std::span<const std::uint8_t> sector) {
  Progress();
  ++sectorsOfUnit;
  if (awaitsPlace) return;
  for (const PackPiece& piece : SplitPack(sector)) TakePiece(piece);
  if (Scans() && sectorsOfUnit >= keyPictureSectors) StepScan();
}

void DiscPlayer::TakePiece(const PackPiece& piece) {
  const bool isPicture = piece.kind == DvdStreamKind::kVideo;
  const bool isSubpicture = piece.kind == DvdStreamKind::kSubpicture;
  const bool isSound = !isPicture && !isSubpicture;
  if (piece.scrambled || (isSubpicture && piece.number != subpicture.number)) return;
  const bool isWanted = piece.number == audioStream && piece.kind == audioKind.value_or(piece.kind);
  if (isSound && (!isWanted || Scans())) return;
  PlayItem item{.kind = PlayItem::Kind::kData, .stream = piece.kind, .number = piece.number};
  item.bytes.assign(piece.bytes.begin(), piece.bytes.end());
  if (piece.pts) item.time = units.Time(*piece.pts);
  Push(isSound ? sounds.queue : isSubpicture ? pictures.subpictures : pictures.queue, std::move(item));
}

// The disc goes elsewhere by itself: what was read is played, and what follows comes right after it.
void DiscPlayer::TakeJump() {
  Push(pictures.queue, {.kind = PlayItem::Kind::kDrain});
  awaitsPlace = true;
}

void DiscPlayer::TakeStreams() {
  audioStream = navigator.AudioStream();
  audioKind = SoundKindAt(around.tables, navigator.Look());
  subpicture = navigator.SubpictureToShow();
  pictures.ShowOnlyForced(subpicture.onlyForced);
}

// What follows has nothing to do with what was before, in time.
void DiscPlayer::NextStretch() {
  ++stretch;
  units.Restart();
  awaitsPlace = true;
}

void DiscPlayer::Flush() {
  pictures.queue.BeginFlush();
  pictures.subpictures.Reset();
  sounds.queue.BeginFlush();
  around.picturePin.DeliverBeginFlush();
  around.soundPin.DeliverBeginFlush();
  pictures.queue.AwaitFlushed(kFlushLimit);
  sounds.queue.AwaitFlushed(kFlushLimit);
  timeline.Cut(around.filter.Now());
  for (OutputPin* pin : {&around.picturePin, &around.soundPin}) {
    pin->DeliverEndFlush();
    pin->DeliverNewSegment(0, kForever);
  }
  NextStretch();
}

// ---- Stills.

void DiscPlayer::TakeStill(int seconds) {
  Progress();
  PushToBoth(PlayItem::Kind::kDrain);
  mode = Mode::kStill;
  stillEnd.reset();
  if (seconds != DiscStep::kForeverSeconds) stillEnd = kSecond * seconds;  // from when it is reached
  stillReached = false;
}

void DiscPlayer::WatchStill() {
  if (!stillReached) {
    if (!IsDrained()) {
      desk.Await(kWait);
      return;
    }
    stillReached = true;
    const bool hasButtons = read && read->Buttons() > 0;
    const LONG_PTR length = stillEnd ? *stillEnd / kSecond : static_cast<LONG_PTR>(0xFFFFFFFF);
    around.events.Tell(EC_DVD_STILL_ON, hasButtons ? 0 : 1, length);
    if (stillEnd) *stillEnd += around.filter.Now();
  }
  if (stillEnd && around.filter.Now() >= *stillEnd) {
    EndStillNow();
  } else {
    desk.Await(kWait);
  }
}

void DiscPlayer::EndStillNow() {
  mode = Mode::kPlaying;
  navigator.EndStill();
  if (stillReached) around.events.Tell(EC_DVD_STILL_OFF, 0, 0);
  NextStretch();
}

// ---- What goes wrong.

void DiscPlayer::TakeDamage() {
  constexpr int kMostBadSteps = 60;
  ++badSteps;
  awaitsPlace = true;
  if (badSteps > kMostBadSteps || !navigator.SkipDamage(badSteps)) {
    around.events.Tell(EC_DVD_ERROR, DVD_ERROR_Unexpected, 0);
    End(DVD_PB_STOPPED_DiscReadError);
  } else if (badSteps == 1) {
    around.events.Tell(EC_DVD_WARNING, DVD_WARNING_Read, 0);
  }
}

void DiscPlayer::End(DVD_PB_STOPPED reason) {
  mode = Mode::kEnded;
  autoStopTold = false;
  navigator.Close();
  endReason = reason;
  PushToBoth(PlayItem::Kind::kEnd);
}

// The disc has no more to play, or not of what was wished.
void DiscPlayer::EndByItself() {
  End(stopTitle > 0 ? DVD_PB_STOPPED_PlayChapterAutoStop : DVD_PB_STOPPED_NoBranch);
}

void DiscPlayer::CheckDisc() {
  const std::uint64_t now = ::GetTickCount64();
  if (mode == Mode::kEnded) {
    if (!IsDrained()) return;
    if (endReason == DVD_PB_STOPPED_PlayChapterAutoStop && !std::exchange(autoStopTold, true))
      around.events.Tell(EC_DVD_CHAPTER_AUTOSTOP, 0, 0);
    board.Stop(endReason);
    return;
  }
  if (now - lastLookAtDisc < kLookAtDiscMs) return;
  lastLookAtDisc = now;
  if (around.isDiscThere()) return;
  around.events.Tell(EC_DVD_DISC_EJECTED, 0, 0);
  Flush();
  End(DVD_PB_STOPPED_DiscEjected);
}

// A renderer whose window gets another size forgets the picture that it holds: one that stands is shown
// again.
void DiscPlayer::WatchSize() {
  const std::uint64_t now = ::GetTickCount64();
  if (now - lastLookAtSize < kLookAtSizeMs) return;
  lastLookAtSize = now;
  if (std::exchange(shownSize, around.shownSize()) == shownSize) return;
  RefreshIfPaused();
  pictures.Renew();
}

}  // namespace quorvex
