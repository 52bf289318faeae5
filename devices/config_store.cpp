#include "devices/config_store.h"

#include <string>

#include "devices/shared_state.h"
#include "panel/status_display.h"

namespace quorvex {
namespace {

struct Unwritten {
  std::string path;  // of the file that it was for
  IniDocument changes{""};
};

Unwritten& UnwrittenChanges() {
  static Unwritten unwritten;
  if (unwritten.path != configPath) unwritten = {configPath, IniDocument("")};
  return unwritten;
}

}  // namespace

IniSnapshot ReadConfig() {
  IniSnapshot config = IniFile(configPath).Read();
  config.document.SetAll(UnwrittenChanges().changes);
  return config;
}

IniFile::Result UpdateConfig(const std::function<void(IniDocument&)>& change) {
  IniDocument& unwritten = UnwrittenChanges().changes;
  change(unwritten);
  const IniFile::Result result =
      IniFile(configPath).Update([&](IniDocument& document) { document.SetAll(unwritten); });
  if (result == IniFile::Result::kDone) unwritten = IniDocument("");
  return result;
}

void TellConfigResult(IniFile::Result result) {
  switch (result) {
    case IniFile::Result::kDone: break;
    case IniFile::Result::kFailed: SetDisplayText("Cannot write quorvex.ini"); break;
    case IniFile::Result::kUnreadable: SetDisplayText("Cannot read quorvex.ini"); break;
  }
}

}  // namespace quorvex
