#include "platform/cd/utf8_path.h"

#include <string>

#include "base/text.h"

namespace quorvex {

std::filesystem::path PathFromUtf8(std::string_view text) {
  std::u8string path;
  const bool isUtf8 = IsUtf8(text);
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (isUtf8 || byte < 0x80) {
      path += static_cast<char8_t>(byte);
    } else {
      path += static_cast<char8_t>(0xC0U | byte >> 6);
      path += static_cast<char8_t>(0x80U | (byte & 0x3FU));
    }
  }
  return {path};
}

}  // namespace quorvex
