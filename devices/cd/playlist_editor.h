// What the CD play-list editor edits: the names of a disc and its tracks, and its play list. The dialog shows
// it; nothing is stored before Save.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/ini_document.h"

namespace quorvex {

inline constexpr std::size_t kMostPlaylistEntries = 99;

// The longest title, artist or track name that is stored, in characters.
inline constexpr std::size_t kLongestSavedName = 63;

struct DiscNames {
  std::string title;
  std::string artist;
};

// "98:59 (min:sec)"; from 99 minutes on "1:39:00 (hr:min:sec)". The words stand in the parentheses.
std::string FormatTotalTime(int seconds, std::string_view minutesWord, std::string_view hoursWord);

class PlaylistEditor {
 public:
  PlaylistEditor() = default;

  // A disc with tracks of these lengths (whole seconds), named as in the store; its play list is empty still.
  // `discNames` are the names that the user is shown, `trackWord` makes names for tracks it does not have.
  PlaylistEditor(const IniDocument& store, std::string discId, DiscNames discNames,
                 std::span<const int> trackLengths, std::string_view trackWord);

  [[nodiscard]] const std::string& DiscId() const { return id; }
  [[nodiscard]] const DiscNames& Names() const { return names; }

  [[nodiscard]] int TrackCount() const { return static_cast<int>(tracks.size()); }
  [[nodiscard]] bool HasTrack(int track) const { return track >= 1 && track <= TrackCount(); }
  [[nodiscard]] int DiscTime() const;  // in seconds
  // Empty for a track that the disc does not have.
  [[nodiscard]] std::string TrackName(int track) const;
  // "(03:20) Name"; "(--:--) Track 12" for a track that the disc does not have.
  [[nodiscard]] std::string TrackText(int track) const;
  // The track whose turn it is after this one; from the last to the first.
  [[nodiscard]] int TrackAfter(int track) const { return track >= TrackCount() ? 1 : track + 1; }
  // Names a track of the disc, at most with kLongestSavedName characters.
  void Rename(int track, std::string_view name);

  // The play list: track numbers, as often as the user likes, also some that the disc does not have.
  [[nodiscard]] const std::vector<int>& Entries() const { return entries; }
  [[nodiscard]] int PlaylistTime() const;  // in seconds; what the disc does not have takes none
  // False when the list is full.
  bool AddEntry(int track);
  // `places`: ascending, 0 for the first.
  void RemoveEntries(std::span<const int> places);
  void RemoveAllEntries() { entries.clear(); }

  // Writes the play list and the names that differ from what was shown first. What was not touched stays as
  // it is in the store, also what another program has made of it; names that are missing there are added.
  void Save(IniDocument& store, const DiscNames& entered) const;

 private:
  struct Track {
    int seconds = 0;
    std::string name;
    bool renamed = false;
  };

  [[nodiscard]] int SecondsOf(int track) const;

  std::string id;
  DiscNames names;
  std::vector<Track> tracks;
  std::string word;
  std::vector<int> entries;
};

}  // namespace quorvex
