#include "base/wide_text.h"

#include <windows.h>

namespace quorvex {

std::wstring WideText(std::string_view text) {
  std::wstring wide(text.size(), L'\0');
  const int length = static_cast<int>(text.size());
  wide.resize(
      static_cast<std::size_t>(::MultiByteToWideChar(CP_ACP, 0, text.data(), length, wide.data(), length)));
  return wide;
}

}  // namespace quorvex
