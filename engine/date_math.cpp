#include "engine/date_math.h"

#include <array>
#include <cstdlib>
#include <utility>

namespace horalo {
namespace {

constexpr std::int64_t kSecondsPerDay = 86'400;
// Some places have left out a whole day to change sides of the date line; none has moved by more.
constexpr std::int64_t kLargestClockChange = 2 * kSecondsPerDay;

// How long a unit lasts at the least: a count of them that would leave the range of instants is
// refused before it overflows.
constexpr std::int64_t shortest(CalendarUnit unit) {
  switch (unit) {
    case CalendarUnit::year:
      return 365 * kSecondsPerDay;
    case CalendarUnit::month:
      return 28 * kSecondsPerDay;
    case CalendarUnit::week:
      return 7 * kSecondsPerDay;
    case CalendarUnit::day:
      return kSecondsPerDay;
    case CalendarUnit::hour:
      return 3'600;
    case CalendarUnit::minute:
      return 60;
    case CalendarUnit::second:
      break;
  }
  return 1;
}

// The instant of a wall-clock time on which a sum of days lands: with `offset` where that occurs.
std::int64_t secondsWithOffset(const CivilTime& local, std::int32_t offset, const TimeZone& zone) {
  const ZonedTime found = zone.zonedTime(local);
  const std::int64_t wanted = civilSeconds(local) - offset;
  if (found.kind == ZonedTime::Kind::repeated && wanted == found.before) return found.before;
  return found.kind == ZonedTime::Kind::skipped ? found.before : found.after;
}

std::optional<Instant> inRange(Instant instant) {
  if (!isInRange(instant)) return std::nullopt;
  return instant;
}

std::optional<Instant> addDays(Instant instant, std::int64_t days, const TimeZone& zone) {
  const std::int32_t offset = zone.offsetAt(instant);
  const CivilTime local = civilTimeOf(instant.seconds + offset + days * kSecondsPerDay);
  return inRange({secondsWithOffset(local, offset, zone), instant.nanoseconds});
}

std::optional<Instant> addCalendarMonths(Instant instant, std::int64_t months,
                                         const TimeZone& zone) {
  CivilTime local = zone.localTime(instant);
  const std::optional<CivilDate> date = addMonths(local.date, months);
  if (!date) return std::nullopt;
  local.date = *date;
  return inRange({zone.secondsOf(local), instant.nanoseconds});
}

// Whether so many units from one instant lead past another.
class Reach {
 public:
  Reach(Instant from, Instant to, const TimeZone& zone)
      : from_(from),
        to_(to),
        zone_(zone),
        localFrom_(zone.localTime(from)),
        localTo_(to.seconds + zone.offsetAt(to)) {}

  bool passes(std::int64_t count, CalendarUnit unit) const {
    const bool forward = count > 0;
    // The wall clocks tell, but for what a clock change can hide.
    const std::optional<std::int64_t> local = localSum(count, unit);
    if (!local) return true;
    const std::int64_t beyond = *local - localTo_;
    if (std::abs(beyond) > kLargestClockChange) return forward == (beyond > 0);
    const std::optional<Instant> reached = addUnits(from_, count, unit, zone_);
    return !reached || (forward ? *reached > to_ : *reached < to_);
  }

 private:
  // What the wall clock shows, as its seconds since the epoch.
  std::optional<std::int64_t> localSum(std::int64_t count, CalendarUnit unit) const {
    if (unit == CalendarUnit::day || unit == CalendarUnit::week) {
      return civilSeconds(localFrom_) + count * shortest(unit);
    }
    const std::int64_t months = unit == CalendarUnit::year ? count * 12 : count;
    const std::optional<CivilDate> date = addMonths(localFrom_.date, months);
    if (!date) return std::nullopt;
    return civilSeconds({*date, localFrom_.hour, localFrom_.minute, localFrom_.second});
  }

  Instant from_;
  Instant to_;
  const TimeZone& zone_;
  CivilTime localFrom_;
  std::int64_t localTo_;
};

}  // namespace

std::optional<Instant> addUnits(Instant instant, std::int64_t count, CalendarUnit unit,
                                const TimeZone& zone) {
  // Twice the range leads from one end past the other.
  const std::int64_t most = 2 * kFarthestSecond / shortest(unit) + 1;
  if (count > most || count < -most) return std::nullopt;
  switch (unit) {
    case CalendarUnit::year:
      return addCalendarMonths(instant, count * 12, zone);
    case CalendarUnit::month:
      return addCalendarMonths(instant, count, zone);
    case CalendarUnit::week:
      return addDays(instant, count * 7, zone);
    case CalendarUnit::day:
      return addDays(instant, count, zone);
    case CalendarUnit::hour:
    case CalendarUnit::minute:
    case CalendarUnit::second:
      break;
  }
  return addSeconds(instant, count * shortest(unit));
}

std::optional<Instant> startOfDayAfter(Instant instant, std::int64_t days, const TimeZone& zone) {
  const CivilDate today = zone.localTime(instant).date;
  return inRange({zone.startOfDay(dateOfDay(daysSinceEpoch(today) + days)), 0});
}

CalendarDifference calendarDifference(Instant from, Instant to, const TimeZone& zone) {
  constexpr std::array<std::pair<CalendarUnit, std::int64_t>, 4> kTypicalLengths{
      {{CalendarUnit::year, 31'556'952},
       {CalendarUnit::month, 2'629'746},
       {CalendarUnit::week, 7 * kSecondsPerDay},
       {CalendarUnit::day, kSecondsPerDay}}};
  const std::int64_t span = to.seconds - from.seconds;
  const std::int64_t step = to >= from ? 1 : -1;
  const Reach reach(from, to, zone);
  for (const auto& [unit, typicalLength] : kTypicalLengths) {
    if (std::abs(span) < shortest(unit) - kLargestClockChange) continue;
    // A guess that is too large by one or two at the most, then the exact count.
    std::int64_t count = span / typicalLength + 2 * step;
    while (count * step > 0 && reach.passes(count, unit)) count -= step;
    if (count * step > 0) return {count, unit};
  }
  // Below a day only the time line counts.
  std::int64_t seconds = span;
  if (step > 0 && to.nanoseconds < from.nanoseconds) --seconds;
  if (step < 0 && to.nanoseconds > from.nanoseconds) ++seconds;
  if (seconds / 3'600 != 0) return {seconds / 3'600, CalendarUnit::hour};
  if (seconds / 60 != 0) return {seconds / 60, CalendarUnit::minute};
  return {seconds, CalendarUnit::second};
}

}  // namespace horalo
