#include "tests/fuzz/mutable_disc.h"

#include <dvdread/dvd_reader.h>
#include <dvdread/dvd_udf.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>

namespace quorvex {
namespace {

// The sectors of the image that cannot be read; one disc at a time is read.
std::set<std::size_t>& SpoiltSectors() {
  static std::set<std::size_t> sectors;
  return sectors;
}

std::vector<std::uint8_t> ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot be read: " + path.string());
  return {std::istreambuf_iterator<char>(file), {}};
}

bool BeginsUnit(std::span<const std::uint8_t> sector) {
  constexpr std::size_t kFirstNavigation = 0x26;
  return sector[kFirstNavigation] == 0 && sector[kFirstNavigation + 1] == 0 &&
         sector[kFirstNavigation + 2] == 1 && sector[kFirstNavigation + 3] == 0xBF;
}

}  // namespace

// A file without a name, which is found by its number as long as it is open.
MutableDisc::MutableDisc(const std::filesystem::path& image)
    : sound(ReadFile(image)),
      file(::memfd_create("disc", MFD_CLOEXEC)),
      path("/proc/self/fd/" + std::to_string(file)) {
  Write(0, 0, sound);
  FindRegions();
}

MutableDisc::~MutableDisc() { ::close(file); }

void MutableDisc::FindRegions() {
  constexpr const char* kFiles[] = {"VIDEO_TS.IFO", "VTS_01_0.IFO", "VTS_02_0.IFO", "VIDEO_TS.BUP",
                                    "VTS_01_0.BUP", "VTS_02_0.BUP", "VIDEO_TS.VOB", "VTS_01_0.VOB",
                                    "VTS_01_1.VOB", "VTS_02_1.VOB"};
  const std::unique_ptr<dvd_reader_t, decltype(&DVDClose)> disc(DVDOpen(path.c_str()), &DVDClose);
  if (!disc) throw std::runtime_error("no disc: " + path.string());
  std::size_t files = sound.size() / kSector;
  for (const char* name : kFiles) {
    std::uint32_t size = 0;
    const std::size_t first = UDFFindFile(disc.get(), (std::string("/VIDEO_TS/") + name).c_str(), &size);
    if (first == 0) throw std::runtime_error(std::string("not on the disc: ") + name);
    files = std::min(files, first);
    Region region{name, first, (size + kSector - 1) / kSector, {}};
    for (std::size_t i = 0; i < region.count; ++i)
      if (BeginsUnit(Sector(first + i))) region.units.push_back(first + i);
    regions.push_back(std::move(region));
  }
  regions.push_back({"directories", 0, files, {}});
}

const MutableDisc::Region& MutableDisc::RegionOf(const std::string& name) const {
  return *std::find_if(regions.begin(), regions.end(), [&](const Region& one) { return one.name == name; });
}

std::span<const std::uint8_t> MutableDisc::Sector(std::size_t sector) const {
  return std::span(sound).subspan(sector * kSector, kSector);
}

void MutableDisc::Write(std::size_t sector, std::size_t offset, std::span<const std::uint8_t> bytes) {
  const std::size_t at = sector * kSector + offset;
  if (at >= sound.size() || bytes.empty()) return;
  const std::size_t length = std::min(bytes.size(), sound.size() - at);
  if (::pwrite(file, bytes.data(), length, static_cast<off_t>(at)) != static_cast<ssize_t>(length))
    throw std::runtime_error("cannot be written: " + path.string());
  for (std::size_t i = sector; i <= (at + length - 1) / kSector; ++i) touched.insert(i);
}

void MutableDisc::Cut(std::size_t sector) {
  if (::ftruncate(file, static_cast<off_t>(std::min(sector * kSector, sound.size()))) != 0)
    throw std::runtime_error("cannot be cut: " + path.string());
  cut = true;
}

void MutableDisc::Spoil(std::size_t sector) { SpoiltSectors().insert(sector); }

void MutableDisc::Restore() {
  SpoiltSectors().clear();
  if (cut) {
    Write(0, 0, sound);
    cut = false;
  } else {
    for (const std::size_t sector : std::set<std::size_t>(touched)) Write(sector, 0, Sector(sector));
  }
  touched.clear();
}

}  // namespace quorvex

// What libdvdread reads files with here.
extern "C" ssize_t quorvex_disc_read(int file, void* buffer,
                                     size_t size) {  // NOLINT(readability-identifier-naming)
  const auto at = static_cast<std::size_t>(::lseek(file, 0, SEEK_CUR));
  const auto& spoilt = quorvex::SpoiltSectors();
  const auto first = spoilt.lower_bound(at / quorvex::MutableDisc::kSector);
  if (first != spoilt.end() && *first * quorvex::MutableDisc::kSector < at + size) {
    errno = EIO;
    return -1;
  }
  return ::read(file, buffer, size);
}
