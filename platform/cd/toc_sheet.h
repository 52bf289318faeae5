// TOC sheets: the text files by which cdrdao describes a disc.
#pragma once

#include <string_view>
#include <variant>

#include "platform/cd/sheet_reader.h"

namespace quorvex {

// The disc that a TOC sheet describes, its files opened by `open`. Raw sound files hold the high byte of a
// sample first, unless SWAP stands behind their name.
std::variant<DiscPlan, DiscError> PlanTocSheet(std::string_view sheet, const SourceOpener& open);

}  // namespace quorvex
