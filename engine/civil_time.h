#pragma once

#include <compare>
#include <cstdint>
#include <optional>

namespace horalo {

// A date of the proleptic Gregorian calendar: the rules of today's calendar, extended to all of
// the past and future. Year 0 is the year before year 1.
struct CivilDate {
  std::int64_t year = 1970;
  int month = 1;  // 1 to 12
  int day = 1;    // 1 to the month's length

  friend constexpr auto operator<=>(const CivilDate&, const CivilDate&) = default;
};

// What a wall clock and a calendar show, with no word of where.
struct CivilTime {
  CivilDate date;
  int hour = 0;
  int minute = 0;
  int second = 0;

  friend constexpr auto operator<=>(const CivilTime&, const CivilTime&) = default;
};

// 28 to 31. `month` is 1 to 12.
int daysInMonth(std::int64_t year, int month);

// Days since 1970-01-01, negative before it. Years within +-10 million.
std::int64_t daysSinceEpoch(CivilDate date);
CivilDate dateOfDay(std::int64_t daysSinceEpoch);

// Seconds since 1970-01-01T00:00:00 on the same wall clock.
std::int64_t civilSeconds(const CivilTime& time);
CivilTime civilTimeOf(std::int64_t civilSeconds);

// 1 (Sunday) to 7 (Saturday).
int weekdayOf(CivilDate date);

// `date` moved by whole months, the day cut to the length of the month it lands in: January 31 and
// one month is February 28 or 29. Nothing where the year leaves +-10 million.
std::optional<CivilDate> addMonths(CivilDate date, std::int64_t months);

}  // namespace horalo
