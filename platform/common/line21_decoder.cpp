#include "platform/common/line21_decoder.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "platform/common/line21_characters.h"

namespace quorvex {
namespace {

constexpr int kLastRow = CaptionScreen::kRows - 1;

enum Command : std::uint8_t {
  kResumeLoading = 0x20,
  kBackspace = 0x21,
  kDeleteToEnd = 0x24,
  kRollUp2 = 0x25,
  kRollUp4 = 0x27,
  kFlashOn = 0x28,
  kResumeDirect = 0x29,
  kTextRestart = 0x2A,
  kResumeText = 0x2B,
  kEraseDisplayed = 0x2C,
  kCarriageReturn = 0x2D,
  kEraseNonDisplayed = 0x2E,
  kEndOfCaption = 0x2F
};

bool HasOddParity(std::uint8_t byte) { return std::popcount(byte) % 2 == 1; }

// Where a channel is found: in a field, as the first or second of its kind there.
struct Place {
  int field = 0;
  int number = 0;
};

Place PlaceOf(Line21Channel channel) {
  const int index = (static_cast<int>(channel) - static_cast<int>(Line21Channel::kCaption1)) % 4;
  return {.field = 1 + index / 2, .number = 1 + index % 2};
}

// The row (from 0) that a preamble names, by the first byte and bit 5 of the second.
std::optional<int> RowOf(std::uint8_t first, std::uint8_t second) {
  constexpr int kNone = -1;
  constexpr std::array<std::array<int, 2>, 8> kRowTable{
      {{10, kNone}, {0, 1}, {2, 3}, {11, 12}, {13, 14}, {4, 5}, {6, 7}, {8, 9}}};
  const int row = kRowTable[first & 7U][second >> 5 & 1U];
  return row == kNone ? std::nullopt : std::optional(row);
}

}  // namespace

void Line21Decoder::SetChannel(Line21Channel newChannel) {
  if (channel == newChannel) return;
  channel = newChannel;
  Clear();
}

void Line21Decoder::Clear() {
  const Line21Channel kept = channel;
  *this = {};
  channel = kept;
}

bool Line21Decoder::Feed(int field, std::uint8_t first, std::uint8_t second) {
  if (channel == Line21Channel::kNone || field != PlaceOf(channel).field) return false;
  const CaptionScreen before = Shown();
  TakePair(first, second);
  return Shown() != before;
}

void Line21Decoder::TakePair(std::uint8_t first, std::uint8_t second) {
  const bool firstIsGood = HasOddParity(first);
  const bool secondIsGood = HasOddParity(second);
  const Pair code{.first = static_cast<std::uint8_t>(first & 0x7F),
                  .second = static_cast<std::uint8_t>(second & 0x7F)};
  const std::optional<Pair> awaited = std::exchange(awaitedRepeat, std::nullopt);
  const bool isRepeat = awaited && (!firstIsGood || code.first == awaited->first) && secondIsGood &&
                        code.second == awaited->second;
  if (isRepeat) return;
  if (firstIsGood && code.first >= 0x10 && code.first < 0x20) {
    if (!secondIsGood || code.second < 0x20) return;
    awaitedRepeat = code;
    TakeControl(code);
  } else if (firstIsGood && code.first > 0 && code.first < 0x10) {
    addressed = false;  // data about the programme
  } else if (addressed) {
    const std::pair<std::uint8_t, bool> characters[]{{code.first, firstIsGood}, {code.second, secondIsGood}};
    for (const auto& [character, isGood] : characters) {
      if (character == 0) continue;  // nothing was to be sent; some discs have no parity in it
      if (!isGood || character >= 0x20) {
        writer.Put(Target(), isGood ? Line21Character(character) : kSolidBlock);
      }
    }
  }
}

// A code for the other channel of the field takes the characters away from ours; one of ours brings them
// back.
void Line21Decoder::TakeControl(Pair code) {
  const bool isOurs = ((code.first & 8) == 0) == (PlaceOf(channel).number == 1);
  const auto kind = static_cast<std::uint8_t>(code.first & 0x17);
  const bool isCommand = (kind == 0x14 || kind == 0x15) && code.second < 0x30;
  addressed = isOurs && style != Style::kNone && inText == IsTextChannel();
  if (!isOurs) return;
  if (isCommand) {
    TakeCommand(code.second);
  } else if (addressed && code.second >= 0x40) {
    TakePreamble({.first = kind, .second = code.second});
  } else if (addressed) {
    TakeCharacterCode({.first = kind, .second = code.second});
  }
}

void Line21Decoder::TakeCharacterCode(Pair code) {
  const bool isUnderlined = (code.second & 1) != 0;
  if (code.first == 0x11 && code.second < 0x30) {
    TakeMidRow(code.second);
  } else if (code.first == 0x11) {
    writer.Put(Target(), Line21SpecialCharacter(code.second));
  } else if (code.first == 0x12 || code.first == 0x13) {
    writer.Replace(Target(), Line21ExtendedCharacter(code.first - 0x12, code.second));
  } else if (code.first == 0x17 && code.second >= 0x21 && code.second <= 0x23) {
    writer.Tab(code.second - 0x20);
  } else if (code.first == 0x17 && code.second >= 0x2E && code.second <= 0x2F) {
    writer.SetPen(CaptionColor::kBlack, false, isUnderlined);
    writer.Replace(Target(), U' ');
  }
}

// A row with a colour, italics, or an indent in steps of four columns.
void Line21Decoder::TakePreamble(Pair code) {
  const std::optional<int> row = RowOf(code.first, code.second);
  if (!row) return;
  const int attribute = code.second >> 1 & 0xF;
  const bool isUnderlined = (code.second & 1) != 0;
  const int column = attribute < 8 ? 0 : (attribute - 8) * 4;
  const auto color = attribute < 7 ? static_cast<CaptionColor>(attribute) : CaptionColor::kWhite;
  if (style == Style::kRollUp) {
    MoveBase(*row);
    writer.Place(base, column);
  } else {
    writer.Place(style == Style::kText ? writer.Row() : *row, column);
  }
  writer.SetPen(color, attribute == 7, isUnderlined);
}

// Attributes within a row: a colour ends italics, italics keep the colour. They take a place.
void Line21Decoder::TakeMidRow(std::uint8_t code) {
  const int attribute = code >> 1 & 7;
  const bool isItalic = attribute == 7;
  writer.SetPen(isItalic ? writer.Color() : static_cast<CaptionColor>(attribute), isItalic, false);
  writer.Put(Target(), U' ');
  writer.SetPen(writer.Color(), isItalic, (code & 1) != 0);
}

void Line21Decoder::TakeCommand(std::uint8_t code) {
  if (TakeMode(code)) {
    addressed = style != Style::kNone && inText == IsTextChannel();
    return;
  }
  if (code == kEraseDisplayed && !IsTextChannel()) memories[shown] = {};
  if (code == kEraseNonDisplayed && !IsTextChannel()) memories[1 - shown] = {};
  if (addressed) TakeWriting(code);
}

// The commands that begin a style or return to it. False for every other one.
bool Line21Decoder::TakeMode(std::uint8_t code) {
  const bool isText = code == kTextRestart || code == kResumeText;
  const bool isRollUp = code >= kRollUp2 && code <= kRollUp4;
  if (!isText && !isRollUp && code != kResumeLoading && code != kResumeDirect && code != kEndOfCaption) {
    return false;
  }
  inText = isText;
  if (isText != IsTextChannel()) return true;
  if (isText) {
    if (code == kTextRestart || style != Style::kText) BeginText();
  } else if (isRollUp) {
    BeginRollUp(code - kRollUp2 + 2);
  } else {
    if (code == kEndOfCaption) shown = 1 - shown;
    style = code == kResumeDirect ? Style::kPaintOn : Style::kPopOn;
  }
  return true;
}

void Line21Decoder::TakeWriting(std::uint8_t code) {
  switch (code) {
    case kBackspace: writer.Backspace(Target()); break;
    case kDeleteToEnd: writer.EraseToEnd(Target()); break;
    case kFlashOn:  // flashing is not shown, but its code takes a place
      writer.Put(Target(), U' ');
      break;
    case kCarriageReturn: ReturnCarriage(); break;
    default: break;
  }
}

void Line21Decoder::BeginRollUp(int newDepth) {
  if (style != Style::kRollUp) {
    memories = {};
    base = kLastRow;
    writer.BeginRow(base);
  }
  style = Style::kRollUp;
  depth = newDepth;
  if (base < depth - 1) MoveBase(depth - 1);
}

void Line21Decoder::BeginText() {
  memories = {};
  style = Style::kText;
  writer.BeginRow(0);
}

// Takes the rows that roll up along to a new base row, as high up as they fit.
void Line21Decoder::MoveBase(int newBase) {
  newBase = std::max(newBase, depth - 1);
  if (newBase == base) return;
  const CaptionScreen before = std::exchange(memories[shown], {});
  for (int up = 0; up < depth && up <= base; ++up) {
    memories[shown].cells[static_cast<std::size_t>(newBase - up)] =
        before.cells[static_cast<std::size_t>(base - up)];
  }
  base = newBase;
  writer.Place(base, 0);
}

void Line21Decoder::ReturnCarriage() {
  CaptionScreen& screen = memories[shown];
  if (style == Style::kRollUp) {
    const int top = base - depth + 1;
    RollUp(screen, top, base);
    std::fill(screen.cells.begin(), screen.cells.begin() + top, CaptionScreen{}.cells[0]);
    writer.BeginRow(base);
  } else if (style == Style::kText) {
    if (writer.Row() == kLastRow) RollUp(screen, 0, kLastRow);
    writer.BeginRow(std::min(writer.Row() + 1, kLastRow));
  }
}

}  // namespace quorvex
