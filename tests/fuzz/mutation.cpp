#include "tests/fuzz/mutation.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace quorvex {
namespace {

using std::size_t;

constexpr size_t kMostChanges = 5;
constexpr size_t kLongestPiece = 64;

class Mutation {
 public:
  Mutation(const std::vector<Input>& itsSeeds, std::mt19937& itsRandom)
      : seeds(itsSeeds), random(itsRandom), bytes(seeds[random() % seeds.size()]) {}

  Input Make() {
    for (size_t left = 1 + random() % kMostChanges; left > 0; --left) ChangeOnce();
    return std::move(bytes);
  }

 private:
  // A place in the input, or behind it.
  size_t Place() { return random() % (bytes.size() + 1); }
  auto At(size_t place) { return bytes.begin() + static_cast<std::ptrdiff_t>(place); }
  // The end of a part that begins there.
  size_t EndOf(size_t begin) { return std::min(begin + 1 + random() % kLongestPiece, bytes.size()); }

  void ChangeOnce() {
    switch (random() % 8) {
      case 0: Put(static_cast<std::uint8_t>(random())); break;
      case 1: Put(Extreme()); break;
      case 2: Flip(); break;
      case 3: Remove(); break;
      case 4: Insert(Place(), Piece()); break;
      case 5: Overwrite(Piece()); break;
      case 6: ReplaceNumber(); break;
      default:
        if (random() % 4 == 0) bytes.resize(Place());
        break;
    }
  }

  std::uint8_t Extreme() {
    constexpr std::array<std::uint8_t, 12> kExtremes{0,    1,   0x7F, 0x80, 0xFF, '\n',
                                                     '\r', ' ', '"',  '=',  '-',  '9'};
    return kExtremes[random() % kExtremes.size()];
  }

  void Put(std::uint8_t byte) {
    const size_t place = Place();
    if (place == bytes.size()) {
      bytes.push_back(byte);
    } else {
      bytes[place] = byte;
    }
  }

  void Flip() {
    const size_t place = Place();
    if (place < bytes.size()) bytes[place] = static_cast<std::uint8_t>(bytes[place] ^ 1U << random() % 8);
  }

  void Remove() {
    const size_t begin = Place();
    bytes.erase(At(begin), At(EndOf(begin)));
  }

  // A part of any seed.
  Input Piece() {
    const Input& seed = seeds[random() % seeds.size()];
    const size_t begin = random() % (seed.size() + 1);
    const size_t length = std::min(1 + random() % kLongestPiece, seed.size() - begin);
    const auto first = seed.begin() + static_cast<std::ptrdiff_t>(begin);
    return {first, first + static_cast<std::ptrdiff_t>(length)};
  }

  void Insert(size_t place, const Input& piece) { bytes.insert(At(place), piece.begin(), piece.end()); }

  void Overwrite(const Input& piece) {
    const size_t place = Place();
    bytes.resize(std::max(bytes.size(), place + piece.size()));
    std::copy(piece.begin(), piece.end(), At(place));
  }

  // The number in decimal that stands behind a place, or what stands there, becomes one at some limit.
  void ReplaceNumber() {
    constexpr std::array<std::string_view, 8> kNumbers{"0",
                                                       "-1",
                                                       "1000",
                                                       "2147483647",
                                                       "2147483648",
                                                       "4294967295",
                                                       "9223372036854775807",
                                                       "99999999999999999999"};
    constexpr auto kIsDigit = [](std::uint8_t byte) { return byte >= '0' && byte <= '9'; };
    const auto begin = std::find_if(At(Place()), bytes.end(), kIsDigit);
    const auto end = std::find_if_not(begin, bytes.end(), kIsDigit);
    const std::string_view number = kNumbers[random() % kNumbers.size()];
    const auto place = static_cast<size_t>(begin - bytes.begin());
    bytes.erase(begin, end);
    Insert(place, {number.begin(), number.end()});
  }

  const std::vector<Input>& seeds;
  std::mt19937& random;
  Input bytes;
};

}  // namespace

Input Mutated(const std::vector<Input>& seeds, std::mt19937& random) {
  return Mutation(seeds, random).Make();
}

}  // namespace quorvex
