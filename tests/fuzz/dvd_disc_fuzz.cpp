// The fuzzer of discs (tools/fuzz): QUORVEX_FUZZ_DISC is the image that is damaged.
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "tests/fuzz/disc_walk.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  // In memory: it is written for every input. Several processes work at once.
  static quorvex::MutableDisc disc(std::getenv("QUORVEX_FUZZ_DISC"),
                                   "/dev/shm/quorvex_fuzz_" + std::to_string(::getpid()) + ".iso");
  quorvex::WalkDisc(disc, {bytes, size});
  return 0;
}
