#include "devices/media/open_file_dialog.h"

#include "base/geometry.h"
#include "base/ini_file.h"
#include "devices/media/preview_playlist.h"
#include "tests/support/file_dialog.h"
#include "tests/support/panel.h"

namespace quorvex {
namespace {

using Outcome = OpenFileOutcome;

constexpr char kAlbums[] =
    "[List of Albums]\r\nAlbums=2\r\nSelection=2\r\n1=Evening\r\n2=Party\r\n"
    "[Evening]\r\nTracks=2\r\n1=C:\\night.mp3\r\n2=C:\\clip.avi\r\n"
    "[Party]\r\nTracks=1\r\n1=C:\\loud.mp3\r\n";

constexpr char kSong[] = "\xD0\xBF\xD0\xB5\xD1\x81\xD0\xBD\xD1\x8F.mp3";
constexpr char kSongs[] = "\xD0\xBF\xD0\xB5\xD1\x81\xD0\xBD\xD0\xB8.m3u";

class OpenFileDialogTest : public PanelTest {
 protected:
  OpenFileDialogTest() {
    currentPlaylist = "before";
    std::filesystem::create_directories(stores.Path("media\\inner"));
    for (const char* name : {"a.mp3", "b.avi", "two words.wav", kSong}) MakeFile(name);
    for (const char* name : {"list.m3u", kSongs}) MakeFile(name, "; mine\r\n\r\nC:\\x.mp3\r\ny.mp3\r\n");
  }

  // The store's text with the folder of the media files as the last one visited.
  [[nodiscard]] std::string LastVisit() const {
    return "[Last Visit]\r\nDir=" + stores.Path("media") + "\r\n";
  }
  void Store(const std::string& text) const { stores.Write("mfiles.abm", text + LastVisit()); }
  [[nodiscard]] std::string Stored() const { return stores.Read("mfiles.abm"); }

  // Paths of the library that are made of parts lose letters that are not plain ASCII.
  void MakeFile(const std::string& name, const std::string& bytes = "") const {
    const std::string path = stores.Path("media") + '\\' + name;
    const UniqueHandle file =
        OwnFile(::CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    DWORD written = 0;
    EXPECT_TRUE(::WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr));
  }

  static OpenFileResult Run(FileDialogUser::Script script) {
    const FileDialogUser user(std::move(script));
    return RunOpenFileDialog();
  }

  // Whether a control is as wide as its text.
  static bool ShowsWholeText(HWND control) {
    const std::string text = FileDialogUser::TextOf(control);
    const HDC dc = ::GetDC(control);
    SIZE size{};
    {
      const Selected font(dc, reinterpret_cast<HFONT>(::SendMessageA(control, WM_GETFONT, 0, 0)));
      ::GetTextExtentPoint32A(dc, text.c_str(), static_cast<int>(text.size()), &size);
    }
    ::ReleaseDC(control, dc);
    return size.cx <= Place(control).right - Place(control).left;
  }

  static std::string FolderOf(HWND dialog) {
    char folder[MAX_PATH] = "";
    ::SendMessageA(dialog, CDM_GETFOLDERPATH, MAX_PATH, reinterpret_cast<LPARAM>(folder));
    return folder;
  }

