// What the two kinds of sheets that describe a disc image (CUE and TOC) have in common: words, times,
// complaints.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/cd/disc_plan.h"

namespace quorvex {

// Why an image cannot be used, in words for the user.
struct DiscError {
  std::string text;
};

// Finds out what a named file holds: answers false and says why when it cannot be used. Sets dataOffset and
// dataBytes.
using SourceOpener = std::function<bool(DiscSource& source, std::string& why)>;

// Takes words off the front of a sheet. A word is a run of characters other than blanks, or a text in double
// quotes; in sheets with comments, "//" hides the rest of its line.
class SheetReader {
 public:
  SheetReader(std::string_view text, bool withComments);

  // The next word of the current line; nothing at its end.
  std::optional<std::string> WordOfLine();
  // The next word on this or a later line; nothing at the end of the sheet.
  std::optional<std::string> Word();
  // Goes to the next line; false at the end.
  bool NextLine();
  [[nodiscard]] int Line() const { return line; }

  // "line 12: text".
  [[nodiscard]] DiscError Complaint(const std::string& text) const;

 private:
  void SkipBlanks();

  std::string_view rest;
  bool comments;
  int line = 1;
};

// Frames of a time "mm:ss:ff" (seconds below 60, frames below 75); nothing when it is none.
std::optional<int> ParseMsf(std::string_view text);

// Sectors of `bytes`; the last may be incomplete.
int FramesIn(std::int64_t bytes, int sectorBytes);

}  // namespace quorvex
