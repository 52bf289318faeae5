#include "platform/dvd/dvd_control.h"

#include <control.h>

#include <algorithm>
#include <optional>

#include "platform/dvd/languages.h"
#include "platform/dvd/machine_state.h"
#include "platform/dvd/stream_kinds.h"

namespace quorvex {
namespace {

bool Forbids(const Place& place, ULONG operation) { return (place.prohibited & operation) != 0; }

// The operation that calls a menu.
std::optional<ULONG> MenuOperation(DVD_MENU_ID menu) {
  switch (menu) {
    case DVD_MENU_Title: return UOP_FLAG_ShowMenu_Title;
    case DVD_MENU_Root: return UOP_FLAG_ShowMenu_Root;
    case DVD_MENU_Subpicture: return UOP_FLAG_ShowMenu_SubPic;
    case DVD_MENU_Audio: return UOP_FLAG_ShowMenu_Audio;
    case DVD_MENU_Angle: return UOP_FLAG_ShowMenu_Angle;
    case DVD_MENU_Chapter: return UOP_FLAG_ShowMenu_Chapter;
  }
  return std::nullopt;
}

}  // namespace

bool DvdControl::HasChapter(ULONG title, ULONG chapter) const {
  return HasTitle(title) && chapter >= 1 && chapter <= static_cast<ULONG>(tables.titles[title - 1].chapters);
}

HRESULT DvdControl::Jump(ULONG operation, Go go, HRESULT refusal) {
  return player.Do([this, operation, go = std::move(go), refusal](DiscPlayer::Hand& hand) {
    if (Forbids(hand.shown, operation)) return VFW_E_DVD_OPERATION_INHIBITED;
    if (!go(hand)) return refusal;
    player.TakeUp();
    return S_OK;
  });
}

HRESULT DvdControl::JumpInTitle(ULONG operation, Go go, HRESULT refusal) {
  if (player.Shown()->domain != DiscDomain::kTitle) {
    const bool stopped = player.Shown()->domain == DiscDomain::kStopped;
    return stopped && filter.State() == State_Stopped ? VFW_E_DVD_GRAPHNOTREADY : VFW_E_DVD_INVALIDDOMAIN;
  }
  return Jump(operation, std::move(go), refusal);
}

HRESULT DvdControl::TitlePlay(ULONG title) {
  if (!HasTitle(title)) return E_INVALIDARG;
  return Jump(UOP_FLAG_Play_Title,
              [=](DiscPlayer::Hand& hand) { return hand.navigator.PlayTitle(static_cast<int>(title)); });
}

HRESULT DvdControl::ChapterPlay(ULONG title, ULONG chapter) {
  if (!HasChapter(title, chapter)) return E_INVALIDARG;
  return Jump(UOP_FLAG_Play_Chapter, [=](DiscPlayer::Hand& hand) {
    return hand.navigator.PlayChapter(static_cast<int>(title), static_cast<int>(chapter));
  });
}

HRESULT DvdControl::TimePlay(ULONG title, ULONG time) {
  const std::optional<DvdTicks> ticks = DecodeTimeCode(time);
  if (!HasTitle(title) || !ticks) return E_INVALIDARG;
  return Jump(UOP_FLAG_Play_Title_Or_AtTime, [=](DiscPlayer::Hand& hand) {
    return hand.navigator.PlayTime(static_cast<int>(title), *ticks);
  });
}

HRESULT DvdControl::StopForResume() {
  return player.Do([this](DiscPlayer::Hand& hand) {
    if (hand.shown.domain == DiscDomain::kStopped) return VFW_E_DVD_INVALIDDOMAIN;
    if (Forbids(hand.shown, UOP_FLAG_Stop)) return VFW_E_DVD_OPERATION_INHIBITED;
    player.Suspend();
    return S_OK;
  });
}

HRESULT DvdControl::GoUp() {
  return Jump(
      UOP_FLAG_ReturnFromSubMenu, [](DiscPlayer::Hand& hand) { return hand.navigator.GoUp(); },
      VFW_E_DVD_NO_GOUP_PGC);
}

HRESULT DvdControl::TimeSearch(ULONG time) {
  const std::optional<DvdTicks> ticks = DecodeTimeCode(time);
  if (!ticks) return E_INVALIDARG;
  const std::shared_ptr<const Place> shown = player.Shown();
  if (shown->domain == DiscDomain::kTitle && *ticks > shown->length) return E_INVALIDARG;
  return JumpInTitle(UOP_FLAG_Play_Chapter_Or_AtTime,
                     [=](DiscPlayer::Hand& hand) { return hand.navigator.SearchTime(*ticks); });
}

HRESULT DvdControl::ChapterSearch(ULONG chapter) {
  const std::shared_ptr<const Place> shown = player.Shown();
  if (shown->domain == DiscDomain::kTitle && !HasChapter(static_cast<ULONG>(shown->title), chapter))
    return E_INVALIDARG;
  return JumpInTitle(UOP_FLAG_Play_Chapter_Or_AtTime, [=](DiscPlayer::Hand& hand) {
    return hand.navigator.PlayChapter(hand.shown.title, static_cast<int>(chapter));
  });
}

// Programs before and behind that which is shown: the machine has read on.
HRESULT DvdControl::PrevPGSearch() {
  return Jump(UOP_FLAG_PlayPrev_Or_Replay_Chapter, [](DiscPlayer::Hand& hand) {
    if (hand.shown.domain != DiscDomain::kTitle) return hand.navigator.PreviousProgram();
    return hand.shown.chapter > 1 && hand.navigator.PlayChapter(hand.shown.title, hand.shown.chapter - 1);
  });
}

HRESULT DvdControl::TopPGSearch() {
  return Jump(UOP_FLAG_PlayPrev_Or_Replay_Chapter, [](DiscPlayer::Hand& hand) {
    if (hand.shown.domain != DiscDomain::kTitle) return hand.navigator.TopProgram();
    return hand.navigator.PlayChapter(hand.shown.title, hand.shown.chapter);
  });
}

HRESULT DvdControl::NextPGSearch() {
  return Jump(UOP_FLAG_PlayNext_Chapter, [this](DiscPlayer::Hand& hand) {
    if (hand.shown.domain != DiscDomain::kTitle) return hand.navigator.NextProgram();
    const int next = hand.shown.chapter + 1;
    const bool exists = HasChapter(static_cast<ULONG>(hand.shown.title), static_cast<ULONG>(next));
    return exists && hand.navigator.PlayChapter(hand.shown.title, next);
  });
}

HRESULT DvdControl::Scan(ULONG operation, double speed, bool backwards) {
  if (!(speed > 0.0) || speed > 100.0) return E_INVALIDARG;
  return player.Do([=, this](DiscPlayer::Hand& hand) {
    const bool normal = speed == 1.0 && !backwards;
    if (normal && player.TakeUp()) return S_OK;
    if (Forbids(hand.shown, operation)) return VFW_E_DVD_OPERATION_INHIBITED;
    // Also in menus: they have buttons and loops, but no times to scan.
    if (!normal && hand.shown.domain != DiscDomain::kTitle) return VFW_E_DVD_INVALIDDOMAIN;
    player.Scan(speed, backwards);
    return S_OK;
  });
}

HRESULT DvdControl::ForwardScan(double speed) {
  return Scan(speed == 1.0 ? 0 : UOP_FLAG_Play_Forwards, speed, false);
}
HRESULT DvdControl::BackwardScan(double speed) { return Scan(UOP_FLAG_Play_Backwards, speed, true); }

HRESULT DvdControl::MenuCall(DVD_MENU_ID menu) {
  const std::optional<ULONG> operation = MenuOperation(menu);
  if (!operation) return E_INVALIDARG;
  if (player.Shown()->domain == DiscDomain::kFirstPlay) return VFW_E_DVD_INVALIDDOMAIN;
  return Jump(
      *operation,
      [=](DiscPlayer::Hand& hand) {
        return hand.navigator.CallMenu(static_cast<DiscMenu>(menu), hand.shown);
      },
      VFW_E_DVD_MENU_DOES_NOT_EXIST);
}

HRESULT DvdControl::Resume() {
  return player.Do([this](DiscPlayer::Hand& hand) {
    if (player.TakeUp()) return S_OK;
    if (hand.shown.domain == DiscDomain::kTitle) return VFW_E_DVD_INVALIDDOMAIN;
    if (Forbids(hand.shown, UOP_FLAG_Resume)) return VFW_E_DVD_OPERATION_INHIBITED;
    return hand.navigator.Resume() ? S_OK : VFW_E_DVD_NO_RESUME_INFORMATION;
  });
}

HRESULT DvdControl::WithButtons(const std::function<HRESULT(DiscPlayer::Hand&)>& act) {
  return player.Do([act](DiscPlayer::Hand& hand) {
    if (hand.shown.domain == DiscDomain::kStopped) return VFW_E_DVD_INVALIDDOMAIN;
    if (hand.shown.Buttons() == 0) return VFW_E_DVD_NO_BUTTON;
    if (Forbids(hand.shown, UOP_FLAG_Select_Or_Activate_Button)) return VFW_E_DVD_OPERATION_INHIBITED;
    return act(hand);
  });
}

HRESULT DvdControl::Move(ButtonMove move) {
  return WithButtons([move](DiscPlayer::Hand& hand) {
    return hand.navigator.MoveButton(hand.shown.control, move) ? S_OK : VFW_E_DVD_NO_BUTTON;
  });
}

HRESULT DvdControl::Activate(DiscPlayer::Hand& hand, int button) {
  if (button < 1 || button > hand.shown.Buttons()) return VFW_E_DVD_NO_BUTTON;
  hand.navigator.SelectButton(hand.shown.control, button);
  player.ShowActivated(button);
  return hand.navigator.ActivateButton(hand.shown.control) ? S_OK : VFW_E_DVD_NO_BUTTON;
}

HRESULT DvdControl::ButtonActivate() {
  return WithButtons([this](DiscPlayer::Hand& hand) { return Activate(hand, hand.shown.SelectedButton()); });
}

HRESULT DvdControl::ButtonSelectAndActivate(ULONG button) {
  return WithButtons([=, this](DiscPlayer::Hand& hand) { return Activate(hand, static_cast<int>(button)); });
}

HRESULT DvdControl::StillOff() {
  return player.Do([this](DiscPlayer::Hand& hand) {
    if (Forbids(hand.shown, UOP_FLAG_Still_Off)) return VFW_E_DVD_OPERATION_INHIBITED;
    return player.EndStill() ? S_OK : VFW_E_DVD_INVALIDDOMAIN;
  });
}

// The graph is what pauses.
HRESULT DvdControl::PauseOn() {
  if (Forbids(*player.Shown(), UOP_FLAG_Pause_On)) return VFW_E_DVD_OPERATION_INHIBITED;
  const auto graph = filter.Graph().As<IMediaControl>();
  return graph ? graph->Pause() : VFW_E_DVD_GRAPHNOTREADY;
}

HRESULT DvdControl::PauseOff() {
  const auto graph = filter.Graph().As<IMediaControl>();
  return graph ? graph->Run() : VFW_E_DVD_GRAPHNOTREADY;
}

HRESULT DvdControl::MenuLanguageSelect(LCID language) {
  const std::uint16_t letters = LanguageLetters(language);
  if (letters == 0) return E_INVALIDARG;
  return player.Do([letters](DiscPlayer::Hand& hand) {
    hand.navigator.SetMenuLanguage(letters);
    return S_OK;
  });
}

HRESULT DvdControl::AudioStreamChange(ULONG stream) {
  return player.Do([=, this](DiscPlayer::Hand& hand) {
    if (hand.shown.domain != DiscDomain::kTitle) return VFW_E_DVD_INVALIDDOMAIN;
    const auto count = tables.Of(hand.shown.titleSet).AudioCount(StreamAttributes::Part::kTitle);
    if (stream >= static_cast<ULONG>(count)) return E_INVALIDARG;
    if (Forbids(hand.shown, UOP_FLAG_Select_Audio_Stream)) return VFW_E_DVD_OPERATION_INHIBITED;
    hand.navigator.SelectAudio(static_cast<int>(stream));
    return S_OK;
  });
}

HRESULT DvdControl::SubpictureStreamChange(ULONG stream, WINBOOL shown) {
  return player.Do([=, this](DiscPlayer::Hand& hand) {
    if (hand.shown.domain != DiscDomain::kTitle) return VFW_E_DVD_INVALIDDOMAIN;
    const auto count = tables.Of(hand.shown.titleSet).SubpictureCount(StreamAttributes::Part::kTitle);
    if (stream >= static_cast<ULONG>(count) && stream != kNoSubpicture && stream != kForcedSubpictures)
      return E_INVALIDARG;
    if (Forbids(hand.shown, UOP_FLAG_Select_SubPic_Stream)) return VFW_E_DVD_OPERATION_INHIBITED;
    hand.navigator.SelectSubpicture(static_cast<int>(stream), shown != FALSE);
    return S_OK;
  });
}

HRESULT DvdControl::AngleChange(ULONG angle) {
  return player.Do([=](DiscPlayer::Hand& hand) {
    if (hand.shown.domain != DiscDomain::kTitle) return VFW_E_DVD_INVALIDDOMAIN;
    if (angle < 1 || angle > static_cast<ULONG>(hand.shown.angles)) return E_INVALIDARG;
    if (Forbids(hand.shown, UOP_FLAG_Select_Angle)) return VFW_E_DVD_OPERATION_INHIBITED;
    return hand.navigator.SelectAngle(static_cast<int>(angle)) ? S_OK : E_INVALIDARG;
  });
}

HRESULT DvdControl::ParentalLevelSelect(ULONG level) {
  constexpr ULONG kOff = 0xFFFFFFFF;
  constexpr int kNoLevel = 15;
  if ((level < 1 || level > 8) && level != kOff) return E_INVALIDARG;
  return player.Do([=](DiscPlayer::Hand& hand) {
    hand.navigator.SetParentalLevel(level == kOff ? kNoLevel : static_cast<int>(level));
    return S_OK;
  });
}

HRESULT DvdControl::ParentalCountrySelect(WORD country) {
  return player.Do([=](DiscPlayer::Hand& hand) {
    hand.navigator.SetCountry(country);
    return S_OK;
  });
}

// The discs that mix karaoke are heard as they are.
HRESULT DvdControl::KaraokeAudioPresentationModeChange(ULONG) { return VFW_E_DVD_NOT_IN_KARAOKE_MODE; }

// Pictures of both shapes are shown whole.
HRESULT DvdControl::VideoModePreferrence(ULONG mode) {
  return mode <= DISPLAY_4x3_LETTERBOX_PREFERRED ? S_OK : E_INVALIDARG;
}

// A disc is chosen when the graph is built.
HRESULT DvdControl::SetRoot(LPCWSTR) { return E_NOTIMPL; }

int DvdControl::ButtonAt(const Place& place, POINT point) {
  const std::optional<Point> pixel = window.VideoPoint(point, ShapeAt(tables, place));
  if (!pixel) return 0;
  for (int i = 0; i < std::min(place.Buttons(), 36); ++i) {
    const btni_t& button = place.control.hli.btnit[i];
    const Rect area{static_cast<int>(button.x_start), static_cast<int>(button.y_start),
                    static_cast<int>(button.x_end) + 1, static_cast<int>(button.y_end) + 1};
    if (area.Contains(*pixel)) return i + 1;
  }
  return 0;
}

HRESULT DvdControl::MouseActivate(POINT point) {
  const int button = ButtonAt(*player.Shown(), point);
  return WithButtons([=, this](DiscPlayer::Hand& hand) { return Activate(hand, button); });
}

HRESULT DvdControl::MouseSelect(POINT point) {
  const int button = ButtonAt(*player.Shown(), point);
  return WithButtons([=](DiscPlayer::Hand& hand) {
    return button > 0 && hand.navigator.SelectButton(hand.shown.control, button) ? S_OK : VFW_E_DVD_NO_BUTTON;
  });
}

HRESULT DvdControl::ChapterPlayAutoStop(ULONG title, ULONG chapter, ULONG count) {
  constexpr ULONG kMostChapters = 999;
  if (!HasChapter(title, chapter) || count == 0) return E_INVALIDARG;
  return Jump(UOP_FLAG_Play_Chapter, [=, this](DiscPlayer::Hand& hand) {
    if (!hand.navigator.PlayChapter(static_cast<int>(title), static_cast<int>(chapter))) return false;
    player.StopAfter(static_cast<int>(title), static_cast<int>(chapter - 1 + std::min(count, kMostChapters)));
    return true;
  });
}

}  // namespace quorvex
