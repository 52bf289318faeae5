// What the tests of disc sheets share: files that exist only as sizes, and plans as text.
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
