// NRG images: twenty sectors of silence, and the bytes as what follows them: the trailer and its foot.
#include "platform/cd/planned_image.h"
#include "tests/fuzz/image_check.h"
#include "tests/fuzz/unnamed_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  constexpr std::size_t kSectors = 20;
  static const quorvex::UnnamedFile image;
  image.Fill(kSectors * quorvex::kAudioSectorBytes, quorvex::TextOf(bytes, size));
  quorvex::CheckImage(quorvex::OpenNrgImage(image.Path()));
  return 0;
}
