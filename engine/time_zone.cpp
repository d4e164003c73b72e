#include "engine/time_zone.h"

#include <absl/time/civil_time.h>
#include <absl/time/time.h>

#include <algorithm>
#include <utility>

#include "engine/posix_zone_rule.h"
#include "engine/zone_file.h"

namespace horalo {
namespace {

// A zone of the system's time-zone files.
class FileZone final : public ZoneRules {
 public:
  explicit FileZone(absl::TimeZone zone) : zone_(zone) {}

  std::int32_t offsetAt(std::int64_t seconds) const override {
    return zone_.At(absl::FromUnixSeconds(seconds)).offset;
  }

  std::string abbreviationAt(std::int64_t seconds) const override {
    return zone_.At(absl::FromUnixSeconds(seconds)).zone_abbr;
  }

  ZonedTime find(const CivilTime& time) const override {
    const absl::TimeZone::TimeInfo found = zone_.At(absl::CivilSecond(
        time.date.year, time.date.month, time.date.day, time.hour, time.minute, time.second));
    return {kindOf(found.kind), absl::ToUnixSeconds(found.pre), absl::ToUnixSeconds(found.trans),
            absl::ToUnixSeconds(found.post)};
  }

 private:
  static ZonedTime::Kind kindOf(absl::TimeZone::TimeInfo::CivilKind kind) {
    switch (kind) {
      case absl::TimeZone::TimeInfo::SKIPPED:
        return ZonedTime::Kind::skipped;
      case absl::TimeZone::TimeInfo::REPEATED:
        return ZonedTime::Kind::repeated;
      case absl::TimeZone::TimeInfo::UNIQUE:
        break;
    }
    return ZonedTime::Kind::unique;
  }

  absl::TimeZone zone_;
};

// The library also loads files by path and zones by names of its own; a user's identifier is a
// relative name inside the zone database and nothing else.
bool looksLikeIdentifier(std::string_view text) {
  if (text.empty() || text.size() > 255 || text.front() == '/' || text.front() == '-') return false;
  // With leap seconds counted in, every time of today would be 27 seconds off.
  if (text.starts_with("right/")) return false;
  // Some databases hold the computer's own zone under this name.
  if (text == "localtime") return false;
  return std::all_of(text.begin(), text.end(), [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '/' || c == '+' || c == '-';
  });
}

}  // namespace

TimeZone::TimeZone(std::string_view identifier, std::unique_ptr<const ZoneRules> rules)
    : zone_(std::make_shared<Named>(Named{std::string(identifier), std::move(rules)})) {}

TimeZone TimeZone::utc() {
  return {};
}

std::optional<TimeZone> TimeZone::load(std::string_view nameOrPath) {
  const std::optional<std::string> name = freshZoneName(nameOrPath);
  absl::TimeZone zone;
  if (!name || !absl::LoadTimeZone(*name, &zone)) return std::nullopt;
  return TimeZone(nameOrPath, std::make_unique<FileZone>(zone));
}

std::optional<TimeZone> TimeZone::find(std::string_view identifier) {
  if (identifier == "UTC") return utc();
  if (!looksLikeIdentifier(identifier)) return std::nullopt;
  return load(identifier);
}

std::optional<TimeZone> TimeZone::ofFile(std::string_view path) {
  if (!path.starts_with('/')) return std::nullopt;
  return load(path);
}

std::optional<TimeZone> TimeZone::fromPosixRule(std::string_view rule) {
  std::optional<PosixZoneRule> parsed = PosixZoneRule::parse(rule);
  if (!parsed) return std::nullopt;
  return TimeZone(rule, std::make_unique<PosixZoneRule>(*std::move(parsed)));
}

const std::string& TimeZone::identifier() const {
  static const std::string utcIdentifier = "UTC";
  return zone_ ? zone_->identifier : utcIdentifier;
}

std::int32_t TimeZone::offsetAt(Instant instant) const {
  return zone_ ? zone_->rules->offsetAt(instant.seconds) : 0;
}

std::string TimeZone::abbreviationAt(Instant instant) const {
  return zone_ ? zone_->rules->abbreviationAt(instant.seconds) : "UTC";
}

CivilTime TimeZone::localTime(Instant instant) const {
  return civilTimeOf(instant.seconds + offsetAt(instant));
}

ZonedTime TimeZone::zonedTime(const CivilTime& local) const {
  if (zone_) return zone_->rules->find(local);
  const std::int64_t seconds = civilSeconds(local);
  return {ZonedTime::Kind::unique, seconds, seconds, seconds};
}

std::int64_t TimeZone::secondsOf(const CivilTime& local) const {
  const ZonedTime found = zonedTime(local);
  return found.kind == ZonedTime::Kind::skipped ? found.before : found.after;
}

std::int64_t TimeZone::startOfDay(CivilDate date) const {
  const ZonedTime midnight = zonedTime({date, 0, 0, 0});
  return midnight.kind == ZonedTime::Kind::skipped ? midnight.change : midnight.before;
}

}  // namespace horalo
