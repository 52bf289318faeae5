// The capture file: the dialog that allocates it, choosing a name, and saving a copy.
#include "devices/tv/capture_file_dialog.h"

#include "base/handles.h"
#include "resources/ids.h"
#include "tests/support/dialog_user.h"
#include "tests/support/tv_panel.h"

namespace quorvex {
namespace {

constexpr char kAllocate[] = "Allocate Capture File";
constexpr char kChoose[] = "Set Capture File";

class CaptureFileTest : public TvTest {
 protected:
  // A file of so many megabytes.
  std::string MakeFile(const std::string& name, int megabytes) const {
    return stores.Write(name, std::string(static_cast<std::size_t>(megabytes) << 20, 'x'));
  }
  void OpenWithFile(const std::string& path) { Open("[CAPTURE]\r\nCaptureFile=" + path + "\r\n"); }

  // Runs the dialog; whether it was closed by OK.
  bool Run(std::vector<DialogScript::Step> steps) {
    tv.Take();
    const DialogScript script(std::move(steps));
    return CaptureFileDialog(Device()).Run(mainWindow);
  }

  // Works the allocation dialog, then presses a button of it.
  static DialogScript::Step Allocate(const std::function<void(HWND)>& use, int button) {
    return {kAllocate, [use, button](HWND dialog) {
              use(dialog);
              ::PostMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
            }};
  }
  // Presses Change... and goes on when the dialog for the file is there.
  static DialogScript::Step Change() { return DialogScript::Press(kAllocate, IDC_CHANGE_FILE); }

  static std::string Typed(HWND dialog, const char* text) {
    ::SetDlgItemTextA(dialog, IDC_CAPTURE_SIZE, text);
    return DialogScript::TextOf(dialog, IDC_CAPTURE_SIZE);
  }
  static bool IsOn(HWND dialog, int control) {
    return ::IsWindowEnabled(::GetDlgItem(dialog, control)) != FALSE;
  }
};

TEST_F(CaptureFileTest, CancelledWithoutAFileNothingIsRecorded) {
  Open();
  const DialogScript script(
      {DialogScript::Box("Please allocate a capture file first."), DialogScript::Press(kAllocate, IDCANCEL)});
  EXPECT_EQ(LogOf(kCommandRecord), "");
  EXPECT_FALSE(currentDevice->recording);
}

TEST_F(CaptureFileTest, AFileThatSomebodyPlaysIsNotTaken) {
  OpenWithFile(MakeFile("tape.avi", 1));
  const std::string played = MakeFile("played.avi", 1);
  const UniqueHandle player = OwnFile(::CreateFileA(played.c_str(), GENERIC_READ,
                                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                                    nullptr, OPEN_EXISTING, 0, nullptr));
  EXPECT_FALSE(Run({Change(), DialogScript::Name(kChoose, played),
                    Allocate(
                        [&](HWND dialog) {
                          EXPECT_EQ(DialogScript::TextOf(dialog, IDC_CAPTURE_PATH), stores.Path("tape.avi"));
                          EXPECT_EQ(ShownText(), "The file is in use");
                        },
                        IDC_CHANGE_FILE),
                    DialogScript::Press(kChoose, IDCANCEL), DialogScript::Press(kAllocate, IDCANCEL)}));
}

TEST_F(CaptureFileTest, APathThatIsTooLongIsRefused) {
  OpenWithFile(MakeFile("tape.avi", 1));
  const std::size_t room = kLongestCapturePath - stores.Path("").size();
  const auto refused = [](const std::string& name) {
    return [name](HWND dialog) {
      DialogScript::TypeName(dialog, name);
      ::SendMessageA(dialog, WM_COMMAND, IDOK, 0);
      EXPECT_EQ(ShownText(), "The path is too long");
      EXPECT_TRUE(::IsWindow(dialog));
      ::PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
    };
  };
  for (const std::string& name : {stores.Path(std::string(room + 1, 'n')), std::string(room + 1, 'n')}) {
    const DialogScript script({{kChoose, refused(name)}});
    EXPECT_FALSE(Device().SaveCaptureFile(mainWindow));
  }
  // With its extension it is.
  const DialogScript script({DialogScript::Name(kChoose, stores.Path(std::string(room - 2, 'n')))});
  EXPECT_FALSE(Device().SaveCaptureFile(mainWindow));
  EXPECT_EQ(ShownText(), "The path is too long");
}

// A drive that is gone does not tell its space, nor does another machine that is.
TEST_F(CaptureFileTest, WhereTheSpaceIsUnknownAnySizeIsTaken) {
  tv.answers["AllocCapFile"] = HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND);
  for (const std::string path : {"Q:\\tape.avi", "\\\\nowhere\\share\\tape.avi"}) {
    OpenWithFile(path);
    EXPECT_TRUE(Run({Allocate(
                         [](HWND dialog) {
                           EXPECT_FALSE(IsOn(dialog, IDC_FREE_SPACE));
                           EXPECT_EQ(DialogScript::TextOf(dialog, IDC_FREE_SPACE), "");
                           EXPECT_EQ(Typed(dialog, "999999"), "65535");
                         },
                         IDOK),
                     DialogScript::Box("Failed to pre-allocate capture file space")}));
    EXPECT_EQ(tv.Take(), "AllocCapFile " + path + " 68718428160\n");
    EXPECT_EQ(Device().capture.file, path) << "it stays the capture file";
    Press(kCommandCloseDevice);
  }
}

TEST_F(CaptureFileTest, ACopyIsSavedWhereTheUserSays) {
  const std::string tape = MakeFile("tape.avi", 1);
  OpenWithFile(tape);
  struct Case {
    HRESULT answer;
    const char* text;
  };
  const Case cases[] = {{S_OK, "Capture file saved"},
                        {S_FALSE, "Capture file save aborted"},
                        {HRESULT_FROM_WIN32(ERROR_DISK_FULL), "Capture file save ERROR"}};
  for (const Case& one : cases) {
    tv.answers["CopyCaptureFile"] = one.answer;
    tv.Take();
    const DialogScript script({DialogScript::Name(kChoose, stores.Path("copy"))});
    EXPECT_EQ(Device().SaveCaptureFile(mainWindow), one.answer == S_OK);
    EXPECT_EQ(ShownText(), one.text);
    EXPECT_EQ(tv.Take(), "CopyCaptureFile " + tape + " to " + stores.Path("copy.avi") + '\n');
  }
  SetDisplayText("as it was");
  {
    const DialogScript script({DialogScript::Press(kChoose, IDCANCEL)});
    EXPECT_FALSE(Device().SaveCaptureFile(mainWindow));
  }
  EXPECT_EQ(ShownText(), "as it was");
  // Onto itself there is nothing to be copied, and everything to be lost.
  const DialogScript script({DialogScript::Name(kChoose, stores.Path("TAPE.avi"))});
  EXPECT_FALSE(Device().SaveCaptureFile(mainWindow));
  EXPECT_EQ(ShownText(), "Capture file save ERROR");
  EXPECT_EQ(tv.Take(), "");
}

}  // namespace
}  // namespace quorvex
