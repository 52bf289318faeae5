#include "platform/cd/nrg_trailer.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "platform/cd/open_image.h"
#include "tests/unit/sheet_support.h"

namespace quorvex {
namespace {

const std::string kHead(22, '\0');  // of a table of a disc written in one go

std::string Plan(const std::string& trailer, std::int64_t fileBytes = 10'000'000) {
  return Described(PlanNrgTrailer(trailer, "x.nrg", FilesOf({{"x.nrg", fileBytes}})));
}

TEST(NrgTrailer, ADiscWrittenInOneGo) {
  // The first track's two seconds of pause lie before the disc's beginning, a longer one's rest does not.
  EXPECT_EQ(Plan(NrgChunk("CUEX", "ignored") +
                 NrgChunk("DAOX", kHead + NrgRow(7, 2352, 0, 150, 400) + NrgRow(7, 2352, 400, 475, 500)) +
                 NrgChunk("END!", "") + "behind the end"),
            "1a@0+325 2a@325+25 | 0:250<x.nrg@352800 250:75<x.nrg@940800 325:25<x.nrg@1117200 | 350");
  EXPECT_EQ(Plan(NrgChunk("DAOI", kHead + NrgRow(7, 2352, 0, 160, 200, 4))),
            "1a@10+40 | 0:10<x.nrg@352800 10:40<x.nrg@376320 | 50");
  EXPECT_EQ(Plan(NrgChunk("DAOX", kHead + NrgRow(0, 2048, 0, 0, 100)) +
                 NrgChunk("DAOX", kHead + NrgRow(0x10, 2448, 100, 100, 110))),
            "1d@0+100 2a@100+10 | 0:100<x.nrg@0 100:10<x.nrg@244800 | 110")
      << "two sessions, the second with sub-channels";
}

TEST(NrgTrailer, ADiscWrittenTrackByTrack) {
  const auto row = [](std::uint64_t offset, std::uint64_t bytes, std::uint64_t mode, int offsetBytes) {
    return BigEndianText(offset, offsetBytes) + BigEndianText(bytes, offsetBytes) + BigEndianText(mode, 4) +
           BigEndianText(0, 4) + BigEndianText(0, offsetBytes);
  };
  const std::string expected = "1d@0+160 2a@160+20 | 0:10<x.nrg@0 10:150<silence 160:20<x.nrg@20480 | 180";
  EXPECT_EQ(Plan(NrgChunk("ETNF", row(0, 20480, 0, 4) + row(20480, 47040, 7, 4))), expected);
  EXPECT_EQ(Plan(NrgChunk("ETN2", row(0, 20480, 0, 8) + row(20480, 47040, 7, 8))), expected);
}

TEST(NrgTrailer, RefusesWhatMakesNoSense) {
  const std::string nonsense = "its table of tracks makes no sense";
  EXPECT_EQ(Plan(""), "it has no tracks");
  EXPECT_EQ(Plan("DAOX" + BigEndianText(90, 4) + kHead), "its trailer is cut short");
  EXPECT_EQ(Plan(NrgChunk("DAOX", "short")), nonsense);
  EXPECT_EQ(Plan(NrgChunk("DAOX", kHead + NrgRow(7, 2352, 0, 150, 400)), 400 * 2352 - 1), nonsense)
      << "file too short";
  EXPECT_EQ(Plan(NrgChunk("DAOX", kHead + NrgRow(7, 2352, 151, 150, 400))), nonsense);
  EXPECT_EQ(Plan(NrgChunk("DAOX", kHead + NrgRow(7, 2352, 0, 401, 400))), nonsense);
  EXPECT_EQ(Plan(NrgChunk("DAOX", kHead + NrgRow(9, 2352, 0, 150, 400))), nonsense)
      << "unknown kind of track";
}

class OpenImageTest : public testing::Test {
 protected:
  OpenImageTest() { std::filesystem::create_directories(folder); }
  ~OpenImageTest() override { std::filesystem::remove_all(folder); }

  // What kind of disc is found in a file of that name: "3 tracks, audio first, 120 frames", or the complaint.
  std::string Found(const std::string& name) const {
    const OpenedImage opened = OpenDiscImage((folder / name).string());
    if (const auto* error = std::get_if<DiscError>(&opened)) return error->text;
    const DiscImage& image = *std::get<std::unique_ptr<DiscImage>>(opened);
    return std::to_string(image.Tracks().size()) + (image.Tracks().front().audio ? " audio " : " data ") +
           std::to_string(image.LeadOut());
  }
  void Write(const std::string& name, const std::string& bytes) const {
    std::ofstream(folder / name, std::ios::binary) << bytes;
  }

  std::filesystem::path folder =
      std::filesystem::temp_directory_path() / ("quorvex-open-" + std::to_string(::getpid()));
};

TEST_F(OpenImageTest, ANeroImageIsReadSectorBySector) {
  std::string image(200 * 2352, '\0');
  for (std::size_t frame = 0; frame < 200; ++frame) image[frame * 2352] = static_cast<char>(frame);
  const std::string trailer =
      NrgChunk("DAOX", kHead + NrgRow(7, 2352, 0, 150, 180) + NrgRow(7, 2352, 180, 180, 200)) +
      NrgChunk("END!", "");
  Write("new.NRG", image + trailer + "NER5" + BigEndianText(image.size(), 8));
  Write("old.nrg", image + trailer + "NERO" + BigEndianText(image.size(), 4));
  EXPECT_EQ(Found("old.nrg"), "2 audio 50");
  const OpenedImage opened = OpenDiscImage((folder / "new.NRG").string());
  std::vector<std::byte> sound(2 * kAudioSectorBytes);
  ASSERT_TRUE(std::get<std::unique_ptr<DiscImage>>(opened)->ReadSound(29, sound));
  EXPECT_EQ(sound[0], std::byte{179});
  EXPECT_EQ(sound[kAudioSectorBytes], std::byte{180});

  Write("none.nrg", image);
  Write("tiny.nrg", "NERO");
  Write("lost.nrg", image + "NER5" + BigEndianText(std::uint64_t{1} << 63, 8));
  for (const char* name : {"none.nrg", "tiny.nrg", "lost.nrg"})
    EXPECT_EQ(Found(name), "it is no Nero image") << name;
}

TEST_F(OpenImageTest, WhatIsNoDiscIsTold) {
  Write("empty.iso", std::string(40 * 2048, '\0'));
  EXPECT_EQ(Found("empty.iso"), "it is no disc image (CUE, TOC, NRG and ISO files are)");
  EXPECT_EQ(Found("."), "it is a folder without a DVD's VIDEO_TS");
  EXPECT_EQ(Found("nothing.iso"), "there is no such file");
}

TEST_F(OpenImageTest, ARawFileIsReadByTheSheetBesideIt) {
  Write("disc.bin", std::string(75 * 2352, '\0'));
  Write("disc.cue", "FILE disc.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\n");
  EXPECT_EQ(Found("disc.bin"), "1 audio 75");
  std::filesystem::remove(folder / "disc.cue");
  EXPECT_EQ(Found("disc.bin"), "it is no disc image (CUE, TOC, NRG and ISO files are)");
}

}  // namespace
}  // namespace quorvex
