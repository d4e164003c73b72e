#include "platform/qt/qt_timers.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QEventLoop>
#include <limits>

namespace horalo {
namespace {

// Waits for what a timer does; ctest's own limit ends the wait for one that does nothing.
class QtTimersTest : public testing::Test {
 protected:
  void wait() { loop_.exec(); }
  std::function<void()> finish() {
    return [this] { loop_.quit(); };
  }

  QtTimers timers_;

 private:
  QEventLoop loop_;
};

TEST_F(QtTimersTest, runsOnceAfterItsLength) {
  const auto timer = timers_.make();
  EXPECT_FALSE(timer->isActive());
  QElapsedTimer elapsed;
  elapsed.start();
  int runs = 0;
  timer->startOnce(0.05, [&] {
    ++runs;
    EXPECT_FALSE(timer->isActive());
    timers_.after(0.1, finish());
  });
  EXPECT_TRUE(timer->isActive());
  wait();
  EXPECT_EQ(runs, 1);
  EXPECT_GE(elapsed.elapsed(), 149);
}

TEST_F(QtTimersTest, repeatsUntilStopped) {
  const auto timer = timers_.make();
  int runs = 0;
  timer->startRepeating(0.01, [&] {
    if (++runs < 3) return;
    timer->stop();
    timers_.after(0.05, finish());
  });
  wait();
  EXPECT_EQ(runs, 3);
  EXPECT_FALSE(timer->isActive());
}

TEST_F(QtTimersTest, startingAgainReplacesTheAction) {
  const auto timer = timers_.make();
  timer->startRepeating(0.01, [] { FAIL() << "was replaced"; });
  timer->startOnce(0.05, finish());
  wait();
}

TEST_F(QtTimersTest, lengthsThatAreNoneMeanTheNextTurn) {
  int runs = 0;
  for (const double seconds : {0.0, -1.0, -std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN()}) {
    const auto timer = timers_.make();
    timer->startOnce(seconds, [&] {
      ++runs;
      finish()();
    });
    EXPECT_TRUE(timer->isActive());
    EXPECT_EQ(runs, 0) << "ran within startOnce";
    wait();
    runs = 0;
  }
}

TEST_F(QtTimersTest, longLengthsWaitAndDoNotOverflow) {
  for (const double seconds : {2147483.0, 2147484.0, 2592000.0, 4294968.0, 1e12, 1e300,
                               std::numeric_limits<double>::infinity()}) {
    const auto once = timers_.make();
    const auto repeating = timers_.make();
    once->startOnce(seconds, [] { FAIL() << "ran"; });
    repeating->startRepeating(seconds, [] { FAIL() << "ran"; });
    timers_.after(0.02, finish());
    wait();
    EXPECT_TRUE(once->isActive());
    EXPECT_TRUE(repeating->isActive());
  }
}

TEST_F(QtTimersTest, longLengthsAreWaitedForInSteps) {
  QtTimers steppingTimers(0.02);
  QElapsedTimer elapsed;
  elapsed.start();
  steppingTimers.after(0.05, finish());
  wait();
  EXPECT_GE(elapsed.restart(), 49);
  int runs = 0;
  const auto repeating = steppingTimers.make();
  repeating->startRepeating(0.05, [&] {
    if (++runs == 2) finish()();
  });
  wait();
  EXPECT_GE(elapsed.elapsed(), 99);
}

TEST_F(QtTimersTest, anActionMayDestroyItsTimer) {
  auto once = timers_.make();
  auto repeating = timers_.make();
  int runs = 0;
  once->startOnce(0.01, [&] {
    ++runs;
    once.reset();
  });
  repeating->startRepeating(0.01, [&] {
    ++runs;
    repeating.reset();
    timers_.after(0.05, finish());
  });
  wait();
  EXPECT_EQ(runs, 2);
}

TEST_F(QtTimersTest, nothingRunsAfterTheTimersAreGone) {
  {
    QtTimers shortLived;
    shortLived.after(0.01, [] { FAIL() << "ran"; });
    const auto timer = shortLived.make();
    timer->startOnce(0.01, [] { FAIL() << "ran"; });
  }
  timers_.after(0.05, finish());
  wait();
}

TEST_F(QtTimersTest, aDelayedActionMayEndTheTimers) {
  auto shortLived = std::make_unique<QtTimers>();
  shortLived->after(0, [&] {
    shortLived.reset();
    finish()();
  });
  wait();
  EXPECT_EQ(shortLived, nullptr);
}

}  // namespace
}  // namespace horalo
