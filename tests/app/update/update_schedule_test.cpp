#include "app/update/update_schedule.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/fakes/manual_timers.h"
#include "tests/fakes/temporary_folder.h"

namespace horalo {
namespace {

constexpr double kDay = 86'400;
constexpr double kHour = 3600;

class UpdateScheduleTest : public testing::Test {
 protected:
  UpdateScheduleTest() { clock_.set({1'700'000'000, 0}); }

  // What the updater says when it has ended.
  void endCheck(bool good) {
    if (good) state_.setFailures(0);
    schedule_.checkEnded();
  }

  double now() const { return static_cast<double>(clock_.now().seconds); }

  TemporaryFolder folder_;
  ManualClock clock_;
  ManualTimers timers_{&clock_};
  UpdateState state_{folder_ / "updates.plist", timers_};
  int checks_ = 0;
  bool good_ = true;
  UpdateSchedule schedule_{timers_, clock_, state_, [this] {
                             ++checks_;
                             schedule_.checkBegins();
                             endCheck(good_);
                           }};
};

TEST_F(UpdateScheduleTest, sleepsUntilItIsSwitchedOn) {
  EXPECT_EQ(timers_.pendingCount(), 0U);
  schedule_.setInterval(kDay);
  EXPECT_EQ(timers_.pendingCount(), 0U);
  timers_.advance(10 * kDay);
  EXPECT_EQ(checks_, 0);
}

TEST_F(UpdateScheduleTest, checksSoonAfterTheFirstStartAndThenOnceADay) {
  schedule_.setAutomatic(true);
  schedule_.setInterval(kDay);
  timers_.advance(59);
  EXPECT_EQ(checks_, 0);
  timers_.advance(1);
  EXPECT_EQ(checks_, 1);
  timers_.advance(kDay - 1);
  EXPECT_EQ(checks_, 1);
  timers_.advance(1);
  EXPECT_EQ(checks_, 2);
  timers_.advance(10 * kDay);
  EXPECT_EQ(checks_, 12);
  schedule_.setAutomatic(false);
  EXPECT_EQ(timers_.pendingCount(), 0U);
}

TEST_F(UpdateScheduleTest, goesByTheLastCheckOfAnEarlierRun) {
  state_.setLastCheck(now() - kDay + 5 * kHour, 0);
  schedule_.setAutomatic(true);
  schedule_.setInterval(kDay);
  timers_.advance(5 * kHour - 1);
  EXPECT_EQ(checks_, 0);
  timers_.advance(1);
  EXPECT_EQ(checks_, 1);
  EXPECT_EQ(state_.lastCheck(), now());
}

TEST_F(UpdateScheduleTest, wakesUpOnceAnHourAtMost) {
  schedule_.setAutomatic(true);
  schedule_.setInterval(30 * kDay);
  state_.setLastCheck(now(), 0);
  schedule_.setInterval(30 * kDay);
  EXPECT_EQ(timers_.timeToNext(), kHour);
}

TEST_F(UpdateScheduleTest, noticesTheTimeThatTheComputerSlept) {
  state_.setLastCheck(now(), 0);
  schedule_.setAutomatic(true);
  schedule_.setInterval(7 * kDay);
  timers_.advance(kHour);
  clock_.advance(std::chrono::hours(24 * 8));  // the timers stood still meanwhile
  EXPECT_EQ(checks_, 0);
  timers_.advance(kHour);
  EXPECT_EQ(checks_, 1);
}

TEST_F(UpdateScheduleTest, startsAnewWhereTheLastCheckLiesInTheFuture) {
  state_.setLastCheck(now() + 400 * kDay, 0);
  schedule_.setAutomatic(true);
  schedule_.setInterval(kDay);
  EXPECT_EQ(state_.lastCheck(), now());
  timers_.advance(kDay);
  EXPECT_EQ(checks_, 1);
}

TEST_F(UpdateScheduleTest, triesAgainAfterOneTwoFourHoursAndThenAtTheInterval) {
  good_ = false;
  schedule_.setAutomatic(true);
  schedule_.setInterval(kDay);
  timers_.advance(60);
  EXPECT_EQ(checks_, 1);
  int expected = 1;
  for (const double hours : {1, 2, 4, 8, 16, 24, 24, 24}) {
    timers_.advance(hours * kHour - 1);
    EXPECT_EQ(checks_, expected) << hours;
    timers_.advance(1);
    EXPECT_EQ(checks_, ++expected) << hours;
  }
  good_ = true;
  timers_.advance(kDay);
  EXPECT_EQ(state_.failures(), 0);
}

TEST_F(UpdateScheduleTest, takesAnyIntervalButNoShorterOneThanAnHour) {
  state_.setLastCheck(now(), 0);
  schedule_.setAutomatic(true);
  for (const double seconds :
       {-5.0, 1.0, 3599.0, 3600.0, std::nan(""), -std::numeric_limits<double>::infinity()}) {
    schedule_.setInterval(seconds);
    const int before = checks_;
    timers_.advance(kHour);
    EXPECT_EQ(checks_, before + 1) << seconds;
  }
  for (const double seconds : {1e12, std::numeric_limits<double>::infinity(), 1e308}) {
    schedule_.setInterval(seconds);
    const int before = checks_;
    timers_.advance(40 * kDay);
    EXPECT_EQ(checks_, before) << seconds;
  }
}

TEST_F(UpdateScheduleTest, waitsWhileACheckRuns) {
  schedule_.setAutomatic(true);
  schedule_.setInterval(kDay);
  schedule_.checkBegins();
  timers_.advance(10 * kDay);
  EXPECT_EQ(checks_, 0);
  endCheck(true);
  timers_.advance(60);
  EXPECT_EQ(checks_, 1);
}

TEST(UpdateState, survivesWhateverIsInItsFile) {
  const TemporaryFolder folder;
  ManualTimers timers;
  UpdateState state(folder / "updates.plist", timers);
  EXPECT_EQ(state.lastCheck(), std::nullopt);
  EXPECT_EQ(state.failures(), 0);
  EXPECT_EQ(state.highestVersion(), "");
  EXPECT_EQ(state.rolloutGroup(), std::nullopt);

  PreferencesStore file(folder / "updates.plist", timers);
  file.set({{"lastCheck", "yesterday"},
            {"failures", -3},
            {"highestVersion", 2.0},
            {"skippedVersion", true},
            {"rolloutGroup", 7}});
  EXPECT_EQ(state.lastCheck(), std::nullopt);
  EXPECT_EQ(state.failures(), 0);
  EXPECT_EQ(state.highestVersion(), "");
  EXPECT_EQ(state.skippedVersion(), "");
  EXPECT_EQ(state.rolloutGroup(), std::nullopt);

  state.setRolloutGroup(6);
  state.setHighestVersion("2.0");
  EXPECT_EQ(UpdateState(folder / "updates.plist", timers).rolloutGroup(), 6);
  EXPECT_EQ(UpdateState(folder / "updates.plist", timers).highestVersion(), "2.0");
}

}  // namespace
}  // namespace horalo
