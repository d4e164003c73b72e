#include "converter/time_zone_choices.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/fakes/files.h"
#include "tests/fakes/temporary_folder.h"

namespace horalo {
namespace {

constexpr Instant kWinter{1704067200, 0};  // 2024-01-01T00:00:00Z
constexpr Instant kSummer{1719792000, 0};  // 2024-07-01T00:00:00Z

// A zone file of one offset whose abbreviation is the empty text.
TimeZone zoneWithoutAbbreviation() {
  const TemporaryFolder folder;
  std::string file = "TZif";
  file += std::string(1 + 15, '\0');  // version 1, unused
  for (const char count :
       {'\0', '\0', '\0', '\0', '\1', '\1'})  // one kind of time, one byte of abbreviations
    file += std::string(3, '\0') + count;
  file += std::string("\0\0\x0e\x10\0\0", 6);  // an hour east, no summer time, first abbreviation
  file += '\0';
  writeText(folder / "Nameless", file);
  setenv("TZDIR", folder.path().toUtf8().constData(), 1);
  auto zone = TimeZone::find("Nameless");
  unsetenv("TZDIR");
  if (!zone) throw std::runtime_error("the zone file is not understood");
  return *std::move(zone);
}

TEST(TimeZoneChoices, areTheElevenInTheirOrder) {
  const std::vector<std::pair<std::string, std::string>> expected{
      {"America/Los_Angeles", "Los Angeles (PT)"}, {"America/Denver", "Denver (MT)"},
      {"America/Chicago", "Chicago (CT)"},         {"America/New_York", "New York (ET)"},
      {"Europe/London", "London (GMT)"},           {"Europe/Paris", "Paris (CET)"},
      {"Europe/Berlin", "Berlin (CET)"},           {"Asia/Tokyo", "Tokyo (JST)"},
      {"Asia/Shanghai", "Shanghai (CST)"},         {"Asia/Singapore", "Singapore (SGT)"},
      {"Australia/Sydney", "Sydney (AEDT)"},
  };
  std::vector<std::pair<std::string, std::string>> offered;
  for (const auto& [title, zone] : timeZoneChoices())
    offered.emplace_back(zone.identifier(), title);
  EXPECT_EQ(offered, expected);
  EXPECT_EQ(offered.size(), 11U);
  EXPECT_EQ(commonTimezones.size(), 11U);
}

TEST(TimeZoneChoices, whatTheSystemDoesNotKnowIsLeftOut) {
  const auto choices = timeZoneChoices([](std::string_view identifier) -> std::optional<TimeZone> {
    if (identifier == "Europe/Paris" || identifier == "Asia/Singapore") return std::nullopt;
    return TimeZone::find(identifier);
  });
  EXPECT_EQ(choices.size(), 9U);
  for (const auto& choice : choices) {
    EXPECT_NE(choice.title, "Paris (CET)");
    EXPECT_NE(choice.title, "Singapore (SGT)");
  }
  EXPECT_EQ(timeZoneChoices([](std::string_view) { return std::nullopt; }).size(), 0U);
}

TEST(TimeZoneChoices, theLocalTitleAndTheLabelFollowSummerTimeAndThePresetsDoNot) {
  const TimeZone sydney = TimeZone::find("Australia/Sydney").value();
  EXPECT_EQ(localTimeZoneTitle(sydney, kWinter), "Local (AEDT)");
  EXPECT_EQ(localTimeZoneTitle(sydney, kSummer), "Local (AEST)");
  EXPECT_EQ(timeZoneLabel(sydney, kWinter), "AEDT");
  EXPECT_EQ(timeZoneLabel(sydney, kSummer), "AEST");
  EXPECT_EQ(timeZoneChoices().back().title, "Sydney (AEDT)");
  const TimeZone london = TimeZone::find("Europe/London").value();
  EXPECT_EQ(timeZoneLabel(london, kSummer), "BST");
  EXPECT_EQ(timeZoneChoices().at(4).title, "London (GMT)");
}

TEST(TimeZoneChoices, abbreviationsAreThoseOfTheSystem) {
  EXPECT_EQ(timeZoneLabel(TimeZone::find("Asia/Singapore").value(), kWinter), "+08");
  EXPECT_EQ(timeZoneLabel(TimeZone::utc(), kWinter), "UTC");
  EXPECT_EQ(localTimeZoneTitle(TimeZone::fromPosixRule("ABC-3").value(), kWinter), "Local (ABC)");
}

TEST(TimeZoneChoices, aZoneWithoutAbbreviation) {
  const TimeZone zone = zoneWithoutAbbreviation();
  ASSERT_EQ(zone.offsetAt(kWinter), 3600);
  EXPECT_EQ(timeZoneLabel(zone, kWinter), "Nameless");
  EXPECT_EQ(localTimeZoneTitle(zone, kWinter), "Local ()");
}

}  // namespace
}  // namespace horalo
