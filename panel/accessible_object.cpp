#include "panel/accessible_object.h"

namespace quorvex {
namespace {

// Texts that are empty are answered as "none".
HRESULT AnswerText(const std::string& text, BSTR* answer) {
  *answer = nullptr;
  if (text.empty()) return S_FALSE;
  const int length = static_cast<int>(text.size());
  std::wstring wide(text.size(), L'\0');
  const int size = ::MultiByteToWideChar(CP_ACP, 0, text.data(), length, wide.data(), length);
  *answer = ::SysAllocStringLen(wide.data(), static_cast<UINT>(size));
  return *answer != nullptr ? S_OK : E_OUTOFMEMORY;
}

void AnswerNumber(VARIANT* answer, LONG number) {
  answer->vt = VT_I4;
  answer->lVal = number;
}

}  // namespace

HRESULT AccessibleObject::QueryInterface(REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  const bool known = iid == IID_IUnknown || iid == IID_IDispatch || iid == __uuidof(IAccessible);
  *object = known ? static_cast<IAccessible*>(this) : nullptr;
  if (!known) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

ULONG AccessibleObject::AddRef() { return ++references; }

ULONG AccessibleObject::Release() {
  const ULONG left = --references;
  if (left == 0) delete this;
  return left;
}

HRESULT AccessibleObject::GetTypeInfoCount(UINT* count) {
  *count = 0;
  return S_OK;
}

bool AccessibleObject::IsChild(const VARIANT& child) const {
  return child.vt == VT_I4 && child.lVal >= CHILDID_SELF && child.lVal <= ChildCount();
}

bool AccessibleObject::IsPart(const VARIANT& child) const {
  return IsChild(child) && (child.lVal == CHILDID_SELF || WindowOf(child.lVal) == nullptr);
}

HRESULT AccessibleObject::get_accParent(IDispatch** parent) {
  return ::AccessibleObjectFromWindow(::GetAncestor(WindowOf(CHILDID_SELF), GA_PARENT), OBJID_WINDOW,
                                      IID_IDispatch, reinterpret_cast<void**>(parent));
}

HRESULT AccessibleObject::get_accChildCount(LONG* count) {
  *count = ChildCount();
  return S_OK;
}

HRESULT AccessibleObject::get_accChild(VARIANT child, IDispatch** object) {
  *object = nullptr;
  if (!IsChild(child)) return E_INVALIDARG;
  const HWND window = child.lVal == CHILDID_SELF ? nullptr : WindowOf(child.lVal);
  if (window == nullptr) return S_FALSE;
  return ::AccessibleObjectFromWindow(window, OBJID_CLIENT, IID_IDispatch, reinterpret_cast<void**>(object));
}

// A child with a window answers for itself: its object is handed out in place of its number.
HRESULT AccessibleObject::AnswerChild(LONG child, VARIANT* answer) {
  AnswerNumber(answer, child);
  if (IsPart(*answer)) return S_OK;
  IDispatch* object = nullptr;
  const HRESULT result = get_accChild(*answer, &object);
  answer->vt = result == S_OK ? VT_DISPATCH : VT_EMPTY;
  answer->pdispVal = object;
  return result;
}

HRESULT AccessibleObject::get_accName(VARIANT child, BSTR* name) {
  return IsPart(child) ? AnswerText(Name(child.lVal), name) : E_INVALIDARG;
}

HRESULT AccessibleObject::get_accValue(VARIANT child, BSTR* value) {
  return IsPart(child) ? AnswerText(Value(child.lVal), value) : E_INVALIDARG;
}

HRESULT AccessibleObject::get_accRole(VARIANT child, VARIANT* role) {
  if (!IsPart(child)) return E_INVALIDARG;
  AnswerNumber(role, Role(child.lVal));
  return S_OK;
}

HRESULT AccessibleObject::get_accState(VARIANT child, VARIANT* state) {
  if (!IsPart(child)) return E_INVALIDARG;
  AnswerNumber(state, State(child.lVal));
  return S_OK;
}

HRESULT AccessibleObject::get_accKeyboardShortcut(VARIANT child, BSTR* shortcut) {
  return IsPart(child) ? AnswerText(Shortcut(child.lVal), shortcut) : E_INVALIDARG;
}

HRESULT AccessibleObject::get_accFocus(VARIANT* focus) {
  focus->vt = VT_EMPTY;
  const HWND focused = ::GetFocus();
  for (LONG child = CHILDID_SELF; focused != nullptr && child <= ChildCount(); ++child) {
    if (focused == WindowOf(child)) return AnswerChild(child, focus);
  }
  return S_FALSE;
}

HRESULT AccessibleObject::get_accDefaultAction(VARIANT child, BSTR* action) {
  return IsPart(child) ? AnswerText(DefaultAction(child.lVal), action) : E_INVALIDARG;
}

HRESULT AccessibleObject::accLocation(LONG* left, LONG* top, LONG* width, LONG* height, VARIANT child) {
  if (!IsPart(child)) return E_INVALIDARG;
  const RECT rect = Location(child.lVal);
  *left = rect.left;
  *top = rect.top;
  *width = rect.right - rect.left;
  *height = rect.bottom - rect.top;
  return S_OK;
}

HRESULT AccessibleObject::accHitTest(LONG x, LONG y, VARIANT* child) {
  child->vt = VT_EMPTY;
  for (LONG candidate = ChildCount(); candidate >= CHILDID_SELF; --candidate) {
    const RECT rect = Location(candidate);
    if (::PtInRect(&rect, {x, y}) != FALSE) return AnswerChild(candidate, child);
  }
  return S_FALSE;
}

HRESULT AccessibleObject::accDoDefaultAction(VARIANT child) {
  if (!IsPart(child)) return E_INVALIDARG;
  if (DefaultAction(child.lVal).empty()) return DISP_E_MEMBERNOTFOUND;
  DoDefaultAction(child.lVal);
  return S_OK;
}

}  // namespace quorvex
