#include "engine/current_zone.h"

#include <gtest/gtest.h>

#include "tests/tables/scoped_variable.h"

namespace horalo {
namespace {

constexpr Instant kSummer{1'720'000'000, 0};  // 2024-07-03

struct Case {
  const char* variable;
  const char* identifier;
  std::int32_t offset;  // in seconds, in summer
};

TEST(SystemZone, IsWhatTheVariableSays) {
  constexpr Case kCases[]{
      {"Europe/Paris", "Europe/Paris", 7'200},
      {":Europe/Paris", "Europe/Paris", 7'200},
      {"UTC", "UTC", 0},
      {"Etc/UTC", "Etc/UTC", 0},
      {"UTC0", "UTC0", 0},
      {"", "Etc/UTC", 0},
      {":", "Etc/UTC", 0},
      {"JST-9", "JST-9", 32'400},
      {":JST-9", "JST-9", 32'400},
      {"<+0530>-5:30", "<+0530>-5:30", 19'800},
      {"EST5EDT", "EST5EDT", -14'400},
      {"EST5EDT,M3.2.0,M11.1.0", "EST5EDT,M3.2.0,M11.1.0", -14'400},
      {"GMT+3", "GMT+3", -10'800},
      {"/usr/share/zoneinfo/Asia/Tokyo", "Asia/Tokyo", 32'400},
      {":/usr/share/zoneinfo/Asia/Tokyo", "Asia/Tokyo", 32'400},
      {"/usr/share/zoneinfo/posix/Asia/Tokyo", "Asia/Tokyo", 32'400},
      {"posix/Asia/Tokyo", "posix/Asia/Tokyo", 32'400},
      // Nothing that names a zone.
      {"Nowhere/City", "UTC", 0},
      {"../../../etc/localtime", "UTC", 0},
      {"/dev/null", "UTC", 0},
      {"/nowhere", "UTC", 0},
      {"right/Europe/Paris", "UTC", 0},
      {"Europe/", "UTC", 0},
      {"europe\xFF", "UTC", 0},
  };
  const SystemZone zone;
  int compared = 0;
  // Twice, so that each answer also follows another one.
  for (int round = 0; round < 2; ++round) {
    for (const Case& c : kCases) {
      const ScopedVariable variable("TZ", c.variable);
      const TimeZone found = zone.current();
      EXPECT_EQ(found.identifier(), c.identifier) << c.variable;
      EXPECT_EQ(found.offsetAt(kSummer), c.offset) << c.variable;
      ++compared;
    }
  }
  EXPECT_EQ(compared, 48);
}

TEST(SystemZone, IsTheSystemsWithoutAVariable) {
  const auto identifierWith = [](const std::optional<std::string>& value) {
    const ScopedVariable variable("TZ", value);
    return SystemZone().current().identifier();
  };
  const std::string systems = identifierWith({});
  EXPECT_FALSE(systems.empty());
  EXPECT_EQ(identifierWith(":/etc/localtime"), systems);
  EXPECT_EQ(identifierWith("/etc/localtime"), systems);
}

class CountingZone final : public ZoneSource {
 public:
  TimeZone current() const override {
    ++asked;
    return TimeZone::utc();
  }
  mutable int asked = 0;
};

TEST(ZoneReadOnce, AsksAtTheFirstUseAndNeverAgain) {
  const CountingZone source;
  const ZoneReadOnce zone(source);
  EXPECT_EQ(source.asked, 0);
  EXPECT_EQ(zone.current(), TimeZone::utc());
  EXPECT_EQ(zone.current(), TimeZone::utc());
  EXPECT_EQ(source.asked, 1);
}

TEST(TimeZone, IsFoundByItsNameInTheDatabaseAlone) {
  for (const char* identifier :
       {"UTC", "Etc/UTC", "Europe/Paris", "America/Argentina/ComodRivadavia", "EST5EDT",
        "Etc/GMT+12", "Etc/GMT-14", "GB-Eire", "Zulu"}) {
    const auto zone = TimeZone::find(identifier);
    ASSERT_TRUE(zone) << identifier;
    EXPECT_EQ(zone->identifier(), identifier);
  }
  for (const char* identifier : {"",
                                 "utc",
                                 "europe/paris",
                                 "Europe",
                                 "Europe/",
                                 "/Europe/Paris",
                                 "Europe/Paris ",
                                 " Europe/Paris",
                                 "Europe\\Paris",
                                 "Europe/../Europe/Paris",
                                 "../zoneinfo/UTC",
                                 "/usr/share/zoneinfo/UTC",
                                 "/etc/localtime",
                                 "file:/etc/localtime",
                                 "libc:localtime",
                                 "localtime",
                                 "local",
                                 "UTC0",
                                 "UTC+1",
                                 "Fixed/UTC+01:00:00",
                                 "GMT+3",
                                 "JST-9",
                                 "CEST",
                                 "right/UTC",
                                 "zone.tab",
                                 "tzdata.zi",
                                 "leapseconds",
                                 "-",
                                 "\xFF",
                                 "Europe/Par\u00EDs"}) {
    EXPECT_FALSE(TimeZone::find(identifier)) << identifier;
  }
  EXPECT_FALSE(TimeZone::find(std::string_view("UTC\0", 4)));
  EXPECT_FALSE(TimeZone::find(std::string(100'000, 'A')));
}

TEST(TimeZone, IsReadFromAFileByItsPath) {
  const auto zone = TimeZone::ofFile("/usr/share/zoneinfo/Asia/Kathmandu");
  ASSERT_TRUE(zone);
  EXPECT_EQ(zone->identifier(), "/usr/share/zoneinfo/Asia/Kathmandu");
  EXPECT_EQ(zone->offsetAt(kSummer), 20'700);
  EXPECT_FALSE(TimeZone::ofFile("Asia/Kathmandu"));
  EXPECT_FALSE(TimeZone::ofFile("/dev/null"));
  EXPECT_FALSE(TimeZone::ofFile("/nowhere"));
  EXPECT_FALSE(TimeZone::ofFile(""));
}

TEST(TimeZone, HasTheAbbreviationsOfItsFile) {
  const auto abbreviation = [](const char* identifier) {
    return TimeZone::find(identifier)->abbreviationAt(kSummer);
  };
  EXPECT_EQ(abbreviation("UTC"), "UTC");
  EXPECT_EQ(abbreviation("Asia/Tokyo"), "JST");
  EXPECT_EQ(abbreviation("Europe/Paris"), "CEST");
  EXPECT_EQ(abbreviation("Asia/Kathmandu"), "+0545");
  EXPECT_EQ(abbreviation("America/Sao_Paulo"), "-03");
  EXPECT_EQ(abbreviation("Etc/GMT-14"), "+14");
}

}  // namespace
}  // namespace horalo
