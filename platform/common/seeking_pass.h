// The seeking interfaces of a renderer: the platform's pass-through, which hands what it is asked up the
// stream.
#pragma once

#include <windows.h>

#include <strmif.h>

#include <control.h>
#include <uuids.h>

#include "base/com_ptr.h"

namespace quorvex {

class SeekingPass {
 public:
  static bool Answers(REFIID iid) { return iid == __uuidof(IMediaSeeking) || iid == IID_IMediaPosition; }

  // The interface for `iid`, one that Answers; its references are those of `owner`. Null when the platform
  // has none. What was given out once stays with the filter to its end, for the graph keeps it.
  void* Find(REFIID iid, IBaseFilter& owner, IPin& pin) {
    if (!part) Make(owner, pin);
    void* found = nullptr;
    // The reference that it adds is the owner's own, so it is given back.
    if (part && SUCCEEDED(part->QueryInterface(iid, &found))) owner.Release();
    return found;
  }

 private:
  void Make(IBaseFilter& owner, IPin& pin) {
    ::CoCreateInstance(CLSID_SeekingPassThru, &owner, CLSCTX_INPROC_SERVER, __uuidof(IUnknown),
                       part.ReceiveVoid());
    if (const auto inner = part.As<ISeekingPassThru>()) inner->Init(TRUE, &pin);
  }

  ComPtr<IUnknown> part;
};

}  // namespace quorvex
