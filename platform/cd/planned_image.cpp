#include "platform/cd/planned_image.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <functional>
#include <iterator>
#include <optional>

#include "platform/cd/cue_sheet.h"
#include "platform/cd/nrg_trailer.h"
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

class PlannedImage final : public DiscImage {
 public:
  PlannedImage(DiscPlan layout, std::vector<std::unique_ptr<std::ifstream>> opened)
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

using Plan = std::variant<DiscPlan, DiscError>;

// Makes an image of what `planner` plans with the files in a folder.
OpenedImage OpenPlanned(const fs::path& folder, const std::function<Plan(const SourceOpener&)>& planner) {
  std::vector<std::unique_ptr<std::ifstream>> files;
  const SourceOpener open = [&](DiscSource& source, std::string& why) {
    const fs::path name = folder / PathFromUtf8(source.name);
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
  Plan plan = planner(open);
  if (DiscError* problem = std::get_if<DiscError>(&plan)) return std::move(*problem);
  return std::make_unique<PlannedImage>(std::get<DiscPlan>(std::move(plan)), std::move(files));
}

// A file's bytes from an offset to its end; fewer when it ends before.
std::string ReadFrom(const fs::path& path, std::int64_t offset) {
  std::ifstream file(path, std::ios::binary);
  file.seekg(offset);
  return {std::istreambuf_iterator<char>(file), {}};
}

using SheetPlanner = Plan (*)(std::string_view sheet, const SourceOpener& open);

OpenedImage OpenSheet(const fs::path& path, SheetPlanner planner) {
  std::error_code error;
  if (fs::file_size(path, error) > kLargestSheet || error)
    return DiscError{error ? "it cannot be read" : "it is no text file"};
  const std::string text = ReadFrom(path, 0);
  return OpenPlanned(path.parent_path(), [&](const SourceOpener& open) { return planner(text, open); });
}

}  // namespace

OpenedImage OpenCueImage(const fs::path& sheet) { return OpenSheet(sheet, PlanCueSheet); }
OpenedImage OpenTocImage(const fs::path& sheet) { return OpenSheet(sheet, PlanTocSheet); }

OpenedImage OpenNrgImage(const fs::path& path) {
  std::error_code error;
  const auto size = static_cast<std::int64_t>(fs::file_size(path, error));
  if (error) return DiscError{"it cannot be read"};
  const auto foot = std::int64_t{kNrgFootBytes};
  const std::optional<std::int64_t> begin =
      NrgTrailerOffset(ReadFrom(path, std::max<std::int64_t>(size - foot, 0)));
  if (!begin || *begin < 0 || *begin > size - foot || size - *begin > std::int64_t{kLargestSheet})
    return DiscError{"it is no Nero image"};
  const std::string trailer = ReadFrom(path, *begin);
  const std::u8string name = path.filename().u8string();
  return OpenPlanned(path.parent_path(), [&](const SourceOpener& open) {
    return PlanNrgTrailer(trailer, {name.begin(), name.end()}, open);
  });
}

}  // namespace quorvex
