#include "base/ini_document.h"

#include <algorithm>

#include "base/text.h"

namespace quorvex {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsQuoted(std::string_view value) {
  return value.size() >= 2 && value.front() == value.back() &&
         (value.front() == '"' || value.front() == '\'');
}

std::string_view Unquoted(std::string_view value) {
  return IsQuoted(value) ? value.substr(1, value.size() - 2) : value;
}

// What stands behind the equals sign. A value in quotes of its own gets a second pair, or readers would take
// the first for the store's.
std::string Written(std::string_view value) {
  std::string text(value.substr(0, value.find('\0')));
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
  return IsQuoted(Trimmed(text)) ? '"' + text + '"' : text;
}

int DigitOf(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return 16;
}

// The base that a prefix names, and the digits behind it.
int TakeBase(std::string_view& digits) {
  if (digits.size() < 2 || digits.front() != '0') return 10;
  const char prefix = digits[1];
  const int base = prefix == 'x' ? 16 : prefix == 'o' ? 8 : prefix == 'b' ? 2 : 10;
  if (base != 10) digits.remove_prefix(2);
  return base;
}

}  // namespace

IniDocument::IniDocument(std::string text) {
  std::string_view rest = Keep(std::move(text));
  if (rest.starts_with(kByteOrderMark)) {
    mark = rest.substr(0, kByteOrderMark.size());
    rest.remove_prefix(kByteOrderMark.size());
  }
  lines.reserve(rest.size() / 24);
  while (!rest.empty()) {
    const std::size_t length = std::min(rest.find_first_of("\r\n"), rest.size());
    const std::size_t endLength =
        rest.substr(length).starts_with("\r\n") ? 2 : std::min<std::size_t>(1, rest.size() - length);
    lines.push_back(ParsedLine(rest.substr(0, length), rest.substr(length, endLength)));
    rest.remove_prefix(length + endLength);
  }
  if (!lines.empty() && !lines.front().end.empty()) lineEnd = lines.front().end;
}

IniDocument::Line IniDocument::ParsedLine(std::string_view text, std::string_view end) {
  Line line{.text = text, .end = end, .key = {}, .value = {}, .header = false};
  const std::string_view content = Trimmed(text);
  if (content.starts_with('[')) {
    if (const std::size_t close = content.rfind(']'); close != std::string_view::npos) {
      line.header = true;
      line.key = Trimmed(content.substr(1, close - 1));
      return line;
    }
  }
  const std::size_t equals = content.find('=');
  line.key = Trimmed(content.substr(0, equals));
  if (equals != std::string_view::npos) {
    const std::string_view value = Unquoted(Trimmed(content.substr(equals + 1)));
    line.value = value.substr(0, value.find('\0'));
  }
  return line;
}

bool IniDocument::IsEntry(const Line& line) { return line.value && !line.key.starts_with(';'); }

bool IniDocument::IsRemark(const Line& line) {
  return Trimmed(line.text).empty() || line.key.starts_with(';');
}

std::string_view IniDocument::Keep(std::string text) { return texts.emplace_back(std::move(text)); }

// The index of the first line of a section (for "" of the file), behind its header; npos without such a
// section.
std::size_t IniDocument::SectionBegin(std::string_view section) const {
  if (section.empty()) return 0;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (lines[i].header && EqualNoCase(lines[i].key, section)) return i + 1;
  }
  return std::string_view::npos;
}

std::size_t IniDocument::SectionEnd(std::size_t begin) const {
  while (begin < lines.size() && !lines[begin].header) ++begin;
  return begin;
}

const IniDocument::Line* IniDocument::FindLine(std::string_view section, std::string_view key) const {
  const std::size_t begin = SectionBegin(section);
  if (begin == std::string_view::npos) return nullptr;
  const std::size_t end = SectionEnd(begin);
  for (std::size_t i = begin; i < end; ++i) {
    if (!Trimmed(lines[i].text).empty() && EqualNoCase(lines[i].key, key)) return &lines[i];
  }
  return nullptr;
}

std::optional<std::string_view> IniDocument::Find(std::string_view section, std::string_view key) const {
  const Line* line = FindLine(section, key);
  return line == nullptr ? std::nullopt : line->value;
}

std::int32_t IniDocument::Integer(std::string_view section, std::string_view key,
                                  std::int32_t missing) const {
  const std::string_view value = Find(section, key).value_or("");
  return value.empty() ? missing : IniInteger(value);
}

