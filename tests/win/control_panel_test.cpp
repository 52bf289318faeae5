#include "panel/control_panel.h"

#include <commctrl.h>
#include <oleacc.h>

#include <algorithm>
#include <map>
#include <set>
#include <vector>

#include "base/com_ptr.h"
#include "panel/skin.h"
#include "shell/command_table.h"
#include "tests/support/panel.h"

namespace quorvex {
namespace {

struct Drawn {
  std::vector<COLORREF> pixels;
  int width;
  [[nodiscard]] COLORREF At(int x, int y) const { return pixels[static_cast<std::size_t>(y * width + x)]; }
};

class ControlPanelTest : public PanelTest {
 protected:
  // A button's face as it is drawn in a state.
  static Drawn Draw(int command, UINT state) {
    const ButtonLayout& layout = kButtons[ButtonIndex(command)];
    Drawn drawn{{}, layout.width};
    const BitmapDc dc = Canvas(layout.width, layout.height);
    DRAWITEMSTRUCT item{};
    item.CtlID = static_cast<UINT>(command);
    item.itemState = state;
    item.hDC = dc.Get();
    DrawPanelButton(item);
    for (int y = 0; y < layout.height; ++y) {
      for (int x = 0; x < layout.width; ++x) drawn.pixels.push_back(::GetPixel(dc.Get(), x, y));
    }
    return drawn;
  }
};

TEST_F(ControlPanelTest, AButtonIsACopyOfTheSkinAndSinksByOnePixelWhenPressed) {
  for (const ButtonLayout& layout : kButtons) {
    const Drawn up = Draw(layout.command, 0);
    const Drawn down = Draw(layout.command, ODS_SELECTED);
    for (int x = 0; x < layout.width; ++x) {
      ASSERT_EQ(down.At(x, 0), RGB(0, 0, 0)) << layout.command;
      ASSERT_EQ(down.At(x, 2), RGB(0, 0, 0)) << layout.command;
    }
    for (int y = 2; y < layout.height - 2; ++y) {
      for (int x = 2; x < layout.width - 2; ++x) ASSERT_EQ(down.At(x, y + 1), up.At(x, y)) << layout.command;
    }
  }
}

TEST_F(ControlPanelTest, ALitButtonHasAGreenFrame) {
  SetButtonState(kCommandRepeat, ButtonLook::kLit);
  const Drawn lit = Draw(kCommandRepeat, 0);
  const COLORREF green = RGB(0, 255, 0);
  for (int x = 0; x < 24; ++x) EXPECT_TRUE(lit.At(x, 0) == green && lit.At(x, 17) == green);
  for (int y = 0; y < 18; ++y) EXPECT_TRUE(lit.At(0, y) == green && lit.At(23, y) == green);
  EXPECT_NE(lit.At(1, 1), green);
  SetButtonState(kCommandRepeat, ButtonLook::kNormal);
  EXPECT_NE(Draw(kCommandRepeat, 0).At(0, 0), green);
  SetButtonState(4711, ButtonLook::kLit);  // no such button
}

TEST_F(ControlPanelTest, TheKeyThatHasTheKeyboardShowsIt) {
  const COLORREF white = RGB(255, 255, 255);
  const std::vector<COLORREF> plain = Draw(kCommandRepeat, 0).pixels;
  EXPECT_EQ(Draw(kCommandRepeat, ODS_FOCUS).pixels, plain) << "clicked, it has it too";
  ShowKeyFocus(true);
  const Drawn focused = Draw(kCommandRepeat, ODS_FOCUS);
  EXPECT_TRUE(focused.At(1, 1) == white && focused.At(22, 16) == white && focused.At(0, 0) != white);
  EXPECT_EQ(Draw(kCommandRepeat, 0).pixels, plain);
  ShowKeyFocus(false);
  EXPECT_EQ(Draw(kCommandRepeat, ODS_FOCUS).pixels, plain);
}

TEST_F(ControlPanelTest, AButtonIsRepaintedOncePerNewLook) {
  static int paints;
  ::UpdateWindow(mainWindow);
  ::SetWindowSubclass(
      Button(kCommandMute),
      [](HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
        if (message == WM_PAINT) ++paints;
        return ::DefSubclassProc(window, message, wParam, lParam);
      },
      9, 0);
  paints = 0;
  SetButtonState(kCommandMute, ButtonLook::kLit);
  SetButtonState(kCommandMute, ButtonLook::kLit);
  EXPECT_EQ(paints, 1);
}

// The tool tips, as the control holds them.
TEST_F(ControlPanelTest, EveryKeyButTheDigitsHasItsToolTip) {
  const HWND tips = ::FindWindowExA(nullptr, nullptr, TOOLTIPS_CLASSA, nullptr);
  ASSERT_NE(tips, nullptr);
  int count = 0;
  for (std::size_t row = 0; row < kButtonCount; ++row) {
    char text[200] = "";
    TOOLINFOA tool{};
    tool.cbSize = TTTOOLINFOA_V2_SIZE;
    tool.hwnd = mainWindow;
    tool.uFlags = TTF_IDISHWND;
    tool.uId = reinterpret_cast<UINT_PTR>(ButtonWindow(row));
    tool.lpszText = text;
    ::SendMessageA(tips, TTM_GETTEXTA, 0, reinterpret_cast<LPARAM>(&tool));
    EXPECT_EQ(std::string(text), kButtons[row].toolTip == 0 ? "" : LoadText(kButtons[row].toolTip))
        << kButtons[row].command;
    count += text[0] != '\0' ? 1 : 0;
  }
  EXPECT_EQ(count, 37);
}

std::string Text(BSTR text) {
  std::string narrow;
  for (const wchar_t* c = text; c != nullptr && *c != L'\0'; ++c) narrow += static_cast<char>(*c);
  ::SysFreeString(text);
  return narrow;
}

struct Element {
  ComPtr<IAccessible> object;
  VARIANT child{};

