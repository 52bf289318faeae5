#include "platform/tv/capture_copy.h"

#include <algorithm>

#include "platform/avi/avi_extent.h"
#include "platform/tv/capture_file.h"

namespace quorvex {
namespace {

// Small enough to stay in the processor's cache between reading and writing.
constexpr std::size_t kBlock = 1UL << 18;
// So many copies that were cut off may lie there.
constexpr int kMostNames = 100;

// Held down at present, or pressed meanwhile in a window of this thread, for which the key is then gone.
// Messages that other programs send are not let in: the caller is in the middle of something.
bool EscapeIsPressed() {
  bool pressed = (static_cast<unsigned>(::GetAsyncKeyState(VK_ESCAPE)) & 0x8000U) != 0;
  MSG message{};
  while (::PeekMessageW(&message, nullptr, WM_KEYDOWN, WM_KEYDOWN, PM_REMOVE | PM_QS_INPUT) != FALSE)
    pressed = pressed || message.wParam == VK_ESCAPE;
  return pressed;
}

class Copying {
 public:
  Copying(CaptureFile& source, CaptureFile& target, bool allowEscape, IAMCopyCaptureFileProgress* told)
      : from(source), to(target), mayEnd(allowEscape), progress(told) {
    // What was pressed before does not count.
    EscapeIsPressed();
  }

  HRESULT Go(std::uint64_t bytes) {
    Bytes block(kBlock);
    Tell(0);
    for (std::uint64_t place = 0; place < bytes;) {
      if (mayEnd && EscapeIsPressed()) return S_FALSE;
      const std::span<std::uint8_t> part(block.data(), std::min<std::uint64_t>(kBlock, bytes - place));
      if (from.Read(place, part) < part.size()) return E_FAIL;
      std::size_t written = 0;
      if (to.Write(place, part, written) != FileResult::kDone) return to.Error();
      place += part.size();
      Tell(static_cast<int>(place * 100 / bytes));
    }
    return S_OK;
  }

 private:
  void Tell(int percent) {
    if (progress == nullptr || percent == last) return;
    last = percent;
    progress->Progress(percent);
  }

  CaptureFile& from;
  CaptureFile& to;
  const bool mayEnd;
  IAMCopyCaptureFileProgress* const progress;
  int last = -1;
};

bool AreSame(const CaptureFile& one, const std::wstring& path) {
  CaptureFile other;
  BY_HANDLE_FILE_INFORMATION first{};
  BY_HANDLE_FILE_INFORMATION second{};
  if (FAILED(other.Open(path, CaptureFile::Mode::kRead))) return false;
  return ::GetFileInformationByHandle(one.Handle(), &first) != FALSE &&
         ::GetFileInformationByHandle(other.Handle(), &second) != FALSE &&
         first.dwVolumeSerialNumber == second.dwVolumeSerialNumber &&
         first.nFileIndexHigh == second.nFileIndexHigh && first.nFileIndexLow == second.nFileIndexLow;
}

// A file that was not there before: what has its name may be the user's.
HRESULT OpenBeside(const std::wstring& path, CaptureFile& file, std::wstring& name) {
  HRESULT result = E_FAIL;
  for (int number = 1; number <= kMostNames; ++number) {
    name = path + L".part" + (number > 1 ? std::to_wstring(number) : L"");
    result = file.Open(name, CaptureFile::Mode::kNew);
    if (result != HRESULT_FROM_WIN32(ERROR_FILE_EXISTS)) break;
  }
  return result;
}

}  // namespace

HRESULT CopyMovie(const std::wstring& from, const std::wstring& to, bool allowEscape,
                  IAMCopyCaptureFileProgress* progress) {
  CaptureFile source;
  if (FAILED(source.Open(from, CaptureFile::Mode::kRead)) || AreSame(source, to)) return E_INVALIDARG;
  const std::optional<std::uint64_t> bytes = MovieBytes(source);
  if (!bytes) return E_FAIL;
  CaptureFile target;
  std::wstring part;
  if (FAILED(OpenBeside(to, target, part))) return E_INVALIDARG;
  HRESULT result = Copying(source, target, allowEscape, progress).Go(*bytes);
  target.Close();
  if (result == S_OK && ::MoveFileExW(part.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING) == FALSE)
    result = E_INVALIDARG;
  if (result != S_OK) ::DeleteFileW(part.c_str());
  return result;
}

}  // namespace quorvex
