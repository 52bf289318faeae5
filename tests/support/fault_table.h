// Fails every platform call of a sequence in turn, and has every one answer late; looks at what each leaves.
// A platform call is every method of a COM object that the player calls (all but AddRef and Release, which
// cannot fail), every CoCreateInstance and every command to MCI, as the fakes and MciCalls count them.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/com_fake.h"
#include "tests/support/noted_boxes.h"

namespace quorvex {

using Boxes = std::vector<std::string>;  // "caption: text" of each

enum class Outcome { kFails, kOpens };

// What comes of a call that fails. A call without a row must not matter: it opens, and nothing is told.
struct FaultRow {
  const char* call;  // all the calls of this name; with " #2" behind it only the second of them
  Outcome outcome;
  Boxes boxes;
  std::string text = "";  // on the text line
  bool always = true;     // else the boxes come with some of the calls only
};

class FaultTable {
 public:
  // `open` is the sequence, `check` says what must hold after it, `close` goes back and sees to it that
  // nothing is left. No call counts of what comes before.
  struct Steps {
    std::function<void()> open;
    std::function<void(const FaultRow&)> check;
    std::function<void()> close;
    std::function<void()> before = [] {};
  };

  FaultTable(ComScript& itsScript, std::vector<FaultRow> itsRows, Steps itsSteps)
      : script(itsScript), rows(std::move(itsRows)), steps(std::move(itsSteps)) {}

  // The codes that calls fail with, in turn.
  std::vector<HRESULT> codes{E_FAIL, E_NOTIMPL, E_OUTOFMEMORY, E_NOINTERFACE};

  // With every call failing once, and late once; and after the first call of each name without any fault.
  void Run() {
    const std::vector<std::string> whole = CallsWithout();
    std::set<std::string> again;
    ASSERT_FALSE(whole.empty());
    testing::Test::RecordProperty("calls", static_cast<int>(whole.size()));
    for (std::size_t number = 1; number <= whole.size(); ++number) {
      SCOPED_TRACE("call " + std::to_string(number) + " of " + std::to_string(whole.size()) + ": " +
                   whole[number - 1]);
      Fail(number, whole);
      Delay(number);
      if (again.insert(whole[number - 1]).second) {
        EXPECT_EQ(CallsWithout(), whole) << "a fault has left something";
      }
      if (testing::Test::HasFatalFailure()) return;
    }
    for (const FaultRow& row : rows) EXPECT_TRUE(met.count(row.call) != 0) << "nobody calls " << row.call;
  }

 private:
  void Fail(std::size_t number, const std::vector<std::string>& whole) {
    const std::string& name = whole[number - 1];
    const auto end = whole.begin() + static_cast<std::ptrdiff_t>(number);
    const FaultRow row = RowOf(name, std::count(whole.begin(), end, name));
    steps.before();
    script.CountCalls(number, codes[number % codes.size()]);
    steps.open();
    ASSERT_GE(script.calls.size(), number);
    EXPECT_EQ(script.calls[number - 1], name);
    script.failingCall = 0;
    steps.check(row);
    const Boxes told = boxes.Take();
    EXPECT_EQ(told, row.always || !told.empty() ? row.boxes : Boxes());
    steps.close();
  }

  // A driver that lets messages in while it takes its time changes nothing.
  void Delay(std::size_t number) {
    bool came = false;
    script.lateCall = number;
    script.meanwhile = [&came] {
      came = true;
      LetMessagesIn();
    };
    CallsWithout();
    script.lateCall = 0;
    EXPECT_TRUE(came);
  }

  std::vector<std::string> CallsWithout() {
    steps.before();
    script.CountCalls();
    steps.open();
    std::vector<std::string> calls = script.calls;
    steps.check({"", Outcome::kOpens, {}});
    EXPECT_EQ(boxes.Take(), Boxes());
    steps.close();
    return calls;
  }

  FaultRow RowOf(const std::string& name, std::ptrdiff_t time) {
    for (const std::string& call : {name + " #" + std::to_string(time), name}) {
      const auto found =
          std::find_if(rows.begin(), rows.end(), [&](const FaultRow& row) { return row.call == call; });
      if (found == rows.end()) continue;
      met.insert(call);
      return *found;
    }
    return {"", Outcome::kOpens, {}};
  }

  ComScript& script;
  std::vector<FaultRow> rows;
  Steps steps;
  std::set<std::string> met;
  NotedBoxes boxes;
};

}  // namespace quorvex
