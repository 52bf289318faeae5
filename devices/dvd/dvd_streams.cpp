#include "devices/dvd/dvd_streams.h"

#include <algorithm>
#include <functional>
#include <string>

#include "devices/dvd/language.h"
#include "panel/commands.h"

namespace quorvex {
namespace {

constexpr int kNoSubtitles = kFirstSubtitleCommand;
constexpr int kFirstSubtitle = kNoSubtitles + 1;
constexpr int kLongestName = 260;

UINT_PTR MenuId(int command) { return static_cast<UINT_PTR>(command); }

std::string NameOfLocale(LCID locale) {
  char name[kLongestName] = "";
  return ::GetLocaleInfoA(locale, LOCALE_SENGLANGUAGE, name, kLongestName) != 0 ? name : "";
}

// What the navigator answers when it is asked for a stream's language.
using AskLanguage = std::function<HRESULT(ULONG stream, LCID* language)>;
// The language in a stream's attributes; empty when the navigator does not hand them out.
using AskAttributes = std::function<std::string(ULONG stream)>;

std::string StreamName(ULONG stream, const AskLanguage& language, const AskAttributes& attributes) {
  LCID locale = 0;
  std::string name;
  if (SUCCEEDED(language(stream, &locale)) && locale != 0) name = NameOfLocale(locale);
  if (name.empty()) name = attributes(stream);
  return name.empty() ? kUnknownLanguage : name;
}

// No more of them than there are commands for.
int AppendStreams(HMENU menu, int first, int last, ULONG count, const AskLanguage& language,
                  const AskAttributes& attributes) {
  const ULONG listed = std::min(count, static_cast<ULONG>(last - first + 1));
  for (ULONG i = 0; i < listed; ++i)
    ::AppendMenuA(menu, MF_STRING, MenuId(first) + i, StreamName(i, language, attributes).c_str());
  return static_cast<int>(listed);
}

void Check(HMENU menu, int first, ULONG stream) {
  ::CheckMenuItem(menu, static_cast<UINT>(first) + stream, MF_CHECKED);
}

}  // namespace

UniqueMenu DvdStreams::BuildMenu() {
  UniqueMenu top(::CreatePopupMenu());
  if (!top) return top;
  const HMENU subtitles = ::CreatePopupMenu();
  ::AppendMenuA(subtitles, MF_STRING, MenuId(kNoSubtitles), "No Subtitles");
  if (ListSubtitles(subtitles, kFirstSubtitle) == 0) {
    ::EnableMenuItem(subtitles, kNoSubtitles, MF_GRAYED);
  } else if (!subtitlesShown) {
    ::CheckMenuItem(subtitles, kNoSubtitles, MF_CHECKED);
  }
  const HMENU tracks = ::CreatePopupMenu();
  ListAudioTracks(tracks, kFirstAudioTrackCommand);
  ::AppendMenuA(top.Get(), MF_POPUP, reinterpret_cast<UINT_PTR>(tracks), "&Audio Tracks");
  ::AppendMenuA(top.Get(), MF_POPUP, reinterpret_cast<UINT_PTR>(subtitles), "&Subtitles");
  return top;
}

int DvdStreams::ListSubtitles(HMENU menu, int first) {
  IDvdControl* const control = navigator.control.Get();
  IDvdInfo* const info = navigator.info.Get();
  ULONG count = 0;
  BOOL disabled = FALSE;
  if (info == nullptr || FAILED(info->GetCurrentSubpicture(&count, &currentSubpicture, &disabled))) return 0;
  const int listed = AppendStreams(
      menu, first, kLastSubtitleCommand, count,
      [&](ULONG stream, LCID* language) { return info->GetSubpictureLanguage(stream, language); },
      [&](ULONG stream) -> std::string {
        DVD_SubpictureATR attributes{};
        if (FAILED(control->SubpictureStreamChange(stream, disabled)) ||
            FAILED(info->GetCurrentSubpictureAttributes(&attributes))) {
          return {};
        }
        return LanguageInAttributes(attributes);
      });
  control->SubpictureStreamChange(currentSubpicture, subtitlesShown ? TRUE : FALSE);
  if (subtitlesShown && listed > 0) Check(menu, first, currentSubpicture);
  return listed;
}

int DvdStreams::ListAudioTracks(HMENU menu, int first) {
  IDvdControl* const control = navigator.control.Get();
  IDvdInfo* const info = navigator.info.Get();
  ULONG count = 0;
  if (info == nullptr || FAILED(info->GetCurrentAudio(&count, &currentAudio))) return 0;
  const int listed = AppendStreams(
      menu, first, kLastAudioTrackCommand, count,
      [&](ULONG stream, LCID* language) { return info->GetAudioLanguage(stream, language); },
      [&](ULONG stream) -> std::string {
        DVD_AudioATR attributes{};
        if (FAILED(control->AudioStreamChange(stream)) ||
            FAILED(info->GetCurrentAudioAttributes(&attributes))) {
          return {};
        }
        return LanguageInAttributes(attributes);
      });
  control->AudioStreamChange(currentAudio);
  if (listed > 0) Check(menu, first, currentAudio);
  return listed;
}

bool DvdStreams::SelectSubtitle(int command) {
  const bool show = command != kNoSubtitles;
  const ULONG stream = show ? static_cast<ULONG>(command - kFirstSubtitle) : currentSubpicture;
  if (!navigator.control || FAILED(navigator.control->SubpictureStreamChange(stream, show ? TRUE : FALSE)))
    return false;
  subtitlesShown = show;
  currentSubpicture = stream;
  return true;
}

bool DvdStreams::SelectAudioTrack(int command) {
  const auto stream = static_cast<ULONG>(command - kFirstAudioTrackCommand);
  if (!navigator.control || FAILED(navigator.control->AudioStreamChange(stream))) return false;
  currentAudio = stream;
  return true;
}

}  // namespace quorvex
