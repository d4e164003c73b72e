#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>

#include "engine/current_zone.h"
#include "engine/time_zone.h"
#include "fuzz/require.h"

// Any text as the name of a zone, as a rule in TZ, and as TZ itself: no zone, or one whose clocks
// agree with themselves.

namespace horalo {
namespace {

constexpr std::int32_t kLargestOffset = 8 * 86'400;  // rules in TZ may move a clock by a week

constexpr std::array<std::int64_t, 11> kMoments{-kFarthestSecond,
                                                -62'135'596'800,
                                                -2'717'640'000,
                                                -1,
                                                0,
                                                1'325'239'200,
                                                1'710'054'000,
                                                1'730'613'600,
                                                2'222'222'222,
                                                4'102'444'800,
                                                kFarthestSecond};

// Whether the clocks change both in the day before a moment and in the day after it, as a rule may
// have it though no place has. Then a date may begin, give way to the one before, and begin again.
bool liesBetweenChanges(const TimeZone& zone, std::int64_t seconds) {
  constexpr std::int64_t kDay = 86'400;
  const std::int32_t offset = zone.offsetAt({seconds, 0});
  return zone.offsetAt({seconds - kDay, 0}) != offset &&
         zone.offsetAt({seconds + kDay, 0}) != offset;
}

void checkMoment(const TimeZone& zone, std::int64_t seconds) {
  const Instant instant{seconds, 0};
  const std::int32_t offset = zone.offsetAt(instant);
  require(offset > -kLargestOffset && offset < kLargestOffset, "an offset is days at most");
  zone.abbreviationAt(instant);

  const CivilTime local = zone.localTime(instant);
  require(civilSeconds(local) == seconds + offset, "local time is the instant plus the offset");

  const ZonedTime found = zone.zonedTime(local);
  require(found.kind != ZonedTime::Kind::skipped, "a clock that shows a time does not skip it");
  require(found.before == seconds || found.after == seconds, "a local time leads back");
  require(found.before <= found.after, "the earlier of two comes first");
  require((found.kind == ZonedTime::Kind::unique) == (found.before == found.after),
          "a unique time is one instant");
  require(zone.secondsOf(local) == found.after, "of a repeated time the later holds");

  if (liesBetweenChanges(zone, seconds)) return;
  const std::int64_t start = zone.startOfDay(local.date);
  require(start <= seconds, "a day starts before its times");
  require(zone.localTime({start, 0}).date == local.date, "a day starts on its date");
}

void checkZone(const TimeZone& zone) {
  for (const std::int64_t seconds : kMoments) checkMoment(zone, seconds);
  // Around midnight and around the hours at which clocks are usually changed.
  for (std::int64_t hour = 0; hour < 26; ++hour) {
    checkMoment(zone, 1'711'843'200 + hour * 3'600 - 1);
    checkMoment(zone, 1'711'843'200 + hour * 3'600);
  }
  const ZonedTime gap = zone.zonedTime({{2024, 3, 31}, 2, 30, 0});
  if (gap.kind == ZonedTime::Kind::skipped) {
    require(gap.after < gap.change && gap.change <= gap.before,
            "a skipped time lies on both sides of the change");
  }
}

void check(const std::string& text) {
  if (const std::optional<TimeZone> zone = TimeZone::find(text)) {
    require(zone->identifier() == text, "a zone is called what it was asked for");
    require(text.find("..") == std::string::npos, "no name leads out of the zone database");
    checkZone(*zone);
  }
  if (const std::optional<TimeZone> zone = TimeZone::fromPosixRule(text)) {
    require(zone->identifier() == text, "a rule is its own identifier");
    checkZone(*zone);
  }
  setenv("TZ", text.c_str(), 1);
  const TimeZone current = SystemZone().current();
  unsetenv("TZ");
  // Most texts name no zone and so lead to UTC, which is a text of its own above.
  if (current != TimeZone::utc()) checkZone(current);
}

}  // namespace
}  // namespace horalo

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  horalo::check(std::string(reinterpret_cast<const char*>(data), size));
  return 0;
}
