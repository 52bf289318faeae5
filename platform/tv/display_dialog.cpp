#include "platform/tv/display_dialog.h"

#include <commctrl.h>

#include "platform/tv/choice_dialog.h"
#include "platform/tv/dialog_ids.h"

namespace quorvex {
namespace {

constexpr int kControls = 4;

void Show(HWND dialog, const ColorAdjustment& adjustment) {
  for (int control = 0; control < kControls; ++control) {
    ::SendDlgItemMessageW(dialog, IDC_CONTROL + control, TBM_SETRANGE, TRUE,
                          MAKELPARAM(ColorAdjustment::kLowest, ColorAdjustment::kHighest));
    ::SendDlgItemMessageW(dialog, IDC_CONTROL + control, TBM_SETPOS, TRUE,
                          adjustment.values[static_cast<std::size_t>(control)]);
  }
}

void Take(HWND dialog, PictureSource& source) {
  for (int control = 0; control < kControls; ++control) {
    const LRESULT value = ::SendDlgItemMessageW(dialog, IDC_CONTROL + control, TBM_GETPOS, 0, 0);
    source.Adjust(static_cast<std::size_t>(control), static_cast<int>(value));
  }
}

INT_PTR CALLBACK DisplayProcedure(HWND dialog, UINT message, WPARAM first, LPARAM second) {
  auto* source = reinterpret_cast<PictureSource*>(::GetWindowLongPtrW(dialog, DWLP_USER));
  switch (message) {
    case WM_INITDIALOG:
      ::SetWindowLongPtrW(dialog, DWLP_USER, second);
      Show(dialog, reinterpret_cast<PictureSource*>(second)->Adjustment());
      return TRUE;
    case WM_HSCROLL: Take(dialog, *source); return TRUE;
    case WM_COMMAND:
      if (LOWORD(first) == IDC_USUAL) {
        Show(dialog, {});
        Take(dialog, *source);
      } else if (LOWORD(first) == IDOK || LOWORD(first) == IDCANCEL) {
        ::EndDialog(dialog, LOWORD(first));
      }
      return TRUE;
    default: return FALSE;
  }
}

}  // namespace

void RunDisplayDialog(HWND owner, PictureSource& source) {
  const INITCOMMONCONTROLSEX bars{sizeof bars, ICC_BAR_CLASSES};
  ::InitCommonControlsEx(&bars);
  const ColorAdjustment before = source.Adjustment();
  const INT_PTR ended = ::DialogBoxParamW(DialogModule(), MAKEINTRESOURCEW(IDD_DISPLAY), owner,
                                          DisplayProcedure, reinterpret_cast<LPARAM>(&source));
  if (ended == IDOK) return;
  for (std::size_t control = 0; control < before.values.size(); ++control)
    source.Adjust(control, before.values[control]);
}

}  // namespace quorvex
