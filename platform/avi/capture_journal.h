// What is noted beside a capture file while it is being written, so that a recording that was cut off can be
// finished: what the movie is, and up to where it is in the file. Two notes take turns, so that one is whole
// at any moment.
#pragma once

#include <optional>

#include "platform/avi/avi_movie.h"

namespace quorvex {

struct JournalNote {
  std::uint64_t serial = 0;  // the higher is the newer
  std::uint64_t end = 0;     // behind the last whole chunk
  AviMovie movie;
  std::uint64_t safeEnd = 0;      // behind the last one that is on the disk, whatever becomes of the machine
  std::uint64_t systemStart = 0;  // when the machine was started, in seconds since 1601
  friend bool operator==(const JournalNote&, const JournalNote&) = default;
};

constexpr std::size_t kNoteBytes = 8192;
constexpr std::size_t kJournalBytes = 2 * kNoteBytes;

// Where a note goes.
constexpr std::size_t PlaceOfNote(std::uint64_t serial) { return serial % 2 * kNoteBytes; }

// kNoteBytes.
Bytes MakeNote(const JournalNote& note);

// The newest whole note; nothing when there is none. What it says is possible: there are streams, their rates
// are not 0, their formats not longer than may be.
std::optional<JournalNote> ReadJournal(ByteView journal);

}  // namespace quorvex
