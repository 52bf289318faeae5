#include "devices/cd/disc_store.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <numeric>
#include <set>

#include "base/number_list.h"
#include "base/text.h"
#include "devices/play_order.h"

namespace quorvex {
namespace {

constexpr std::string_view kList = "CD List";
constexpr std::string_view kCount = "Number of CDs";

int DiscCount(const IniDocument& store) {
  return std::max(0, IniInteger(store.Find(kList, kCount).value_or("")));
}

// The place of the list that a new disc gets. A list whose count was lost or cut short keeps the entries it
// has; one that ends where numbers do has a place that nobody took.
int NextPlace(const IniDocument& store) {
  std::set<int> taken;
  for (const IniEntry& entry : store.Entries(kList)) taken.insert(LeadingNumber(entry.key));
  const int last = taken.empty() ? DiscCount(store) : std::max(DiscCount(store), *taken.rbegin());
  if (last < std::numeric_limits<int>::max()) return last + 1;
  int place = 1;
  while (taken.contains(place)) ++place;
  return place;
}

void SetMissing(IniDocument& store, std::string_view section, std::string_view key, std::string_view value) {
  if (!store.Find(section, key)) store.Set(section, key, value);
}

}  // namespace

std::string DefaultTrackTitle(std::string_view trackWord, int track) {
  return std::string(trackWord) + (track < 10 ? " 0" : " ") + std::to_string(track);
}

std::string DiscIdentifier(std::span<const int> trackLengths) {
  std::uint32_t sum = 0;
  std::uint32_t track = 0;
  for (const int length : trackLengths) sum += ++track * static_cast<std::uint32_t>(length);
  char text[9];
  std::snprintf(text, sizeof text, "%08lX", static_cast<unsigned long>(sum));
  return text;
}

bool IsDiscKnown(const IniDocument& store, std::string_view discId) {
  const int count = DiscCount(store);
  const std::vector<IniEntry> entries = store.Entries(kList);
  return std::any_of(entries.begin(), entries.end(), [&](const IniEntry& entry) {
    const int place = LeadingNumber(entry.key);
    return place >= 1 && place <= count && entry.value == discId;
  });
}

void AddDisc(IniDocument& store, std::string_view discId, int trackCount, std::string_view trackWord) {
  const int place = NextPlace(store);
  store.Set(kList, kCount, std::to_string(std::max(place, DiscCount(store))));
  store.Set(kList, std::to_string(place), discId);
  SetMissing(store, discId, "Title", "");
  SetMissing(store, discId, "Artist", "");
  for (int track = 1; track <= trackCount; ++track) {
    SetMissing(store, discId, std::to_string(track), DefaultTrackTitle(trackWord, track));
  }
  std::vector<int> all(static_cast<std::size_t>(trackCount));
  std::iota(all.begin(), all.end(), 1);
  SetMissing(store, discId, "Playlist", FormatNumberList(all));
}

std::vector<int> StoredPlaylist(const IniDocument& store, std::string_view discId) {
  const std::string_view text = store.Find(discId, "Playlist").value_or("");
  return ParseNumberList(FirstCharacters(text, kLongestPlaylist), kMaxOrderLength);
}

}  // namespace quorvex
