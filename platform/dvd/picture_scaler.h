// Enlarges and reduces pictures of 32 bits a pixel, between their pixels' centres.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/common/picture_view.h"

namespace quorvex {

class PictureScaler {
 public:
  // Fills `target` with `source`. Neither is empty.
  void Scale(const PictureView& source, const PictureView& target);

 private:
  // Which two of a row (or column) a pixel lies between, and how far from the first: 0 to 256.
  struct Tap {
    int first = 0;
    int second = 0;
    int weight = 0;
  };
  static std::vector<Tap> Taps(int sourceLength, int targetLength);
  void Prepare(const PictureView& source, const PictureView& target);
  void MixRows(const PictureView& source, const Tap& tap, std::uint8_t* out) const;
  void MixColumns(std::uint8_t* out) const;

  int sourceWidth = 0;
  int sourceHeight = 0;
  int targetWidth = 0;
  int targetHeight = 0;
  std::vector<Tap> columns;
  std::vector<Tap> rows;
  std::vector<std::uint8_t> mixed;  // one row of the source's width
};

}  // namespace quorvex
