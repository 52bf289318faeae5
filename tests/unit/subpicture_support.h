// Makes subpicture units as discs have them.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

namespace quorvex {

using UnitBytes = std::vector<std::uint8_t>;

inline void Append(UnitBytes& bytes, std::initializer_list<std::size_t> more) {
  for (const std::size_t byte : more) bytes.push_back(static_cast<std::uint8_t>(byte));
}

inline void AppendWord(UnitBytes& bytes, std::size_t word) { Append(bytes, {word >> 8, word & 0xFF}); }

// One line of pixel values as run lengths.
inline void AppendRuns(UnitBytes& bytes, const std::uint8_t* line, std::size_t width) {
  std::vector<std::uint8_t> halves;
  for (std::size_t x = 0; x < width;) {
    std::size_t length = 1;
    while (x + length < width && length < 255 && line[x + length] == line[x]) ++length;
    const std::size_t code = length << 2 | line[x];
    for (int shift = code < 0x10 ? 0 : code < 0x40 ? 4 : code < 0x100 ? 8 : 12; shift >= 0; shift -= 4) {
      halves.push_back(static_cast<std::uint8_t>(code >> shift & 0xF));
    }
    x += length;
  }
  if (halves.size() % 2 != 0) halves.push_back(0);
  for (std::size_t i = 0; i < halves.size(); i += 2) Append(bytes, {halves[i] * 16U + halves[i + 1]});
}

struct UnitPlan {
  int left = 0, top = 0, width = 1, height = 1;
  std::vector<std::uint8_t> pixels{0};
  // Control sequences after the first: the time in steps of 1024 ticks, and the commands.
  std::vector<std::pair<std::size_t, UnitBytes>> later{};
  UnitBytes firstCommands{0x01, 0x03, 0x32, 0x10, 0x04, 0xFF, 0xF0};  // shown, in plain colours
};

inline UnitBytes MakeUnit(const UnitPlan& plan) {
  UnitBytes unit(4);
  std::size_t fields[2]{};
  const auto width = static_cast<std::size_t>(plan.width);
  for (std::size_t field = 0; field < 2; ++field) {
    fields[field] = unit.size();
    for (std::size_t y = field; y < static_cast<std::size_t>(plan.height); y += 2) {
      AppendRuns(unit, plan.pixels.data() + y * width, width);
    }
  }
  auto sequences = plan.later;
  sequences.insert(sequences.begin(), {0, plan.firstCommands});
  const int right = plan.left + plan.width - 1;
  const int bottom = plan.top + plan.height - 1;
  UnitBytes& first = sequences.front().second;
  const auto number = [](int value) { return static_cast<std::size_t>(value); };
  Append(first,
         {0x05, number(plan.left >> 4), number((plan.left & 15) << 4 | right >> 8), number(right & 255),
          number(plan.top >> 4), number((plan.top & 15) << 4 | bottom >> 8), number(bottom & 255), 0x06});
  AppendWord(first, fields[0]);
  AppendWord(first, fields[1]);
  const std::size_t controls = unit.size();
  for (std::size_t i = 0; i < sequences.size(); ++i) {
    const std::size_t here = unit.size();
    AppendWord(unit, sequences[i].first);
    const bool last = i + 1 == sequences.size();
    AppendWord(unit, last ? here : here + 4 + sequences[i].second.size() + 1);
    unit.insert(unit.end(), sequences[i].second.begin(), sequences[i].second.end());
    Append(unit, {0xFF});
  }
  unit[0] = static_cast<std::uint8_t>(unit.size() >> 8);
  unit[1] = static_cast<std::uint8_t>(unit.size());
  unit[2] = static_cast<std::uint8_t>(controls >> 8);
  unit[3] = static_cast<std::uint8_t>(controls);
  return unit;
}

}  // namespace quorvex
