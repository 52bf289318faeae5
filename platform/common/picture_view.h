// A picture in memory, 32 bits a pixel (blue, green, red, unused), that something is drawn into.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quorvex {

struct PictureView {
  std::uint8_t* top = nullptr;  // the first line; with a negative stride the picture lies bottom-up
  std::ptrdiff_t stride = 0;    // bytes from a line to the one below
  int width = 0;
  int height = 0;
};

}  // namespace quorvex
