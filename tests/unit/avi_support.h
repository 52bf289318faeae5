// A file in memory, and an AVI file taken to pieces by another reader than the product's.
#pragma once

#include <algorithm>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "platform/avi/avi_writer.h"

namespace quorvex {

// Has room for `room` bytes, as a full disk has.
class MemoryFile : public ByteTarget, public ByteSource {
 public:
  explicit MemoryFile(Bytes content = {}, std::uint64_t itsRoom = ~0ULL)
      : bytes(std::move(content)), room(itsRoom) {}

  FileResult Write(std::uint64_t place, ByteView data, std::size_t& written) override {
    written = place >= room ? 0 : std::min<std::size_t>(data.size(), room - place);
    if (bytes.size() < place + written) bytes.resize(place + written);
    if (written > 0) std::memcpy(&bytes[place], data.data(), written);
    return written == data.size() ? FileResult::kDone : FileResult::kFull;
  }
  FileResult Resize(std::uint64_t size) override {
    bytes.resize(size);
    return FileResult::kDone;
  }
  std::uint64_t Size() override { return bytes.size(); }
  std::size_t Read(std::uint64_t place, std::span<std::uint8_t> into) override {
    if (place >= bytes.size()) return 0;
    const std::size_t count = std::min<std::size_t>(into.size(), bytes.size() - place);
    std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(place), count, into.begin());
    return count;
  }

  Bytes bytes;
  std::uint64_t room;
};

// What a reader finds that goes by the lengths of chunks alone.
struct FoundChunk {
  std::string name;
  std::size_t at = 0;  // of what it holds
  std::uint32_t length = 0;
};

struct FoundAvi {
  std::map<std::string, std::vector<FoundChunk>> chunks;
  std::vector<std::string> parts;  // of the top level, in their order
  bool whole = true;               // no chunk goes beyond what it lies in
};

inline void FindChunks(const Bytes& file, std::size_t at, std::size_t end, bool isTop, FoundAvi& found) {
  while (at + 8 <= end) {
    std::string name(reinterpret_cast<const char*>(&file[at]), 4);
    const std::uint32_t length = Number32(file, at + 4);
    if (at + 8 + length > end) {
      found.whole = false;
      return;
    }
    const bool isList = name == "RIFF" || name == "LIST";
    if (isList) name = std::string(reinterpret_cast<const char*>(&file[at + 8]), 4);
    if (isTop) found.parts.push_back(name);
    found.chunks[name].push_back({name, at + 8, length});
    if (isList) FindChunks(file, at + 12, at + 8 + length, false, found);
    at += 8 + Even(length);
  }
  // A file may end with less than a chunk.
  found.whole = found.whole && (isTop || at >= end);
}

inline FoundAvi FindAll(const Bytes& file) {
  FoundAvi found;
  FindChunks(file, 0, file.size(), true, found);
  return found;
}

inline AviStream TestPictures() {
  return {
      .kind = StreamKind::kPictures, .rate = {30000, 1001}, .width = 8, .height = 4, .format = Bytes(40, 1)};
}
inline AviStream TestSound() {
  return {.kind = StreamKind::kSound, .rate = {48000, 1}, .unitBytes = 4, .format = Bytes(18, 2)};
}
inline AviMovie TestMovie() { return {.streams = {TestPictures(), TestSound()}, .id = 77}; }

// A chunk that tells its number.
inline Bytes Numbered(std::uint32_t number, std::size_t length) {
  Bytes bytes(length, static_cast<std::uint8_t>(number));
  if (length >= 4) std::memcpy(bytes.data(), &number, 4);
  return bytes;
}

}  // namespace quorvex
