#include "platform/tv/choice_dialog.h"

#include "platform/tv/dialog_ids.h"

namespace quorvex {
namespace {

struct Choice {
  const wchar_t* title;
  const std::vector<std::wstring>& names;
  int chosen;
};

void Fill(HWND dialog, const Choice& choice) {
  ::SetWindowTextW(dialog, choice.title);
  for (const std::wstring& name : choice.names)
    ::SendDlgItemMessageW(dialog, IDC_CHOICES, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.c_str()));
  ::SendDlgItemMessageW(dialog, IDC_CHOICES, LB_SETCURSEL, static_cast<WPARAM>(choice.chosen), 0);
}

INT_PTR CALLBACK ChoiceProcedure(HWND dialog, UINT message, WPARAM first, LPARAM second) {
  if (message == WM_INITDIALOG) {
    ::SetWindowLongPtrW(dialog, DWLP_USER, second);
    Fill(dialog, *reinterpret_cast<Choice*>(second));
    return TRUE;
  }
  if (message != WM_COMMAND) return FALSE;
  const bool picked = LOWORD(first) == IDC_CHOICES && HIWORD(first) == LBN_DBLCLK;
  if (LOWORD(first) != IDOK && LOWORD(first) != IDCANCEL && !picked) return FALSE;
  auto* choice = reinterpret_cast<Choice*>(::GetWindowLongPtrW(dialog, DWLP_USER));
  choice->chosen = static_cast<int>(::SendDlgItemMessageW(dialog, IDC_CHOICES, LB_GETCURSEL, 0, 0));
  ::EndDialog(dialog, LOWORD(first) == IDCANCEL ? IDCANCEL : IDOK);
  return TRUE;
}

}  // namespace

HINSTANCE DialogModule() {
  HMODULE module = nullptr;
  ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&DialogModule), &module);
  return module;
}

std::optional<int> RunChoiceDialog(HWND owner, const wchar_t* title, const std::vector<std::wstring>& choices,
                                   int chosen) {
  Choice choice{title, choices, chosen};
  const INT_PTR ended = ::DialogBoxParamW(DialogModule(), MAKEINTRESOURCEW(IDD_CHOICE), owner,
                                          ChoiceProcedure, reinterpret_cast<LPARAM>(&choice));
  return ended == IDOK && choice.chosen >= 0 ? std::optional(choice.chosen) : std::nullopt;
}

}  // namespace quorvex
