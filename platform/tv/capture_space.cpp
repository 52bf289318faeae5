#include "platform/tv/capture_space.h"

#include <algorithm>

#include "platform/tv/capture_file.h"

namespace quorvex {
namespace {

constexpr std::size_t kBlock = 1UL << 20;

// What the file has on the disk; less than its size where there are holes in it.
std::uint64_t TakenBy(const CaptureFile& file) {
  FILE_STANDARD_INFO info{};
  if (::GetFileInformationByHandleEx(file.Handle(), FileStandardInfo, &info, sizeof info) == FALSE) return 0;
  return static_cast<std::uint64_t>(info.AllocationSize.QuadPart);
}

// Asked beforehand, so that a disk is not filled to its last byte in vain.
bool HasRoom(const std::wstring& path, std::uint64_t bytes) {
  const std::size_t name = path.find_last_of(L"\\/");
  const std::wstring folder = name == std::wstring::npos ? L"." : path.substr(0, name + 1);
  ULARGE_INTEGER free{};
  return ::GetDiskFreeSpaceExW(folder.c_str(), &free, nullptr, nullptr) == FALSE || free.QuadPart >= bytes;
}

// Writes what is in the file from a place on, and zeros behind its end: a platform that makes files longer
// without taking the space takes it then.
FileResult WriteThrough(CaptureFile& file, std::uint64_t from, std::uint64_t bytes) {
  Bytes block(kBlock);
  FileResult result = FileResult::kDone;
  for (std::uint64_t place = from; place < bytes && result == FileResult::kDone; place += kBlock) {
    const std::span<std::uint8_t> part(block.data(), std::min<std::uint64_t>(kBlock, bytes - place));
    const std::size_t read = file.Read(place, part);
    std::fill(part.begin() + static_cast<std::ptrdiff_t>(read), part.end(), std::uint8_t{0});
    std::size_t written = 0;
    result = file.Write(place, part, written);
  }
  return result;
}

// The file's new length, with its space.
FileResult SetLength(CaptureFile& file, std::uint64_t before, std::uint64_t bytes) {
  const bool hasHoles = TakenBy(file) < std::min(before, bytes);
  FileResult result = file.Resize(bytes);
  if (result == FileResult::kDone && TakenBy(file) < bytes)
    result = WriteThrough(file, hasHoles ? 0 : std::min(before, bytes), bytes);
  return result;
}

}  // namespace

HRESULT AllocateFile(const std::wstring& path, std::uint64_t bytes) {
  if (bytes == 0) return E_INVALIDARG;
  CaptureFile file;
  const bool isNew = ::GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES;
  HRESULT result = file.Open(path, isNew ? CaptureFile::Mode::kRecord : CaptureFile::Mode::kOwn);
  if (FAILED(result)) return result;
  const std::uint64_t before = file.Size();
  const std::uint64_t taken = TakenBy(file);
  const bool fits = bytes <= taken || HasRoom(path, bytes - taken);
  if (fits && SetLength(file, before, bytes) == FileResult::kDone) return S_OK;
  result = fits ? file.Error() : kDiskFull;
  if (before < file.Size()) file.Resize(before);
  file.Close();
  if (isNew) ::DeleteFileW(path.c_str());
  return result;
}

}  // namespace quorvex
