#include "platform/tv/programme_captions.h"

#include <array>
#include <bit>

namespace quorvex {
namespace {

constexpr int kPicturesPerLine = 90;
// A new station's first line comes soon.
constexpr int kPicturesBeforeFirst = 15;
constexpr std::size_t kLongestLine = 32;

// Commands of the first channel's captions (the first byte), and where a line begins.
constexpr int kCommand = 0x14;
constexpr int kRollUpTwoRows = 0x25;
constexpr int kErase = 0x2C;
constexpr int kReturnCarriage = 0x2D;
constexpr int kBottomRow = 0x70;  // row 15 at its left end

std::uint8_t WithParity(int code) {
  const auto byte = static_cast<std::uint8_t>(code & 0x7F);
  return static_cast<std::uint8_t>(std::popcount(byte) % 2 == 1 ? byte : byte | 0x80);
}

}  // namespace

std::string CaptionLine(const Scene& scene, int line) {
  if (line % 2 == 1) return "THIS IS CAPTION " + std::to_string(line / 2 + 1);
  const std::string text = "CHANNEL " + std::to_string(scene.channel) + " " + scene.name;
  return text.substr(0, kLongestLine);
}

CaptionPair ProgrammeCaptions::Next(const Scene& received) {
  if (scene != received) {
    scene = received;
    waiting.clear();
    AddCode(kCommand, kErase);
    rest = kPicturesBeforeFirst;
    line = 0;
  }
  const bool hasCaptions = scene.input == 0 && scene.signal;
  if (hasCaptions && --rest <= 0) BeginLine();
  if (waiting.empty()) return {};
  const CaptionPair pair = waiting.front();
  waiting.pop_front();
  return pair;
}

void ProgrammeCaptions::BeginLine() {
  rest = kPicturesPerLine;
  AddCode(kCommand, kRollUpTwoRows);
  AddCode(kCommand, kReturnCarriage);
  AddCode(kCommand, kBottomRow);
  AddText(CaptionLine(scene, line++));
}

// Control codes are sent twice.
void ProgrammeCaptions::AddCode(int first, int second) {
  waiting.insert(waiting.end(), 2, {WithParity(first), WithParity(second)});
}

void ProgrammeCaptions::AddText(std::string_view text) {
  for (std::size_t at = 0; at < text.size(); at += 2) {
    const int second = at + 1 < text.size() ? text[at + 1] : 0;
    waiting.push_back({WithParity(text[at]), WithParity(second)});
  }
}

}  // namespace quorvex
