#include "platform/cd/sheet_image.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>

#include "platform/cd/cue_sheet.h"
#include "platform/cd/toc_sheet.h"
#include "platform/cd/utf8_path.h"

namespace quorvex {
namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t kLargestSheet = 1 << 20;

std::uint32_t LittleEndian(const char* bytes, int count) {
  std::uint32_t number = 0;
  for (int i = count - 1; i >= 0; --i) number = number << 8 | static_cast<unsigned char>(bytes[i]);
  return number;
}

// Finds the samples of a WAV file; false unless it holds CD sound.
bool FindWaveData(std::ifstream& file, DiscSource& source) {
  std::array<char, 12> head{};
  if (!file.read(head.data(), 12) || std::memcmp(head.data(), "RIFF", 4) != 0 ||
      std::memcmp(&head[8], "WAVE", 4) != 0)
    return false;
  bool isCdSound = false;
  std::array<char, 8> chunk{};
  while (file.read(chunk.data(), 8)) {
    const std::uint32_t size = LittleEndian(&chunk[4], 4);
    const std::int64_t begin = file.tellg();
    if (std::memcmp(chunk.data(), "fmt ", 4) == 0) {
      std::array<char, 16> format{};
      file.read(format.data(), 16);
      const std::uint32_t tag = LittleEndian(format.data(), 2);
      isCdSound = (tag == 1 || tag == 0xFFFE) && LittleEndian(&format[2], 2) == 2 &&
                  LittleEndian(&format[4], 4) == 44100 && LittleEndian(&format[14], 2) == 16;
    }
    if (std::memcmp(chunk.data(), "data", 4) == 0) {
      source.dataOffset = begin;
      // A file that was cut short, or whose size was never filled in, ends where it ends.
      source.dataBytes = std::min<std::int64_t>(size, source.dataBytes - begin);
      return isCdSound;
    }
    file.seekg(begin + size + size % 2);
  }
  return false;
}

class SheetImage final : public DiscImage {
 public:
  SheetImage(DiscPlan layout, std::vector<std::unique_ptr<std::ifstream>> opened)
      : plan(std::move(layout)), files(std::move(opened)) {}

  [[nodiscard]] const std::vector<DiscTrack>& Tracks() const override { return plan.tracks; }
  [[nodiscard]] int LeadOut() const override { return plan.leadOut; }

  bool ReadSound(int frame, std::span<std::byte> sound) override {
    for (; !sound.empty(); sound = sound.subspan(kAudioSectorBytes), ++frame) {
      if (!ReadSector(frame, sound.first<kAudioSectorBytes>())) return false;
    }
    return true;
  }

 private:
  [[nodiscard]] const DiscExtent* ExtentAt(int frame) const {
    const auto after =
        std::upper_bound(plan.extents.begin(), plan.extents.end(), frame,
                         [](int value, const DiscExtent& extent) { return value < extent.start; });
    if (after == plan.extents.begin()) return nullptr;
    const DiscExtent& extent = *std::prev(after);
    return frame < extent.start + extent.length ? &extent : nullptr;
  }

  // The last sector of a file may be incomplete: the rest of it is silent.
  bool ReadSector(int frame, std::span<std::byte, kAudioSectorBytes> sector) {
    const DiscExtent* extent = ExtentAt(frame);
    if (extent == nullptr) return false;
    std::fill(sector.begin(), sector.end(), std::byte{0});
    if (extent->source == DiscExtent::kSilence) return true;
    const DiscSource& source = plan.sources[static_cast<std::size_t>(extent->source)];
    std::ifstream& file = *files[static_cast<std::size_t>(extent->source)];
    const std::int64_t offset = extent->offset + std::int64_t{frame - extent->start} * extent->sectorBytes;
    const std::int64_t bytes = std::min<std::int64_t>(kAudioSectorBytes, source.dataBytes - offset);
    file.clear();
    file.seekg(source.dataOffset + offset);
    if (!file.read(reinterpret_cast<char*>(sector.data()), bytes)) return false;
    if (source.format == DiscSource::Format::kSwappedRaw) SwapSamples(sector);
    return true;
  }

  static void SwapSamples(std::span<std::byte> sound) {
    for (std::size_t i = 0; i + 1 < sound.size(); i += 2) std::swap(sound[i], sound[i + 1]);
  }

  DiscPlan plan;
  std::vector<std::unique_ptr<std::ifstream>> files;
};

using Planner = std::variant<DiscPlan, DiscError> (*)(std::string_view sheet, const SourceOpener& open);

OpenedImage OpenSheet(const fs::path& path, Planner planner) {
  std::error_code error;
  if (fs::file_size(path, error) > kLargestSheet || error)
    return DiscError{error ? "it cannot be read" : "it is no text file"};
  std::ifstream sheet(path, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(sheet), {}};
  std::vector<std::unique_ptr<std::ifstream>> files;
  const SourceOpener open = [&](DiscSource& source, std::string& why) {
    const fs::path name = path.parent_path() / PathFromUtf8(source.name);
    auto file = std::make_unique<std::ifstream>(name, std::ios::binary);
    std::error_code sizeError;
    source.dataBytes = static_cast<std::int64_t>(fs::file_size(name, sizeError));
    if (!*file || sizeError) {
      why = "the file " + source.name + " cannot be read";
    } else if (source.format == DiscSource::Format::kWave && !FindWaveData(*file, source)) {
      why = "the file " + source.name + " is no WAV file of CD sound (16 bit, stereo, 44100 Hz)";
    }
    files.push_back(std::move(file));
    return why.empty();
  };
  std::variant<DiscPlan, DiscError> plan = planner(text, open);
  if (DiscError* problem = std::get_if<DiscError>(&plan)) return std::move(*problem);
  return std::make_unique<SheetImage>(std::get<DiscPlan>(std::move(plan)), std::move(files));
}

}  // namespace

OpenedImage OpenCueImage(const fs::path& sheet) { return OpenSheet(sheet, PlanCueSheet); }
OpenedImage OpenTocImage(const fs::path& sheet) { return OpenSheet(sheet, PlanTocSheet); }

}  // namespace quorvex
