// Puts the pieces of an elementary stream together to whole pictures or blocks of sound, and decodes them.
#pragma once

#include <memory>
#include <optional>
#include <span>

#include "platform/common/decoder.h"
#include "platform/dvd/dvd_time.h"
#include "platform/dvd/pack_demuxer.h"

namespace quorvex {

struct EndParser {
  void operator()(AVCodecParserContext* parser) const { av_parser_close(parser); }
};

class StreamParser {
 public:
  explicit StreamParser(DvdStreamKind kind);

  [[nodiscard]] bool IsOpen() const { return decoder && decoder->IsOpen(); }

  // Decodes what is complete with these bytes and calls take(AVFrame&) for each frame, until it answers
  // false. Frames carry the ticks of the piece that they began in.
  template <typename Take>
  bool Feed(std::span<const std::uint8_t> bytes, std::optional<DvdTicks> time, Take take) {
    std::int64_t stamp = time.value_or(AV_NOPTS_VALUE);
    while (!bytes.empty()) {
      const std::size_t used = Parse(bytes, stamp);
      bytes = bytes.subspan(used);
      stamp = AV_NOPTS_VALUE;
      if (complete && !decoder->Decode(packet.get(), take)) return false;
    }
    return true;
  }

  // What is held back comes out; what follows begins anew.
  template <typename Take>
  bool Drain(Take take) {
    Parse({}, AV_NOPTS_VALUE);
    bool taken = !complete || decoder->Decode(packet.get(), take);
    taken = taken && decoder->Decode(nullptr, take);
    Flush();
    return taken;
  }

  // Forgets what was before.
  void Flush();

  void SkipUnreferenced(bool skip) { decoder->SkipUnreferenced(skip); }

 private:
  // Answers how many bytes were used; `complete` tells whether `packet` holds something.
  std::size_t Parse(std::span<const std::uint8_t> bytes, std::int64_t stamp);
  void MakeParser();

  AVCodecID codec = AV_CODEC_ID_NONE;
  std::optional<Decoder> decoder;
  std::unique_ptr<AVCodecParserContext, EndParser> parser;  // none for sound that needs no parsing
  struct EndContext {
    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
  };
  std::unique_ptr<AVCodecContext, EndContext> parserContext;
  AvOwner<AVPacket> packet;
  std::vector<std::uint8_t> padded;
  bool complete = false;
};

}  // namespace quorvex
