// Keeps the journal beside a capture file: notes of what is in it, at once, and a thread of its own that
// brings the file to the disk, for which no picture waits. A note tells both: what a crash of the program
// leaves, and what is there when the machine itself goes down.
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

// When the machine was started, in seconds since 1601. A clock that is set changes it, too.
std::uint64_t SystemStart();

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
  // The movie's chunks are in the file up to `end`.
  void Note(std::uint64_t end, const AviMovie& movie);
  // Nothing more is noted; waits for a flush that goes on. The journal goes when the file needs it no more.
  void End(bool isFinished);

 private:
  void Work();
  bool Write(std::uint64_t end, const AviMovie& movie);

  const std::function<bool()> flush;
  std::wstring path;
  CaptureFile journal;
  std::uint64_t notes = 0;
  std::thread thread;
  std::mutex lock;  // guards what follows
  std::condition_variable changed;
  std::optional<std::uint64_t> unflushed;  // the last end that was noted, until it is being flushed
  std::uint64_t safeEnd = 0;               // what a flush has reached
  bool ending = false;
};

}  // namespace quorvex
