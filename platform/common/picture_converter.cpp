#include "platform/common/picture_converter.h"

#include <array>

namespace quorvex {

bool PictureConverter::Convert(const AVFrame& frame, const PictureView& target) {
  ChooseScaler(frame, target.width, target.height);
  if (!scaler) return false;
  const std::array<std::uint8_t*, 4> planes{target.top};
  const std::array<int, 4> lines{static_cast<int>(target.stride)};
  return sws_scale(scaler.get(), static_cast<const std::uint8_t* const*>(frame.data),
                   static_cast<const int*>(frame.linesize), 0, frame.height, planes.data(), lines.data()) > 0;
}

void PictureConverter::ChooseScaler(const AVFrame& frame, int width, int height) {
  const SwsContext* before = scaler.get();
  scaler.reset(sws_getCachedContext(scaler.release(), frame.width, frame.height,
                                    static_cast<AVPixelFormat>(frame.format), width, height, AV_PIX_FMT_BGR0,
                                    SWS_BILINEAR, nullptr, nullptr, nullptr));
  const int colours = frame.colorspace;
  if (!scaler || (scaler.get() == before && colours == scalerColours)) return;
  scalerColours = colours;
  const bool fullRange = frame.color_range == AVCOL_RANGE_JPEG;
  sws_setColorspaceDetails(scaler.get(), sws_getCoefficients(colours), fullRange ? 1 : 0,
                           sws_getCoefficients(SWS_CS_DEFAULT), 1, 0, 1 << 16, 1 << 16);
}

}  // namespace quorvex
