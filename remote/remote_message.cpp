#include "remote/remote_message.h"

#include <cstring>

namespace quorvex {

std::vector<std::string> PathsIn(std::string_view bytes) {
  std::vector<std::string> paths;
  if (bytes.empty() || bytes.back() != '\0') return {};
  for (std::size_t end = 0; !bytes.empty(); bytes.remove_prefix(end + 1)) {
    end = bytes.find('\0');
    if (end == 0 || paths.size() == kMostRemoteFiles) return {};
    paths.emplace_back(bytes.substr(0, end));
  }
  return paths;
}

std::optional<int> CommandIn(std::string_view bytes) {
  int command = 0;
  if (bytes.size() != sizeof command) return std::nullopt;
  std::memcpy(&command, bytes.data(), sizeof command);
  return command;
}

}  // namespace quorvex
