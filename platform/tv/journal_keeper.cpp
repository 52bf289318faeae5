#include "platform/tv/journal_keeper.h"

namespace quorvex {

std::uint64_t SystemStart() {
  FILETIME now{};
  ::GetSystemTimeAsFileTime(&now);
  constexpr std::uint64_t kPerSecond = 10'000'000;
  const std::uint64_t seconds =
      (static_cast<std::uint64_t>(now.dwHighDateTime) << 32U | now.dwLowDateTime) / kPerSecond;
  return seconds - ::GetTickCount64() / 1000;
}

void JournalKeeper::Begin(const std::wstring& itsPath, std::uint64_t end, const AviMovie& movie) {
  path = itsPath;
  if (path.empty() || FAILED(journal.Open(path, CaptureFile::Mode::kOverwrite))) return;
  if (!Write(end, movie)) {
    End(true);
    return;
  }
  thread = std::thread([this] { Work(); });
}

void JournalKeeper::Note(std::uint64_t end, const AviMovie& movie) {
  if (!thread.joinable()) return;
  Write(end, movie);
  const std::scoped_lock guard(lock);
  unflushed = end;
  changed.notify_all();
}

// Where this one cannot be written, the note before stays.
bool JournalKeeper::Write(std::uint64_t end, const AviMovie& movie) {
  JournalNote note{.serial = ++notes, .end = end, .movie = movie, .systemStart = SystemStart()};
  {
    const std::scoped_lock guard(lock);
    note.safeEnd = safeEnd;
  }
  std::size_t written = 0;
  return journal.Write(PlaceOfNote(note.serial), MakeNote(note), written) == FileResult::kDone;
}

void JournalKeeper::Work() {
  std::unique_lock guard(lock);
  for (;;) {
    changed.wait(guard, [this] { return ending || unflushed; });
    if (ending) return;
    const std::uint64_t end = *unflushed;
    unflushed.reset();
    guard.unlock();
    const bool done = flush();
    journal.Flush();
    guard.lock();
    if (done) safeEnd = end;
  }
}

void JournalKeeper::End(bool isFinished) {
  {
    const std::scoped_lock guard(lock);
    ending = true;
    changed.notify_all();
  }
  if (thread.joinable()) thread.join();
  if (!journal.IsOpen()) return;
  journal.Close();
  if (isFinished) ::DeleteFileW(path.c_str());
}

}  // namespace quorvex
