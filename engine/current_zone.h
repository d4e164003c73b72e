#pragma once

#include <optional>

#include "engine/time_zone.h"

namespace horalo {

// Where the program learns the user's own zone. It is asked at each use, because the zone changes
// while the program runs when its user travels.
class ZoneSource {
 public:
  virtual ~ZoneSource() = default;
  virtual TimeZone current() const = 0;
};

// The user's zone: TZ where it is set (a leading ":" is dropped; an identifier, a file of the zone
// database or a POSIX rule), else what /etc/localtime points to; UTC where neither names a zone.
class SystemZone final : public ZoneSource {
 public:
  TimeZone current() const override;
};

// Asks another source once, at the first use, and stays with the answer.
class ZoneReadOnce final : public ZoneSource {
 public:
  explicit ZoneReadOnce(const ZoneSource& source) : source_(source) {}
  TimeZone current() const override;

 private:
  const ZoneSource& source_;
  mutable std::optional<TimeZone> zone_;
};

// A zone that stays.
class FixedZone final : public ZoneSource {
 public:
  explicit FixedZone(TimeZone zone) : zone_(std::move(zone)) {}
  TimeZone current() const override { return zone_; }

 private:
  TimeZone zone_;
};

}  // namespace horalo
