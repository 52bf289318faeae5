#include "platform/media/file_types.h"

#include <strmif.h>

#include <uuids.h>

#include <iterator>
#include <optional>
#include <string>

namespace quorvex {
namespace {

constexpr const wchar_t* kSourceFilter = L"Source Filter";

// Subtypes that the platform has byte patterns for. MIDI ({7364696d-...}) stays with the platform's own
// source.
constexpr const wchar_t* kKnownSubtypes[] = {
    L"{e06d8022-db46-11cf-b4d1-00805f6cbbea}",  // MPEG-2 program stream
    L"{e436eb84-524f-11ce-9f53-0020af0ba770}",  // MPEG-1 system stream
    L"{e436eb85-524f-11ce-9f53-0020af0ba770}",  // MPEG-1 of a Video CD
    L"{e436eb86-524f-11ce-9f53-0020af0ba770}",  // MPEG video
    L"{e436eb87-524f-11ce-9f53-0020af0ba770}",  // MPEG audio
    L"{e436eb88-524f-11ce-9f53-0020af0ba770}",  // AVI
    L"{e436eb89-524f-11ce-9f53-0020af0ba770}",  // QuickTime
    L"{e436eb8b-524f-11ce-9f53-0020af0ba770}",  // WAVE
    L"{e436eb8c-524f-11ce-9f53-0020af0ba770}",  // AU
    L"{e436eb8d-524f-11ce-9f53-0020af0ba770}",  // AIFF
    L"{ffffffff-128f-4dd1-ad22-becfa66ce7aa}",  // under Wine: whatever agrees with nothing else
};

// What the platform has no patterns for, under a subtype of our own.
constexpr const wchar_t* kOtherSubtype = L"{f3b1a0c6-8d52-4a6e-9c07-2f6d1be4a95d}";

// Each is one or several of: offset, length, mask (nothing: all bits), bytes; all must agree. The longest
// come first: Wine reads none that is longer than one before it.
constexpr const wchar_t* kOtherPatterns[] = {
    L"4,1,,47,196,1,,47,388,1,,47",  // MPEG-2 transport stream with arrival times
    L"0,1,,47,188,1,,47,376,1,,47",  // MPEG-2 transport stream
    L"0,8,,3026b2758e66cf11",        // ASF
    L"0,4,,1a45dfa3",                // Matroska, WebM
    L"4,4,,66747970",                // MP4
    L"0,4,,4f676753",                // Ogg
    L"0,4,,664c6143",                // FLAC
    L"0,4,,2e524d46",                // RealMedia
    L"0,4,,000001ba",                // any other program stream
    L"0,3,,464c56",                  // FLV
    L"0,3,,494433",                  // MPEG audio behind an ID3 tag
    L"0,2,,0b77",                    // AC-3
};

// A source named for an extension hides the patterns, and Wine takes its own reader then, whatever is named.
// Where an extension of ours has one it goes, so that the content decides.
constexpr const wchar_t* kExtensions[] = {
    L".3gp", L".aac", L".ac3",  L".aif",  L".aiff", L".asf", L".au",  L".avi",  L".dat", L".divx",
    L".dts", L".dv",  L".flac", L".flv",  L".m1v",  L".m2p", L".m2t", L".m2ts", L".m2v", L".m4a",
    L".m4v", L".mka", L".mkv",  L".mov",  L".mp2",  L".mp3", L".mp4", L".mpa",  L".mpe", L".mpeg",
    L".mpg", L".mpv", L".mts",  L".oga",  L".ogg",  L".ogm", L".ogv", L".opus", L".qt",  L".snd",
    L".ts",  L".vob", L".wav",  L".webm", L".wma",  L".wmv"};

}  // namespace

std::vector<ClassesValue> FileTypeValues(const CLSID& source) {
  const std::wstring mediaType = L"Media Type\\";
  const std::wstring streams = mediaType + GuidText(MEDIATYPE_Stream) + L"\\";
  const std::wstring id = GuidText(source);
  std::vector<ClassesValue> values;
  for (const wchar_t* subtype : kKnownSubtypes) values.push_back({streams + subtype, kSourceFilter, id});
  for (std::size_t i = 0; i < std::size(kOtherPatterns); ++i) {
    const std::wstring number = (i < 10 ? L"0" : L"") + std::to_wstring(i);  // in the order of names
    values.push_back({streams + kOtherSubtype, number, kOtherPatterns[i]});
  }
  values.push_back({streams + kOtherSubtype, kSourceFilter, id});
  for (const wchar_t* extension : kExtensions) {
    for (const wchar_t* name : {L"Media Type", L"Subtype", kSourceFilter})
      values.push_back({mediaType + L"Extensions\\" + extension, name, std::nullopt});
  }
  return values;
}

}  // namespace quorvex
