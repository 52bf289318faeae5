#include "panel/shown_colours.h"

#include "panel/main_window.h"

namespace quorvex {
namespace {

bool paletteDevice = false;
bool highContrast = false;

}  // namespace

bool ReadHighContrast() {
  HIGHCONTRASTA setting{};
  setting.cbSize = sizeof setting;
  ::SystemParametersInfoA(SPI_GETHIGHCONTRAST, sizeof setting, &setting, 0);
  return (setting.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

void PrepareColours(HDC dc) {
  paletteDevice = (::GetDeviceCaps(dc, RASTERCAPS) & RC_PALETTE) != 0;
  highContrast = ReadHighContrast();
}

void ShowHighContrast(bool on) {
  highContrast = on;
  ::RedrawWindow(mainWindow, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

bool IsHighContrastShown() { return highContrast; }

COLORREF ShownColour(Colour colour) {
  if (highContrast) {
    colour = InHighContrast(colour);
  } else if (paletteDevice && colour == kTeal) {
    colour = kPaletteTeal;
  }
  return RGB(colour.red, colour.green, colour.blue);
}

}  // namespace quorvex
