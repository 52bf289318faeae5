// CUE sheets: the text files that say which tracks a BIN or WAV file holds.
#pragma once

#include <string_view>
#include <variant>

#include "platform/cd/sheet_reader.h"

namespace quorvex {

// The disc that a CUE sheet describes, its files opened by `open`: several files, pauses inside and outside
// the files (INDEX 00, PREGAP, POSTGAP), data tracks of any sector size, raw files in either byte order and
// WAV files.
std::variant<DiscPlan, DiscError> PlanCueSheet(std::string_view sheet, const SourceOpener& open);

}  // namespace quorvex
