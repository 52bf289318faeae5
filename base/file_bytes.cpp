#include "base/file_bytes.h"

namespace quorvex {

std::optional<std::string> ReadAll(HANDLE file, LONGLONG limit) {
  LARGE_INTEGER size{};
  if (file == nullptr || ::GetFileSizeEx(file, &size) == FALSE || size.QuadPart > limit) return std::nullopt;
  std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
  DWORD count = 0;
  if (::ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr) == FALSE)
    return std::nullopt;
  bytes.resize(count);
  return bytes;
}

}  // namespace quorvex
