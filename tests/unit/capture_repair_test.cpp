// The journal of a recording, and recordings that were cut off and finished by it.
#include <gtest/gtest.h>

#include "platform/avi/avi_extent.h"
#include "platform/avi/capture_repair.h"
#include "tests/unit/avi_support.h"

namespace quorvex {
namespace {

AviMovie SmallParts(std::uint64_t fileBytes) {
  AviMovie movie = TestMovie();
  movie.partBytes = 60'000;
  movie.fileBytes = fileBytes;
  return movie;
}

// A recording that was killed: the journal was written after some chunk, and more came.
struct Killed {
  explicit Killed(Bytes before, std::uint32_t noted, std::uint32_t unnoted) : file(std::move(before)) {
    const AviMovie movie = SmallParts(file.bytes.size());
    AviWriter writer(file, movie);
    EXPECT_EQ(writer.Begin(), FileResult::kDone);
    Add(writer, 0, noted);
    note = {.serial = noted, .end = writer.End(), .movie = movie};
    Add(writer, noted, noted + unnoted);
  }
  static void Add(AviWriter& writer, std::uint32_t from, std::uint32_t to) {
    for (std::uint32_t i = from; i < to; ++i) {
      EXPECT_EQ(writer.Add(0, i % 7 == 5 ? Bytes{} : Numbered(i, 101), true), FileResult::kDone);
      EXPECT_EQ(writer.Add(1, Numbered(i, 4 * 1600), true), FileResult::kDone);
    }
  }

  MemoryFile file;
  JournalNote note;
};

// The bytes of an older, longer recording.
Bytes OlderRecording() {
  MemoryFile file;
  AviMovie movie = SmallParts(0);
  movie.id = 5;
  AviWriter writer(file, movie);
  EXPECT_EQ(writer.Begin(), FileResult::kDone);
  for (std::uint32_t i = 0; i < 300; ++i)
    EXPECT_EQ(writer.Add(0, Numbered(1000 + i, 900), true), FileResult::kDone);
  EXPECT_EQ(writer.Finish(), FileResult::kDone);
  return file.bytes;
}

TEST(CaptureRepairTest, EverythingNotedIsThereAndNothingElse) {
  for (const Bytes& before : {Bytes{}, Bytes(400'000, 0x30), OlderRecording()}) {
    for (std::uint32_t noted = 0; noted < 40; ++noted) {
      Killed killed(before, noted, 3);
      const Repair repair = RepairMovie(killed.file, killed.file, killed.note);
      ASSERT_EQ(repair.result, Repair::Result::kRepaired) << noted;
      EXPECT_EQ(repair.length,
                std::max(TestSound().rate.TimeOf(noted * 1600LL), TestPictures().rate.TimeOf(noted)));
      // The same as if it had been finished at that place.
      MemoryFile finished(before);
      AviWriter writer(finished, killed.note.movie);
      ASSERT_EQ(writer.Begin(), FileResult::kDone);
      Killed::Add(writer, 0, noted);
      ASSERT_EQ(writer.Finish(), FileResult::kDone);
      EXPECT_GE(killed.file.bytes.size(), before.size());
      ASSERT_EQ(MovieBytes(killed.file), MovieBytes(finished)) << noted;
      const auto end = static_cast<std::ptrdiff_t>(MovieBytes(finished).value_or(0));
      EXPECT_TRUE(std::equal(finished.bytes.begin(), finished.bytes.begin() + end, killed.file.bytes.begin()))
          << noted;
    }
  }
}

TEST(CaptureRepairTest, AFileOfAnotherRecordingIsNotTouched) {
  Killed killed({}, 20, 3);
  MemoryFile other(OlderRecording());
  const Bytes before = other.bytes;
  EXPECT_EQ(RepairMovie(other, other, killed.note).result, Repair::Result::kForeign);
  EXPECT_EQ(other.bytes, before);
  MemoryFile empty;
  EXPECT_EQ(RepairMovie(empty, empty, killed.note).result, Repair::Result::kForeign);
  EXPECT_TRUE(empty.bytes.empty());
}

TEST(CaptureRepairTest, AFileThatWasCutKeepsItsWholeChunks) {
  for (std::uint64_t cut = 20'000; cut < 140'000; cut += 3331) {
    Killed killed({}, 20, 3);
    killed.file.bytes.resize(cut);
    ASSERT_EQ(RepairMovie(killed.file, killed.file, killed.note).result, Repair::Result::kRepaired) << cut;
    const FoundAvi found = FindAll(killed.file.bytes);
    EXPECT_TRUE(found.whole) << cut;
    const std::uint32_t pictures = Number32(killed.file.bytes, found.chunks.at("strh")[0].at + 32);
    EXPECT_NEAR(pictures, std::min<double>((static_cast<double>(cut) - 12288) / 6510, 20), 1.1) << cut;
  }
}

Bytes TwoNotes(const JournalNote& first, const JournalNote& second) {
  Bytes journal = MakeNote(first);
  const Bytes more = MakeNote(second);
  journal.insert(journal.end(), more.begin(), more.end());
  return journal;
}

TEST(CaptureJournalTest, TheNewestWholeNoteCounts) {
  const JournalNote older{.serial = 8, .end = 1000, .movie = TestMovie()};
  const JournalNote newer{.serial = 9, .end = 2000, .movie = TestMovie(), .safeEnd = 1500, .systemStart = 7};
  EXPECT_EQ(ReadJournal(TwoNotes(newer, older)), newer);
  EXPECT_NE(PlaceOfNote(8), PlaceOfNote(9));
  Bytes torn = TwoNotes(older, newer);
  EXPECT_EQ(ReadJournal(torn), newer);
  for (std::size_t at = kNoteBytes; at < kJournalBytes; at += 997) {
    EXPECT_EQ(ReadJournal({torn.data(), at}), older) << at;
    torn[at] ^= 0x40;
    EXPECT_EQ(ReadJournal(torn), older) << at;
    torn[at] ^= 0x40;
  }
  EXPECT_FALSE(ReadJournal(Bytes(kJournalBytes)));
}

}  // namespace
}  // namespace quorvex
