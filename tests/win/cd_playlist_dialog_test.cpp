// The CD play-list editor with the CD device, its store and the virtual drive.
#include "devices/cd/cd_playlist_dialog.h"

#include "base/ini_file.h"
#include "resources/ids.h"
#include "tests/support/cd_panel.h"
#include "tests/support/dialog_user.h"
#include "tests/support/noted_boxes.h"

namespace quorvex {
namespace {

constexpr char kCaption[] = "CD Playlist";

class EditorUser : public DialogUser {
 public:
  using Script = std::function<void(EditorUser&)>;

  explicit EditorUser(Script script)
      : DialogUser([](HWND window) { return CaptionOf(window) == kCaption; },
                   [this, script = std::move(script)] { script(*this); }) {}

  [[nodiscard]] HWND Control(int id) const { return ::GetDlgItem(Dialog(), id); }
  [[nodiscard]] std::string Text(int id) const { return TextOf(Control(id)); }
  [[nodiscard]] std::string Content() const { return TextsOf(Control(IDC_DISC_CONTENT)); }
  [[nodiscard]] std::string Playlist() const { return TextsOf(Control(IDC_PLAYLIST)); }
  [[nodiscard]] std::string Totals() const {
    return Text(IDC_PLAYLIST_COUNT) + " " + Text(IDC_PLAYLIST_TIME);
  }
  [[nodiscard]] std::string Naming() const { return Text(IDC_NAMING_LABEL) + Text(IDC_TRACK_NAME); }

  void Press(int id) const { ::SendMessageA(Control(id), BM_CLICK, 0, 0); }
  void Enter(int id, const std::string& text) const { ::SetDlgItemTextA(Dialog(), id, text.c_str()); }
  void Focus(int id) const {
    ::SendMessageA(Dialog(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Control(id)), TRUE);
  }

  // Selects items of a list besides those that are; the last one is what the user came to.
  void Select(int list, const std::vector<int>& places) const {
    for (const int place : places) {
      ::SendMessageA(Control(list), LB_SETSEL, TRUE, place);
      ::SendMessageA(Control(list), LB_SETCARETINDEX, static_cast<WPARAM>(place), FALSE);
    }
    ::SendMessageA(Dialog(), WM_COMMAND, MAKEWPARAM(list, LBN_SELCHANGE),
                   reinterpret_cast<LPARAM>(Control(list)));
  }
  void PressOk() const { Leave(Dialog(), IDOK); }

