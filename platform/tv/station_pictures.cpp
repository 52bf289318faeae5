#include "platform/tv/station_pictures.h"

#include <algorithm>
#include <chrono>

namespace quorvex {
namespace {

using Clock = std::chrono::steady_clock;

// How long one picture may take to be found, so that whoever is to show it stays in time; and the first one.
constexpr std::chrono::milliseconds kPatience{20};
constexpr std::chrono::milliseconds kFirstPatience{100};
// A place so far ahead is sought for instead of being played up to.
constexpr MediaTime kFarAhead = 5 * kSecond;
// Times that go back by less come from clocks that were read one after the other.
constexpr MediaTime kUnsteady = kSecond / 5;
// From here on pictures that no other refers to are left out.
constexpr MediaTime kFarBehind = kSecond / 2;

}  // namespace

bool StationPictures::Show(const std::string& path, MediaTime air, const PictureView& view) {
  if (!Tune(path)) return false;
  const MediaTime place = station.Place(air);
  const MediaTime back = reached - place;
  const bool begunAnew = back > std::min(kUnsteady, station.Length() / 2);
  if (begunAnew || place > reached + kFarAhead) GoTo(place);
  reached = begunAnew ? place : std::max(reached, place);
  Advance(reached);
  return !decoded.empty() && converter.Convert(*decoded.front().frame, view);
}

bool StationPictures::Tune(const std::string& path) {
  file = station.Tune(path);
  if (!station.IsNew()) return pictures && pictures->IsOpen();
  pictures.reset();
  decoded.clear();
  if (file == nullptr) return false;
  pictures.emplace(file->Coded(*file->Picture()), file->FrameTime());
  if (!pictures->IsOpen()) return false;
  reached = kForever;  // nothing is decoded yet: wherever one begins is another place
  return true;
}

void StationPictures::GoTo(MediaTime place) {
  file->Seek(place);
  pictures->Begin(place);
  decoded.clear();
  over = false;
}

// Decodes up to a place; what lies before it is passed over, but for the last.
void StationPictures::Advance(MediaTime place) {
  const Clock::time_point begin = Clock::now();
  for (;;) {
    while (decoded.size() > 1 && decoded.front().end <= place) decoded.pop_front();
    const bool there = !decoded.empty() && decoded.front().end > place;
    const bool late = Clock::now() - begin > (decoded.empty() ? kFirstPatience : kPatience);
    if (there || late || over) return;
    pictures->SkipUnreferenced(!decoded.empty() && decoded.front().end < place - kFarBehind);
    DecodeNext();
  }
}

void StationPictures::DecodeNext() {
  const std::optional<MediaFile::Packet> packet = file->Next();
  over = !packet;
  if (packet && packet->kind != MediaFile::Kind::kPicture) return;
  pictures->Decode(packet ? packet->data.get() : nullptr,
                   [&](const AVFrame& frame, MediaTime, MediaTime end) {
                     decoded.push_back({AvOwner<AVFrame>(av_frame_clone(&frame)), end});
                     return true;
                   });
}

}  // namespace quorvex
