#include "platform/tv/capture_file.h"

#include <algorithm>

namespace quorvex {
namespace {

constexpr std::size_t kMostAtOnce = 1UL << 24;
constexpr std::uint64_t kNowhere = ~0ULL;

// Asked, for an administrator's files open all the same under Wine.
bool IsReadOnly(const std::wstring& path) {
  const DWORD attributes = ::GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

HANDLE OpenFor(const std::wstring& path, CaptureFile::Mode mode) {
  using enum CaptureFile::Mode;
  const bool reads = mode == kRead;
  const DWORD access = reads ? GENERIC_READ : GENERIC_READ | GENERIC_WRITE;
  const DWORD others = mode == kOwn ? 0 : reads ? FILE_SHARE_READ | FILE_SHARE_WRITE : FILE_SHARE_READ;
  const bool makes = mode == kRecord || mode == kOverwrite;
  const DWORD way = mode == kNew ? CREATE_NEW : makes ? OPEN_ALWAYS : OPEN_EXISTING;
  return ::CreateFileW(path.c_str(), access, others, nullptr, way, FILE_ATTRIBUTE_NORMAL, nullptr);
}

}  // namespace

HRESULT CaptureFile::Open(const std::wstring& path, Mode mode) {
  Close();
  at = kNowhere;
  if (path.empty()) return E_INVALIDARG;
  if (mode != Mode::kRead && mode != Mode::kNew && IsReadOnly(path)) return E_ACCESSDENIED;
  file = OwnFile(OpenFor(path, mode));
  if (!file) return HRESULT_FROM_WIN32(::GetLastError());
  // Only what is not empty is cut: CREATE_ALWAYS cuts a new file too under Wine, and ext4 then writes all of
  // it out before it is closed (150 ms for 400 MB).
  if (mode != Mode::kOverwrite || Size() == 0 || Resize(0) == FileResult::kDone) return S_OK;
  Close();
  return error;
}

// The file's own place is moved, where it is not there already: under Wine a call that names a place asks the
// server every time.
bool CaptureFile::GoTo(std::uint64_t place) {
  if (at == place) return true;
  LARGE_INTEGER to{};
  to.QuadPart = static_cast<LONGLONG>(place);
  const bool done = ::SetFilePointerEx(file.Get(), to, nullptr, FILE_BEGIN) != FALSE;
  at = done ? place : kNowhere;
  return done;
}

FileResult CaptureFile::Note(DWORD code) {
  at = kNowhere;
  const bool full = code == ERROR_DISK_FULL || code == ERROR_HANDLE_DISK_FULL;
  error = full ? kDiskFull : HRESULT_FROM_WIN32(code);
  return full ? FileResult::kFull : FileResult::kFailed;
}

FileResult CaptureFile::Write(std::uint64_t place, ByteView bytes, std::size_t& written) {
  written = 0;
  while (written < bytes.size()) {
    DWORD done = 0;
    const auto count = static_cast<DWORD>(std::min(bytes.size() - written, kMostAtOnce));
    if (!GoTo(place + written) ||
        ::WriteFile(file.Get(), bytes.data() + written, count, &done, nullptr) == FALSE)
      return Note(::GetLastError());
    if (done == 0) return Note(ERROR_DISK_FULL);
    written += done;
    at += done;
  }
  return FileResult::kDone;
}

FileResult CaptureFile::Resize(std::uint64_t bytes) {
  const bool done = GoTo(bytes) && ::SetEndOfFile(file.Get()) != FALSE;
  return done ? FileResult::kDone : Note(::GetLastError());
}

HRESULT CaptureFile::Flush() {
  return ::FlushFileBuffers(file.Get()) != FALSE ? S_OK : HRESULT_FROM_WIN32(::GetLastError());
}

CaptureFile CaptureFile::Shared() const {
  CaptureFile shared;
  HANDLE copy = nullptr;
  const HANDLE process = ::GetCurrentProcess();
  if (::DuplicateHandle(process, file.Get(), process, &copy, 0, FALSE, DUPLICATE_SAME_ACCESS) != FALSE)
    shared.file = UniqueHandle(copy);
  return shared;
}

std::uint64_t CaptureFile::Size() {
  LARGE_INTEGER size{};
  return ::GetFileSizeEx(file.Get(), &size) != FALSE ? static_cast<std::uint64_t>(size.QuadPart) : 0;
}

std::size_t CaptureFile::Read(std::uint64_t place, std::span<std::uint8_t> into) {
  std::size_t read = 0;
  while (read < into.size()) {
    DWORD done = 0;
    const auto count = static_cast<DWORD>(std::min(into.size() - read, kMostAtOnce));
    const bool going =
        GoTo(place + read) && ::ReadFile(file.Get(), into.data() + read, count, &done, nullptr) != FALSE;
    if (!going || done == 0) break;
    read += done;
    at += done;
  }
  return read;
}

}  // namespace quorvex
