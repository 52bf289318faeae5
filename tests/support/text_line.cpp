// text_line TEXT FILE  Draws what the panel's text line should look like, by the platform's plainest means,
// into a PPM picture of 202 x 16: bold Arial of height 11 in cyan on black, centred, or from the left when it
// is too long.
#include <windows.h>

#include <cstdio>
#include <string>

int main(int count, char** arguments) {
  if (count != 3) return 2;
  const std::string text = arguments[1];
  constexpr int kWidth = 202;
  constexpr int kHeight = 16;
  const HDC screen = ::GetDC(nullptr);
  const HDC dc = ::CreateCompatibleDC(screen);
  ::SelectObject(dc, ::CreateCompatibleBitmap(screen, kWidth, kHeight));
  ::PatBlt(dc, 0, 0, kWidth, kHeight, BLACKNESS);
  ::SelectObject(dc, ::CreateFontA(-11, 0, 0, 0, FW_BOLD, 0, 0, 0, 0, 0, 0, 0, 0, "Arial"));
  ::SetTextColor(dc, RGB(0, 255, 255));
  ::SetBkColor(dc, RGB(0, 0, 0));
  SIZE size{};
  const int length = static_cast<int>(text.size());
  ::GetTextExtentPoint32A(dc, text.c_str(), length, &size);
  ::TextOutA(dc, size.cx <= kWidth ? kWidth / 2 - size.cx / 2 : 0, 0, text.c_str(), length);
  FILE* file = std::fopen(arguments[2], "wb");
  if (file == nullptr) return 1;
  std::fprintf(file, "P6 %d %d 255\n", kWidth, kHeight);
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      const COLORREF colour = ::GetPixel(dc, x, y);
      for (const int part : {GetRValue(colour), GetGValue(colour), GetBValue(colour)}) std::fputc(part, file);
    }
  }
  return std::fclose(file) == 0 ? 0 : 1;
}
