// The room of a capture file: what the dialog proposes and takes, and the paths it asks about.
#include "devices/tv/capture_size.h"

#include <gtest/gtest.h>

namespace quorvex {
namespace {

TEST(CaptureSize, TheProposalFollowsTheDiskAndTheFileThatIsThere) {
  constexpr std::int64_t kMegabyte = 1024 * 1024;
  const struct {
    std::optional<std::int64_t> freeKb;
    std::optional<std::int64_t> bytes;  // of the file, if there is one
    int megabytes;
    std::optional<int> free;
  } cases[] = {{5000, {}, 4, 4},
               {1023, {}, 0, 0},
               {11264, {}, 10, 11},
               {std::int64_t{1} << 62, {}, 10, 2147483647},
               {std::nullopt, {}, 1, std::nullopt},
               {5000, 3 * kMegabyte, 3, 7},
               {0, 20 * kMegabyte + 5, 20, 20},
               {1023, 1024, 0, 1},
               {4096, 70000 * kMegabyte, 70000, 70004},
               {std::nullopt, 3 * kMegabyte, 3, std::nullopt}};
  for (const auto& [freeKb, bytes, megabytes, free] : cases) {
    const CaptureRoom room = bytes ? RoomOfFile(freeKb, *bytes) : RoomOfNewFile(freeKb);
    EXPECT_EQ(room.megabytes, megabytes) << freeKb.value_or(-1) << ' ' << bytes.value_or(-1);
    EXPECT_EQ(room.free, free) << freeKb.value_or(-1) << ' ' << bytes.value_or(-1);
  }
}

TEST(CaptureSize, TheFieldTakesNumbersFromOneToTheLargest) {
  const struct {
    const char* text;
    int largest;
    const char* corrected;
  } cases[] = {{"12", 300, "12"},   {"12a", 300, "1"},   {"999x", 300, "300"},
               {"301", 300, "300"}, {"007", 300, "007"}, {"4294967297", 65535, "65535"},
               {"5", 0, "5"},       {"0", 0, "1"}};
  for (const auto& one : cases) EXPECT_EQ(CorrectedSize(one.text, one.largest), one.corrected) << one.text;
  EXPECT_EQ(LargestSize(300), 300);
  EXPECT_EQ(LargestSize(70004), 65535);
  EXPECT_EQ(LargestSize(std::nullopt), 65535) << "the allocation decides";
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
