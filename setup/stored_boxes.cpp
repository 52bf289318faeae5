#include "setup/stored_boxes.h"

namespace quorvex {

void LoadCheckBox(const IniSnapshot& store, HWND page, const char* section, const char* key, int missing,
                  int id) {
  const bool checked = store.Integer(section, key, missing) != 0;
  ::CheckDlgButton(page, id, checked ? BST_CHECKED : BST_UNCHECKED);
}

void SaveCheckBox(IniDocument& store, HWND page, const char* section, const char* key, int id) {
  store.Set(section, key, ::IsDlgButtonChecked(page, id) == BST_CHECKED ? "1" : "0");
}

void LoadRadioPair(const IniSnapshot& store, HWND page, const char* section, const char* key, int missing,
                   int first, int last) {
  const int stored = store.Integer(section, key, missing);
  if (stored >= 0 && stored <= last - first) ::CheckRadioButton(page, first, last, first + stored);
}

}  // namespace quorvex
