// Turns decoded pictures into 32 bits a pixel, scaled to the size that is wanted.
#pragma once

#include "platform/common/av.h"
#include "platform/common/picture_view.h"

namespace quorvex {

class PictureConverter {
 public:
  // Fills `target`. False when the picture cannot be converted.
  bool Convert(const AVFrame& frame, const PictureView& target);

 private:
  void ChooseScaler(const AVFrame& frame, int width, int height);

  AvOwner<SwsContext> scaler;
  int scalerColours = -1;
};

}  // namespace quorvex
