#include "app/update/update_schedule.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace horalo {
namespace {

constexpr double kTick = 3600;
constexpr double kFirstRetry = 3600;

double secondsOf(Instant instant) {
  return static_cast<double>(instant.seconds) + instant.nanoseconds / 1e9;
}

}  // namespace

UpdateSchedule::UpdateSchedule(Timers& timers, const Clock& clock, UpdateState& state,
                               std::function<void()> check)
    : clock_(clock), state_(state), check_(std::move(check)), timer_(timers.make()) {}

void UpdateSchedule::setAutomatic(bool automatic) {
  if (automatic_ == automatic) return;
  automatic_ = automatic;
  arm();
}

void UpdateSchedule::setInterval(double seconds) {
  const bool longEnough = seconds >= kShortestInterval;  // also false for what is not a number
  interval_ = longEnough ? std::min(seconds, kLongestInterval) : kShortestInterval;
  arm();
}

void UpdateSchedule::checkBegins() {
  checking_ = true;
  timer_->stop();
  state_.setLastCheck(secondsOf(clock_.now()), state_.failures() + 1);
}

void UpdateSchedule::checkEnded() {
  checking_ = false;
  arm();
}

void UpdateSchedule::arm() {
  timer_->stop();
  if (!automatic_ || checking_) return;
  timer_->startOnce(std::clamp(timeToCheck(), kEarliest, kTick), [this] { tick(); });
}

void UpdateSchedule::tick() {
  if (timeToCheck() > 0) {
    arm();
  } else {
    check_();
  }
}

double UpdateSchedule::timeToCheck() {
  const double now = secondsOf(clock_.now());
  double last = state_.lastCheck().value_or(now - interval_);
  if (last > now) {  // the clock was put back, or had been wrong
    last = now;
    state_.setLastCheck(now, state_.failures());
  }
  // 1, 2, 4, ... hours after failures in a row.
  const double wait = state_.failures() == 0
                          ? interval_
                          : std::min(interval_, std::ldexp(kFirstRetry, state_.failures() - 1));
  return last + wait - now;
}

}  // namespace horalo
