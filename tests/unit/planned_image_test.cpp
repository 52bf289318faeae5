#include "platform/cd/planned_image.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "platform/cd/drive_state.h"
#include "platform/cd/open_image.h"
#include "platform/cd/video_disc.h"

namespace quorvex {
namespace {

namespace fs = std::filesystem;

class PlannedImageTest : public testing::Test {
 protected:
  PlannedImageTest() { fs::create_directories(folder); }
  ~PlannedImageTest() override { fs::remove_all(folder); }

  fs::path Write(const fs::path& name, const std::string& bytes) const {
    std::ofstream(folder / name, std::ios::binary) << bytes;
    return folder / name;
  }

  // Sectors that hold their number in every sample: left the number, right its negative.
  static std::string Sectors(int first, int count) {
    std::string bytes;
    for (int sector = first; sector < first + count; ++sector) {
      for (int sample = 0; sample < 588; ++sample) {
        for (const int value : {sector, -sector}) {
          bytes += static_cast<char>(value & 0xFF);
          bytes += static_cast<char>(value >> 8 & 0xFF);
        }
      }
    }
    return bytes;
  }

  static std::string Swapped(std::string bytes) {
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) std::swap(bytes[i], bytes[i + 1]);
    return bytes;
  }

  static std::string Number(std::uint32_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> (8 * i) & 0xFFU);
    return text;
  }

  static std::string Wave(const std::string& sound, std::uint32_t rate = 44100) {
    return "RIFF" + Number(0, 4) + "WAVE" + "LIST" + Number(3, 4) + "abc\0" + std::string(1, '\0') + "fmt " +
           Number(16, 4) + Number(1, 2) + Number(2, 2) + Number(rate, 4) + Number(rate * 4, 4) +
           Number(4, 2) + Number(16, 2) + "data" + Number(static_cast<std::uint32_t>(sound.size()), 4) +
           sound;
  }

  // The number that a frame's first sample holds; -1 where it cannot be read.
  static int SampleAt(DiscImage& image, int frame, std::size_t sample = 0) {
    std::vector<std::byte> sound(kAudioSectorBytes);
    if (!image.ReadSound(frame, sound)) return -1;
    return std::to_integer<int>(sound[sample * 4]) | std::to_integer<int>(sound[sample * 4 + 1]) << 8;
  }

  static std::string ErrorOf(const OpenedImage& image) {
    const auto* error = std::get_if<DiscError>(&image);
    return error != nullptr ? error->text : "";
  }

  fs::path folder = fs::temp_directory_path() / ("quorvex-image-" + std::to_string(::getpid()));
};

TEST_F(PlannedImageTest, EverySectorComesFromItsPlace) {
  Write("one.bin", Sectors(1, 100));
  Write("two.bin", Swapped(Sectors(101, 100)));
  Write("three.wav", Wave(Sectors(201, 50)));
  const OpenedImage opened = OpenCueImage(Write("disc.cue",
                                                "FILE one.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\n"
                                                "TRACK 02 AUDIO\nPREGAP 00:00:10\nINDEX 01 00:00:50\n"
                                                "FILE two.bin MOTOROLA\nTRACK 03 AUDIO\nINDEX 01 00:00:00\n"
                                                "FILE three.wav WAVE\nTRACK 04 AUDIO\nINDEX 01 00:00:00\n"));
  ASSERT_EQ(ErrorOf(opened), "");
  DiscImage& image = *std::get<std::unique_ptr<DiscImage>>(opened);
  EXPECT_EQ(image.LeadOut(), 260);
  const std::pair<int, int> samples[] = {{0, 1},     {49, 50},   {50, 0},    {59, 0},    {60, 51},
                                         {109, 100}, {110, 101}, {209, 200}, {210, 201}, {259, 250}};
  for (const auto& [frame, value] : samples) EXPECT_EQ(SampleAt(image, frame, 587), value) << frame;
  EXPECT_EQ(SampleAt(image, 260), -1);
  EXPECT_EQ(SampleAt(image, -1), -1);

  std::vector<std::byte> across(4 * kAudioSectorBytes);
  ASSERT_TRUE(image.ReadSound(48, across)) << "one read may cross stretches";
  EXPECT_EQ(across[kAudioSectorBytes], std::byte{50});
  EXPECT_EQ(across[2 * kAudioSectorBytes], std::byte{0});
}

TEST_F(PlannedImageTest, AnIncompleteLastSectorEndsInSilence) {
  Write("short.bin", Sectors(1, 2).substr(0, kAudioSectorBytes + 400));
  const OpenedImage opened =
      OpenCueImage(Write("s.cue", "FILE short.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\n"));
  DiscImage& image = *std::get<std::unique_ptr<DiscImage>>(opened);
  EXPECT_EQ(image.LeadOut(), 2);
  EXPECT_EQ(SampleAt(image, 1, 99), 2);
  EXPECT_EQ(SampleAt(image, 1, 100), 0);
}

