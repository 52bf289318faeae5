#include "devices/cd/playlist_editor.h"

#include <numeric>

#include "base/number_list.h"
#include "base/text.h"
#include "devices/cd/disc_store.h"

namespace quorvex {
namespace {

std::string TwoDigits(int number) { return (number < 10 ? "0" : "") + std::to_string(number); }

std::size_t Index(int track) { return static_cast<std::size_t>(track - 1); }

}  // namespace

std::string FormatTotalTime(int seconds, std::string_view minutesWord, std::string_view hoursWord) {
  constexpr int kHoursFromMinute = 99;
  const int minutes = seconds / 60;
  const std::string rest = ":" + TwoDigits(seconds % 60) + " (";
  if (minutes < kHoursFromMinute) return std::to_string(minutes) + rest + std::string(minutesWord) + ")";
  return std::to_string(minutes / 60) + ":" + TwoDigits(minutes % 60) + rest + std::string(hoursWord) + ")";
}

PlaylistEditor::PlaylistEditor(const IniDocument& store, std::string discId, DiscNames discNames,
                               std::span<const int> trackLengths, std::string_view trackWord)
    : id(std::move(discId)), names(std::move(discNames)), word(trackWord) {
  for (const int seconds : trackLengths) tracks.push_back({seconds, "", false});
  std::vector<bool> named(tracks.size());
  for (const IniEntry& entry : store.Entries(id)) {
    const int track = LeadingNumber(entry.key);
    // Of several entries with one key the first counts.
    if (!HasTrack(track) || entry.key != std::to_string(track) || named[Index(track)]) continue;
    named[Index(track)] = true;
    tracks[Index(track)].name = FirstCharacters(entry.value, kLongestTitle);
  }
}

int PlaylistEditor::DiscTime() const {
  return std::accumulate(tracks.begin(), tracks.end(), 0,
                         [](int sum, const Track& track) { return sum + track.seconds; });
}

std::string PlaylistEditor::TrackName(int track) const {
  return HasTrack(track) ? tracks[Index(track)].name : "";
}

std::string PlaylistEditor::TrackText(int track) const {
  if (!HasTrack(track)) return "(--:--) " + DefaultTrackTitle(word, track);
  const int seconds = SecondsOf(track);
  return "(" + TwoDigits(seconds / 60) + ":" + TwoDigits(seconds % 60) + ") " + TrackName(track);
}

void PlaylistEditor::Rename(int track, std::string_view name) {
  Track& renamed = tracks[Index(track)];
  renamed.name = FirstCharacters(name, kLongestSavedName);
  renamed.renamed = true;
}

int PlaylistEditor::PlaylistTime() const {
  return std::accumulate(entries.begin(), entries.end(), 0,
                         [this](int sum, int track) { return sum + SecondsOf(track); });
}

bool PlaylistEditor::AddEntry(int track) {
  if (entries.size() >= kMostPlaylistEntries) return false;
  entries.push_back(track);
  return true;
}

void PlaylistEditor::RemoveEntries(std::span<const int> places) {
  for (std::size_t i = places.size(); i-- > 0;) entries.erase(entries.begin() + places[i]);
}

void PlaylistEditor::Save(IniDocument& store, const DiscNames& entered) const {
  const auto write = [&](const std::string& key, std::string_view name, bool changed) {
    if (changed || !store.Find(id, key)) store.Set(id, key, name);
  };
  write("Title", FirstCharacters(entered.title, kLongestSavedName), entered.title != names.title);
  write("Artist", FirstCharacters(entered.artist, kLongestSavedName), entered.artist != names.artist);
  for (int track = 1; track <= TrackCount(); ++track)
    write(std::to_string(track), TrackName(track), tracks[Index(track)].renamed);
  store.Set(id, "Playlist", FormatNumberList(entries));
}

int PlaylistEditor::SecondsOf(int track) const { return HasTrack(track) ? tracks[Index(track)].seconds : 0; }

}  // namespace quorvex
