#include "app/views/caret.h"

#include <gtest/gtest.h>

#include "tests/fakes/manual_timers.h"

namespace horalo {
namespace {

class CaretTest : public testing::Test {
 protected:
  ManualTimers timers_;
  int changes_ = 0;
  Caret caret_{timers_, [this] { ++changes_; }};
};

TEST_F(CaretTest, isHiddenAtFirst) {
  EXPECT_FALSE(caret_.isShown());
  EXPECT_EQ(timers_.pendingCount(), 0U);
}

TEST_F(CaretTest, blinks) {
  caret_.show(1.0);
  EXPECT_TRUE(caret_.isShown());
  timers_.advance(0.49);
  EXPECT_TRUE(caret_.isShown());
  timers_.advance(0.02);
  EXPECT_FALSE(caret_.isShown());
  timers_.advance(0.5);
  EXPECT_TRUE(caret_.isShown());
  EXPECT_EQ(changes_, 2);
}

TEST_F(CaretTest, standsStillAfterAWhileAndIsSeen) {
  caret_.show(1.2);
  timers_.advance(Caret::kBlinksFor + 1.2);
  EXPECT_TRUE(caret_.isShown());
  EXPECT_EQ(timers_.pendingCount(), 0U);
  EXPECT_GE(changes_, 16);
  EXPECT_LE(changes_, 18);
}

TEST_F(CaretTest, blinksAnewOnceSomethingIsDone) {
  caret_.show(1.0);
  timers_.advance(100);
  caret_.show(1.0);
  timers_.advance(0.75);
  EXPECT_FALSE(caret_.isShown());
  caret_.show(1.0);
  EXPECT_TRUE(caret_.isShown());
}

TEST_F(CaretTest, standsStillWhereTheDesktopWantsThat) {
  caret_.show(1.0);
  caret_.show(0);
  EXPECT_TRUE(caret_.isShown());
  EXPECT_EQ(timers_.pendingCount(), 0U);
}

TEST_F(CaretTest, isGoneWhenHidden) {
  caret_.show(1.0);
  caret_.hide();
  EXPECT_FALSE(caret_.isShown());
  EXPECT_EQ(timers_.pendingCount(), 0U);
}

}  // namespace
}  // namespace horalo
