// IDvdControl: the user's wishes of a disc. What the disc forbids, or has not, is answered with the
// platform's code; no call waits long.
#pragma once

#include <windows.h>

#include <vfwmsgs.h>

#include "platform/dvd/dvd_interfaces.h"

#include "platform/dvd/disc_player.h"
#include "platform/dvd/disc_tables.h"
#include "platform/dvd/dvd_window.h"
#include "platform/common/filter_part.h"

namespace quorvex {

class DvdControl final : public FilterPart<IDvdControl> {
 public:
  // All that is named lives as long as the filter.
  DvdControl(FilterBase& owner, DiscPlayer& played, const DiscTables& known, DvdWindow& seen)
      : FilterPart(owner), player(played), tables(known), window(seen) {}

  HRESULT STDMETHODCALLTYPE TitlePlay(ULONG title) override;
  HRESULT STDMETHODCALLTYPE ChapterPlay(ULONG title, ULONG chapter) override;
  HRESULT STDMETHODCALLTYPE TimePlay(ULONG title, ULONG time) override;
  HRESULT STDMETHODCALLTYPE StopForResume() override;
  HRESULT STDMETHODCALLTYPE GoUp() override;
  HRESULT STDMETHODCALLTYPE TimeSearch(ULONG time) override;
  HRESULT STDMETHODCALLTYPE ChapterSearch(ULONG chapter) override;
  HRESULT STDMETHODCALLTYPE PrevPGSearch() override;
  HRESULT STDMETHODCALLTYPE TopPGSearch() override;
  HRESULT STDMETHODCALLTYPE NextPGSearch() override;
  HRESULT STDMETHODCALLTYPE ForwardScan(double speed) override;
  HRESULT STDMETHODCALLTYPE BackwardScan(double speed) override;
  HRESULT STDMETHODCALLTYPE MenuCall(DVD_MENU_ID menu) override;
  HRESULT STDMETHODCALLTYPE Resume() override;
  HRESULT STDMETHODCALLTYPE UpperButtonSelect() override { return Move(ButtonMove::kUp); }
  HRESULT STDMETHODCALLTYPE LowerButtonSelect() override { return Move(ButtonMove::kDown); }
  HRESULT STDMETHODCALLTYPE LeftButtonSelect() override { return Move(ButtonMove::kLeft); }
  HRESULT STDMETHODCALLTYPE RightButtonSelect() override { return Move(ButtonMove::kRight); }
  HRESULT STDMETHODCALLTYPE ButtonActivate() override;
  HRESULT STDMETHODCALLTYPE ButtonSelectAndActivate(ULONG button) override;
  HRESULT STDMETHODCALLTYPE StillOff() override;
  HRESULT STDMETHODCALLTYPE PauseOn() override;
  HRESULT STDMETHODCALLTYPE PauseOff() override;
  HRESULT STDMETHODCALLTYPE MenuLanguageSelect(LCID language) override;
  HRESULT STDMETHODCALLTYPE AudioStreamChange(ULONG stream) override;
  HRESULT STDMETHODCALLTYPE SubpictureStreamChange(ULONG stream, WINBOOL shown) override;
  HRESULT STDMETHODCALLTYPE AngleChange(ULONG angle) override;
  HRESULT STDMETHODCALLTYPE ParentalLevelSelect(ULONG level) override;
  HRESULT STDMETHODCALLTYPE ParentalCountrySelect(WORD country) override;
  HRESULT STDMETHODCALLTYPE KaraokeAudioPresentationModeChange(ULONG mode) override;
  HRESULT STDMETHODCALLTYPE VideoModePreferrence(ULONG mode) override;
  HRESULT STDMETHODCALLTYPE SetRoot(LPCWSTR path) override;
  HRESULT STDMETHODCALLTYPE MouseActivate(POINT point) override;
  HRESULT STDMETHODCALLTYPE MouseSelect(POINT point) override;
  HRESULT STDMETHODCALLTYPE ChapterPlayAutoStop(ULONG title, ULONG chapter, ULONG count) override;

 private:
  using Go = std::function<bool(DiscPlayer::Hand&)>;

  // Goes elsewhere, unless the disc forbids the operation; `refusal` when it cannot.
  HRESULT Jump(ULONG operation, Go go, HRESULT refusal = VFW_E_DVD_OPERATION_INHIBITED);
  // The same while a title plays.
  HRESULT JumpInTitle(ULONG operation, Go go, HRESULT refusal = VFW_E_DVD_OPERATION_INHIBITED);
  HRESULT Move(ButtonMove move);
  HRESULT Scan(ULONG operation, double speed, bool backwards);
  // What is done with the buttons of the menu that is shown.
  HRESULT WithButtons(const std::function<HRESULT(DiscPlayer::Hand&)>& act);
  HRESULT Activate(DiscPlayer::Hand& hand, int button);
  [[nodiscard]] int ButtonAt(const Place& place, POINT point);
  [[nodiscard]] bool HasTitle(ULONG title) const { return title >= 1 && title <= tables.titles.size(); }
  [[nodiscard]] bool HasChapter(ULONG title, ULONG chapter) const;

  DiscPlayer& player;
  const DiscTables& tables;
  DvdWindow& window;
};

}  // namespace quorvex
