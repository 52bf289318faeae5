#include "platform/dvd/disc_tables.h"

#include <algorithm>
#include <cstring>

#include "platform/dvd/pack_demuxer.h"

namespace quorvex {
namespace {

using Bytes = std::span<const std::uint8_t>;

// Places in the file.
constexpr std::string_view kMark = "DVDVIDEO-VMG";
constexpr std::size_t kCategory = 0x22;
constexpr std::size_t kVolumes = 0x26;
constexpr std::size_t kVolume = 0x28;
constexpr std::size_t kSide = 0x2A;
constexpr std::size_t kTitleTable = 0xC4;
constexpr std::size_t kAttributeTable = 0xD0;
constexpr std::size_t kTextTable = 0xD4;
constexpr std::size_t kAttributes = 0x100;

constexpr std::size_t kTitleBytes = 12;
constexpr std::size_t kMostTitles = 99;
constexpr std::size_t kMostTitleSets = 99;
constexpr std::size_t kMostTextBytes = std::size_t{1} << 20;

// Places in the attributes: of the menus, and this far behind them of the titles.
constexpr std::size_t kTitlePart = 0x100;
constexpr std::size_t kAudioCount = 0x02;
constexpr std::size_t kAudio = 0x04;
constexpr std::size_t kSubpictureCount = 0x54;
constexpr std::size_t kSubpicture = 0x56;

// Numbers, high byte first; 0 beyond the end.
std::uint32_t Number(Bytes bytes, std::size_t at, std::size_t size) {
  if (at > bytes.size() || size > bytes.size() - at) return 0;
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < size; ++i) number = number << 8 | bytes[at + i];
  return number;
}
std::uint32_t Word(Bytes bytes, std::size_t at) { return Number(bytes, at, 2); }
std::uint32_t Long(Bytes bytes, std::size_t at) { return Number(bytes, at, 4); }

// What lies from `at` on; nothing beyond the end.
Bytes From(Bytes bytes, std::size_t at) { return bytes.subspan(std::min(at, bytes.size())); }

// The table that the file points to at `pointer`, by its sector.
Bytes Table(Bytes file, std::size_t pointer) {
  const std::size_t sector = Long(file, pointer);
  return sector == 0 ? Bytes() : From(file, sector * kDvdSectorBytes);
}

StreamAttributes CopyAttributes(Bytes bytes, std::uint32_t category) {
  StreamAttributes attributes;
  attributes.category = category;
  std::copy_n(bytes.begin(), std::min(bytes.size(), StreamAttributes::kBytes), attributes.bytes.begin());
  return attributes;
}

std::vector<DiscTables::Title> ReadTitles(Bytes table) {
  std::vector<DiscTables::Title> titles;
  const std::size_t count = std::min<std::size_t>(Word(table, 0), kMostTitles);
  for (std::size_t i = 0; i < count; ++i) {
    const Bytes entry = From(table, 8 + i * kTitleBytes);
    if (entry.size() < kTitleBytes) break;
    titles.push_back({std::max<int>(entry[1], 1), static_cast<int>(Word(entry, 2)),
                      static_cast<std::uint16_t>(Word(entry, 4)), entry[6]});
  }
  return titles;
}

std::vector<StreamAttributes> ReadTitleSets(Bytes table) {
  std::vector<StreamAttributes> sets;
  const std::size_t count = std::min<std::size_t>(Word(table, 0), kMostTitleSets);
  for (std::size_t i = 0; i < count; ++i) {
    const Bytes entry = From(table, Long(table, 8 + i * 4));
    const std::size_t length = Long(entry, 0) + std::size_t{1};  // with this number and the category
    const Bytes content = entry.first(std::min(entry.size(), length));
    sets.push_back(CopyAttributes(From(content, 8), Long(content, 4)));
  }
  return sets;
}

std::vector<std::uint8_t> ReadTexts(Bytes table) {
  // The disc's name, two bytes for the number of languages, the end.
  const std::size_t length = Long(table, 16);
  if (table.empty() || length >= std::min(table.size(), kMostTextBytes)) return {};
  const Bytes content = table.first(length + 1);
  return {content.begin(), content.end()};
}

template <std::size_t size>
std::array<std::uint8_t, size> CopyOut(const StreamAttributes& attributes, std::size_t at) {
  std::array<std::uint8_t, size> copy{};
  if (at + size <= attributes.bytes.size()) std::copy_n(&attributes.bytes[at], size, copy.begin());
  return copy;
}

std::size_t PartStart(StreamAttributes::Part part) {
  return part == StreamAttributes::Part::kTitle ? kTitlePart : 0;
}

std::string Letters(std::uint8_t first, std::uint8_t second) {
  if (first == 0 || second == 0) return {};
  return {static_cast<char>(first), static_cast<char>(second)};
}

}  // namespace

StreamAttributes::Video StreamAttributes::VideoOf(Part part) const {
  return CopyOut<2>(*this, PartStart(part));
}

int StreamAttributes::AudioCount(Part part) const {
  return static_cast<int>(std::min<std::uint32_t>(Word(bytes, PartStart(part) + kAudioCount), 8));
}

int StreamAttributes::SubpictureCount(Part part) const {
  return static_cast<int>(std::min<std::uint32_t>(Word(bytes, PartStart(part) + kSubpictureCount), 32));
}

StreamAttributes::Audio StreamAttributes::AudioOf(Part part, int stream) const {
  return CopyOut<8>(*this, PartStart(part) + kAudio + static_cast<std::size_t>(stream) * 8);
}

StreamAttributes::Subpicture StreamAttributes::SubpictureOf(Part part, int stream) const {
  return CopyOut<6>(*this, PartStart(part) + kSubpicture + static_cast<std::size_t>(stream) * 6);
}

// The type of language lies in the first byte: for sound in bits 2 and 3, for subpictures in bits 0 and 1.
std::string LanguageOf(const StreamAttributes::Audio& audio) {
  return (audio[0] >> 2 & 3) == 1 ? Letters(audio[2], audio[3]) : std::string();
}

std::string LanguageOf(const StreamAttributes::Subpicture& subpicture) {
  return (subpicture[0] & 3) == 1 ? Letters(subpicture[2], subpicture[3]) : std::string();
}

std::optional<DiscTables> DiscTables::Read(Bytes file) {
  if (file.size() < kDvdSectorBytes || std::memcmp(file.data(), kMark.data(), kMark.size()) != 0)
    return std::nullopt;
  DiscTables tables;
  tables.volumes = static_cast<int>(Word(file, kVolumes));
  tables.volume = static_cast<int>(Word(file, kVolume));
  tables.side = static_cast<int>(Number(file, kSide, 1));
  tables.manager = CopyAttributes(From(file, kAttributes), Long(file, kCategory));
  tables.titles = ReadTitles(Table(file, kTitleTable));
  tables.titleSets = ReadTitleSets(Table(file, kAttributeTable));
  tables.texts = ReadTexts(Table(file, kTextTable));
  return tables;
}

const StreamAttributes& DiscTables::Of(int titleSet) const {
  const bool known = titleSet >= 1 && static_cast<std::size_t>(titleSet) <= titleSets.size();
  return known ? titleSets[static_cast<std::size_t>(titleSet - 1)] : manager;
}

}  // namespace quorvex
