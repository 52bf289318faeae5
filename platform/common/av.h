// FFmpeg's objects with owners.
#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

#include <memory>

#include "platform/common/media_time.h"

namespace quorvex {

struct EndAvObject {
  void operator()(AVPacket* packet) const { av_packet_free(&packet); }
  void operator()(AVFrame* frame) const { av_frame_free(&frame); }
  void operator()(AVCodecContext* codec) const { avcodec_free_context(&codec); }
  void operator()(AVFormatContext* format) const { avformat_close_input(&format); }
  void operator()(SwsContext* scaler) const { sws_freeContext(scaler); }
  void operator()(SwrContext* resampler) const { swr_free(&resampler); }
};
template <typename Object>
using AvOwner = std::unique_ptr<Object, EndAvObject>;

// How a stream is coded and how its time runs.
struct CodedStream {
  const AVCodecParameters* parameters;  // of the owner of the stream
  TickClock clock;
};

}  // namespace quorvex
