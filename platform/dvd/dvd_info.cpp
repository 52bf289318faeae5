#include "platform/dvd/dvd_info.h"

#include <vfwmsgs.h>

#include <algorithm>
#include <cstring>

#include "platform/dvd/languages.h"
#include "platform/dvd/stream_kinds.h"

namespace quorvex {
namespace {

constexpr ULONG kNone = 0xFFFFFFFF;

ULONG StreamNumber(int stream) { return stream >= 0 ? static_cast<ULONG>(stream) : kNone; }

void CopyAttributes(const StreamAttributes& attributes, DVD_ATR& target) {
  target.ulCAT = attributes.category;
  static_assert(sizeof target.pbATRI == StreamAttributes::kBytes);
  std::copy(attributes.bytes.begin(), attributes.bytes.end(), target.pbATRI);
}

}  // namespace

template <typename Tell>
HRESULT DvdInfo::WhilePlaying(Tell tell) {
  const std::shared_ptr<const Place> place = player.Shown();
  if (place->domain == DiscDomain::kStopped) {
    return filter.State() == State_Stopped ? VFW_E_DVD_GRAPHNOTREADY : VFW_E_DVD_INVALIDDOMAIN;
  }
  return tell(*place);
}

template <typename Tell>
HRESULT DvdInfo::InTitle(Tell tell) {
  return WhilePlaying([&](const Place& place) -> HRESULT {
    return place.domain == DiscDomain::kTitle ? tell(place) : VFW_E_DVD_INVALIDDOMAIN;
  });
}

HRESULT DvdInfo::GetCurrentDomain(DVD_DOMAIN* domain) {
  if (domain == nullptr) return E_POINTER;
  *domain = static_cast<DVD_DOMAIN>(player.Shown()->domain);
  return S_OK;
}

HRESULT DvdInfo::GetCurrentLocation(DVD_PLAYBACK_LOCATION* location) {
  if (location == nullptr) return E_POINTER;
  return InTitle([=](const Place& place) {
    *location = {static_cast<ULONG>(place.title), static_cast<ULONG>(place.chapter),
                 EncodeTimeCode(place.time, place.frameCount)};
    return S_OK;
  });
}

HRESULT DvdInfo::GetTotalTitleTime(ULONG* time) {
  if (time == nullptr) return E_POINTER;
  return InTitle([=](const Place& place) {
    *time = EncodeTimeCode(place.length, place.frameCount);
    return S_OK;
  });
}

HRESULT DvdInfo::GetCurrentButton(ULONG* available, ULONG* current) {
  if (available == nullptr || current == nullptr) return E_POINTER;
  return WhilePlaying([=](const Place& place) {
    *available = static_cast<ULONG>(place.Buttons());
    *current = place.Buttons() > 0 ? static_cast<ULONG>(place.SelectedButton()) : 0;
    return S_OK;
  });
}

HRESULT DvdInfo::GetCurrentAngle(ULONG* available, ULONG* current) {
  if (available == nullptr || current == nullptr) return E_POINTER;
  return InTitle([=](const Place& place) {
    *available = static_cast<ULONG>(place.angles);
    *current = static_cast<ULONG>(place.angle);
    return S_OK;
  });
}

HRESULT DvdInfo::GetCurrentAudio(ULONG* available, ULONG* current) {
  if (available == nullptr || current == nullptr) return E_POINTER;
  return WhilePlaying([=, this](const Place& place) {
    *available = static_cast<ULONG>(tables.Of(place.titleSet).AudioCount(PartOf(place)));
    *current = *available > 0 ? StreamNumber(place.audio) : kNone;
    return S_OK;
  });
}

HRESULT DvdInfo::GetCurrentSubpicture(ULONG* available, ULONG* current, WINBOOL* disabled) {
  if (available == nullptr || current == nullptr || disabled == nullptr) return E_POINTER;
  return WhilePlaying([=, this](const Place& place) {
    *available = static_cast<ULONG>(tables.Of(place.titleSet).SubpictureCount(PartOf(place)));
    *current = *available > 0 ? StreamNumber(place.subpicture) : kNone;
    *disabled = place.subpictureShown ? FALSE : TRUE;
    return S_OK;
  });
}

HRESULT DvdInfo::GetCurrentUOPS(VALID_UOP_SOMTHING_OR_OTHER* operations) {
  if (operations == nullptr) return E_POINTER;
  return WhilePlaying([=](const Place& place) {
    *operations = place.prohibited;
    return S_OK;
  });
}

HRESULT DvdInfo::GetAllSPRMs(SPRMARRAY* registers) {
  if (registers == nullptr) return E_POINTER;
  return WhilePlaying([=](const Place& place) {
    std::copy(place.systemRegisters.begin(), place.systemRegisters.end(), *registers);
    return S_OK;
  });
}

HRESULT DvdInfo::GetAllGPRMs(GPRMARRAY* registers) {
  if (registers == nullptr) return E_POINTER;
  return WhilePlaying([=](const Place& place) {
    std::copy(place.generalRegisters.begin(), place.generalRegisters.end(), *registers);
    return S_OK;
  });
}

HRESULT DvdInfo::GetAudioLanguage(ULONG stream, LCID* language) {
  if (language == nullptr) return E_POINTER;
  return WhilePlaying([=, this](const Place& place) {
    const StreamAttributes& attributes = tables.Of(place.titleSet);
    if (stream >= static_cast<ULONG>(attributes.AudioCount(PartOf(place)))) return E_INVALIDARG;
    *language = LanguageOfLetters(LanguageOf(attributes.AudioOf(PartOf(place), static_cast<int>(stream))));
    return S_OK;
  });
}

HRESULT DvdInfo::GetSubpictureLanguage(ULONG stream, LCID* language) {
  if (language == nullptr) return E_POINTER;
  return WhilePlaying([=, this](const Place& place) {
    const StreamAttributes& attributes = tables.Of(place.titleSet);
    if (stream >= static_cast<ULONG>(attributes.SubpictureCount(PartOf(place)))) return E_INVALIDARG;
    *language = LanguageOfLetters(LanguageOf(attributes.SubpictureOf(PartOf(place), static_cast<int>(stream))));
    return S_OK;
  });
}

HRESULT DvdInfo::GetTitleAttributes(ULONG title, DVD_ATR* attributes) {
  if (attributes == nullptr) return E_POINTER;
  if (title < 1 || title > tables.titles.size()) return E_INVALIDARG;
  CopyAttributes(tables.Of(tables.titles[title - 1].titleSet), *attributes);
  return S_OK;
}

HRESULT DvdInfo::GetVMGAttributes(DVD_ATR* attributes) {
  if (attributes == nullptr) return E_POINTER;
  CopyAttributes(tables.manager, *attributes);
  return S_OK;
}

HRESULT DvdInfo::GetCurrentVideoAttributes(DVD_VideoATR* attributes) {
  if (attributes == nullptr) return E_POINTER;
  return WhilePlaying([=, this](const Place& place) {
    const StreamAttributes::Video video = tables.Of(place.titleSet).VideoOf(PartOf(place));
    std::copy(video.begin(), video.end(), *attributes);
    return S_OK;
  });
}

HRESULT DvdInfo::GetCurrentAudioAttributes(DVD_AudioATR* attributes) {
  if (attributes == nullptr) return E_POINTER;
  return WhilePlaying([=, this](const Place& place) {
    if (place.audio < 0) return VFW_E_DVD_STREAM_DISABLED;
    const StreamAttributes::Audio audio = tables.Of(place.titleSet).AudioOf(PartOf(place), place.audio);
    std::copy(audio.begin(), audio.end(), *attributes);
    return S_OK;
  });
}

HRESULT DvdInfo::GetCurrentSubpictureAttributes(DVD_SubpictureATR* attributes) {
  if (attributes == nullptr) return E_POINTER;
  return WhilePlaying([=, this](const Place& place) {
    if (place.subpicture < 0) return VFW_E_DVD_STREAM_DISABLED;
    const auto subpicture = tables.Of(place.titleSet).SubpictureOf(PartOf(place), place.subpicture);
    std::copy(subpicture.begin(), subpicture.end(), *attributes);
    return S_OK;
  });
}

HRESULT DvdInfo::GetCurrentVolumeInfo(ULONG* volumes, ULONG* volume, DVD_DISC_SIDE* side, ULONG* titles) {
  if (volumes == nullptr || volume == nullptr || side == nullptr || titles == nullptr) return E_POINTER;
  *volumes = static_cast<ULONG>(tables.volumes);
  *volume = static_cast<ULONG>(tables.volume);
  *side = tables.side == 2 ? DVD_SIDE_B : DVD_SIDE_A;
  *titles = static_cast<ULONG>(tables.titles.size());
  return S_OK;
}

HRESULT DvdInfo::GetDVDTextInfo(BYTE* texts, ULONG size, ULONG* actualSize) {
  if (texts == nullptr || actualSize == nullptr) return E_POINTER;
  *actualSize = static_cast<ULONG>(std::min<std::size_t>(size, tables.texts.size()));
  std::copy_n(tables.texts.begin(), *actualSize, texts);
  return tables.texts.empty() ? VFW_E_DVD_NO_ATTRIBUTES : S_OK;
}

HRESULT DvdInfo::GetPlayerParentalLevel(ULONG* level, ULONG* country) {
  constexpr ULONG kNoLevel = 15;
  if (level == nullptr || country == nullptr) return E_POINTER;
  return WhilePlaying([=](const Place& place) {
    *level = place.systemRegisters[13] == kNoLevel ? kNone : place.systemRegisters[13];
    *country = place.systemRegisters[12];
    return S_OK;
  });
}

HRESULT DvdInfo::GetNumberOfChapters(ULONG title, ULONG* chapters) {
  if (chapters == nullptr) return E_POINTER;
  if (title < 1 || title > tables.titles.size()) return E_INVALIDARG;
  *chapters = static_cast<ULONG>(tables.titles[title - 1].chapters);
  return S_OK;
}

HRESULT DvdInfo::GetTitleParentalLevels(ULONG title, ULONG* levels) {
  if (levels == nullptr) return E_POINTER;
  if (title < 1 || title > tables.titles.size()) return E_INVALIDARG;
  *levels = tables.titles[title - 1].parentalLevels;
  return S_OK;
}

HRESULT DvdInfo::GetRoot(LPSTR root, ULONG size, ULONG* actualSize) {
  if (root == nullptr || actualSize == nullptr) return E_POINTER;
  const std::string text = path.string();
  *actualSize = static_cast<ULONG>(text.size() + 1);
  if (size < *actualSize) return E_OUTOFMEMORY;
  std::copy_n(text.c_str(), text.size() + 1, root);
  return S_OK;
}

}  // namespace quorvex
