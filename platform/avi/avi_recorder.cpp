#include "platform/avi/avi_recorder.h"

#include <algorithm>

namespace quorvex {
namespace {

// Sound waits for the first picture no longer than this.
constexpr MediaTime kLongestWait = kSecond;
// When nothing at all has come for so long, the recording was paused: it goes on where it stopped.
constexpr MediaTime kPause = 5 * kSecond;
// Sound whose times are less off than this is whole.
constexpr MediaTime kUnheard = 20 * kMillisecond;
constexpr std::size_t kSilenceBytes = std::size_t{64} * 1024;
// A picture's own length is believed between these.
constexpr MediaTime kShortestPicture = kSecond / 240;
constexpr MediaTime kLongestSample = 10 * kSecond;

bool IsPossible(const SampleTime& time) {
  return time.begin > -kForever && time.begin < kForever && time.end >= time.begin &&
         time.end - time.begin <= kLongestSample;
}

}  // namespace

AviRecorder::AviRecorder(ByteTarget& target, AviMovie itsMovie, int itsMaster,
                         std::vector<std::optional<std::uint8_t>> silence)
    : writer(target, itsMovie), movie(std::move(itsMovie)), master(itsMaster), tracks(movie.streams.size()) {
  for (std::size_t i = 0; i < tracks.size(); ++i) tracks[i].silence = silence[i];
}

bool AviRecorder::IsPictures(std::size_t stream) const {
  return movie.streams[stream].kind == StreamKind::kPictures;
}

// Sound waits for the first picture: the movie begins with it.
bool AviRecorder::MustWait(std::size_t stream, const SampleTime& time) const {
  if (origin || IsPictures(stream)) return false;
  const bool hasPictures = std::any_of(movie.streams.begin(), movie.streams.end(), [](const AviStream& each) {
    return each.kind == StreamKind::kPictures;
  });
  return hasPictures && (held.empty() || time.end - held.front().time.begin < kLongestWait);
}

FileResult AviRecorder::Take(std::size_t stream, std::optional<SampleTime> time, ByteView data, bool key) {
  if (time && !IsPossible(*time)) time.reset();
  if (time && MustWait(stream, *time)) {
    held.push_back({stream, *time, {data.begin(), data.end()}, key});
    return FileResult::kDone;
  }
  if (!origin) {
    const MediaTime first = time ? time->begin : 0;
    const FileResult result = Start(IsPictures(stream) || held.empty() ? first : held.front().time.begin);
    if (result != FileResult::kDone) return result;
  }
  return Put(stream, time, data, key);
}

FileResult AviRecorder::Start(MediaTime at) {
  origin = at;
  FileResult result = FileResult::kDone;
  for (const Held& early : held) {
    if (result == FileResult::kDone) result = Put(early.stream, early.time, early.data, early.key);
  }
  held.clear();
  return result;
}

FileResult AviRecorder::Put(std::size_t stream, std::optional<SampleTime> time, ByteView data, bool key) {
  if (time) time = Place(*time);
  return IsPictures(stream) ? PutPicture(stream, time, data, key) : PutSound(stream, time, data);
}

// A sample's times from the movie's beginning.
SampleTime AviRecorder::Place(const SampleTime& time) {
  if (time.begin - *origin > latest + kPause) *origin = time.begin - latest;
  const SampleTime placed{time.begin - *origin, time.end - *origin};
  latest = std::max(latest, placed.end);
  return placed;
}

FileResult AviRecorder::PutPicture(std::size_t stream, std::optional<SampleTime> time, ByteView data,
                                   bool key) {
  Track& track = tracks[stream];
  UnitRate& rate = movie.streams[stream].rate;
  if (time) {
    const MediaTime length = time->end - time->begin;
    if (!track.begun && length >= kShortestPicture && length <= kLongestSample) {
      rate = PictureRate(length);
      writer.Movie().streams[stream].rate = rate;
    }
    const std::int64_t missing = rate.UnitsIn(time->begin) - Units(stream);
    for (std::int64_t i = 0; i < missing; ++i) {
      if (const FileResult result = writer.Add(stream, {}, false); result != FileResult::kDone) return result;
      ++lost;
    }
    track.last = time->end;
  }
  track.begun = true;
  const FileResult result = writer.Add(stream, data, key);
  if (result == FileResult::kDone) ++pictures;
  return result;
}

FileResult AviRecorder::PutSound(std::size_t stream, std::optional<SampleTime> time, ByteView data) {
  Track& track = tracks[stream];
  const AviStream& told = movie.streams[stream];
  if (time && track.silence) {
    const std::int64_t missing = told.rate.UnitsIn(time->begin) - Units(stream);
    const bool isGap = time->begin - track.last > kUnheard && told.rate.TimeOf(missing) > kUnheard;
    if (!track.begun && missing < 0) {
      const auto early = static_cast<std::uint64_t>(-missing) * told.unitBytes;
      if (early >= data.size()) return FileResult::kDone;
      data = data.subspan(early);
      time->begin = 0;
    } else if (missing > 0 && (!track.begun || isGap)) {
      if (const FileResult result = PutSilence(stream, missing); result != FileResult::kDone) return result;
    }
  }
  if (time) track.last = time->end;
  track.begun = true;
  return data.empty() ? FileResult::kDone : writer.Add(stream, data, true);
}

FileResult AviRecorder::PutSilence(std::size_t stream, std::int64_t units) {
  const std::uint32_t unit = movie.streams[stream].unitBytes;
  const Bytes quiet(kSilenceBytes / unit * unit, tracks[stream].silence.value_or(0));
  FileResult result = FileResult::kDone;
  for (auto left = static_cast<std::uint64_t>(units) * unit; left > 0 && result == FileResult::kDone;) {
    const std::uint64_t bytes = std::min<std::uint64_t>(left, quiet.size());
    result = writer.Add(stream, {quiet.data(), bytes}, true);
    left -= bytes;
  }
  return result;
}

StreamPace AviRecorder::Pace(std::size_t stream) const {
  return {movie.streams[stream].rate.TimeOf(Units(stream)), tracks[stream].last};
}

AviMovie AviRecorder::Movie() const {
  AviMovie told = movie;
  const auto count = static_cast<int>(movie.streams.size());
  for (int i = 0; i < count && master >= 0 && master < count; ++i) {
    const auto at = static_cast<std::size_t>(i);
    if (i != master)
      told.streams[at].rate =
          RateBeside(movie.streams[at].rate, Pace(at), Pace(static_cast<std::size_t>(master)));
  }
  return told;
}

FileResult AviRecorder::Finish() {
  if (!origin && !held.empty()) {
    if (const FileResult result = Start(held.front().time.begin); result == FileResult::kFailed)
      return result;
  }
  writer.Movie() = Movie();
  return writer.Finish();
}

}  // namespace quorvex
