#include "converter/time_zone_choices.h"

#include <utility>

namespace horalo {

std::vector<TimeZoneChoice> timeZoneChoices(const FindTimeZone& find) {
  std::vector<TimeZoneChoice> choices;
  for (const auto& [identifier, title] : commonTimezones) {
    if (auto zone = find(identifier)) choices.push_back({std::string(title), std::move(*zone)});
  }
  return choices;
}

std::string localTimeZoneTitle(const TimeZone& local, Instant now) {
  return std::string("Local (").append(local.abbreviationAt(now)).append(")");
}

std::string timeZoneLabel(const TimeZone& selected, Instant now) {
  auto abbreviation = selected.abbreviationAt(now);
  return abbreviation.empty() ? selected.identifier() : abbreviation;
}

}  // namespace horalo
