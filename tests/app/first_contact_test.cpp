#include "app/first_contact.h"

#include <gmock/gmock.h>

#include <vector>

#include "tests/fakes/manual_timers.h"
#include "tests/fakes/temporary_folder.h"

namespace horalo {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class FirstContactTest : public testing::Test {
 protected:
  // A start in a terminal, two seconds of which have gone by.
  void start(WaysIn ways) {
    lines_.clear();
    notices_.clear();
    FirstContact contact({.timers = timers_,
                          .waysIn = [ways] { return ways; },
                          .shortcut = [] { return HotkeyConfiguration(); },
                          .isTerminal = isTerminal_,
                          .say = [this](const std::string& line) { lines_.push_back(line); },
                          .notify = [this](const std::string&,
                                           const std::string& text) { notices_.push_back(text); },
                          .marker = folder_.path(QStringLiteral("state/started")).toStdString()});
    contact.begin();
    timers_.advance(2);
    EXPECT_EQ(timers_.pendingCount(), 0U);
  }
  void startBefore() { start({.shortcutWorks = true, .iconIsVisible = true}); }

  ManualTimers timers_;
  TemporaryFolder folder_;
  bool isTerminal_ = true;
  std::vector<std::string> lines_;
  std::vector<std::string> notices_;
};

TEST_F(FirstContactTest, ATerminalAlwaysReadsTheNextStep) {
  start({.shortcutWorks = true, .iconIsVisible = true});
  EXPECT_THAT(lines_, ElementsAre("Horalo is running. Press ⇧⌘E (Shift+Super+E) to open the "
                                  "converter."));
  start({.shortcutWorks = false, .iconIsVisible = true});
  EXPECT_THAT(lines_, ElementsAre(HasSubstr("not available here. Click the icon")));
  start({.shortcutWorks = false, .iconIsVisible = false});
  EXPECT_THAT(lines_, ElementsAre(HasSubstr("Start Horalo again")));
}

TEST_F(FirstContactTest, ALogReadsItWhereThereIsNoIcon) {
  isTerminal_ = false;
  start({.shortcutWorks = true, .iconIsVisible = true});
  EXPECT_THAT(lines_, IsEmpty());
  start({.shortcutWorks = true, .iconIsVisible = false});
  EXPECT_THAT(lines_, ElementsAre(HasSubstr("Press ⇧⌘E")));
}

TEST_F(FirstContactTest, AVisibleIconNeedsNoNotice) {
  start({.shortcutWorks = true, .iconIsVisible = true});
  EXPECT_THAT(notices_, IsEmpty());
  start({.shortcutWorks = false, .iconIsVisible = true});
  EXPECT_THAT(notices_, IsEmpty());
}

TEST_F(FirstContactTest, WithNothingToSeeOrPressEveryStartShowsANotice) {
  for (int i = 0; i < 2; ++i) {
    start({.shortcutWorks = false, .iconIsVisible = false});
    EXPECT_THAT(notices_, ElementsAre(HasSubstr("horalo toggle")));
  }
}

TEST_F(FirstContactTest, AShortcutThatCannotBeSeenIsToldOnce) {
  start({.shortcutWorks = true, .iconIsVisible = false});
  EXPECT_THAT(notices_, ElementsAre(HasSubstr("Shift+Super+E")));
  start({.shortcutWorks = true, .iconIsVisible = false});
  EXPECT_THAT(notices_, IsEmpty());
}

TEST_F(FirstContactTest, LaterStartsWithEverythingThereWaitForNothing) {
  startBefore();
  FirstContact contact({.timers = timers_,
                        .waysIn =
                            [] {
                              return WaysIn{true, false};
                            },
                        .shortcut = [] { return HotkeyConfiguration(); },
                        .isTerminal = true,
                        .say = [](const std::string&) {},
                        .notify = [](const std::string&, const std::string&) { FAIL(); },
                        .marker = folder_.path(QStringLiteral("state/started")).toStdString()});
  contact.begin();
  EXPECT_EQ(timers_.pendingCount(), 0U);
}

TEST(SpelledShortcutTest, NamesKeysAsKeyboardsDo) {
  EXPECT_EQ(spelledShortcut({.keyCode = 14, .modifiers = 0x120000}), "Shift+Super+E");
  EXPECT_EQ(spelledShortcut({.keyCode = 49, .modifiers = 0x0c0000}), "Ctrl+Alt+Space");
}

}  // namespace
}  // namespace horalo
