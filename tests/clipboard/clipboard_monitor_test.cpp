#include "clipboard/clipboard_monitor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "preferences/preferences_store.h"
#include "tests/fakes/fake_pasteboard.h"
#include "tests/fakes/manual_clock.h"
#include "tests/fakes/manual_timers.h"

namespace horalo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ClipboardMonitorTest : public testing::Test {
 protected:
  ClipboardMonitorTest() { watch(); }

  void watch() {
    monitor_ = std::make_unique<ClipboardMonitor>(
        ClipboardMonitor::Environment{pasteboard_, timers_, parser_, zone_, preferences_});
    monitor_->onTimestampDetected([this](const std::string& input, const ConversionResult& result) {
      inputs_.push_back(input);
      results_.push_back(result);
    });
    monitor_->start();
  }

  // Lets the next look come, and the owner of the clipboard answer.
  void look() {
    timers_.advance(ClipboardMonitor::kInterval);
    pasteboard_.answerReads();
  }

  void copy(const std::string& text) {
    pasteboard_.copy(text);
    look();
  }

  // What the program does when it copies by itself.
  void copyOurselves(const std::string& text) {
    monitor_->suppressNextChange();
    pasteboard_.write(text);
  }

  ManualClock clock_{{1'800'000'000, 0}};
  ManualTimers timers_{&clock_};
  FakePasteboard pasteboard_;
  FixedZone zone_{TimeZone::find("Asia/Kathmandu").value()};
  TimestampParser parser_{clock_, zone_};
  PreferencesStore store_{{}, timers_};
  Preferences preferences_{store_};
  std::unique_ptr<ClipboardMonitor> monitor_;
  std::vector<std::string> inputs_;
  std::vector<ConversionResult> results_;
};

TEST_F(ClipboardMonitorTest, reportsACopiedTimestampInTheUsersZone) {
  copy(" 1700000000\n");
  ASSERT_THAT(inputs_, ElementsAre("1700000000"));
  EXPECT_EQ(results_[0].date, (Instant{1'700'000'000, 0}));
  EXPECT_EQ(results_[0].source, TimestampSource(source::UnixSeconds{}));
  EXPECT_EQ(results_[0].timezone.identifier(), "Asia/Kathmandu");
}

TEST_F(ClipboardMonitorTest, followsTheUtcSwitchAtEachUse) {
  preferences_.setIsUTC(true);
  copy("1700000000");
  preferences_.setIsUTC(false);
  copy("1700000000");
  ASSERT_EQ(results_.size(), 2U);
  EXPECT_EQ(results_[0].timezone.identifier(), "UTC");
  EXPECT_EQ(results_[1].timezone.identifier(), "Asia/Kathmandu");
}

TEST_F(ClipboardMonitorTest, reportsTwoEqualCopiesTwice) {
  copy("1700000000");
  copy("1700000000");
  EXPECT_THAT(inputs_, ElementsAre("1700000000", "1700000000"));
}

TEST_F(ClipboardMonitorTest, reportsOnceForCopiesInOneInterval) {
  pasteboard_.copy("1700000000");
  timers_.advance(0.2);
  pasteboard_.copy("1700000001");
  timers_.advance(0.1);
  pasteboard_.answerReads();
  EXPECT_THAT(inputs_, ElementsAre("1700000001"));
  timers_.advance(10);
  EXPECT_EQ(pasteboard_.readsUnderWay(), 0U);
  EXPECT_EQ(inputs_.size(), 1U);
}

TEST_F(ClipboardMonitorTest, looksAtMostOnceInAnInterval) {
  for (int i = 0; i < 3000; ++i) {
    pasteboard_.copy(std::to_string(1'700'000'000 + i));
    timers_.advance(0.001);
    pasteboard_.answerReads();
  }
  look();
  EXPECT_LE(pasteboard_.readLimits().size(), 11U);
  EXPECT_GE(pasteboard_.readLimits().size(), 10U);
  EXPECT_EQ(inputs_.back(), "1700002999");
}

TEST_F(ClipboardMonitorTest, sleepsWhileNothingChanges) {
  EXPECT_EQ(timers_.pendingCount(), 0U);
  copy("1700000000");
  timers_.advance(1);
  EXPECT_EQ(timers_.pendingCount(), 0U);
}

TEST_F(ClipboardMonitorTest, fetchesNoTextUnlessTheCountMoved) {
  timers_.advance(10);
  EXPECT_THAT(pasteboard_.readLimits(), IsEmpty());
}

TEST_F(ClipboardMonitorTest, readsBrieflyAndLittle) {
  copy("1");
  ASSERT_EQ(pasteboard_.readLimits().size(), 1U);
  EXPECT_EQ(pasteboard_.readLimits()[0].seconds, 1.0);
  EXPECT_EQ(pasteboard_.readLimits()[0].bytes, 4096U);
  EXPECT_FALSE(pasteboard_.readLimits()[0].secretsAreText);
}

TEST_F(ClipboardMonitorTest, saysNothingAboutOtherTexts) {
  for (const char* text : {"now", "2024-01-01T00:00:00Z", "hello", "99999999", ""}) copy(text);
  pasteboard_.copy(std::nullopt);
  look();
  EXPECT_EQ(pasteboard_.readLimits().size(), 6U);
  EXPECT_THAT(inputs_, IsEmpty());
}

TEST_F(ClipboardMonitorTest, skipsItsOwnCopyAndReportsTheNextForeignOne) {
  copyOurselves("1700000000");
  look();
  EXPECT_THAT(pasteboard_.readLimits(), IsEmpty());
  EXPECT_EQ(monitor_->lastChangeCount(), pasteboard_.changeCount());
  copy("1700000001");
  EXPECT_THAT(inputs_, ElementsAre("1700000001"));
}

TEST_F(ClipboardMonitorTest, swallowsAForeignCopyInTheIntervalOfItsOwn) {
  pasteboard_.copy("1700000000");
  copyOurselves("1700000001");
  look();
  EXPECT_THAT(inputs_, IsEmpty());
  copyOurselves("1700000002");
  pasteboard_.copy("1700000003");
  look();
  EXPECT_THAT(inputs_, IsEmpty());
}

TEST_F(ClipboardMonitorTest, keepsTheFlagOfACopyThatFailed) {
  pasteboard_.setRefusesWrites(true);
  copyOurselves("1700000000");
  copy("1700000001");
  EXPECT_THAT(inputs_, IsEmpty());
  copy("1700000002");
  EXPECT_THAT(inputs_, ElementsAre("1700000002"));
}

TEST_F(ClipboardMonitorTest, neverReportsWhatWasThereWhenItStarted) {
  monitor_.reset();
  pasteboard_.copy("1700000000");
  watch();
  timers_.advance(10);
  EXPECT_THAT(pasteboard_.readLimits(), IsEmpty());
}

TEST_F(ClipboardMonitorTest, forgetsAChangeWhenItIsStartedAnew) {
  pasteboard_.copy("1700000000");
  timers_.advance(0.1);
  monitor_->start();
  look();
  EXPECT_THAT(inputs_, IsEmpty());
  copy("1700000001");
  EXPECT_THAT(inputs_, ElementsAre("1700000001"));
}

TEST_F(ClipboardMonitorTest, isDeafWhenStopped) {
  pasteboard_.copy("1700000000");
  monitor_->stop();
  look();
  copy("1700000001");
  EXPECT_THAT(inputs_, IsEmpty());
  EXPECT_EQ(timers_.pendingCount(), 0U);
}

TEST_F(ClipboardMonitorTest, givesUpATextThatIsUnderWayWhenItStops) {
  pasteboard_.copy("1700000000");
  timers_.advance(0.3);
  EXPECT_EQ(pasteboard_.readsUnderWay(), 1U);
  monitor_->stop();
  EXPECT_EQ(pasteboard_.answerReads(), 0U);
  EXPECT_THAT(inputs_, IsEmpty());
}

TEST_F(ClipboardMonitorTest, givesUpASlowTextForTheNextCopy) {
  pasteboard_.copy("1700000000");
  timers_.advance(0.3);
  pasteboard_.copy("1700000001");
  timers_.advance(0.3);
  EXPECT_EQ(pasteboard_.readsUnderWay(), 1U);
  pasteboard_.answerReads();
  EXPECT_THAT(inputs_, ElementsAre("1700000001"));
}

TEST_F(ClipboardMonitorTest, isSilentOnceItIsDropped) {
  copy("1700000000");
  pasteboard_.copy("1700000001");
  timers_.advance(0.3);
  monitor_.reset();
  pasteboard_.answerReads();
  copy("1700000002");
  EXPECT_THAT(inputs_, ElementsAre("1700000000"));
}

}  // namespace
}  // namespace horalo
