// What the tests of disc images share: files that exist only as sizes, NRG trailers, plans as text.
#pragma once

#include <map>
#include <string>
#include <variant>

#include "platform/cd/sheet_reader.h"

namespace quorvex {

// Knows files by name and number of bytes.
inline SourceOpener FilesOf(std::map<std::string, std::int64_t> files) {
  return [files = std::move(files)](DiscSource& source, std::string& why) {
    const auto found = files.find(source.name);
    if (found == files.end()) {
      why = "no " + source.name;
      return false;
    }
    source.dataBytes = found->second;
    return true;
  };
}

inline std::string BigEndianText(std::uint64_t value, int bytes) {
  std::string text;
  while (bytes-- > 0) text += static_cast<char>(value >> (8 * bytes) & 0xFFU);
  return text;
}

// A chunk of an NRG image's trailer.
inline std::string NrgChunk(const std::string& name, const std::string& data) {
  return name + BigEndianText(data.size(), 4) + data;
}

// A row of the track table of a disc written in one go: mode, sector size and the offsets of pause, start and
// end.
inline std::string NrgRow(int mode, int sectorBytes, std::uint64_t pause, std::uint64_t start,
                          std::uint64_t end, int offsetBytes = 8) {
  const auto sector = static_cast<std::uint64_t>(sectorBytes);
  return std::string(12, '\0') + BigEndianText(sector, 2) +
         BigEndianText(static_cast<std::uint64_t>(mode), 1) + std::string("\0\0\1", 3) +
         BigEndianText(pause * sector, offsetBytes) + BigEndianText(start * sector, offsetBytes) +
         BigEndianText(end * sector, offsetBytes);
}

// "1a@0+100 2d@250+50 | 0:100<a.bin@0 100:150<silence ... | 300": tracks (audio or data, start, length),
// stretches, lead-out; or the error's text.
inline std::string Described(const std::variant<DiscPlan, DiscError>& result) {
  if (const auto* error = std::get_if<DiscError>(&result)) return error->text;
  const auto& plan = std::get<DiscPlan>(result);
  std::string text;
  int number = 0;
  for (const DiscTrack& track : plan.tracks) {
    text += std::to_string(++number) + (track.audio ? "a@" : "d@") + std::to_string(track.start) + '+' +
            std::to_string(track.length) + ' ';
  }
  text += "| ";
  for (const DiscExtent& extent : plan.extents) {
    text += std::to_string(extent.start) + ':' + std::to_string(extent.length) + '<';
    text += extent.source < 0 ? "silence"
                              : plan.sources[static_cast<std::size_t>(extent.source)].name + '@' +
                                    std::to_string(extent.offset);
    text += ' ';
  }
  return text + "| " + std::to_string(plan.leadOut);
}

}  // namespace quorvex
