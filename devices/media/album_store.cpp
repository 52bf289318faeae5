#include "devices/media/album_store.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <map>

#include "base/text.h"

namespace quorvex {
namespace {

constexpr std::string_view kList = "List of Albums";
constexpr std::string_view kAlbumCount = "Albums";
constexpr std::string_view kSelection = "Selection";
constexpr std::string_view kEntryCount = "Tracks";
constexpr std::string_view kLastVisit = "Last Visit";
constexpr std::string_view kFolder = "Dir";
constexpr int kSelectionOfNone = 2;

int Number(const IniDocument& store, std::string_view section, std::string_view key, int missing) {
  const std::string_view value = store.Find(section, key).value_or("");
  return value.empty() ? missing : IniInteger(value);
}

// The place that a key names: a decimal number without anything around it; 0 for any other key.
int PlaceOf(std::string_view key) {
  int place = 0;
  const char* const end = key.data() + key.size();
  const auto [stop, error] = std::from_chars(key.data(), end, place);
  return error == std::errc{} && stop == end && !key.starts_with('0') ? place : 0;
}

// The values of the keys 1 to the number under `countKey`, by place. A place that a damaged store has lost is
// left out, and a count that is far too large costs nothing.
std::map<int, std::string> Numbered(const IniDocument& store, std::string_view section,
                                    std::string_view countKey, std::size_t longest) {
  const int count = Number(store, section, countKey, 0);
  std::map<int, std::string> values;
  for (const IniEntry& entry : store.Entries(section)) {
    const int place = PlaceOf(entry.key);
    if (place >= 1 && place <= count) values.try_emplace(place, FirstCharacters(entry.value, longest));
  }
  return values;
}

// A section's new keys; the texts live as long as it does.
class Section {
 public:
  void Add(std::string_view key, std::string value) { rows.push_back({std::string(key), std::move(value)}); }
  void AddNumbered(std::span<const std::string> values) {
    for (const std::string& value : values) Add(std::to_string(++places), value);
  }
  void Save(IniDocument& store, std::string_view name) const {
    std::vector<IniEntry> entries;
    entries.reserve(rows.size());
    for (const Row& row : rows) entries.push_back({row.key, row.value});
    store.ReplaceSection(name, entries);
  }

