// The tables of a disc that an application is told of: its titles, and how the streams of each title set are
// coded. Read from the bytes of VIDEO_TS.IFO.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace quorvex {

// The attributes of the streams of a title set (or of the whole disc's menus), as they lie on the disc.
struct StreamAttributes {
  static constexpr std::size_t kBytes = 768;

  std::uint32_t category = 0;
  std::array<std::uint8_t, kBytes> bytes{};

  // The streams of the menus, or those of the titles.
  enum class Part { kMenu, kTitle };

  using Video = std::array<std::uint8_t, 2>;
  using Audio = std::array<std::uint8_t, 8>;
  using Subpicture = std::array<std::uint8_t, 6>;

  [[nodiscard]] Video VideoOf(Part part) const;
  [[nodiscard]] int AudioCount(Part part) const;       // 0 to 8
  [[nodiscard]] int SubpictureCount(Part part) const;  // 0 to 32
  [[nodiscard]] Audio AudioOf(Part part, int stream) const;
  [[nodiscard]] Subpicture SubpictureOf(Part part, int stream) const;

  [[nodiscard]] bool IsPal(Part part) const { return (VideoOf(part)[0] >> 4 & 3) == 1; }
  [[nodiscard]] bool IsWide(Part part) const { return (VideoOf(part)[0] >> 2 & 3) == 3; }
};

// The two letters of a stream's language; empty when the disc does not say.
std::string LanguageOf(const StreamAttributes::Audio& audio);
std::string LanguageOf(const StreamAttributes::Subpicture& subpicture);

class DiscTables {
 public:
  struct Title {
    int angles = 1;
    int chapters = 1;
    std::uint16_t parentalLevels = 0;
    int titleSet = 1;
  };

  // None when these are not the bytes of such a file. Whatever is damaged or missing in it is left empty.
  static std::optional<DiscTables> Read(std::span<const std::uint8_t> file);

  int volumes = 1;
  int volume = 1;
  int side = 1;
  std::vector<Title> titles;
  StreamAttributes manager;                 // the disc's own menus
  std::vector<StreamAttributes> titleSets;  // the first belongs to title set 1
  std::vector<std::uint8_t> texts;          // the text data manager as it lies on the disc

  // The attributes of a title set; the manager's for 0 or one that the disc has not.
  [[nodiscard]] const StreamAttributes& Of(int titleSet) const;
};

}  // namespace quorvex
