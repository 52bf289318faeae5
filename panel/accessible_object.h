// The common part of the objects that answer screen readers (IAccessible): reference counting, what this
// program's elements never do, and plain C++ questions in place of the interface's calls.
#pragma once

#include <windows.h>

#include <oleacc.h>

#include <string>

namespace quorvex {

class AccessibleObject : public IAccessible {
 public:
  AccessibleObject() = default;
  AccessibleObject(const AccessibleObject&) = delete;
  AccessibleObject& operator=(const AccessibleObject&) = delete;

  STDMETHODIMP QueryInterface(REFIID iid, void** object) final;
  STDMETHODIMP_(ULONG) AddRef() final;
  STDMETHODIMP_(ULONG) Release() final;

  STDMETHODIMP GetTypeInfoCount(UINT* count) final;
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) final { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) final { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) final {
    return E_NOTIMPL;
  }

  STDMETHODIMP get_accParent(IDispatch** parent) final;
  STDMETHODIMP get_accChildCount(LONG* count) final;
  STDMETHODIMP get_accChild(VARIANT child, IDispatch** object) final;
  STDMETHODIMP get_accName(VARIANT child, BSTR* name) final;
  STDMETHODIMP get_accValue(VARIANT child, BSTR* value) final;
  STDMETHODIMP get_accDescription(VARIANT, BSTR*) final { return DISP_E_MEMBERNOTFOUND; }
  STDMETHODIMP get_accRole(VARIANT child, VARIANT* role) final;
  STDMETHODIMP get_accState(VARIANT child, VARIANT* state) final;
  STDMETHODIMP get_accHelp(VARIANT, BSTR*) final { return DISP_E_MEMBERNOTFOUND; }
  STDMETHODIMP get_accHelpTopic(BSTR*, VARIANT, LONG*) final { return DISP_E_MEMBERNOTFOUND; }
  STDMETHODIMP get_accKeyboardShortcut(VARIANT child, BSTR* shortcut) final;
  STDMETHODIMP get_accFocus(VARIANT* focus) final;
  STDMETHODIMP get_accSelection(VARIANT*) final { return DISP_E_MEMBERNOTFOUND; }
  STDMETHODIMP get_accDefaultAction(VARIANT child, BSTR* action) final;
  STDMETHODIMP accSelect(LONG, VARIANT) final { return DISP_E_MEMBERNOTFOUND; }
  STDMETHODIMP accLocation(LONG* left, LONG* top, LONG* width, LONG* height, VARIANT child) final;
  STDMETHODIMP accNavigate(LONG, VARIANT, VARIANT*) final { return DISP_E_MEMBERNOTFOUND; }
  STDMETHODIMP accHitTest(LONG x, LONG y, VARIANT* child) final;
  STDMETHODIMP accDoDefaultAction(VARIANT child) final;
  STDMETHODIMP put_accName(VARIANT, BSTR) final { return E_NOTIMPL; }
  STDMETHODIMP put_accValue(VARIANT, BSTR) final { return E_NOTIMPL; }

 protected:
  virtual ~AccessibleObject() = default;

  // Children are numbered from 1; CHILDID_SELF (0) is the object itself.
  [[nodiscard]] virtual LONG ChildCount() const { return 0; }
  // The window of a child that answers for itself (or of this object); null for a child that is part of this
  // object.
  [[nodiscard]] virtual HWND WindowOf(LONG child) const = 0;
  [[nodiscard]] virtual std::string Name(LONG child) const = 0;
  [[nodiscard]] virtual std::string Value(LONG) const { return {}; }
  [[nodiscard]] virtual LONG Role(LONG child) const = 0;
  [[nodiscard]] virtual LONG State(LONG child) const = 0;
  [[nodiscard]] virtual std::string Shortcut(LONG) const { return {}; }
  [[nodiscard]] virtual std::string DefaultAction(LONG) const { return {}; }
  virtual void DoDefaultAction(LONG) {}
  [[nodiscard]] virtual RECT Location(LONG child) const = 0;  // in screen pixels

 private:
  [[nodiscard]] bool IsChild(const VARIANT& child) const;
  // Whether a child is this object itself or a part of it that has no object of its own.
  [[nodiscard]] bool IsPart(const VARIANT& child) const;
  HRESULT AnswerChild(LONG child, VARIANT* answer);

  ULONG references = 1;
};

}  // namespace quorvex
