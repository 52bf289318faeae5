#include "platform/dvd/place_board.h"

#include <utility>

namespace quorvex {
namespace {

// What stands for "none" in events.
LONG_PTR StreamNumber(int stream) { return static_cast<LONG_PTR>(static_cast<ULONG>(stream)); }

// A place as it is with what was chosen; where, and when, stay as they are.
Place WithChoice(Place place, const Place& chosen) {
  place.systemRegisters = chosen.systemRegisters;
  place.generalRegisters = chosen.generalRegisters;
  if (place.titleSet != chosen.titleSet || place.domain != chosen.domain) return place;
  place.audio = chosen.audio;
  place.subpicture = chosen.subpicture;
  place.subpictureShown = chosen.subpictureShown;
  place.angle = chosen.angle;
  return place;
}

}  // namespace

void PlaceBoard::Show(std::shared_ptr<const Place> place) {
  const std::scoped_lock lock(changing);
  if (place->wishes < chosen.wishes) place = std::make_shared<const Place>(WithChoice(*place, chosen));
  Replace(place);
}

void PlaceBoard::Choose(const Place& machine) {
  const std::scoped_lock lock(changing);
  chosen = machine;
  const Place changed = WithChoice(*Shown(), chosen);
  if (changed.domain != DiscDomain::kStopped) Replace(std::make_shared<const Place>(changed));
}

void PlaceBoard::Replace(const std::shared_ptr<const Place>& place) {
  std::shared_ptr<const Place> before;
  {
    const std::scoped_lock lock(mutex);
    before = std::exchange(shown, place);
  }
  TellDifferences(*before, *place);
}

void PlaceBoard::Stop(DVD_PB_STOPPED reason) {
  const std::scoped_lock lock(changing);
  if (Shown()->domain == DiscDomain::kStopped) return;
  events.Tell(EC_DVD_PLAYBACK_STOPPED, reason, 0);
  Replace(std::make_shared<const Place>());
}

void PlaceBoard::TellDifferences(const Place& before, const Place& now) {
  if (now.domain != before.domain) events.Tell(EC_DVD_DOMAIN_CHANGE, static_cast<LONG_PTR>(now.domain), 0);
  if (now.domain == DiscDomain::kStopped) return;
  if (now.title > 0 && now.title != before.title) events.Tell(EC_DVD_TITLE_CHANGE, now.title, 0);
  if (now.title > 0 && (now.chapter != before.chapter || now.title != before.title))
    events.Tell(EC_DVD_CHAPTER_START, now.chapter, 0);
  if (now.title > 0 && (now.time != before.time || now.title != before.title))
    events.Tell(EC_DVD_CURRENT_TIME, static_cast<LONG_PTR>(EncodeTimeCode(now.time, now.frameCount)), 0);
  if (now.prohibited != before.prohibited)
    events.Tell(EC_DVD_VALID_UOPS_CHANGE, static_cast<LONG_PTR>(now.prohibited), 0);
  const bool buttonsDiffer = now.Buttons() != before.Buttons() ||
                             (now.Buttons() > 0 && now.SelectedButton() != before.SelectedButton());
  if (buttonsDiffer) events.Tell(EC_DVD_BUTTON_CHANGE, now.Buttons(), now.SelectedButton());
  TellStreams(before, now);
}

void PlaceBoard::TellStreams(const Place& before, const Place& now) {
  if (now.audio != before.audio) events.Tell(EC_DVD_AUDIO_STREAM_CHANGE, StreamNumber(now.audio), 0);
  if (now.subpicture != before.subpicture || now.subpictureShown != before.subpictureShown)
    events.Tell(EC_DVD_SUBPICTURE_STREAM_CHANGE, StreamNumber(now.subpicture), now.subpictureShown ? 1 : 0);
  if (now.angle != before.angle || now.angles != before.angles)
    events.Tell(EC_DVD_ANGLE_CHANGE, now.angles, now.angle);
  if (now.systemRegisters[13] != before.systemRegisters[13] && before.domain != DiscDomain::kStopped)
    events.Tell(EC_DVD_PARENTAL_LEVEL_CHANGE, now.systemRegisters[13], 0);
}

}  // namespace quorvex
