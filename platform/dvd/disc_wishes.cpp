// What the user wishes of a disc that plays: the part of DiscPlayer that other threads call, and what the
// reading thread does for them.
#include <dvdevcod.h>
#include <vfwmsgs.h>

#include <algorithm>
#include <utility>

#include "platform/dvd/disc_player.h"

namespace quorvex {
namespace {

// Long enough for any disc that is not stuck, short enough for a thread that draws windows.
constexpr std::chrono::milliseconds kAnswerLimit{150};

}  // namespace

HRESULT DiscPlayer::Do(Wish wish) {
  if (!desk.IsOpen()) return VFW_E_DVD_GRAPHNOTREADY;
  const auto run = [this, wish = std::move(wish)] {
    const std::shared_ptr<const Place> shown = board.Shown();
    Hand hand{navigator, *shown};
    wished = true;
    return wish(hand);
  };
  return desk.HandIn(run, kAnswerLimit).value_or(desk.IsOpen() ? S_OK : VFW_E_DVD_GRAPHNOTREADY);
}

void DiscPlayer::RunCommand() {
  const std::shared_ptr<Command> command = desk.Take();
  if (!command) return;
  if (!navigator.IsOpen()) navigator.Open();
  const HRESULT result = command->run();
  if (SUCCEEDED(result)) AfterWish();
  desk.Answer(*command, result);
}

// A wish that led elsewhere shows in the machine's next step. One that changed the selected button or a
// stream is seen at once.
void DiscPlayer::AfterWish() {
  if (mode == Mode::kSuspended) return;
  Place now = navigator.Look();
  now.wishes = ++wishCount;
  if (navigator.HasJumped()) {
    if (mode == Mode::kStill && stillReached) around.events.Tell(EC_DVD_STILL_OFF, 0, 0);
    mode = Mode::kPlaying;
    if (!std::exchange(scanWished, false)) SetSpeed(1.0, false);
    if (!std::exchange(stopWished, false)) stopTitle = 0;
    return;
  }
  TakeStreams();
  pictures.Select({now.SelectedButton(), false});
  board.Choose(now);
  RefreshIfPaused();
}

// A renderer that stands holds its picture: it gives it up only when it is flushed.
void DiscPlayer::RefreshIfPaused() {
  if (around.filter.State() == State_Paused) pictures.FlushAndRenew();
}

bool DiscPlayer::EndStill() {
  if (mode != Mode::kStill) return false;
  EndStillNow();
  return true;
}

void DiscPlayer::StopAfter(int title, int lastChapter) {
  stopWished = true;
  stopTitle = title;
  stopChapter = lastChapter;
}

// What has been read ahead is read again then.
void DiscPlayer::Suspend() {
  navigator.ReturnTo(*board.Shown());
  Flush();
  mode = Mode::kSuspended;
  board.Stop(DVD_PB_STOPPED_StopCommand);
}

bool DiscPlayer::TakeUp() {
  if (mode != Mode::kSuspended) return false;
  mode = Mode::kPlaying;
  return true;
}

// ---- Scanning.

void DiscPlayer::SetSpeed(double wanted, bool goBack) {
  if (wanted == speed && goBack == backwards) return;
  speed = wanted;
  backwards = goBack;
  const double told = (backwards ? -speed : speed) * 10000;
  around.events.Tell(EC_DVD_PLAYBACK_RATE_CHANGE, static_cast<LONG_PTR>(told), 0);
}

void DiscPlayer::Scan(double wanted, bool goBack) {
  if (wanted == speed && goBack == backwards) return;
  const std::shared_ptr<const Place> shown = board.Shown();
  SetSpeed(wanted, goBack);
  scannedTitle = shown->title;
  scanWished = navigator.ReturnTo(*shown);
  // Otherwise the machine has read on behind the programme chain: what was read of it is played.
  if (!scanWished) EndScanAt(navigator.Look());
}

// A scan does not go on in what follows its title.
void DiscPlayer::EndScanAt(const Place& place) {
  const bool inTitle = place.domain == DiscDomain::kTitle && place.title == scannedTitle;
  if (Scans() && !inTitle) SetSpeed(1.0, false);
}

// The key picture of the unit was read: on to that of the next unit, or of the one before.
void DiscPlayer::StepScan() {
  Push(pictures.queue, {.kind = PlayItem::Kind::kDrain});
  awaitsPlace = true;
  if (!backwards || navigator.StepBack()) return;
  SetSpeed(1.0, false);
  Flush();
}

}  // namespace quorvex
