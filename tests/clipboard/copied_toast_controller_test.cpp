#include "clipboard/copied_toast_controller.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/clipboard/fake_toast_window.h"
#include "tests/fakes/manual_timers.h"

namespace horalo {
namespace {

using testing::ElementsAre;

class CopiedToastTest : public testing::Test {
 protected:
  ManualTimers timers_;
  ToastWindowLog window_;
  int windowsMade_ = 0;
  std::optional<Rect> visibleFrame_ = Rect{0, 25, 1440, 875};
  CopiedToastController controller_{{timers_, [this] { return visibleFrame_; },
                                     [this] {
                                       ++windowsMade_;
                                       return std::make_unique<FakeToastWindow>(window_);
                                     }}};
};

TEST_F(CopiedToastTest, fadesInStaysASecondAndFadesOut) {
  controller_.showCopiedToast();
  EXPECT_THAT(window_.calls, ElementsAre("place", "clear", "front", "to opaque in 150"));
  EXPECT_EQ(window_.origin, (Point{570, 85}));
  window_.calls.clear();
  timers_.advance(0.999);
  EXPECT_THAT(window_.calls, ElementsAre());
  timers_.advance(0.002);
  EXPECT_THAT(window_.calls, ElementsAre("to clear in 200"));
  EXPECT_TRUE(window_.isVisible);
  timers_.advance(0.2);
  EXPECT_FALSE(window_.isVisible);
  EXPECT_EQ(timers_.pendingCount(), 0U);
}

TEST_F(CopiedToastTest, startsAnewWhenShownAgain) {
  controller_.showCopiedToast();
  timers_.advance(0.9);
  controller_.showCopiedToast();
  timers_.advance(0.9);
  EXPECT_EQ(window_.alpha, 1);
  timers_.advance(0.1);
  EXPECT_EQ(window_.alpha, 0);
  EXPECT_EQ(windowsMade_, 1);
}

TEST_F(CopiedToastTest, isHiddenByAFadeThatItOvertakes) {
  controller_.showCopiedToast();
  timers_.advance(1.1);
  controller_.showCopiedToast();
  EXPECT_TRUE(window_.isVisible);
  timers_.advance(0.1);
  EXPECT_FALSE(window_.isVisible);
  timers_.advance(2);
  EXPECT_FALSE(window_.isVisible);
}

TEST_F(CopiedToastTest, comesAndGoesAtOnceWithReducedMotion) {
  window_.reducesMotion = true;
  controller_.showCopiedToast();
  EXPECT_THAT(window_.calls, ElementsAre("place", "opaque", "front"));
  timers_.advance(0.999);
  EXPECT_TRUE(window_.isVisible);
  timers_.advance(0.002);
  EXPECT_FALSE(window_.isVisible);
  controller_.showCopiedToast();
  timers_.advance(0.5);
  EXPECT_TRUE(window_.isVisible);
}

TEST_F(CopiedToastTest, staysWhereItIsWithoutAScreen) {
  visibleFrame_.reset();
  controller_.showCopiedToast();
  EXPECT_THAT(window_.calls, ElementsAre("clear", "front", "to opaque in 150"));
}

}  // namespace
}  // namespace horalo
