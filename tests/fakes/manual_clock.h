#pragma once

#include <chrono>

#include "base/clock.h"

namespace horalo {

// A clock that a test moves by hand.
class ManualClock final : public Clock {
 public:
  explicit ManualClock(Instant start = {}) : now_(start) {}

  Instant now() const override { return now_; }
  void set(Instant instant) { now_ = instant; }

  // Backwards where `duration` is negative.
  void advance(std::chrono::nanoseconds duration) {
    using std::chrono::floor;
    using std::chrono::seconds;
    const auto sum = std::chrono::nanoseconds(now_.nanoseconds) + duration;
    const auto whole = floor<seconds>(sum);
    now_ = {now_.seconds + whole.count(), static_cast<std::int32_t>((sum - whole).count())};
  }

 private:
  Instant now_;
};

}  // namespace horalo
