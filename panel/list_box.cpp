#include "panel/list_box.h"

#include <algorithm>

#include "base/handles.h"

namespace quorvex {
namespace {

// The width in pixels of a text in the list's font.
int WidthOf(HWND list, const std::string& text) {
  const HDC dc = ::GetDC(list);
  SIZE size{};
  {
    const Selected font(dc, reinterpret_cast<HFONT>(::SendMessageA(list, WM_GETFONT, 0, 0)));
    ::GetTextExtentPoint32A(dc, text.c_str(), static_cast<int>(text.size()), &size);
  }
  ::ReleaseDC(list, dc);
  return size.cx;
}

}  // namespace

void FitWidth(HWND list, std::span<const std::string> texts) {
  constexpr int kMargin = 8;
  const auto longest = std::max_element(texts.begin(), texts.end(),
                                        [](const auto& a, const auto& b) { return a.size() < b.size(); });
  const int width = longest == texts.end() ? 0 : WidthOf(list, *longest) + kMargin;
  ::SendMessageA(list, LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(width), 0);
}

}  // namespace quorvex
