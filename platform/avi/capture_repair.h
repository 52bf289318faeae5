// Finishes a recording that was cut off, by the note of its journal.
#pragma once

#include "platform/avi/avi_header.h"
#include "platform/avi/byte_file.h"
#include "platform/avi/capture_journal.h"

namespace quorvex {

struct Repair {
  enum class Result {
    kRepaired,
    kForeign,  // the file does not hold the recording that the note speaks of
    kFailed,   // the file could not be written
  };
  Result result = Result::kForeign;
  MediaTime length = 0;  // of the movie
};

// What the note tells is in the file is kept, chunk by chunk, up to the first that is not what it should be.
// Nothing is written into a file that is not the note's.
Repair RepairMovie(ByteSource& source, ByteTarget& target, const JournalNote& note);

}  // namespace quorvex
