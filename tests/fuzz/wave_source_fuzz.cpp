// WAV files that a CUE sheet names.
#include "platform/cd/planned_image.h"
#include "tests/fuzz/image_check.h"
#include "tests/fuzz/unnamed_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static const quorvex::UnnamedFile wave;
  static const quorvex::UnnamedFile sheet;
  wave.Fill(0, quorvex::TextOf(bytes, size));
  sheet.Fill(0, "FILE " + wave.Name() + " WAVE\nTRACK 01 AUDIO\nINDEX 01 00:00:00\n");
  quorvex::CheckImage(quorvex::OpenCueImage(sheet.Path()));
  return 0;
}
