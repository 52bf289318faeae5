#include "devices/media/preview_playlist.h"

#include "shell/open_files.h"
#include "tests/support/panel.h"
#include "tests/support/recording_device.h"

namespace quorvex {
namespace {

class PreviewPlaylistTest : public PanelTest {
 protected:
  std::string Preview(const std::vector<std::string>& paths) const {
    EXPECT_EQ(BuildPreviewPlaylist(paths), "P-r-e-v-i-e-W");
    return stores.Read("mfiles.abm");
  }
};

TEST_F(PreviewPlaylistTest, IsReplacedByEverySelection) {
  const std::string others = "[Evening]\r\nTracks=1\r\n1=C:\\x\r\n";
  stores.Write("mfiles.abm", "[P-r-e-v-i-e-W]\r\n1=C:\\old\r\n2=C:\\old\r\nTracks=2\r\n" + others);
  const std::string list = stores.Write("l.m3u", ";c\none\n\ntwo\nx");
  EXPECT_EQ(Preview({"C:\\a.mp3", list, "C:\\b.avi"}),
            "[P-r-e-v-i-e-W]\r\n1=C:\\a.mp3\r\n2=one\r\n3=two\r\n4=C:\\b.avi\r\nTracks=4\r\n" + others);
  EXPECT_EQ(Preview({stores.Path("missing.m3u")}), "[P-r-e-v-i-e-W]\r\nTracks=0\r\n" + others);
  EXPECT_EQ(BuildPreviewPlaylist(std::string_view("C:\\M\0a\0b\0", 9)), "P-r-e-v-i-e-W");
  EXPECT_EQ(stores.Read("mfiles.abm"),
            "[P-r-e-v-i-e-W]\r\n1=C:\\M\\a\r\n2=C:\\M\\b\r\nTracks=2\r\n" + others);
}

TEST_F(PreviewPlaylistTest, PlayListsThatAreNoneEndWell) {
  std::filesystem::create_directory(stores.Path("folder.m3u"));
  const std::string huge = stores.Write("huge.m3u", std::string(20 << 20, 'x'));
  EXPECT_EQ(Preview({stores.Path("folder.m3u"), huge, "C:\\a"}),
            "[P-r-e-v-i-e-W]\r\n1=C:\\a\r\nTracks=1\r\n");
  const std::string marked = stores.Write("m.m3u",
                                          "\xEF\xBB\xBF"
                                          "C:\\\xC3\xA9\r\n");
  const std::string western = stores.Write("w.m3u", "C:\\\xE9\r\n");
  EXPECT_EQ(Preview({marked, western}),
            "[P-r-e-v-i-e-W]\r\n1=C:\\\xC3\xA9\r\n2=C:\\\xC3\xA9\r\nTracks=2\r\n");
  std::string lines;
  while (lines.size() < (10U << 20U)) lines += "C:\\Music\\some folder\\a title of usual length.mp3\n";
  const ULONGLONG start = ::GetTickCount64();
  Preview({stores.Write("ten.m3u", lines)});
  EXPECT_LT(::GetTickCount64() - start, 5000U);
}

TEST_F(PreviewPlaylistTest, AStoreThatCannotBeWrittenLeavesWhatPlays) {
  Preview({"C:\\old"});
  currentDevice = std::make_unique<RecordingDevice>(DeviceType::kCd, log);
  currentPlaylist = "Mine";
  const std::string before = stores.Read("mfiles.abm");
  ::SetFileAttributesA(mediaAlbumPath.c_str(), FILE_ATTRIBUTE_READONLY);
  HandOver({"C:\\new"});
  PlayHandedOver();
  EXPECT_EQ(currentPlaylist, "Mine");
  EXPECT_EQ(currentDevice->kind, DeviceType::kCd);
  EXPECT_EQ(ShownText(), "Cannot write mfiles.abm");
  ::SetFileAttributesA(mediaAlbumPath.c_str(), FILE_ATTRIBUTE_NORMAL);
  EXPECT_EQ(stores.Read("mfiles.abm"), before);
  currentDevice.reset();
}

}  // namespace
}  // namespace quorvex
