#pragma once

namespace horalo {

enum class CalendarUnit { year, month, week, day, hour, minute, second };

// Whether sums of the unit go by the calendar and so depend on the zone; those of the others are so
// many seconds anywhere.
constexpr bool isCalendarUnit(CalendarUnit unit) {
  return unit <= CalendarUnit::day;
}

}  // namespace horalo
