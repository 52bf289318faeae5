// Discs that are none, or damaged: an answer or what can be played of them, never a crash, and no waiting.
#include <gtest/gtest.h>

#include <dvdevcod.h>
#include <evcode.h>
#include <vfwmsgs.h>

#include "tests/support/com_test.h"
#include "tests/support/dvd_graph.h"
#include "tests/support/virtual_drive.h"

namespace quorvex {
namespace {

constexpr ULONGLONG kPatienceMs = 5000;

class DvdDamageTest : public ComTest, public testing::WithParamInterface<const char*> {};

const char* const kDamaged[] = {
    "copies_only",       "cut.iso",    "ifo_and_copy_cut", "ifo_cut",        "ifo_swapped",
    "ifo_tables_zeroed", "ifo_zeroed", "manager_cut",      "manager_zeroed", "manager_tables_zeroed",
    "no_copies",         "vob_cut",    "vob_empty",        "vob_missing",    "vob_zeroed"};

INSTANTIATE_TEST_SUITE_P(Discs, DvdDamageTest, testing::ValuesIn(kDamaged), [](const auto& given) {
  std::string name = given.param;
  std::replace(name.begin(), name.end(), '.', '_');
  return name;
});

TEST_P(DvdDamageTest, EndsWell) {
  DvdGraph dvd;
  HRESULT opened = E_FAIL;
  EXPECT_LE(Milliseconds([&] { opened = dvd.Open("damaged/" + std::string(GetParam())); }), kPatienceMs);
  if (FAILED(opened)) {
    EXPECT_EQ(opened, VFW_E_DVD_INVALID_DISC);
    EXPECT_TRUE(dvd.status.bDvdVolInvalid);
  } else {
    OAFilterState state = State_Stopped;
    dvd.mediaControl->Pause();
    EXPECT_EQ(dvd.mediaControl->GetState(kPatienceMs, &state), S_OK) << "a picture, or a black one";
    ASSERT_HRESULT_SUCCEEDED(dvd.Run());
    dvd.Wait(1500);
    EXPECT_LE(Milliseconds([&] { dvd.control->ChapterSearch(2); }), 200U);
    EXPECT_LE(Milliseconds([&] { dvd.control->TitlePlay(3); }), 200U);
    dvd.Wait(1000);
    EXPECT_LE(Milliseconds([&] { dvd.mediaControl->Stop(); }), kPatienceMs);
  }
  EXPECT_EQ(dvd.Release(), 0U);
}

// What was opened gets shorter: as when a disc cannot be read from somewhere on.
TEST_F(DvdDamageTest, AFilmThatBreaksOffWhileItPlaysEnds) {
  const TempFolder folder;
  const std::filesystem::path copy = folder.Path("disc");
  std::filesystem::copy(DiscPath("chapters"), copy, std::filesystem::copy_options::recursive);
  const std::filesystem::path film = copy / "VIDEO_TS" / "VTS_01_1.VOB";
  DvdGraph dvd;
  ASSERT_EQ(dvd.builder->RenderDvdVideoVolume(copy.wstring().c_str(), 1, &dvd.status), S_OK);
  dvd.builder->GetDvdInterface(__uuidof(IDvdControl), dvd.control.ReceiveVoid());
  ASSERT_HRESULT_SUCCEEDED(dvd.Run());
  ASSERT_TRUE(dvd.Shows(1, 1));
  std::filesystem::resize_file(film, std::filesystem::file_size(film) / 5);
  EXPECT_LE(Milliseconds([&] { dvd.control->ChapterSearch(20); }), 200U);
  EXPECT_TRUE(dvd.Tells(EC_DVD_PLAYBACK_STOPPED, std::nullopt, 10000));
  EXPECT_TRUE(dvd.Tells(EC_COMPLETE, std::nullopt, 10000));
  EXPECT_LE(Milliseconds([&] { dvd.mediaControl->Stop(); }), kPatienceMs);
}

TEST_F(DvdDamageTest, WhatIsNoDvdIsToldApart) {
  for (const char* name :
       {"damaged/data", "damaged/data.iso", "damaged/empty", "damaged/text.iso", "nowhere.iso"}) {
    DvdGraph dvd;
    EXPECT_EQ(dvd.Open(name), VFW_E_DVD_RENDERFAIL) << name;
    EXPECT_TRUE(dvd.status.bDvdVolInvalid) << name;
    EXPECT_FALSE(dvd.status.bDvdVolUnknown) << name;
    ComPtr<IDvdControl> control;
    EXPECT_EQ(dvd.builder->GetDvdInterface(__uuidof(IDvdControl), control.ReceiveVoid()),
              VFW_E_DVD_GRAPHNOTREADY);
  }
}

TEST_F(DvdDamageTest, ADriveWithoutADvdHasNoVolume) {
  VirtualDrive drive;
  const auto opens = [] {
    DvdGraph dvd;
    const HRESULT result = dvd.Open("");
    EXPECT_EQ(dvd.status.bDvdVolUnknown != FALSE, result == S_FALSE);
    EXPECT_FALSE(dvd.status.bDvdVolInvalid);
    return result;
  };
  EXPECT_EQ(opens(), S_FALSE) << "no disc";
  drive.Insert({10, 10});
  EXPECT_EQ(opens(), S_FALSE) << "an audio disc";
  drive.InsertImage(std::filesystem::path(DiscPath("damaged/data.iso")).string());
  EXPECT_EQ(opens(), S_FALSE) << "a data disc";
  drive.InsertImage(std::filesystem::path(DiscPath("chapters")).string());
  EXPECT_EQ(opens(), S_OK);
  drive.InsertImage(std::filesystem::path(DiscPath("chapters/VIDEO_TS")).string());
  EXPECT_EQ(opens(), S_OK) << "the folder itself";
}

// Marks every packet of the video file as scrambled, as on a protected disc.
TEST_F(DvdDamageTest, AScrambledDiscIsRecognised) {
  const TempFolder folder;
  const std::filesystem::path copy = folder.Path("disc");
  std::filesystem::copy(DiscPath("chapters"), copy, std::filesystem::copy_options::recursive);
  const std::filesystem::path film = copy / "VIDEO_TS" / "VTS_01_1.VOB";
  std::fstream file(film, std::ios::in | std::ios::out | std::ios::binary);
  const auto sectors = static_cast<int>(std::filesystem::file_size(film) / 2048);
  for (int sector = 0; sector < sectors; ++sector) {
    constexpr int kPackHeader = 14;
    file.seekg(static_cast<std::streamoff>(sector) * 2048 + kPackHeader);
    char packet[7] = {};
    file.read(packet, sizeof packet);
    if (static_cast<unsigned char>(packet[3]) == 0xBB) continue;  // where navigation is, in the clear
    packet[6] = static_cast<char>(packet[6] | 0x10);
    file.seekp(static_cast<std::streamoff>(sector) * 2048 + kPackHeader);
    file.write(packet, sizeof packet);
  }
  file.close();
  DvdGraph dvd;
  const HRESULT result = dvd.builder->RenderDvdVideoVolume(copy.wstring().c_str(), 1, &dvd.status);
  EXPECT_TRUE(FAILED(result));
  EXPECT_EQ(dvd.status.hrVPEStatus, result);
  EXPECT_EQ(dvd.status.iNumStreams, 3);
  EXPECT_EQ(dvd.status.iNumStreamsFailed, 3);
  EXPECT_EQ(dvd.status.dwFailedStreamsFlag, 7U);
}

}  // namespace
}  // namespace quorvex
