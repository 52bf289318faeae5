// NRG images: the sectors of a disc in one file, and behind them a trailer of chunks that tells where its
// tracks lie. The format was never published; this is what is generally known of it (numbers have the high
// byte first).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "platform/cd/sheet_reader.h"

namespace quorvex {

// What a file's last bytes (12, or all of a shorter file) say of where its trailer begins, in bytes from the
// start of the file; nothing when it is no NRG image.
inline constexpr std::size_t kNrgFootBytes = 12;
std::optional<std::int64_t> NrgTrailerOffset(std::string_view foot);

// The disc that a trailer describes; its sectors are those of the file `name`, opened by `open`. The tracks
// of several sessions follow each other without the gaps between sessions.
std::variant<DiscPlan, DiscError> PlanNrgTrailer(std::string_view trailer, const std::string& name,
                                                 const SourceOpener& open);

}  // namespace quorvex
