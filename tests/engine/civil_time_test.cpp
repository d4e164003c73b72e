#include "engine/civil_time.h"

#include <gtest/gtest.h>

#include <chrono>
#include <random>

namespace horalo {
namespace {

using namespace std::chrono;

CivilDate civil(year_month_day date) {
  return {int{date.year()}, static_cast<int>(unsigned{date.month()}),
          static_cast<int>(unsigned{date.day()})};
}

// Every day that a layout or a row of four digits can name, beside the standard library's calendar.
TEST(CivilTime, AgreesWithTheStandardCalendarOnEveryDay) {
  const sys_days first(year(-1) / January / 1);
  const sys_days last(year(10'000) / December / 31);
  int compared = 0;
  for (sys_days day = first; day <= last; day += days(1)) {
    const CivilDate date = civil(year_month_day(day));
    const std::int64_t number = day.time_since_epoch().count();
    ASSERT_EQ(daysSinceEpoch(date), number);
    ASSERT_EQ(dateOfDay(number), date);
    ASSERT_EQ(weekdayOf(date), static_cast<int>(weekday(day).c_encoding()) + 1);
    ++compared;
  }
  EXPECT_EQ(compared, 3'653'156);
}

TEST(CivilTime, KnowsTheLengthOfEveryMonth) {
  for (int y = -400; y <= 10'000; ++y) {
    for (unsigned m = 1; m <= 12; ++m) {
      const auto last = year_month_day_last(year(y), month_day_last(month(m)));
      ASSERT_EQ(daysInMonth(y, static_cast<int>(m)), static_cast<int>(unsigned{last.day()}))
          << y << "-" << m;
    }
  }
}

TEST(CivilTime, GoesBackAndForthAcrossTenMillionYears) {
  std::mt19937_64 random(3);
  std::uniform_int_distribution<std::int64_t> seconds(-315'000'000'000'000, 315'000'000'000'000);
  for (int i = 0; i < 300'000; ++i) {
    const std::int64_t second = seconds(random);
    const CivilTime time = civilTimeOf(second);
    ASSERT_EQ(civilSeconds(time), second);
    ASSERT_GE(time.date.month, 1);
    ASSERT_LE(time.date.month, 12);
    ASSERT_GE(time.date.day, 1);
    ASSERT_LE(time.date.day, daysInMonth(time.date.year, time.date.month));
    ASSERT_LE(time.hour, 23);
    ASSERT_LE(time.minute, 59);
    ASSERT_LE(time.second, 59);
    ASSERT_GE(std::min({time.hour, time.minute, time.second}), 0);
  }
}

TEST(CivilTime, AddsMonthsAsTheStandardCalendarDoes) {
  std::mt19937 random(5);
  std::uniform_int_distribution<int> day(-719'000, 2'900'000), count(-30'000, 30'000);
  for (int i = 0; i < 300'000; ++i) {
    const year_month_day from{sys_days(days(day(random)))};
    const months moved(count(random));
    year_month_day expected = from + moved;
    if (!expected.ok()) expected = expected.year() / expected.month() / last;
    ASSERT_EQ(addMonths(civil(from), moved.count()), civil(expected));
  }
}

TEST(CivilTime, RefusesMonthsBeyondTenMillionYears) {
  EXPECT_EQ(addMonths({2024, 1, 31}, std::int64_t{9'997'976} * 12), (CivilDate{10'000'000, 1, 31}));
  EXPECT_EQ(addMonths({2024, 1, 31}, std::int64_t{9'997'977} * 12), std::nullopt);
  EXPECT_EQ(addMonths({2024, 1, 31}, std::int64_t{-10'002'025} * 12), std::nullopt);
  EXPECT_EQ(addMonths({2024, 1, 31}, INT64_MAX), std::nullopt);
  EXPECT_EQ(addMonths({2024, 1, 31}, INT64_MIN), std::nullopt);
}

}  // namespace
}  // namespace horalo
