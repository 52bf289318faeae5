// Numbers as AVI files hold them (the little end first), and the chunks that these consist of.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace quorvex {

using Bytes = std::vector<std::uint8_t>;
using ByteView = std::span<const std::uint8_t>;

// Four letters that name a chunk.
using FourCc = std::uint32_t;
constexpr FourCc Letters(const char (&text)[5]) {
  FourCc code = 0;
  for (int i = 3; i >= 0; --i) code = code << 8 | static_cast<std::uint8_t>(text[i]);
  return code;
}

constexpr std::size_t kChunkHeader = 8;  // its name and its length

// Chunks begin at even places.
constexpr std::uint64_t Even(std::uint64_t bytes) { return bytes + (bytes & 1); }

// What 4 or 8 bytes say; the caller has seen to it that they are there.
inline std::uint64_t Number(ByteView bytes, std::size_t at, std::size_t length) {
  std::uint64_t value = 0;
  for (std::size_t i = length; i > 0; --i) value = value << 8 | bytes[at + i - 1];
  return value;
}
inline std::uint32_t Number32(ByteView bytes, std::size_t at) {
  return static_cast<std::uint32_t>(Number(bytes, at, 4));
}
inline std::uint64_t Number64(ByteView bytes, std::size_t at) { return Number(bytes, at, 8); }

class ByteWriter {
 public:
  ByteWriter& U16(std::uint64_t value) { return Put(value, 2); }
  ByteWriter& U32(std::uint64_t value) { return Put(value, 4); }
  ByteWriter& U64(std::uint64_t value) { return Put(value, 8); }
  ByteWriter& Raw(ByteView more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
    return *this;
  }
  ByteWriter& Zeros(std::size_t count) {
    bytes.resize(bytes.size() + count);
    return *this;
  }
  // Zeros up to this length.
  ByteWriter& ZerosTo(std::size_t length) { return Zeros(length > bytes.size() ? length - bytes.size() : 0); }

  // A chunk: its length is known when it ends.
  [[nodiscard]] std::size_t Begin(FourCc name) {
    U32(name).U32(0);
    return bytes.size();
  }
  void End(std::size_t begun) {
    const std::size_t length = bytes.size() - begun;
    for (std::size_t i = 0; i < 4; ++i)
      bytes[begun - 4 + i] = static_cast<std::uint8_t>(length >> (8 * i) & 0xFF);
    if (length % 2 != 0) Zeros(1);
  }
  [[nodiscard]] std::size_t BeginList(FourCc kind) {
    const std::size_t begun = Begin(Letters("LIST"));
    U32(kind);
    return begun;
  }

  [[nodiscard]] std::size_t Size() const { return bytes.size(); }
  [[nodiscard]] ByteView View() const { return bytes; }
  [[nodiscard]] Bytes Take() { return std::move(bytes); }

 private:
  ByteWriter& Put(std::uint64_t value, int length) {
    for (int i = 0; i < length; ++i) bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i) & 0xFF));
    return *this;
  }

  Bytes bytes;
};

}  // namespace quorvex
