#include "platform/cd/sheet_reader.h"

#include <algorithm>
#include <charconv>

namespace quorvex {
namespace {

bool IsLineEnd(char c) { return c == '\n' || c == '\r'; }
bool IsSpace(char c) { return c == ' ' || c == '\t'; }

// A number of one to three digits in front of `separator` (or of the end, for '\0'), which is taken off too.
std::optional<int> TakeNumber(std::string_view& text, char separator) {
  int number = 0;
  const auto [end, error] =
      std::from_chars(text.data(), text.data() + std::min<std::size_t>(text.size(), 3), number);
  if (error != std::errc() || number < 0 || text.starts_with('-')) return std::nullopt;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  if (separator == '\0') return text.empty() ? std::optional(number) : std::nullopt;
  if (!text.starts_with(separator)) return std::nullopt;
  text.remove_prefix(1);
  return number;
}

}  // namespace

SheetReader::SheetReader(std::string_view text, bool withComments) : rest(text), comments(withComments) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (rest.starts_with(kByteOrderMark)) rest.remove_prefix(kByteOrderMark.size());
}

void SheetReader::SkipBlanks() {
  while (!rest.empty() && IsSpace(rest.front())) rest.remove_prefix(1);
  if (comments && rest.starts_with("//"))
    rest.remove_prefix(std::min(rest.find_first_of("\r\n"), rest.size()));
}

std::optional<std::string> SheetReader::WordOfLine() {
  SkipBlanks();
  if (rest.empty() || IsLineEnd(rest.front())) return std::nullopt;
  const bool quoted = rest.front() == '"';
  if (quoted) rest.remove_prefix(1);
  const std::size_t end = std::min(rest.find_first_of(quoted ? "\"\r\n" : " \t\r\n"), rest.size());
  std::string word(rest.substr(0, end));
  rest.remove_prefix(end);
  if (quoted && rest.starts_with('"')) rest.remove_prefix(1);
  return word;
}

bool SheetReader::NextLine() {
  rest.remove_prefix(std::min(rest.find_first_of("\r\n"), rest.size()));
  if (rest.empty()) return false;
  rest.remove_prefix(rest.starts_with("\r\n") ? 2 : 1);
  ++line;
  return true;
}

std::optional<std::string> SheetReader::Word() {
  for (;;) {
    if (std::optional<std::string> word = WordOfLine()) return word;
    if (!NextLine()) return std::nullopt;
  }
}

DiscError SheetReader::Complaint(const std::string& text) const {
  return {"line " + std::to_string(line) + ": " + text};
}

std::optional<int> ParseMsf(std::string_view text) {
  const std::optional<int> minutes = TakeNumber(text, ':');
  const std::optional<int> seconds = minutes ? TakeNumber(text, ':') : std::nullopt;
  const std::optional<int> frames = seconds ? TakeNumber(text, '\0') : std::nullopt;
  if (!frames || *seconds >= 60 || *frames >= kFramesPerSecond) return std::nullopt;
  return (*minutes * 60 + *seconds) * kFramesPerSecond + *frames;
}

int FramesIn(std::int64_t bytes, int sectorBytes) {
  const std::int64_t frames = (bytes + sectorBytes - 1) / sectorBytes;
  return static_cast<int>(std::min<std::int64_t>(frames, kMostFrames + 1));
}

}  // namespace quorvex
