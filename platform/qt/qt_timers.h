#pragma once

#include <QObject>
#include <functional>
#include <memory>

#include "base/timers.h"

namespace horalo {

// Timers of Qt's event loop, exact to the millisecond, on the monotonic clock. QTimer alone ends at
// 2^31 milliseconds (24.8 days); longer lengths are waited for in steps.
class QtTimers final : public Timers {
 public:
  // The longest that one QTimer can wait, in whole seconds.
  static constexpr double kLongestStep = 2147483;

  // A test that cannot wait for weeks gives a shorter step.
  explicit QtTimers(double longestStep = kLongestStep);
  ~QtTimers() override;

  std::unique_ptr<Timer> make() override;

  // What is still pending when the QtTimers goes away never runs.
  void after(double seconds, std::function<void()> action) override;

 private:
  double longestStep_;
  QObject pending_;  // owns the timers of after()
};

}  // namespace horalo
