// An interface that is an object of its own inside another COM object: it lives and is counted with that one.
#pragma once

#include <unknwn.h>

namespace quorvex {

template <typename Interface>
class ObjectPart : public Interface {
 public:
  explicit ObjectPart(IUnknown& whole) : object(whole) {}
  ObjectPart(const ObjectPart&) = delete;
  ObjectPart& operator=(const ObjectPart&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** found) override {
    return object.QueryInterface(iid, found);
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return object.AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return object.Release(); }

 protected:
  ~ObjectPart() = default;

 private:
  IUnknown& object;
};

}  // namespace quorvex
