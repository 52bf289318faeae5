#include "platform/tv/programme_picture.h"

namespace quorvex {

void ProgrammePicture::Draw(const PictureView& picture, PictureSource& source, std::int64_t number,
                            MediaTime air) {
  Scene scene = source.Seen();
  const ColorAdjustment adjustment = source.Adjustment();
  if (!scene.file.empty() && station.Show(scene.file, air, picture)) {
    adjustment.Apply(picture);
    return;
  }
  scene.signal = scene.signal && scene.file.empty();  // a file without a picture is noise
  test.Draw(picture, scene, adjustment, static_cast<std::uint32_t>(number), PictureSource::Clock());
}

}  // namespace quorvex
