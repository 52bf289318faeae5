// The steps of opening a device, taken one after the other. The first that answers another code than S_OK is
// reported by its name and ends the opening, which has failed only when that code is a failure.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include <string>

#include "base/com_ptr.h"
#include "panel/main_window.h"

namespace quorvex {

class OpeningSteps {
 public:
  // Takes a step: a callable that answers a platform's code. Nothing after a reported one. Answers whether to
  // go on.
  template <typename Step>
  bool Take(const std::string& name, const Step& step) {
    if (result != S_OK) return false;
    result = step();
    return !ReportErrorIf(result, name);
  }

  // The step of asking an object for an interface.
  template <typename Interface>
  bool Query(IUnknown* object, REFIID iid, ComPtr<Interface>& to, const char* name) {
    return Take(name, [&] { return object->QueryInterface(iid, to.ReceiveVoid()); });
  }

  // The last code, and whether it is a success code.
  [[nodiscard]] HRESULT Result() const { return result; }
  [[nodiscard]] bool Succeeded() const { return SUCCEEDED(result); }

 private:
  HRESULT result = S_OK;
};

}  // namespace quorvex
