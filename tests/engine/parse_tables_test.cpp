#include <gtest/gtest.h>

#include <ostream>
#include <variant>

#include "engine/timestamp_parser.h"
#include "tests/tables/case_table.h"
#include "tests/tables/expected_instant.h"

namespace horalo {
namespace {

// What a row says, in the words of the table: "-", or kind, payload and instant.
struct Outcome {
  std::string kind = "-";
  std::string payload;
  Instant date;
  friend bool operator==(const Outcome&, const Outcome&) = default;
};

std::ostream& operator<<(std::ostream& out, const Outcome& outcome) {
  return out << outcome.kind << " \"" << outcome.payload.substr(0, 80) << "\" "
             << outcome.date.seconds << " s " << outcome.date.nanoseconds << " ns";
}

Outcome expectedOutcome(const CaseRow& row) {
  if (row.cell(1) == "-") return {};
  return {row.cell(1), row.cell(2), expectedInstant(row.cell(3))};
}

std::string payloadOf(const TimestampSource& source) {
  if (const auto* date = std::get_if<source::HumanDate>(&source)) return std::string(date->format);
  if (const auto* math = std::get_if<source::DateMath>(&source)) return math->expression;
  return {};
}

Outcome outcomeOf(const CaseRow& row) {
  std::optional<TimeZone> zone = TimeZone::find(row.zone);
  if (!zone) zone = TimeZone::fromPosixRule(row.zone);
  if (!zone) throw std::runtime_error("no zone " + row.zone);
  const FixedClock clock(expectedInstant(row.now));
  const FixedZone zones(*zone);
  const std::optional<ParseResult> parsed = TimestampParser(clock, zones).parse(row.cell(0));
  if (!parsed) return {};
  return {std::string(kindName(parsed->source)), payloadOf(parsed->source), parsed->date};
}

struct Table {
  const char* name;
  std::size_t rows;
};

class ParseTable : public testing::TestWithParam<Table> {};

TEST_P(ParseTable, EveryRowIsUnderstoodAsItSays) {
  const std::vector<CaseRow> rows = readCaseTable(GetParam().name);
  for (const CaseRow& row : rows) {
    SCOPED_TRACE(row.place + ": " + row.cell(0).substr(0, 80));
    EXPECT_EQ(outcomeOf(row), expectedOutcome(row));
  }
  EXPECT_EQ(rows.size(), GetParam().rows);
}

INSTANTIATE_TEST_SUITE_P(, ParseTable,
                         testing::Values(Table{"ago.tsv", 79}, Table{"clock_changes.tsv", 145},
                                         Table{"iso8601.tsv", 110}, Table{"keywords.tsv", 40},
                                         Table{"layouts.tsv", 143}, Table{"numbers.tsv", 150},
                                         Table{"offsets.tsv", 170}, Table{"weekdays.tsv", 54},
                                         Table{"white_space.tsv", 56}),
                         [](const auto& table) {
                           const std::string name = table.param.name;
                           return name.substr(0, name.find('.'));
                         });

}  // namespace
}  // namespace horalo
