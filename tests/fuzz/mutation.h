// Changes a seed, as libFuzzer would: for where there is no clang.
#pragma once

#include <cstdint>
#include <random>
#include <vector>

namespace quorvex {

using Input = std::vector<std::uint8_t>;

// One of the seeds with some changes: bytes, pieces of other seeds, numbers at their limits, a part that is
// missing.
Input Mutated(const std::vector<Input>& seeds, std::mt19937& random);

}  // namespace quorvex
