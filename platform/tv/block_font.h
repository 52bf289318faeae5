// Letters of five by seven blocks, for the test pictures.
#pragma once

#include <array>
#include <cstdint>

namespace quorvex {

constexpr int kGlyphWidth = 5;
constexpr int kGlyphHeight = 7;
using Glyph =
    std::array<std::uint8_t, kGlyphHeight>;  // the lines from the top; the lowest bit is at the right

// Capitals (small letters give them too), digits and some signs; anything else is empty.
Glyph GlyphOf(char character);

}  // namespace quorvex
