// What the CD information store remembers of every disc: an identifier made from its track lengths, titles, a
// play list. The file is described in docs/stores.md.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/ini_document.h"

namespace quorvex {

// The longest title, artist and play list taken from the store, in characters.
inline constexpr std::size_t kLongestTitle = 64;
inline constexpr std::size_t kLongestPlaylist = 3999;

// A disc's identifier: the sum of track number times length (whole seconds), modulo 2^32, as eight
// hexadecimal digits.
std::string DiscIdentifier(std::span<const int> trackLengths);

// "Track 01": what a track is called that nobody has named.
std::string DefaultTrackTitle(std::string_view trackWord, int track);

// Whether the store's list of discs has this one.
bool IsDiscKnown(const IniDocument& store, std::string_view discId);

// Adds an unknown disc at the end of the list: empty title and artist, track titles "Track 01" ... made from
// `trackWord`, a play list of all tracks. What the store already holds stays as it is.
void AddDisc(IniDocument& store, std::string_view discId, int trackCount, std::string_view trackWord);

// The disc's stored play list: at most 1000 track numbers; empty when it has none.
std::vector<int> StoredPlaylist(const IniDocument& store, std::string_view discId);

}  // namespace quorvex
