// Sectors of a DVD's films.
#include "platform/dvd/pack_demuxer.h"
#include "tests/fuzz/fuzz_target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::span<const std::uint8_t> sector(bytes, size);
  const std::uint8_t* begin = bytes;
  for (const quorvex::PackPiece& piece : quorvex::SplitPack(sector)) {
    const std::uint8_t* first = piece.bytes.data();
    quorvex::Require(first >= begin && first + piece.bytes.size() <= bytes + size,
                     "pieces lie in the sector, one behind the other");
    quorvex::Require(piece.number >= 0 && piece.number < 32, "a stream has a number");
    begin = first + piece.bytes.size();
  }
  return 0;
}
