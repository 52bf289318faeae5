// The pictures of the file that a station sends, for one who looks at them.
#pragma once

#include <deque>
#include <optional>

#include "platform/common/picture_converter.h"
#include "platform/common/timed_pictures.h"
#include "platform/tv/station_file.h"

namespace quorvex {

class StationPictures {
 public:
  // Fills a picture of any size with what is on at a time of day (AirTime). It never takes long: right after
  // a channel was chosen, what is shown may lie before that time. False when there is no picture.
  bool Show(const std::string& path, MediaTime air, const PictureView& view);

 private:
  struct Picture {
    AvOwner<AVFrame> frame;
    MediaTime end;
  };

  bool Tune(const std::string& path);
  void GoTo(MediaTime place);
  void Advance(MediaTime place);
  void DecodeNext();

  StationFile station;
  MediaFile* file = nullptr;  // the station's; null when there is none
  std::optional<TimedPictures> pictures;
  PictureConverter converter;
  std::deque<Picture> decoded;  // the first is the one that is shown
  MediaTime reached = 0;        // the place that was shown last
  bool over = false;            // the file has no more
};

}  // namespace quorvex
