// store_writer FILE  Registers one disc after another in a CD information store, until it is killed.
#include <windows.h>

#include <cstdio>
#include <string>

#include "base/ini_file.h"
#include "devices/cd/disc_store.h"

int main(int count, char** arguments) {
  if (count != 2) return 2;
  const quorvex::IniFile store(arguments[1]);
  // Other discs than the run before registered.
  const unsigned long begun = ::GetTickCount() / 20 % 0x10000;
  for (unsigned disc = 1;; ++disc) {
    char id[9];
    std::snprintf(id, sizeof id, "%04lX%04X", begun, disc % 0x10000);
    store.Update([&](quorvex::IniDocument& document) {
      if (!quorvex::IsDiscKnown(document, id)) quorvex::AddDisc(document, id, 20, "Track");
    });
  }
}
