// IDvdInfo: where the disc is and what is on it. Asks nobody: it tells the place that is shown, and the
// tables that were read when the disc was opened.
#pragma once

#include <windows.h>

#include "platform/dvd/dvd_interfaces.h"

#include <filesystem>
#include <functional>

#include "platform/dvd/disc_player.h"
#include "platform/dvd/disc_tables.h"
#include "platform/common/filter_part.h"

namespace quorvex {

class DvdInfo final : public FilterPart<IDvdInfo> {
 public:
  // All that is named lives as long as the filter.
  DvdInfo(FilterBase& owner, DiscPlayer& played, const DiscTables& known, std::filesystem::path root)
      : FilterPart(owner), player(played), tables(known), path(std::move(root)) {}

  HRESULT STDMETHODCALLTYPE GetCurrentDomain(DVD_DOMAIN* domain) override;
  HRESULT STDMETHODCALLTYPE GetCurrentLocation(DVD_PLAYBACK_LOCATION* location) override;
  HRESULT STDMETHODCALLTYPE GetTotalTitleTime(ULONG* time) override;
  HRESULT STDMETHODCALLTYPE GetCurrentButton(ULONG* available, ULONG* current) override;
  HRESULT STDMETHODCALLTYPE GetCurrentAngle(ULONG* available, ULONG* current) override;
  HRESULT STDMETHODCALLTYPE GetCurrentAudio(ULONG* available, ULONG* current) override;
  HRESULT STDMETHODCALLTYPE GetCurrentSubpicture(ULONG* available, ULONG* current, WINBOOL* disabled) override;
  HRESULT STDMETHODCALLTYPE GetCurrentUOPS(VALID_UOP_SOMTHING_OR_OTHER* operations) override;
  HRESULT STDMETHODCALLTYPE GetAllSPRMs(SPRMARRAY* registers) override;
  HRESULT STDMETHODCALLTYPE GetAllGPRMs(GPRMARRAY* registers) override;
  HRESULT STDMETHODCALLTYPE GetAudioLanguage(ULONG stream, LCID* language) override;
  HRESULT STDMETHODCALLTYPE GetSubpictureLanguage(ULONG stream, LCID* language) override;
  HRESULT STDMETHODCALLTYPE GetTitleAttributes(ULONG title, DVD_ATR* attributes) override;
  HRESULT STDMETHODCALLTYPE GetVMGAttributes(DVD_ATR* attributes) override;
  HRESULT STDMETHODCALLTYPE GetCurrentVideoAttributes(DVD_VideoATR* attributes) override;
  HRESULT STDMETHODCALLTYPE GetCurrentAudioAttributes(DVD_AudioATR* attributes) override;
  HRESULT STDMETHODCALLTYPE GetCurrentSubpictureAttributes(DVD_SubpictureATR* attributes) override;
  HRESULT STDMETHODCALLTYPE GetCurrentVolumeInfo(ULONG* volumes, ULONG* volume, DVD_DISC_SIDE* side,
                                                 ULONG* titles) override;
  HRESULT STDMETHODCALLTYPE GetDVDTextInfo(BYTE* texts, ULONG size, ULONG* actualSize) override;
  HRESULT STDMETHODCALLTYPE GetPlayerParentalLevel(ULONG* level, ULONG* country) override;
  HRESULT STDMETHODCALLTYPE GetNumberOfChapters(ULONG title, ULONG* chapters) override;
  HRESULT STDMETHODCALLTYPE GetTitleParentalLevels(ULONG title, ULONG* levels) override;
  HRESULT STDMETHODCALLTYPE GetRoot(LPSTR root, ULONG size, ULONG* actualSize) override;

 private:
  // Calls tell(place) when the disc is played; answers VFW_E_DVD_INVALIDDOMAIN when it is stopped.
  template <typename Tell>
  HRESULT WhilePlaying(Tell tell);
  // The same while a title plays.
  template <typename Tell>
  HRESULT InTitle(Tell tell);

  DiscPlayer& player;
  const DiscTables& tables;
  const std::filesystem::path path;
};

}  // namespace quorvex
