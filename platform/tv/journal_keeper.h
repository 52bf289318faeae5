// Keeps the journal beside a capture file, on a thread of its own: before it notes what is in the file it
// brings it to the disk, and no picture waits for that.
#pragma once

#include <windows.h>

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "platform/avi/capture_journal.h"
#include "platform/tv/capture_file.h"

namespace quorvex {

// A journal is a help, no condition: where it cannot be written there is none.
class JournalKeeper {
 public:
  // `flush` brings the file to the disk; false when it could not. Called on the keeper's thread.
  explicit JournalKeeper(std::function<bool()> itsFlush) : flush(std::move(itsFlush)) {}
  JournalKeeper(const JournalKeeper&) = delete;
  JournalKeeper& operator=(const JournalKeeper&) = delete;
  ~JournalKeeper() { End(false); }

  // Makes the journal at this path (none when it is empty), with a movie in which nothing is yet.
  void Begin(const std::wstring& itsPath, std::uint64_t end, const AviMovie& movie);
  // Notes this when it is on the disk. False while the note before is not yet made: later is as good then.
  bool Note(std::uint64_t end, const AviMovie& movie);
  // Nothing more is noted; waits for a flush that goes on. The journal goes when the file needs it no more.
  void End(bool isFinished);

 private:
  void Work();
  bool Write(JournalNote note);

  const std::function<bool()> flush;
  std::wstring path;
  CaptureFile journal;
  std::uint64_t notes = 0;
  std::thread thread;
  std::mutex lock;  // guards what follows
  std::condition_variable changed;
  std::optional<JournalNote> next;
  bool ending = false;
};

}  // namespace quorvex