TEST_F(PlannedImageTest, AFileThatShrinksWhileThePlayerHasItFailsToRead) {
  const fs::path sound = Write("gone.bin", Sectors(1, 10));
  const OpenedImage opened =
      OpenCueImage(Write("g.cue", "FILE gone.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\n"));
  DiscImage& image = *std::get<std::unique_ptr<DiscImage>>(opened);
  fs::resize_file(sound, 3 * kAudioSectorBytes);
  EXPECT_EQ(SampleAt(image, 5), -1);
  EXPECT_EQ(SampleAt(image, 2), 3) << "and goes on where there still is something";
}

TEST_F(PlannedImageTest, NamesInAnyScriptAndInOldCodePages) {
  Write(fs::path(u8"\u0434\u0438\u0441\u043A.bin"), Sectors(1, 1));
  Write(fs::path(u8"caf\u00E9.bin"), Sectors(2, 1));
  EXPECT_EQ(
      ErrorOf(OpenCueImage(Write(
          "u.cue",
          "FILE \"\xD0\xB4\xD0\xB8\xD1\x81\xD0\xBA.bin\" BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\n"))),
      "");
  EXPECT_EQ(ErrorOf(OpenCueImage(
                Write("l.cue", "FILE \"caf\xE9.bin\" BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\n"))),
            "");
}

// A DVD lies in the drive as an image or as a folder, with or without the folder VIDEO_TS.
TEST_F(PlannedImageTest, DiscsThatHoldVideoAreKnown) {
  const auto made = [&](const std::string& name) {
    fs::create_directories((folder / name).parent_path());
    std::ofstream(folder / name) << "table";
    return folder / name;
  };
  made("a/VIDEO_TS/VIDEO_TS.IFO");
  made("b/video_ts/video_ts.bup");
  made("c/VIDEO_TS/VTS_01_1.VOB");
  made("d/readme.txt");
  const std::string header(std::size_t{16} * 2048, '\0');
  const fs::path film = Write("film.iso", header + "\1CD001" + std::string(3000, ' ') + "VIDEO_TS.IFO;1");
  const fs::path data = Write("data.iso", header + std::string(1, '\0') + "BEA01");
  const struct {
    fs::path path;
    bool isDisc;
    bool holdsVideo;
  } cases[] = {{folder / "a", true, true},
               {folder / "a/", true, true},
               {folder / "a" / "VIDEO_TS", true, true},
               {folder / "b", true, true},
               {folder / "c", true, false},
               {folder / "d", false, false},
               {film, true, true},
               {data, true, false},
               {Write("no.iso", header + "\1CD002"), false, false},
               {Write("short.iso", ""), false, false},
               {folder / "nothing.iso", false, false}};
  for (const auto& [path, isDisc, holdsVideo] : cases) {
    EXPECT_EQ(HoldsVideoDisc(path), holdsVideo) << path;
    EXPECT_EQ(ErrorOf(OpenDiscImage(path.string())).empty(), isDisc) << path;
  }
}

TEST_F(PlannedImageTest, ADvdIsNoLongerThanTheTimesOfADisc) {
  const fs::path film = Write("long.iso", std::string(std::size_t{16} * 2048, '\0') + "\1CD001");
  fs::resize_file(film, std::uintmax_t{4} << 30U);
  OpenedImage image = OpenDiscImage(film.string());
  const auto* disc = std::get_if<std::unique_ptr<DiscImage>>(&image);
  ASSERT_NE(disc, nullptr);
  DriveState drive;
  drive.Seek((*disc)->LeadOut(), false);
  EXPECT_TRUE(drive.IsValid()) << "who seeks to its end leaves a sound record of the drive";
}

TEST_F(PlannedImageTest, RefusesWhatItCannotPlay) {
  Write("fast.wav", Wave(Sectors(1, 1), 48000));
  Write("text.wav", "not a wave file at all");
  const std::string track = "TRACK 01 AUDIO\nINDEX 01 00:00:00\n";
  EXPECT_EQ(ErrorOf(OpenCueImage(Write("f.cue", "FILE fast.wav WAVE\n" + track))),
            "line 1: the file fast.wav is no WAV file of CD sound (16 bit, stereo, 44100 Hz)");
  EXPECT_EQ(ErrorOf(OpenCueImage(Write("t.cue", "FILE text.wav WAVE\n" + track))),
            "line 1: the file text.wav is no WAV file of CD sound (16 bit, stereo, 44100 Hz)");
  EXPECT_EQ(ErrorOf(OpenTocImage(Write("m.toc", "TRACK AUDIO\nFILE \"missing.bin\" 0\n"))),
            "line 2: the file missing.bin cannot be read");
  EXPECT_EQ(ErrorOf(OpenCueImage(folder / "none.cue")), "it cannot be read");
  EXPECT_EQ(ErrorOf(OpenCueImage(Write("big.cue", std::string((1 << 20) + 1, 'x')))), "it is no text file");
}

}  // namespace
}  // namespace quorvex
