#include "base/instant.h"

#include <cmath>

namespace horalo {

std::optional<Instant> addSeconds(Instant instant, std::int64_t seconds) {
  std::int64_t sum = 0;
  if (__builtin_add_overflow(instant.seconds, seconds, &sum)) return std::nullopt;
  const Instant moved{sum, instant.nanoseconds};
  if (!isInRange(moved)) return std::nullopt;
  return moved;
}

std::int64_t unixSeconds(Instant instant) {
  const bool roundsUp = instant.seconds < 0 && instant.nanoseconds > 0;
  return instant.seconds + (roundsUp ? 1 : 0);
}

std::int64_t unixMilliseconds(Instant instant) {
  const std::int64_t whole = instant.seconds * 1000 + instant.nanoseconds / 1'000'000;
  const bool roundsUp = instant.seconds < 0 && instant.nanoseconds % 1'000'000 > 0;
  return whole + (roundsUp ? 1 : 0);
}

double distanceInSeconds(Instant a, Instant b) {
  return std::abs(static_cast<double>(a.seconds - b.seconds) +
                  static_cast<double>(a.nanoseconds - b.nanoseconds) * 1e-9);
}

}  // namespace horalo
