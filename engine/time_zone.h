#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/instant.h"
#include "engine/civil_time.h"

namespace horalo {

// Where a wall-clock time lies on the time line. Clock changes make some times occur twice and
// others not at all:
//
//   unique    America/New_York 2024-07-01 12:00:00: before == after, 12:00 -04:00
//   repeated  America/New_York 2024-11-03 01:30:00: before is 01:30 -04:00, after is 01:30 -05:00
//   skipped   America/New_York 2024-03-10 02:30:00: before reads it with the offset that held
//             before the change, which is 03:30 -04:00 (moved forward by the gap); after, with the
//             new offset, is 01:30 -05:00; change is 03:00 -04:00
struct ZonedTime {
  enum class Kind { unique, repeated, skipped };
  Kind kind = Kind::unique;
  std::int64_t before = 0;  // seconds since the epoch
  std::int64_t change = 0;  // the clock change itself; equals before where the time is unique
  std::int64_t after = 0;
};

// The rules of one zone, whatever they come from.
class ZoneRules {
 public:
  virtual ~ZoneRules() = default;
  virtual std::int32_t offsetAt(std::int64_t seconds) const = 0;  // east of UTC is positive
  // As the zone's file has it: "JST", "+08"; empty where it has none.
  virtual std::string abbreviationAt(std::int64_t seconds) const = 0;
  virtual ZonedTime find(const CivilTime& time) const = 0;
};

// A time zone: offsets, abbreviations and clock changes as the system's time-zone files have them,
// also after 2037. A value that is as cheap to copy as a pointer.
class TimeZone {
 public:
  // UTC, identifier "UTC"; needs no file.
  static TimeZone utc();

  // The zone of an IANA identifier such as "Europe/Paris", or of "UTC"; nothing where the system
  // has no such zone.
  static std::optional<TimeZone> find(std::string_view identifier);

  // The zone of a file outside the database, given by its absolute path, which is its identifier;
  // nothing where it holds none.
  static std::optional<TimeZone> ofFile(std::string_view path);

  // The zone of a TZ rule (POSIX.1-2017, 8.3) such as "CET-1CEST,M3.5.0,M10.5.0/3"; its identifier
  // is the rule. Nothing where `rule` is none.
  static std::optional<TimeZone> fromPosixRule(std::string_view rule);

  const std::string& identifier() const;

  // Seconds east of UTC at `instant`.
  std::int32_t offsetAt(Instant instant) const;
  // Empty where the zone has none at that instant.
  std::string abbreviationAt(Instant instant) const;
  // What the clocks of the zone show at `instant`.
  CivilTime localTime(Instant instant) const;
  // Where a time of those clocks lies.
  ZonedTime zonedTime(const CivilTime& local) const;

  // The instant of a local time: a skipped one is moved forward by the gap, of a repeated one it
  // is the later.
  std::int64_t secondsOf(const CivilTime& local) const;

  // The first instant of a local date: 01:00 where midnight is skipped, the earlier midnight where
  // it occurs twice; of a date that is skipped altogether, the clock change.
  std::int64_t startOfDay(CivilDate date) const;

  // Zones are the same when they are called the same.
  friend bool operator==(const TimeZone& a, const TimeZone& b) {
    return a.identifier() == b.identifier();
  }

 private:
  struct Named {
    std::string identifier;
    std::unique_ptr<const ZoneRules> rules;
  };

  TimeZone() = default;
  TimeZone(std::string_view identifier, std::unique_ptr<const ZoneRules> rules);
  static std::optional<TimeZone> load(std::string_view nameOrPath);

  std::shared_ptr<const Named> zone_;  // none: UTC
};

}  // namespace horalo
