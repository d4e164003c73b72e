#pragma once

#include <functional>
#include <memory>

#include "base/timers.h"

namespace horalo {

// When a field's caret is to be seen. It blinks while somebody is at work and stands still after,
// so that a panel that is merely looked at wakes the program for nothing.
class Caret {
 public:
  // `changed` is called each time that it comes or goes by itself. `timers` must outlive it.
  Caret(Timers& timers, std::function<void()> changed);

  // Shows it, from now on blinking `period` seconds from coming to coming, for a while; zero stands
  // for a desktop whose carets do not blink.
  void show(double period);
  void hide();

  bool isShown() const { return isShown_; }

  // For how long it blinks, in seconds.
  static constexpr double kBlinksFor = 10;

 private:
  void blink();

  std::function<void()> changed_;
  std::unique_ptr<Timer> timer_;
  double halfPeriod_ = 0;
  double blinksStill_ = 0;  // seconds
  bool isShown_ = false;
};

}  // namespace horalo
