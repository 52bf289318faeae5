#include "platform/common/caption_writer.h"

#include <algorithm>

namespace quorvex {
namespace {

constexpr int kLastColumn = CaptionScreen::kColumns - 1;

}  // namespace

void CaptionWriter::Place(int newRow, int newColumn) {
  row = newRow;
  column = newColumn;
}

void CaptionWriter::BeginRow(int newRow) {
  Place(newRow, 0);
  pen = {};
}

void CaptionWriter::SetPen(CaptionColor color, bool italic, bool underlined) {
  pen = {.color = color, .italic = italic, .underlined = underlined};
}

CaptionCell& CaptionWriter::At(CaptionScreen& screen) const {
  return screen.cells[static_cast<std::size_t>(row)][static_cast<std::size_t>(std::min(column, kLastColumn))];
}

void CaptionWriter::Put(CaptionScreen& screen, char32_t character) {
  CaptionCell cell = pen;
  cell.character = character;
  At(screen) = character == 0 ? CaptionCell{} : cell;
  column = std::min(column + 1, CaptionScreen::kColumns);
}

void CaptionWriter::Replace(CaptionScreen& screen, char32_t character) {
  column = std::max(column - 1, 0);
  Put(screen, character);
}

void CaptionWriter::Backspace(CaptionScreen& screen) {
  if (column == 0) return;
  // There is no column behind the last one, so it goes back from the last one even when that is full.
  if (column >= kLastColumn) {
    column = kLastColumn;
    At(screen) = {};
  }
  --column;
  At(screen) = {};
}

void CaptionWriter::EraseToEnd(CaptionScreen& screen) const {
  auto& cells = screen.cells[static_cast<std::size_t>(row)];
  std::fill(cells.begin() + std::min(column, kLastColumn), cells.end(), CaptionCell{});
}

void CaptionWriter::Tab(int columns) { column = std::max(column, std::min(column + columns, kLastColumn)); }

void RollUp(CaptionScreen& screen, int first, int last) {
  auto* rows = screen.cells.data();
  std::copy(rows + first + 1, rows + last + 1, rows + first);
  rows[last] = {};
}

}  // namespace quorvex
