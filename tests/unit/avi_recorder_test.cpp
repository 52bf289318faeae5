// What becomes of samples and their times: gaps, lost pictures, pauses, clocks that go apart.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "platform/avi/avi_recorder.h"
#include "tests/unit/avi_support.h"

namespace quorvex {
namespace {

constexpr MediaTime kPicture = 333667;

// Records what two sources send, in the order of their times.
class Recording {
 public:
  explicit Recording(int master = AviRecorder::kNoMaster, AviMovie movie = TestMovie())
      : unitBytes(movie.streams[1].unitBytes),
        recorder(file, std::move(movie), master, {std::nullopt, std::uint8_t{0}}) {
    EXPECT_EQ(recorder.Begin(), FileResult::kDone);
  }

  void Picture(MediaTime begin, MediaTime length = kPicture) {
    EXPECT_EQ(recorder.Take(0, SampleTime{begin, begin + length}, Numbered(number++, 16), true),
              FileResult::kDone);
  }
  // Sound of this many blocks.
  void Sound(MediaTime begin, std::int64_t blocks = 2400, MediaTime length = kSecond / 20) {
    EXPECT_EQ(recorder.Take(1, SampleTime{begin, begin + length},
                            Bytes(static_cast<std::size_t>(blocks) * unitBytes, 0x11), true),
              FileResult::kDone);
  }
  // Both, from one time to another.
  void Run(MediaTime from, MediaTime to) {
    MediaTime sound = from;
    for (MediaTime picture = from; picture < to; picture += kPicture) {
      for (; sound <= picture; sound += kSecond / 20) Sound(sound);
      Picture(picture);
    }
  }

  // The numbers of the pictures in the file, -1 for a lost one; ends the recording.
  std::vector<int> Pictures() {
    EXPECT_EQ(recorder.Finish(), FileResult::kDone);
    FoundAvi found = FindAll(file.bytes);
    EXPECT_TRUE(found.whole);
    std::vector<int> numbers;
    for (const FoundChunk& chunk : found.chunks.at("00db"))
      numbers.push_back(chunk.length == 0 ? -1 : static_cast<int>(Number32(file.bytes, chunk.at)));
    for (const FoundChunk& chunk : found.chunks["01wb"])
      heard.insert(heard.end(), file.bytes.begin() + static_cast<std::ptrdiff_t>(chunk.at),
                   file.bytes.begin() + static_cast<std::ptrdiff_t>(chunk.at + chunk.length));
    for (std::size_t i = 0; i < 2; ++i) {
      const std::size_t header = found.chunks.at("strh")[i].at;
      rates.push_back({Number32(file.bytes, header + 24), Number32(file.bytes, header + 20)});
      units.push_back(Number32(file.bytes, header + 32));
    }
    return numbers;
  }
  [[nodiscard]] double Seconds(std::size_t stream) const {
    return static_cast<double>(units[stream]) * rates[stream].scale / rates[stream].rate;
  }

