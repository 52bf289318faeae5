// What an assertion of the libraries that read discs ends is left where it is (platform/dvd/library_guard.h):
// no leak is a finding. To be included once in a program.
#pragma once

extern "C" const char*
__lsan_default_suppressions() {  // NOLINT(bugprone-reserved-identifier,misc-definitions-in-headers)
  return "leak:dvdnav_open_common\nleak:ifoOpen\nleak:DVDOpenFile\nleak:vm_new_copy\nleak:UDF\n";
}
