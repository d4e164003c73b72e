#include "engine/date_math.h"

#include <gtest/gtest.h>

#include <random>

namespace horalo {
namespace {

constexpr std::array kUnits{CalendarUnit::year,  CalendarUnit::month, CalendarUnit::week,
                            CalendarUnit::day,   CalendarUnit::hour,  CalendarUnit::minute,
                            CalendarUnit::second};

TimeZone zone(const char* identifier) {
  return TimeZone::find(identifier).value();
}

TEST(AddUnits, KeepsTheFractionOfTheSecond) {
  const Instant instant{-1, 999'999'999};
  for (const CalendarUnit unit : kUnits) {
    for (const std::int64_t count : {-3, 0, 3}) {
      const auto sum = addUnits(instant, count, unit, zone("America/New_York"));
      ASSERT_TRUE(sum);
      EXPECT_EQ(sum->nanoseconds, 999'999'999);
    }
  }
}

// Whatever the count, the sum lies on its side of the instant, inside the range, or there is none.
TEST(AddUnits, NeverLeadsTheWrongWay) {
  std::mt19937_64 random(17);
  int sums = 0, refusals = 0;
  const TimeZone zones[]{TimeZone::utc(), zone("Pacific/Apia"), zone("Africa/Casablanca"),
                         TimeZone::fromPosixRule("EST5EDT,M3.2.0,M11.1.0").value()};
  std::uniform_int_distribution<std::int64_t> anywhere(-kFarthestSecond, kFarthestSecond);
  for (int i = 0; i < 200'000; ++i) {
    const Instant instant{anywhere(random), 0};
    const auto count = static_cast<std::int64_t>(random()) >> (random() % 64);
    const CalendarUnit unit = kUnits[random() % kUnits.size()];
    const auto sum = addUnits(instant, count, unit, zones[random() % std::size(zones)]);
    if (!sum) {
      ++refusals;
      continue;
    }
    ++sums;
    ASSERT_TRUE(isInRange(*sum));
    ASSERT_TRUE(count == 0 || (*sum > instant) == (count > 0));
    // The shortest that so many units can last, less the largest clock changes.
    const double least =
        std::abs(static_cast<double>(count)) * (unit == CalendarUnit::second ? 1 : 59);
    ASSERT_GE(distanceInSeconds(*sum, instant), least - 200'000);
  }
  EXPECT_GT(sums, 50'000);
  EXPECT_GT(refusals, 50'000);
}

TEST(AddUnits, RefusesEveryCountThatCannotBe) {
  for (const CalendarUnit unit : kUnits) {
    for (const std::int64_t count :
         {INT64_MAX, INT64_MIN, INT64_MAX / 2, INT64_MIN + 1, INT64_MAX / 7, INT64_MAX / 12}) {
      EXPECT_EQ(addUnits(Instant{}, count, unit, TimeZone::utc()), std::nullopt);
    }
  }
}

TEST(AddUnits, LeadsFromOneEndOfTheRangeToTheOther) {
  const Instant first{-kFarthestSecond, 0};
  const auto byYears = addUnits(first, 11'653'987, CalendarUnit::year, TimeZone::utc());
  const auto byMonths = addUnits(first, 11'653'987 * 12, CalendarUnit::month, TimeZone::utc());
  ASSERT_TRUE(byYears);
  EXPECT_EQ(byYears, byMonths);
  EXPECT_GT(byYears->seconds, kFarthestSecond - 366 * 86'400);
}

TEST(AddUnits, ReachesTheEndsOfTheRangeAndNotBeyond) {
  const Instant last{kFarthestSecond, 0}, first{-kFarthestSecond, 0};
  for (const CalendarUnit unit : kUnits) {
    EXPECT_EQ(addUnits(last, 1, unit, TimeZone::utc()), std::nullopt);
    EXPECT_EQ(addUnits(first, -1, unit, TimeZone::utc()), std::nullopt);
    EXPECT_TRUE(addUnits(last, -1, unit, TimeZone::utc()));
    EXPECT_TRUE(addUnits(first, 1, unit, TimeZone::utc()));
    EXPECT_EQ(addUnits(last, 0, unit, TimeZone::utc()), last);
  }
  EXPECT_EQ(addUnits(first, 2 * kFarthestSecond, CalendarUnit::second, TimeZone::utc()), last);
  EXPECT_EQ(addUnits(last, -2 * kFarthestSecond, CalendarUnit::second, TimeZone::utc()), first);
  EXPECT_EQ(addUnits(last, -2 * kFarthestSecond - 1, CalendarUnit::second, TimeZone::utc()),
            std::nullopt);
}

struct Difference {
  Instant from, to;
  std::int64_t count;
  CalendarUnit unit;
};

TEST(CalendarDifferences, AreWholeAndTruncated) {
  constexpr std::int64_t kJanuary31 = 1'706'659'200;  // 2024-01-31T00:00:00Z
  constexpr std::int64_t kMarch1 = 1'709'251'200;     // 2024-03-01
  constexpr std::int64_t kDay = 86'400;
  const Difference cases[]{
      {{kJanuary31, 0}, {kMarch1, 0}, 1, CalendarUnit::month},
      {{kJanuary31, 0}, {kMarch1 - kDay, 0}, 1, CalendarUnit::month},
      {{kJanuary31, 0}, {kMarch1 - kDay - 1, 999'999'999}, 4, CalendarUnit::week},
      {{kMarch1, 0}, {kJanuary31, 0}, -1, CalendarUnit::month},
      {{kMarch1, 0}, {kMarch1 - 29 * kDay, 0}, -1, CalendarUnit::month},
      {{kMarch1, 1}, {kMarch1 + kDay, 0}, 23, CalendarUnit::hour},
      {{kMarch1, 1}, {kMarch1 + kDay, 1}, 1, CalendarUnit::day},
      {{kMarch1, 0}, {kMarch1 - kDay, 1}, -23, CalendarUnit::hour},
      {{kMarch1, 0}, {kMarch1 - 1, 1}, 0, CalendarUnit::second},
      {{kMarch1, 0}, {kMarch1 - 1, 0}, -1, CalendarUnit::second},
      {{kMarch1, 999'999'999}, {kMarch1 + 1, 0}, 0, CalendarUnit::second},
      {{kMarch1, 999'999'999}, {kMarch1 + 60, 0}, 59, CalendarUnit::second},
      {{kMarch1, 0}, {kMarch1, 0}, 0, CalendarUnit::second},
      {{-kFarthestSecond, 0}, {kFarthestSecond, 0}, 11'653'987, CalendarUnit::year},
      {{kFarthestSecond, 0}, {-kFarthestSecond, 0}, -11'653'987, CalendarUnit::year},
  };
  int compared = 0;
  for (const Difference& c : cases) {
    const CalendarDifference found = calendarDifference(c.from, c.to, TimeZone::utc());
    EXPECT_EQ(found.count, c.count) << "case " << compared;
    EXPECT_EQ(found.unit, c.unit) << "case " << compared;
    ++compared;
  }
  EXPECT_EQ(compared, 15);
}

// The slow way: count upwards from one as long as the sums do not lead past.
CalendarDifference countedUpwards(Instant from, Instant to, const TimeZone& zone) {
  const int sign = to >= from ? 1 : -1;
  for (const CalendarUnit unit : kUnits) {
    std::int64_t count = 0;
    while (true) {
      const auto sum = addUnits(from, sign * (count + 1), unit, zone);
      if (!sum || (sign > 0 ? *sum > to : *sum < to)) break;
      ++count;
    }
    if (count > 0) return {sign * count, unit};
  }
  return {};
}

// Sums are not wholly in order around a day that is left out, so that "the largest count that fits"
// is only asked for where they are: see the zones' test for all others.
TEST(CalendarDifferences, AreTheLargestCountThatFits) {
  std::mt19937_64 random(23);
  const TimeZone zones[]{
      TimeZone::utc(),        zone("America/New_York"), zone("Australia/Lord_Howe"),
      zone("America/Havana"), zone("Asia/Kathmandu"),   zone("Antarctica/Troll")};
  int compared = 0;
  for (int i = 0; i < 60'000; ++i) {
    const Instant from{1'500'000'000 + static_cast<std::int64_t>(random() % 400'000'000),
                       static_cast<std::int32_t>(random() % 1'000'000'000)};
    const auto span = static_cast<std::int64_t>(random() % 200'000'000) >> (random() % 27);
    const Instant to{
        from.seconds + (random() % 2 == 0 ? span : -span),
        random() % 3 == 0 ? from.nanoseconds : static_cast<std::int32_t>(random() % 1'000'000'000)};
    const TimeZone& in = zones[random() % std::size(zones)];
    const CalendarDifference expected = countedUpwards(from, to, in);
    const CalendarDifference found = calendarDifference(from, to, in);
    ASSERT_EQ(found.count, expected.count)
        << in.identifier() << " " << from.seconds << " " << to.seconds;
    ASSERT_EQ(found.unit, expected.unit);
    ++compared;
  }
  EXPECT_EQ(compared, 60'000);
}

}  // namespace
}  // namespace horalo