  MemoryFile file;
  const std::size_t unitBytes;
  AviRecorder recorder;
  std::uint32_t number = 0;
  Bytes heard;
  std::vector<UnitRate> rates;
  std::vector<std::uint32_t> units;
};

TEST(StreamRateTest, UsualRatesAreRecognised) {
  const std::pair<MediaTime, UnitRate> cases[] = {
      {333667, {30000, 1001}},       {333666, {30000, 1001}}, {333333, {30, 1}},
      {417083, {24000, 1001}},       {kSecond, {1, 1}},       {123000, {10000000, 123000}},
      {4000001, {10000000, 4000001}}};
  for (const auto& [frame, rate] : cases) EXPECT_EQ(PictureRate(frame), rate) << frame;
}

TEST(AviRecorderTest, TheMovieBeginsWithTheFirstPicture) {
  struct Case {
    const char* name;
    MediaTime sound;  // against the first picture
    std::int64_t silence;
    std::int64_t left;  // of the first two pieces of sound
  };
  for (const Case& each :
       {Case{"together", 0, 0, 4800}, Case{"sound first", -kSecond / 40, 0, 3600},
        Case{"one piece too early", -kSecond / 20, 0, 2400}, Case{"picture first", kSecond / 100, 480, 4800},
        Case{"long after", 3 * kSecond, 144000, 4800}}) {
    Recording recording;
    const MediaTime start = 100 * kSecond;
    if (each.sound >= 0) recording.Picture(start);
    recording.Sound(start + each.sound);
    recording.Sound(start + each.sound + kSecond / 20);
    if (each.sound < 0) recording.Picture(start);
    EXPECT_EQ(recording.Pictures().front(), 0) << each.name;
    const auto quiet =
        static_cast<std::int64_t>(std::count(recording.heard.begin(), recording.heard.end(), 0)) / 4;
    EXPECT_EQ(quiet, each.silence) << each.name;
    EXPECT_EQ(static_cast<std::int64_t>(recording.heard.size()) / 4 - quiet, each.left) << each.name;
  }
}

TEST(AviRecorderTest, SoundDoesNotWaitForEverForAPicture) {
  Recording recording;
  for (int i = 0; i < 100; ++i) recording.Sound(kSecond + i * kSecond / 20);
  recording.Picture(6 * kSecond);
  const std::vector<int> pictures = recording.Pictures();
  ASSERT_EQ(pictures.size(), 151U) << "five seconds without a picture";
  EXPECT_EQ(pictures.back(), 0);
  EXPECT_EQ(recording.units[1], 240000U);

  Recording silent;
  for (int i = 0; i < 3; ++i) silent.Sound(i * kSecond / 20);
  EXPECT_EQ(silent.recorder.Finish(), FileResult::kDone) << "stopped before the first picture";
  EXPECT_EQ(silent.recorder.Length(), 3 * kSecond / 20);
}

TEST(AviRecorderTest, LostPicturesLeaveGaps) {
  Recording recording;
  std::vector<int> expected;
  for (int slot = 0, number = 0; slot < 60; ++slot) {
    const bool isLost = slot % 7 == 3 || (slot > 30 && slot < 45);
    // Times that are off by less than half a picture do not matter.
    if (!isLost) recording.Picture(slot * kPicture + ((slot + 1) % 3 - 1) * 120000);
    expected.push_back(isLost ? -1 : number++);
  }
  while (expected.back() < 0) expected.pop_back();
  EXPECT_EQ(recording.recorder.Lost(), std::count(expected.begin(), expected.end(), -1));
  EXPECT_EQ(recording.recorder.Pictures(), static_cast<std::int64_t>(recording.number));
  const MediaTime length = recording.recorder.Length();
  EXPECT_EQ(recording.Pictures(), expected);
  EXPECT_NEAR(static_cast<double>(length), static_cast<double>(expected.size()) * kPicture, 100);
}

TEST(AviRecorderTest, LostSoundIsSilence) {
  Recording recording;
  recording.Picture(0);
  MediaTime at = 0;
  for (int i = 0; i < 40; ++i, at += kSecond / 20) {
    const MediaTime jitter = (i % 2) * 15 * kMillisecond;
    if (i < 10 || i > 20) recording.Sound(at + jitter);
  }
  recording.Pictures();
  EXPECT_EQ(std::count(recording.heard.begin(), recording.heard.end(), 0) / 4, 11 * 2400 + 720);
  EXPECT_NEAR(recording.Seconds(1), 2.015, 0.001);
}

TEST(AviRecorderTest, APauseIsNotInTheMovie) {
  Recording recording;
  recording.Run(0, 2 * kSecond);
  recording.Run(100 * kSecond, 102 * kSecond);
  const std::vector<int> pictures = recording.Pictures();
  EXPECT_NEAR(static_cast<double>(pictures.size()), 120, 3);
  EXPECT_LE(std::count(pictures.begin(), pictures.end(), -1), 2);
  EXPECT_NEAR(recording.Seconds(1), 4, 0.12);
  EXPECT_NEAR(recording.Seconds(0), recording.Seconds(1), 0.06);
}

TEST(AviRecorderTest, SamplesTellHowLongAPictureIs) {
  for (const MediaTime length : {MediaTime{666667}, MediaTime{1}, MediaTime{-5}, 30 * kSecond}) {
    Recording recording;
    recording.Picture(0, length);
    recording.Sound(0);
    recording.Pictures();
    EXPECT_EQ(recording.rates[0], length == 666667 ? (UnitRate{15, 1}) : TestPictures().rate) << length;
  }
}

// Ten minutes of sources whose clocks are off: what is seen and heard together came together.
TEST(AviRecorderTest, TheOthersFollowTheMaster) {
  struct Case {
    int master;
    double soundSpeed;
    double pictureSpeed;
    bool follows;
  };
  for (const Case& each :
       {Case{-1, 1, 1, true}, Case{0, 1, 1, true}, Case{1, 1, 1, true}, Case{1, 1.0005, 1, true},
        Case{0, 1.0005, 1, true}, Case{0, 0.9995, 1, true}, Case{1, 0.9995, 1.0003, true},
        Case{0, 1, 1.0005, true}, Case{1, 1, 0.9995, true}, Case{-1, 1.0005, 1, false}}) {
    AviMovie movie = TestMovie();
    movie.streams[1].rate.rate = 8000;
    movie.streams[1].unitBytes = 1;
    Recording recording(each.master, movie);
    constexpr int kSeconds = 600;
    std::int64_t sounds = 0;
    const auto soundTime = [&] {
      return static_cast<MediaTime>(std::llround(static_cast<double>(sounds) * 500000 / each.soundSpeed));
    };
    for (int i = 0;; ++i) {
      const auto time =
          static_cast<MediaTime>(std::llround(i * (kSecond * 1001.0 / 30000) / each.pictureSpeed));
      if (time > kSeconds * kSecond) break;
      for (; soundTime() <= time; ++sounds) recording.Sound(soundTime(), 400);
      recording.Picture(time);
    }
    const std::vector<int> pictures = recording.Pictures();
    const double apart = recording.Seconds(0) - recording.Seconds(1);
    EXPECT_EQ(std::abs(apart) < 0.1, each.follows) << each.master << ' ' << each.soundSpeed << ": " << apart;
    if (each.soundSpeed == 1 && each.pictureSpeed == 1) {
      EXPECT_LT(std::abs(apart), 0.06) << "no more than a piece of sound";
      EXPECT_EQ(recording.rates[0], (UnitRate{30000, 1001}));
      EXPECT_EQ(recording.rates[1], (UnitRate{8000, 1}));
      EXPECT_EQ(std::count(pictures.begin(), pictures.end(), -1), 0);
    }
    if (each.master >= 0) {
      const auto master = static_cast<std::size_t>(each.master);
      EXPECT_EQ(recording.rates[master], movie.streams[master].rate) << "the master keeps its rate";
    }
  }
}

TEST(AviRecorderTest, ImpossibleTimesDoNoHarm) {
  Recording recording;
  constexpr MediaTime kMost = std::numeric_limits<MediaTime>::max();
  recording.Picture(0);
  EXPECT_EQ(recording.recorder.Take(0, SampleTime{kMost - 5, kMost}, Numbered(1, 16), true),
            FileResult::kDone);
  EXPECT_EQ(recording.recorder.Take(0, SampleTime{-kMost, kMost}, Numbered(2, 16), true), FileResult::kDone);
  EXPECT_EQ(recording.recorder.Take(1, SampleTime{-kMost, -kMost}, Bytes(400, 1), true), FileResult::kDone);
  EXPECT_EQ(recording.recorder.Take(0, std::nullopt, Numbered(3, 16), true), FileResult::kDone);
  EXPECT_EQ(recording.Pictures(), (std::vector{0, 1, 2, 3}));
}

// A file that fails once, at one of its calls.
class FailingFile final : public MemoryFile {
 public:
  explicit FailingFile(int callsBefore) : left(callsBefore) {}
  FileResult Write(std::uint64_t place, ByteView data, std::size_t& written) override {
    written = 0;
    return left-- == 0 ? FileResult::kFailed : MemoryFile::Write(place, data, written);
  }
  FileResult Resize(std::uint64_t size) override {
    return left-- == 0 ? FileResult::kFailed : MemoryFile::Resize(size);
  }
  [[nodiscard]] bool HasFailed() const { return left < 0; }

