// The fuzzer of discs (tools/fuzz): QUORVEX_FUZZ_DISC is the image that is damaged.
#include <cstdlib>

#include "tests/fuzz/disc_walk.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static quorvex::MutableDisc disc(std::getenv("QUORVEX_FUZZ_DISC"));
  quorvex::WalkDisc(disc, {bytes, size});
  return 0;
}
