#include "engine/timestamp_parser.h"

#include <array>
#include <string>
#include <utility>

#include "engine/date_expressions.h"
#include "engine/date_math.h"
#include "engine/human_date.h"
#include "engine/iso8601.h"
#include "engine/number_text.h"
#include "engine/text_matching.h"

namespace horalo {
namespace {

constexpr double kLargestSeconds = 32'503'680'000;            // 3000-01-01T00:00:00Z
constexpr double kLargestMilliseconds = 253'402'300'799'999;  // 9999-12-31T23:59:59.999Z

ParseResult dateMath(Instant date, std::string_view expression) {
  return {date, source::DateMath{std::string(expression)}};
}

// Seconds or milliseconds since the epoch: its size alone decides which, never the number of
// digits.
std::optional<ParseResult> parseNumeric(const NumberText& number) {
  const double value = number.value();
  if (!(value >= 0 && value <= kLargestMilliseconds)) return std::nullopt;
  const bool isSeconds = value <= kLargestSeconds;
  const std::optional<Instant> date = isSeconds ? number.asSeconds() : number.asMilliseconds();
  if (!date) return std::nullopt;
  if (isSeconds) return ParseResult{*date, source::UnixSeconds{}};
  return ParseResult{*date, source::UnixMilliseconds{}};
}

}  // namespace

const TimestampParser& TimestampParser::shared() {
  static const SystemClock clock;
  static const SystemZone zone;
  static const TimestampParser parser(clock, zone);
  return parser;
}

const std::array<std::string_view, 17>& TimestampParser::humanDateFormats() {
  return kHumanDateFormats;
}

std::optional<ParseResult> TimestampParser::parse(std::string_view input) const {
  const std::string_view text = trimmed(input);
  if (text.empty()) return std::nullopt;
  if (isLowered(text, "now")) return ParseResult{clock_.now(), source::Now{}};
  if (auto result = parseSimpleKeyword(text)) return result;
  if (const auto date = parseAgoExpression(text)) return dateMath(*date, text);
  if (const auto date = parseWeekdayExpression(text)) return dateMath(*date, text);
  if (const auto date = parseOffsetExpression(text)) return dateMath(*date, text);
  if (const auto number = NumberText::parse(text)) {
    if (auto result = parseNumeric(*number)) return result;
  }
  if (const auto date = parseISO8601(text)) return ParseResult{*date, source::Iso8601{}};
  return parseHumanDate(text);
}

std::optional<ParseResult> TimestampParser::parseSimpleKeyword(std::string_view text) const {
  static constexpr std::array<std::pair<std::string_view, int>, 3> kDays{
      {{"today", 0}, {"yesterday", -1}, {"tomorrow", 1}}};
  for (const auto& [keyword, days] : kDays) {
    if (!isLowered(text, keyword)) continue;
    const auto start = startOfDayAfter(clock_.now(), days, zones_.current());
    if (start) return dateMath(*start, keyword);
  }
  return std::nullopt;
}

std::optional<Instant> TimestampParser::parseAgoExpression(std::string_view text) const {
  const std::optional<AgoExpression> match = matchAgo(text);
  if (!match) return std::nullopt;
  const std::optional<std::int64_t> count = wholeNumber(match->count);
  if (!count) return std::nullopt;
  return add(clock_.now(), -*count, calendarComponent(match->unit));
}

std::optional<Instant> TimestampParser::parseWeekdayExpression(std::string_view text) const {
  const std::optional<WeekdayExpression> match = matchWeekday(text);
  if (!match) return std::nullopt;
  const std::optional<int> target = weekdayNumber(match->weekday);
  if (!target) return std::nullopt;
  const Instant now = clock_.now();
  const TimeZone zone = zones_.current();
  int days = *target - weekdayOf(zone.localTime(now).date);
  if (isLowered(match->direction, "next")) {
    if (days < 1) days += 7;
  } else if (days >= 0) {
    days -= 7;
  }
  return startOfDayAfter(now, days, zone);
}

std::optional<Instant> TimestampParser::parseOffsetExpression(std::string_view text) const {
  const std::optional<OffsetExpression> match = matchOffset(text);
  if (!match) return std::nullopt;
  const std::optional<std::int64_t> count = wholeNumber(match->count);
  if (!count) return std::nullopt;
  const std::optional<Instant> base = parseOffsetBase(match->base);
  if (!base) return std::nullopt;
  return add(*base, match->sign == '-' ? -*count : *count,
             calendarComponent(normalizeUnit(match->unit)));
}

std::optional<Instant> TimestampParser::add(Instant instant, std::int64_t count,
                                            CalendarUnit unit) const {
  return addUnits(instant, count, unit, isCalendarUnit(unit) ? zones_.current() : TimeZone::utc());
}

std::optional<Instant> TimestampParser::parseOffsetBase(std::string_view text) const {
  if (isLowered(text, "now")) return clock_.now();
  // Unlike a number on its own, a base may be negative or lie past the year 9999.
  if (const auto number = NumberText::parse(text)) {
    return number->value() > kLargestSeconds ? number->asMilliseconds() : number->asSeconds();
  }
  if (const auto date = parseISO8601(text)) return date;
  if (const auto human = parseHumanDate(text)) return human->date;
  return std::nullopt;
}

std::optional<ParseResult> TimestampParser::parseHumanDate(std::string_view text) const {
  const std::optional<HumanDate> match = matchHumanDate(text);
  if (!match) return std::nullopt;
  const Instant date{zones_.current().secondsOf(match->time), 0};
  return ParseResult{date, source::HumanDate{match->format}};
}

}  // namespace horalo