 private:
  int left;
};

// Records sound before the first picture, gaps, silence, samples without times and more than one part;
// whether anything went wrong, as its callers are told.
bool TellsOfAnError(FailingFile& file, AviMovie movie) {
  movie.partBytes = 30000;
  const std::size_t count = movie.streams.size();
  AviRecorder recorder(file, std::move(movie), 0,
                       std::vector<std::optional<std::uint8_t>>(count, std::uint8_t{0}));
  bool told = recorder.Begin() != FileResult::kDone;
  const auto take = [&](std::size_t stream, std::optional<SampleTime> time, std::size_t bytes) {
    told = recorder.Take(stream, time, Bytes(bytes, 0x11), true) != FileResult::kDone || told;
  };
  const std::size_t sound = count - 1;
  for (int i = 0; i < 3; ++i) take(sound, SampleTime{i * kSecond / 50, (i + 1) * kSecond / 50}, 3840);
  if (count > 1) {
    take(0, SampleTime{kSecond / 30, kSecond / 15}, 500);
    take(0, SampleTime{kSecond / 5, kSecond * 7 / 30}, 500);
    take(0, std::nullopt, 501);
  }
  take(sound, SampleTime{2 * kSecond, 2 * kSecond + kSecond / 50}, 3840);
  take(sound, std::nullopt, 3840);
  return recorder.Finish() != FileResult::kDone || told;
}

TEST(AviRecorderTest, NoErrorOfTheFileIsSwallowed) {
  AviMovie onlySound = TestMovie();
  onlySound.streams.erase(onlySound.streams.begin());
  for (const AviMovie& movie : {TestMovie(), onlySound}) {
    for (int before = 0;; ++before) {
      FailingFile file(before);
      const bool told = TellsOfAnError(file, movie);
      EXPECT_EQ(told, file.HasFailed()) << movie.streams.size() << " streams, call " << before;
      if (!file.HasFailed()) break;
    }
  }
}

}  // namespace
}  // namespace quorvex
