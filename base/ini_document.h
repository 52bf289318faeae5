// The content of an INI file: what is read of it is what the platform's private-profile functions would read;
// what is changed leaves every other byte (comments, order, blank lines, trailing blanks, line ends, byte
// order mark) as it was.
#pragma once

#include <cstdint>
#include <list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quorvex {

struct IniEntry {
  std::string_view key;
  std::string_view value;
};

// Sections and keys are found without regard to the case of A to Z; of several with one name the first
// counts. Keys before the first section header belong to the section "".
class IniDocument {
 public:
  // `text`: UTF-8, with or without a byte order mark.
  explicit IniDocument(std::string text);
  IniDocument(IniDocument&&) = default;
  IniDocument& operator=(IniDocument&&) = default;

  // The value of a key, without surrounding blanks and one pair of quotes around it; none when the key is
  // missing or its line has no equals sign. The view holds until the document goes or changes.
  [[nodiscard]] std::optional<std::string_view> Find(std::string_view section, std::string_view key) const;

  // A key's number (IniInteger); `missing` when the key is missing or empty.
  [[nodiscard]] std::int32_t Integer(std::string_view section, std::string_view key,
                                     std::int32_t missing) const;

  // Every line of a section that has an equals sign, in order. The views hold as above.
  [[nodiscard]] std::vector<IniEntry> Entries(std::string_view section) const;

  // Sets a key's value; makes the section (at the end) and the key (at the section's end) as needed. Line
  // breaks in the value become blanks, for a line cannot hold them.
  void Set(std::string_view section, std::string_view key, std::string_view value);

  // Sets every key that another document has to what stands there.
  void SetAll(const IniDocument& other);

  // Removes the first section of that name with its header and keys. Remarks directly before the next header
  // belong to that and stay.
  void RemoveSection(std::string_view section);

  // Gives a section these keys and no others, at the cost of one pass; makes it (at the end) when it is
  // missing. It keeps its place and its remarks.
  void ReplaceSection(std::string_view section, std::span<const IniEntry> entries);

  [[nodiscard]] std::string Text() const;

 private:
  // One line, without what ends it. A header's key is the section's name; `value` is nothing without equals
  // sign.
  struct Line {
    std::string_view text;
    std::string_view end;
    std::string_view key;
    std::optional<std::string_view> value;
    bool header = false;
  };

  static Line ParsedLine(std::string_view text, std::string_view end);
  static bool IsEntry(const Line& line);
  static bool IsRemark(const Line& line);
  std::string_view Keep(std::string text);
  [[nodiscard]] std::size_t SectionBegin(std::string_view section) const;
  [[nodiscard]] std::size_t SectionEnd(std::size_t begin) const;
  [[nodiscard]] const Line* FindLine(std::string_view section, std::string_view key) const;
  std::size_t MakeSection(std::string_view section);
  [[nodiscard]] std::size_t RemarksOfNext(std::size_t begin) const;
  void EndLineBefore(std::size_t at);
  void InsertLine(std::size_t at, std::string text);

  std::list<std::string> texts;  // what the lines' views point into
  std::string_view mark;
  std::vector<Line> lines;
  std::string_view lineEnd = "\r\n";
};

// The number that the platform's GetPrivateProfileInt reads from a value: after an optional sign decimal
// digits, or hexadecimal, octal or binary ones after 0x, 0o or 0b, up to the first character that is none;
// modulo 2^32.
std::int32_t IniInteger(std::string_view value);

}  // namespace quorvex
