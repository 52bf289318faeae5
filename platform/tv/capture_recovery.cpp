#include "platform/tv/capture_recovery.h"

#include <algorithm>

#include "platform/avi/capture_repair.h"
#include "platform/tv/capture_file.h"
#include "platform/tv/journal_keeper.h"

namespace quorvex {
namespace {

// By less the clock is put right.
constexpr std::uint64_t kSameStart = 60;

// What of it is surely in the file.
JournalNote Trusted(JournalNote note) {
  const std::uint64_t start = SystemStart();
  const std::uint64_t apart = std::max(start, note.systemStart) - std::min(start, note.systemStart);
  if (apart > kSameStart) note.end = std::min(note.end, note.safeEnd);
  return note;
}

bool IsMissing(HRESULT result) {
  return result == HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND) ||
         result == HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND);
}

}  // namespace

HRESULT RecoverRecording(const std::wstring& path, LONGLONG& length) {
  length = 0;
  CaptureFile journal;
  HRESULT result = journal.Open(JournalPath(path), CaptureFile::Mode::kOwn);
  if (FAILED(result)) return IsMissing(result) ? S_FALSE : result;
  Bytes noted(kJournalBytes);
  noted.resize(journal.Read(0, noted));
  const std::optional<JournalNote> note = ReadJournal(noted);
  if (!note) return S_FALSE;
  CaptureFile file;
  result = file.Open(path, CaptureFile::Mode::kOwn);
  if (FAILED(result)) return IsMissing(result) ? S_FALSE : result;
  const Repair repair = RepairMovie(file, file, Trusted(*note));
  if (repair.result == Repair::Result::kForeign) return S_FALSE;
  if (repair.result == Repair::Result::kFailed) return FAILED(file.Error()) ? file.Error() : E_FAIL;
  length = repair.length;
  journal.Close();
  ::DeleteFileW(JournalPath(path).c_str());
  return S_OK;
}

}  // namespace quorvex
