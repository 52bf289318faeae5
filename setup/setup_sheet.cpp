#include "setup/setup_sheet.h"

#include <windows.h>

#include <commctrl.h>

#include <array>

#include "panel/main_window.h"
#include "setup/pages.h"
#include "setup/subject.h"

namespace quorvex {
namespace {

// Over a panel at the edge of the screen the sheet would hang over that, with its keys.
int CALLBACK OnSheet(HWND sheet, UINT message, LPARAM /*lParam*/) {
  if (message != PSCB_INITIALIZED) return 0;
  CenterWindow(sheet, mainWindow);
  BringIntoView(sheet);
  return 0;
}

}  // namespace

void ShowSetupSheet(const ShellOptions& options) {
  const std::array<std::unique_ptr<SetupPage>, kSetupPageCount> pages = {
      MakeGeneralPage(options), MakeMediaFilesPage(), MakeTvPage(),
      MakeCapturePage(),        MakeDvdPage(),        MakeCdPage()};
  std::array<HPROPSHEETPAGE, kSetupPageCount> handles{};
  for (std::size_t i = 0; i < pages.size(); ++i) handles[i] = pages[i]->Create();
  PROPSHEETHEADERA sheet{};
  sheet.dwSize = sizeof sheet;
  sheet.dwFlags = PSH_USECALLBACK;
  sheet.hwndParent = mainWindow;
  sheet.hInstance = instance;
  sheet.pszCaption = "Setup Options";
  sheet.nPages = static_cast<UINT>(handles.size());
  sheet.nStartPage = static_cast<UINT>(FirstPage(CurrentSubject()));
  sheet.phpage = handles.data();
  sheet.pfnCallback = OnSheet;
  ::PropertySheetA(&sheet);
}

}  // namespace quorvex
