#include "engine/posix_zone_rule.h"

#include <algorithm>
#include <array>

#include "base/ascii.h"

namespace horalo {
namespace {

using Change = PosixZoneRule::Change;

constexpr std::int64_t kSecondsPerDay = 86'400;

// Reads the parts of a rule from left to right; each function takes what it reads off the front.
class RuleReader {
 public:
  explicit RuleReader(std::string_view text) : rest_(text) {}

  bool atEnd() const { return rest_.empty(); }
  char peek() const { return rest_.empty() ? '\0' : rest_.front(); }

  bool take(char c) {
    if (peek() != c || rest_.empty()) return false;
    rest_.remove_prefix(1);
    return true;
  }

  std::optional<std::string> name() {
    const bool quoted = take('<');
    const auto belongs = [quoted](char c) {
      return isLetter(c) || (quoted && (isDigit(c) || c == '+' || c == '-'));
    };
    const auto end = std::find_if_not(rest_.begin(), rest_.end(), belongs);
    std::string name(rest_.begin(), end);
    rest_.remove_prefix(name.size());
    if (name.size() < 3 || (quoted && !take('>'))) return std::nullopt;
    return name;
  }

  std::optional<int> number(int smallest, int largest) {
    if (!isDigit(peek())) return std::nullopt;
    int value = 0;
    while (isDigit(peek())) {
      value = value * 10 + (rest_.front() - '0');
      if (value > largest) return std::nullopt;
      rest_.remove_prefix(1);
    }
    return value < smallest ? std::nullopt : std::optional(value);
  }

  // [+-]hh[:mm[:ss]] in seconds.
  std::optional<std::int32_t> time(int largestHour) {
    const bool negative = take('-');
    if (!negative) take('+');
    const std::optional<int> hours = number(0, largestHour);
    if (!hours) return std::nullopt;
    std::int32_t seconds = *hours * 3'600;
    for (const std::int32_t unit : {60, 1}) {
      if (!take(':')) break;
      const std::optional<int> value = number(0, 59);
      if (!value) return std::nullopt;
      seconds += *value * unit;
    }
    return negative ? -seconds : seconds;
  }

  std::optional<Change> change() {
    Change change;
    if (take('M')) {
      change.form = Change::Form::weekdayOfMonth;
      const std::optional<int> month = number(1, 12);
      if (!month || !take('.')) return std::nullopt;
      const std::optional<int> week = number(1, 5);
      if (!week || !take('.')) return std::nullopt;
      const std::optional<int> weekday = number(0, 6);
      if (!weekday) return std::nullopt;
      change.month = *month;
      change.week = *week;
      change.weekday = *weekday;
    } else {
      const bool julian = take('J');
      change.form = julian ? Change::Form::julianDay : Change::Form::dayOfYear;
      const std::optional<int> day = number(julian ? 1 : 0, 365);
      if (!day) return std::nullopt;
      change.day = *day;
    }
    if (take('/')) {
      const std::optional<std::int32_t> seconds = time(167);
      if (!seconds) return std::nullopt;
      change.seconds = *seconds;
    }
    return change;
  }

