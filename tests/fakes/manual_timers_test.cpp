#include "tests/fakes/manual_timers.h"

#include <gmock/gmock.h>

#include <limits>
#include <string>
#include <vector>

namespace horalo {
namespace {

using testing::ElementsAre;

TEST(ManualTimers, runsActionsInTheOrderInWhichTheyAreDue) {
  ManualTimers timers;
  std::vector<std::string> events;
  const auto note = [&](const char* event) {
    return [&events, event] { events.push_back(event); };
  };
  timers.after(2, note("second"));
  timers.after(1, note("first"));
  timers.after(2, note("third"));
  EXPECT_EQ(timers.pendingCount(), 3U);
  timers.advance(1.5);
  EXPECT_THAT(events, ElementsAre("first"));
  timers.advance(0.5);
  EXPECT_THAT(events, ElementsAre("first", "second", "third"));
  EXPECT_EQ(timers.timeToNext(), std::nullopt);
}

TEST(ManualTimers, movesTheClockToTheMomentOfEachAction) {
  ManualClock clock({100, 0});
  ManualTimers timers(&clock);
  std::vector<Instant> moments;
  const auto timer = timers.make();
  timer->startRepeating(0.3, [&] { moments.push_back(clock.now()); });
  timers.advance(1);
  EXPECT_THAT(moments, ElementsAre(Instant{100, 300'000'000}, Instant{100, 600'000'000},
                                   Instant{100, 900'000'000}));
  EXPECT_EQ(clock.now(), (Instant{101, 0}));
}

TEST(ManualTimers, anActionMayRestartItsTimer) {
  ManualTimers timers;
  const auto timer = timers.make();
  int runs = 0;
  std::function<void()> again = [&] {
    ++runs;
    EXPECT_FALSE(timer->isActive());
    timer->startOnce(10, again);
  };
  timer->startOnce(10, again);
  timers.advance(35);
  EXPECT_EQ(runs, 3);
  EXPECT_EQ(timers.timeToNext(), 5.0);
}

TEST(ManualTimers, aStoppedOrDestroyedTimerStaysSilent) {
  ManualTimers timers;
  auto stopped = timers.make();
  auto destroyed = timers.make();
  const auto fail = [] { FAIL() << "ran"; };
  stopped->startOnce(1, fail);
  destroyed->startRepeating(1, fail);
  stopped->stop();
  destroyed.reset();
  EXPECT_EQ(timers.pendingCount(), 0U);
  timers.advance(10);
}

TEST(ManualTimers, oddLengths) {
  ManualTimers timers;
  int runs = 0;
  for (const double seconds : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
    timers.after(seconds, [&] { ++runs; });
  }
  EXPECT_EQ(runs, 0);
  timers.advance(0);
  EXPECT_EQ(runs, 3);
  timers.after(1e12, [] { FAIL() << "ran"; });
  EXPECT_EQ(timers.timeToNext(), std::numeric_limits<double>::infinity());
  timers.advance(1e9);
}

}  // namespace
}  // namespace horalo
