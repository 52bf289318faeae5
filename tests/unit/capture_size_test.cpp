// The room of a capture file: what the dialog proposes and takes, and the paths it asks about.
#include "devices/tv/capture_size.h"

#include <gtest/gtest.h>

namespace quorvex {
namespace {

TEST(CaptureSize, TheProposalFollowsTheDisk) {
  struct Case {
    std::optional<std::int64_t> freeKb;
    int megabytes;
    std::optional<int> free;
  };
  constexpr std::int64_t kGigabyte = 1024 * 1024;
  const Case cases[] = {{5000, 4, 4},
                        {1023, 0, 0},
                        {0, 0, 0},
                        {10240, 10, 10},
                        {10241, 10, 10},
                        {11264, 10, 11},
                        {kGigabyte, 10, 1024},
                        {100 * kGigabyte, 10, 102400},
                        {std::int64_t{1} << 62, 10, 2147483647},
                        {std::nullopt, 1, std::nullopt}};
  for (const Case& one : cases) {
    const CaptureRoom room = RoomOfNewFile(one.freeKb);
    EXPECT_EQ(room.megabytes, one.megabytes) << one.freeKb.value_or(-1);
    EXPECT_EQ(room.free, one.free);
  }
}

TEST(CaptureSize, AFileThatIsThereCountsAsFree) {
  struct Case {
    std::optional<std::int64_t> freeKb;
    std::int64_t bytes;
    int megabytes;
    std::optional<int> free;
  };
  constexpr std::int64_t kMegabyte = 1024 * 1024;
  const Case cases[] = {{5000, 3 * kMegabyte, 3, 7},
                        {0, 20 * kMegabyte + 5, 20, 20},
                        {1023, 1024, 0, 1},
                        {100, 0, 0, 0},
                        {4096, 70000 * kMegabyte, 70000, 70004},
                        {std::nullopt, 3 * kMegabyte, 3, std::nullopt},
                        {std::nullopt, 0, 0, std::nullopt}};
  for (const Case& one : cases) {
    const CaptureRoom room = RoomOfFile(one.freeKb, one.bytes);
    EXPECT_EQ(room.megabytes, one.megabytes) << one.bytes;
    EXPECT_EQ(room.free, one.free) << one.bytes;
  }
}

TEST(CaptureSize, TheLargestSizeIsWhatCanBeHandedOver) {
  EXPECT_EQ(LargestSize(300), 300);
  EXPECT_EQ(LargestSize(0), 0);
  EXPECT_EQ(LargestSize(70004), 65535);
  EXPECT_EQ(LargestSize(std::nullopt), 65535) << "the allocation decides";
}

TEST(CaptureSize, TheFieldTakesNumbersFromOneToTheLargest) {
  struct Case {
    const char* text;
    int largest;
    const char* corrected;
  };
  const Case cases[] = {{"12", 300, "12"},
                        {"12a", 300, "1"},
                        {"999999", 300, "300"},
                        {"999x", 300, "300"},
                        {"301", 300, "300"},
                        {"300", 300, "300"},
                        {"", 300, "1"},
                        {"0", 300, "1"},
                        {"000", 300, "1"},
                        {"007", 300, "007"},
                        {"-5", 300, "1"},
                        {" 5", 300, "1"},
                        {"5 ", 300, "1"},
                        {"5.5", 300, "1"},
                        {"abc", 300, "1"},
                        {"99999999999999999999", 300, "300"},
                        {"4294967297", 65535, "65535"},
                        {"65536", 65535, "65535"},
                        {"5", 0, "5"},
                        {"99999999999999999999", 0, "99999999999999999999"},
                        {"0", 0, "1"},
                        {"\xC3\xA9", 300, "1"}};
  for (const Case& one : cases) EXPECT_EQ(CorrectedSize(one.text, one.largest), one.corrected) << one.text;
}

TEST(CapturePaths, TellTheirRootFolderAndExtension) {
  const std::pair<const char*, const char*> roots[] = {{"C:\\a\\b.avi", "C:\\"},
                                                       {"C:\\b.avi", "C:\\"},
                                                       {"\\\\server\\share\\a\\b.avi", "\\\\server\\share\\"},
                                                       {"\\\\server\\share\\", "\\\\server\\share\\"},
                                                       {"\\\\server\\share", "\\\\server\\share\\"},
                                                       {"\\\\server", "\\\\server\\"},
                                                       {"E:", "E:\\"},
                                                       {"", "\\"}};
  for (const auto& [path, root] : roots) EXPECT_EQ(RootOf(path), root) << path;
  const std::pair<const char*, const char*> folders[] = {
      {"C:\\a\\b.avi", "C:\\a\\"}, {"C:\\b", "C:\\"}, {"b.avi", ""}, {"", ""}, {"C:\\a\\", "C:\\a\\"}};
  for (const auto& [path, folder] : folders) EXPECT_EQ(FolderOf(path), folder) << path;
  const std::pair<const char*, const char*> names[] = {{"C:\\a\\b", "C:\\a\\b.avi"},
                                                       {"C:\\a.d\\b", "C:\\a.d\\b.avi"},
                                                       {"C:\\a\\b.mpg", "C:\\a\\b.mpg"},
                                                       {"C:\\a\\b.", "C:\\a\\b."},
                                                       {"C:\\a\\.b", "C:\\a\\.b"}};
  for (const auto& [path, named] : names) EXPECT_EQ(WithExtension(path), named) << path;
}

}  // namespace
}  // namespace quorvex
