#include "devices/tv/capture_file_dialog.h"

#include "devices/tv/capture_disk.h"
#include "devices/tv/tv_device.h"
#include "panel/main_window.h"
#include "resources/ids.h"

namespace quorvex {
namespace {

constexpr int kLongestNumber = 20;

std::string lastPath;  // the file chosen last, where the device has none yet: choosing starts there

std::string SizeText(HWND dialog) {
  char text[kLongestNumber + 1] = "";
  ::GetDlgItemTextA(dialog, IDC_CAPTURE_SIZE, text, sizeof text);
  return text;
}

}  // namespace

// The dialog is gone when a box may have to tell that there is no room.
bool CaptureFileDialog::Run(HWND owner) {
  const INT_PTR closed = ::DialogBoxParamA(instance, MAKEINTRESOURCEA(IDD_CAPTURE_FILE), owner, Procedure,
                                           reinterpret_cast<LPARAM>(this));
  if (closed != IDOK) return false;
  device.SetCaptureFile(path, size);
  return true;
}

INT_PTR CALLBACK CaptureFileDialog::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    ::SetWindowLongPtrA(window, GWLP_USERDATA, lParam);
    auto* const starting = reinterpret_cast<CaptureFileDialog*>(lParam);
    starting->dialog = window;
    starting->OnStart();
    return TRUE;
  }
  auto* const self = reinterpret_cast<CaptureFileDialog*>(::GetWindowLongPtrA(window, GWLP_USERDATA));
  return self != nullptr && message == WM_COMMAND ? self->OnCommand(LOWORD(wParam)) : FALSE;
}

INT_PTR CaptureFileDialog::OnCommand(int control) {
  switch (control) {
    case IDC_CHANGE_FILE: OnChange(); return TRUE;
    case IDC_CAPTURE_SIZE: OnSizeTyped(); return TRUE;
    case IDOK: OnOk(); return TRUE;
    case IDCANCEL: ::EndDialog(dialog, 0); return TRUE;
    default: return FALSE;
  }
}

void CaptureFileDialog::OnStart() {
  path = device.capture.file.empty() ? lastPath : device.capture.file;
  CenterWindow(dialog, ::GetWindow(dialog, GW_OWNER));
  BringIntoView(dialog);
  if (device.capture.file.empty()) {
    ::EnableWindow(::GetDlgItem(dialog, IDC_CAPTURE_SIZE), FALSE);
  } else {
    ShowRoom(RoomOfFile(GetFreeDiskSpaceKB(path), GetFileSize64(path)));
  }
}

void CaptureFileDialog::OnChange() {
  if (!ChooseCaptureFileName(dialog, path)) return;
  lastPath = path;
  ::EnableWindow(::GetDlgItem(dialog, IDC_CAPTURE_SIZE), TRUE);
  const auto freeKb = GetFreeDiskSpaceKB(path);
  ShowRoom(IsThere(path) ? RoomOfFile(freeKb, GetFileSize64(path)) : RoomOfNewFile(freeKb));
}

// The free space goes first: a size that is written is held against it at once.
void CaptureFileDialog::ShowRoom(const CaptureRoom& room) {
  free = room.free;
  ::EnableWindow(::GetDlgItem(dialog, IDC_FREE_SPACE), free ? TRUE : FALSE);
  ::SetDlgItemTextA(dialog, IDC_FREE_SPACE, free ? std::to_string(*free).c_str() : "");
  ::SetDlgItemTextA(dialog, IDC_CAPTURE_PATH, path.c_str());
  ::SetDlgItemTextA(dialog, IDC_CAPTURE_SIZE, std::to_string(room.megabytes).c_str());
}

// What is typed next goes behind the correction; where everything was deleted, in its place.
void CaptureFileDialog::OnSizeTyped() {
  const std::string text = SizeText(dialog);
  const std::string corrected = CorrectedSize(text, LargestSize(free));
  if (corrected == text) return;
  ::SetDlgItemTextA(dialog, IDC_CAPTURE_SIZE, corrected.c_str());
  const WPARAM begin = text.empty() ? 0 : corrected.size();
  ::SendDlgItemMessageA(dialog, IDC_CAPTURE_SIZE, EM_SETSEL, begin, static_cast<LPARAM>(corrected.size()));
}

void CaptureFileDialog::OnOk() {
  const int typed = static_cast<int>(::GetDlgItemInt(dialog, IDC_CAPTURE_SIZE, nullptr, TRUE));
  if (typed >= 1 && typed <= LargestSize(free)) {
    size = static_cast<std::uint16_t>(typed);
    ::EndDialog(dialog, IDOK);
    return;
  }
  ::SetDlgItemInt(dialog, IDC_CAPTURE_SIZE, static_cast<UINT>(typed), TRUE);
  ::SendMessageA(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(::GetDlgItem(dialog, IDC_CAPTURE_SIZE)),
                 TRUE);
  ::MessageBeep(MB_ICONEXCLAMATION);
}

}  // namespace quorvex
