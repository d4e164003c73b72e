#pragma once

#include <functional>
#include <memory>

#include "app/update/update_state.h"
#include "base/clock.h"
#include "base/timers.h"

namespace horalo {

// Decides when to look for a new version: by the wall clock, which goes on while the computer
// sleeps. Wakes up at most once an hour, and not at all while automatic checks are off.
class UpdateSchedule {
 public:
  // Never earlier than this many seconds after the start or a check.
  static constexpr double kEarliest = 60;
  static constexpr double kShortestInterval = 3600;
  static constexpr double kLongestInterval = 10 * 365.25 * 86400;

  // `check` is called when a check is due; checkBegins() and checkEnded() are to follow.
  UpdateSchedule(Timers& timers, const Clock& clock, UpdateState& state,
                 std::function<void()> check);

  void setAutomatic(bool automatic);
  // Anything but an interval of at least an hour is an hour.
  void setInterval(double seconds);

  // A check of either kind starts. Until the updater says otherwise it counts as failed, also where
  // the updater cannot say anything any more.
  void checkBegins();
  void checkEnded();

 private:
  void arm();
  void tick();
  // Seconds until the next check is due; not positive where it is.
  double timeToCheck();

  const Clock& clock_;
  UpdateState& state_;
  std::function<void()> check_;
  std::unique_ptr<Timer> timer_;
  bool automatic_ = false;
  bool checking_ = false;
  double interval_ = 86400;
};

}  // namespace horalo
