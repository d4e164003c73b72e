#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/instant.h"
#include "engine/time_zone.h"

namespace horalo {

// A zone that the panel's menu offers. The title is a fixed text; its abbreviation does not follow
// summer time.
struct CommonTimezone {
  std::string_view identifier;
  std::string_view title;
};

inline constexpr std::array<CommonTimezone, 11> commonTimezones{{
    {"America/Los_Angeles", "Los Angeles (PT)"},
    {"America/Denver", "Denver (MT)"},
    {"America/Chicago", "Chicago (CT)"},
    {"America/New_York", "New York (ET)"},
    {"Europe/London", "London (GMT)"},
    {"Europe/Paris", "Paris (CET)"},
    {"Europe/Berlin", "Berlin (CET)"},
    {"Asia/Tokyo", "Tokyo (JST)"},
    {"Asia/Shanghai", "Shanghai (CST)"},
    {"Asia/Singapore", "Singapore (SGT)"},
    {"Australia/Sydney", "Sydney (AEDT)"},
}};

struct TimeZoneChoice {
  std::string title;
  TimeZone timezone;
};

using FindTimeZone = std::function<std::optional<TimeZone>(std::string_view identifier)>;

// The common zones that this system knows, in their order; the others are left out.
std::vector<TimeZoneChoice> timeZoneChoices(const FindTimeZone& find = TimeZone::find);

// What the menu calls the user's own zone: "Local (CEST)", "Local ()" where the zone has no
// abbreviation at `now`.
std::string localTimeZoneTitle(const TimeZone& local, Instant now);

// What the closed menu shows: the zone's abbreviation at `now`, its identifier where it has none.
std::string timeZoneLabel(const TimeZone& selected, Instant now);

}  // namespace horalo