  static RECT Place(HWND window) {
    RECT rect{};
    ::GetWindowRect(window, &rect);
    return rect;
  }
};

TEST_F(OpenFileDialogTest, StartsCollapsedAndExpands) {
  Store(kAlbums);
  const OpenFileResult result = Run([](FileDialogUser& user) {
    const RECT collapsed = Place(user.Dialog());
    const RECT panel = Place(mainWindow);
    EXPECT_EQ(FileDialogUser::TextOf(::GetDlgItem(user.Dialog(), IDOK)), "Open File");
    EXPECT_EQ(collapsed.bottom, Place(user.Control(IDC_COLLAPSED_EDGE)).top);
    EXPECT_NEAR(collapsed.left + collapsed.right, panel.left + panel.right, 1);
    for (const int id : {IDC_OPEN_PLAYLIST, IDC_DRAG_HINT}) EXPECT_FALSE(::IsWindowVisible(user.Control(id)));
    user.Press(IDC_EXPAND);
    const RECT full = Place(user.Dialog());
    EXPECT_EQ(full.top, collapsed.top);
    EXPECT_NEAR(full.top + full.bottom, ::GetSystemMetrics(SM_CYSCREEN), 1);
    for (const int id : {IDC_OPEN_PLAYLIST, IDC_DRAG_HINT}) EXPECT_TRUE(::IsWindowVisible(user.Control(id)));
    for (const int id : {IDC_EXPAND, IDC_OPEN_PLAYLIST, IDC_DRAG_HINT, IDC_EDIT_ALBUM})
      EXPECT_TRUE(ShowsWholeText(user.Control(id))) << user.Text(id);
    EXPECT_GT(full.bottom, Place(user.Control(IDC_DELETE_ENTRY)).bottom);
    const RECT list = Place(user.Control(IDC_CONTENT_LIST));
    EXPECT_NEAR(list.right, Place(::GetDlgItem(user.Dialog(), IDOK)).right, 8)
        << "the panel fills the dialog";
    EXPECT_NEAR(Place(user.Control(IDC_PANEL_LINE)).right, list.right, 3);
    EXPECT_EQ(user.List(IDC_ALBUM_LIST), "Evening|[Party]");
    EXPECT_EQ(user.List(IDC_CONTENT_LIST), "C:\\loud.mp3");
    EXPECT_EQ(user.Text(IDC_ALBUM_TITLE), "Party");
    user.Press(IDC_EXPAND);
    const RECT again = Place(user.Dialog());
    EXPECT_TRUE(::EqualRect(&again, &collapsed));
    EXPECT_FALSE(::IsWindowVisible(user.Control(IDC_OPEN_PLAYLIST)));
    user.SelectAlbum(0);
    EXPECT_EQ(user.List(IDC_CONTENT_LIST), "C:\\night.mp3|C:\\clip.avi");
  });
  EXPECT_EQ(result.outcome, Outcome::kCancelled);
  EXPECT_EQ(currentPlaylist, "Evening") << "the album that was chosen stays, though nothing is opened";
  EXPECT_EQ(IniFile(mediaAlbumPath).Read().Integer("List of Albums", "Selection", 0), 1);
}

TEST_F(OpenFileDialogTest, ComesWhereAMinimisedPanelWas) {
  ::SetWindowPos(mainWindow, nullptr, 500, 800, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  const RECT panel = Place(mainWindow);
  ::ShowWindow(mainWindow, SW_MINIMIZE);
  Run([&](FileDialogUser& user) {
    const RECT dialog = Place(user.Dialog());
    EXPECT_NEAR(dialog.left + dialog.right, panel.left + panel.right, 1);
  });
}

TEST_F(OpenFileDialogTest, TitlesAreTrimmedAndTakenOnce) {
  constexpr char kNew[] = "New Playlist";
  Store(kAlbums);
  Run([&](FileDialogUser& user) {
    const auto enter = [](HWND dialog, const char* title) { ::SetDlgItemTextA(dialog, IDC_TITLE, title); };
    HWND dialog = user.PressFor(IDC_NEW_ALBUM, kNew);
    EXPECT_EQ(::SendDlgItemMessageA(dialog, IDC_TITLE, EM_GETLIMITTEXT, 0, 0), 32);
    ::SendMessageA(dialog, WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(::IsWindow(dialog)) << "OK without a title does nothing";
    enter(dialog, "  \xD0\x9C\xD1\x83\xD0\xB7 ]= ");
    FileDialogUser::Close(dialog, IDOK);
    EXPECT_EQ(currentPlaylist, "\xD0\x9C\xD1\x83\xD0\xB7 ]=");
    EXPECT_EQ(user.List(IDC_ALBUM_LIST), "Evening|Party|[\xD0\x9C\xD1\x83\xD0\xB7 ]=]");
    dialog = user.PressFor(IDC_NEW_ALBUM, kNew);
    for (const char* taken : {"EVENING", "last visit", "\xD0\xBC\xD0\xA3\xD0\xB7 ]="}) {
      enter(dialog, taken);
      ::PostMessageA(dialog, WM_COMMAND, IDOK, 0);
      EXPECT_EQ(FileDialogUser::AnswerBox(dialog),
                "Duplicate playlist title entered.  Please select a new name.");
      EXPECT_EQ(LOWORD(::SendDlgItemMessageA(dialog, IDC_TITLE, EM_GETSEL, 0, 0)), 0);
    }
    FileDialogUser::Close(dialog, IDCANCEL);
    user.SelectAlbum(1);
    dialog = user.PressFor(IDC_EDIT_ALBUM, "Edit Playlist Title");
    EXPECT_EQ(FileDialogUser::TextOf(::GetDlgItem(dialog, IDC_TITLE)), "Party");
    enter(dialog, "PARTY");
    FileDialogUser::Close(dialog, IDOK);
    for (const char* left : {"Evening|[\xD0\x9C\xD1\x83\xD0\xB7 ]=]", "[Evening]", ""}) {
      user.Press(IDC_DELETE_ALBUM);
      EXPECT_EQ(user.List(IDC_ALBUM_LIST), left);
    }
    for (const int key : {IDC_DELETE_ALBUM, IDC_DELETE_ENTRY, IDC_EDIT_ALBUM}) user.Press(key);
    EXPECT_EQ(user.Text(IDC_ALBUM_TITLE), "");
  });
  EXPECT_EQ(currentPlaylist, "");
}

TEST_F(OpenFileDialogTest, FilesDroppedJoinTheSelectedAlbum) {
  constexpr char kHint[] = "You must create a new album first.";
  Run([&](FileDialogUser& user) {
    user.Drop({"C:\\a.mp3"});
    EXPECT_EQ(FileDialogUser::AnswerBox(user.Dialog()), kHint);
  });
  EXPECT_EQ(Stored().find("a.mp3"), std::string::npos);
  Store(kAlbums);
  Run([&](FileDialogUser& user) {
    user.Drop(
        {"C:\\new.mp3", stores.Path("media\\list.m3u"), stores.Path("media\\missing.M3U"), "C:\\LOUD.mp3"});
    const std::string dropped = "C:\\loud.mp3|C:\\new.mp3|C:\\x.mp3|y.mp3|C:\\LOUD.mp3";
    EXPECT_TRUE(FileDialogUser::WaitUntil([&] { return user.List(IDC_CONTENT_LIST) == dropped; }));
    ::SendMessageA(user.Control(IDC_CONTENT_LIST), LB_SETCURSEL, 4, 0);
    user.Press(IDC_DELETE_ENTRY);
    EXPECT_EQ(user.List(IDC_CONTENT_LIST), "[C:\\new.mp3]|C:\\x.mp3|y.mp3|C:\\LOUD.mp3")
        << "the first of two that are equal but for their case";
    ::SendMessageA(user.Control(IDC_CONTENT_LIST), LB_SETCURSEL, 3, 0);
    user.Press(IDC_DELETE_ENTRY);
    EXPECT_EQ(user.List(IDC_CONTENT_LIST), "C:\\new.mp3|C:\\x.mp3|[y.mp3]");
    user.SelectAlbum(-1);
    EXPECT_EQ(user.Text(IDC_ALBUM_TITLE) + user.List(IDC_CONTENT_LIST), "");
    user.Drop({"C:\\a.mp3"});
    EXPECT_EQ(FileDialogUser::AnswerBox(user.Dialog()), kHint);
  });
  const std::string expected = kAlbums;
  EXPECT_EQ(Stored(), expected.substr(0, expected.find("[Party]")) +
                          "[Party]\r\nTracks=3\r\n1=C:\\new.mp3\r\n2=C:\\x.mp3\r\n3=y.mp3\r\n" + LastVisit());
}

TEST_F(OpenFileDialogTest, PickedFilesMakeTheTemporaryPlayList) {
  const std::string media = stores.Path("media") + '\\';
  const std::string song = kSong;
  const std::pair<std::string, std::string> cases[] = {
      {"\"two words.wav\"", "1=" + media + "two words.wav\r\nTracks=1\r\n"},
      {song, "1=" + media + song + "\r\nTracks=1\r\n"},
      {kSongs, "1=C:\\x.mp3\r\n2=y.mp3\r\nTracks=2\r\n"},
      {"\"a.mp3\" \"list.m3u\" \"" + song + "\" \"b.avi\"",
       "1=" + media + "a.mp3\r\n2=C:\\x.mp3\r\n3=y.mp3\r\n4=" + media + song + "\r\n5=" + media +
           "b.avi\r\nTracks=5\r\n"},
  };
  for (const auto& [names, section] : cases) {
    Store("");
    const OpenFileResult result = Run([&](FileDialogUser& user) {
      user.Open(names);
      EXPECT_TRUE(FileDialogUser::WaitUntil([&] { return !::IsWindow(user.Dialog()); }));
    });
    ASSERT_EQ(result.outcome, Outcome::kFilesPicked) << names;
    EXPECT_EQ(BuildPreviewPlaylist(result.selection), "P-r-e-v-i-e-W");
    EXPECT_EQ(currentPlaylist, "P-r-e-v-i-e-W");
    EXPECT_EQ(Stored(), LastVisit() + "[P-r-e-v-i-e-W]\r\n" + section);
  }
}

TEST_F(OpenFileDialogTest, ASelectionThatDoesNotFitOpensNothingAndSaysSo) {
  Store("");
  std::string names;
  for (int i = 0; i < 30; ++i) {
    const std::string name = "track number " + std::to_string(i) + ".mp3";
    MakeFile(name);
    names += '"' + name + "\" ";
  }
  const OpenFileResult result = Run([&](FileDialogUser& user) {
    user.Open(names);
    EXPECT_TRUE(FileDialogUser::WaitUntil([&] { return !::IsWindow(user.Dialog()); }));
  });
  EXPECT_EQ(result.outcome, Outcome::kCancelled) << testing::PrintToString(result.selection);
  EXPECT_EQ(ShownText(), "Too many files selected");
}

TEST_F(OpenFileDialogTest, TheNextDialogStartsInTheFolderShownLast) {
  Store("");
  Run([&](FileDialogUser& user) {
    user.Open("inner");
    // The store is not looked at before it is written: who reads it again and again keeps it from being
    // replaced.
    EXPECT_TRUE(
        FileDialogUser::WaitUntil([&] { return FolderOf(user.Dialog()) == stores.Path("media\\inner"); }));
    FileDialogUser::Settle();
  });
  EXPECT_EQ(Stored(), "[Last Visit]\r\nDir=" + stores.Path("media\\inner") + "\r\n");
  Run([&](FileDialogUser& user) { EXPECT_EQ(FolderOf(user.Dialog()), stores.Path("media\\inner")); });
}

// A store that cannot be read or written loses nothing, and the lists show what it holds.
TEST_F(OpenFileDialogTest, AStoreThatIsHeldKeepsWhatItHas) {
  Store(kAlbums);
  UniqueHandle held;
  Run([&](FileDialogUser& user) {
    ::SetFileAttributesA(mediaAlbumPath.c_str(), FILE_ATTRIBUTE_READONLY);
    user.Press(IDC_DELETE_ALBUM);
    EXPECT_EQ(user.List(IDC_ALBUM_LIST), "Evening|[Party]");
    EXPECT_EQ(ShownText(), "Cannot write mfiles.abm");
    user.SelectAlbum(0);
    EXPECT_EQ(user.List(IDC_CONTENT_LIST), "C:\\night.mp3|C:\\clip.avi")
        << "can be seen and played all the same";
    ::SetFileAttributesA(mediaAlbumPath.c_str(), FILE_ATTRIBUTE_NORMAL);
    held =
        OwnFile(::CreateFileA(mediaAlbumPath.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  });
  Run([&](FileDialogUser& user) {
    EXPECT_EQ(user.List(IDC_ALBUM_LIST), "");
    EXPECT_EQ(ShownText(), "Cannot read mfiles.abm");
    held.Reset();
    const HWND dialog = user.PressFor(IDC_NEW_ALBUM, "New Playlist");
    ::SetDlgItemTextA(dialog, IDC_TITLE, "New");
    FileDialogUser::Close(dialog, IDOK);
    EXPECT_EQ(user.List(IDC_ALBUM_LIST), "Evening|Party|[New]")
        << "albums that could not be seen are not lost";
  });
}

}  // namespace
}  // namespace quorvex
