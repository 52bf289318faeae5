// The platform's list of devices, with what a test puts into its categories.
#pragma once

#include <windows.h>

#include <strmif.h>
#include <uuids.h>

#include <functional>
#include <string>
#include <vector>

#include "base/com_ptr.h"
#include "tests/support/com_fake.h"

namespace quorvex {

struct FakeEntry {
  const wchar_t* name;
  const wchar_t* id;                          // its class, as text
  std::function<ComPtr<IBaseFilter>()> make;  // none: it cannot be bound
};

struct FakeCategory {
  CLSID id;
  const char* name;  // by which the script may refuse to list it
  std::vector<FakeEntry> entries;
};

class FakeProperties final : public ComFake<ComScript, IPropertyBag> {
 public:
  FakeProperties(ComScript& itsScript, const FakeEntry& itsEntry)
      : ComFake(itsScript, "", {{{IID_IPropertyBag, "IPropertyBag"}}}), entry(itsEntry) {}

  STDMETHODIMP Read(LPCOLESTR property, VARIANT* value, IErrorLog*) override {
    const bool name = property == std::wstring(L"FriendlyName");
    const wchar_t* const text = name ? entry.name : entry.id;
    if (const HRESULT result = script.Answer(name ? "Read name" : "Read class"); FAILED(result))
      return result;
    if (text == nullptr) return E_INVALIDARG;
    value->vt = VT_BSTR;
    value->bstrVal = ::SysAllocString(text);
    return S_OK;
  }
  QUORVEX_UNEXPECTED(Write, LPCOLESTR, VARIANT*)

 private:
  const FakeEntry& entry;
};

class FakeMoniker final : public ComFake<ComScript, IMoniker> {
 public:
  FakeMoniker(ComScript& itsScript, const FakeEntry& itsEntry)
      : ComFake(itsScript, "", {{{IID_IMoniker, "IMoniker"}}}), entry(itsEntry) {}

  STDMETHODIMP BindToObject(IBindCtx*, IMoniker*, REFIID iid, void** object) override {
    EXPECT_EQ(iid, IID_IBaseFilter);
    const HRESULT result = script.Answer("BindToObject");
    *object = SUCCEEDED(result) && entry.make ? entry.make().Detach() : nullptr;
    return *object == nullptr && SUCCEEDED(result) ? E_FAIL : result;
  }
  STDMETHODIMP BindToStorage(IBindCtx*, IMoniker*, REFIID iid, void** object) override {
    const auto made = ComPtr<IPropertyBag>::Attach(new FakeProperties(script, entry));
    return made->QueryInterface(iid, object);  // which may be refused as "IPropertyBag"
  }
  QUORVEX_UNEXPECTED(GetClassID, CLSID*)
  QUORVEX_UNEXPECTED(IsDirty)
  QUORVEX_UNEXPECTED(Load, IStream*)
  QUORVEX_UNEXPECTED(Save, IStream*, BOOL)
  QUORVEX_UNEXPECTED(GetSizeMax, ULARGE_INTEGER*)
  QUORVEX_UNEXPECTED(Reduce, IBindCtx*, DWORD, IMoniker**, IMoniker**)
  QUORVEX_UNEXPECTED(ComposeWith, IMoniker*, BOOL, IMoniker**)
  QUORVEX_UNEXPECTED(Enum, BOOL, IEnumMoniker**)
  QUORVEX_UNEXPECTED(IsEqual, IMoniker*)
  QUORVEX_UNEXPECTED(Hash, DWORD*)
  QUORVEX_UNEXPECTED(IsRunning, IBindCtx*, IMoniker*, IMoniker*)
  QUORVEX_UNEXPECTED(GetTimeOfLastChange, IBindCtx*, IMoniker*, FILETIME*)
  QUORVEX_UNEXPECTED(Inverse, IMoniker**)
  QUORVEX_UNEXPECTED(CommonPrefixWith, IMoniker*, IMoniker**)
  QUORVEX_UNEXPECTED(RelativePathTo, IMoniker*, IMoniker**)
  QUORVEX_UNEXPECTED(GetDisplayName, IBindCtx*, IMoniker*, LPOLESTR*)
  QUORVEX_UNEXPECTED(ParseDisplayName, IBindCtx*, IMoniker*, LPOLESTR, ULONG*, IMoniker**)
  QUORVEX_UNEXPECTED(IsSystemMoniker, DWORD*)

 private:
  const FakeEntry& entry;
};

class FakeMonikers final : public ComFake<ComScript, IEnumMoniker> {
 public:
  FakeMonikers(ComScript& itsScript, const FakeCategory& itsCategory)
      : ComFake(itsScript, "", {{{IID_IEnumMoniker, "IEnumMoniker"}}}), category(itsCategory) {}

  STDMETHODIMP Next(ULONG count, IMoniker** moniker, ULONG*) override {
    EXPECT_EQ(count, 1U);
    if (const HRESULT result = script.Answer("NextEntry"); FAILED(result)) return result;
    if (next == category.entries.size()) return S_FALSE;
    *moniker = new FakeMoniker(script, category.entries[next++]);
    return S_OK;
  }
  STDMETHODIMP Reset() override {
    next = 0;
    return script.Answer("ResetEntries");
  }
  QUORVEX_UNEXPECTED(Skip, ULONG)
  QUORVEX_UNEXPECTED(Clone, IEnumMoniker**)

 private:
  const FakeCategory& category;
  std::size_t next = 0;
};

class FakeDeviceList final : public ComFake<ComScript, ICreateDevEnum> {
 public:
  FakeDeviceList(ComScript& itsScript, const std::vector<FakeCategory>& itsCategories)
      : ComFake(itsScript, "", {{{IID_ICreateDevEnum, "ICreateDevEnum"}}}), categories(itsCategories) {}

  STDMETHODIMP CreateClassEnumerator(REFCLSID id, IEnumMoniker** monikers, DWORD flags) override {
    EXPECT_EQ(flags, 0U);
    *monikers = nullptr;
    for (const FakeCategory& category : categories) {
      if (category.id != id) continue;
      const HRESULT answer = script.Answer(std::string("List ") + category.name);
      if (answer != S_OK || category.entries.empty()) return answer != S_OK ? answer : S_FALSE;
      *monikers = new FakeMonikers(script, category);
      return S_OK;
    }
    return S_FALSE;
  }

 private:
  const std::vector<FakeCategory>& categories;
};

}  // namespace quorvex
