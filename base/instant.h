#pragma once

#include <compare>
#include <cstdint>
#include <optional>

namespace horalo {

// A point in time: seconds since 1970-01-01T00:00:00Z without leap seconds, and nanoseconds that
// count forward from that second, so that half a second before the epoch is {-1, 500'000'000}.
struct Instant {
  std::int64_t seconds = 0;
  std::int32_t nanoseconds = 0;  // 0 to 999'999'999

  friend constexpr auto operator<=>(const Instant&, const Instant&) = default;
};

// The farthest second, before or after the epoch, at which rows are made: about 5.8 million years,
// where the locale library's calendars end.
inline constexpr std::int64_t kFarthestSecond = 183'882'168'921'600;

// Whether rows can be made for `instant`.
constexpr bool isInRange(Instant instant) {
  return instant >= Instant{-kFarthestSecond, 0} && instant <= Instant{kFarthestSecond, 0};
}

// `instant` moved by whole seconds; nothing where that leaves the range.
std::optional<Instant> addSeconds(Instant instant, std::int64_t seconds);

// Seconds and milliseconds since the epoch, truncated toward zero: half a second before the epoch
// is 0 s and -500 ms.
std::int64_t unixSeconds(Instant instant);
std::int64_t unixMilliseconds(Instant instant);

// The distance between two instants in seconds, never negative; exact enough to compare with
// intervals of minutes.
double distanceInSeconds(Instant a, Instant b);

}  // namespace horalo
