// A disc that was found and is a DVD-Video disc: its virtual machine and its tables.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>

#include "platform/dvd/disc_tables.h"
#include "platform/dvd/navigator.h"

namespace quorvex {

struct OpenedDisc {
  std::filesystem::path path;  // the image, or the folder
  std::unique_ptr<Navigator> navigator;
  DiscTables tables;
  std::function<bool()> isThere;  // whether it is still in its drive
};

enum class DiscFault {
  kNone,
  kNoDisc,     // there is no volume, or it is no DVD-Video disc
  kDamaged,    // it is one, but its tables cannot be used
  kScrambled,  // its films cannot be decoded
};

// Opens the disc at a path: an image, or a folder with VIDEO_TS.
DiscFault OpenDisc(const std::filesystem::path& path, OpenedDisc& disc);

}  // namespace quorvex
