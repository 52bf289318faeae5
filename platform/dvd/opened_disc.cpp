#include "platform/dvd/opened_disc.h"

#include <string>

#include "platform/cd/video_disc.h"

namespace quorvex {

namespace fs = std::filesystem;

DiscFault OpenDisc(const fs::path& path, OpenedDisc& disc) {
  disc.path = path;
  if (!HoldsVideoDisc(path)) return DiscFault::kNoDisc;
  std::error_code error;
  const fs::path opened = fs::is_directory(path, error) ? VideoFolder(path) : path;
  const std::u8string name = opened.u8string();
  disc.navigator = std::make_unique<Navigator>(std::string(name.begin(), name.end()));
  if (!disc.navigator->Open()) return DiscFault::kDamaged;
  std::optional<DiscTables> tables = DiscTables::Read(disc.navigator->ReadManagerTables());
  if (!tables || tables->titles.empty()) return DiscFault::kDamaged;
  disc.tables = std::move(*tables);
  if (disc.navigator->IsScrambled(static_cast<int>(disc.tables.titleSets.size())))
    return DiscFault::kScrambled;
  disc.isThere = [] { return true; };
  return disc.navigator->ComesToPlay() && disc.navigator->Open() ? DiscFault::kNone : DiscFault::kDamaged;
}

}  // namespace quorvex
