// The media file that a station sends. It is on the air in a loop, by the time of day, whoever looks: several
// pins, filters and programs that are tuned to it see and hear the same place of it.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "platform/common/media_file.h"

namespace quorvex {

// The time of day: the place in a station's loop is what is left of it.
MediaTime AirTime();

class StationFile {
 public:
  // Opens a file (UTF-8 path) unless it is the one that is open. Null when it can not be sent: it cannot be
  // opened, has no picture, or does not tell its length. A file that was refused is not tried again before
  // another one.
  MediaFile* Tune(const std::string& path);

  // Whether Tune has opened another file since the last call.
  bool IsNew() { return std::exchange(isNew, false); }

  // The place that is on at a time of day. There is a file.
  [[nodiscard]] MediaTime Place(MediaTime air) const { return air % Length(); }
  [[nodiscard]] MediaTime Length() const { return file->Duration(); }

 private:
  std::string tried;
  std::unique_ptr<MediaFile> file;
  bool isNew = false;
};

}  // namespace quorvex
