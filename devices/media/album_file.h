// The album store on disk.
#pragma once

#include <functional>

#include "base/ini_document.h"

namespace quorvex {

// The store as it is now; empty when there is none. The display says so when it cannot be read.
IniDocument ReadAlbumStore();

// Changes the store in one step. False when it stays as it is because it cannot be read or written; the
// display then says which.
bool ChangeAlbumStore(const std::function<void(IniDocument&)>& change);

}  // namespace quorvex
