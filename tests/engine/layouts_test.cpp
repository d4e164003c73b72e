#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <optional>
#include <string>

#include "engine/timestamp_parser.h"

namespace horalo {
namespace {

using namespace std::chrono;

constexpr std::array<const char*, 12> kMonths{"January",   "February", "March",    "April",
                                              "May",       "June",     "July",     "August",
                                              "September", "October",  "November", "December"};

// A date and time, as text by a layout. Without zeros in front where `padded` is false.
struct Moment {
  int year, month, day, hour, minute, second;

  std::string by(std::string_view layout, bool padded) const {
    std::string text;
    while (!layout.empty()) {
      const std::size_t width = std::min(layout.find_first_not_of(layout[0]), layout.size());
      text += field(layout[0], static_cast<int>(width), padded);
      layout.remove_prefix(width);
    }
    return text;
  }

  std::int64_t seconds() const {
    const sys_days date = std::chrono::year(year) / month / day;
    return sys_seconds(date).time_since_epoch().count() + hour * 3'600 + minute * 60 + second;
  }

 private:
  std::string field(char letter, int width, bool padded) const {
    const auto digits = [&](int value) {
      std::array<char, 16> text{};
      std::snprintf(text.data(), text.size(), "%0*d", padded ? width : 1, value);
      return std::string(text.data());
    };
    switch (letter) {
      case 'y':
        return digits(year);
      case 'M':
        if (width == 3) return std::string(kMonths[static_cast<std::size_t>(month - 1)], 3);
        if (width == 4) return kMonths[static_cast<std::size_t>(month - 1)];
        return digits(month);
      case 'd':
        return digits(day);
      case 'H':
        return digits(hour);
      case 'm':
        return digits(minute);
      case 's':
        return digits(second);
      default:
        return std::string(static_cast<std::size_t>(width), letter);
    }
  }
};

// What is left of a moment in a layout that has no time, or no seconds.
Moment asLayoutTells(Moment moment, std::string_view layout) {
  if (layout.find('H') == layout.npos) moment.hour = moment.minute = 0;
  if (layout.find('s') == layout.npos) moment.second = 0;
  return moment;
}

// Whether an earlier layout reads the same text: month first where the day can be a month, and the
// short name of May.
bool isReadEarlier(const Moment& moment, std::string_view layout) {
  if (layout.starts_with("dd/MM")) return moment.day <= 12;
  return layout.starts_with("MMMM") && moment.month == 5;
}

std::optional<ParseResult> parsed(const std::string& text) {
  static const FixedClock clock(Instant{});
  static const FixedZone zone(TimeZone::utc());
  return TimestampParser(clock, zone).parse(text);
}

TEST(Layouts, ReadEveryDayOfALeapYearPadded) {
  int read = 0, readEarlier = 0;
  for (int day = 0; day < 366; ++day) {
    const year_month_day date{sys_days(2024y / January / 1) + days(day)};
    const Moment moment{2024,
                        static_cast<int>(unsigned{date.month()}),
                        static_cast<int>(unsigned{date.day()}),
                        day % 24,
                        day * 7 % 60,
                        day * 11 % 60};
    for (const std::string_view layout : TimestampParser::humanDateFormats()) {
      const std::string text = moment.by(layout, true);
      SCOPED_TRACE(text);
      const auto result = parsed(text);
      ASSERT_TRUE(result);
      if (layout == "yyyy-MM-dd") {
        EXPECT_EQ(result->source, TimestampSource(source::Iso8601{}));
      } else if (isReadEarlier(moment, layout)) {
        EXPECT_NE(result->source, TimestampSource(source::HumanDate{layout}));
        ++readEarlier;
        continue;
      } else {
        EXPECT_EQ(result->source, TimestampSource(source::HumanDate{layout}));
      }
      EXPECT_EQ(result->date, (Instant{asLayoutTells(moment, layout).seconds(), 0}));
      ++read;
    }
  }
  EXPECT_EQ(read + readEarlier, 366 * 17);
  EXPECT_EQ(readEarlier, 2 * 144 + 2 * 31);
}

TEST(Layouts, ReadTheYears1To9999) {
  int read = 0;
  for (int year = 1; year <= 9'999; ++year) {
    const Moment moment{year, 12, 31, 23, 59, 58};
    for (const std::string_view layout : TimestampParser::humanDateFormats()) {
      const auto result = parsed(moment.by(layout, true));
      ASSERT_TRUE(result) << year << " by " << layout;
      ASSERT_EQ(result->date, (Instant{asLayoutTells(moment, layout).seconds(), 0}))
          << year << " by " << layout;
      ++read;
    }
  }
  EXPECT_EQ(read, 9'999 * 17);
}

TEST(Layouts, ReadNothingUnpadded) {
  int refused = 0;
  const Moment moments[]{{2024, 1, 25, 10, 11, 12}, {2024, 11, 5, 10, 11, 12},
                         {2024, 11, 25, 9, 11, 12}, {2024, 11, 25, 10, 1, 12},
                         {2024, 11, 25, 10, 11, 2}, {987, 11, 25, 10, 11, 12},
                         {1, 2, 3, 4, 5, 6}};
  for (const Moment& moment : moments) {
    for (const std::string_view layout : TimestampParser::humanDateFormats()) {
      const std::string text = moment.by(layout, false);
      if (text == moment.by(layout, true)) continue;
      EXPECT_FALSE(parsed(text)) << text;
      ++refused;
    }
  }
  EXPECT_GT(refused, 60);
}

// One character more, less or other leads to nothing, or to another reading that is written so.
TEST(Layouts, ReadNoNeighbourOfTheirTexts) {
  const Moment moment{2024, 11, 25, 10, 11, 12};
  int tried = 0, understood = 0;
  for (const std::string_view layout : TimestampParser::humanDateFormats()) {
    const std::string text = moment.by(layout, true);
    for (std::size_t i = 0; i < text.size(); ++i) {
      for (const char c : std::string_view("0 x-/:,.\0", 9)) {
        std::string inserted = text, replaced = text;
        inserted.insert(i, 1, c);
        replaced[i] = c;
        for (const std::string& neighbour : {inserted, replaced}) {
          if (neighbour == text || (c == ' ' && i == 0)) continue;
          ++tried;
          const auto result = parsed(neighbour);
          if (!result) continue;
          ++understood;
          // A zero for a digit can be another date, of the same layout or a later one.
          EXPECT_EQ(neighbour.size(), text.size()) << neighbour;
          EXPECT_EQ(c, '0') << neighbour;
        }
      }
    }
  }
  EXPECT_GT(tried, 4'000);
  EXPECT_GT(understood, 50);
  EXPECT_LT(understood, 300);
}

}  // namespace
}  // namespace horalo
