// The cursor that writes onto screens of captions, with the attributes of what it writes. It goes from one
// screen to another with its place, as the two memories of a caption decoder need.
#pragma once

#include "platform/common/caption_screen.h"

namespace quorvex {

class CaptionWriter {
 public:
  // Rows from 0 to 14, columns from 0 to 31.
  void Place(int newRow, int newColumn);
  // To the beginning of a row, with plain attributes.
  void BeginRow(int newRow);
  void SetPen(CaptionColor color, bool italic, bool underlined);
  [[nodiscard]] CaptionColor Color() const { return pen.color; }
  [[nodiscard]] int Row() const { return row; }

  // Writes a character (0: nothing, over what was there). At the end of a row the last one is replaced.
  void Put(CaptionScreen& screen, char32_t character);
  // Writes a character in place of the last one written.
  void Replace(CaptionScreen& screen, char32_t character);
  void Backspace(CaptionScreen& screen);
  void EraseToEnd(CaptionScreen& screen) const;
  // Moves on without writing, by `columns`.
  void Tab(int columns);

 private:
  CaptionCell& At(CaptionScreen& screen) const;

  int row = 0;
  int column = 0;  // 32: behind a full row
  CaptionCell pen;
};

// Rolls the rows from `first` to `last` up by one; the last is empty then.
void RollUp(CaptionScreen& screen, int first, int last);

}  // namespace quorvex
