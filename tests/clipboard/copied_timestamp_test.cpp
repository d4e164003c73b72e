#include "clipboard/copied_timestamp.h"

#include <gtest/gtest.h>

#include <string>

#include "engine/text_matching.h"
#include "tests/fakes/manual_clock.h"

namespace horalo {
namespace {

struct Row {
  std::string text;
  std::string_view kind;  // empty: nobody copies that as a timestamp
};

TEST(CopiedTimestamp, isALargePlainNumber) {
  const std::string hundred = "1700000000." + std::string(89, '0');
  const Row rows[] = {
      {"1700000000", "unixSeconds"},
      {"100000000", "unixSeconds"},
      {"99999999", ""},
      {"99999999.99", ""},
      {"100000000.5", "unixSeconds"},
      {"1700000000000", "unixMilliseconds"},
      {"1700000000123.5", "unixMilliseconds"},
      {"  1700000000\n", "unixSeconds"},
      {"\xE2\x80\xA8"
       "1700000000\xC2\xA0",
       "unixSeconds"},
      {"\xE2\x80\x8B"
       "1700000000",
       ""},
      {"+1700000000", "unixSeconds"},
      {"-1700000000", ""},
      {"1.7e9", "unixSeconds"},
      {"1e8", "unixSeconds"},
      {"1e7", ""},
      {"", ""},
      {" \t\n", ""},
      {"0", ""},
      {"1", ""},
      {"20240101", ""},
      {"now", ""},
      {"today", ""},
      {"2024-01-01T00:00:00Z", ""},
      {"2024-01-01", ""},
      {"01/02/2024", ""},
      {"3 days ago", ""},
      {"1700000000 + 1d", ""},
      {"1700000000s", ""},
      {"1700 000 000", ""},
      {"1,700,000,000", ""},
      {"1_700_000_000", ""},
      {"1700000000\n1700000001", ""},
      {"\xEF\xBC\x91\xEF\xBC\x97"
       "00000000",
       ""},
      {"nan", ""},
      {"inf", ""},
      {"infinity", ""},
      {"1e400", ""},
      {"1e300", ""},
      {std::string("1700000000\0", 11), ""},
      {"17\xFF"
       "00000000",
       ""},
      {hundred, "unixSeconds"},
      {hundred + "0", ""},
      {" " + hundred + " ", "unixSeconds"},
      {std::string(101, '9'), ""},
      {std::string(4000, ' ') + "1700000000", "unixSeconds"},
  };
  const ManualClock clock({1'800'000'000, 0});
  const FixedZone zone(TimeZone::utc());
  const TimestampParser parser(clock, zone);
  int count = 0;
  for (const Row& row : rows) {
    const auto result = copiedTimestamp(trimmed(row.text), parser);
    EXPECT_EQ(result ? kindName(result->source) : "", row.kind) << '"' << row.text << '"';
    ++count;
  }
  EXPECT_EQ(count, 45);
}

}  // namespace
}  // namespace horalo
