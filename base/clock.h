#pragma once

#include "base/instant.h"

namespace horalo {

// Where the program learns the current instant. Everything that depends on "now" takes a Clock, so
// that a test, or a user with `--now`, can say what time it is.
class Clock {
 public:
  virtual ~Clock() = default;
  virtual Instant now() const = 0;
};

// The computer's wall clock; the one place that reads it.
class SystemClock final : public Clock {
 public:
  Instant now() const override;
};

// A clock that stands still.
class FixedClock final : public Clock {
 public:
  explicit FixedClock(Instant instant) : instant_(instant) {}
  Instant now() const override { return instant_; }

 private:
  Instant instant_;
};

}  // namespace horalo
