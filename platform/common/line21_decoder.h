// Decodes line 21 of a video signal (closed captions and text, EIA-608 / 47 CFR 15.119): byte pairs to a
// screen of characters.
#pragma once

#include <array>
#include <cstdint>

namespace quorvex {

enum class Line21Channel {
  kNone,
  kCaption1,
  kCaption2,
  kCaption3,
  kCaption4,
  kText1,
  kText2,
  kText3,
  kText4
};

enum class CaptionColor : std::uint8_t { kWhite, kGreen, kBlue, kCyan, kRed, kYellow, kMagenta, kBlack };

struct CaptionCell {
  char32_t character = 0;  // 0: nothing there, the picture shows through
  CaptionColor color = CaptionColor::kWhite;
  bool italic = false;
  bool underlined = false;
  friend bool operator==(const CaptionCell&, const CaptionCell&) = default;
};

struct CaptionScreen {
  static constexpr int kRows = 15;
  static constexpr int kColumns = 32;
  std::array<std::array<CaptionCell, kColumns>, kRows> cells{};
  friend bool operator==(const CaptionScreen&, const CaptionScreen&) = default;
};

class Line21Decoder {
 public:
  // The channel that is decoded; another one begins with an empty screen.
  void SetChannel(Line21Channel channel);
  [[nodiscard]] Line21Channel Channel() const;

  // The two bytes of one field (1 or 2) of one picture, with their parity bits. Bytes of wrong parity are
  // handled as the rules say. Answers whether the shown screen is another one now.
  bool Feed(int field, std::uint8_t first, std::uint8_t second);

  // After a jump: nothing is shown, nothing is waited for.
  void Clear();

  [[nodiscard]] const CaptionScreen& Shown() const;
};

}  // namespace quorvex
