// The picture that a card's pin sends at a moment: of its test picture, or of the file that a station sends.
#pragma once

#include "platform/tv/picture_source.h"
#include "platform/tv/station_pictures.h"
#include "platform/tv/test_picture.h"

namespace quorvex {

class ProgrammePicture {
 public:
  // Fills a picture with what the source sees at a time of day (AirTime); `number` counts the pictures.
  void Draw(const PictureView& picture, PictureSource& source, std::int64_t number, MediaTime air);

 private:
  TestPicture test;
  StationPictures station;
};

}  // namespace quorvex
