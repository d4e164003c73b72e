#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "engine/date_math.h"
#include "engine/text_matching.h"
#include "engine/timestamp_parser.h"

namespace horalo {
namespace {

constexpr Instant kNow{1'715'776'496, 250'000'000};  // 2024-05-15T12:34:56.25Z

const std::map<CalendarUnit, std::vector<std::string>> kSpellings{
    {CalendarUnit::second, {"s", "sec", "second", "seconds"}},
    {CalendarUnit::minute, {"m", "min", "minute", "minutes"}},
    {CalendarUnit::hour, {"h", "hr", "hour", "hours"}},
    {CalendarUnit::day, {"d", "day", "days"}},
    {CalendarUnit::week, {"w", "wk", "week", "weeks"}},
    {CalendarUnit::month, {"mo", "month", "months"}},
    {CalendarUnit::year, {"y", "yr", "year", "years"}},
};

std::optional<Instant> parsed(const std::string& text) {
  static const FixedClock clock(kNow);
  static const FixedZone zone(TimeZone::utc());
  const auto result = TimestampParser(clock, zone).parse(text);
  if (!result) return std::nullopt;
  return result->date;
}

std::optional<Instant> moved(std::int64_t count, CalendarUnit unit) {
  return addUnits(kNow, count, unit, TimeZone::utc());
}

// Every way to put the letters of a word in capitals.
std::vector<std::string> inAllCapitals(const std::string& word) {
  std::vector<std::string> spellings;
  for (unsigned mask = 0; mask < 1U << word.size(); ++mask) {
    std::string text = word;
    for (std::size_t i = 0; i < word.size(); ++i) {
      if ((mask >> i & 1U) != 0) text[i] = static_cast<char>(text[i] - 'a' + 'A');
    }
    spellings.push_back(text);
  }
  return spellings;
}

TEST(Units, AreReadInEverySpellingAndAllCapitals) {
  int read = 0;
  for (const auto& [unit, words] : kSpellings) {
    for (const std::string& word : words) {
      for (const std::string& text : inAllCapitals(word)) {
        ASSERT_EQ(parsed("now + 3 " + text), moved(3, unit)) << text;
        ASSERT_EQ(parsed("now-2" + text), moved(-2, unit)) << text;
        const bool isFull = word.size() > 3 || word == "day";
        const auto expected = isFull ? moved(-5, unit) : std::nullopt;
        ASSERT_EQ(parsed("5 " + text + " ago"), expected) << text;
        ++read;
      }
    }
  }
  EXPECT_EQ(read, 692);
}

TEST(Units, WithTheKelvinSignAreTheirOwn) {
  EXPECT_EQ(parsed("now + 3 w\u212A"), moved(3, CalendarUnit::week));
  EXPECT_EQ(parsed("now + 3 Wee\u212A"), moved(3, CalendarUnit::week));
  EXPECT_EQ(parsed("now + 3 wee\u212AS"), moved(3, CalendarUnit::week));
  EXPECT_EQ(parsed("3 WEE\u212AS ago"), moved(-3, CalendarUnit::week));
}

// A long s is matched where an s is, but the word it spells is no unit: days are the fallback.
TEST(Units, WithALongSAreDays) {
  int read = 0;
  for (const auto& [unit, words] : kSpellings) {
    for (const std::string& word : words) {
      for (std::size_t i = 0; i < word.size(); ++i) {
        if (word[i] != 's') continue;
        std::string text = word;
        text.replace(i, 1, "\u017F");
        EXPECT_EQ(parsed("now + 3 " + text), moved(3, CalendarUnit::day)) << text;
        ++read;
      }
    }
  }
  EXPECT_EQ(read, 11);
  // The plural's s of "ago" expressions stands outside what is captured.
  EXPECT_EQ(parsed("3 hour\u017F ago"), moved(-3, CalendarUnit::hour));
  EXPECT_EQ(parsed("3 \u017Feconds ago"), moved(-3, CalendarUnit::day));
}

TEST(Units, HaveNames) {
  EXPECT_EQ(normalizeUnit("hr"), "hour");
  EXPECT_EQ(normalizeUnit("HR"), "hour");
  EXPECT_EQ(normalizeUnit("hours"), "hours");
  EXPECT_EQ(normalizeUnit("fortnight"), "fortnight");
  EXPECT_EQ(calendarComponent("Months"), CalendarUnit::month);
  EXPECT_EQ(calendarComponent("fortnight"), CalendarUnit::day);
  EXPECT_EQ(calendarComponent("hr"), CalendarUnit::day);
  EXPECT_EQ(calendarComponent("s"), CalendarUnit::day);
  EXPECT_EQ(calendarComponent("secondss"), CalendarUnit::day);
  EXPECT_EQ(calendarComponent(""), CalendarUnit::day);
  EXPECT_EQ(weekdayNumber("sunday"), 1);
  EXPECT_EQ(weekdayNumber("Saturday"), 7);
  EXPECT_EQ(weekdayNumber("\u017Funday"), std::nullopt);
  EXPECT_EQ(weekdayNumber("sun"), std::nullopt);
}

TEST(Units, AreCountedInDigitsThatFit) {
  EXPECT_EQ(wholeNumber("9223372036854775807"), INT64_MAX);
  EXPECT_EQ(wholeNumber("0009223372036854775807"), INT64_MAX);
  EXPECT_EQ(wholeNumber("9223372036854775808"), std::nullopt);
  for (const char* text : {"", "-1", "+1", " 1", "1 ", "1.0", "0x1", "\u0661"}) {
    EXPECT_EQ(wholeNumber(text), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace horalo
