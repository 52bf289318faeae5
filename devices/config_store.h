// quorvex.ini as the whole program uses it. A change that cannot be written holds all the same until the
// program ends, and is written together with the next one that can be.
#pragma once

#include <functional>

#include "base/ini_file.h"

namespace quorvex {

// What the file says now, and over it what could not be written so far.
[[nodiscard]] IniSnapshot ReadConfig();

// Changes the file in one step: `change` sets in a document of its own the keys that are to change. Whatever
// the answer is, the change holds.
IniFile::Result UpdateConfig(const std::function<void(IniDocument&)>& change);

// Says on the text line that a change was not written; nothing for one that was.
void TellConfigResult(IniFile::Result result);

}  // namespace quorvex
