#include "panel/panel_accessibility.h"

#include <commctrl.h>

#include "base/com_ptr.h"
#include "panel/accessible_object.h"
#include "panel/accessible_text.h"
#include "panel/control_panel.h"
#include "panel/main_window.h"
#include "panel/scale.h"
#include "panel/status_display.h"

namespace quorvex {
namespace {

constexpr LONG kDisplayChild = 1;
constexpr LONG kFirstButtonChild = 2;

RECT WindowRect(HWND window) {
  RECT rect{};
  ::GetWindowRect(window, &rect);
  return rect;
}

class ButtonObject final : public AccessibleObject {
 public:
  explicit ButtonObject(std::size_t buttonRow)
      : row(buttonRow), text(SplitToolTip(LoadText(kButtons[buttonRow].name))) {}

 private:
  [[nodiscard]] HWND WindowOf(LONG) const override { return ButtonWindow(row); }
  [[nodiscard]] std::string Name(LONG) const override { return text.name; }
  [[nodiscard]] LONG Role(LONG) const override { return ROLE_SYSTEM_PUSHBUTTON; }
  [[nodiscard]] LONG State(LONG) const override {
    const bool down = (::SendMessageA(ButtonWindow(row), BM_GETSTATE, 0, 0) & BST_PUSHED) != 0;
    const bool focused = ::GetFocus() == ButtonWindow(row);
    const bool waits = ::IsWindowEnabled(mainWindow) == FALSE;  // for an answer to a dialog
    return STATE_SYSTEM_FOCUSABLE | (waits ? STATE_SYSTEM_UNAVAILABLE : 0) |
           (down ? STATE_SYSTEM_PRESSED : 0) | (focused ? STATE_SYSTEM_FOCUSED : 0) |
           (LookOf(row) == ButtonLook::kLit ? STATE_SYSTEM_CHECKED : 0);
  }
  // A digit's key is the digit itself.
  [[nodiscard]] std::string Shortcut(LONG) const override {
    return kButtons[row].toolTip == 0 ? text.name : text.shortcut;
  }
  [[nodiscard]] std::string DefaultAction(LONG) const override { return "Press"; }
  void DoDefaultAction(LONG) override {
    if (::IsWindowEnabled(mainWindow) != FALSE) ::PostMessageA(ButtonWindow(row), BM_CLICK, 0, 0);
  }
  [[nodiscard]] RECT Location(LONG) const override { return WindowRect(ButtonWindow(row)); }

  std::size_t row;
  KeyText text;
};

class PanelAccessible final : public AccessibleObject {
 private:
  [[nodiscard]] LONG ChildCount() const override { return kDisplayChild + static_cast<LONG>(kButtonCount); }
  [[nodiscard]] HWND WindowOf(LONG child) const override {
    if (child == CHILDID_SELF) return mainWindow;
    return child >= kFirstButtonChild ? ButtonWindow(static_cast<std::size_t>(child - kFirstButtonChild))
                                      : nullptr;
  }
  [[nodiscard]] std::string Name(LONG child) const override {
    return child == kDisplayChild ? "Display" : "Quorvex";
  }
  [[nodiscard]] std::string Value(LONG child) const override {
    const DisplayContent& shown = ShownContent();
    return child == kDisplayChild ? DisplayAsText(shown.values, shown.text) : "";
  }
  [[nodiscard]] LONG Role(LONG child) const override {
    return child == kDisplayChild ? ROLE_SYSTEM_INDICATOR : ROLE_SYSTEM_CLIENT;
  }
  [[nodiscard]] LONG State(LONG child) const override {
    return child == kDisplayChild ? STATE_SYSTEM_READONLY : 0;
  }
  [[nodiscard]] RECT Location(LONG child) const override {
    if (child != kDisplayChild) return WindowRect(WindowOf(child));
    const Rect area = ToPixels(kDisplayElements[kWholeDisplay].Rectangle());
    RECT rect{area.left, area.top, area.right, area.bottom};
    ::MapWindowPoints(mainWindow, nullptr, reinterpret_cast<POINT*>(&rect), 2);
    return rect;
  }
};

LRESULT ReplyWith(AccessibleObject* object, WPARAM wParam) {
  const ComPtr<IAccessible> owner = ComPtr<IAccessible>::Attach(object);
  return ::LresultFromObject(__uuidof(IAccessible), wParam, owner.Get());
}

bool AsksForClient(LPARAM lParam) { return static_cast<LONG>(lParam) == static_cast<LONG>(OBJID_CLIENT); }

LRESULT CALLBACK ButtonObjectProcedure(HWND button, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                       DWORD_PTR row) {
  if (message == WM_GETOBJECT && AsksForClient(lParam)) return ReplyWith(new ButtonObject(row), wParam);
  return ::DefSubclassProc(button, message, wParam, lParam);
}

}  // namespace

void InstallButtonAccessibility() {
  for (std::size_t row = 0; row < kButtonCount; ++row) {
    ::SetWindowSubclass(ButtonWindow(row), ButtonObjectProcedure, 0, row);
  }
}

LRESULT PanelObject(WPARAM wParam, LPARAM lParam) {
  return AsksForClient(lParam) ? ReplyWith(new PanelAccessible, wParam) : 0;
}

}  // namespace quorvex
