// A screen of captions: what a viewer sees.
#pragma once

#include <array>
#include <cstdint>

namespace quorvex {

enum class CaptionColor : std::uint8_t { kWhite, kGreen, kBlue, kCyan, kRed, kYellow, kMagenta, kBlack };

struct CaptionCell {
  char32_t character = 0;  // 0: nothing there, the picture shows through
  CaptionColor color = CaptionColor::kWhite;
  bool italic = false;
  bool underlined = false;
  friend bool operator==(const CaptionCell&, const CaptionCell&) = default;
};

inline constexpr int kCaptionColumns = 32;
using CaptionRow = std::array<CaptionCell, kCaptionColumns>;

struct CaptionScreen {
  static constexpr int kRows = 15;
  static constexpr int kColumns = kCaptionColumns;
  std::array<CaptionRow, kRows> cells{};
  friend bool operator==(const CaptionScreen&, const CaptionScreen&) = default;
};

}  // namespace quorvex
