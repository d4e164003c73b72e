#include "engine/posix_zone_rule.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace horalo {
namespace {

const std::vector<std::string> kRules{
    "JST-9",
    "UTC0",
    "GMT+3",
    "<+0530>-5:30",
    "<-00>0",
    "LMT-0:09:21",
    "ABC24",
    "XYZ-24:59:59",
    "EST5EDT,M3.2.0,M11.1.0",
    "EST5EDT4,M3.2.0/2,M11.1.0/2",
    "EST5EDT4:30,M3.2.0/02:00:00,M11.1.0/1:30",
    "CET-1CEST,M3.5.0,M10.5.0/3",
    "GMT0BST,M3.5.0/1,M10.5.0",
    "IST-1GMT0,M10.5.0,M3.5.0/1",  // winter time is the exception in Irish law
    "AEST-10AEDT,M10.1.0,M4.1.0/3",
    "<+1030>-10:30<+11>-11,M10.1.0,M4.1.0",
    "<+1245>-12:45<+1345>,M9.5.0/2:45,M4.1.0/3:45",
    "<-03>3<-02>,M10.3.0/0,M2.3.0/0",
    "<-02>2<-01>,M3.5.0/-1,M10.5.0/0",  // Nuuk: on the evening before
    "EET-2EEST,M3.4.4/50,M10.4.4/50",   // the Friday that follows a Thursday
    "IST-2IDT,M3.4.4/26,M10.5.0",
    "<-04>4<-03>,M9.1.6/24,M4.1.6/24",
    "AAA3BBB,J60,J300",
    "AAA3BBB,J59/0,J60/0",
    "AAA3BBB,59,300/12",
    "MMM4DDD3,M12.1.0/0,M1.5.0/0",
    "PPP-8QQQ-10,M4.5.6/24,M9.1.0/-24",
    "NOR-1SOU-3,M1.1.1/3,M12.5.5/1:02:03",
};

// The C library goes by the year in UTC, which is off where clocks change at the turn of the year.
const std::vector<std::string> kRulesOfNewYear{
    "AAA-3BBB,J1/0,J365/23",
    "AAA-3BBB,0/0,364/12",
    "AAA3BBB,J365/23,J1/5",
    "<+13>-13<+14>,364/20,0/3",
};

std::vector<std::string> allRules() {
  std::vector<std::string> rules = kRules;
  rules.insert(rules.end(), kRulesOfNewYear.begin(), kRulesOfNewYear.end());
  return rules;
}

// The C library reads a rule from TZ.
class CLibraryZone {
 public:
  explicit CLibraryZone(const std::string& rule) {
    setenv("TZ", rule.c_str(), 1);
    tzset();
  }
  ~CLibraryZone() {
    if (earlier_.empty()) {
      unsetenv("TZ");
    } else {
      setenv("TZ", earlier_.c_str(), 1);
    }
    tzset();
  }
  CLibraryZone(const CLibraryZone&) = delete;
  CLibraryZone& operator=(const CLibraryZone&) = delete;

  std::tm at(std::int64_t seconds) const {
    const auto instant = static_cast<std::time_t>(seconds);
    std::tm local{};
    localtime_r(&instant, &local);
    return local;
  }

