// The layout of AVI files: chunks, indexes, parts, what is left of the file before, full disks.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "platform/avi/avi_extent.h"
#include "tests/unit/avi_support.h"

namespace quorvex {
namespace {

constexpr std::uint32_t kPictureBytes = 97;  // odd: chunks are padded

// Pictures and sound in turn; every fifth picture is a lost one.
void WriteChunks(AviWriter& writer, std::uint32_t count) {
  for (std::uint32_t i = 0; i < count; ++i) {
    ASSERT_EQ(writer.Add(0, i % 5 == 4 ? Bytes{} : Numbered(i, kPictureBytes), true), FileResult::kDone);
    ASSERT_EQ(writer.Add(1, Numbered(i, 4 * 1600), true), FileResult::kDone);
  }
}

// A whole movie of so many pictures with their sound; where its chunks end.
std::uint64_t WriteMovie(MemoryFile& file, const AviMovie& movie, std::uint32_t count) {
  AviWriter writer(file, movie);
  EXPECT_EQ(writer.Begin(), FileResult::kDone);
  WriteChunks(writer, count);
  EXPECT_EQ(writer.Finish(), FileResult::kDone);
  return writer.End();
}

AviMovie MovieOfSmallParts() {
  AviMovie movie = TestMovie();
  movie.partBytes = 100'000;
  return movie;
}

// Follows the lists of indexes to every chunk of a stream, and reads its number.
std::vector<std::uint32_t> NumbersByIndex(const Bytes& file, const FoundAvi& found, std::size_t stream) {
  std::vector<std::uint32_t> numbers;
  const FoundChunk list = found.chunks.at("indx").at(stream);
  std::uint32_t units = 0;
  for (std::uint32_t part = 0; part < Number32(file, list.at + 4); ++part) {
    const std::size_t entry = list.at + 24 + part * 16;
    const auto index = static_cast<std::size_t>(Number64(file, entry)) + 8;
    units += Number32(file, entry + 12);
    EXPECT_EQ(Number32(file, entry + 8), Number32(file, index - 4) + 8);
    const std::uint64_t base = Number64(file, index + 12);
    for (std::uint32_t i = 0; i < Number32(file, index + 4); ++i) {
      const std::size_t at = base + Number32(file, index + 24 + i * 8);
      const std::uint32_t length = Number32(file, index + 28 + i * 8);
      EXPECT_EQ(Number32(file, at - 4), length & 0x7FFFFFFF);
      EXPECT_EQ(length >> 31, length == 1U << 31 ? 1U : 0U) << "a lost picture is no key";
      numbers.push_back((length & 0x7FFFFFFF) == 0 ? ~0U : Number32(file, at));
    }
  }
  const FoundChunk header = found.chunks.at("strh").at(stream);
  EXPECT_EQ(units, Number32(file, header.at + 32)) << "the length of the stream";
  return numbers;
}

void ExpectAllNumbers(const Bytes& file, std::uint32_t count) {
  const FoundAvi found = FindAll(file);
  EXPECT_TRUE(found.whole);
  const std::vector<std::uint32_t> pictures = NumbersByIndex(file, found, 0);
  const std::vector<std::uint32_t> sounds = NumbersByIndex(file, found, 1);
  ASSERT_EQ(pictures.size(), count);
  ASSERT_EQ(sounds.size(), count);
  for (std::uint32_t i = 0; i < count; ++i) {
    EXPECT_EQ(pictures[i], i % 5 == 4 ? ~0U : i);
    EXPECT_EQ(sounds[i], i);
  }
  EXPECT_EQ(Number32(file, found.chunks.at("dmlh")[0].at), count);
}

TEST(AviWriterTest, EveryChunkIsFoundByItsIndexes) {
  MemoryFile file;
  WriteMovie(file, TestMovie(), 23);
  ExpectAllNumbers(file.bytes, 23);
  const FoundAvi found = FindAll(file.bytes);
  EXPECT_EQ(found.parts, std::vector<std::string>{"AVI "});
  const FoundChunk header = found.chunks.at("avih")[0];
  EXPECT_EQ(Number32(file.bytes, header.at), 33366U);
  EXPECT_EQ(Number32(file.bytes, header.at + 16), 23U);
  // The old index, whose places count from the letters "movi".
  const FoundChunk old = found.chunks.at("idx1")[0];
  const std::size_t movi = found.chunks.at("movi")[0].at;
  ASSERT_EQ(old.length, 46U * 16);
  for (std::size_t i = 0; i < 46; ++i) {
    const std::size_t chunk = movi + Number32(file.bytes, old.at + i * 16 + 8);
    EXPECT_EQ(Number32(file.bytes, chunk), Number32(file.bytes, old.at + i * 16));
    EXPECT_EQ(Number32(file.bytes, chunk + 4), Number32(file.bytes, old.at + i * 16 + 12));
  }
  EXPECT_EQ(MovieBytes(file), file.bytes.size());
}

TEST(AviWriterTest, ALongMovieIsInParts) {
  for (const bool oldIndex : {true, false}) {
    MemoryFile file;
    AviMovie movie = MovieOfSmallParts();
    movie.oldIndex = oldIndex;
    WriteMovie(file, movie, 200);
    ExpectAllNumbers(file.bytes, 200);
    const FoundAvi found = FindAll(file.bytes);
    EXPECT_GT(found.parts.size(), 10U);
    EXPECT_EQ(found.parts.front(), "AVI ");
    EXPECT_EQ(found.parts.back(), "AVIX");
    for (const char* kind : {"AVI ", "AVIX"}) {
      for (const FoundChunk& part : found.chunks.at(kind)) EXPECT_LE(part.length + 8, movie.partBytes);
    }
    EXPECT_EQ(found.chunks.contains("idx1"), oldIndex);
    EXPECT_LT(Number32(file.bytes, found.chunks.at("avih")[0].at + 16), 30U) << "the first part's pictures";
  }
}

TEST(AviWriterTest, ThePartsThatAFileHasRoomForAreFilledAndNoMore) {
  MemoryFile file;
  AviMovie movie = TestMovie();
  movie.partBytes = 1;
  AviWriter writer(file, movie);
  ASSERT_EQ(writer.Begin(), FileResult::kDone);
  std::uint32_t count = 0;
  while (writer.Add(0, Numbered(count, 8), true) == FileResult::kDone) ++count;
  EXPECT_EQ(count, kMostParts);
  ASSERT_EQ(writer.Finish(), FileResult::kDone);
  EXPECT_EQ(NumbersByIndex(file.bytes, FindAll(file.bytes), 0).size(), count);
  EXPECT_EQ(MovieBytes(file), file.bytes.size());
}

// A file that was an AVI file of several parts before, and is longer than what is written now; what is left
// after the movie may be too little for a chunk.
TEST(AviWriterTest, WhatWasInTheFileIsNotInTheMovie) {
  MemoryFile old;
  AviMovie movie = MovieOfSmallParts();
  WriteMovie(old, movie, 200);
  for (std::uint64_t more = 0; more < 20; ++more) {
    for (const std::uint32_t count : {21U, 200U}) {
      MemoryFile file(old.bytes);
      file.bytes.resize(old.bytes.size() + more, 0x55);
      movie.fileBytes = file.bytes.size();
      const std::uint64_t end = WriteMovie(file, movie, count);
      EXPECT_EQ(MovieBytes(file), end);
      EXPECT_EQ(file.bytes.size(), old.bytes.size() + more) << "the space stays";
      ExpectAllNumbers(file.bytes, count);
      if (count == 21) {
        EXPECT_EQ(FindAll(file.bytes).parts, (std::vector<std::string>{"AVI ", "AVIX", "JUNK"}));
      } else if (more < 8) {
        EXPECT_EQ(Bytes(file.bytes.end() - static_cast<std::ptrdiff_t>(more), file.bytes.end()), Bytes(more));
      }
    }
  }
}

// What there is room for of 60 pictures with their sound.
void FillDisk(MemoryFile& file, const AviMovie& movie) {
  AviWriter writer(file, movie);
  ASSERT_EQ(writer.Begin(), FileResult::kDone);
  FileResult result = FileResult::kDone;
  for (std::uint32_t i = 0; i < 60 && result == FileResult::kDone; ++i) {
    result = writer.Add(0, Numbered(i, kPictureBytes), true);
    if (result == FileResult::kDone) result = writer.Add(1, Numbered(i, 4 * 1600), true);
  }
  ASSERT_EQ(writer.Finish(), FileResult::kDone) << file.room;
}

TEST(AviWriterTest, AFullDiskKeepsWhatIsThere) {
  const AviMovie movie = MovieOfSmallParts();
  MemoryFile whole;
  FillDisk(whole, movie);
  const FoundAvi all = FindAll(whole.bytes);
  std::vector<std::uint64_t> rooms;
  for (std::uint64_t room = HeaderBytes(movie) + 200; room < whole.bytes.size(); room += 1237)
    rooms.push_back(room);
  // A whole part, and no room for the next one's header.
  for (const FoundChunk& part : all.chunks.at("AVIX")) {
    for (const std::uint64_t rest : {0, 1, 23}) rooms.push_back(part.at - 8 + rest);
  }
  for (const std::uint64_t room : rooms) {
    MemoryFile file({}, room);
    FillDisk(file, movie);
    const FoundAvi found = FindAll(file.bytes);
    EXPECT_TRUE(found.whole) << room;
    EXPECT_EQ(MovieBytes(file), file.bytes.size()) << room;
    const std::vector<std::uint32_t> numbers = NumbersByIndex(file.bytes, found, 0);
    // No more is lost than the last sound and what the index needs.
    EXPECT_GE((numbers.size() + 2) * 6520 + 2000 + HeaderBytes(movie), room) << room;
    for (std::uint32_t i = 0; i < numbers.size(); ++i) EXPECT_EQ(numbers[i], i);
  }
}

// A real file of more than 4 GB with holes where pictures would be: only their numbers are written.
class SparseFile final : public ByteTarget {
 public:
  explicit SparseFile(const std::string& path) : stream(path, std::ios::binary) {}

