// The closed captions of a disc's video: the screen that is to be drawn.
#pragma once

#include <cstdint>
#include <deque>
#include <span>

#include "platform/common/caption_painter.h"
#include "platform/common/caption_wishes.h"
#include "platform/common/line21_decoder.h"

namespace quorvex {

// Belongs to the thread that makes pictures.
class ClosedCaptions {
 public:
  explicit ClosedCaptions(const CaptionWishes& wished) : wishes(wished) {}

  // The captions that came with a picture: groups of three bytes (the kind, and a pair), often for the
  // pictures behind it as well.
  void Add(std::span<const std::uint8_t> groups);

  // A picture's time has come: one pair of each field is its own.
  void Advance();

  // After a jump.
  void Forget();

  // Changes whenever what is drawn does.
  [[nodiscard]] std::uint64_t Look() const;

  void Draw(const PictureView& picture);

 private:
  struct Pair {
    std::uint8_t first;
    std::uint8_t second;
  };
  void FeedOne(std::deque<Pair>& pairs, int field);

  const CaptionWishes& wishes;
  Line21Decoder decoder;
  CaptionPainter painter;
  std::deque<Pair> waiting[2];
  std::uint64_t changes = 0;
};

}  // namespace quorvex
