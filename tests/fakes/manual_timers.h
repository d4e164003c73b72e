#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>

#include "base/timers.h"
#include "tests/fakes/manual_clock.h"

namespace horalo {

// Timers whose time a test moves by hand. Actions run in the order in which they are due; those due
// at the same moment, in the order in which they were started.
class ManualTimers final : public Timers {
 public:
  // `clock`, where there is one, is moved along, so that an action sees the moment it was due at.
  explicit ManualTimers(ManualClock* clock = nullptr);
  ~ManualTimers() override;

  std::unique_ptr<Timer> make() override;
  void after(double seconds, std::function<void()> action) override;

  // Moves time on and runs what becomes due, also what those actions start. `advance(0)` is a turn
  // of the event loop.
  void advance(double seconds);

  // How many timers and delayed actions wait.
  std::size_t pendingCount() const;

  // Seconds until the next one is due; nothing where none waits. Infinite for one so far off (over
  // 290 years) that it never comes.
  std::optional<double> timeToNext() const;

 private:
  class Queue;
  class ManualTimer;

  std::shared_ptr<Queue> queue_;
  ManualClock* clock_;
};

}  // namespace horalo