  [[nodiscard]] int DefaultButton() const { return LOWORD(::SendMessageA(Dialog(), DM_GETDEFID, 0, 0)); }
  // The keys that look like the one that Enter presses.
  [[nodiscard]] std::vector<int> DefaultLooks() const {
    std::vector<int> looks;
    for (const int id : {IDC_ADD_SELECTED, IDC_SET_NAME, IDOK, IDCANCEL, IDC_EDITOR_HELP})
      if ((::GetWindowLongA(Control(id), GWL_STYLE) & BS_TYPEMASK) == BS_DEFPUSHBUTTON) looks.push_back(id);
    return looks;
  }
};

class CdPlaylistDialogTest : public CdPanelTest {
 protected:
  // The store's section of a disc with tracks of these lengths.
  static std::string Section(const std::vector<int>& seconds, const std::string& lines) {
    return "[" + DiscIdentifier(seconds) + "]\r\n" + lines;
  }
  void OpenStored(const std::vector<int>& seconds, const std::string& lines) {
    stores.Write("cd.abm", "[CD List]\r\nNumber of CDs=1\r\n1=" + DiscIdentifier(seconds) + "\r\n" +
                               Section(seconds, lines));
    OpenWith(seconds, "AutoPlay=0\r\n");
  }
  [[nodiscard]] std::string StoredLines() const {
    const std::string text = stores.Read("cd.abm");
    return text.substr(text.find("]\r\n", text.rfind('[')) + 3);
  }
  static INT_PTR Edit(EditorUser::Script script) {
    const EditorUser user(std::move(script));
    return ShowCdPlaylistDialog(mainWindow);
  }
};

constexpr char kThree[] = "Title=Disc\r\nArtist=Band\r\n1=One\r\n2=Two\r\n3=Three\r\nPlaylist=";

TEST_F(CdPlaylistDialogTest, ShowsTheDiscAndItsStoredPlayList) {
  OpenStored({200, 180, 240}, std::string(kThree) + "3 1 12 3 \r\n");
  const INT_PTR result = Edit([](EditorUser& user) {
    EXPECT_EQ(user.Text(IDC_DISC_TITLE) + "|" + user.Text(IDC_DISC_ARTIST), "Disc|Band");
    EXPECT_EQ(user.Content(), "(03:20) One|(03:00) Two|(04:00) Three");
    EXPECT_EQ(user.Text(IDC_DISC_COUNT) + " " + user.Text(IDC_DISC_TIME), "3 10:20 (min:sec)");
    EXPECT_EQ(user.Playlist(), "(04:00) Three|(03:20) One|(--:--) Track 12|(04:00) Three");
    EXPECT_EQ(user.Totals(), "4 11:20 (min:sec)");
    EXPECT_EQ(::SendMessageA(user.Control(IDC_PLAYLIST), LB_GETITEMDATA, 2, 0), 12);
    for (const int field : {IDC_DISC_TITLE, IDC_DISC_ARTIST, IDC_TRACK_NAME})
      EXPECT_EQ(::SendMessageA(user.Control(field), EM_GETLIMITTEXT, 0, 0), 64);
    RECT place{};
    RECT screen{};
    ::GetWindowRect(user.Dialog(), &place);
    ::SystemParametersInfoA(SPI_GETWORKAREA, 0, &screen, 0);
    EXPECT_LE(place.bottom, screen.bottom) << "the panel at the screen's edge does not draw it out";
    user.PressOk();
  });
  EXPECT_EQ(result, 1);
  EXPECT_EQ(StoredLines(), std::string(kThree) + "3 1 12 3 \r\n") << "a track that the disc lacks is kept";
}

TEST_F(CdPlaylistDialogTest, AStoredPlayListThatIsTooLongIsToldOnce) {
  std::string stored = "Playlist=";
  for (int i = 0; i < 150; ++i) stored += "1 ";
  OpenStored({60}, stored + "\r\n");
  const auto isBox = [](HWND window) { return DialogUser::CaptionOf(window) == "Merrow"; };
  const DialogUser user(isBox, [&user] {
    DialogUser::Close(user.Dialog(), IDOK);
    const HWND editor = DialogUser::WaitForWindow(kCaption);
    EXPECT_EQ(DialogUser::TextOf(::GetDlgItem(editor, IDC_PLAYLIST_COUNT)), "99");
    DialogUser::Leave(editor, IDCANCEL);
  });
  EXPECT_EQ(ShowCdPlaylistDialog(mainWindow), 0);
}

TEST_F(CdPlaylistDialogTest, FocusDecidesWhatEnterDoesAndWhichListHasASelection) {
  OpenStored({200, 180, 240}, std::string(kThree) + "3 1 \r\n");
  Edit([](EditorUser& user) {
    const std::pair<int, int> cases[] = {{IDC_DISC_TITLE, IDOK},   {IDC_TRACK_NAME, IDC_SET_NAME},
                                         {IDC_DISC_ARTIST, IDOK},  {IDC_TRACK_NAME, IDC_SET_NAME},
                                         {IDC_PLAYLIST, IDOK},     {IDC_TRACK_NAME, IDC_SET_NAME},
                                         {IDC_DISC_CONTENT, IDOK}, {IDC_DISC_CONTENT, IDOK}};
    for (const auto& [focus, button] : cases) {
      user.Focus(focus);
      EXPECT_EQ(user.DefaultButton(), button) << focus;
      EXPECT_EQ(user.DefaultLooks(), std::vector<int>{button}) << focus;
    }
    user.Select(IDC_DISC_CONTENT, {0, 2});
    EXPECT_EQ(user.Content(), "[(03:20) One]|(03:00) Two|[(04:00) Three]");
    user.Focus(IDC_PLAYLIST);
    EXPECT_EQ(user.Content(), "(03:20) One|(03:00) Two|(04:00) Three");
    user.Select(IDC_PLAYLIST, {0, 1});
    user.Focus(IDC_DISC_CONTENT);
    EXPECT_EQ(user.Playlist(), "(04:00) Three|(03:20) One");
    user.Focus(IDC_ADD_SELECTED);
    EXPECT_EQ(user.DefaultLooks(), std::vector<int>{IDC_ADD_SELECTED});
    user.Focus(IDC_TRACK_NAME);
    EXPECT_EQ(user.DefaultLooks(), std::vector<int>{IDC_SET_NAME});
  });
}

// Whatever happens to the disc, OK stores what was edited in the section of the disc that was edited.
TEST_F(CdPlaylistDialogTest, ADiscThatGoesMeanwhileIsStoredAllTheSame) {
  for (const bool exchanged : {false, true}) {
    OpenStored({200, 180, 240}, std::string(kThree) + "3 1 \r\n");
    Edit([&](EditorUser& user) {
      exchanged ? drive.Insert({60}) : drive.Eject();
      EXPECT_TRUE(DialogUser::WaitUntil([&] { return Second() == (exchanged ? 1 : 0); }));
      user.Select(IDC_DISC_CONTENT, {2});
      user.Enter(IDC_TRACK_NAME, "Drei");
      user.Press(IDC_SET_NAME);
      user.Press(IDC_ADD_ALL);
      EXPECT_EQ(user.Playlist(), "(04:00) Drei|(03:20) One|(03:20) One|(03:00) Two|(04:00) Drei");
      user.PressOk();
    });
    const IniSnapshot stored = IniFile(cdAlbumPath).Read();
    const std::string section = DiscIdentifier(std::vector{200, 180, 240});
    EXPECT_EQ(stored.String(section, "3", 64), "Drei");
    EXPECT_EQ(stored.String(section, "Playlist", 64), "3 1 1 2 3");
    EXPECT_EQ(stored.String(DiscIdentifier(std::vector{60}), "Playlist", 64), exchanged ? "1" : "");
    currentDevice.reset();
  }
}

TEST_F(CdPlaylistDialogTest, WithoutADiscThereIsNothingToStore) {
  stores.Write("quorvex.ini", "");
  Press(kCommandCd);
  const INT_PTR result = Edit([](EditorUser& user) {
    EXPECT_EQ(user.Content() + user.Totals(), "0 0:00 (min:sec)");
    for (const int button :
         {IDC_ADD_SELECTED, IDC_ADD_ALL, IDC_REMOVE_SELECTED, IDC_DELETE_ALL, IDC_SET_NAME})
      user.Press(button);
    EXPECT_EQ(user.Naming(), "Trac&k 01:");
    EXPECT_FALSE(::IsWindowEnabled(user.Control(IDOK)));
  });
  EXPECT_EQ(result, 0);
  EXPECT_FALSE(std::filesystem::exists(cdAlbumPath));
}

TEST_F(CdPlaylistDialogTest, AStoreThatCannotBeWrittenKeepsTheEditorOpen) {
  OpenStored({200, 180, 240}, std::string(kThree) + "3 1 \r\n");
  const std::string before = stores.Read("cd.abm");
  const INT_PTR result = Edit([&](EditorUser& user) {
    ::SetFileAttributesA(cdAlbumPath.c_str(), FILE_ATTRIBUTE_READONLY);
    user.Enter(IDC_DISC_TITLE, "Mine");
    ::PostMessageA(user.Dialog(), WM_COMMAND, IDOK, 0);
    EXPECT_EQ(DialogUser::AnswerBox(user.Dialog(), "Merrow"), "Cannot write cd.abm");
    EXPECT_EQ(stores.Read("cd.abm"), before);
    EXPECT_EQ(user.Text(IDC_DISC_TITLE), "Mine");
    ::SetFileAttributesA(cdAlbumPath.c_str(), FILE_ATTRIBUTE_NORMAL);
    user.PressOk();
  });
  EXPECT_EQ(result, 1);
  EXPECT_EQ(IniFile(cdAlbumPath).Read().String(DiscIdentifier(std::vector{200, 180, 240}), "Title", 64),
            "Mine");
}

TEST_F(CdPlaylistDialogTest, AStoreThatCannotBeReadIsNotEdited) {
  OpenStored({200, 180, 240}, std::string(kThree) + "3 1 \r\n");
  const UniqueHandle held =
      OwnFile(::CreateFileA(cdAlbumPath.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  NotedBoxes boxes;
  EXPECT_EQ(ShowCdPlaylistDialog(mainWindow), 0);
  EXPECT_EQ(boxes.Take(), std::vector<std::string>{"Merrow: Cannot read cd.abm"});
}

}  // namespace
}  // namespace quorvex