 private:
  struct Row {
    std::string key;
    std::string value;
  };
  std::vector<Row> rows;
  int places = 0;
};

std::string SelectionText(int selected) {
  return std::to_string(selected < 0 ? kSelectionOfNone : selected + 1);
}

bool IsReserved(std::string_view title) {
  return title.empty() || EqualNoCase(title, kList) || EqualNoCase(title, kLastVisit) ||
         EqualNoCase(title, kPreviewPlaylist);
}

// An album's place in the list, -1 when it is not there.
int PlaceOfAlbum(const AlbumList& list, std::string_view title) {
  const auto& titles = list.titles;
  const auto found = std::find_if(titles.begin(), titles.end(),
                                  [&](const auto& other) { return EqualNoCase(other, title); });
  return found == titles.end() ? -1 : static_cast<int>(found - titles.begin());
}

void RemoveContent(IniDocument& store, std::string_view title) {
  if (!IsReserved(title)) store.RemoveSection(title);
}

}  // namespace

AlbumList LoadAlbumList(const IniDocument& store) {
  const int selection = Number(store, kList, kSelection, 1);
  AlbumList list;
  for (auto& [place, title] : Numbered(store, kList, kAlbumCount, kLongestAlbumTitle)) {
    if (place == selection) list.selected = static_cast<int>(list.titles.size());
    list.titles.push_back(title);
  }
  return list;
}

void SaveAlbumList(IniDocument& store, const AlbumList& list) {
  Section section;
  section.Add(kAlbumCount, std::to_string(list.titles.size()));
  section.Add(kSelection, SelectionText(list.selected));
  section.AddNumbered(list.titles);
  section.Save(store, kList);
}

// A list that was damaged has gaps: what is stored is the title's place, not how many come before it.
void SaveSelection(IniDocument& store, int selected) {
  const auto titles = Numbered(store, kList, kAlbumCount, kLongestAlbumTitle);
  const bool isListed = selected >= 0 && selected < static_cast<int>(titles.size());
  const int index = isListed ? std::next(titles.begin(), selected)->first - 1 : selected;
  store.Set(kList, kSelection, SelectionText(index));
}

std::vector<std::string> LoadAlbumContent(const IniDocument& store, std::string_view title) {
  std::vector<std::string> entries;
  if (title.empty()) return entries;
  for (auto& [place, entry] : Numbered(store, title, kEntryCount, kLongestMediaPath))
    entries.push_back(std::move(entry));
  return entries;
}

void SaveAlbumContent(IniDocument& store, std::string_view title, std::span<const std::string> entries) {
  if (IsReserved(title)) return;
  Section section;
  section.Add(kEntryCount, std::to_string(entries.size()));
  section.AddNumbered(entries);
  section.Save(store, title);
}

void AppendToAlbum(IniDocument& store, std::string_view title, std::span<const std::string> entries) {
  std::vector<std::string> content = LoadAlbumContent(store, title);
  content.insert(content.end(), entries.begin(), entries.end());
  SaveAlbumContent(store, title, content);
}

void DeleteContentEntry(IniDocument& store, std::string_view title, std::string_view entry) {
  std::vector<std::string> content = LoadAlbumContent(store, title);
  const auto found = std::find_if(content.begin(), content.end(),
                                  [&](const std::string& other) { return EqualNoCase(other, entry); });
  if (found == content.end()) return;
  content.erase(found);
  SaveAlbumContent(store, title, content);
}

void SavePreviewPlaylist(IniDocument& store, std::span<const std::string> entries) {
  Section section;
  section.AddNumbered(entries);
  section.Add(kEntryCount, std::to_string(entries.size()));
  section.Save(store, kPreviewPlaylist);
}

bool IsAlbumTitle(std::string_view title) {
  if (IsReserved(title)) return false;
  IniDocument trial("");
  AddAlbum(trial, title);
  const IniDocument read(trial.Text());
  return LoadAlbumList(read).titles == std::vector{std::string(title)} &&
         read.Find(title, kEntryCount) == "0";
}

void AddAlbum(IniDocument& store, std::string_view title) {
  AlbumList list = LoadAlbumList(store);
  list.selected = PlaceOfAlbum(list, title);
  if (list.selected < 0) {
    list.selected = static_cast<int>(list.titles.size());
    list.titles.emplace_back(title);
    SaveAlbumList(store, list);
    SaveAlbumContent(store, title, {});
    return;
  }
  SaveSelection(store, list.selected);
}

void DeleteAlbum(IniDocument& store, std::string_view title) {
  AlbumList list = LoadAlbumList(store);
  const int place = PlaceOfAlbum(list, title);
  if (place < 0) return;
  RemoveContent(store, title);
  list.titles.erase(list.titles.begin() + place);
  list.selected = std::min(place, static_cast<int>(list.titles.size()) - 1);
  SaveAlbumList(store, list);
}

void RenameAlbum(IniDocument& store, std::string_view from, std::string_view to) {
  AlbumList list = LoadAlbumList(store);
  const int place = PlaceOfAlbum(list, from);
  if (place < 0 || PlaceOfAlbum(list, to) >= 0) return;
  SaveAlbumContent(store, to, LoadAlbumContent(store, from));
  RemoveContent(store, from);
  list.titles[static_cast<std::size_t>(place)] = to;
  list.selected = place;
  SaveAlbumList(store, list);
}

std::string LastFolder(const IniDocument& store) {
  return std::string(FirstCharacters(store.Find(kLastVisit, kFolder).value_or(""), kLongestMediaPath));
}

void SaveLastFolder(IniDocument& store, std::string_view folder) { store.Set(kLastVisit, kFolder, folder); }

}  // namespace quorvex
