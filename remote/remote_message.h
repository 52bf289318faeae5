// What another program's messages carry, read (remote_protocol.h says what each holds).
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvex {

inline constexpr std::size_t kMostRemoteFiles = 10000;

// Full paths, each ended by a zero; none when the list is not in order.
std::vector<std::string> PathsIn(std::string_view bytes);

// A command number of 32 bits; none when there are not as many bytes.
std::optional<int> CommandIn(std::string_view bytes);

}  // namespace quorvex
