// A capture file, or the journal beside it, as an open file.
#pragma once

#include <windows.h>

#include <string>

#include "base/handles.h"
#include "platform/avi/byte_file.h"

namespace quorvex {

class CaptureFile final : public ByteTarget, public ByteSource {
 public:
  enum class Mode {
    kRead,       // others may read and write
    kOwn,        // there already; nobody else may have it open
    kRecord,     // made when it is not there; others may read
    kOverwrite,  // begins empty; others may read
    kNew,        // not there yet; others may read
  };

  // Closes what was open. E_INVALIDARG without a path, else what the platform says.
  HRESULT Open(const std::wstring& path, Mode mode);
  void Close() { file.Reset(); }
  [[nodiscard]] bool IsOpen() const { return static_cast<bool>(file); }
  [[nodiscard]] HANDLE Handle() const { return file.Get(); }

  FileResult Write(std::uint64_t place, ByteView bytes, std::size_t& written) override;
  FileResult Resize(std::uint64_t bytes) override;
  // What was written is on the disk afterwards. May take its time.
  HRESULT Flush();
  // The same file once more: for who flushes while others write.
  [[nodiscard]] CaptureFile Shared() const;
  std::uint64_t Size() override;
  std::size_t Read(std::uint64_t place, std::span<std::uint8_t> into) override;

  // Why the last Write or Resize went wrong.
  [[nodiscard]] HRESULT Error() const { return error; }

 private:
  FileResult Note(DWORD code);
  bool GoTo(std::uint64_t place);

  UniqueHandle file;
  std::uint64_t at = 0;  // where the next read or write happens
  HRESULT error = S_OK;
};

constexpr HRESULT kDiskFull = HRESULT_FROM_WIN32(ERROR_DISK_FULL);

// The journal of a recording into this file.
inline std::wstring JournalPath(const std::wstring& file) { return file + L".journal"; }

}  // namespace quorvex
