// What a capture graph builder can do beyond the platform's interface: finish a recording that was cut off.
// The platform's own builder does not have it.
#pragma once

#include <windows.h>

#include <unknwn.h>

namespace quorvex {

// NOLINTBEGIN(readability-identifier-naming): as the platform names interfaces
struct ICaptureRecovery : public IUnknown {
  // Looks at the capture file and the journal beside it. S_OK: the file now is a movie of everything that was
  // recorded up to a second before the end, `length` (units of 100 ns) long, and the journal is gone.
  // S_FALSE: there is nothing to be finished (no journal, or one of another recording), and nothing was
  // touched. A failure: there is, but the files could not be opened (a recording into it is going on) or
  // written; the journal is kept.
  virtual HRESULT STDMETHODCALLTYPE Recover(LPCOLESTR file, LONGLONG* length) = 0;
};
// NOLINTEND(readability-identifier-naming)

}  // namespace quorvex

__CRT_UUID_DECL(quorvex::ICaptureRecovery, 0x5c0a1f30, 0x7e54, 0x4a2b, 0x9f, 0x61, 0x2d, 0x8e, 0x47, 0xb3,
                0x10, 0x30)
