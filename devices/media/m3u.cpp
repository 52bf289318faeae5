#include "devices/media/m3u.h"

#include <array>

#include "base/text.h"
#include "devices/media/album_store.h"

namespace quorvex {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// What Windows' Western European code page has where Latin-1 has control characters (0x80 to 0x9F).
constexpr std::array<char16_t, 32> kWesternEuropean{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void AppendUtf8(std::string& text, unsigned code) {
  const auto trail = [](unsigned bits) { return static_cast<char>(0x80U | (bits & 0x3FU)); };
  if (code < 0x80) {
    text += static_cast<char>(code);
  } else if (code < 0x800) {
    text += static_cast<char>(0xC0U | (code >> 6U));
    text += trail(code);
  } else {
    text += static_cast<char>(0xE0U | (code >> 12U));
    text += trail(code >> 6U);
    text += trail(code);
  }
}

std::string FromWesternEuropean(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 8);
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    AppendUtf8(text, byte >= 0x80 && byte < 0xA0 ? kWesternEuropean[byte - 0x80U] : byte);
  }
  return text;
}

// A line, or a piece of a long one.
struct Piece {
  std::string_view text;
  bool goesOn;  // behind it comes a line end, which `text` is without, or more of the line
};

// Takes the next piece off `rest`. A zero byte, which only damaged or binary files have, ends its text.
Piece TakePiece(std::string_view& rest) {
  constexpr std::size_t kLongestCharacter = 4;
  const std::string_view window = rest.substr(0, kLongestMediaPath * kLongestCharacter + 1);
  const std::string_view line = window.substr(0, window.find('\n'));
  std::string_view text = FirstCharacters(line, kLongestMediaPath);
  const bool ended = text.size() == line.size() && line.size() < window.size();
  rest.remove_prefix(text.size() + (ended ? 1 : 0));
  if (ended && text.ends_with('\r')) text.remove_suffix(1);
  return {text.substr(0, text.find('\0')), ended || !rest.empty()};
}

template <typename Taken>
std::vector<std::string> Entries(std::string_view text, Taken taken) {
  std::vector<std::string> entries;
  while (!text.empty()) {
    const Piece piece = TakePiece(text);
    if (!piece.text.starts_with(';') && taken(piece)) entries.emplace_back(piece.text);
  }
  return entries;
}

}  // namespace

bool IsM3U(std::string_view path) {
  const std::string_view name = path.substr(path.find_last_of("\\/:") + 1);
  const std::size_t dot = name.rfind('.');
  return dot != std::string_view::npos && EqualNoCase(name.substr(dot), ".m3u");
}

std::string M3UText(std::string bytes) {
  if (!IsUtf8(bytes)) return FromWesternEuropean(bytes);
  if (bytes.starts_with(kByteOrderMark)) bytes.erase(0, kByteOrderMark.size());
  return bytes;
}

std::vector<std::string> AlbumEntriesOfM3U(std::string_view text) {
  return Entries(text, [](const Piece& piece) { return !piece.text.empty(); });
}

std::vector<std::string> PreviewEntriesOfM3U(std::string_view text) {
  return Entries(text, [](const Piece& piece) {
    return !piece.text.empty() && (piece.goesOn || FirstCharacters(piece.text, 1) != piece.text);
  });
}

}  // namespace quorvex
