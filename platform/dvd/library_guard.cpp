#include "platform/dvd/library_guard.h"

#include <exception>

namespace quorvex {

std::jmp_buf*& LibraryGuard() {
  thread_local std::jmp_buf* guard = nullptr;
  return guard;
}

}  // namespace quorvex

// What the libraries call instead of abort().
extern "C" [[noreturn]] void quorvex_library_failed() {  // NOLINT(readability-identifier-naming)
  if (std::jmp_buf* place = quorvex::LibraryGuard())
    std::longjmp(*place, 1);  // NOLINT(cert-err52-cpp): it leaves C functions only
  std::terminate();
}
