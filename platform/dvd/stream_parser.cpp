#include "platform/dvd/stream_parser.h"

#include <algorithm>
#include <vector>

namespace quorvex {
namespace {

AVCodecID CodecOf(DvdStreamKind kind) {
  switch (kind) {
    case DvdStreamKind::kVideo: return AV_CODEC_ID_MPEG2VIDEO;
    case DvdStreamKind::kMpegAudio: return AV_CODEC_ID_MP2;
    case DvdStreamKind::kAc3: return AV_CODEC_ID_AC3;
    case DvdStreamKind::kDts: return AV_CODEC_ID_DTS;
    case DvdStreamKind::kLpcm: return AV_CODEC_ID_PCM_DVD;
    case DvdStreamKind::kSubpicture: break;
  }
  return AV_CODEC_ID_NONE;
}

struct EndParameters {
  void operator()(AVCodecParameters* parameters) const { avcodec_parameters_free(&parameters); }
};

}  // namespace

StreamParser::StreamParser(DvdStreamKind kind) : codec(CodecOf(kind)), packet(av_packet_alloc()) {
  const std::unique_ptr<AVCodecParameters, EndParameters> parameters(avcodec_parameters_alloc());
  parameters->codec_id = codec;
  parameters->codec_type = kind == DvdStreamKind::kVideo ? AVMEDIA_TYPE_VIDEO : AVMEDIA_TYPE_AUDIO;
  decoder.emplace(CodedStream{parameters.get(), {1, static_cast<int>(kTicksPerSecond), 0}});
  MakeParser();
}

void StreamParser::MakeParser() {
  parser.reset(codec == AV_CODEC_ID_PCM_DVD ? nullptr : av_parser_init(codec));
  parserContext.reset(avcodec_alloc_context3(nullptr));
  parserContext->codec_id = codec;
}

void StreamParser::Flush() {
  MakeParser();
  if (IsOpen()) decoder->Flush();
}

std::size_t StreamParser::Parse(std::span<const std::uint8_t> bytes, std::int64_t stamp) {
  std::uint8_t* out = nullptr;
  int size = 0;
  auto used = static_cast<int>(bytes.size());
  std::int64_t begun = stamp;
  padded.assign(bytes.begin(), bytes.end());
  padded.resize(bytes.size() + AV_INPUT_BUFFER_PADDING_SIZE);
  if (parser) {
    used = av_parser_parse2(parser.get(), parserContext.get(), &out, &size, padded.data(), used, stamp, stamp,
                            0);
    begun = parser->pts;
  } else {
    out = padded.data();
    size = used;
  }
  av_packet_unref(packet.get());
  complete = size > 0 && IsOpen() && av_new_packet(packet.get(), size) >= 0;
  if (complete) {
    std::copy_n(out, size, packet->data);
    packet->pts = begun;
  }
  return static_cast<std::size_t>(std::max(used, 0));
}

}  // namespace quorvex
