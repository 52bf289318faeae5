// INI files. The first line is "section|key|value", what is changed in the file that follows it.
#include "base/ini_document.h"

#include <array>
#include <map>

#include "base/text.h"
#include "tests/fuzz/fuzz_target.h"

namespace quorvex {
namespace {

struct Change {
  std::string section;
  std::string key;
  std::string value;
};

using Keys = std::vector<std::pair<std::string, std::string>>;

// What may stand between brackets or before an equals sign: whoever names sections and keys sees to that.
bool IsName(std::string_view name) {
  return !name.empty() && Trimmed(name) == name &&
         name.find_first_of(std::string_view("\r\n\0[]=;", 7)) == std::string_view::npos;
}

bool IsRemark(std::string_view key) { return key.starts_with(';'); }

template <typename Act>
void ForEachLine(std::string_view text, Act act) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    act(Trimmed(text.substr(0, end)));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
}

std::ptrdiff_t RemarksIn(std::string_view text) {
  std::ptrdiff_t count = 0;
  ForEachLine(text, [&](std::string_view line) { count += IsRemark(line) ? 1 : 0; });
  return count;
}

std::vector<std::string> SectionsIn(std::string_view text) {
  std::vector<std::string> names{""};
  ForEachLine(text, [&](std::string_view line) {
    const std::size_t close = line.rfind(']');
    if (line.starts_with('[') && close != std::string_view::npos)
      names.emplace_back(Trimmed(line.substr(1, close - 1)));
  });
  return names;
}

// What every section of those holds, but for `without`: the section of that name, or only its key.
std::map<std::string, Keys> ContentOf(const IniDocument& document, const std::vector<std::string>& sections,
                                      const std::string& without, const std::string* key) {
  std::map<std::string, Keys> content;
  for (const std::string& section : sections) {
    const bool isIt = EqualNoCase(section, without);
    if (isIt && key == nullptr) continue;
    for (const IniEntry& entry : document.Entries(section))
      if (!IsRemark(entry.key) && !(isIt && EqualNoCase(entry.key, *key)))
        content[section].emplace_back(entry.key, entry.value);
  }
  return content;
}

// A line cannot hold line breaks, nor the stores' readers a zero; blanks at the ends are theirs.
std::string Stored(std::string_view value) {
  std::string text(value.substr(0, value.find('\0')));
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
  return std::string(Trimmed(text));
}

std::string Found(const IniDocument& document, const Change& change) {
  const auto value = document.Find(change.section, change.key);
  Require(value.has_value(), "what was set is there");
  return std::string(Trimmed(*value));
}

// What one text has in place of the other's part between common ends.
std::pair<std::string_view, std::string_view> Difference(std::string_view before, std::string_view after) {
  const auto [first, second] = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
  before.remove_prefix(static_cast<std::size_t>(first - before.begin()));
  after.remove_prefix(static_cast<std::size_t>(second - after.begin()));
  while (!before.empty() && !after.empty() && before.back() == after.back()) {
    before.remove_suffix(1);
    after.remove_suffix(1);
  }
  return {before, after};
}

void CheckSet(const std::string& text, const Change& change) {
  IniDocument document(text);
  const std::vector<std::string> sections = SectionsIn(text);
  const auto others = ContentOf(document, sections, change.section, &change.key);
  document.Set(change.section, change.key, change.value);
  const std::string once = document.Text();
  const IniDocument again(once);
  Require(Found(document, change) == Stored(change.value), "what was set can be read");
  Require(Found(again, change) == Stored(change.value), "what was set can be read from the file");
  Require(ContentOf(again, sections, change.section, &change.key) == others,
          "setting a key leaves the others");
  document.Set(change.section, change.key, change.value);
  Require(document.Text() == once, "setting a key again changes nothing");

  const auto [removed, added] = Difference(text, once);
  Require(removed.find_first_of("\r\n") == std::string_view::npos, "at most one line is replaced");
  const bool isOneLine = added.find_first_of("\r\n") == std::string_view::npos;
  Require(removed.empty() || isOneLine, "a line is replaced by a line");
}

void CheckReplacing(const std::string& text, const Change& change) {
  IniDocument document(text);
  const std::vector<std::string> sections = SectionsIn(text);
  const auto others = ContentOf(document, sections, change.section, nullptr);
  const std::array<IniEntry, 2> entries{{{"1", change.value}, {"2", "last"}}};
  document.ReplaceSection(change.section, entries);
  const IniDocument again(document.Text());
  Keys left;
  for (const IniEntry& entry : again.Entries(change.section))
    if (!IsRemark(entry.key)) left.emplace_back(entry.key, Trimmed(entry.value));
  Require(left == Keys{{"1", Stored(change.value)}, {"2", "last"}}, "a replaced section has these keys only");
  Require(ContentOf(again, sections, change.section, nullptr) == others, "replacing leaves other sections");
  Require(RemarksIn(document.Text()) == RemarksIn(text), "replacing keeps the remarks");
}

void CheckRemoving(const std::string& text, const Change& change) {
  IniDocument document(text);
  const std::vector<std::string> sections = SectionsIn(text);
  const auto others = ContentOf(document, sections, change.section, nullptr);
  document.RemoveSection(change.section);
  const std::string after = document.Text();
  Require(Difference(text, after).second.empty(), "what goes is in one piece");
  Require(ContentOf(IniDocument(after), sections, change.section, nullptr) == others,
          "removing leaves other sections");
}

void Try(std::string_view input) {
  std::string_view line = TakeUpTo(input, '\n');
  Change change;
  change.section = TakeUpTo(line, '|');
  change.key = TakeUpTo(line, '|');
  change.value = line;
  const std::string text(input);
  IniDocument document(text);
  Require(document.Text() == text, "what is not changed stays as it is");
  (void)IniInteger(change.value);
  if (!IsName(change.section) || !IsName(change.key)) return;
  CheckSet(text, change);
  CheckReplacing(text, change);
  CheckRemoving(text, change);
}

}  // namespace
}  // namespace quorvex

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  quorvex::Try(quorvex::TextOf(bytes, size));
  return 0;
}
