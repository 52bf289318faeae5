// Line 21 written down as text, and screens of captions as text, for tests.
//
// A script is characters and codes in braces: {RCL} {EDM} {ENM} {EOC} {RU2} {RU3} {RU4} {RDC} {TR} {RTD} {CR}
// {BS} {DER} {FON} {TO1} to {TO3}; {15:8} and {15:8u} (to row 15 from 1, column 8 from 0, underlined), {15
// green} (to row 15, a colour or italic); {green} {italic} (within a row, underlined with "u" behind: {green
// u}); {0x1137} any pair. Control codes are sent twice; {!CR} is sent once; "{~}" is a pair of nothing.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/common/line21_decoder.h"

namespace quorvex {

using Line21Pair = std::pair<std::uint8_t, std::uint8_t>;

inline std::uint8_t WithParity(int code) {
  const auto byte = static_cast<std::uint8_t>(code & 0x7F);
  return static_cast<std::uint8_t>(std::popcount(byte) % 2 == 1 ? byte : byte | 0x80);
}

class Line21Script {
 public:
  // `number`: the first or second channel of the field.
  explicit Line21Script(std::string_view script, int number = 1) : channelBit(number == 2 ? 8 : 0) {
    for (std::size_t at = 0; at < script.size(); ++at) {
      if (script[at] != '{') {
        TakeCharacter(script[at]);
        continue;
      }
      const std::size_t end = script.find('}', at);
      TakeCode(std::string(script.substr(at + 1, end - at - 1)));
      at = end;
    }
    EndCharacters();
  }

  std::vector<Line21Pair> pairs;

 private:
  void TakeCharacter(char character) {
    if (waiting == 0) {
      waiting = character;
      return;
    }
    Add(waiting, character);
    waiting = 0;
  }

  void EndCharacters() {
    if (waiting != 0) Add(waiting, 0);
    waiting = 0;
  }

  void Add(int first, int second) { pairs.emplace_back(WithParity(first), WithParity(second)); }

  void TakeCode(std::string code) {
    EndCharacters();
    if (code == "~") return Add(0, 0);
    const bool once = code[0] == '!';
    if (once) code.erase(0, 1);
    const auto [first, second] = PairOf(code);
    for (int times = once ? 1 : 2; times > 0; --times) Add(first | channelBit, second);
  }

  static int Style(const std::string& name) {
    constexpr std::array<std::string_view, 8> kStyles{"white", "green",  "blue",    "cyan",
                                                      "red",   "yellow", "magenta", "italic"};
    for (std::size_t i = 0; i < kStyles.size(); ++i) {
      if (name.starts_with(kStyles[i])) return static_cast<int>(i);
    }
    ADD_FAILURE() << "no style: " << name;
    return 0;
  }

  static std::pair<int, int> PairOf(const std::string& code) {
    static const std::map<std::string, int> kCommands{
        {"RCL", 0x20}, {"BS", 0x21},  {"DER", 0x24}, {"RU2", 0x25}, {"RU3", 0x26},
        {"RU4", 0x27}, {"FON", 0x28}, {"RDC", 0x29}, {"TR", 0x2A},  {"RTD", 0x2B},
        {"EDM", 0x2C}, {"CR", 0x2D},  {"ENM", 0x2E}, {"EOC", 0x2F}};
    if (const auto found = kCommands.find(code); found != kCommands.end()) return {0x14, found->second};
    if (code.starts_with("TO")) return {0x17, 0x20 + code[2] - '0'};
    if (code.starts_with("0x")) {
      const int number = std::stoi(code, nullptr, 16);
      return {number >> 8, number & 0xFF};
    }
    const int underlined = code.ends_with('u') ? 1 : 0;
    std::size_t digits = 0;
    if (std::isdigit(static_cast<unsigned char>(code[0])) == 0)
      return {0x11, 0x20 | Style(code) << 1 | underlined};
    const int row = std::stoi(code, &digits);
    constexpr std::array<std::pair<int, int>, 16> kRows{{{},
                                                         {0x11, 0x40},
                                                         {0x11, 0x60},
                                                         {0x12, 0x40},
                                                         {0x12, 0x60},
                                                         {0x15, 0x40},
                                                         {0x15, 0x60},
                                                         {0x16, 0x40},
                                                         {0x16, 0x60},
                                                         {0x17, 0x40},
                                                         {0x17, 0x60},
                                                         {0x10, 0x40},
                                                         {0x13, 0x40},
                                                         {0x13, 0x60},
                                                         {0x14, 0x40},
                                                         {0x14, 0x60}}};
    const auto& [first, second] = kRows[static_cast<std::size_t>(row)];
    if (code[digits] == ':')
      return {first, second | 0x10 | std::stoi(code.substr(digits + 1)) / 4 << 1 | underlined};
    return {first, second | Style(code.substr(digits + 1)) << 1 | underlined};
  }

  int channelBit;
  int waiting = 0;
};

inline void AppendUtf8(std::string& text, char32_t character) {
  if (character < 0x80) {
    text += static_cast<char>(character);
  } else if (character < 0x800) {
    text += {static_cast<char>(0xC0 | character >> 6), static_cast<char>(0x80 | (character & 0x3F))};
  } else {
    text += {static_cast<char>(0xE0 | character >> 12), static_cast<char>(0x80 | (character >> 6 & 0x3F)),
             static_cast<char>(0x80 | (character & 0x3F))};
  }
}

// Every row that has something: "15:8 TEXT" (row from 1, column from 0), rows parted by "|". Nothing between
// characters is "_".
inline std::string ScreenText(const CaptionScreen& screen) {
  std::string text;
  for (std::size_t row = 0; row < screen.cells.size(); ++row) {
    std::string characters;
    std::size_t empty = 0;
    for (std::size_t column = 0; column < screen.cells[row].size(); ++column) {
      const char32_t character = screen.cells[row][column].character;
      if (character == 0) {
        ++empty;
        continue;
      }
      if (characters.empty()) {
        characters = std::to_string(row + 1) + ':' + std::to_string(column) + ' ';
      } else {
        characters.append(empty, '_');
      }
      empty = 0;
      AppendUtf8(characters, character);
    }
    if (!characters.empty()) text += (text.empty() ? "" : "|") + characters;
  }
  return text;
}

}  // namespace quorvex
