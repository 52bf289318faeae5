// Plays a file into pins: one thread reads the file, and one for each stream decodes and delivers. Every
// start has threads of its own, which end with it.
#pragma once

#include <memory>
#include <thread>
#include <vector>

#include "platform/common/media_file.h"
#include "platform/common/output_pin.h"
#include "platform/common/stream_buffers.h"
#include "platform/common/stream_feeder.h"

namespace quorvex {

class Playback {
 public:
  // One stream and where it goes.
  struct Track {
    MediaFile::Kind kind;
    OutputPin* pin;
    StreamFeeder* feeder;
  };

  // The file and what the tracks name outlive the playback.
  Playback(MediaFile& played, std::vector<Track> fed) : file(played), tracks(std::move(fed)) {}
  Playback(const Playback&) = delete;
  Playback& operator=(const Playback&) = delete;
  ~Playback() { Halt(); }

  // Plays a part of the file into the pins that are connected, from now until its end, which the pins are
  // told.
  void Start(const Segment& segment);

  // Ends it: the pins' other ends are flushed, and nothing is delivered any more when this returns.
  void Halt();

 private:
  using Buffers = StreamBuffers<AvOwner<AVPacket>>;

  void Read(MediaTime from);
  void Work(std::size_t index, const Segment& segment);
  Fed FeedAll(std::size_t index);

  MediaFile& file;
  const std::vector<Track> tracks;
  std::vector<Track> playing;
  std::unique_ptr<Buffers> buffers;
  std::vector<std::thread> threads;
};

}  // namespace quorvex
