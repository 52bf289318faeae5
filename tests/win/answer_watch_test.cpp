#include "panel/answer_watch.h"

#include <functional>
#include <string>

#include "tests/support/panel.h"

namespace quorvex {
namespace {

constexpr DWORD kEveryMs = 100;
constexpr DWORD kLongMs = kEveryMs * kPatience * 3;

std::string TextOfBox() {
  char text[200] = "";
  const HWND box = ::FindWindowA("#32770", "Quorvex");
  if (box != nullptr) ::GetDlgItemTextA(box, 0xFFFF, text, sizeof text);
  return text;
}

// Whether the box comes while the panel's thread does something that takes long.
bool ComesDuring(const std::function<void()>& step) {
  const ULONGLONG end = ::GetTickCount64() + kLongMs;
  while (TextOfBox().empty() && ::GetTickCount64() < end) step();
  return !TextOfBox().empty();
}

class AnswerWatchTest : public PanelTest {
 protected:
  AnswerWatchTest() { WatchAnswers(mainWindow, kEveryMs); }
};

TEST_F(AnswerWatchTest, APanelThatIsHeldUpOffersTheEndUntilItIsBack) {
  ASSERT_TRUE(ComesDuring([] { ::Sleep(5); }));
  EXPECT_EQ(TextOfBox(),
            "A device does not answer. End Quorvex now?\r\n\r\nWhat was recorded so far is kept.");
  EXPECT_TRUE(PumpUntil([] { return TextOfBox().empty(); }));
  EXPECT_TRUE(ComesDuring([] { ::Sleep(5); })) << "it watches on";
  ::SendMessageA(::FindWindowA("#32770", "Quorvex"), WM_COMMAND, IDNO, 0);
  EXPECT_FALSE(PumpUntil([] { return !TextOfBox().empty(); }, kLongMs));
}

TEST_F(AnswerWatchTest, OneThatTakesMessagesOrIsKnownToWorkIsLeftInPeace) {
  EXPECT_FALSE(ComesDuring([] { PumpFor(kEveryMs); }));
  const LongWork copying;
  EXPECT_FALSE(ComesDuring([] { ::Sleep(kEveryMs); }));
}

}  // namespace
}  // namespace quorvex
