#include "engine/conversion_result.h"

#include <gtest/gtest.h>

#include "tests/tables/case_table.h"
#include "tests/tables/expected_instant.h"

namespace horalo {
namespace {

const LocaleTexts kEnglish("en_US");

std::vector<std::string> valuesOf(const std::array<ResultRow, kRowCount>& rows) {
  std::vector<std::string> values;
  for (const ResultRow& row : rows) values.push_back(row.value);
  return values;
}

TEST(Rows, SayTheSameInstantFiveTimes) {
  const std::vector<CaseRow> cases = readCaseTable("rows.tsv");
  for (const CaseRow& row : cases) {
    SCOPED_TRACE(row.place);
    const FixedClock clock(expectedInstant(row.now));
    const FixedZone zones(TimeZone::find(row.zone).value());
    const RowContext context{clock, zones, kEnglish};
    const ConversionResult result{expectedInstant(row.cell(0)), source::Iso8601{},
                                  TimeZone::find(row.cell(1)).value()};
    const std::vector<std::string> expected(row.cells.begin() + 2, row.cells.end());
    const auto made = rows(result, context);
    EXPECT_EQ(valuesOf(made), expected);
    for (std::size_t i = 0; i < kRowCount; ++i) {
      std::string alone = "before ";
      appendRowValue(alone, static_cast<RowKind>(i), result, context);
      EXPECT_EQ(alone, "before " + made[i].value);
    }
  }
  EXPECT_EQ(cases.size(), 33U);
}

TEST(Rows, AreLabelledAndOnlyTheLastIsSecondary) {
  const FixedClock clock(Instant{});
  const FixedZone zones(TimeZone::utc());
  const auto made =
      rows({Instant{}, source::Now{}, TimeZone::utc()}, RowContext{clock, zones, kEnglish});
  constexpr std::array<std::string_view, 5> kLabels{"Unix (s)", "Unix (ms)", "ISO 8601",
                                                    "Formatted", "Relative"};
  for (std::size_t i = 0; i < kRowCount; ++i) {
    EXPECT_EQ(made[i].label, kLabels[i]);
    EXPECT_EQ(rowLabel(static_cast<RowKind>(i)), kLabels[i]);
    EXPECT_EQ(made[i].isSecondary, i == 4);
  }
}

class CountingClock final : public Clock {
 public:
  Instant now() const override {
    ++asked;
    return {};
  }
  mutable int asked = 0;
};

TEST(Rows, AskForNothingThatTheyDoNotNeed) {
  const CountingClock clock;
  const FixedZone zones(TimeZone::utc());
  const RowContext context{clock, zones, kEnglish};
  const ConversionResult result{Instant{}, source::Now{}, TimeZone::utc()};
  std::string text;
  for (const RowKind kind :
       {RowKind::unixSeconds, RowKind::unixMilliseconds, RowKind::iso8601, RowKind::formatted}) {
    appendRowValue(text, kind, result, context);
  }
  EXPECT_EQ(clock.asked, 0);
  appendRowValue(text, RowKind::relative, result, context);
  EXPECT_EQ(clock.asked, 1);
}

TEST(TimestampSource, IsDescribedInAFewWords) {
  const std::pair<TimestampSource, std::pair<const char*, const char*>> cases[]{
      {source::HumanDate{"MM/dd/yyyy"}, {"humanDate", "Date (MM/dd/yyyy)"}},
      {source::DateMath{"3 days ago"}, {"dateMath", "Date math"}},
      {source::UnixSeconds{}, {"unixSeconds", "Unix (seconds)"}},
      {source::UnixMilliseconds{}, {"unixMilliseconds", "Unix (milliseconds)"}},
      {source::Iso8601{}, {"iso8601", "ISO 8601"}},
      {source::Now{}, {"now", "Now"}},
  };
  int compared = 0;
  for (const auto& [source, texts] : cases) {
    EXPECT_EQ(kindName(source), texts.first);
    EXPECT_EQ(description(source), texts.second);
    ++compared;
  }
  EXPECT_EQ(compared, 6);
}

}  // namespace
}  // namespace horalo
