#include "tests/tables/expected_instant.h"

#include <chrono>
#include <regex>
#include <stdexcept>

namespace horalo {
namespace {

std::int32_t nanosecondsOf(std::string digits) {
  digits.resize(9, '0');
  return std::stoi(digits);
}

Instant epochInstant(const std::smatch& match) {
  const bool negative = match[1] == "-";
  const std::int64_t seconds = std::stoll(match[2]);
  const std::int32_t nanoseconds = nanosecondsOf(match[3]);
  if (!negative) return {seconds, nanoseconds};
  return nanoseconds == 0 ? Instant{-seconds, 0}
                          : Instant{-seconds - 1, 1'000'000'000 - nanoseconds};
}

Instant dateInstant(const std::smatch& match) {
  using namespace std::chrono;
  const auto number = [&](std::size_t i) { return std::stoi(match[i]); };
  const year_month_day date{year(number(1)), month(static_cast<unsigned>(number(2))),
                            day(static_cast<unsigned>(number(3)))};
  const seconds time = hours(number(4)) + minutes(number(5)) + seconds(number(6));
  seconds offset{0};
  if (match[8].matched) {
    offset = hours(number(9)) + minutes(number(10));
    if (match[8] == "-") offset = -offset;
  }
  const auto instant = sys_seconds(sys_days(date)) + time - offset;
  return {instant.time_since_epoch().count(), nanosecondsOf(match[7])};
}

}  // namespace

Instant expectedInstant(const std::string& text) {
  static const std::regex epoch(R"(@(-?)(\d+)(?:\.(\d{1,9}))?)");
  static const std::regex date(R"((\d{4})-(\d\d)-(\d\d)T(\d\d):(\d\d):(\d\d)(?:\.(\d{1,9}))?)"
                               R"((?:Z|([+-])(\d\d):(\d\d)))");
  std::smatch match;
  if (std::regex_match(text, match, epoch)) return epochInstant(match);
  if (std::regex_match(text, match, date)) return dateInstant(match);
  throw std::runtime_error("not an expected instant: " + text);
}

}  // namespace horalo