std::vector<IniEntry> IniDocument::Entries(std::string_view section) const {
  std::vector<IniEntry> entries;
  const std::size_t begin = SectionBegin(section);
  if (begin == std::string_view::npos) return entries;
  const std::size_t end = SectionEnd(begin);
  for (std::size_t i = begin; i < end; ++i) {
    if (lines[i].value) entries.push_back({lines[i].key, *lines[i].value});
  }
  return entries;
}

void IniDocument::Set(std::string_view section, std::string_view key, std::string_view value) {
  if (const Line* found = FindLine(section, key)) {
    Line& line = lines[static_cast<std::size_t>(found - lines.data())];
    const std::size_t equals = line.text.find('=');
    const std::string_view before =
        equals == std::string_view::npos ? line.text : line.text.substr(0, equals);
    line = ParsedLine(Keep(std::string(before) + '=' + Written(value)), line.end);
    return;
  }
  const std::size_t begin = MakeSection(section);
  // Behind the section's last entry: blank lines and remarks before the next header belong to that.
  std::size_t at = SectionEnd(begin);
  while (at > begin && !IsEntry(lines[at - 1])) --at;
  InsertLine(at, std::string(key) + '=' + Written(value));
}

void IniDocument::SetAll(const IniDocument& other) {
  std::string_view section;
  for (const Line& line : other.lines) {
    if (line.header) section = line.key;
    // As it is written: the value has lost the blanks at its ends.
    if (IsEntry(line)) Set(section, line.key, Unquoted(line.text.substr(line.text.find('=') + 1)));
  }
}

// SectionBegin of a section that is made when it is missing.
std::size_t IniDocument::MakeSection(std::string_view section) {
  if (const std::size_t begin = SectionBegin(section); begin != std::string_view::npos) return begin;
  InsertLine(lines.size(), '[' + std::string(section) + ']');
  return lines.size();
}

// Where, in the section that begins there, the remarks about the next section begin.
std::size_t IniDocument::RemarksOfNext(std::size_t begin) const {
  const std::size_t end = SectionEnd(begin);
  if (end == lines.size()) return end;
  std::size_t first = end;
  for (std::size_t i = end; i > begin && IsRemark(lines[i - 1]); --i) {
    if (!Trimmed(lines[i - 1].text).empty()) first = i - 1;
  }
  return first;
}

void IniDocument::RemoveSection(std::string_view section) {
  const std::size_t begin = SectionBegin(section);
  if (section.empty() || begin == std::string_view::npos) return;
  const auto at = [this](std::size_t index) { return lines.begin() + static_cast<std::ptrdiff_t>(index); };
  lines.erase(at(begin - 1), at(RemarksOfNext(begin)));
}

void IniDocument::ReplaceSection(std::string_view section, std::span<const IniEntry> entries) {
  const std::size_t begin = MakeSection(section);
  const auto at = [this](std::size_t index) { return lines.begin() + static_cast<std::ptrdiff_t>(index); };
  const auto isKey = [](const Line& line) { return !IsRemark(line); };
  const std::size_t end = SectionEnd(begin);
  const auto first = std::find_if(at(begin), at(end), isKey);
  const std::size_t place = first == at(end) ? begin : begin + static_cast<std::size_t>(first - at(begin));
  lines.erase(std::remove_if(at(begin), at(end), isKey), at(end));
  std::vector<Line> fresh;
  fresh.reserve(entries.size());
  for (const IniEntry& entry : entries)
    fresh.push_back(ParsedLine(Keep(std::string(entry.key) + '=' + Written(entry.value)), lineEnd));
  if (!fresh.empty()) EndLineBefore(place);
  lines.insert(at(place), fresh.begin(), fresh.end());
}

// Ends the line before, which lacks an end when it was the file's last.
void IniDocument::EndLineBefore(std::size_t at) {
  if (at > 0 && lines[at - 1].end.empty()) lines[at - 1].end = lineEnd;
}

void IniDocument::InsertLine(std::size_t at, std::string text) {
  EndLineBefore(at);
  lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(at), ParsedLine(Keep(std::move(text)), lineEnd));
}

std::string IniDocument::Text() const {
  std::string text(mark);
  for (const Line& line : lines) text.append(line.text).append(line.end);
  return text;
}

std::int32_t IniInteger(std::string_view value) {
  std::string_view digits = Trimmed(value);
  const bool negative = digits.starts_with('-');
  if (negative || digits.starts_with('+')) digits.remove_prefix(1);
  const int base = TakeBase(digits);
  std::uint32_t number = 0;
  for (const char c : digits) {
    const int digit = DigitOf(c);
    if (digit >= base) break;
    number = number * static_cast<std::uint32_t>(base) + static_cast<std::uint32_t>(digit);
  }
  return static_cast<std::int32_t>(negative ? 0U - number : number);
}

}  // namespace quorvex
