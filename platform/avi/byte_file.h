// A file as the AVI writer sees it: bytes at places. Who owns the file says what it is.
#pragma once

#include <cstdint>
#include <span>

#include "platform/avi/byte_order.h"

namespace quorvex {

enum class FileResult {
  kDone,
  kFull,    // there is no room for more
  kFailed,  // anything else
};

class ByteTarget {
 public:
  // Writes all of it; `written` tells how much there was room for.
  virtual FileResult Write(std::uint64_t place, ByteView bytes, std::size_t& written) = 0;
  // The file ends there from now on.
  virtual FileResult Resize(std::uint64_t bytes) = 0;

 protected:
  ~ByteTarget() = default;
};

class ByteSource {
 public:
  [[nodiscard]] virtual std::uint64_t Size() = 0;
  // How many bytes were there to be read; fewer at the file's end and where it cannot be read.
  virtual std::size_t Read(std::uint64_t place, std::span<std::uint8_t> into) = 0;

 protected:
  ~ByteSource() = default;
};

}  // namespace quorvex
