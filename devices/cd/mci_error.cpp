#include "devices/cd/mci_error.h"

#include <optional>
#include <string>

#include "panel/main_window.h"

namespace quorvex {
namespace {

std::optional<std::string> waiting;

std::string TextOf(MCIERROR code) {
  char text[256] = "";
  return ::mciGetErrorStringA(code, text, sizeof text) != FALSE ? text : "Unknown Error";
}

}  // namespace

bool ReportMciError(MCIERROR code) {
  if (code == 0) return true;
  if (!waiting) {
    waiting = TextOf(code);
    ::PostMessageA(mainWindow, kMciErrorMessage, 0, 0);
  }
  return false;
}

void ShowMciError() {
  if (!waiting) return;
  ::MessageBoxA(nullptr, waiting->c_str(), "MCI Error", MB_ICONEXCLAMATION);
  waiting.reset();
}

}  // namespace quorvex
