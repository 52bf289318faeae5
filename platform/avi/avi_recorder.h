// Makes a movie of samples as they come from a capture graph: each stream begins at the first picture's time,
// pictures that were lost leave gaps of the right length, and so does sound.
#pragma once

#include <optional>
#include <vector>

#include "platform/avi/avi_writer.h"
#include "platform/avi/stream_rate.h"

namespace quorvex {

struct SampleTime {
  MediaTime begin = 0;
  MediaTime end = 0;
};

class AviRecorder {
 public:
  static constexpr int kNoMaster = -1;

  // `master` is the stream by which the others' rates go. `silence`: the byte that sound is filled with, for
  // each stream; none for coded sound, which is not filled.
  AviRecorder(ByteTarget& target, AviMovie movie, int master,
              std::vector<std::optional<std::uint8_t>> silence);

  FileResult Begin() { return writer.Begin(); }

  // A sample, in the order of its stream. Without a time, or with one that nothing can last, it follows what
  // came before.
  FileResult Take(std::size_t stream, std::optional<SampleTime> time, ByteView data, bool key);

  // Nothing more comes.
  FileResult Finish();

  [[nodiscard]] std::int64_t Pictures() const { return pictures; }
  [[nodiscard]] std::int64_t Lost() const { return lost; }
  [[nodiscard]] MediaTime Length() const { return LengthOf(movie, writer.Totals()); }
  // The movie with the rates as they are now, and where it ends in the file.
  [[nodiscard]] AviMovie Movie() const;
  [[nodiscard]] std::uint64_t End() const { return writer.End(); }

 private:
  struct Track {
    bool begun = false;
    MediaTime last = 0;  // end of what came last, from the movie's beginning
    std::optional<std::uint8_t> silence;
  };
  struct Held {
    std::size_t stream;
    SampleTime time;
    Bytes data;
    bool key;
  };

  [[nodiscard]] bool IsPictures(std::size_t stream) const;
  [[nodiscard]] bool MustWait(std::size_t stream, const SampleTime& time) const;
  FileResult Start(MediaTime at);
  FileResult Put(std::size_t stream, std::optional<SampleTime> time, ByteView data, bool key);
  SampleTime Place(const SampleTime& time);
  FileResult PutPicture(std::size_t stream, std::optional<SampleTime> time, ByteView data, bool key);
  FileResult PutSound(std::size_t stream, std::optional<SampleTime> time, ByteView data);
  FileResult PutSilence(std::size_t stream, std::int64_t units);
  [[nodiscard]] std::int64_t Units(std::size_t stream) const {
    return writer.Totals().streams.at(stream).units;
  }
  [[nodiscard]] StreamPace Pace(std::size_t stream) const;

  AviWriter writer;
  AviMovie movie;  // with the rates that the sources told
  const int master;
  std::vector<Track> tracks;
  std::vector<Held> held;  // sound from before the first picture
  std::optional<MediaTime> origin;
  MediaTime latest = 0;  // end of what has come, in any stream
  std::int64_t pictures = 0;
  std::int64_t lost = 0;
};

}  // namespace quorvex
