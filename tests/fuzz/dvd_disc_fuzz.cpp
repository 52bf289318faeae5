// DVD-Video discs: the bytes are orders to damage one and to play it (disc_walk.h). QUORVEX_FUZZ_DISC is the
// image that is damaged.
#include <cstdlib>
#include <filesystem>

#include "tests/fuzz/disc_walk.h"
#include "tests/fuzz/fuzz_target.h"
#include "tests/fuzz/library_leaks.h"

namespace {

std::ptrdiff_t OpenFiles() {
  const std::filesystem::directory_iterator all("/proc/self/fd");
  return std::distance(begin(all), end(all));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static quorvex::MutableDisc disc(std::getenv("QUORVEX_FUZZ_DISC"));
  const std::ptrdiff_t before = OpenFiles();
  quorvex::WalkDisc(disc, {bytes, size});
  quorvex::Require(OpenFiles() == before, "what an assertion ends lets go of its files");
  return 0;
}
