// Journals of recordings: the bytes of a note, which is sealed as if somebody meant harm, behind an older
// whole one. A movie that is such as the note says is then repaired.
#include "platform/avi/capture_journal.h"

#include "platform/avi/capture_repair.h"
#include "tests/fuzz/fuzz_target.h"
#include "tests/unit/avi_support.h"

namespace quorvex {
namespace {

constexpr std::size_t kSealBytes = 8;

Bytes Sealed(ByteView begin) {
  Bytes note(begin.begin(),
             begin.begin() + static_cast<std::ptrdiff_t>(std::min(begin.size(), kNoteBytes - kSealBytes)));
  note.resize(kNoteBytes - kSealBytes);
  std::uint64_t seal = 0xCBF29CE484222325;
  for (const std::uint8_t byte : note) seal = (seal ^ byte) * 0x100000001B3;
  for (std::size_t i = 0; i < kSealBytes; ++i) note.push_back(static_cast<std::uint8_t>(seal >> (8 * i)));
  return note;
}

void CheckNote(const JournalNote& note) {
  const std::vector<AviStream>& streams = note.movie.streams;
  Require(!streams.empty() && streams.size() <= kMostStreams, "a movie has streams");
  for (const AviStream& stream : streams) {
    Require(stream.rate.rate > 0 && stream.rate.scale > 0, "a stream has a rate");
    Require(stream.format.size() <= kMostFormatBytes, "a format is no longer than may be");
    Require((stream.kind == StreamKind::kSound) == (stream.unitBytes > 0), "sound has blocks");
  }
  Require(ReadJournal(MakeNote(note)) == note, "a note that is written is read again");
}

void CheckRepair(const JournalNote& note) {
  MemoryFile file(MakeHeader(note.movie, {}));
  file.bytes.resize(file.bytes.size() + 100);
  const std::size_t size = file.bytes.size();
  Require(RepairMovie(file, file, note).result == Repair::Result::kRepaired,
          "the movie that is noted is repaired");
  Require(file.bytes.size() < 2 * size && FindAll(file.bytes).whole, "a repaired movie is whole");
}

void Try(ByteView bytes) {
  Require(!ReadJournal(bytes) || bytes.size() >= kNoteBytes, "part of a note is none");
  const JournalNote older{.serial = 1, .end = 1, .movie = TestMovie()};
  Bytes journal = MakeNote(older);
  const Bytes sealed = Sealed(bytes);
  journal.insert(journal.end(), sealed.begin(), sealed.end());
  const std::optional<JournalNote> note = ReadJournal(journal);
  Require(note.has_value(), "the note that is whole is found");
  Require(note->serial >= older.serial, "the newest note counts");
  CheckNote(*note);
  CheckRepair(*note);
}

}  // namespace
}  // namespace quorvex

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  quorvex::Try({bytes, size});
  return 0;
}
