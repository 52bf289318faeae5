// What another program sends: files to play, and keys.
#include "remote/remote_message.h"

#include "tests/fuzz/fuzz_target.h"

namespace quorvex {
namespace {

void Try(std::string_view bytes) {
  const std::vector<std::string> paths = PathsIn(bytes);
  Require(paths.size() <= kMostRemoteFiles, "no more files than are taken");
  if (!paths.empty()) {
    std::string again;
    for (const std::string& path : paths) {
      Require(!path.empty(), "no path is empty");
      again += path + '\0';
    }
    Require(again == bytes, "every byte is of some path");
  }
  Require(CommandIn(bytes).has_value() == (bytes.size() == sizeof(int)), "a key is one number");
}

}  // namespace
}  // namespace quorvex

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  quorvex::Try(quorvex::TextOf(bytes, size));
  return 0;
}
