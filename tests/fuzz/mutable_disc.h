// A disc image that can be damaged and is whole again afterwards: a copy of a sound one, in memory.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace quorvex {

class MutableDisc {
 public:
  static constexpr std::size_t kSector = 2048;

  // A part of the image: the sectors of one file of the disc, or what tells where its files are.
  struct Region {
    std::string name;
    std::size_t first = 0;  // sectors
    std::size_t count = 0;
    std::vector<std::size_t> units;  // where the video units of a film begin
  };

  // `image`: a sound one, left as it is. Throws std::runtime_error when there is no such image.
  explicit MutableDisc(const std::filesystem::path& image);
  MutableDisc(const MutableDisc&) = delete;
  MutableDisc& operator=(const MutableDisc&) = delete;
  ~MutableDisc();

  [[nodiscard]] const std::filesystem::path& Path() const { return path; }
  [[nodiscard]] const std::vector<Region>& Regions() const { return regions; }
  [[nodiscard]] const Region& RegionOf(const std::string& file) const;

  // Writes over the image, as far as there is one.
  void Write(std::size_t sector, std::size_t offset, std::span<const std::uint8_t> bytes);
  [[nodiscard]] std::span<const std::uint8_t> Sector(std::size_t sector) const;
  // The image ends before this sector.
  void Cut(std::size_t sector);
  // This sector cannot be read.
  void Spoil(std::size_t sector);

  void Restore();

 private:
  void FindRegions();

  const std::vector<std::uint8_t> sound;
  const int file;
  const std::filesystem::path path;
  std::vector<Region> regions;
  std::set<std::size_t> touched;
  bool cut = false;
};

}  // namespace quorvex
