#include "platform/tv/journal_keeper.h"

namespace quorvex {

void JournalKeeper::Begin(const std::wstring& itsPath, std::uint64_t end, const AviMovie& movie) {
  path = itsPath;
  if (path.empty() || FAILED(journal.Open(path, CaptureFile::Mode::kOverwrite))) return;
  if (!Write({.end = end, .movie = movie})) {
    End(true);
    return;
  }
  thread = std::thread([this] { Work(); });
}

bool JournalKeeper::Note(std::uint64_t end, const AviMovie& movie) {
  if (!thread.joinable()) return true;
  const std::scoped_lock guard(lock);
  if (next) return false;
  next = JournalNote{.end = end, .movie = movie};
  changed.notify_all();
  return true;
}

// Where this one cannot be written, the note before stays.
bool JournalKeeper::Write(JournalNote note) {
  note.serial = ++notes;
  std::size_t written = 0;
  return journal.Write(PlaceOfNote(note.serial), MakeNote(note), written) == FileResult::kDone;
}

void JournalKeeper::Work() {
  std::unique_lock guard(lock);
  for (;;) {
    changed.wait(guard, [this] { return ending || next; });
    if (ending) return;
    const JournalNote note = *next;
    guard.unlock();
    if (flush() && Write(note)) journal.Flush();
    guard.lock();
    next.reset();
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