 private:
  std::string earlier_ = std::getenv("TZ") == nullptr ? "" : std::getenv("TZ");
};

// Seconds of the years 1971 to 2500 (before, the C library knows no dates), many of them within an
// hour of a clock change.
std::vector<std::int64_t> instantsFor(const PosixZoneRule& rule, std::mt19937_64& random) {
  std::uniform_int_distribution<std::int64_t> anywhere(32'000'000, 16'700'000'000);
  std::vector<std::int64_t> instants;
  for (int i = 0; i < 1'500; ++i) {
    const std::int64_t instant = anywhere(random);
    instants.push_back(instant);
    // The next clock change, by halving half a year.
    std::int64_t low = instant, high = instant + 15'768'000;
    const std::int32_t offset = rule.offsetAt(low);
    if (rule.offsetAt(high) == offset) continue;
    while (high - low > 1) {
      const std::int64_t middle = low + (high - low) / 2;
      (rule.offsetAt(middle) == offset ? low : high) = middle;
    }
    for (const std::int64_t near : {-3'600, -1, 0, 1, 1'800}) instants.push_back(high + near);
  }
  return instants;
}

TEST(PosixZoneRule, HoldsWhatTheCLibraryReadsFromTheSameRule) {
  std::mt19937_64 random(7);
  std::size_t compared = 0;
  for (const std::string& text : kRules) {
    const auto rule = PosixZoneRule::parse(text);
    ASSERT_TRUE(rule) << text;
    const CLibraryZone library(text);
    for (const std::int64_t instant : instantsFor(*rule, random)) {
      const std::tm local = library.at(instant);
      ASSERT_EQ(rule->offsetAt(instant), local.tm_gmtoff) << text << " at " << instant;
      ASSERT_EQ(rule->abbreviationAt(instant), local.tm_zone) << text << " at " << instant;
      ++compared;
    }
  }
  EXPECT_GT(compared, kRules.size() * 1'500);
}

// A wall-clock time may be any instant at which a clock shows it.
TEST(PosixZoneRule, FindsEveryInstantOfAWallClockTime) {
  std::mt19937_64 random(11);
  int unique = 0, repeated = 0, skipped = 0;
  for (const std::string& text : allRules()) {
    const auto rule = PosixZoneRule::parse(text);
    ASSERT_TRUE(rule) << text;
    std::set<std::int32_t> offsets;
    const std::vector<std::int64_t> instants = instantsFor(*rule, random);
    for (const std::int64_t instant : instants) offsets.insert(rule->offsetAt(instant));
    for (const std::int64_t instant : instants) {
      for (const std::int32_t shift : {0, 3'599, -3'600}) {
        const std::int64_t local = instant + rule->offsetAt(instant) + shift;
        std::set<std::int64_t> readings;
        for (const std::int32_t offset : offsets) {
          if (rule->offsetAt(local - offset) == offset) readings.insert(local - offset);
        }
        const ZonedTime found = rule->find(civilTimeOf(local));
        SCOPED_TRACE(text + " local " + std::to_string(local));
        switch (readings.size()) {
          case 0:
            ++skipped;
            ASSERT_EQ(found.kind, ZonedTime::Kind::skipped);
            ASSERT_EQ(local - found.before, rule->offsetAt(found.change - 1));
            ASSERT_EQ(local - found.after, rule->offsetAt(found.change));
            break;
          case 1:
            ++unique;
            ASSERT_EQ(found.kind, ZonedTime::Kind::unique);
            ASSERT_EQ(found.before, *readings.begin());
            ASSERT_EQ(found.after, found.before);
            ASSERT_EQ(found.change, found.before);
            break;
          default:
            ++repeated;
            ASSERT_EQ(found.kind, ZonedTime::Kind::repeated);
            ASSERT_EQ(found.before, *readings.begin());
            ASSERT_EQ(found.after, *readings.rbegin());
            ASSERT_LT(found.before, found.change);
            ASSERT_LE(found.change, found.after);
            ASSERT_NE(rule->offsetAt(found.change - 1), rule->offsetAt(found.change));
        }
      }
    }
  }
  EXPECT_GT(unique, 100'000);
  EXPECT_GT(repeated, 10'000);
  EXPECT_GT(skipped, 10'000);
}

TEST(PosixZoneRule, TakesTheUsualDatesWhereARuleGivesNone) {
  const auto plain = PosixZoneRule::parse("EST5EDT");
  const auto dated = PosixZoneRule::parse("EST5EDT,M3.2.0,M11.1.0");
  ASSERT_TRUE(plain && dated);
  for (std::int64_t hour = 473'000; hour < 500'000; ++hour) {
    ASSERT_EQ(plain->offsetAt(hour * 3'600), dated->offsetAt(hour * 3'600)) << hour;
  }
}

TEST(PosixZoneRule, HoldsSummerTimeAllYear) {
  const auto rule = PosixZoneRule::parse("EST5EDT,0/0,J365/25");
  ASSERT_TRUE(rule);
  for (std::int64_t hour = 473'352; hour < 500'000; ++hour) {
    ASSERT_EQ(rule->offsetAt(hour * 3'600), -4 * 3'600) << hour;
  }
}

TEST(PosixZoneRule, IsNothingForAnythingElse) {
  for (const char* text : {"",
                           "5",
                           "EST",
                           "ES5",
                           "<EST5",
                           "EST>5",
                           "<ES>5",
                           "EST5EDT,",
                           "EST5EDT,M3.2.0",
                           "EST5EDT,M3.2.0,",
                           "EST5EDT,M3.2.0,M11.1.0,",
                           "EST5EDT,M3.2.0,M11.1.0 ",
                           " EST5",
                           "EST5 EDT",
                           "EST25",
                           "EST5:60",
                           "EST5:00:60",
                           "EST+-5",
                           "EST5E",
                           "EST5ED",
                           "EST5EDT,M0.2.0,M11.1.0",
                           "EST5EDT,M13.2.0,M11.1.0",
                           "EST5EDT,M3.0.0,M11.1.0",
                           "EST5EDT,M3.6.0,M11.1.0",
                           "EST5EDT,M3.2.7,M11.1.0",
                           "EST5EDT,J0,J365",
                           "EST5EDT,J1,J366",
                           "EST5EDT,0,366",
                           "EST5EDT,M3.2.0/168,M11.1.0",
                           "EST5EDT,M3.2.0/,M11.1.0",
                           "EST5EDT,M3.2,M11.1.0",
                           "Europe/Paris",
                           "/etc/localtime",
                           "E\xC3\xA9T5",
                           "EST5\n",
                           "EST99999999999999999999"}) {
    EXPECT_FALSE(PosixZoneRule::parse(text)) << text;
  }
  EXPECT_FALSE(PosixZoneRule::parse(std::string_view("EST5\0", 5)));
}

}  // namespace
}  // namespace horalo
