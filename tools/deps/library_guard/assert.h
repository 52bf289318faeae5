// Stands before the system's <assert.h> while libdvdread and libdvdnav are compiled: what a damaged disc
// makes them assert ends the call into the library (platform/dvd/library_guard.h), not the process.
#undef assert
extern void quorvex_library_failed(void) __attribute__((noreturn));
#define assert(condition) ((condition) ? (void)0 : quorvex_library_failed())
