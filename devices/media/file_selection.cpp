#include "devices/media/file_selection.h"

#include <algorithm>

namespace quorvex {

std::vector<std::string> SelectedPaths(std::string_view selection) {
  std::vector<std::string> texts;
  while (!selection.empty() && selection.front() != '\0') {
    texts.emplace_back(selection.substr(0, selection.find('\0')));
    selection.remove_prefix(std::min(texts.back().size() + 1, selection.size()));
  }
  if (texts.size() < 2) return texts;
  std::string folder = texts.front();
  if (!folder.ends_with('\\')) folder += '\\';  // a drive's root has it already
  texts.erase(texts.begin());
  for (std::string& name : texts) name.insert(0, folder);
  return texts;
}

bool IsWholeSelection(std::string_view selection) {
  using namespace std::string_view_literals;
  const bool onePath = selection.find('\0') + 1 == selection.size();
  return onePath || selection.find("\0\0"sv) != std::string_view::npos;
}

}  // namespace quorvex
