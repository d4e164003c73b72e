#include "engine/civil_time.h"

#include <algorithm>

namespace horalo {
namespace {

constexpr std::int64_t kSecondsPerDay = 86'400;
constexpr std::int64_t kDaysPerEra = 146'097;  // 400 years
constexpr std::int64_t kFarthestYear = 10'000'000;

constexpr std::int64_t floorDivide(std::int64_t a, std::int64_t b) {
  return a / b - (a % b < 0 ? 1 : 0);
}

constexpr bool isLeapYear(std::int64_t year) {
  return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

// Years are counted from March here, so that the leap day is the last day of its year and the
// lengths of the months before any month follow one linear formula.
constexpr std::int64_t daysBeforeMonth(int monthFromMarch) {
  return (153 * monthFromMarch + 2) / 5;
}

}  // namespace

int daysInMonth(std::int64_t year, int month) {
  if (month == 2) return isLeapYear(year) ? 29 : 28;
  return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

std::int64_t daysSinceEpoch(CivilDate date) {
  constexpr std::int64_t kEpochFromMarch0000 = 719'468;
  const std::int64_t year = date.month > 2 ? date.year : date.year - 1;
  const std::int64_t era = floorDivide(year, 400);
  const std::int64_t yearOfEra = year - era * 400;
  const std::int64_t dayOfYear = daysBeforeMonth((date.month + 9) % 12) + date.day - 1;
  const std::int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
  return era * kDaysPerEra + dayOfEra - kEpochFromMarch0000;
}

CivilDate dateOfDay(std::int64_t daysSinceEpoch) {
  constexpr std::int64_t kEpochFromMarch0000 = 719'468;
  const std::int64_t day = daysSinceEpoch + kEpochFromMarch0000;
  const std::int64_t era = floorDivide(day, kDaysPerEra);
  const std::int64_t dayOfEra = day - era * kDaysPerEra;
  // Take out the leap days that have passed, and what is left are years of 365 days.
  const std::int64_t yearOfEra =
      (dayOfEra - dayOfEra / 1'460 + dayOfEra / 36'524 - dayOfEra / (kDaysPerEra - 1)) / 365;
  const auto dayOfYear =
      static_cast<int>(dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100));
  const int monthFromMarch = (5 * dayOfYear + 2) / 153;
  CivilDate date;
  date.day = dayOfYear - static_cast<int>(daysBeforeMonth(monthFromMarch)) + 1;
  date.month = monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9;
  date.year = yearOfEra + era * 400 + (date.month <= 2 ? 1 : 0);
  return date;
}

std::int64_t civilSeconds(const CivilTime& time) {
  const int minutes = time.hour * 60 + time.minute;
  return daysSinceEpoch(time.date) * kSecondsPerDay + minutes * std::int64_t{60} + time.second;
}

CivilTime civilTimeOf(std::int64_t civilSeconds) {
  const std::int64_t day = floorDivide(civilSeconds, kSecondsPerDay);
  const auto second = static_cast<int>(civilSeconds - day * kSecondsPerDay);
  return {dateOfDay(day), second / 3'600, second / 60 % 60, second % 60};
}

int weekdayOf(CivilDate date) {
  constexpr std::int64_t kThursday = 4;  // 1970-01-01, counting Sunday as 0
  const std::int64_t days = daysSinceEpoch(date) + kThursday;
  return static_cast<int>(days - floorDivide(days, 7) * 7) + 1;
}

std::optional<CivilDate> addMonths(CivilDate date, std::int64_t months) {
  // From one end past the other.
  constexpr std::int64_t kMost = 2 * kFarthestYear * 12;
  if (months > kMost || months < -kMost) return std::nullopt;
  const std::int64_t month = date.year * 12 + (date.month - 1) + months;
  CivilDate moved;
  moved.year = floorDivide(month, 12);
  if (moved.year > kFarthestYear || moved.year < -kFarthestYear) return std::nullopt;
  moved.month = static_cast<int>(month - moved.year * 12) + 1;
  moved.day = std::min(date.day, daysInMonth(moved.year, moved.month));
  return moved;
}

}  // namespace horalo
