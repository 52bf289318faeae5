// Calls into libdvdnav and libdvdread. Both are built so that what they assert of a disc, and do not find,
// ends the call instead of the process (tools/deps/library_guard).
#pragma once

#include <csetjmp>
#include <utility>

namespace quorvex {

// Where a failed assertion of this thread goes on; null outside of a guarded call.
std::jmp_buf*& LibraryGuard();

// Runs `call`, which holds nothing that must be destroyed. False when an assertion ended it: the library's
// object is then not to be used any more.
template <typename Call>
bool Guarded(Call call) {
  std::jmp_buf place;
  std::jmp_buf* const before = std::exchange(LibraryGuard(), &place);
  if (setjmp(place) != 0) {  // NOLINT(cert-err52-cpp): it leaves C functions only
    LibraryGuard() = before;
    return false;
  }
  call();
  LibraryGuard() = before;
  return true;
}

}  // namespace quorvex
