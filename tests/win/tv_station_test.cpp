// Stations of the virtual TV card that send a media file (tests/support/make_media.py tells what is in them).
#include <gtest/gtest.h>
#include <windows.h>

#include <dshow.h>

#include <cmath>

#include "platform/tv/capture_type.h"
#include "platform/tv/station_pictures.h"
#include "tests/support/card_graph.h"
#include "tests/support/com_test.h"
#include "tests/support/pump.h"

namespace quorvex {
namespace {

constexpr int kPictures = 100;  // of a file
constexpr MediaTime kPictureTime = kSecond / 25;
constexpr int kNoSignal = 255;

std::string Station(int channel, const std::string& file) {
  return "antenna " + std::to_string(channel) + " FILM | " + file + "\r\n";
}
std::string TestFile(const std::string& name) { return std::string(QUORVEX_TEST_MEDIA) + '\\' + name; }

// The number that a picture of a test file shows, whatever its size.
int NumberOf(const PictureView& view) {
  constexpr int kStripes = 12;
  int number = 0;
  const std::uint8_t* line = view.top + view.height * 3 / 4 * view.stride;
  for (int stripe = 0; stripe < kStripes; ++stripe)
    number |= (line[(2 * stripe + 1) * view.width / (2 * kStripes) * 4] > 125 ? 1 : 0) << stripe;
  return number;
}

struct Shown {
  int number;
  MediaTime air;    // when it came
  MediaTime begin;  // of the stream
};

// A card whose pictures are read as those of a test file.
class FileGraph : public CardGraph {
 public:
  HRESULT WatchFile(const GUID& category) {
    const HRESULT result = Watch(category);
    pictures->atSample = [this](IMediaSample& sample, const MediaType& type) {
      Size at;
      std::vector<std::uint8_t> pixels = Pixels(sample, type, at);
      REFERENCE_TIME begin = 0;
      REFERENCE_TIME end = 0;
      sample.GetTime(&begin, &end);
      const int number = NumberOf({pixels.data(), at.width * std::ptrdiff_t{4}, at.width, at.height});
      const std::scoped_lock guard(shownLock);
      shown.push_back({number, AirTime(), begin});
    };
    return result;
  }
  std::vector<Shown> All() {
    const std::scoped_lock guard(shownLock);
    return shown;
  }

 private:
  std::mutex shownLock;
  std::vector<Shown> shown;
};

using TvStationTest = ComTest;

// The places of two pictures in the loop, and the time between them, are the same but for some pictures: the
// file is 4 s long, and sound may make it a little longer.
void ExpectInTime(const Shown& first, const Shown& second) {
  const MediaTime loop = kPictures * kPictureTime;
  MediaTime off = (second.begin - first.begin - (second.number - first.number) * kPictureTime) % loop;
  if (off < 0) off += loop;
  EXPECT_LT(std::min(off, loop - off), 8 * kPictureTime) << first.number << ' ' << second.number;
}

TEST_F(TvStationTest, AFileIsShownInALoopInEveryFormat) {
  const PluggedCards cards;
  cards->channel = 9;
  struct Case {
    const char* file;
    GUID pin;
    CaptureFormat format;
  };
  const CaptureFormat plain{.size = {320, 240}, .frameTime = kPictureTime};
  for (const auto& [file, pin, format] :
       {Case{"mpeg4_mp3.avi", PIN_CATEGORY_CAPTURE, plain}, Case{"h264_aac.mp4", PIN_CATEGORY_PREVIEW, plain},
        Case{"mjpeg_pcm.mov", PIN_CATEGORY_CAPTURE, {PixelLayout::kYuy2, {176, 144}, kSecond / 15}},
        Case{"picture_only.avi", PIN_CATEGORY_CAPTURE, {PixelLayout::kRgb24, {720, 576}, kSecond / 30}}}) {
    const StationList list(Station(9, TestFile(file)));
    FileGraph graph;
    MediaType type = TypeOf(format);
    ASSERT_EQ(graph.Pin(PIN_CATEGORY_CAPTURE)
                  .As<IAMStreamConfig>()
                  ->SetFormat(const_cast<AM_MEDIA_TYPE*>(&type.Get())),
              S_OK);
    ASSERT_EQ(graph.WatchFile(pin), S_OK);
    graph.Run();
    // Until the loop has begun again and gone on.
    const auto hasBegunAgain = [&] {
      const std::vector<Shown> all = graph.All();
      const auto wrap = std::adjacent_find(all.begin(), all.end(), [](const Shown& one, const Shown& next) {
        return next.number < one.number && next.number < kPictures / 2;
      });
      return all.end() - wrap > 20;
    };
    EXPECT_TRUE(PumpUntil(hasBegunAgain, 15000)) << file;
    graph.control->Stop();
    const std::vector<Shown> all = graph.All();
    ASSERT_GT(all.size(), 20U) << file;
    for (const Shown& one : all) EXPECT_LT(one.number, kPictures) << file;
    // The first may be behind, while the decoder catches up.
    for (std::size_t i = 10; i + 1 < all.size(); ++i) ExpectInTime(all[i], all.back());
  }
}

TEST_F(TvStationTest, AFileThatCannotBeSentIsSnow) {
  const PluggedCards cards;
  const std::string notes = std::string(QUORVEX_TEST_MEDIA) + "\\made";
  const StationList list("antenna 4 NAME\r\n" + Station(5, "Z:\\none\\none.avi") + Station(6, notes) +
                         Station(7, TestFile("sound.mp3")) + Station(8, TestFile("slides.mkv")) +
                         Station(9, ""));
  CardGraph graph;
  const auto tuner = graph.card.As<IAMTVTuner>();
  ASSERT_EQ(graph.Watch(PIN_CATEGORY_PREVIEW), S_OK);
  graph.Run();
  for (const int channel : {5, 6, 7}) {
    LONG signal = -1;
    EXPECT_EQ(tuner->AutoTune(channel, &signal), S_OK);
    EXPECT_EQ(signal, AMTUNER_NOSIGNAL) << channel;
    EXPECT_GE(graph.WaitFor([=](const SeenPicture& one) {
      return one.marks && one.marks->film == channel && one.marks->chapter == kNoSignal;
    }),
              0)
        << channel;
  }
  for (const int channel : {4, 8, 9}) {
    LONG signal = -1;
    EXPECT_EQ(tuner->AutoTune(channel, &signal), S_OK);
    EXPECT_EQ(signal, AMTUNER_SIGNALPRESENT) << channel;
  }
  EXPECT_GE(graph.WaitForChannel(9), 0) << "without a file it is a test picture";
}

// What the decoder cannot read is passed over, and a time that goes on seeks nothing.
TEST_F(TvStationTest, APlaceIsFoundWhereverOneBegins) {
  StationPictures pictures;
  std::vector<std::uint8_t> pixels(192 * 144 * 4);
  const PictureView view{pixels.data(), 192 * 4, 192, 144};
  const std::string file = TestFile("h264_vorbis.mkv");
  for (const int second : {0, 3, 2, 1, 9}) {
    // It may take some pictures' time until it is there.
    const bool there = PumpUntil([&] {
      EXPECT_TRUE(pictures.Show(file, second * kSecond + kPictureTime / 2, view));
      return std::abs(NumberOf(view) % kPictures - second % 4 * 25) <= 8;
    });
    EXPECT_TRUE(there) << second << ": " << NumberOf(view);
  }
  EXPECT_FALSE(pictures.Show(TestFile("sound.mp3"), kSecond, view));
  EXPECT_TRUE(pictures.Show(file, kSecond, view)) << "another file, and this one again";
}

}  // namespace
}  // namespace quorvex
