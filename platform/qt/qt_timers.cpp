#include "platform/qt/qt_timers.h"

#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <utility>

namespace horalo {
namespace {

using std::chrono::milliseconds;

static_assert(QtTimers::kLongestStep * 1000 <= std::numeric_limits<int>::max());

class QtTimer final : public Timer {
 public:
  explicit QtTimer(double longestStep) : longestStep_(longestStep) {
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.callOnTimeout([this] { expired(); });
  }

  void startOnce(double seconds, std::function<void()> action) override {
    start(seconds > 0 ? seconds : 0, false, std::move(action));
  }

  void startRepeating(double seconds, std::function<void()> action) override {
    // A period below a millisecond would keep the processor busy.
    start(std::max(seconds, 0.001), true, std::move(action));
  }

  void stop() override {
    timer_.stop();
    action_ = nullptr;
  }

  bool isActive() const override { return timer_.isActive(); }

 private:
  void start(double seconds, bool repeats, std::function<void()> action) {
    length_ = seconds;
    repeats_ = repeats;
    action_ = std::move(action);
    arm(length_);
  }

  void arm(double seconds) {
    remaining_ = seconds;
    const double step = std::min(remaining_, longestStep_);
    remaining_ -= step;
    timer_.setSingleShot(!repeats_ || length_ > longestStep_);
    timer_.start(milliseconds(std::llround(step * 1000)));
  }

  // The action may stop, restart or destroy this timer, so nothing is touched after it.
  void expired() {
    if (remaining_ > 0) {
      arm(remaining_);
    } else if (repeats_) {
      if (length_ > longestStep_) arm(length_);
      const auto action = action_;
      action();
    } else {
      const auto action = std::exchange(action_, nullptr);
      action();
    }
  }

  double longestStep_;
  QTimer timer_;
  double length_ = 0;
  double remaining_ = 0;  // beyond the step that is running
  bool repeats_ = false;
  std::function<void()> action_;
};

// Ties a delayed action to the QtTimers that made it. It is gone when the action runs, which may
// therefore end the QtTimers as well; what the action holds lives in the timer's own stack frame.
class PendingAction final : public QObject {
 public:
  PendingAction(double longestStep, double seconds, std::function<void()> action, QObject* owner)
      : QObject(owner), timer_(longestStep) {
    timer_.startOnce(seconds, [this, action = std::move(action)] {
      delete this;
      action();
    });
  }

 private:
  QtTimer timer_;
};

}  // namespace

QtTimers::QtTimers(double longestStep) : longestStep_(longestStep) {}
QtTimers::~QtTimers() = default;

std::unique_ptr<Timer> QtTimers::make() {
  return std::make_unique<QtTimer>(longestStep_);
}

void QtTimers::after(double seconds, std::function<void()> action) {
  new PendingAction(longestStep_, seconds, std::move(action), &pending_);
}

}  // namespace horalo
