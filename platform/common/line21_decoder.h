// Decodes line 21 of a video signal (closed captions and text, EIA-608 / 47 CFR 15.119): byte pairs to a
// screen of characters.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "platform/common/caption_screen.h"
#include "platform/common/caption_writer.h"

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

class Line21Decoder {
 public:
  // The channel that is decoded; another one begins with an empty screen.
  void SetChannel(Line21Channel newChannel);
  [[nodiscard]] Line21Channel Channel() const { return channel; }

  // The two bytes of one field (1 or 2) of one picture, with their parity bits. Of wrong parity, a
  // character shows as a block and a control code is passed over (it is sent twice). Answers whether the
  // shown screen is another one now.
  bool Feed(int field, std::uint8_t first, std::uint8_t second);

  // After a jump: nothing is shown, nothing is waited for.
  void Clear();

  [[nodiscard]] const CaptionScreen& Shown() const { return memories[shown]; }

 private:
  enum class Style { kNone, kPopOn, kRollUp, kPaintOn, kText };
  struct Pair {
    std::uint8_t first = 0;
    std::uint8_t second = 0;
  };

  void TakePair(std::uint8_t first, std::uint8_t second);
  void TakeControl(Pair code);
  void TakeCharacterCode(Pair code);
  void TakePreamble(Pair code);
  void TakeMidRow(std::uint8_t code);
  void TakeCommand(std::uint8_t code);
  void TakeWriting(std::uint8_t code);
  bool TakeMode(std::uint8_t code);

  [[nodiscard]] bool IsTextChannel() const { return channel >= Line21Channel::kText1; }
  void BeginRollUp(int newDepth);
  void BeginText();
  void MoveBase(int newBase);
  void ReturnCarriage();
  // What is written to now: in pop-on style the memory that is not shown.
  CaptionScreen& Target() { return memories[style == Style::kPopOn ? 1 - shown : shown]; }

  Line21Channel channel = Line21Channel::kNone;
  std::array<CaptionScreen, 2> memories;
  std::size_t shown = 0;
  CaptionWriter writer;
  Style style = Style::kNone;
  int depth = 0;           // rows that roll up
  int base = 0;            // the lowest of them
  bool inText = false;     // the field's data of our kind are of a text channel now, not of captions
  bool addressed = false;  // what characters come now are ours
  std::optional<Pair> awaitedRepeat;
};

}  // namespace quorvex
