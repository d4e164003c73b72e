#pragma once

#include <cstdint>
#include <optional>

#include "base/instant.h"
#include "engine/calendar_unit.h"
#include "engine/time_zone.h"

namespace horalo {

// `instant` and `count` units, in the calendar of `zone`; nothing where that leaves the range of
// instants.
//
//   seconds, minutes, hours   so many seconds on the time line
//   days, weeks               the same wall-clock time on another date; where that time occurs
//                             twice, the one with the offset of `instant`
//   months, years             the same day of the month, cut to the month's length, at the same
//                             wall-clock time; where that occurs twice, the later
//
// A wall-clock time that a clock change skips is moved forward by the gap: 02:30 becomes 03:30.
std::optional<Instant> addUnits(Instant instant, std::int64_t count, CalendarUnit unit,
                                const TimeZone& zone);

// The first instant of the day, in `zone`, that lies `days` after the day of `instant`; nothing
// where that is out of the range of instants.
std::optional<Instant> startOfDayAfter(Instant instant, std::int64_t days, const TimeZone& zone);

struct CalendarDifference {
  std::int64_t count = 0;  // negative where `to` is earlier than `from`
  CalendarUnit unit = CalendarUnit::second;
};

// The largest unit of which `to` lies a whole one or more away from `from`, and how many,
// truncated: from January 31 to March 1 it is one month. Zero seconds where there is none.
CalendarDifference calendarDifference(Instant from, Instant to, const TimeZone& zone);

}  // namespace horalo
