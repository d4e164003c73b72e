#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "engine/time_zone.h"

namespace horalo {

// A zone written as a rule in TZ (POSIX.1-2017, 8.3): standard time and, optionally, when summer
// time begins and ends each year.
//
//   CET-1CEST,M3.5.0,M10.5.0/3
//   |  |  |   |      |      +-- ... at 3 o'clock, the clock that holds until then
//   |  |  |   |      +-- ends on the last (5) Sunday (0) of October (10) ...
//   |  |  |   +-- begins on the last Sunday of March, at 2 o'clock as no time is given
//   |  |  +-- the name of summer time, one hour ahead as no offset is given
//   |  +-- standard time is one hour east of UTC: the sign counts westwards
//   +-- the name of standard time; <+05> for names with other than letters
//
// Without dates the second Sunday of March and the first of November hold.
class PosixZoneRule final : public ZoneRules {
 public:
  static std::optional<PosixZoneRule> parse(std::string_view rule);

  std::int32_t offsetAt(std::int64_t seconds) const override;
  std::string abbreviationAt(std::int64_t seconds) const override;
  ZonedTime find(const CivilTime& time) const override;

  // A day of the year and the second of that day, which may lie outside it, at which clocks change.
  struct Change {
    enum class Form {
      julianDay,      // "Jn": 1 to 365, February 29 never counted
      dayOfYear,      // "n": 0 to 365, February 29 counted
      weekdayOfMonth  // "Mm.w.d": week 5 is the last
    };
    Form form = Form::weekdayOfMonth;
    int day = 0;  // of the year
    int month = 0, week = 0, weekday = 0;
    std::int32_t seconds = 7'200;
  };

 private:
  struct Summer {
    std::string name;
    std::int32_t offset = 0;
    Change start, end;
  };

  bool isSummer(std::int64_t seconds) const;

  std::string name_;
  std::int32_t offset_ = 0;
  std::optional<Summer> summer_;
};

}  // namespace horalo
