// What fakes of the platform's objects stand on: true reference counts, a common log of the calls, answers
// given by the test, one call of all that fails by its number, and a failed test where nobody should call.
#pragma once

#include <gtest/gtest.h>

#include <windows.h>

#include <control.h>

#include <array>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace quorvex {

// What a test has its fakes answer, and what they were asked.
struct ComScript {
  std::map<std::string, HRESULT> answers;  // by the call's name; S_OK where there is none
  std::string log;                         // a line for every call
  int alive = 0;                           // fakes that somebody still holds

  // Every call that may fail, by its name, since CountCalls, and what the one of a number (the first is 1) is
  // answered; none with 0.
  std::vector<std::string> calls;
  std::size_t failingCall = 0;
  HRESULT failure = E_FAIL;

  // What happens before the call of a number is answered; none with 0.
  std::size_t lateCall = 0;
  std::function<void()> meanwhile;

  void CountCalls(std::size_t failing = 0, HRESULT answer = E_FAIL) {
    calls.clear();
    failingCall = failing;
    failure = answer;
  }

  // The answer to a call.
  HRESULT Answer(const std::string& name) {
    calls.push_back(name);
    if (calls.size() == failingCall) return failure;
    if (calls.size() == lateCall) meanwhile();
    const auto found = answers.find(name);
    return found == answers.end() ? S_OK : found->second;
  }
  HRESULT Call(const std::string& name, const std::string& arguments = "") {
    log += name + (arguments.empty() ? "" : " " + arguments) + '\n';
    return Answer(name);
  }
  // A question, whose answer is told when it succeeds.
  template <typename Value>
  HRESULT Tell(const std::string& name, Value* to, const Value& value) {
    const HRESULT result = Answer(name);
    if (SUCCEEDED(result)) *to = value;
    return result;
  }
  // The log since the last time.
  std::string Take() { return std::exchange(log, ""); }
};

inline HRESULT UnexpectedCall(const char* name) {
  ADD_FAILURE() << "nobody should call " << name;
  return E_NOTIMPL;
}

// A method that nobody should call.
#define QUORVEX_UNEXPECTED(method, ...) \
  STDMETHODIMP method(__VA_ARGS__) override { return UnexpectedCall(#method); }

// A property that nobody should read or change.
#define QUORVEX_UNEXPECTED_PROPERTY(property, type) \
  QUORVEX_UNEXPECTED(get_##property, type*)         \
  QUORVEX_UNEXPECTED(put_##property, type)

// An interface for scripts as well, which nobody uses as such.
template <typename Dual>
class NoDispatch : public Dual {
 public:
  QUORVEX_UNEXPECTED(GetTypeInfoCount, UINT*)
  QUORVEX_UNEXPECTED(GetTypeInfo, UINT, LCID, ITypeInfo**)
  QUORVEX_UNEXPECTED(GetIDsOfNames, REFIID, LPOLESTR*, UINT, LCID, DISPID*)
  QUORVEX_UNEXPECTED(Invoke, DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*)
};

// An object with these interfaces, which ends with its last reference. `Script`: a ComScript, with what else
// the object's test says.
template <typename Script, typename... Interfaces>
class ComFake : public Interfaces... {
 public:
  struct Offered {
    IID iid;
    const char* name;  // by which the script may refuse it
  };

  // `offers`: in the order of the interfaces. Nothing is written of the end of a fake without a name.
  ComFake(Script& itsScript, const char* itsName, std::array<Offered, sizeof...(Interfaces)> offers)
      : script(itsScript), label(itsName), offered(offers) {
    ++script.alive;
  }
  ComFake(const ComFake&) = delete;
  ComFake& operator=(const ComFake&) = delete;
  virtual ~ComFake() { --script.alive; }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    const std::array<void*, sizeof...(Interfaces)> pointers{static_cast<Interfaces*>(this)...};
    for (std::size_t i = 0; i < offered.size(); ++i) {
      if (iid == offered[i].iid) return Hand(pointers[i], script.Answer(offered[i].name), object);
    }
    *object = nullptr;
    return E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references;
    if (left == 0) {
      if (*label != '\0') script.log += std::string("gone ") + label + '\n';
      delete this;
    }
    return left;
  }

 protected:
  Script& script;

 private:
  HRESULT Hand(void* pointer, HRESULT result, void** object) {
    *object = SUCCEEDED(result) ? pointer : nullptr;
    if (SUCCEEDED(result)) AddRef();
    return result;
  }

  const char* label;
  std::array<Offered, sizeof...(Interfaces)> offered;
  ULONG references = 1;
};

// A class that the platform's own CoCreateInstance finds while this lives.
class FakeClass final : private IClassFactory {
 public:
  using Creator = std::function<HRESULT(REFIID, void**)>;

  FakeClass(REFCLSID id, Creator creator) : create(std::move(creator)) {
    ::CoRegisterClassObject(id, this, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &registration);
  }
  FakeClass(const FakeClass&) = delete;
  FakeClass& operator=(const FakeClass&) = delete;
  ~FakeClass() { ::CoRevokeClassObject(registration); }

 private:
  STDMETHODIMP CreateInstance(IUnknown*, REFIID iid, void** object) override {
    *object = nullptr;
    return create(iid, object);
  }
  STDMETHODIMP LockServer(BOOL) override { return S_OK; }
  STDMETHODIMP QueryInterface(REFIID, void** object) override {
    *object = static_cast<IClassFactory*>(this);
    return S_OK;
  }
  // It lives as long as its test.
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }

  Creator create;
  DWORD registration = 0;
};

}  // namespace quorvex
