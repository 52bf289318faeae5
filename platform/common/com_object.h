// The ground of every COM object of the platform layer: a true reference count, interfaces by their numbers,
// and the count of living objects that keeps the module loaded.
#pragma once

#include <strmif.h>
#include <unknwn.h>

#include <atomic>

namespace quorvex {

// Counts itself among the objects that keep the module loaded.
class ModuleUser {
 public:
  ModuleUser() { ++living; }
  ModuleUser(const ModuleUser&) = delete;
  ModuleUser& operator=(const ModuleUser&) = delete;
  ~ModuleUser() { --living; }
  static bool Any() { return living != 0; }
  // Keeps the module loaded until it is taken back, whoever does so.
  static void Lock(bool locked) { locked ? ++living : --living; }

 private:
  static inline std::atomic<long> living{0};
};

// Whether a pointer to Interface answers for `iid`: its own number and those of what it extends.
template <typename Interface>
bool AnswersFor(REFIID iid) {
  return iid == __uuidof(Interface);
}
template <>
inline bool AnswersFor<IBaseFilter>(REFIID iid) {
  return iid == __uuidof(IBaseFilter) || iid == __uuidof(IMediaFilter) || iid == __uuidof(IPersist);
}

// The pointer of `object` that answers for `iid` among First and Rest; IUnknown is First's. Null when there
// is none.
template <typename First, typename... Rest, typename Object>
void* FindInterface(Object* object, REFIID iid) {
  if (iid == __uuidof(IUnknown) || AnswersFor<First>(iid)) return static_cast<First*>(object);
  void* found = nullptr;
  ((found == nullptr && AnswersFor<Rest>(iid) ? found = static_cast<Rest*>(object) : nullptr), ...);
  return found;
}

// What QueryInterface does with an interface that was found, or was not.
inline HRESULT HandOut(IUnknown* counted, void* found, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = found;
  if (found == nullptr) return E_NOINTERFACE;
  counted->AddRef();
  return S_OK;
}

// An object that implements Interfaces and ends with its last reference; it is made with one.
template <typename First, typename... Rest>
class ComObject : public First, public Rest..., private ModuleUser {
 public:
  ComObject() = default;
  ComObject(const ComObject&) = delete;
  ComObject& operator=(const ComObject&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    return HandOut(static_cast<First*>(this), Find(iid), object);
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references;
    if (left == 0) delete this;
    return left;
  }

 protected:
  virtual ~ComObject() = default;

  // The interface of this number; null when there is none.
  virtual void* Find(REFIID iid) { return FindInterface<First, Rest...>(this, iid); }

 private:
  std::atomic<ULONG> references{1};
};

}  // namespace quorvex
