#include "platform/dvd/subpicture.h"

namespace quorvex {
namespace {

using Bytes = std::span<const std::uint8_t>;

// No video of a DVD is larger; a damaged area must not cost memory.
constexpr int kMostWidth = 720;
constexpr int kMostHeight = 576;

std::size_t Word(Bytes bytes, std::size_t at) {
  return static_cast<std::size_t>(bytes[at] << 8 | bytes[at + 1]);
}

// Four numbers of four bits, the first for pixel value 3.
std::array<std::uint8_t, 4> FourNumbers(std::size_t word) {
  std::array<std::uint8_t, 4> numbers{};
  for (std::size_t value = 0; value < 4; ++value) {
    numbers[value] = static_cast<std::uint8_t>(word >> (4 * value) & 0xF);
  }
  return numbers;
}

// Two numbers of twelve bits: the first column or row, and the last.
std::pair<int, int> Range(Bytes bytes) {
  return {bytes[0] << 4 | bytes[1] >> 4, (bytes[1] & 0xF) << 8 | bytes[2]};
}

// Collects what a unit's control sequences say.
class ControlReader {
 public:
  explicit ControlReader(Bytes unitBytes) : unit(unitBytes) {}

  // False when they are damaged or do not say enough.
  bool Read() {
    std::size_t at = Word(unit, 2);
    while (at >= 4 && at + 4 <= unit.size()) {
      ticks = static_cast<std::int64_t>(Word(unit, at)) * 1024;
      if (!ReadSequence(at + 4)) return false;
      const std::size_t next = Word(unit, at + 2);
      if (next == at) return shown && hasArea && hasData;
      if (next < at) return false;
      at = next;
    }
    return false;
  }

  Subpicture result;
  std::array<std::size_t, 2> fields{};  // where the run lengths of the even and of the odd lines begin

 private:
  // The commands of one sequence, all of which happen at `ticks`.
  bool ReadSequence(std::size_t at) {
    SubpictureColors colors = result.steps.empty() ? SubpictureColors{} : result.steps.back().colors;
    for (;;) {
      if (at >= unit.size()) return false;
      const std::uint8_t command = unit[at++];
      if (command == kEnd) break;
      const std::optional<std::size_t> size = ParameterSize(command, at);
      if (!size || *size > unit.size() - at) return false;
      Obey(command, unit.subspan(at, *size), colors);
      at += *size;
    }
    if (result.steps.empty() || result.steps.back().colors != colors) {
      result.steps.push_back({.from = ticks, .colors = colors});
    }
    return true;
  }

  [[nodiscard]] std::optional<std::size_t> ParameterSize(std::uint8_t command, std::size_t at) const {
    switch (command) {
      case kForcedShow:
      case kShow:
      case kHide: return 0;
      case kColor:
      case kContrast: return 2;
      case kArea: return 6;
      case kData: return 4;
      case kChangeWithinPicture:  // its size comes first and counts itself
        if (at + 2 > unit.size() || Word(unit, at) < 2) return std::nullopt;
        return Word(unit, at);
      default: return std::nullopt;
    }
  }

  void Obey(std::uint8_t command, Bytes parameters, SubpictureColors& colors) {
    switch (command) {
      case kForcedShow: result.forced = true; [[fallthrough]];
      case kShow:
        if (!shown) result.show = ticks;
        shown = true;
        break;
      case kHide:
        if (!result.hide) result.hide = ticks;
        break;
      case kColor: colors.color = FourNumbers(Word(parameters, 0)); break;
      case kContrast: colors.contrast = FourNumbers(Word(parameters, 0)); break;
      case kArea: TakeArea(parameters); break;
      case kData:
        fields = {Word(parameters, 0), Word(parameters, 2)};
        hasData = true;
        break;
      default:  // colours that change within the picture: shown without
        break;
    }
  }

  void TakeArea(Bytes parameters) {
    const auto [left, lastColumn] = Range(parameters);
    const auto [top, lastRow] = Range(parameters.subspan(3));
    result.area = {.left = left, .top = top, .right = lastColumn + 1, .bottom = lastRow + 1};
    hasArea = left <= lastColumn && top <= lastRow && lastColumn < kMostWidth && lastRow < kMostHeight;
  }

  enum Command : std::uint8_t {
    kForcedShow,
    kShow,
    kHide,
    kColor,
    kContrast,
    kArea,
    kData,
    kChangeWithinPicture,
    kEnd = 0xFF
  };

  Bytes unit;
  std::int64_t ticks = 0;
  bool shown = false;
  bool hasArea = false;
  bool hasData = false;
};

// Reads the lines of one field: runs of 4, 8, 12 or 16 bits, every line from a whole byte on.
class RunReader {
 public:
  RunReader(Bytes unitBytes, std::size_t start) : unit(unitBytes), at(2 * start) {}

  // False at the end of the unit.
  bool ReadLine(std::span<std::uint8_t> line) {
    while (!line.empty()) {
      const std::optional<unsigned> code = ReadCode();
      if (!code) return false;
      std::size_t length = *code >> 2;
      if (length == 0 || length > line.size()) length = line.size();
      for (std::uint8_t& pixel : line.first(length)) pixel = static_cast<std::uint8_t>(*code & 3);
      line = line.subspan(length);
    }
    at += at % 2;
    return true;
  }

 private:
  // The length of a run (0: to the end of the line) and, in the last two bits, its pixel value. A code
  // is as long as the zeros it begins with tell.
  std::optional<unsigned> ReadCode() {
    unsigned code = 0;
    for (unsigned least = 4; least <= 0x100; least *= 4) {
      if (at / 2 >= unit.size()) return std::nullopt;
      code = code << 4 | (unit[at / 2] >> (at % 2 == 0 ? 4 : 0) & 0xF);
      ++at;
      if (code >= least) break;
    }
    return code;
  }

  Bytes unit;
  std::size_t at;  // in half bytes
};

bool ReadPixels(Bytes unit, const std::array<std::size_t, 2>& fields, Subpicture& result) {
  const auto width = static_cast<std::size_t>(result.area.Width());
  const auto height = static_cast<std::size_t>(result.area.Height());
  result.pixels.resize(width * height);
  std::array<RunReader, 2> readers{RunReader(unit, fields[0]), RunReader(unit, fields[1])};
  for (std::size_t line = 0; line < height; ++line) {
    if (!readers[line % 2].ReadLine(std::span(result.pixels).subspan(line * width, width))) return false;
  }
  return true;
}

}  // namespace

const SubpictureColors& Subpicture::ColorsAt(std::int64_t ticks) const {
  std::size_t step = steps.size() - 1;
  while (step > 0 && steps[step].from > ticks) --step;
  return steps[step].colors;
}

std::optional<Subpicture> DecodeSubpicture(std::span<const std::uint8_t> unit) {
  if (unit.size() < 4 || Word(unit, 0) < 4 || Word(unit, 0) > unit.size()) return std::nullopt;
  unit = unit.first(Word(unit, 0));
  ControlReader control(unit);
  if (!control.Read() || !ReadPixels(unit, control.fields, control.result)) return std::nullopt;
  return std::move(control.result);
}

SubpictureColors HighlightColors(std::uint32_t paletteWord) {
  return {.color = FourNumbers(paletteWord >> 16), .contrast = FourNumbers(paletteWord & 0xFFFF)};
}

}  // namespace quorvex