 private:
  std::string_view rest_;
};

// The day, counted from the epoch, on which a change falls in a year.
std::int64_t dayOfChange(const Change& change, std::int64_t year) {
  const std::int64_t newYear = daysSinceEpoch({year, 1, 1});
  switch (change.form) {
    case Change::Form::dayOfYear:
      return newYear + change.day;
    case Change::Form::julianDay: {
      const bool afterLeapDay = change.day >= 60 && daysInMonth(year, 2) == 29;
      return newYear + change.day - 1 + (afterLeapDay ? 1 : 0);
    }
    case Change::Form::weekdayOfMonth:
      break;
  }
  const CivilDate first{year, change.month, 1};
  const int toWeekday = (change.weekday - (weekdayOf(first) - 1) + 7) % 7;
  int day = 1 + toWeekday + (change.week - 1) * 7;
  while (day > daysInMonth(year, change.month)) day -= 7;
  return daysSinceEpoch({year, change.month, day});
}

// The change as seconds since the epoch; `offset` holds until it.
std::int64_t secondsOfChange(const Change& change, std::int64_t year, std::int32_t offset) {
  return dayOfChange(change, year) * kSecondsPerDay + change.seconds - offset;
}

}  // namespace

std::optional<PosixZoneRule> PosixZoneRule::parse(std::string_view text) {
  RuleReader reader(text);
  PosixZoneRule rule;
  std::optional<std::string> name = reader.name();
  if (!name) return std::nullopt;
  const std::optional<std::int32_t> west = reader.time(24);
  if (!west) return std::nullopt;
  rule.name_ = *std::move(name);
  rule.offset_ = -*west;
  if (reader.atEnd()) return rule;

  Summer summer;
  name = reader.name();
  if (!name) return std::nullopt;
  summer.name = *std::move(name);
  summer.offset = rule.offset_ + 3'600;
  if (!reader.atEnd() && reader.peek() != ',') {
    const std::optional<std::int32_t> summerWest = reader.time(24);
    if (!summerWest) return std::nullopt;
    summer.offset = -*summerWest;
  }
  // What the zone database's own fallback rule says; it is what the law says in North America.
  RuleReader usual(",M3.2.0,M11.1.0");
  RuleReader& dates = reader.atEnd() ? usual : reader;
  std::optional<Change> start, end;
  if (!dates.take(',') || !(start = dates.change())) return std::nullopt;
  if (!dates.take(',') || !(end = dates.change()) || !dates.atEnd()) return std::nullopt;
  summer.start = *start;
  summer.end = *end;
  rule.summer_ = std::move(summer);
  return rule;
}

bool PosixZoneRule::isSummer(std::int64_t seconds) const {
  if (!summer_) return false;
  const std::int64_t year = civilTimeOf(seconds + offset_).date.year;
  const std::int64_t start = secondsOfChange(summer_->start, year, offset_);
  const std::int64_t end = secondsOfChange(summer_->end, year, summer_->offset);
  // South of the equator summer time runs over the new year.
  return start < end ? seconds >= start && seconds < end : seconds >= start || seconds < end;
}

std::int32_t PosixZoneRule::offsetAt(std::int64_t seconds) const {
  return isSummer(seconds) ? summer_->offset : offset_;
}

std::string PosixZoneRule::abbreviationAt(std::int64_t seconds) const {
  return isSummer(seconds) ? summer_->name : name_;
}

ZonedTime PosixZoneRule::find(const CivilTime& time) const {
  const std::int64_t local = civilSeconds(time);
  const std::int64_t asStandard = local - offset_;
  if (!summer_ || summer_->offset == offset_) {
    return {ZonedTime::Kind::unique, asStandard, asStandard, asStandard};
  }
  const std::int64_t asSummer = local - summer_->offset;
  const bool fitsStandard = !isSummer(asStandard);
  const bool fitsSummer = isSummer(asSummer);
  if (fitsStandard != fitsSummer) {
    const std::int64_t seconds = fitsStandard ? asStandard : asSummer;
    return {ZonedTime::Kind::unique, seconds, seconds, seconds};
  }
  // Both fit or neither does: the two readings lie on the two sides of a clock change.
  const auto [earlier, later] = std::minmax(asStandard, asSummer);
  std::int64_t change = later;
  for (const std::int64_t year : {time.date.year - 1, time.date.year, time.date.year + 1}) {
    for (const std::int64_t candidate : {secondsOfChange(summer_->start, year, offset_),
                                         secondsOfChange(summer_->end, year, summer_->offset)}) {
      if (candidate > earlier && candidate <= later) change = candidate;
    }
  }
  if (fitsStandard) return {ZonedTime::Kind::repeated, earlier, change, later};
  // Read with the offset from before the change, a skipped time lies after it.
  return {ZonedTime::Kind::skipped, later, change, earlier};
}

}  // namespace horalo