  FileResult Write(std::uint64_t place, ByteView bytes, std::size_t& written) override {
    constexpr std::size_t kLongest = 100'000;
    written = bytes.size();
    stream.seekp(static_cast<std::streamoff>(place));
    stream.write(reinterpret_cast<const char*>(bytes.data()),
                 static_cast<std::streamsize>(bytes.size() > kLongest ? 4 : bytes.size()));
    return stream ? FileResult::kDone : FileResult::kFailed;
  }
  FileResult Resize(std::uint64_t) override {
    stream.close();
    return FileResult::kDone;
  }

 private:
  std::ofstream stream;
};

// What another program finds in a file.
std::string Asked(const std::string& command) {
  std::string answer;
  FILE* pipe = ::popen(command.c_str(), "r");
  if (pipe == nullptr) return answer;
  for (int letter = 0; (letter = std::fgetc(pipe)) != EOF;) answer += static_cast<char>(letter);
  ::pclose(pipe);
  return answer;
}

TEST(AviWriterTest, OtherProgramsPlayTenGigabytes) {
  const std::string path =
      (std::filesystem::temp_directory_path() / ("quorvex-" + std::to_string(::getpid()) + ".avi")).string();
  SparseFile file(path);
  AviMovie movie = TestMovie();
  ByteWriter format;
  format.U32(40).U32(1920).U32(1080).U16(1).U16(24).Zeros(24);
  movie.streams = {{.rate = {25, 1}, .width = 1920, .height = 1080, .format = format.Take()}};
  AviWriter writer(file, movie);
  ASSERT_EQ(writer.Begin(), FileResult::kDone);
  constexpr std::uint32_t kCount = 1800;
  Bytes picture(1920UL * 1080 * 3);
  for (std::uint32_t i = 0; i < kCount; ++i) {
    std::memcpy(picture.data(), &i, 4);
    ASSERT_EQ(writer.Add(0, picture, true), FileResult::kDone);
  }
  ASSERT_EQ(writer.Finish(), FileResult::kDone);
  EXPECT_GT(writer.End(), 10ULL << 30);
  EXPECT_EQ(writer.Totals().streams[0].parts.size(), 11U);
  const std::string probe = "ffprobe -v error -select_streams v -of csv=p=0 ";
  EXPECT_EQ(Asked(probe + "-show_entries stream=nb_frames,duration " + path), "72.000000,1800\n");
  // Found by the indexes, in the first part and in those beyond 4 GB.
  for (const int second : {0, 20, 50, 71}) {
    const std::string at = std::to_string(second);
    const std::string shown =
        Asked("ffmpeg -nostdin -v error -ss " + at + " -i " + path +
              " -frames:v 1 -c copy -f rawvideo - 2>/dev/null | head -c 4 | od -An -tu4");
    EXPECT_EQ(std::atoi(shown.c_str()), second * 25);
  }
  std::filesystem::remove(path);
}

}  // namespace
}  // namespace quorvex
