#include "devices/tv/capture_size.h"

#include <algorithm>
#include <limits>

namespace quorvex {
namespace {

constexpr std::int64_t kKbPerMegabyte = 1024;
constexpr std::int64_t kUsualKb = 10 * kKbPerMegabyte;

int MegabytesOf(std::int64_t kb) {
  return static_cast<int>(
      std::min<std::int64_t>(kb / kKbPerMegabyte, std::numeric_limits<std::int32_t>::max()));
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The number of the leading digits, whatever its length, up to a bound that no field can hold.
std::int64_t LeadingValue(std::string_view text) {
  constexpr std::int64_t kBound = std::int64_t{1} << 40;
  std::int64_t value = 0;
  for (const char c : text) {
    if (!IsDigit(c)) break;
    value = std::min(value * 10 + (c - '0'), kBound);
  }
  return value;
}

std::optional<int> FreeMegabytes(std::optional<std::int64_t> freeKb, std::int64_t fileKb) {
  return freeKb ? std::optional(MegabytesOf(*freeKb + fileKb)) : std::nullopt;
}

}  // namespace

CaptureRoom RoomOfFile(std::optional<std::int64_t> freeKb, std::int64_t fileBytes) {
  const std::int64_t fileKb = fileBytes / 1024;
  return {MegabytesOf(fileKb), FreeMegabytes(freeKb, fileKb)};
}

CaptureRoom RoomOfNewFile(std::optional<std::int64_t> freeKb) {
  return {freeKb ? MegabytesOf(std::min(*freeKb, kUsualKb)) : 1, FreeMegabytes(freeKb, 0)};
}

int LargestSize(const std::optional<int>& freeMegabytes) {
  return std::min(freeMegabytes.value_or(kLargestCaptureMegabytes), kLargestCaptureMegabytes);
}

std::string CorrectedSize(std::string_view text, int largest) {
  const std::int64_t value = LeadingValue(text);
  if (value < 1) return "1";
  if (largest >= 1 && value > largest) return std::to_string(largest);
  return std::all_of(text.begin(), text.end(), IsDigit) ? std::string(text) : "1";
}

// Of a share, \\server\name\ is the root.
std::string RootOf(std::string_view fullPath) {
  const bool share = fullPath.starts_with("\\\\");
  std::size_t end = fullPath.find('\\', share ? 2 : 0);
  if (share && end != std::string_view::npos) end = fullPath.find('\\', end + 1);
  if (end != std::string_view::npos) return std::string(fullPath.substr(0, end + 1));
  return std::string(fullPath) + '\\';
}

std::string FolderOf(std::string_view path) {
  const std::size_t last = path.rfind('\\');
  return last == std::string_view::npos ? "" : std::string(path.substr(0, last + 1));
}

std::string WithExtension(const std::string& path) {
  const std::string_view name = std::string_view(path).substr(FolderOf(path).size());
  return name.find('.') == std::string_view::npos ? path + ".avi" : path;
}

}  // namespace quorvex