  static Element OfWindow(HWND window) {
    Element element;
    element.child.vt = VT_I4;
    ::AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                 element.object.ReceiveVoid());
    return element;
  }
  [[nodiscard]] Element Child(LONG number) const {
    Element element = *this;
    element.child.lVal = number;
    return element;
  }
  [[nodiscard]] std::string Name() const {
    BSTR name = nullptr;
    object->get_accName(child, &name);
    return Text(name);
  }
  [[nodiscard]] std::string Value() const {
    BSTR value = nullptr;
    object->get_accValue(child, &value);
    return Text(value);
  }
  [[nodiscard]] std::string Shortcut() const {
    BSTR shortcut = nullptr;
    object->get_accKeyboardShortcut(child, &shortcut);
    return Text(shortcut);
  }
  [[nodiscard]] LONG Role() const {
    VARIANT role{};
    object->get_accRole(child, &role);
    return role.lVal;
  }
  [[nodiscard]] LONG State() const {
    VARIANT state{};
    object->get_accState(child, &state);
    return state.lVal;
  }
};

// A command's key as people call it; nothing for a command without one.
std::string SpokenKey(int command) {
  static const std::map<WORD, std::string> names = {
      {VK_F4, "F4"},           {VK_NEXT, "Page Down"},  {VK_PRIOR, "Page Up"},    {VK_RETURN, "Enter"},
      {VK_DELETE, "Del"},      {VK_INSERT, "Ins"},      {VK_ESCAPE, "Esc"},       {VK_UP, "Up Arrow"},
      {VK_DOWN, "Down Arrow"}, {VK_LEFT, "Left Arrow"}, {VK_RIGHT, "Right Arrow"}};
  const auto table = CommandTable();
  const auto row = std::ranges::find(table, command, &CommandRow::command);
  if (row == table.end() || row->key.code == 0) return "";
  const auto name = names.find(row->key.code);
  return ((row->key.flags & FCONTROL) != 0 ? "Ctrl+" : "") +
         std::string((row->key.flags & FALT) != 0 ? "Alt+" : "") +
         (name != names.end() ? name->second : std::string(1, static_cast<char>(row->key.code)));
}

TEST_F(ControlPanelTest, ScreenReadersFindEveryKeyAndItsShortcut) {
  std::set<std::string> names;
  for (std::size_t row = 0; row < kButtonCount; ++row) {
    const ButtonLayout& layout = kButtons[row];
    const Element element = Element::OfWindow(ButtonWindow(row));
    ASSERT_TRUE(element.object) << layout.command;
    const std::string name = element.Name();
    EXPECT_EQ(element.Role(), ROLE_SYSTEM_PUSHBUTTON) << name;
    EXPECT_EQ(element.Shortcut(), SpokenKey(layout.command)) << name;
    EXPECT_TRUE(names.insert(name).second) << "two keys are called " << name;
    if (layout.toolTip != 0) {
      EXPECT_EQ(LoadText(layout.toolTip).find(name), 0U) << name;
    }
    ::SetFocus(Button(kCommandPower));
    EXPECT_EQ((element.State() & STATE_SYSTEM_FOCUSED) != 0, layout.command == kCommandPower) << name;
    ::SetFocus(ButtonWindow(row));
    EXPECT_EQ(element.State(), STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_FOCUSED) << name;
  }
  EXPECT_EQ(Element::OfWindow(Button(kCommandPower)).Name(), "Power");
  EXPECT_EQ(Element::OfWindow(Button(kCommandDigit0 + 7)).Name(), "7");
}

TEST_F(ControlPanelTest, ScreenReadersAreToldTheStateOfAKey) {
  const Element element = Element::OfWindow(Button(kCommandPause));
  EXPECT_EQ(element.State() & (STATE_SYSTEM_CHECKED | STATE_SYSTEM_PRESSED), 0);
  SetButtonState(kCommandPause, ButtonLook::kLit);
  EXPECT_NE(element.State() & STATE_SYSTEM_CHECKED, 0);
  ::SendMessageA(Button(kCommandPause), BM_SETSTATE, TRUE, 0);
  EXPECT_NE(element.State() & STATE_SYSTEM_PRESSED, 0);
}

TEST_F(ControlPanelTest, ScreenReadersReadTheDisplay) {
  const Element panel = Element::OfWindow(mainWindow);
  ASSERT_TRUE(panel.object);
  LONG children = 0;
  panel.object->get_accChildCount(&children);
  EXPECT_EQ(children, 48);
  EXPECT_EQ(panel.Name(), "Quorvex");
  ShowDisplayTime(0x00563412);
  SetDisplayText("A title");
  const Element display = panel.Child(1);
  EXPECT_EQ(display.Name(), "Display");
  EXPECT_EQ(display.Value(), "12:34:56, A title");
  EXPECT_EQ(panel.Child(49).Name(), "") << "there is no such child";

  ComPtr<IDispatch> object;
  ASSERT_EQ(panel.object->get_accChild(panel.Child(2).child, object.Receive()), S_OK);
  EXPECT_EQ((Element{object.As<IAccessible>(), panel.child}).Name(), "Power");
  EXPECT_EQ(panel.object->get_accChild(display.child, object.Receive()), S_FALSE)
      << "the display is part of the panel";

  RECT window{};
  ::GetWindowRect(mainWindow, &window);
  VARIANT hit{};
  ASSERT_EQ(panel.object->accHitTest(window.left + 100, window.top + 30, &hit), S_OK);
  EXPECT_EQ(hit.lVal, 1);
}

TEST_F(ControlPanelTest, ScreenReadersCanPressAKey) {
  const Element repeat = Element::OfWindow(Button(kCommandMediaSelect));
  BSTR action = nullptr;
  repeat.object->get_accDefaultAction(repeat.child, &action);
  EXPECT_EQ(Text(action), "Press");
  static int clicks;
  clicks = 0;
  ::SetWindowSubclass(
      mainWindow,
      [](HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
        if (message == WM_COMMAND)
          return static_cast<LRESULT>(clicks += LOWORD(wParam) == kCommandMediaSelect ? 1 : 0);
        return ::DefSubclassProc(window, message, wParam, lParam);
      },
      7, 0);
  repeat.object->accDoDefaultAction(repeat.child);
  EXPECT_TRUE(PumpUntil([] { return clicks == 1; }));
}

}  // namespace
}  // namespace quorvex
