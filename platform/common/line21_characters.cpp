#include "platform/common/line21_characters.h"

#include <array>
#include <string_view>

namespace quorvex {
namespace {

constexpr std::u32string_view kSpecial{U"®°½¿™¢£♪à\0èâêîôû", 16};
constexpr std::array<std::u32string_view, 2> kExtended{U"ÁÉÓÚÜü‘¡*’—©℠•“”ÀÂÇÈÊËëÎÏïÔÙùÛ«»",
                                                       U"ÃãÍÌìÒòÕõ{}\\^_|~ÄäÖöß¥¤¦ÅåØø┌┐└┘"};
static_assert(kExtended[0].size() == 32 && kExtended[1].size() == 32);

}  // namespace

char32_t Line21Character(std::uint8_t code) {
  switch (code) {
    case 0x27: return U'’';
    case 0x2A: return U'á';
    case 0x5C: return U'é';
    case 0x5E: return U'í';
    case 0x5F: return U'ó';
    case 0x60: return U'ú';
    case 0x7B: return U'ç';
    case 0x7C: return U'÷';
    case 0x7D: return U'Ñ';
    case 0x7E: return U'ñ';
    case 0x7F: return kSolidBlock;
    default: return code;
  }
}

char32_t Line21SpecialCharacter(std::uint8_t code) { return kSpecial[code & 0xFU]; }

char32_t Line21ExtendedCharacter(int set, std::uint8_t code) {
  return kExtended[static_cast<std::size_t>(set)][code & 0x1FU];
}

}  // namespace quorvex
