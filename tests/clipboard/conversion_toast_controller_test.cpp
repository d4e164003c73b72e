#include "clipboard/conversion_toast_controller.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/locale_texts.h"
#include "preferences/preferences_store.h"
#include "tests/clipboard/fake_toast_window.h"
#include "tests/fakes/fake_pasteboard.h"
#include "tests/fakes/manual_clock.h"
#include "tests/fakes/manual_timers.h"

namespace horalo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ConversionToastTest : public testing::Test {
 protected:
  ConversionToastController::Environment environment() {
    return {timers_,
            pasteboard_,
            notifications_,
            preferences_,
            rows_,
            [this] { return converterIsVisible_; },
            [this] { return visibleFrame_; },
            [this] {
              ++windowsMade_;
              return std::make_unique<FakeToastWindow>(window_);
            }};
  }

  void show(const std::string& input = "1704067200") {
    controller_->showConversionToast(
        input, {{1'704'067'200, 0}, source::UnixSeconds{}, TimeZone::find("Asia/Tokyo").value()});
  }

  // Whether the window starts to fade out within `seconds`.
  bool goesWithin(double seconds) {
    timers_.advance(seconds);
    return window_.alpha == 0;
  }

  ManualClock clock_{{1'704'067'200 + 3 * 86400, 0}};
  ManualTimers timers_{&clock_};
  FakePasteboard pasteboard_;
  NotificationCenter notifications_;
  PreferencesStore store_{{}, timers_};
  Preferences preferences_{store_};
  FixedZone zone_{TimeZone::utc()};
  LocaleTexts texts_{"en_US"};
  RowContext rows_{clock_, zone_, texts_};
  bool converterIsVisible_ = false;
  std::optional<Rect> visibleFrame_ = Rect{0, 25, 1440, 875};
  ToastWindowLog window_;
  int windowsMade_ = 0;
  std::unique_ptr<ConversionToastController> controller_ =
      std::make_unique<ConversionToastController>(environment());
};

TEST_F(ConversionToastTest, saysWhatWasCopiedAndWhatItMeans) {
  show("  as it was copied");
  EXPECT_EQ(window_.toast->texts().input, "  as it was copied");
  EXPECT_EQ(window_.toast->texts().date, "Jan 1, 2024 at 9:00:00 AM");
  EXPECT_EQ(window_.toast->texts().relative, "3 days ago");
  EXPECT_FALSE(window_.toast->copied());
  EXPECT_FALSE(window_.toast->isHovered());
}

TEST_F(ConversionToastTest, fadesInStaysThreeSecondsAndFadesOut) {
  show();
  EXPECT_THAT(window_.calls, ElementsAre("content", "place", "clear", "front", "to opaque in 150"));
  window_.calls.clear();
  timers_.advance(2.999);
  EXPECT_THAT(window_.calls, IsEmpty());
  timers_.advance(0.002);
  EXPECT_THAT(window_.calls, ElementsAre("to clear in 200"));
  timers_.advance(0.198);
  EXPECT_TRUE(window_.isVisible);
  timers_.advance(0.002);
  EXPECT_FALSE(window_.isVisible);
  EXPECT_EQ(timers_.pendingCount(), 0U);
}

TEST_F(ConversionToastTest, standsWhereTheUserWantsIt) {
  show();
  EXPECT_EQ(window_.origin, (Point{570, 65}));
  preferences_.setToastPosition("topRight");
  show();
  EXPECT_EQ(window_.origin, (Point{1128, 808}));
  preferences_.setToastPosition("somewhere");
  show();
  EXPECT_EQ(window_.origin, (Point{570, 65}));
  window_.size = {400, 80};
  show();
  EXPECT_EQ(window_.origin, (Point{520, 65}));
}

TEST_F(ConversionToastTest, staysWhereItIsWithoutAScreen) {
  visibleFrame_.reset();
  show();
  EXPECT_THAT(window_.calls, ElementsAre("content", "clear", "front", "to opaque in 150"));
}

TEST_F(ConversionToastTest, doesNotShowWhileTheConverterIsOpen) {
  converterIsVisible_ = true;
  show();
  EXPECT_EQ(windowsMade_, 0);
  converterIsVisible_ = false;
  show("1");
  converterIsVisible_ = true;
  show("2");
  EXPECT_EQ(window_.toast->texts().input, "1");
  EXPECT_TRUE(goesWithin(3.0));
}

TEST_F(ConversionToastTest, startsAnewWithTheNextCopy) {
  show("1");
  timers_.advance(2.9);
  window_.calls.clear();
  show("2");
  EXPECT_THAT(window_.calls, ElementsAre("content", "place", "clear", "front", "to opaque in 150"));
  EXPECT_EQ(window_.toast->texts().input, "2");
  EXPECT_EQ(windowsMade_, 1);
  EXPECT_FALSE(goesWithin(2.999));
  EXPECT_TRUE(goesWithin(0.002));
}

TEST_F(ConversionToastTest, isHeldByThePointer) {
  show();
  timers_.advance(1);
  window_.toast->setHovered(true);
  EXPECT_TRUE(window_.toast->isHovered());
  EXPECT_FALSE(goesWithin(10));
  window_.toast->setHovered(false);
  EXPECT_FALSE(goesWithin(2.999));
  EXPECT_TRUE(goesWithin(0.002));
}

TEST_F(ConversionToastTest, copiesTheDateOnceAndGoesSoonAfter) {
  std::vector<std::string> order;
  notifications_.observe(notification::appDidCopyToClipboard,
                         [&](const std::any&) { order.emplace_back("announced"); });
  pasteboard_.setBeforeWrite([&] { order.emplace_back("written"); });
  show();
  window_.toast->setHovered(true);
  window_.toast->tap();
  EXPECT_TRUE(window_.toast->copied());
  EXPECT_THAT(order, ElementsAre("announced", "written"));
  EXPECT_THAT(pasteboard_.written(), ElementsAre("Jan 1, 2024 at 9:00:00 AM"));
  timers_.advance(0.3);
  window_.toast->tap();
  EXPECT_EQ(pasteboard_.written().size(), 1U);
  EXPECT_FALSE(goesWithin(0.299));
  EXPECT_TRUE(goesWithin(0.002));
  window_.calls.clear();
  timers_.advance(10);
  EXPECT_THAT(window_.calls, ElementsAre("out"));
}

// A toast that goes under the pointer is left by it.
TEST_F(ConversionToastTest, thePointersLeavingAfterItsEndDoesNotEndTheNextOne) {
  show("1");
  window_.toast->setHovered(true);
  window_.toast->tap();
  timers_.advance(0.8);
  EXPECT_FALSE(window_.isVisible);
  window_.toast->setHovered(false);
  window_.calls.clear();
  timers_.advance(3.1);
  EXPECT_THAT(window_.calls, IsEmpty());
  show("2");
  timers_.advance(0.2);
  EXPECT_TRUE(window_.isVisible);
  EXPECT_EQ(window_.alpha, 1);
}

TEST_F(ConversionToastTest, aFreshToastCanBeCopiedAgain) {
  show();
  window_.toast->tap();
  timers_.advance(1);
  show();
  EXPECT_FALSE(window_.toast->copied());
  window_.toast->tap();
  EXPECT_EQ(pasteboard_.written().size(), 2U);
}

TEST_F(ConversionToastTest, isHiddenByAFadeThatItOvertakes) {
  show("1");
  timers_.advance(3.1);
  show("2");
  EXPECT_TRUE(window_.isVisible);
  EXPECT_EQ(window_.alpha, 1);
  timers_.advance(0.1);
  EXPECT_FALSE(window_.isVisible);
  show("3");
  EXPECT_TRUE(window_.isVisible);
}

TEST_F(ConversionToastTest, comesAndGoesAtOnceWithReducedMotion) {
  window_.reducesMotion = true;
  show();
  EXPECT_THAT(window_.calls, ElementsAre("content", "place", "opaque", "front"));
  timers_.advance(2.999);
  EXPECT_TRUE(window_.isVisible);
  timers_.advance(0.002);
  EXPECT_FALSE(window_.isVisible);
  show();
  timers_.advance(1);
  EXPECT_TRUE(window_.isVisible);
}

TEST_F(ConversionToastTest, leavesNothingBehindThatActsLater) {
  show();
  window_.toast->tap();
  timers_.advance(0.6);
  window_.toast->tap();
  controller_.reset();
  window_.calls.clear();
  timers_.advance(10);
  EXPECT_THAT(window_.calls, IsEmpty());
}

TEST_F(ConversionToastTest, isPreparedUnseen) {
  controller_->prepare();
  controller_->prepare();
  EXPECT_THAT(window_.calls, ElementsAre("content"));
  EXPECT_EQ(timers_.pendingCount(), 0U);
  show("1");
  EXPECT_EQ(window_.toast->texts().input, "1");
  EXPECT_EQ(windowsMade_, 1);
  controller_->prepare();
  EXPECT_EQ(window_.toast->texts().input, "1");
}

TEST_F(ConversionToastTest, canBePreparedALittleLater) {
  controller_->prepareSoon();
  EXPECT_EQ(windowsMade_, 0);
  timers_.advance(0.2);
  EXPECT_THAT(window_.calls, ElementsAre("content"));
  controller_->prepareSoon();
  controller_.reset();
  timers_.advance(0.2);
  EXPECT_EQ(windowsMade_, 1);
}

TEST_F(ConversionToastTest, mayBeDismissedBeforeItWasEverShown) {
  controller_->dismissConversionToast();
  timers_.advance(1);
  EXPECT_EQ(windowsMade_, 0);
}

}  // namespace
}  // namespace horalo
