#include "platform/common/decoder.h"

#include <algorithm>
#include <thread>

namespace quorvex {
namespace {

// Pictures larger than this are decoded by several threads; for smaller ones waking them costs more.
constexpr int kLargePicture = 1024 * 576;
constexpr unsigned kMostThreads = 4;
constexpr int kMostErrorsInARow = 64;

void ChooseThreads(AVCodecContext& codec) {
  if (codec.width * codec.height <= kLargePicture) return;
  codec.thread_count = static_cast<int>(std::clamp(std::thread::hardware_concurrency(), 1U, kMostThreads));
  codec.thread_type = FF_THREAD_FRAME | FF_THREAD_SLICE;
}

}  // namespace

Decoder::Decoder(const CodedStream& stream) : frame(av_frame_alloc()) {
  const AVCodec* found = avcodec_find_decoder(stream.parameters->codec_id);
  if (found == nullptr) return;
  AvOwner<AVCodecContext> made(avcodec_alloc_context3(found));
  if (!made || avcodec_parameters_to_context(made.get(), stream.parameters) < 0) return;
  made->pkt_timebase = {stream.clock.numerator, stream.clock.denominator};
  ChooseThreads(*made);
  if (avcodec_open2(made.get(), found, nullptr) >= 0) codec = std::move(made);
}

void Decoder::Flush() { avcodec_flush_buffers(codec.get()); }

void Decoder::SkipUnreferenced(bool skip) { codec->skip_frame = skip ? AVDISCARD_NONREF : AVDISCARD_DEFAULT; }

bool Decoder::Send(const AVPacket* packet) {
  return avcodec_send_packet(codec.get(), packet) != AVERROR(EAGAIN);
}

bool Decoder::Receive() {
  // An error stands for one packet; behind it there may be frames.
  for (int errors = 0; errors < kMostErrorsInARow; ++errors) {
    const int result = avcodec_receive_frame(codec.get(), frame.get());
    if (result >= 0) return true;
    if (result == AVERROR(EAGAIN) || result == AVERROR_EOF) return false;
  }
  return false;
}

}  // namespace quorvex
